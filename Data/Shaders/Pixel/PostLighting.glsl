__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// Finishes the lit image of the light-volume path: the ambient term of each pixel (global
// ambient, the pixel's own ambient and emissive, as the compute pass adds it) plus the sum of
// the light volumes, clamped, opaque. Where forward objects were drawn over the lights (alpha
// a), the ambient behind them shows through as much as they let the lights through: (1 - a).
#include "Lights.glsl"

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
layout(binding = 1) uniform sampler2D rt_Depth;
layout(binding = 2) uniform sampler2D rt_Diffuse;
layout(binding = 3) uniform sampler2D rt_Material;

layout(std140, binding = 2) uniform Frame
{
    vec4 f4_GlobaAmbient;
};

void main()
{
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    vec4 lights = texture(rt_Texture, v_TexCoord);
    float depth = texelFetch(rt_Depth, pixel, 0).r;
    vec3 ambient = AmbientTerm(depth, texelFetch(rt_Diffuse, pixel, 0).rgb, texelFetch(rt_Material, pixel, 0),
                               f4_GlobaAmbient);
    o_Colour = vec4(clamp(lights.rgb + ambient * (1.0 - lights.a), 0.0, 1.0), 1.0);
}
