__ShaderDesc
{
    Type Pixel
    EntryPoint main
    Flag Forward
}

#include "Colour.glsl"

__SamplerDesc DiffuseTexture
{
    Filter MIN_MAG_MIP_POINT
    AddressU Wrap
    AddressV Mirror
    MaxLOD 4.0
}

layout(location = 0) in vec4 v_Ambient;
layout(location = 0) out vec4 o_Colour;

// Shared with the vertex stage.
layout(std140, binding = 0) uniform Shared
{
    vec4 f4_GlobaAmbient;
    float f_Time;
};

layout(std140, binding = 2) uniform Material
{
    vec4 Tint;
    float Mix;
};

layout(binding = 0) uniform sampler2D DiffuseTexture;

layout(std430, binding = 3) buffer Weights
{
    vec4 weight[];
};

layout(binding = 1, rgba8) uniform readonly image2D Marks;

void main()
{
    vec4 extra = texture(DiffuseTexture, vec2(0.5)) + weight[0] + imageLoad(Marks, ivec2(0)) + f4_GlobaAmbient + v_Ambient + Tint;
    o_Colour = vec4(IncludedColour(), 1.0) + Mix * extra;
}
