// GBuffer.glsl: what the deferred pass's pixel stages share (`#include "GBuffer.glsl"`): the
// inputs "BaseVertex" hands them and the four G-buffer targets, which WriteGBuffer fills:
//   rt_Normal   (target 0): the world normal, each axis as 0.5 * n + 0.5; alpha 1.
//   rt_Diffuse  (target 1): the diffuse colour given.
//   rt_Specular (target 2): the specular colour; alpha the specular power over 255.
//   rt_Material (target 3): ambient, emissive, glow (0 or 1), 1.

layout(location = 0) in vec3 v_Normal;
layout(location = 1) in vec3 v_Tangent;
layout(location = 2) in vec2 v_TexCoord;
layout(location = 3) flat in vec4 v_Diffuse;
layout(location = 4) flat in vec4 v_Specular;
layout(location = 5) flat in vec4 v_Material;

layout(location = 0) out vec4 o_Normal;
layout(location = 1) out vec4 o_Diffuse;
layout(location = 2) out vec4 o_Specular;
layout(location = 3) out vec4 o_Material;

// Writes the four targets for a surface of the given diffuse colour and the instance's material.
void WriteGBuffer(vec4 diffuse)
{
    vec3 normal = normalize(v_Normal);
    o_Normal = vec4(normal * 0.5 + 0.5, 1.0);
    o_Diffuse = diffuse;
    o_Specular = vec4(v_Specular.rgb, clamp(v_Specular.w / 255.0, 0.0, 1.0));
    float glow = floatBitsToUint(v_Material.z) != 0u ? 1.0 : 0.0;
    o_Material = vec4(clamp(v_Material.x, 0.0, 1.0), clamp(v_Material.y, 0.0, 1.0), glow, 1.0);
}
