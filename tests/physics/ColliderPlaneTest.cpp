#include "physics/ColliderPlane.h"

#include "Components/Transform/Transform.h"

#include <gtest/gtest.h>

TEST(ColliderPlaneTest, NormalIsNormalisedWhenSetAndOffsetIsKeptAsGiven)
{
    ColliderPlane plane;
    plane.SetNormal(Math::Vector3D(0.0f, 4.0f, 0.0f));
    EXPECT_EQ(plane.GetNormal(), Math::Vector3D(0.0f, 1.0f, 0.0f));
    plane.SetOffset(Math::Vector3D(0.0f, -7.5f, 0.0f));
    EXPECT_EQ(plane.GetOffset(), Math::Vector3D(0.0f, -7.5f, 0.0f));
    EXPECT_EQ(plane.type, 6);
}

TEST(ColliderPlaneTest, SupportIsThePlanePointInEveryDirection)
{
    Transform transform;
    transform.m_Position = Math::Point3D(1.0f, 2.0f, 3.0f);
    ColliderPlane plane;
    plane.transform = &transform;
    plane.SetOffset(Math::Vector3D(0.0f, -1.0f, 0.0f));
    EXPECT_EQ(plane.GetSupport(Math::Vector3D(0.0f, 1.0f, 0.0f)), Math::Point3D(1.0f, 1.0f, 3.0f));
    EXPECT_EQ(plane.GetSupport(Math::Vector3D(0.0f, -1.0f, 0.0f)), Math::Point3D(1.0f, 1.0f, 3.0f));
    EXPECT_EQ(plane.ToLocal(Math::Point3D(2.0f, 2.0f, 3.0f)), Math::Point3D(1.0f, 0.0f, 0.0f));
    EXPECT_EQ(plane.ToWorld(Math::Point3D(1.0f, 0.0f, 0.0f)), Math::Point3D(2.0f, 2.0f, 3.0f));
}
