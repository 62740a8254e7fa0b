// The narrow phase over thousands of random pairs of every shape kind, held
// against the closed-form model of ShapeReference: the overlap answer agrees
// away from a thin band at the surface, the normal has unit length, and
// moving the second shape along the normal by the depth plus a little
// separates the pair. It also prints how many rounds the general test took,
// the numbers behind its iteration limits.
#include "physics/NarrowPhase.h"

#include "RandomShapes.h"
#include "ShapeReference.h"
#include "physics/Contact.h"
#include "physics/ConvexTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <sstream>

namespace
{
constexpr int kPosesPerPair = 300;
// Answers closer than this to touching are not compared.
constexpr double kBand = 0.02;
// How far beyond the reported depth the second shape is moved.
constexpr float kPushBeyond = 0.002f;

Math::Point3D RandomPoint(std::mt19937& random, float reach)
{
    std::uniform_real_distribution<float> coordinate(-reach, reach);
    return Math::Point3D(coordinate(random), coordinate(random), coordinate(random));
}

bool TakesTheGeneralTest(int a, int b)
{
    using namespace RandomShapes;
    if (a == Plane || b == Plane)
        return false;
    if (a == AxisCube && (b == AxisCube || b == Sphere))
        return false;
    if (a == Sphere && (b == Sphere || b == AxisCube || b == Cube))
        return false;
    return !(a == Cube && b == Sphere);
}

struct RoundCounts
{
    int tests = 0;
    int gjkTotal = 0;
    int gjkMost = 0;
    int epaRuns = 0;
    int epaTotal = 0;
    int epaMost = 0;
    int stoppedEarly = 0;
};
}

TEST(NarrowPhasePropertyTest, RandomPairsAgreeWithTheReferenceAndSeparateAlongTheNormal)
{
    std::mt19937 random(20240517u);
    RoundCounts rounds;
    int compared = 0;
    int failures = 0;
    std::ostringstream firstFailures;
    auto fail = [&](const std::string& what) {
        if (++failures <= 10)
            firstFailures << what << "\n";
    };
    for (int kindA = 0; kindA < RandomShapes::KindCount; ++kindA)
        for (int kindB = 0; kindB < RandomShapes::KindCount; ++kindB)
        {
            if (kindA == RandomShapes::Plane && kindB == RandomShapes::Plane)
                continue;
            for (int pose = 0; pose < kPosesPerPair; ++pose)
            {
                // One pose in ten lies far from the origin.
                const Math::Vector3D far = pose % 10 == 0 ? Math::Vector3D(150.0f, -80.0f, 40.0f) : Math::Vector3D();
                const Math::Point3D at = RandomPoint(random, 3.0f) + far;
                RandomShapes::Holder a, b;
                RandomShapes::Make(a, kindA, at, random);
                RandomShapes::Make(b, kindB, at + RandomPoint(random, 2.0f).ToVector(), random);
                const double expected =
                    ShapeReference::Overlap(ShapeReference::FromCollider(*a.collider), ShapeReference::FromCollider(*b.collider));
                Contact contact;
                contact.colliderA = a.collider.get();
                contact.colliderB = b.collider.get();
                const bool touching = NarrowPhase::Collide(contact);
                std::ostringstream where;
                where << RandomShapes::Name(kindA) << " / " << RandomShapes::Name(kindB) << " pose " << pose
                      << ": reference " << expected << ", contact " << touching << ", depth " << contact.penetration
                      << ", normal " << contact.normal.Print();
                if (TakesTheGeneralTest(kindA, kindB))
                {
                    ConvexTest::Stats stats;
                    Math::Vector3D normal;
                    float depth = 0.0f;
                    ConvexTest::Collide(*a.collider, *b.collider, normal, depth, &stats);
                    ++rounds.tests;
                    rounds.gjkTotal += stats.gjkIterations;
                    rounds.gjkMost = std::max(rounds.gjkMost, stats.gjkIterations);
                    if (stats.epaIterations > 0)
                    {
                        ++rounds.epaRuns;
                        rounds.epaTotal += stats.epaIterations;
                        rounds.epaMost = std::max(rounds.epaMost, stats.epaIterations);
                    }
                    rounds.stoppedEarly += stats.epaStoppedEarly || stats.gjkLimitReached;
                }
                if (std::fabs(expected) > kBand)
                {
                    ++compared;
                    if (touching != (expected > 0.0))
                        fail("overlap answer differs, " + where.str());
                }
                if (!touching)
                    continue;
                if (std::fabs(contact.normal.Length() - 1.0f) > 1e-4f)
                    fail("normal not unit length, " + where.str());
                // Moving the second shape along the normal by the depth and a little more parts them. (The box and
                // sphere test may report more depth than needed when the centre is inside the box, pushing through
                // the face its world position picks; moving farther still parts a convex pair, so that quirk passes.)
                b.transform.m_Position = b.transform.m_Position + contact.normal * (contact.penetration + kPushBeyond);
                b.collider->UpdateBounds();
                const double after =
                    ShapeReference::Overlap(ShapeReference::FromCollider(*a.collider), ShapeReference::FromCollider(*b.collider));
                if (after >= 0.0)
                    fail("still overlapping by " + std::to_string(after) + " after the push, " + where.str());
            }
        }
    std::printf("narrow phase property: %d answers compared; general test: %d pairs, GJK rounds mean %.2f most %d; "
                "polytope rounds over %d runs mean %.2f most %d; %d stopped at a bound\n",
                compared, rounds.tests, rounds.tests ? double(rounds.gjkTotal) / rounds.tests : 0.0, rounds.gjkMost,
                rounds.epaRuns, rounds.epaRuns ? double(rounds.epaTotal) / rounds.epaRuns : 0.0, rounds.epaMost,
                rounds.stoppedEarly);
    EXPECT_GT(compared, 5000);
    EXPECT_EQ(failures, 0) << firstFailures.str();
}
