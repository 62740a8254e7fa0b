__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// Draws the finished picture (rt_Texture, at the render size) over the window, filtered. The
// window counts its rows from the bottom, so the picture is read turned over.

__SamplerDesc rt_Texture
{
    Filter MIN_MAG_MIP_LINEAR
    AddressU Clamp
    AddressV Clamp
}

layout(location = 0) in vec2 v_TexCoord;
layout(location = 1) in vec3 v_Normal;
layout(location = 2) in vec3 v_Tangent;

layout(location = 0) out vec4 o_Colour;

layout(binding = 0) uniform sampler2D rt_Texture;

void main()
{
    o_Colour = vec4(texture(rt_Texture, vec2(v_TexCoord.x, 1.0 - v_TexCoord.y)).rgb, 1.0);
}
