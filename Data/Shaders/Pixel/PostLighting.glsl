__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// Finishes the lit image of the light-volume path: the sum of the light passes, clamped, opaque.

__SamplerDesc rt_Texture
{
    Filter MIN_MAG_MIP_POINT
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
    o_Colour = vec4(clamp(texture(rt_Texture, v_TexCoord).rgb, 0.0, 1.0), 1.0);
}
