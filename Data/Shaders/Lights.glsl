// Lights.glsl: the lights, for every shader that lights pixels (`#include "Lights.glsl"`).
//
// s_Light is one light's record, 112 bytes, field for field as the engine writes it
// (Graphics::s_Light): the same order, the same offsets in std430 and std140. The storage block
// sb_lights (binding 1) holds the lights that are on, i_lightCount of them, and a closing record.
// t3D_LightList (texture unit 7) is the compute pass's list of lights per 16 by 16 tile: slice 0
// of a tile's column holds its count, slices 1 and on the indices into sb_lights; forward pixel
// stages find their tile's lights there.
//
// The shading: a light adds, for a surface of diffuse colour D, specular colour S and power p,
//   A * D + D * Ld * max(N.L, 0) + S * Ls * max(N.H, 0)^p
// (A, Ld, Ls the light's ambient, diffuse and specular colours; H halfway between the light and
// the eye). Point and spot lights reach no further than Range and fall off as
// 1 / (c + l d + q d^2) with Attenuation (c, l, q) and distance d (all three zero: no falloff);
// a spot light also narrows to its cone, full inside SpotPrams.x (radians from Direction),
// nothing outside SpotPrams.y, smoothly between, raised to the power SpotPrams.z. Directional
// lights shine along Direction everywhere. The pixel's own ambient and the global ambient are
// added once, by AmbientTerm.

// One light's record.
struct s_Light
{
    vec4 Ambient;
    vec4 Diffuse;
    vec4 Specular;
    vec3 Position;
    float Range;
    vec3 Direction;
    float Padding0;
    vec3 SpotPrams;
    float Padding1;
    vec3 Attenuation;
    uint LightType;
};

// The lights that are on, then the closing record.
layout(std430, binding = 1) readonly buffer sb_lights
{
    s_Light Lights[];
};

// The compute pass's tile lists, for forward pixel stages.
layout(binding = 7) uniform usampler3D t3D_LightList;

// Pixels a side of one tile, and lights a tile holds at most.
const uint kLightTileSize = 16u;
const uint kMaxLightsPerTile = 1024u;

const uint kLightNone = 0u;
const uint kLightPoint = 1u;
const uint kLightDirection = 2u;
const uint kLightSpot = 3u;

// The world position of a pixel of the render target (row 0 at the top) at a depth in 0..1.
vec3 PixelWorldPosition(vec2 pixelCentre, vec2 size, float depth, mat4 inverseViewPerspective)
{
    vec2 ndc = vec2(pixelCentre.x / size.x * 2.0 - 1.0, 1.0 - pixelCentre.y / size.y * 2.0);
    vec4 world = vec4(ndc, depth, 1.0) * inverseViewPerspective;
    return world.xyz / world.w;
}

// What a pixel shows before any light: where nothing was drawn the global ambient; elsewhere its
// diffuse colour times (global ambient + its own ambient), plus its diffuse colour times its emissive.
vec3 AmbientTerm(float depth, vec3 diffuse, vec4 material, vec4 globalAmbient)
{
    if (depth >= 1.0)
        return globalAmbient.rgb;
    return diffuse * (globalAmbient.rgb + material.x) + diffuse * material.y;
}

// How much of a point or spot light reaches a point `distance` away: 0 beyond Range.
float LightFalloff(s_Light light, float distance)
{
    if (distance > light.Range)
        return 0.0;
    float attenuation = light.Attenuation.x + light.Attenuation.y * distance +
                        light.Attenuation.z * distance * distance;
    return attenuation > 0.0 ? 1.0 / attenuation : 1.0;
}

// The light one light adds to a surface point: world position, unit normal, diffuse colour,
// specular colour and power, and the eye's position.
vec3 ShadeLight(s_Light light, vec3 position, vec3 normal, vec3 diffuse, vec3 specular, float power, vec3 eye)
{
    vec3 toLight;
    float reach = 1.0;
    float cone = 1.0;
    if (light.LightType == kLightDirection)
    {
        toLight = -light.Direction;
        if (dot(toLight, toLight) <= 0.0)
            return vec3(0.0);
        toLight = normalize(toLight);
    }
    else if (light.LightType == kLightPoint || light.LightType == kLightSpot)
    {
        vec3 offset = light.Position - position;
        float distance = length(offset);
        reach = LightFalloff(light, distance);
        if (reach <= 0.0)
            return vec3(0.0);
        toLight = distance > 0.0 ? offset / distance : normal;
        if (light.LightType == kLightSpot)
        {
            vec3 axis = dot(light.Direction, light.Direction) > 0.0 ? normalize(light.Direction) : vec3(0.0, -1.0, 0.0);
            float angle = acos(clamp(dot(-toLight, axis), -1.0, 1.0));
            cone = 1.0 - smoothstep(light.SpotPrams.x, max(light.SpotPrams.y, light.SpotPrams.x + 1e-4), angle);
            if (light.SpotPrams.z > 0.0)
                cone = pow(cone, light.SpotPrams.z);
        }
    }
    else
        return vec3(0.0);

    vec3 lit = light.Ambient.rgb * diffuse * reach;
    float lambert = dot(normal, toLight);
    if (lambert > 0.0)
    {
        lit += diffuse * light.Diffuse.rgb * lambert * reach * cone;
        vec3 toEye = eye - position;
        vec3 halfway = toLight + (dot(toEye, toEye) > 0.0 ? normalize(toEye) : vec3(0.0));
        if (power >= 1.0 && dot(halfway, halfway) > 0.0)
        {
            float highlight = pow(max(dot(normal, normalize(halfway)), 0.0), power);
            lit += specular * light.Specular.rgb * highlight * reach * cone;
        }
    }
    return lit;
}
