__ShaderDesc { Type Compute EntryPoint main }
layout(local_size_x = 8) in;
void main() {}