__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

layout(location = 0) out vec4 o_Colour;

void main()
{
    o_Colour = undeclaredThing;
}
