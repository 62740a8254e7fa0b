/* a comment
   __ShaderDesc { Type Hull } */
__ShaderDesc
{ // Type Pixel
  Type Vertex /* EntryPoint wrong */ EntryPoint main
  Flag Instanced
}
// ordinary comment reaches the compiler
void main() {}
