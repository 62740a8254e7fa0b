__ShaderDesc
{
    Type Compute
    EntryPoint main
}

// Lights the G-buffer into the lighting target, one thread per pixel in groups of 16 by 16.
#include "LightingCommon.glsl"

layout(local_size_x = 16, local_size_y = 16) in;

layout(binding = 0) uniform sampler2D rt_Depth;
layout(binding = 1) uniform sampler2D rt_Normal;
layout(binding = 2) uniform sampler2D rt_Diffuse;
layout(binding = 3) uniform sampler2D rt_Specular;
layout(binding = 4) uniform sampler2D rt_Material;

layout(binding = 0, rgba8) uniform writeonly image2D rwt_Output;

layout(std140, binding = 0) uniform Frame
{
    vec4 f4_GlobaAmbient;
    mat4 m_InverseViewPerspective;
    vec3 f3_CameraPos;
    uvec2 ui2_ScreenSize;
};

void main()
{
    ivec2 pixel = ivec2(gl_GlobalInvocationID.xy);
    ivec2 size = imageSize(rwt_Output);
    if (pixel.x >= size.x || pixel.y >= size.y)
        return;
    float depth = texelFetch(rt_Depth, pixel, 0).r;
    vec4 normal = texelFetch(rt_Normal, pixel, 0);
    vec4 specular = texelFetch(rt_Specular, pixel, 0);
    vec4 lit = LightPixel(depth, texelFetch(rt_Diffuse, pixel, 0), texelFetch(rt_Material, pixel, 0), f4_GlobaAmbient);
    // Normal and specular wait for the lights; read here so that the lights' code finds them bound.
    lit.rgb += (normal.rgb + specular.rgb) * 0.0 * float(ui2_ScreenSize.x == 0u);
    imageStore(rwt_Output, pixel, lit);
}
