__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// The light pass without compute shaders: lights each pixel of the G-buffer, added into the
// lighting target.
#include "LightingCommon.glsl"

layout(location = 0) in vec2 v_TexCoord;
layout(location = 1) in vec3 v_Normal;
layout(location = 2) in vec3 v_Tangent;

layout(location = 0) out vec4 o_Colour;

layout(binding = 0) uniform sampler2D rt_Depth;
layout(binding = 1) uniform sampler2D rt_Normal;
layout(binding = 2) uniform sampler2D rt_Diffuse;
layout(binding = 3) uniform sampler2D rt_Specular;
layout(binding = 4) uniform sampler2D rt_Material;

layout(std140, binding = 2) uniform Frame
{
    vec4 f4_GlobaAmbient;
    mat4 m_InverseViewPerspective;
    vec3 f3_CameraPos;
};

void main()
{
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    float depth = texelFetch(rt_Depth, pixel, 0).r;
    vec4 normal = texelFetch(rt_Normal, pixel, 0);
    vec4 specular = texelFetch(rt_Specular, pixel, 0);
    vec4 lit = LightPixel(depth, texelFetch(rt_Diffuse, pixel, 0), texelFetch(rt_Material, pixel, 0), f4_GlobaAmbient);
    lit.rgb += (normal.rgb + specular.rgb) * 0.0 * float(depth > 2.0);
    o_Colour = lit;
}
