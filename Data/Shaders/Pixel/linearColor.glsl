__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// The debug stage's pixels: the colour passed down, as it is.

layout(location = 0) in vec4 v_Colour;

layout(location = 0) out vec4 o_Colour;

void main()
{
    o_Colour = v_Colour;
}
