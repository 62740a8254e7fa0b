#include "physics/ColliderCube.h"

#include "Components/Transform/Transform.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/Property.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ColliderCubeTest, BoundsHoldTheTurnedCorners)
{
    Transform transform;
    transform.m_Position = Math::Point3D(5.0f, 0.0f, 0.0f);
    transform.m_Rotation = Math::Quaternion::CreateFromEuler(0.0f, 45.0f, 0.0f);
    ColliderCube cube;
    cube.transform = &transform;
    cube.SetDimensions(Math::Vector3D(2.0f, 2.0f, 2.0f));
    cube.UpdateBounds();
    const float reach = std::sqrt(2.0f);
    EXPECT_EQ(cube.min, Math::Point3D(5.0f - reach, -1.0f, -reach));
    EXPECT_EQ(cube.max, Math::Point3D(5.0f + reach, 1.0f, reach));
}

TEST(ColliderCubeTest, SupportTurnsTheCornersByTheRotation)
{
    Transform transform;
    transform.m_Position = Math::Point3D(0.0f, 3.0f, 0.0f);
    transform.m_Rotation = Math::Quaternion::CreateFromEuler(0.0f, 45.0f, 0.0f);
    ColliderCube cube;
    cube.transform = &transform;
    cube.UpdateBounds();
    const Math::Point3D far = cube.GetSupport(Math::Vector3D(1.0f, 0.0f, 0.0f));
    EXPECT_NEAR(far.x, std::sqrt(0.5f), 1e-5f);
    EXPECT_NEAR(far.y, 3.5f, 1e-5f);
    EXPECT_NEAR(far.z, 0.0f, 1e-5f);
}

TEST(ColliderCubeTest, ScaleRebuildsTheCornersOnlyBeyondTheTolerance)
{
    Transform transform;
    ColliderCube cube;
    cube.transform = &transform;
    transform.m_Scale = Math::Vector3D(1.0f, 1.00009f, 1.0f);
    cube.UpdateBounds();
    EXPECT_EQ(cube.m_Scale.y, 1.0f);
    EXPECT_EQ(cube.m_Vertices[0].y, 0.5f);
    transform.m_Scale = Math::Vector3D(2.0f, 1.0f, 1.0f);
    cube.UpdateBounds();
    EXPECT_EQ(cube.m_Vertices[0], Math::Vector3D(1.0f, 0.5f, 0.5f));
    EXPECT_EQ(cube.max, Math::Point3D(1.0f, 0.5f, 0.5f));
}

TEST(ColliderCubeTest, LocalAndWorldFramesTurnWithTheRotation)
{
    Transform transform;
    transform.m_Position = Math::Point3D(1.0f, 0.0f, 0.0f);
    transform.m_Rotation = Math::Quaternion::CreateFromEuler(90.0f, 0.0f, 0.0f);
    ColliderCube cube;
    cube.transform = &transform;
    const Math::Point3D local(0.0f, 1.0f, 0.0f);
    const Math::Point3D world = cube.ToWorld(local);
    EXPECT_NE(world, Math::Point3D(1.0f, 1.0f, 0.0f));
    EXPECT_EQ(cube.ToLocal(world), local);
}

TEST(ColliderCubeTest, DimensionsPropertyRebuildsTheCorners)
{
    ColliderCube cube;
    const Meta::Property* dimensions = Meta::Get<ColliderCube>()->FindProperty("Dimensions");
    ASSERT_NE(dimensions, nullptr);
    const Math::Vector3D size(2.0f, 2.0f, 2.0f);
    dimensions->Set(&cube, &size);
    EXPECT_EQ(cube.m_Vertices[1], Math::Vector3D(-1.0f, -1.0f, -1.0f));
}

TEST(ColliderCubeTest, SupportFollowsARotationChangedBetweenQueries)
{
    Transform transform;
    ColliderCube cube;
    cube.transform = &transform;
    cube.SetDimensions(Math::Vector3D(2.0f, 1.0f, 1.0f));
    cube.UpdateBounds();
    EXPECT_NEAR(cube.GetSupport(Math::Vector3D(1.0f, 0.0f, 0.0f)).x, 1.0f, 1e-5f);
    // A quarter turn about y brings the long axis onto z; the turned corners are taken anew.
    transform.m_Rotation = Math::Quaternion::CreateFromEuler(0.0f, 90.0f, 0.0f);
    EXPECT_NEAR(cube.GetSupport(Math::Vector3D(1.0f, 0.0f, 0.0f)).x, 0.5f, 1e-5f);
    EXPECT_NEAR(std::fabs(cube.GetSupport(Math::Vector3D(0.0f, 0.0f, 1.0f)).z), 1.0f, 1e-5f);
    // New dimensions are turned anew too, with the rotation unchanged.
    cube.SetDimensions(Math::Vector3D(4.0f, 1.0f, 1.0f));
    EXPECT_NEAR(cube.GetSupport(Math::Vector3D(0.0f, 0.0f, 1.0f)).z, 2.0f, 1e-5f);
}
