#include "Graphics_Engine/Model/BuiltInModels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

using namespace Graphics;

namespace
{
using Float3 = std::array<float, 3>;

Float3 Position(const Vertex& vertex)
{
    return {vertex.position[0], vertex.position[1], vertex.position[2]};
}

// The triangle's (v1 - v0) x (v2 - v0): it points where the triangle winds counter-clockwise,
// seen from that side, in a right-handed space.
Float3 FaceDirection(const ModelGeometry& geometry, std::size_t triangle)
{
    const Float3 a = Position(geometry.vertices[geometry.indices[triangle * 3]]);
    const Float3 b = Position(geometry.vertices[geometry.indices[triangle * 3 + 1]]);
    const Float3 c = Position(geometry.vertices[geometry.indices[triangle * 3 + 2]]);
    const Float3 e1 = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const Float3 e2 = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    return {e1[1] * e2[2] - e1[2] * e2[1], e1[2] * e2[0] - e1[0] * e2[2], e1[0] * e2[1] - e1[1] * e2[0]};
}

// The triangle's centre, which for shapes around the origin points outwards.
Float3 Centre(const ModelGeometry& geometry, std::size_t triangle)
{
    Float3 sum = {0, 0, 0};
    for (int corner = 0; corner < 3; ++corner)
    {
        const Float3 p = Position(geometry.vertices[geometry.indices[triangle * 3 + corner]]);
        for (int i = 0; i < 3; ++i)
            sum[i] += p[i] / 3.0f;
    }
    return sum;
}

float Dot(const Float3& a, const Float3& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

float Dot(const float a[3], const Float3& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
}

TEST(BuiltInModelsTest, CubeHas24VerticesAnd36IndicesOfSide1)
{
    const ModelGeometry cube = MakeCube();
    EXPECT_EQ(cube.vertices.size(), 24u);
    EXPECT_EQ(cube.indices.size(), 36u);
    for (const Vertex& vertex : cube.vertices)
        for (float coordinate : vertex.position)
            EXPECT_FLOAT_EQ(std::fabs(coordinate), 0.5f);
}

TEST(BuiltInModelsTest, CubeFacesWindCounterClockwiseSeenFromOutside)
{
    const ModelGeometry cube = MakeCube();
    for (std::size_t triangle = 0; triangle < 12; ++triangle)
    {
        const Float3 facing = FaceDirection(cube, triangle);
        EXPECT_GT(Dot(facing, Centre(cube, triangle)), 0.0f) << "triangle " << triangle;
        // The stored normal agrees with the winding.
        const Vertex& first = cube.vertices[cube.indices[triangle * 3]];
        EXPECT_GT(Dot(first.normal, facing), 0.0f) << "triangle " << triangle;
    }
}

TEST(BuiltInModelsTest, CubeFacesCarryNormalsTangentsAndFullTextureSquares)
{
    const ModelGeometry cube = MakeCube();
    for (std::size_t face = 0; face < 6; ++face)
    {
        float uMin = 1, uMax = 0, vMin = 1, vMax = 0;
        for (std::size_t corner = 0; corner < 4; ++corner)
        {
            const Vertex& vertex = cube.vertices[face * 4 + corner];
            const Float3 normal = {vertex.normal[0], vertex.normal[1], vertex.normal[2]};
            EXPECT_FLOAT_EQ(Dot(normal, normal), 1.0f);
            EXPECT_FLOAT_EQ(Dot(vertex.position, normal), 0.5f);
            EXPECT_FLOAT_EQ(Dot(vertex.tangent, normal), 0.0f);
            EXPECT_FLOAT_EQ(Dot(vertex.tangent, {vertex.tangent[0], vertex.tangent[1], vertex.tangent[2]}), 1.0f);
            uMin = std::min(uMin, vertex.uv[0]);
            uMax = std::max(uMax, vertex.uv[0]);
            vMin = std::min(vMin, vertex.uv[1]);
            vMax = std::max(vMax, vertex.uv[1]);
        }
        EXPECT_EQ(uMin, 0.0f);
        EXPECT_EQ(uMax, 1.0f);
        EXPECT_EQ(vMin, 0.0f);
        EXPECT_EQ(vMax, 1.0f);
    }
}

TEST(BuiltInModelsTest, CubeTangentsPointWhereUGrows)
{
    const ModelGeometry cube = MakeCube();
    for (std::size_t face = 0; face < 6; ++face)
    {
        // Corners 0 and 1 are the top left (u 0) and top right (u 1).
        const Vertex& left = cube.vertices[face * 4];
        const Vertex& right = cube.vertices[face * 4 + 1];
        const Float3 across = {right.position[0] - left.position[0], right.position[1] - left.position[1],
                               right.position[2] - left.position[2]};
        EXPECT_GT(right.uv[0], left.uv[0]);
        EXPECT_FLOAT_EQ(Dot(left.tangent, across), 1.0f) << "face " << face;
    }
}

TEST(BuiltInModelsTest, FullScreenQuadCoversClipSpaceInThePlaneZ0WithSixIndices)
{
    const ModelGeometry quad = MakeFullScreenQuad();
    ASSERT_EQ(quad.vertices.size(), 4u);
    EXPECT_EQ(quad.indices.size(), 6u);
    for (const Vertex& vertex : quad.vertices)
    {
        EXPECT_FLOAT_EQ(std::fabs(vertex.position[0]), 1.0f);
        EXPECT_FLOAT_EQ(std::fabs(vertex.position[1]), 1.0f);
        EXPECT_EQ(vertex.position[2], 0.0f);
        // Texture v runs down the screen: the top row has v 0.
        EXPECT_EQ(vertex.uv[0], vertex.position[0] > 0 ? 1.0f : 0.0f);
        EXPECT_EQ(vertex.uv[1], vertex.position[1] > 0 ? 0.0f : 1.0f);
    }
    // Counter-clockwise in clip space (x right, y up): facing +z.
    for (std::size_t triangle = 0; triangle < 2; ++triangle)
        EXPECT_GT(FaceDirection(quad, triangle)[2], 0.0f);
}

TEST(BuiltInModelsTest, SphereHasThePolesAnd13RingsOf11)
{
    const ModelGeometry sphere = MakeSphere();
    ASSERT_EQ(sphere.vertices.size(), 145u);
    EXPECT_EQ(Position(sphere.vertices.front()), (Float3{0, 0.5f, 0}));
    EXPECT_EQ(Position(sphere.vertices.back()), (Float3{0, -0.5f, 0}));
    for (const Vertex& vertex : sphere.vertices)
        EXPECT_NEAR(std::sqrt(Dot(Position(vertex), Position(vertex))), 0.5f, 1e-6f);
    // Ring k at k pi/14 from the north, vertex j at j pi/5 around.
    const float pi = std::numbers::pi_v<float>;
    for (std::uint32_t ring = 1; ring <= 13; ++ring)
        for (std::uint32_t column = 0; column < 11; ++column)
        {
            const Vertex& vertex = sphere.vertices[1 + (ring - 1) * 11 + column];
            EXPECT_NEAR(vertex.position[1], 0.5f * std::cos(ring * pi / 14), 1e-6f);
            EXPECT_NEAR(vertex.position[0], 0.5f * std::sin(ring * pi / 14) * std::cos(column * pi / 5), 1e-6f);
            EXPECT_NEAR(vertex.position[2], 0.5f * std::sin(ring * pi / 14) * std::sin(column * pi / 5), 1e-6f);
            EXPECT_FLOAT_EQ(vertex.uv[0], column / 10.0f);
            EXPECT_FLOAT_EQ(vertex.uv[1], ring / 14.0f);
        }
}

TEST(BuiltInModelsTest, TheTenthColumnOfTheSphereRepeatsTheFirstInPosition)
{
    const ModelGeometry sphere = MakeSphere();
    for (std::uint32_t ring = 1; ring <= 13; ++ring)
    {
        const Vertex& first = sphere.vertices[1 + (ring - 1) * 11];
        const Vertex& last = sphere.vertices[1 + (ring - 1) * 11 + 10];
        EXPECT_EQ(Position(first), Position(last)) << "ring " << ring;
        EXPECT_EQ(first.uv[0], 0.0f);
        EXPECT_EQ(last.uv[0], 1.0f);
        EXPECT_EQ(first.uv[1], last.uv[1]);
    }
}

TEST(BuiltInModelsTest, TheLastRingOfTheSphereConnectsToTheSouthPole)
{
    const ModelGeometry sphere = MakeSphere();
    const std::uint32_t south = 144;
    const std::uint32_t lastRingStart = 1 + 12 * 11;
    std::vector<bool> joined(11, false);
    for (std::size_t i = 0; i < sphere.indices.size(); i += 3)
    {
        const std::uint32_t* t = &sphere.indices[i];
        if (t[0] != south && t[1] != south && t[2] != south)
            continue;
        for (int corner = 0; corner < 3; ++corner)
        {
            if (t[corner] == south)
                continue;
            ASSERT_GE(t[corner], lastRingStart) << "a south triangle reaches above the last ring";
            joined[t[corner] - lastRingStart] = true;
        }
    }
    for (std::size_t column = 0; column < 11; ++column)
        EXPECT_TRUE(joined[column]) << "column " << column;
}

TEST(BuiltInModelsTest, SphereTrianglesCoverItOutwardWithEveryVertexUsed)
{
    const ModelGeometry sphere = MakeSphere();
    ASSERT_EQ(sphere.indices.size(), 260u * 3u);
    std::vector<bool> used(sphere.vertices.size(), false);
    for (std::size_t triangle = 0; triangle < 260; ++triangle)
    {
        EXPECT_GT(Dot(FaceDirection(sphere, triangle), Centre(sphere, triangle)), 0.0f) << "triangle " << triangle;
        for (int corner = 0; corner < 3; ++corner)
            used[sphere.indices[triangle * 3 + corner]] = true;
    }
    for (std::size_t v = 0; v < used.size(); ++v)
        EXPECT_TRUE(used[v]) << "vertex " << v;
}

TEST(BuiltInModelsTest, SkyboxFacesPointInwards)
{
    const ModelGeometry skybox = MakeSkybox();
    ASSERT_EQ(skybox.vertices.size(), 24u);
    ASSERT_EQ(skybox.indices.size(), 36u);
    for (std::size_t triangle = 0; triangle < 12; ++triangle)
    {
        const Float3 facing = FaceDirection(skybox, triangle);
        EXPECT_LT(Dot(facing, Centre(skybox, triangle)), 0.0f) << "triangle " << triangle;
        const Vertex& first = skybox.vertices[skybox.indices[triangle * 3]];
        EXPECT_GT(Dot(first.normal, facing), 0.0f) << "triangle " << triangle;
    }
}
