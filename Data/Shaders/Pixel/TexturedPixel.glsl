__ShaderDesc
{
    Type Pixel
    EntryPoint main
}

// The deferred pass's pixel stage for textured meshes: as BasePixel, with the
// diffuse colour multiplied by the mesh's diffuse texture (t_DiffuseTexture,
// bound by TexturedMesh), which repeats across the model's texture coordinates.
//   rt_Normal   (target 0): the world normal, each axis as 0.5 * n + 0.5; alpha 1.
//   rt_Diffuse  (target 1): texture times diffuse colour.
//   rt_Specular (target 2): the specular colour; alpha the specular power over 255.
//   rt_Material (target 3): ambient, emissive, glow (0 or 1), 1.

__SamplerDesc t_DiffuseTexture
{
    Filter MIN_MAG_MIP_LINEAR
    AddressU Wrap
    AddressV Wrap
}

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

layout(binding = 0) uniform sampler2D t_DiffuseTexture;

void main()
{
    vec3 normal = normalize(v_Normal);
    o_Normal = vec4(normal * 0.5 + 0.5, 1.0);
    o_Diffuse = texture(t_DiffuseTexture, v_TexCoord) * v_Diffuse;
    o_Specular = vec4(v_Specular.rgb, clamp(v_Specular.w / 255.0, 0.0, 1.0));
    float glow = floatBitsToUint(v_Material.z) != 0u ? 1.0 : 0.0;
    o_Material = vec4(clamp(v_Material.x, 0.0, 1.0), clamp(v_Material.y, 0.0, 1.0), glow, 1.0);
}
