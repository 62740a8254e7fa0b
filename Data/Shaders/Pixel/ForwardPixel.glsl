__ShaderDesc
{
    Type Pixel
    EntryPoint main
    Flag Forward
}

// The forward pass's pixel stage, for see-through meshes drawn after lighting: it lights its own
// pixel with the lights of its 16 by 16 tile from the compute pass's list (t3D_LightList; without
// compute lighting there is no list and the pixel takes the ambient alone) and writes the lit
// colour with premultiplied alpha (the forward blend adds it over what lies behind). Target 1 is
// rt_Material: ambient, emissive, glow, 1, as the deferred pass writes it.

#include "Lights.glsl"

layout(location = 0) in vec3 v_Normal;
layout(location = 1) in vec3 v_Tangent;
layout(location = 2) in vec2 v_TexCoord;
layout(location = 3) flat in vec4 v_Diffuse;
layout(location = 4) flat in vec4 v_Specular;
layout(location = 5) flat in vec4 v_Material;

layout(location = 0) out vec4 o_Colour;
layout(location = 1) out vec4 o_Material;

layout(std140, binding = 2) uniform Frame
{
    vec4 f4_GlobaAmbient;
    mat4 m_InverseViewPerspective;
    vec3 f3_CameraPos;
    uvec2 ui2_ScreenSize;
};

void main()
{
    vec3 normal = normalize(v_Normal);
    vec3 diffuse = v_Diffuse.rgb;
    vec3 position = PixelWorldPosition(gl_FragCoord.xy, vec2(ui2_ScreenSize), gl_FragCoord.z, m_InverseViewPerspective);
    vec3 lit = AmbientTerm(gl_FragCoord.z, diffuse, v_Material, f4_GlobaAmbient);

    ivec2 tile = ivec2(gl_FragCoord.xy) / int(kLightTileSize);
    uint count = min(texelFetch(t3D_LightList, ivec3(tile, 0), 0).r, kMaxLightsPerTile);
    for (uint i = 0u; i < count; ++i)
    {
        uint index = texelFetch(t3D_LightList, ivec3(tile, int(i) + 1), 0).r;
        lit += ShadeLight(Lights[index], position, normal, diffuse, v_Specular.rgb, v_Specular.w, f3_CameraPos);
    }

    float alpha = clamp(v_Diffuse.a, 0.0, 1.0);
    o_Colour = vec4(clamp(lit, 0.0, 1.0) * alpha, alpha);
    float glow = floatBitsToUint(v_Material.z) != 0u ? 1.0 : 0.0;
    o_Material = vec4(clamp(v_Material.x, 0.0, 1.0), clamp(v_Material.y, 0.0, 1.0), glow, 1.0);
}
