#include "physics/ColliderSphere.h"

#include "Components/Transform/Transform.h"

#include <gtest/gtest.h>

TEST(ColliderSphereTest, BoundsUseTheLargestScaleComponent)
{
    Transform transform;
    transform.m_Position = Math::Point3D(1.0f, 2.0f, 3.0f);
    transform.m_Scale = Math::Vector3D(1.0f, 3.0f, 2.0f);
    ColliderSphere sphere;
    sphere.Radius = 0.5f;
    sphere.transform = &transform;
    sphere.UpdateBounds();
    EXPECT_FLOAT_EQ(sphere.m_LargestScale, 3.0f);
    EXPECT_FLOAT_EQ(sphere.WorldRadius(), 1.5f);
    EXPECT_EQ(sphere.min, Math::Point3D(-0.5f, 0.5f, 1.5f));
    EXPECT_EQ(sphere.max, Math::Point3D(2.5f, 3.5f, 4.5f));
}

TEST(ColliderSphereTest, SupportIsTheCentrePlusTheWorldRadiusAlongTheDirection)
{
    Transform transform;
    transform.m_Position = Math::Point3D(1.0f, 0.0f, 0.0f);
    transform.m_Scale = Math::Vector3D(2.0f, 2.0f, 2.0f);
    ColliderSphere sphere;
    sphere.transform = &transform;
    sphere.UpdateBounds();
    EXPECT_EQ(sphere.GetSupport(Math::Vector3D(0.0f, 5.0f, 0.0f)), Math::Point3D(1.0f, 2.0f, 0.0f));
    EXPECT_EQ(sphere.GetSupport(Math::Vector3D()), Math::Point3D(1.0f, 0.0f, 0.0f));
}

TEST(ColliderSphereTest, LocalAndWorldFramesTurnWithTheRotation)
{
    Transform transform;
    transform.m_Position = Math::Point3D(0.0f, 0.0f, 5.0f);
    transform.m_Rotation = Math::Quaternion::CreateFromEuler(0.0f, 90.0f, 0.0f);
    ColliderSphere sphere;
    sphere.transform = &transform;
    const Math::Point3D local(1.0f, 2.0f, 3.0f);
    const Math::Point3D world = sphere.ToWorld(local);
    EXPECT_NE(world, transform.m_Position + local.ToVector());
    EXPECT_EQ(sphere.ToLocal(world), local);
}
