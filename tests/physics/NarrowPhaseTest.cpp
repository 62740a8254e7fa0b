#include "physics/NarrowPhase.h"

#include "Components/Transform/Transform.h"
#include "PlacedShapes.h"
#include "engine/GameObject.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/Contact.h"
#include "support/AllocationCounter.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>

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

TEST(NarrowPhaseTest, ConcentricSphereAndAxisCubeFallBackToTheXAxisNegatedWhenSwapped)
{
    Placed<ColliderAxisCube> cube(Math::Point3D(3.0f, 3.0f, 3.0f));
    Placed<ColliderSphere> ball(Math::Point3D(3.0f, 3.0f, 3.0f));
    ball.shape.Radius = 0.25f;
    ball.shape.UpdateBounds();
    Contact cubeFirst = Between(cube.shape, ball.shape);
    ASSERT_TRUE(NarrowPhase::Collide(cubeFirst));
    EXPECT_FALSE(cubeFirst.swapped);
    EXPECT_EQ(cubeFirst.normal, Math::Vector3D(1.0f, 0.0f, 0.0f));
    EXPECT_FLOAT_EQ(cubeFirst.penetration, 0.75f);
    Contact ballFirst = Between(ball.shape, cube.shape);
    ASSERT_TRUE(NarrowPhase::Collide(ballFirst));
    EXPECT_TRUE(ballFirst.swapped);
    EXPECT_EQ(ballFirst.normal, Math::Vector3D(-1.0f, 0.0f, 0.0f));
}

TEST(NarrowPhaseTest, AxisCubesWithCoincidentCentresPushAlongXByTheXOverlap)
{
    Placed<ColliderAxisCube> a(Math::Point3D(1.0f, 1.0f, 1.0f));
    Placed<ColliderAxisCube> b(Math::Point3D(1.0f, 1.0f, 1.0f));
    b.shape.SetDimensions(Math::Vector3D(1.0f, 3.0f, 2.0f));
    Contact contact = Between(a.shape, b.shape);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_EQ(contact.normal, Math::Vector3D(1.0f, 0.0f, 0.0f));
    EXPECT_FLOAT_EQ(contact.penetration, 1.0f);
}

TEST(NarrowPhaseTest, AxisCubesTakeTheAxisOfLeastOverlap)
{
    Placed<ColliderAxisCube> a;
    Placed<ColliderAxisCube> b(Math::Point3D(0.2f, -0.9f, 0.1f));
    Contact contact = Between(a.shape, b.shape);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_EQ(contact.normal, Math::Vector3D(0.0f, -1.0f, 0.0f));
    EXPECT_NEAR(contact.penetration, 0.1f, 1e-6f);
}

TEST(NarrowPhaseTest, ExactlyTouchingAxisCubesAreNoContact)
{
    Placed<ColliderAxisCube> a;
    Placed<ColliderAxisCube> b(Math::Point3D(1.0f, 0.0f, 0.0f));
    Contact contact = Between(a.shape, b.shape);
    EXPECT_FALSE(NarrowPhase::Collide(contact));
}

TEST(NarrowPhaseTest, SphereOutsideAnAxisCubeIsPushedFromItsNearestPoint)
{
    Placed<ColliderAxisCube> cube;
    Placed<ColliderSphere> ball(Math::Point3D(0.0f, 0.8f, 0.0f));
    ball.shape.Radius = 0.5f;
    ball.shape.UpdateBounds();
    Contact contact = Between(cube.shape, ball.shape);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_EQ(contact.normal, Math::Vector3D(0.0f, 1.0f, 0.0f));
    EXPECT_NEAR(contact.penetration, 0.2f, 1e-5f);
    ball.transform.m_Position = Math::Point3D(0.0f, 1.01f, 0.0f);
    Contact apart = Between(cube.shape, ball.shape);
    EXPECT_FALSE(NarrowPhase::Collide(apart));
}

TEST(NarrowPhaseTest, AxisCubeIgnoresItsRotationAgainstASphere)
{
    Placed<ColliderAxisCube> cube(Math::Point3D(), Math::Quaternion::CreateFromEuler(0.0f, 45.0f, 0.0f));
    // Just off the unrotated corner region, inside the turned box's reach along x but not the axis box's.
    Placed<ColliderSphere> ball(Math::Point3D(0.8f, 0.0f, 0.0f));
    ball.shape.Radius = 0.25f;
    ball.shape.UpdateBounds();
    Contact contact = Between(cube.shape, ball.shape);
    EXPECT_FALSE(NarrowPhase::Collide(contact));
}

TEST(NarrowPhaseTest, TurnedCubeAndSphereMeetInTheCubesFrame)
{
    Placed<ColliderCube> cube(Math::Point3D(), Math::Quaternion::CreateFromEuler(0.0f, 45.0f, 0.0f));
    Placed<ColliderSphere> ball(Math::Point3D(0.8f, 0.0f, 0.0f));
    ball.shape.Radius = 0.25f;
    ball.shape.UpdateBounds();
    Contact cubeFirst = Between(cube.shape, ball.shape);
    ASSERT_TRUE(NarrowPhase::Collide(cubeFirst));
    // The corner of the turned box points along +x, so the nearest point is that corner.
    EXPECT_NEAR(cubeFirst.normal.x, 1.0f, 1e-4f);
    EXPECT_NEAR(cubeFirst.penetration, 0.25f - (0.8f - std::sqrt(0.5f)), 1e-4f);
    Contact ballFirst = Between(ball.shape, cube.shape);
    ASSERT_TRUE(NarrowPhase::Collide(ballFirst));
    EXPECT_TRUE(ballFirst.swapped);
    EXPECT_NEAR(ballFirst.normal.x, -1.0f, 1e-4f);
}

TEST(NarrowPhaseTest, CubeFarFromTheOriginPushesAnInsideSphereThroughTheFaceItsWorldPositionPicks)
{
    // The centre sits 0.3 inside the +x face, so the nearest face is +x; but the face side is chosen by
    // comparing the clamped local x (0.2) with the cube's world x (100): it picks the -x face.
    Placed<ColliderCube> cube(Math::Point3D(100.0f, 0.0f, 0.0f), Math::Quaternion(), Math::Vector3D(2.0f, 2.0f, 2.0f));
    Placed<ColliderSphere> ball(Math::Point3D(100.7f, 0.0f, 0.0f));
    ball.shape.Radius = 0.1f;
    ball.shape.UpdateBounds();
    Contact contact = Between(cube.shape, ball.shape);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_EQ(contact.normal, Math::Vector3D(1.0f, 0.0f, 0.0f));
    EXPECT_NEAR(contact.penetration, 1.7f + 0.1f, 1e-4f);
    // The same pair near the origin takes the +x face.
    Placed<ColliderCube> near(Math::Point3D(), Math::Quaternion(), Math::Vector3D(2.0f, 2.0f, 2.0f));
    ball.transform.m_Position = Math::Point3D(0.7f, 0.0f, 0.0f);
    Contact nearContact = Between(near.shape, ball.shape);
    ASSERT_TRUE(NarrowPhase::Collide(nearContact));
    EXPECT_NEAR(nearContact.penetration, 0.3f + 0.1f, 1e-4f);
}

TEST(NarrowPhaseTest, BaseCollidersNeverTouch)
{
    Collider base;
    Placed<ColliderSphere> ball;
    Placed<ColliderCube> cube;
    Contact baseFirst = Between(base, ball.shape);
    EXPECT_FALSE(NarrowPhase::Collide(baseFirst));
    Contact baseSecond = Between(cube.shape, base);
    EXPECT_FALSE(NarrowPhase::Collide(baseSecond));
    Contact sphereThenBase = Between(ball.shape, base);
    EXPECT_FALSE(NarrowPhase::Collide(sphereThenBase));
}

TEST(NarrowPhaseTest, TurnedCubesAndArcsTakeTheGeneralTest)
{
    Placed<ColliderCube> a;
    Placed<ColliderAxisCube> b(Math::Point3D(0.9f, 0.0f, 0.0f));
    Contact cubes = Between(a.shape, b.shape);
    ASSERT_TRUE(NarrowPhase::Collide(cubes));
    EXPECT_FALSE(cubes.swapped);
    EXPECT_NEAR(cubes.normal.x, 1.0f, 1e-4f);
    EXPECT_NEAR(cubes.penetration, 0.1f, 1e-4f);

    Placed<ColliderArc> arc(Math::Point3D(-1.4f, 0.0f, 0.0f));
    arc.shape.BuildArc(90.0f, 1.0f, 0.0f, 1.0f);
    arc.shape.UpdateBounds();
    Contact arcAndCube = Between(arc.shape, a.shape);
    ASSERT_TRUE(NarrowPhase::Collide(arcAndCube));
    EXPECT_NEAR(arcAndCube.normal.x, 1.0f, 1e-4f);
    EXPECT_NEAR(arcAndCube.penetration, 0.1f, 1e-4f);
}

TEST(NarrowPhaseTest, PlaneTakesTheDeepestCornerOfATurnedCube)
{
    Transform floor;
    ColliderPlane plane;
    plane.transform = &floor;
    plane.SetNormal(Math::Vector3D(0.0f, 1.0f, 0.0f));
    Placed<ColliderCube> cube(Math::Point3D(0.0f, 0.6f, 0.0f), Math::Quaternion::CreateFromEuler(0.0f, 0.0f, 45.0f));
    Contact contact = Between(plane, cube.shape);
    ASSERT_TRUE(NarrowPhase::Collide(contact));
    EXPECT_NEAR(contact.penetration, std::sqrt(0.5f) - 0.6f, 1e-5f);
}

TEST(NarrowPhaseTest, NaNPositionIsNoContactAndLoggedOnceNamingTheOwners)
{
    GameObject holderA, holderB;
    holderA.SetName("Crate");
    holderB.SetName("Ball");
    Placed<ColliderCube> cube;
    Placed<ColliderArc> arc;
    arc.shape.BuildArc(90.0f, 1.0f, 0.0f, 1.0f);
    cube.shape.m_Owner = &holderA;
    arc.shape.m_Owner = &holderB;
    cube.transform.m_Position.x = std::nanf("");
    ReportCapture reports;
    for (int frame = 0; frame < 3; ++frame)
    {
        Contact contact = Between(cube.shape, arc.shape);
        EXPECT_FALSE(NarrowPhase::Collide(contact));
    }
    const std::string& text = reports.Text();
    EXPECT_NE(text.find("\"Crate\""), std::string::npos) << text;
    EXPECT_NE(text.find("\"Ball\""), std::string::npos) << text;
    EXPECT_EQ(text.find("Collision test skipped"), text.rfind("Collision test skipped")) << text;
    cube.shape.m_Owner = nullptr;
    arc.shape.m_Owner = nullptr;
}

TEST(NarrowPhaseTest, NaNInsideAShapeIsNoContact)
{
    Placed<ColliderSphere> a;
    Placed<ColliderSphere> b;
    b.shape.Radius = std::nanf("");
    b.shape.UpdateBounds();
    Placed<ColliderCube> cube;
    cube.shape.SetDimensions(Math::Vector3D(std::nanf(""), 1.0f, 1.0f));
    ReportCapture reports;
    Contact spheres = Between(a.shape, b.shape);
    EXPECT_FALSE(NarrowPhase::Collide(spheres));
    Contact general = Between(cube.shape, a.shape);
    EXPECT_FALSE(NarrowPhase::Collide(general));
    Contact convex = Between(cube.shape, cube.shape);
    EXPECT_FALSE(NarrowPhase::Collide(convex));
    EXPECT_TRUE(reports.Holds("Collision test skipped"));
}

TEST(NarrowPhaseTest, ClosedTestsAndTheGeneralTestAllocateNothing)
{
    Placed<ColliderSphere> ball(Math::Point3D(0.3f, 0.2f, 0.0f));
    Placed<ColliderSphere> other(Math::Point3D(0.9f, 0.2f, 0.0f));
    Placed<ColliderAxisCube> axisCube;
    Placed<ColliderAxisCube> axisCube2(Math::Point3D(0.5f, 0.5f, 0.0f));
    Placed<ColliderCube> cube(Math::Point3D(), Math::Quaternion::CreateFromEuler(10.0f, 20.0f, 30.0f));
    Placed<ColliderCube> cube2(Math::Point3D(0.6f, 0.3f, 0.1f), Math::Quaternion::CreateFromEuler(40.0f, 0.0f, 5.0f));
    Placed<ColliderArc> arc(Math::Point3D(-0.5f, 0.0f, 0.0f));
    arc.shape.BuildArc(90.0f, 1.0f, 0.2f, 0.5f);
    Transform floor;
    ColliderPlane plane;
    plane.transform = &floor;
    plane.SetNormal(Math::Vector3D(0.0f, 1.0f, 0.0f));
    std::pair<Collider*, Collider*> pairs[] = {
        {&ball.shape, &other.shape},   {&axisCube.shape, &axisCube2.shape}, {&axisCube.shape, &ball.shape},
        {&ball.shape, &cube.shape},    {&cube.shape, &ball.shape},          {&plane, &cube.shape},
        {&cube.shape, &cube2.shape},   {&arc.shape, &cube.shape},           {&ball.shape, &arc.shape}};
    const AllocationCount before;
    int touching = 0;
    for (auto& [a, b] : pairs)
    {
        Contact contact = Between(*a, *b);
        touching += NarrowPhase::Collide(contact);
    }
    EXPECT_EQ(before.Since(), 0u);
    EXPECT_EQ(touching, 9);
}
