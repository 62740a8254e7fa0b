#include "physics/Resolution.h"

#include "Components/Transform/Transform.h"
#include "physics/Body.h"
#include "physics/Contact.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
// Two bodies with their own transforms, in a contact along +x from A to B.
struct BodyPair
{
    BodyPair()
    {
        a.transform = &transformA;
        b.transform = &transformB;
        transformB.m_Position = Math::Point3D(1.0f, 0.0f, 0.0f);
        contact.bodyA = &a;
        contact.bodyB = &b;
        contact.normal = Math::Vector3D(1.0f, 0.0f, 0.0f);
    }
    Transform transformA, transformB;
    PhysicsBody a, b;
    Contact contact;
};
}

TEST(ResolutionTest, IntegrationMovesByTheOldVelocityAndHalfTheAccelerationThenAccelerates)
{
    Transform transform;
    PhysicsBody body;
    body.transform = &transform;
    body.Velocity = Math::Vector3D(2.0f, 0.0f, 0.0f);
    body.Gravity = Math::Vector3D(0.0f, -10.0f, 0.0f);
    Resolution::Integrate(body, 0.5f);
    EXPECT_EQ(transform.m_Position, Math::Point3D(1.0f, -1.25f, 0.0f));
    EXPECT_EQ(body.Velocity, Math::Vector3D(2.0f, -5.0f, 0.0f));
}

TEST(ResolutionTest, SpeedOfExactlyOneThousandIsKeptAndAboveIsCutAfterGravity)
{
    Transform transform;
    PhysicsBody body;
    body.transform = &transform;
    body.Velocity = Math::Vector3D(1000.0f, 0.0f, 0.0f);
    Resolution::Integrate(body, 0.01f);
    EXPECT_EQ(body.Velocity.x, 1000.0f);

    body.Velocity = Math::Vector3D(0.0f, -999.0f, 0.0f);
    body.Gravity = Math::Vector3D(0.0f, -1000.0f, 0.0f);
    Resolution::Integrate(body, 0.01f);
    EXPECT_FLOAT_EQ(body.Velocity.Length(), 1000.0f);
    EXPECT_LT(body.Velocity.y, 0.0f);
}

TEST(ResolutionTest, BodyOfMassZeroStillMovesByItsOwnVelocity)
{
    Transform transform;
    PhysicsBody body;
    body.transform = &transform;
    body.Material.Density = 0.0f;
    body.Velocity = Math::Vector3D(0.0f, 0.0f, 3.0f);
    Resolution::Integrate(body, 1.0f);
    EXPECT_EQ(transform.m_Position, Math::Point3D(0.0f, 0.0f, 3.0f));
}

TEST(ResolutionTest, PenetrationUpToTheSlopIsNotCorrected)
{
    BodyPair pair;
    pair.contact.penetration = 0.1f;
    Resolution::CorrectPositions(pair.contact, 1.0f, 1.0f);
    EXPECT_EQ(pair.transformA.m_Position, Math::Point3D(0.0f, 0.0f, 0.0f));
    EXPECT_EQ(pair.transformB.m_Position, Math::Point3D(1.0f, 0.0f, 0.0f));
}

TEST(ResolutionTest, CorrectionRemovesSeventyPercentOfTheExcessSplitByMass)
{
    BodyPair pair;
    pair.contact.penetration = 1.1f;
    // Excess 1; A of mass 1 and B of mass 3: A moves by 0.7 * 3/4, B by 0.7 * 1/4.
    Resolution::CorrectPositions(pair.contact, 1.0f, 3.0f);
    EXPECT_FLOAT_EQ(pair.transformA.m_Position.x, -0.525f);
    EXPECT_FLOAT_EQ(pair.transformB.m_Position.x, 1.175f);
}

TEST(ResolutionTest, CorrectionAgainstMassZeroMovesOnlyTheOtherBodyByTheWholeShare)
{
    BodyPair pair;
    pair.contact.penetration = 1.1f;
    Resolution::CorrectPositions(pair.contact, 0.0f, 2.0f);
    EXPECT_FLOAT_EQ(pair.transformA.m_Position.x, 0.0f);
    EXPECT_FLOAT_EQ(pair.transformB.m_Position.x, 1.7f);
}

TEST(ResolutionTest, BouncinessOneOnAMassZeroFloorReversesTheNormalSpeedInFull)
{
    BodyPair pair;
    pair.a.Material.Density = 0.0f;
    pair.contact.normal = Math::Vector3D(0.0f, 1.0f, 0.0f);
    pair.b.Velocity = Math::Vector3D(0.0f, -4.0f, 0.0f);
    Resolution::ApplyImpulse(pair.contact);
    EXPECT_EQ(pair.b.Velocity, Math::Vector3D(0.0f, 4.0f, 0.0f));
    EXPECT_EQ(pair.a.Velocity, Math::Vector3D());
}

TEST(ResolutionTest, ContactUsesTheSmallerBounciness)
{
    BodyPair pair;
    pair.a.Material.Density = 0.0f;
    pair.a.Material.Bounciness = 0.5f;
    pair.contact.normal = Math::Vector3D(0.0f, 1.0f, 0.0f);
    pair.b.Velocity = Math::Vector3D(0.0f, -4.0f, 0.0f);
    Resolution::ApplyImpulse(pair.contact);
    EXPECT_FLOAT_EQ(pair.b.Velocity.y, 2.0f);
}

TEST(ResolutionTest, SeparatingPairIsLeftAlone)
{
    BodyPair pair;
    pair.b.Velocity = Math::Vector3D(1.0f, 0.0f, 0.0f);
    Resolution::ApplyImpulse(pair.contact);
    EXPECT_EQ(pair.b.Velocity, Math::Vector3D(1.0f, 0.0f, 0.0f));
    EXPECT_EQ(pair.a.Velocity, Math::Vector3D());
}

TEST(ResolutionTest, RestingContactWithZeroNormalSpeedGetsNoFrictionImpulse)
{
    BodyPair pair;
    pair.a.Material.Density = 0.0f;
    pair.a.Material.Friction = 1.0f;
    pair.b.Material.Friction = 1.0f;
    pair.contact.normal = Math::Vector3D(0.0f, 1.0f, 0.0f);
    pair.b.Velocity = Math::Vector3D(3.0f, 0.0f, 0.0f);
    Resolution::ApplyImpulse(pair.contact);
    EXPECT_EQ(pair.b.Velocity, Math::Vector3D(3.0f, 0.0f, 0.0f));
}

TEST(ResolutionTest, ClosingSlidingContactIsSlowedByFrictionUpToTheCoulombLimit)
{
    BodyPair pair;
    pair.a.Material.Density = 0.0f;
    pair.a.Material.Bounciness = 0.0f;
    pair.b.Material.Friction = 0.1f;
    pair.contact.normal = Math::Vector3D(0.0f, 1.0f, 0.0f);
    pair.b.Velocity = Math::Vector3D(3.0f, -2.0f, 0.0f);
    Resolution::ApplyImpulse(pair.contact);
    // j = 2 (mass 1, bounce 0), mu = 0.1: the sliding speed drops by mu * j = 0.2.
    EXPECT_FLOAT_EQ(pair.b.Velocity.y, 0.0f);
    EXPECT_FLOAT_EQ(pair.b.Velocity.x, 2.8f);
}

TEST(ResolutionTest, StrongFrictionStopsTheSlideAtOnce)
{
    BodyPair pair;
    pair.a.Material.Density = 0.0f;
    pair.a.Material.Bounciness = 0.0f;
    pair.b.Material.Friction = 10.0f;
    pair.contact.normal = Math::Vector3D(0.0f, 1.0f, 0.0f);
    pair.b.Velocity = Math::Vector3D(3.0f, -2.0f, 0.0f);
    Resolution::ApplyImpulse(pair.contact);
    EXPECT_NEAR(pair.b.Velocity.x, 0.0f, 1e-5f);
}
