__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// The GUI's pixels: the vertex colour times the font image (t_Font). The GUI stage does not draw yet.

__SamplerDesc t_Font
{
    Filter MIN_MAG_MIP_LINEAR
    AddressU Wrap
    AddressV Wrap
}

layout(location = 0) in vec2 v_TexCoord;
layout(location = 1) in vec4 v_Colour;

layout(location = 0) out vec4 o_Colour;

layout(binding = 0) uniform sampler2D t_Font;

void main()
{
    o_Colour = v_Colour * texture(t_Font, v_TexCoord);
}
