#include "Graphics_Engine/Frustum.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Graphics;

namespace
{
constexpr float kNear = 0.1f;
constexpr float kFar = 1000.0f;
constexpr float kAspect = 800.0f / 600.0f;
const float kFieldOfView = 45.0f * 3.14159265f / 180.0f;

// The engine's perspective: right-handed, depth 0 to 1, row vectors.
Math::Matrix4 Perspective()
{
    const float cot = 1.0f / std::tan(kFieldOfView / 2.0f);
    Math::Matrix4 p(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    p.m[0][0] = cot / kAspect;
    p.m[1][1] = cot;
    p.m[2][2] = kFar / (kNear - kFar);
    p.m[2][3] = -1.0f;
    p.m[3][2] = kNear * kFar / (kNear - kFar);
    return p;
}

const Math::Vector3D kHalf(1.0f, 1.0f, 1.0f);
}

TEST(FrustumTest, PlanesAreNormalised)
{
    const Frustum frustum(Perspective());
    for (const Plane& plane : frustum.m_Planes)
        EXPECT_NEAR(plane.Normal.Length(), 1.0f, 1e-5f);
}

TEST(FrustumTest, BoxInFrontOfTheCameraIsInside)
{
    const Frustum frustum(Perspective());
    EXPECT_FALSE(frustum.IsBoxOutside(Math::Point3D(0, 0, -10), kHalf));
    EXPECT_FALSE(frustum.IsBoxOutside(Math::Point3D(2, -2, -50), kHalf));
}

TEST(FrustumTest, BoxBehindBesideOrBeyondTheFarPlaneIsOutside)
{
    const Frustum frustum(Perspective());
    EXPECT_TRUE(frustum.IsBoxOutside(Math::Point3D(0, 0, 10), kHalf));
    EXPECT_TRUE(frustum.IsBoxOutside(Math::Point3D(100, 0, -10), kHalf));
    EXPECT_TRUE(frustum.IsBoxOutside(Math::Point3D(0, -100, -10), kHalf));
    EXPECT_TRUE(frustum.IsBoxOutside(Math::Point3D(0, 0, -1100), kHalf));
}

TEST(FrustumTest, BoxStraddlingAnEdgeIsInside)
{
    const Frustum frustum(Perspective());
    // At depth 10 the view reaches tan(22.5 degrees) * 10 * aspect = 5.52 to the right.
    const float edge = std::tan(kFieldOfView / 2.0f) * 10.0f * kAspect;
    EXPECT_FALSE(frustum.IsBoxOutside(Math::Point3D(edge + 0.9f, 0, -10), kHalf));
    EXPECT_TRUE(frustum.IsBoxOutside(Math::Point3D(edge + 2.5f, 0, -10), kHalf));
    // Straddling the camera's own plane.
    EXPECT_FALSE(frustum.IsBoxOutside(Math::Point3D(0, 0, 0.5f), kHalf));
}

TEST(FrustumTest, ViewMatrixMovesTheVolume)
{
    // A camera moved to x = 100 (the view matrix translates by -100) sees the box there.
    Math::Matrix4 view = Math::Matrix4::Translation(-100.0f, 0.0f, 0.0f);
    const Frustum frustum(view * Perspective());
    EXPECT_FALSE(frustum.IsBoxOutside(Math::Point3D(100, 0, -10), kHalf));
    EXPECT_TRUE(frustum.IsBoxOutside(Math::Point3D(0, 0, -10), kHalf));
}

TEST(FrustumTest, DefaultFrustumCullsNothing)
{
    EXPECT_FALSE(Frustum().IsBoxOutside(Math::Point3D(1e6f, 1e6f, 1e6f), kHalf));
}
