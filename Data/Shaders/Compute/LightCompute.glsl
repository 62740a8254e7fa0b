__ShaderDesc
{
    Type Compute
    EntryPoint main
}

// Lights the G-buffer into the lighting target, one thread per pixel in groups of 16 by 16
// pixels, one group per tile. The group first finds the depth range of its tile's drawn pixels,
// then bins the i_lightCount lights of sb_lights: directional lights always, point and spot
// lights when their sphere (Position, Range) meets the box around the part of the view frustum
// the tile covers between those depths; a tile with nothing drawn takes no lights. The tile's
// list goes to rwt_LightList (its count at slice 0, the indices after it, at most 1024), and
// every pixel is shaded with the ambient term and the tile's lights into rwt_Output.
#include "Lights.glsl"

layout(local_size_x = 16, local_size_y = 16) in;

layout(binding = 0) uniform sampler2D rt_Depth;
layout(binding = 1) uniform sampler2D rt_Normal;
layout(binding = 2) uniform sampler2D rt_Diffuse;
layout(binding = 3) uniform sampler2D rt_Specular;
layout(binding = 4) uniform sampler2D rt_Material;

layout(binding = 0, rgba8) uniform writeonly image2D rwt_Output;
layout(binding = 1, r16ui) uniform writeonly uimage3D rwt_LightList;

layout(std140, binding = 0) uniform Frame
{
    vec4 f4_GlobaAmbient;
    mat4 m_InverseViewPerspective;
    vec3 f3_CameraPos;
    uvec2 ui2_ScreenSize;
};

layout(std140, binding = 1) uniform LightCount
{
    int i_lightCount;
};

shared uint s_MinDepth;
shared uint s_MaxDepth;
shared uint s_TileCount;
shared uint s_TileLights[kMaxLightsPerTile];
shared vec3 s_BoxMin;
shared vec3 s_BoxMax;

// True when the sphere meets the box.
bool SphereMeetsBox(vec3 centre, float radius, vec3 boxMin, vec3 boxMax)
{
    vec3 nearest = clamp(centre, boxMin, boxMax);
    vec3 offset = centre - nearest;
    return dot(offset, offset) <= radius * radius;
}

void main()
{
    ivec2 size = imageSize(rwt_Output);
    ivec2 pixel = ivec2(gl_GlobalInvocationID.xy);
    ivec2 tile = ivec2(gl_WorkGroupID.xy);
    uint local = gl_LocalInvocationIndex;
    bool inside = pixel.x < size.x && pixel.y < size.y;

    if (local == 0u)
    {
        s_MinDepth = 0x7F7FFFFFu;
        s_MaxDepth = 0u;
        s_TileCount = 0u;
    }
    barrier();

    float depth = inside ? texelFetch(rt_Depth, pixel, 0).r : 1.0;
    if (depth < 1.0)
    {
        // Depths are non-negative floats, whose bits order as the values do.
        atomicMin(s_MinDepth, floatBitsToUint(max(depth, 0.0)));
        atomicMax(s_MaxDepth, floatBitsToUint(max(depth, 0.0)));
    }
    barrier();

    bool anyDrawn = s_MinDepth <= s_MaxDepth;
    if (local == 0u && anyDrawn)
    {
        // The box around the tile's slice of the frustum: its eight corners in the world.
        vec2 first = vec2(tile * int(kLightTileSize));
        vec2 last = min(first + vec2(kLightTileSize), vec2(size));
        float nearDepth = uintBitsToFloat(s_MinDepth);
        float farDepth = uintBitsToFloat(s_MaxDepth);
        vec3 boxMin = vec3(3.0e38);
        vec3 boxMax = vec3(-3.0e38);
        for (int corner = 0; corner < 8; ++corner)
        {
            vec2 at = vec2((corner & 1) != 0 ? last.x : first.x, (corner & 2) != 0 ? last.y : first.y);
            float z = (corner & 4) != 0 ? farDepth : nearDepth;
            vec3 world = PixelWorldPosition(at, vec2(size), z, m_InverseViewPerspective);
            boxMin = min(boxMin, world);
            boxMax = max(boxMax, world);
        }
        s_BoxMin = boxMin;
        s_BoxMax = boxMax;
    }
    barrier();

    if (anyDrawn)
    {
        for (int i = int(local); i < i_lightCount; i += int(kLightTileSize * kLightTileSize))
        {
            s_Light light = Lights[i];
            bool reaches = light.LightType == kLightDirection ||
                           ((light.LightType == kLightPoint || light.LightType == kLightSpot) &&
                            SphereMeetsBox(light.Position, light.Range, s_BoxMin, s_BoxMax));
            if (!reaches)
                continue;
            uint place = atomicAdd(s_TileCount, 1u);
            if (place < kMaxLightsPerTile)
                s_TileLights[place] = uint(i);
        }
    }
    barrier();

    uint count = min(s_TileCount, kMaxLightsPerTile);
    if (local == 0u)
        imageStore(rwt_LightList, ivec3(tile, 0), uvec4(count));
    for (uint i = local; i < count; i += kLightTileSize * kLightTileSize)
        imageStore(rwt_LightList, ivec3(tile, int(i) + 1), uvec4(s_TileLights[i]));

    if (!inside)
        return;
    vec4 diffuse = texelFetch(rt_Diffuse, pixel, 0);
    vec4 material = texelFetch(rt_Material, pixel, 0);
    vec3 lit = AmbientTerm(depth, diffuse.rgb, material, f4_GlobaAmbient);
    if (depth < 1.0 && count > 0u)
    {
        vec3 position = PixelWorldPosition(vec2(pixel) + 0.5, vec2(size), depth, m_InverseViewPerspective);
        vec3 normal = normalize(texelFetch(rt_Normal, pixel, 0).xyz * 2.0 - 1.0);
        vec4 specular = texelFetch(rt_Specular, pixel, 0);
        for (uint i = 0u; i < count; ++i)
            lit += ShadeLight(Lights[s_TileLights[i]], position, normal, diffuse.rgb, specular.rgb, specular.a * 255.0,
                              f3_CameraPos);
    }
    imageStore(rwt_Output, pixel, vec4(clamp(lit, 0.0, 1.0), 1.0));
}
