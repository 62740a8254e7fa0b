#include "physics/PhysicsSystem.h"

#include "PhysicsTestWorld.h"

#include <gtest/gtest.h>

namespace
{
// Counts the events of one kind.
int CountOf(const std::vector<ReceivedEvent>& events, const std::string& kind)
{
    int count = 0;
    for (const ReceivedEvent& event : events)
        count += event.kind == kind;
    return count;
}
}

TEST(PhysicsSystemTest, BallWithGravityAndNoBounceComesToRestOnTheFloor)
{
    PhysicsTestWorld world;
    world.Floor(Math::Point3D(0.0f, 0.0f, 0.0f));
    GameObject* ball = world.Ball(Math::Point3D(0.0f, 5.0f, 0.0f), 0.5f);
    BodyOf(ball).Gravity = Math::Vector3D(0.0f, -20.0f, 0.0f);
    BodyOf(ball).Material.Bounciness = 0.0f;
    BodyOf(ball).AddToList(0);
    world.Step(240);
    // It rests within the slop of the surface and no longer moves down.
    EXPECT_NEAR(PositionOf(ball).y, 0.5f, 0.15f);
    const float before = PositionOf(ball).y;
    world.Step(60);
    EXPECT_NEAR(PositionOf(ball).y, before, 0.01f);
    EXPECT_NEAR(PositionOf(ball).x, 0.0f, 1e-5f);
}

TEST(PhysicsSystemTest, BodiesWithEmptyListsGetDifferentGroupEventsEveryFrameAndDoNotMove)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first, second;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f, &first);
    GameObject* b = world.Ball(Math::Point3D(1.0f, 0.0f, 0.0f), 1.0f, &second);
    world.Step(3);
    EXPECT_EQ(CountOf(first, "DiffGroupCollision"), 3);
    EXPECT_EQ(CountOf(second, "DiffGroupCollision"), 3);
    EXPECT_EQ(first.size(), 3u);
    EXPECT_EQ(PositionOf(a), Math::Point3D(0.0f, 0.0f, 0.0f));
    EXPECT_EQ(PositionOf(b), Math::Point3D(1.0f, 0.0f, 0.0f));
}

TEST(PhysicsSystemTest, OneSidedListIsEnoughToResolveThePair)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first, second;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f, &first);
    GameObject* b = world.Ball(Math::Point3D(1.0f, 0.0f, 0.0f), 1.0f, &second);
    BodyOf(b).Group = 2;
    BodyOf(a).AddToList(2);
    world.Step();
    EXPECT_EQ(CountOf(first, "Collision"), 1);
    EXPECT_EQ(CountOf(second, "Collision"), 1);
    EXPECT_LT(PositionOf(a).x, 0.0f);
    EXPECT_GT(PositionOf(b).x, 1.0f);
}

TEST(PhysicsSystemTest, EventsReachBothObjectsWithEachOthersIdsAndOppositeNormals)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first, second;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f, &first);
    GameObject* b = world.Ball(Math::Point3D(0.0f, 1.5f, 0.0f), 1.0f, &second);
    BodyOf(a).AddToList(0);
    world.Step();
    ASSERT_EQ(first.size(), 1u);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_EQ(first[0].otherId, b->GetId());
    EXPECT_EQ(second[0].otherId, a->GetId());
    // Each normal points away from its receiver, towards the other object.
    EXPECT_GT(first[0].normal.DotProduct(PositionOf(b) - PositionOf(a)), 0.0f);
    EXPECT_EQ(first[0].normal, second[0].normal * -1.0f);
    EXPECT_FLOAT_EQ(first[0].normal.Length(), 1.0f);
}

TEST(PhysicsSystemTest, GhostPairWithAllowingListsGetsOnlyGhostEventsAndIsNotPushed)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first, second;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f, &first);
    GameObject* b = world.Ball(Math::Point3D(1.0f, 0.0f, 0.0f), 1.0f, &second);
    BodyOf(a).Ghost = true;
    BodyOf(a).AddToList(0);
    BodyOf(b).Velocity = Math::Vector3D(-1.0f, 0.0f, 0.0f);
    world.Step();
    EXPECT_EQ(CountOf(first, "GhostCollision"), 1);
    EXPECT_EQ(CountOf(second, "GhostCollision"), 1);
    EXPECT_EQ(first.size() + second.size(), 2u);
    EXPECT_EQ(PositionOf(a), Math::Point3D(0.0f, 0.0f, 0.0f));
    EXPECT_EQ(BodyOf(b).Velocity, Math::Vector3D(-1.0f, 0.0f, 0.0f));
}

TEST(PhysicsSystemTest, GhostPairWithNonAllowingListsGetsDifferentGroupEvents)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f, &first);
    world.Ball(Math::Point3D(1.0f, 0.0f, 0.0f), 1.0f);
    BodyOf(a).Ghost = true;
    world.Step();
    ASSERT_EQ(first.size(), 1u);
    EXPECT_EQ(first[0].kind, "DiffGroupCollision");
}

TEST(PhysicsSystemTest, BodiesWhoseListsExcludeEachOtherDoNotCollide)
{
    PhysicsTestWorld world;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f);
    GameObject* b = world.Ball(Math::Point3D(3.0f, 0.0f, 0.0f), 1.0f);
    BodyOf(a).Group = 1;
    BodyOf(a).AddToList(1);
    BodyOf(b).Group = 2;
    BodyOf(b).AddToList(2);
    BodyOf(b).Velocity = Math::Vector3D(-60.0f, 0.0f, 0.0f);
    world.Step(6);
    // B passes through A, whose position never changes.
    EXPECT_EQ(PositionOf(a), Math::Point3D(0.0f, 0.0f, 0.0f));
    EXPECT_NEAR(PositionOf(b).x, -3.0f, 1e-4f);
}

TEST(PhysicsSystemTest, DensityZeroBodyFallsThroughImmovableBodiesWithoutEventsAndPushesNothing)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> falling, floor, wall;
    world.Floor(Math::Point3D(0.0f, 0.0f, 0.0f), &floor);
    GameObject* block = world.Ball(Math::Point3D(0.0f, -3.0f, 0.0f), 1.0f, &wall);
    BodyOf(block).Material.Density = 0.0f;
    GameObject* weightless = world.Ball(Math::Point3D(0.0f, 1.0f, 0.0f), 0.5f, &falling);
    BodyOf(weightless).Material.Density = 0.0f;
    BodyOf(weightless).Gravity = Math::Vector3D(0.0f, -60.0f, 0.0f);
    BodyOf(weightless).AddToList(0);
    world.Step(30);
    EXPECT_LT(PositionOf(weightless).y, -5.0f);
    EXPECT_TRUE(falling.empty());
    EXPECT_TRUE(floor.empty());
    EXPECT_TRUE(wall.empty());
    EXPECT_EQ(PositionOf(block), Math::Point3D(0.0f, -3.0f, 0.0f));
}

TEST(PhysicsSystemTest, MovableBodyMeetingADensityZeroBodyBouncesOffItAsOffAWall)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> ball;
    GameObject* weightless = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 0.5f);
    BodyOf(weightless).Material.Density = 0.0f;
    BodyOf(weightless).Velocity = Math::Vector3D(0.0f, -6.0f, 0.0f);
    GameObject* other = world.Ball(Math::Point3D(0.0f, -1.0f, 0.0f), 0.5f, &ball);
    BodyOf(other).AddToList(0);
    world.Step();
    EXPECT_EQ(CountOf(ball, "Collision"), 1);
    // The wall comes down at 6: a fully bouncy ball at rest leaves at 12, and the wall keeps its course.
    EXPECT_FLOAT_EQ(BodyOf(other).Velocity.y, -12.0f);
    EXPECT_EQ(BodyOf(weightless).Velocity, Math::Vector3D(0.0f, -6.0f, 0.0f));
    EXPECT_FLOAT_EQ(PositionOf(weightless).y, -0.1f);
}

TEST(PhysicsSystemTest, PlaneColliderPairsWithEveryColliderAndPlanesNeverPairWithEachOther)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> floor, other;
    world.Floor(Math::Point3D(0.0f, 0.0f, 0.0f), &floor);
    world.Floor(Math::Point3D(0.0f, 0.0f, 0.0f), &other);
    world.Ball(Math::Point3D(0.0f, 0.25f, 0.0f), 0.5f);
    world.Step();
    // One ball, two planes: two pairs, no plane-plane pair.
    EXPECT_EQ(world.system->m_Pairs.size(), 2u);
    EXPECT_EQ(floor.size(), 1u);
    EXPECT_EQ(other.size(), 1u);
    // The floor's event points up, away from the floor towards the ball... the ball is A, the plane B.
    EXPECT_EQ(floor[0].normal, Math::Vector3D(0.0f, 1.0f, 0.0f));
}

TEST(PhysicsSystemTest, TwoImmovableBodiesGiveNoEventAtAll)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f, &first);
    GameObject* b = world.Ball(Math::Point3D(1.0f, 0.0f, 0.0f), 1.0f);
    BodyOf(a).Material.Density = 0.0f;
    BodyOf(b).Material.Density = 0.0f;
    world.Step();
    EXPECT_TRUE(first.empty());
}

TEST(PhysicsSystemTest, HandlersSeeFinalPositionsAndMayDestroyObjects)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first;
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f);
    GameObject* b = world.Ball(Math::Point3D(1.5f, 0.0f, 0.0f), 1.0f);
    BodyOf(a).AddToList(0);
    Math::Point3D seen;
    a->GetComponent<Probe>()->m_OnEvent = [&](Probe&, Event*) {
        seen = PositionOf(b);
        b->Destroy();
    };
    world.space.m_Events.RegisterEvent(a->GetComponent<Probe>(), "Collision", &Probe::OnEvent);
    world.Step();
    EXPECT_EQ(seen, PositionOf(b));
    EXPECT_GT(seen.x, 1.5f);
    world.space.GarbageCollectObjects();
    EXPECT_EQ(world.system->m_Bodies.size(), 1u);
    EXPECT_EQ(world.system->m_Colliders.size(), 1u);
    world.Step();
}

TEST(PhysicsSystemTest, PenetrationWithinTheSlopGivesEventsAndVelocityChangesButNoPush)
{
    PhysicsTestWorld world;
    std::vector<ReceivedEvent> first, second;
    // Radii 1 and 1, centres 1.95 apart: 0.05 deep, within the slop of 0.1.
    GameObject* a = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f, &first);
    GameObject* b = world.Ball(Math::Point3D(1.95f, 0.0f, 0.0f), 1.0f, &second);
    BodyOf(a).AddToList(0);
    BodyOf(b).Velocity = Math::Vector3D(-0.6f, 0.0f, 0.0f);
    world.Step(1, 0.05f);
    EXPECT_EQ(CountOf(first, "Collision"), 1);
    EXPECT_EQ(CountOf(second, "Collision"), 1);
    // Only the integration moved B (by -0.03); nothing pushed them apart.
    EXPECT_EQ(PositionOf(a), Math::Point3D(0.0f, 0.0f, 0.0f));
    EXPECT_FLOAT_EQ(PositionOf(b).x, 1.92f);
    // Equal masses, full bounce: they swap their speeds along the normal.
    EXPECT_FLOAT_EQ(BodyOf(a).Velocity.x, -0.6f);
    EXPECT_NEAR(BodyOf(b).Velocity.x, 0.0f, 1e-6f);
}
