__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// The light pass without compute shaders: one light (s_Light) on the pixels its volume covers,
// added into the lighting target (alpha 0, so that "PostLighting" knows what forward objects
// covered). The ambient term comes after, in "PostLighting".
#include "Lights.glsl"

layout(location = 0) in vec2 v_TexCoord;
layout(location = 1) in vec3 v_Normal;
layout(location = 2) in vec3 v_Tangent;

layout(location = 0) out vec4 o_Colour;

layout(binding = 0) uniform sampler2D rt_Depth;
layout(binding = 1) uniform sampler2D rt_Normal;
layout(binding = 2) uniform sampler2D rt_Diffuse;
layout(binding = 3) uniform sampler2D rt_Specular;

layout(std140, binding = 2) uniform Frame
{
    mat4 m_InverseViewPerspective;
    vec3 f3_CameraPos;
    uvec2 ui2_ScreenSize;
};

// The light of this draw (the engine's s_Light), the same record as in sb_lights.
layout(std140, binding = 3) uniform LightRecord
{
    s_Light s_Light;
} u_Draw;

void main()
{
    ivec2 pixel = ivec2(gl_FragCoord.xy);
    float depth = texelFetch(rt_Depth, pixel, 0).r;
    if (depth >= 1.0)
        discard;
    vec2 size = vec2(textureSize(rt_Depth, 0));
    vec3 position = PixelWorldPosition(vec2(pixel) + 0.5, size, depth, m_InverseViewPerspective);
    vec3 normal = normalize(texelFetch(rt_Normal, pixel, 0).xyz * 2.0 - 1.0);
    vec4 diffuse = texelFetch(rt_Diffuse, pixel, 0);
    vec4 specular = texelFetch(rt_Specular, pixel, 0);
    vec3 lit = ShadeLight(u_Draw.s_Light, position, normal, diffuse.rgb, specular.rgb, specular.a * 255.0, f3_CameraPos);
    o_Colour = vec4(lit, 0.0);
}
