#include "physics/NarrowPhase.h"

#include "Components/Transform/Transform.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/Contact.h"

#include <gtest/gtest.h>

namespace
{
struct PlacedSphere
{
    PlacedSphere(Math::Point3D at, float radius)
    {
        transform.m_Position = at;
        sphere.Radius = radius;
        sphere.transform = &transform;
        sphere.UpdateBounds();
    }
    Transform transform;
    ColliderSphere sphere;
};

Contact Between(Collider& a, Collider& b)
{
    Contact contact;
    contact.colliderA = &a;
    contact.colliderB = &b;
    return contact;
}
}

TEST(NarrowPhaseTest, ConcentricSpheresPushApartAlongXByTheSumOfRadii)
{
    PlacedSphere a(Math::Point3D(2.0f, 2.0f, 2.0f), 1.0f);
    PlacedSphere b(Math::Point3D(2.0f, 2.0f, 2.0f), 0.5f);
    Contact contact = Between(a.sphere, b.sphere);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_EQ(contact.normal, Math::Vector3D(1.0f, 0.0f, 0.0f));
    EXPECT_FLOAT_EQ(contact.penetration, 1.5f);
}

TEST(NarrowPhaseTest, SpheresExactlyTouchingAreAContact)
{
    PlacedSphere a(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f);
    PlacedSphere b(Math::Point3D(0.0f, 2.0f, 0.0f), 1.0f);
    Contact contact = Between(a.sphere, b.sphere);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_EQ(contact.normal, Math::Vector3D(0.0f, 1.0f, 0.0f));
    EXPECT_FLOAT_EQ(contact.penetration, 0.0f);
    PlacedSphere c(Math::Point3D(0.0f, 2.01f, 0.0f), 1.0f);
    Contact apart = Between(a.sphere, c.sphere);
    EXPECT_FALSE(NarrowPhase::Collide(apart));
}

TEST(NarrowPhaseTest, PlaneTouchesAShapeWhoseDeepestPointIsBehindIt)
{
    Transform floor;
    ColliderPlane plane;
    plane.transform = &floor;
    plane.SetNormal(Math::Vector3D(0.0f, 1.0f, 0.0f));
    PlacedSphere ball(Math::Point3D(0.0f, 0.75f, 0.0f), 1.0f);

    Contact planeFirst = Between(plane, ball.sphere);
    ASSERT_TRUE(NarrowPhase::Collide(planeFirst));
    EXPECT_FALSE(planeFirst.swapped);
    EXPECT_EQ(planeFirst.normal, Math::Vector3D(0.0f, 1.0f, 0.0f));
    EXPECT_FLOAT_EQ(planeFirst.penetration, 0.25f);

    Contact ballFirst = Between(ball.sphere, plane);
    ASSERT_TRUE(NarrowPhase::Collide(ballFirst));
    EXPECT_TRUE(ballFirst.swapped);
    EXPECT_EQ(ballFirst.normal, Math::Vector3D(0.0f, -1.0f, 0.0f));
}

TEST(NarrowPhaseTest, ShapeFarBehindAPlaneReportsItsWholeDepth)
{
    Transform floor;
    ColliderPlane plane;
    plane.transform = &floor;
    plane.SetNormal(Math::Vector3D(0.0f, 1.0f, 0.0f));
    PlacedSphere buried(Math::Point3D(0.0f, -50.0f, 0.0f), 1.0f);
    Contact contact = Between(buried.sphere, plane);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_FLOAT_EQ(contact.penetration, 51.0f);
}

TEST(NarrowPhaseTest, TwoPlanesNeverTouch)
{
    Transform at;
    ColliderPlane a, b;
    a.transform = b.transform = &at;
    a.SetNormal(Math::Vector3D(0.0f, 1.0f, 0.0f));
    b.SetNormal(Math::Vector3D(0.0f, -1.0f, 0.0f));
    Contact contact = Between(a, b);
    EXPECT_FALSE(NarrowPhase::Collide(contact));
}
