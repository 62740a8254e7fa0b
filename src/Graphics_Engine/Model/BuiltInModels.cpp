#include "Graphics_Engine/Model/BuiltInModels.h"

#include <array>
#include <cmath>
#include <numbers>
#include <utility>

namespace Graphics
{
namespace
{
using Float3 = std::array<float, 3>;

Vertex MakeVertex(const Float3& position, const Float3& normal, const Float3& tangent, float u, float v)
{
    Vertex vertex;
    for (int i = 0; i < 3; ++i)
    {
        vertex.position[i] = position[i];
        vertex.normal[i] = normal[i];
        vertex.tangent[i] = tangent[i];
    }
    vertex.uv[0] = u;
    vertex.uv[1] = v;
    return vertex;
}

// One face of the cube, seen from outside along -normal with `up` pointing up: right = up x normal.
struct Face
{
    Float3 normal;
    Float3 up;
};

Float3 Cross(const Float3& a, const Float3& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

// Adds a square of half size `half` centred at normal * `distance`: four corners top left, top
// right, bottom right, bottom left, and two triangles counter-clockwise seen from the normal's side.
void AddFace(ModelGeometry& geometry, const Face& face, float distance, float half)
{
    const Float3 right = Cross(face.up, face.normal);
    const auto base = static_cast<std::uint32_t>(geometry.vertices.size());
    const float corners[4][2] = {{-1, 1}, {1, 1}, {1, -1}, {-1, -1}};
    for (const auto& corner : corners)
    {
        Float3 position;
        for (int i = 0; i < 3; ++i)
            position[i] = face.normal[i] * distance + (right[i] * corner[0] + face.up[i] * corner[1]) * half;
        geometry.vertices.push_back(
            MakeVertex(position, face.normal, right, (corner[0] + 1) * 0.5f, (1 - corner[1]) * 0.5f));
    }
    for (std::uint32_t index : {0u, 3u, 2u, 0u, 2u, 1u})
        geometry.indices.push_back(base + index);
}
}

ModelGeometry MakeCube()
{
    static const Face faces[6] = {
        {{1, 0, 0}, {0, 1, 0}},  {{-1, 0, 0}, {0, 1, 0}}, {{0, 1, 0}, {0, 0, -1}},
        {{0, -1, 0}, {0, 0, 1}}, {{0, 0, 1}, {0, 1, 0}},  {{0, 0, -1}, {0, 1, 0}},
    };
    ModelGeometry cube;
    for (const Face& face : faces)
        AddFace(cube, face, 0.5f, 0.5f);
    return cube;
}

ModelGeometry MakeFullScreenQuad()
{
    ModelGeometry quad;
    AddFace(quad, {{0, 0, 1}, {0, 1, 0}}, 0.0f, 1.0f);
    return quad;
}

ModelGeometry MakeSphere()
{
    constexpr float kRadius = 0.5f;
    constexpr float kPi = std::numbers::pi_v<float>;
    ModelGeometry sphere;
    sphere.vertices.push_back(MakeVertex({0, kRadius, 0}, {0, 1, 0}, {1, 0, 0}, 0.0f, 0.0f));
    for (std::uint32_t ring = 1; ring <= kSphereRings; ++ring)
    {
        const float down = static_cast<float>(ring) * kPi / 14.0f;
        for (std::uint32_t column = 0; column < kSphereColumns; ++column)
        {
            // Column 10 comes back to the angle of column 0; its position is made the same exactly.
            const float around = static_cast<float>(column % (kSphereColumns - 1)) * kPi / 5.0f;
            const Float3 normal = {std::sin(down) * std::cos(around), std::cos(down), std::sin(down) * std::sin(around)};
            const Float3 position = {normal[0] * kRadius, normal[1] * kRadius, normal[2] * kRadius};
            const Float3 tangent = {-std::sin(around), 0.0f, std::cos(around)};
            const float u = static_cast<float>(column) / static_cast<float>(kSphereColumns - 1);
            sphere.vertices.push_back(MakeVertex(position, normal, tangent, u, down / kPi));
        }
    }
    sphere.vertices.push_back(MakeVertex({0, -kRadius, 0}, {0, -1, 0}, {1, 0, 0}, 0.0f, 1.0f));

    const std::uint32_t south = static_cast<std::uint32_t>(sphere.vertices.size()) - 1;
    auto at = [](std::uint32_t ring, std::uint32_t column) { return 1 + (ring - 1) * kSphereColumns + column; };
    auto triangle = [&sphere](std::uint32_t a, std::uint32_t b, std::uint32_t c) {
        sphere.indices.insert(sphere.indices.end(), {a, b, c});
    };
    // Counter-clockwise seen from outside: going around (growing column) and then down is outward.
    for (std::uint32_t column = 0; column + 1 < kSphereColumns; ++column)
        triangle(0, at(1, column + 1), at(1, column));
    for (std::uint32_t ring = 1; ring < kSphereRings; ++ring)
        for (std::uint32_t column = 0; column + 1 < kSphereColumns; ++column)
        {
            triangle(at(ring, column), at(ring, column + 1), at(ring + 1, column));
            triangle(at(ring, column + 1), at(ring + 1, column + 1), at(ring + 1, column));
        }
    for (std::uint32_t column = 0; column + 1 < kSphereColumns; ++column)
        triangle(at(kSphereRings, column), at(kSphereRings, column + 1), south);
    return sphere;
}

ModelGeometry MakeSkybox()
{
    ModelGeometry skybox = MakeCube();
    for (Vertex& vertex : skybox.vertices)
        for (float& n : vertex.normal)
            n = -n;
    for (std::size_t i = 0; i + 2 < skybox.indices.size(); i += 3)
        std::swap(skybox.indices[i + 1], skybox.indices[i + 2]);
    return skybox;
}
}
