#include "shape_generator/Rock.h"

#include "shape_generator/Shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ShapeTools
{
namespace
{
std::uint32_t Hash(std::int32_t x, std::int32_t y, std::int32_t z, std::uint32_t seed)
{
    std::uint32_t h = seed * 0x9E3779B9u;
    for (std::uint32_t v : {static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), static_cast<std::uint32_t>(z)})
    {
        h ^= v + 0x7F4A7C15u + (h << 6) + (h >> 2);
        h *= 0x85EBCA6Bu;
        h ^= h >> 13;
    }
    h *= 0xC2B2AE35u;
    h ^= h >> 16;
    return h;
}

// A value in [-1, 1] at a lattice point.
float Lattice(std::int32_t x, std::int32_t y, std::int32_t z, std::uint32_t seed)
{
    return static_cast<float>(Hash(x, y, z, seed) & 0xFFFFu) / 32767.5f - 1.0f;
}

float Smooth(float t)
{
    return t * t * (3.0f - 2.0f * t);
}

float Mix(float a, float b, float t)
{
    return a + (b - a) * t;
}

// A number in [0, 1) drawn from the seed, for the rock's proportions.
float SeedFraction(std::uint32_t seed, std::int32_t which)
{
    return static_cast<float>(Hash(which, 17, 23, seed) & 0xFFFFu) / 65536.0f;
}
}

float ValueNoise(const Vec3& point, std::uint32_t seed)
{
    const float fx = std::floor(point.x), fy = std::floor(point.y), fz = std::floor(point.z);
    const auto x = static_cast<std::int32_t>(fx), y = static_cast<std::int32_t>(fy), z = static_cast<std::int32_t>(fz);
    const float tx = Smooth(point.x - fx), ty = Smooth(point.y - fy), tz = Smooth(point.z - fz);
    auto plane = [&](std::int32_t k) {
        return Mix(Mix(Lattice(x, y, k, seed), Lattice(x + 1, y, k, seed), tx),
                   Mix(Lattice(x, y + 1, k, seed), Lattice(x + 1, y + 1, k, seed), tx), ty);
    };
    return Mix(plane(z), plane(z + 1), tz);
}

MeshBuilder Rock(std::uint32_t seed, int subdivisions, float roughness)
{
    std::vector<Vec3> corners;
    std::vector<std::uint32_t> triangles;
    Icosphere(subdivisions, corners, triangles);

    // Proportions of this rock: a little wider than tall, stretched along x or z.
    const Vec3 stretch{1.0f + 0.35f * SeedFraction(seed, 1), 0.6f + 0.3f * SeedFraction(seed, 2),
                       1.0f + 0.35f * SeedFraction(seed, 3)};
    for (Vec3& corner : corners)
    {
        // Two octaves; moving only along the radius keeps the lump star-shaped, so it stays closed and outward.
        const float noise = 0.7f * ValueNoise(corner * 1.8f, seed) + 0.3f * ValueNoise(corner * 3.6f, seed + 101u);
        const float radius = 1.0f + roughness * noise;
        corner = Vec3{corner.x * stretch.x, corner.y * stretch.y, corner.z * stretch.z} * radius;
    }

    // Centre the lump and scale its largest extent to 1.
    Vec3 low{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    Vec3 high = low * -1.0f;
    for (const Vec3& c : corners)
    {
        low = {std::min(low.x, c.x), std::min(low.y, c.y), std::min(low.z, c.z)};
        high = {std::max(high.x, c.x), std::max(high.y, c.y), std::max(high.z, c.z)};
    }
    const Vec3 centre = (low + high) * 0.5f;
    const Vec3 size = high - low;
    const float scale = 1.0f / std::max({size.x, size.y, size.z});

    MeshBuilder mesh;
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        mesh.AddFlatFace({(corners[triangles[i]] - centre) * scale, (corners[triangles[i + 1]] - centre) * scale,
                          (corners[triangles[i + 2]] - centre) * scale});
    return mesh;
}
}
