#include "shape_generator/Shapes.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <utility>

namespace ShapeTools
{
namespace
{
constexpr float kTwoPi = 2.0f * std::numbers::pi_v<float>;

// One ring of a surface of revolution about Y: its height and radius, the normal's
// radial and vertical parts, and v.
struct ProfilePoint
{
    float Y, Radius, NormalRadial, NormalY, V;
};

// The smooth side of a surface of revolution, rings from the bottom up, `segments` around
// (with the seam column repeated); triangles that close to a point are left out.
void Lathe(MeshBuilder& mesh, const std::vector<ProfilePoint>& profile, int segments)
{
    std::vector<std::vector<std::uint32_t>> rows;
    for (const ProfilePoint& ring : profile)
    {
        std::vector<std::uint32_t>& row = rows.emplace_back();
        for (int j = 0; j <= segments; ++j)
        {
            const float angle = kTwoPi * static_cast<float>(j) / static_cast<float>(segments);
            const float s = std::sin(angle), c = std::cos(angle);
            row.push_back(mesh.AddVertex({ring.Radius * s, ring.Y, ring.Radius * c},
                                         {ring.NormalRadial * s, ring.NormalY, ring.NormalRadial * c},
                                         static_cast<float>(j) / static_cast<float>(segments), ring.V));
        }
    }
    for (std::size_t i = 0; i + 1 < rows.size(); ++i)
        for (int j = 0; j < segments; ++j)
        {
            // Seen from outside, increasing angle runs to the right and the next ring lies above.
            const std::uint32_t bl = rows[i][j], br = rows[i][j + 1], tr = rows[i + 1][j + 1], tl = rows[i + 1][j];
            if (profile[i].Radius > 0.0f)
                mesh.AddTriangle(bl, br, tr);
            if (profile[i + 1].Radius > 0.0f)
                mesh.AddTriangle(bl, tr, tl);
        }
}

// A flat disc at height y facing up (+1) or down (-1).
void Cap(MeshBuilder& mesh, float y, float radius, float facing, int segments)
{
    const std::uint32_t centre = mesh.AddVertex({0, y, 0}, {0, facing, 0}, 0.5f, 0.5f);
    std::vector<std::uint32_t> ring;
    for (int j = 0; j <= segments; ++j)
    {
        const float angle = kTwoPi * static_cast<float>(j) / static_cast<float>(segments);
        const float x = radius * std::sin(angle), z = radius * std::cos(angle);
        // Seen from outside, the picture stands upright: -Z up on the top cap, +Z up on the bottom one.
        ring.push_back(mesh.AddVertex({x, y, z}, {0, facing, 0}, 0.5f + 0.5f * x / radius,
                                      0.5f + 0.5f * facing * z / radius));
    }
    for (int j = 0; j < segments; ++j)
        if (facing > 0.0f)
            mesh.AddTriangle(centre, ring[j], ring[j + 1]);
        else
            mesh.AddTriangle(centre, ring[j + 1], ring[j]);
}
}

MeshBuilder Capsule(float radius, float height, int segments, int rings)
{
    MeshBuilder mesh;
    const float half = std::max(height * 0.5f - radius, 0.0f);
    const float total = 2.0f * (half + radius);
    std::vector<ProfilePoint> profile;
    // From the south pole up through the lower half sphere, then the upper one to the north pole.
    for (int side = 0; side < 2; ++side)
        for (int k = 0; k <= rings; ++k)
        {
            const float latitude =
                (side == 0 ? -1.0f : 0.0f) * std::numbers::pi_v<float> * 0.5f +
                std::numbers::pi_v<float> * 0.5f * static_cast<float>(k) / static_cast<float>(rings);
            const float y = (side == 0 ? -half : half) + radius * std::sin(latitude);
            const float r = k == (side == 0 ? 0 : rings) ? 0.0f : radius * std::cos(latitude);
            profile.push_back({y, r, std::cos(latitude), std::sin(latitude), 0.5f - y / total});
        }
    Lathe(mesh, profile, segments);
    return mesh;
}

MeshBuilder Cylinder(float radius, float height, int segments)
{
    MeshBuilder mesh;
    const float half = height * 0.5f;
    Lathe(mesh, {{-half, radius, 1, 0, 1}, {half, radius, 1, 0, 0}}, segments);
    Cap(mesh, half, radius, 1.0f, segments);
    Cap(mesh, -half, radius, -1.0f, segments);
    return mesh;
}

MeshBuilder Cone(float radius, float height, int segments)
{
    MeshBuilder mesh;
    const float half = height * 0.5f;
    // The side's outward normal is perpendicular to the slope from the rim up to the tip.
    const float length = std::sqrt(radius * radius + height * height);
    const float radial = height / length, up = radius / length;
    Lathe(mesh, {{-half, radius, radial, up, 1}, {half, 0.0f, radial, up, 0}}, segments);
    Cap(mesh, -half, radius, -1.0f, segments);
    return mesh;
}

MeshBuilder Plane(float size)
{
    MeshBuilder mesh;
    const float h = size * 0.5f;
    mesh.AddFlatFace({{-h, 0, h}, {h, 0, h}, {h, 0, -h}, {-h, 0, -h}});
    return mesh;
}

MeshBuilder Ramp()
{
    MeshBuilder mesh;
    const Vec3 frontLeft{-0.5f, -0.5f, 0.5f}, frontRight{0.5f, -0.5f, 0.5f};
    const Vec3 backLeft{-0.5f, -0.5f, -0.5f}, backRight{0.5f, -0.5f, -0.5f};
    const Vec3 topLeft{-0.5f, 0.5f, -0.5f}, topRight{0.5f, 0.5f, -0.5f};
    mesh.AddFlatFace({frontLeft, frontRight, topRight, topLeft});  // the slope
    mesh.AddFlatFace({backRight, backLeft, topLeft, topRight});    // the back wall
    mesh.AddFlatFace({frontLeft, backLeft, backRight, frontRight}); // the bottom
    mesh.AddFlatFace({frontLeft, topLeft, backLeft});               // the left side
    mesh.AddFlatFace({frontRight, backRight, topRight});            // the right side
    return mesh;
}

void Icosphere(int subdivisions, std::vector<Vec3>& corners, std::vector<std::uint32_t>& triangles)
{
    const float t = (1.0f + std::sqrt(5.0f)) * 0.5f;
    corners = {{-1, t, 0}, {1, t, 0}, {-1, -t, 0}, {1, -t, 0}, {0, -1, t}, {0, 1, t},
               {0, -1, -t}, {0, 1, -t}, {t, 0, -1}, {t, 0, 1}, {-t, 0, -1}, {-t, 0, 1}};
    for (Vec3& corner : corners)
        corner = corner.Normalized();
    triangles = {0, 11, 5, 0, 5, 1, 0, 1, 7, 0, 7, 10, 0, 10, 11, 1, 5, 9, 5, 11, 4, 11, 10, 2, 10, 7, 6, 7, 1, 8,
                 3, 9, 4, 3, 4, 2, 3, 2, 6, 3, 6, 8, 3, 8, 9, 4, 9, 5, 2, 4, 11, 6, 2, 10, 8, 6, 7, 9, 8, 1};
    for (int s = 0; s < subdivisions; ++s)
    {
        std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> middles;
        auto middle = [&](std::uint32_t a, std::uint32_t b) {
            const auto key = std::minmax(a, b);
            const auto found = middles.find(key);
            if (found != middles.end())
                return found->second;
            corners.push_back(((corners[a] + corners[b]) * 0.5f).Normalized());
            const auto index = static_cast<std::uint32_t>(corners.size() - 1);
            middles.emplace(key, index);
            return index;
        };
        std::vector<std::uint32_t> split;
        for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        {
            const std::uint32_t a = triangles[i], b = triangles[i + 1], c = triangles[i + 2];
            const std::uint32_t ab = middle(a, b), bc = middle(b, c), ca = middle(c, a);
            split.insert(split.end(), {a, ab, ca, b, bc, ab, c, ca, bc, ab, bc, ca});
        }
        triangles = std::move(split);
    }
}

MeshBuilder Orb(float radius, int subdivisions)
{
    std::vector<Vec3> corners;
    std::vector<std::uint32_t> triangles;
    Icosphere(subdivisions, corners, triangles);
    MeshBuilder mesh;
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        mesh.AddFlatFace({corners[triangles[i]] * radius, corners[triangles[i + 1]] * radius,
                          corners[triangles[i + 2]] * radius});
    return mesh;
}
}
