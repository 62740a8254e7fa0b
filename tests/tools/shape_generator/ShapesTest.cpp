// Every generated shape: indices in range, unit normals and tangents, faces
// counter-clockwise outward (a closed shape's signed volume is positive and
// every triangle winds with its vertex normals), and the documented size.
#include "shape_generator/GameModels.h"
#include "shape_generator/Rock.h"
#include "shape_generator/ShapeTable.h"
#include "shape_generator/Shapes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace
{
using ShapeTools::NormalOf;
using ShapeTools::PositionOf;
using ShapeTools::Vec3;

struct Bounds
{
    Vec3 Low{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    Vec3 High{-std::numeric_limits<float>::max(), -std::numeric_limits<float>::max(), -std::numeric_limits<float>::max()};
};

Bounds BoundsOf(const Graphics::ModelFile& model)
{
    Bounds bounds;
    for (const Graphics::Vertex& vertex : model.Vertices)
    {
        const Vec3 p = PositionOf(vertex);
        bounds.Low = {std::min(bounds.Low.x, p.x), std::min(bounds.Low.y, p.y), std::min(bounds.Low.z, p.z)};
        bounds.High = {std::max(bounds.High.x, p.x), std::max(bounds.High.y, p.y), std::max(bounds.High.z, p.z)};
    }
    return bounds;
}

// The volume enclosed, positive when the faces wind counter-clockwise seen from outside.
float SignedVolume(const Graphics::ModelFile& model)
{
    double volume = 0.0;
    for (std::size_t t = 0; t + 2 < model.Indices.size(); t += 3)
    {
        const Vec3 a = PositionOf(model.Vertices[model.Indices[t]]);
        const Vec3 b = PositionOf(model.Vertices[model.Indices[t + 1]]);
        const Vec3 c = PositionOf(model.Vertices[model.Indices[t + 2]]);
        volume += a.Dot(b.Cross(c)) / 6.0;
    }
    return static_cast<float>(volume);
}

Vec3 FaceNormal(const Graphics::ModelFile& model, std::size_t t)
{
    const Vec3 a = PositionOf(model.Vertices[model.Indices[t]]);
    const Vec3 b = PositionOf(model.Vertices[model.Indices[t + 1]]);
    const Vec3 c = PositionOf(model.Vertices[model.Indices[t + 2]]);
    return (b - a).Cross(c - a);
}

void ExpectWellFormed(const Graphics::ModelFile& model, const std::string& name)
{
    ASSERT_FALSE(model.Vertices.empty()) << name;
    ASSERT_EQ(model.Indices.size() % 3, 0u) << name;
    EXPECT_EQ(model.Type, Graphics::ModelType::Static) << name;
    for (std::uint32_t index : model.Indices)
        ASSERT_LT(index, model.Vertices.size()) << name;
    for (const Graphics::Vertex& vertex : model.Vertices)
    {
        const Vec3 normal = NormalOf(vertex);
        const Vec3 tangent{vertex.tangent[0], vertex.tangent[1], vertex.tangent[2]};
        EXPECT_NEAR(normal.Length(), 1.0f, 1e-4f) << name;
        EXPECT_NEAR(tangent.Length(), 1.0f, 1e-4f) << name;
        EXPECT_NEAR(normal.Dot(tangent), 0.0f, 1e-4f) << name;
        EXPECT_TRUE(vertex.uv[0] >= -1e-5f && vertex.uv[0] <= 1.0f + 1e-5f) << name;
        EXPECT_TRUE(vertex.uv[1] >= -1e-5f && vertex.uv[1] <= 1.0f + 1e-5f) << name;
        for (float skin : vertex.skin.weights)
            EXPECT_EQ(skin, 0.0f) << name;
    }
    for (std::size_t t = 0; t + 2 < model.Indices.size(); t += 3)
    {
        const Vec3 face = FaceNormal(model, t);
        EXPECT_GT(face.Length(), 0.0f) << name << " triangle " << t / 3 << " has no area";
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_GT(face.Dot(NormalOf(model.Vertices[model.Indices[t + k]])), 0.0f)
                << name << " triangle " << t / 3 << " winds against its normals";
    }
}

void ExpectBounds(const Graphics::ModelFile& model, Vec3 low, Vec3 high, const std::string& name, float tolerance = 1e-4f)
{
    const Bounds bounds = BoundsOf(model);
    EXPECT_NEAR(bounds.Low.x, low.x, tolerance) << name;
    EXPECT_NEAR(bounds.Low.y, low.y, tolerance) << name;
    EXPECT_NEAR(bounds.Low.z, low.z, tolerance) << name;
    EXPECT_NEAR(bounds.High.x, high.x, tolerance) << name;
    EXPECT_NEAR(bounds.High.y, high.y, tolerance) << name;
    EXPECT_NEAR(bounds.High.z, high.z, tolerance) << name;
}
}

TEST(Shapes, EveryShapeIsWellFormedAndWindsCounterClockwiseOutward)
{
    for (const ShapeTools::NamedShape& shape : ShapeTools::ShapeTable())
    {
        const Graphics::ModelFile model = shape.Make().Build();
        ExpectWellFormed(model, shape.Name);
        if (shape.Name != "plane")
        {
            EXPECT_GT(SignedVolume(model), 0.0f) << shape.Name;
        }
    }
}

TEST(Shapes, CapsuleIsOneWideAndTwoHigh)
{
    const Graphics::ModelFile model = ShapeTools::Capsule().Build();
    // The ring of 16 reaches the full radius on the axes x and z.
    ExpectBounds(model, {-0.5f, -1.0f, -0.5f}, {0.5f, 1.0f, 0.5f}, "capsule");
    const float exact = std::numbers::pi_v<float> * 0.25f * (1.0f + 4.0f / 3.0f * 0.5f);
    EXPECT_NEAR(SignedVolume(model), exact, exact * 0.06f);
}

TEST(Shapes, CylinderIsOneWideAndOneHigh)
{
    const Graphics::ModelFile model = ShapeTools::Cylinder().Build();
    ExpectBounds(model, {-0.5f, -0.5f, -0.5f}, {0.5f, 0.5f, 0.5f}, "cylinder");
    const float exact = std::numbers::pi_v<float> * 0.25f;
    EXPECT_NEAR(SignedVolume(model), exact, exact * 0.03f);
}

TEST(Shapes, ConeStandsOnItsBaseWithItsTipUp)
{
    const Graphics::ModelFile model = ShapeTools::Cone().Build();
    ExpectBounds(model, {-0.5f, -0.5f, -0.5f}, {0.5f, 0.5f, 0.5f}, "cone");
    for (const Graphics::Vertex& vertex : model.Vertices)
        if (vertex.position[1] > 0.49f)
        {
            EXPECT_NEAR(std::hypot(vertex.position[0], vertex.position[2]), 0.0f, 1e-5f);
        }
    const float exact = std::numbers::pi_v<float> * 0.25f / 3.0f;
    EXPECT_NEAR(SignedVolume(model), exact, exact * 0.03f);
}

TEST(Shapes, PlaneIsASquareFacingUp)
{
    const Graphics::ModelFile model = ShapeTools::Plane().Build();
    ExpectBounds(model, {-0.5f, 0.0f, -0.5f}, {0.5f, 0.0f, 0.5f}, "plane");
    for (std::size_t t = 0; t < model.Indices.size(); t += 3)
        EXPECT_GT(FaceNormal(model, t).y, 0.0f);
    for (const Graphics::Vertex& vertex : model.Vertices)
    {
        EXPECT_NEAR(vertex.normal[1], 1.0f, 1e-6f);
        // u along +X, v from the far edge (-Z) to the near one.
        EXPECT_NEAR(vertex.tangent[0], 1.0f, 1e-6f);
        EXPECT_NEAR(vertex.uv[1], vertex.position[2] + 0.5f, 1e-6f);
    }
}

TEST(Shapes, RampIsHalfTheUnitCubeRisingTowardsMinusZ)
{
    const Graphics::ModelFile model = ShapeTools::Ramp().Build();
    ExpectBounds(model, {-0.5f, -0.5f, -0.5f}, {0.5f, 0.5f, 0.5f}, "ramp");
    EXPECT_NEAR(SignedVolume(model), 0.5f, 1e-5f);
    bool slope = false;
    for (const Graphics::Vertex& vertex : model.Vertices)
        if (vertex.normal[1] > 0.1f)
        {
            slope = true;
            EXPECT_NEAR(vertex.normal[1], std::sqrt(0.5f), 1e-5f);
            EXPECT_NEAR(vertex.normal[2], std::sqrt(0.5f), 1e-5f);
        }
    EXPECT_TRUE(slope);
}

TEST(Shapes, OrbIsABallOfRadiusOneHalf)
{
    const Graphics::ModelFile model = ShapeTools::Orb().Build();
    for (const Graphics::Vertex& vertex : model.Vertices)
        EXPECT_NEAR(PositionOf(vertex).Length(), 0.5f, 1e-5f);
    EXPECT_EQ(model.Indices.size(), 80u * 3u);
}

TEST(Shapes, RocksFitTheUnitCubeAndTouchItsLargestSides)
{
    for (std::uint32_t seed = 1; seed <= 4; ++seed)
    {
        const Graphics::ModelFile model = ShapeTools::Rock(seed).Build();
        const Bounds bounds = BoundsOf(model);
        const Vec3 size = bounds.High - bounds.Low;
        EXPECT_NEAR(std::max({size.x, size.y, size.z}), 1.0f, 1e-4f) << "seed " << seed;
        EXPECT_NEAR(bounds.Low.x + bounds.High.x, 0.0f, 1e-4f) << "seed " << seed;
        EXPECT_NEAR(bounds.Low.y + bounds.High.y, 0.0f, 1e-4f) << "seed " << seed;
        EXPECT_NEAR(bounds.Low.z + bounds.High.z, 0.0f, 1e-4f) << "seed " << seed;
        // Lumps, not slabs: every side at least a third of the largest.
        EXPECT_GT(std::min({size.x, size.y, size.z}), 0.33f) << "seed " << seed;
    }
}

TEST(Shapes, TheSameSeedGivesTheSameRockAndAnotherSeedAnother)
{
    const std::vector<std::uint8_t> first = Graphics::WriteKbm(ShapeTools::Rock(7).Build());
    EXPECT_EQ(first, Graphics::WriteKbm(ShapeTools::Rock(7).Build()));
    EXPECT_NE(first, Graphics::WriteKbm(ShapeTools::Rock(8).Build()));
}

TEST(Shapes, ValueNoiseStaysInRangeAndIsSmooth)
{
    for (int i = 0; i < 200; ++i)
    {
        const Vec3 p{0.37f * static_cast<float>(i), -0.11f * static_cast<float>(i), 0.05f * static_cast<float>(i)};
        const float value = ShapeTools::ValueNoise(p, 3);
        EXPECT_GE(value, -1.0f);
        EXPECT_LE(value, 1.0f);
        EXPECT_NEAR(value, ShapeTools::ValueNoise(p + Vec3{1e-4f, 0, 0}, 3), 1e-2f);
    }
}

TEST(Shapes, PlayerFitsTheUnitCubeWithItsVisorAtTheFront)
{
    const Graphics::ModelFile model = ShapeTools::PlayerBody().Build();
    const Bounds bounds = BoundsOf(model);
    EXPECT_NEAR(bounds.Low.y, -0.5f, 1e-4f);
    EXPECT_NEAR(bounds.High.y, 0.5f, 1e-4f);
    EXPECT_NEAR(bounds.High.z, 0.5f, 1e-4f);
    EXPECT_NEAR(bounds.Low.z, -0.35f, 1e-4f);
    EXPECT_NEAR(bounds.High.x, 0.35f, 1e-4f);
}

TEST(Shapes, TangentsFollowIncreasingU)
{
    // Around the cylinder u grows with the angle: at the front (+Z) that is towards +X.
    const Graphics::ModelFile model = ShapeTools::Cylinder().Build();
    bool found = false;
    for (const Graphics::Vertex& vertex : model.Vertices)
        if (vertex.normal[2] > 0.999f)
        {
            found = true;
            EXPECT_NEAR(vertex.tangent[0], 1.0f, 1e-4f);
        }
    EXPECT_TRUE(found);
}
