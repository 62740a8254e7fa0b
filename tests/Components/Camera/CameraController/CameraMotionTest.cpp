#include "Components/Camera/CameraController/CameraMotion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace CameraMath;

namespace
{
constexpr float kFieldOfView = 45.0f;
constexpr float kAspect = 16.0f / 9.0f;
constexpr float kFrame = 1.0f / 60.0f;

// Straight down, a little tilted towards -z, as a game camera looks.
const Math::Vector3D kDown(0.0f, -2.0f, -1.0f);

Math::Vector3D Unit(Math::Vector3D v)
{
    v.Normalize();
    return v;
}

CameraInformation OneTarget(const Math::Point3D& at, float sphere = 1.0f)
{
    CameraInformation targets;
    targets.Add(at, sphere, 0.0f);
    return targets;
}

// Runs the controller's step for `frames` frames from `start`; gives the last step.
CameraStep RunFrames(const CameraInformation& targets, const CameraSettings& settings, Math::Point3D start, int frames,
               const Math::Vector3D& view = kDown)
{
    CameraStep step;
    step.Position = start;
    for (int i = 0; i < frames; ++i)
        step = StepCamera(targets, view, kFieldOfView, kAspect, settings, step.Position, step.Tracking, step.Zoom,
                          kFrame);
    return step;
}

void ExpectNear(const Math::Point3D& actual, const Math::Point3D& expected, float tolerance = 1e-3f)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}
}

TEST(CameraMotionTest, WithNoFocusTargetTheCameraStays)
{
    const CameraSettings settings;
    const Math::Point3D start(3, 40, 7);
    const CameraStep step = StepCamera(CameraInformation(), kDown, kFieldOfView, kAspect, settings, start, true,
                                       12.0f, kFrame);
    EXPECT_EQ(step.Position, start);
    EXPECT_FLOAT_EQ(step.Zoom, 12.0f);
    // Even far outside narrow limits, with no target nothing moves.
    CameraSettings narrow;
    narrow.Limits.MinX = -1.0f;
    narrow.Limits.MaxX = 1.0f;
    EXPECT_EQ(RunFrames(CameraInformation(), narrow, start, 30).Position, start);
}

TEST(CameraMotionTest, ASingleTargetIsCentredAtTheMinimumZoom)
{
    CameraSettings settings;
    settings.MinZoom = 25.0f;
    const Math::Point3D target(5, 0, -3);
    const CameraStep step = RunFrames(OneTarget(target), settings, Math::Point3D(0, 10, 0), 600);
    EXPECT_FLOAT_EQ(step.Zoom, 25.0f);
    ExpectNear(step.Position, target + Unit(kDown) * -25.0f);
    EXPECT_FALSE(step.Tracking);
    // Looking along the view from there, the target is in the middle of the screen.
    const Math::Vector3D toTarget = target - step.Position;
    EXPECT_NEAR(toTarget.CrossProduct(Unit(kDown)).Length(), 0.0f, 1e-3f);
}

TEST(CameraMotionTest, TargetsFarApartPushTheCameraBackUntilTheyFit)
{
    CameraSettings settings;
    settings.MinZoom = 5.0f;
    CameraInformation targets;
    targets.Add(Math::Point3D(-30, 0, 0), 1.0f, 0.0f);
    targets.Add(Math::Point3D(30, 0, 0), 1.0f, 0.0f);
    const CameraStep step = RunFrames(targets, settings, Math::Point3D(0, 10, 0), 1);
    EXPECT_NEAR(step.Zoom, targets.RequiredDistance(kFieldOfView, 0.0f, 1.0f), 1e-3f);
    EXPECT_GT(step.Zoom, 31.0f);
}

TEST(CameraMotionTest, TheZoomIsHeldToTheSpanOfTheLimits)
{
    CameraLimits limits;
    limits.MinX = -10.0f;
    limits.MaxX = 10.0f;
    limits.MinZ = -5.0f;
    limits.MaxZ = 5.0f;
    EXPECT_FLOAT_EQ(ChooseZoom(100.0f, 2.0f, limits), 30.0f);
    EXPECT_FLOAT_EQ(ChooseZoom(1.0f, 2.0f, limits), 2.0f);
    EXPECT_FLOAT_EQ(ChooseZoom(12.0f, 2.0f, limits), 12.0f);
}

TEST(CameraMotionTest, ALevelNarrowerThanTheViewOnOneAxisCentresTheCameraOnThatAxis)
{
    CameraSettings settings;
    settings.MinZoom = 20.0f;
    // Eight units wide on x, room enough on z.
    settings.Limits.MinX = 2.0f;
    settings.Limits.MaxX = 10.0f;
    const Math::Vector3D straightDown(0, -1, 0);
    const Math::Point3D target(9, 0, 30);
    const CameraStep step = RunFrames(OneTarget(target), settings, Math::Point3D(0, 20, 0), 600, straightDown);
    // x sits in the middle of the level; z follows the target.
    EXPECT_NEAR(step.Position.x, 6.0f, 1e-3f);
    EXPECT_NEAR(step.Position.z, 30.0f, 1e-3f);
    EXPECT_NEAR(step.Position.y, 20.0f, 1e-3f);
}

TEST(CameraMotionTest, AViewPastOneLimitIsPushedBackByTheExcess)
{
    CameraLimits limits;
    limits.MinX = -100.0f;
    limits.MaxX = 100.0f;
    limits.MinZ = -100.0f;
    limits.MaxZ = 100.0f;
    const float zoom = 10.0f;
    const float halfDepth = zoom * std::tan(kFieldOfView * 0.5f * 3.14159265f / 180.0f);
    const float halfWidth = halfDepth * kAspect;
    const Math::Vector3D down(0, -1, 0);
    // Looking at x = 95: the right edge would be past 100.
    const Math::Point3D clamped = ClampToLimits(Math::Point3D(95, 10, 0), down, zoom, kFieldOfView, kAspect, limits);
    EXPECT_NEAR(clamped.x, 100.0f - halfWidth, 1e-3f);
    EXPECT_NEAR(clamped.z, 0.0f, 1e-4f);
    const Math::Point3D low = ClampToLimits(Math::Point3D(0, 10, -99), down, zoom, kFieldOfView, kAspect, limits);
    EXPECT_NEAR(low.z, -100.0f + halfDepth, 1e-3f);
    // Inside the limits nothing changes.
    EXPECT_EQ(ClampToLimits(Math::Point3D(1, 10, 2), down, zoom, kFieldOfView, kAspect, limits),
              Math::Point3D(1, 10, 2));
}

TEST(CameraMotionTest, TheHeightIsHeldBetweenTheYLimits)
{
    CameraLimits limits;
    limits.MinY = 5.0f;
    limits.MaxY = 30.0f;
    const Math::Vector3D down(0, -1, 0);
    EXPECT_NEAR(ClampToLimits(Math::Point3D(0, 50, 0), down, 1.0f, kFieldOfView, kAspect, limits).y, 30.0f, 1e-4f);
    EXPECT_NEAR(ClampToLimits(Math::Point3D(0, 1, 0), down, 1.0f, kFieldOfView, kAspect, limits).y, 5.0f, 1e-4f);
    limits.MinY = 40.0f;
    limits.MaxY = 20.0f;
    // Limits that cross: a height past both sits between them.
    EXPECT_NEAR(ClampToLimits(Math::Point3D(0, 25, 0), down, 1.0f, kFieldOfView, kAspect, limits).y, 30.0f, 1e-4f);
}

TEST(CameraMotionTest, WithinTheDeadZoneTheCameraDoesNotMove)
{
    CameraSettings settings;
    settings.DeadZone = 2.0f;
    const Math::Point3D target(0, 0, 0);
    const Math::Point3D goal = GoalPosition(target, kDown, settings.MinZoom);
    const Math::Point3D start = goal + Math::Vector3D(1.5f, 0.0f, 0.0f);
    const CameraStep step = RunFrames(OneTarget(target), settings, start, 120);
    EXPECT_EQ(step.Position, start);
    EXPECT_FALSE(step.Tracking);
}

TEST(CameraMotionTest, OnceFollowingTheCameraGoesOnUntilItArrives)
{
    CameraSettings settings;
    settings.DeadZone = 2.0f;
    const Math::Point3D target(0, 0, 0);
    const Math::Point3D goal = GoalPosition(target, kDown, settings.MinZoom);
    // Outside the dead zone: it starts, and it does not stop at the dead zone's edge.
    const CameraStep step = RunFrames(OneTarget(target), settings, goal + Math::Vector3D(10, 0, 0), 600);
    ExpectNear(step.Position, goal);
    EXPECT_FALSE(step.Tracking);
}

TEST(CameraMotionTest, EasingSlowsDownNearTheGoal)
{
    CameraSettings settings;
    settings.DeadZone = 0.0f;
    const Math::Point3D target(0, 0, 0);
    const Math::Point3D goal = GoalPosition(target, kDown, settings.MinZoom);
    CameraStep step;
    step.Position = goal + Math::Vector3D(50, 0, 0);
    std::vector<float> stepLengths;
    for (int i = 0; i < 60; ++i)
    {
        const CameraStep next = StepCamera(OneTarget(target), kDown, kFieldOfView, kAspect, settings, step.Position,
                                           step.Tracking, step.Zoom, kFrame);
        stepLengths.push_back((next.Position - step.Position).Length());
        step = next;
    }
    for (std::size_t i = 1; i < stepLengths.size(); ++i)
        EXPECT_LT(stepLengths[i], stepLengths[i - 1]) << "frame " << i;
    // One second at four halvings a second leaves a sixteenth of the way.
    EXPECT_NEAR((step.Position - goal).Length(), 50.0f / 16.0f, 0.05f);
}

TEST(CameraMotionTest, FollowingDoesNotDependOnHowTheTimeIsCut)
{
    const float once = FollowFraction(4.0f, 1.0f, 0.1f);
    const float half = FollowFraction(4.0f, 1.0f, 0.05f);
    // Two half frames leave (1 - half)^2 of the way, as one whole frame leaves 1 - once.
    EXPECT_NEAR((1.0f - half) * (1.0f - half), 1.0f - once, 1e-5f);
    // The tracking modifier scales the share, never past the whole way.
    EXPECT_NEAR(FollowFraction(4.0f, 0.5f, 0.1f), 0.5f * once, 1e-6f);
    EXPECT_FLOAT_EQ(FollowFraction(4.0f, 100.0f, 0.1f), 1.0f);
    EXPECT_FLOAT_EQ(FollowFraction(4.0f, 1.0f, 0.0f), 0.0f);
    EXPECT_FLOAT_EQ(FollowFraction(4.0f, 1.0f, -1.0f), 0.0f);
}

TEST(CameraMotionTest, AViewVectorOfZeroLengthLeavesTheCameraWhereItIs)
{
    const CameraSettings settings;
    const Math::Point3D start(1, 2, 3);
    const CameraStep step = StepCamera(OneTarget(Math::Point3D(50, 0, 50)), Math::Vector3D(0, 0, 0), kFieldOfView,
                                       kAspect, settings, start, false, 0.0f, kFrame);
    EXPECT_EQ(step.Position, start);
}

TEST(CameraMotionTest, ShakeFadesOutAndReturnsToRest)
{
    const Math::Vector3D right(1, 0, 0);
    const Math::Vector3D up(0, 1, 0);
    // The largest shake of the first third of the second, and of the last third.
    float largestEarly = 0.0f;
    float largestLate = 0.0f;
    for (int i = 0; i < 60; ++i)
    {
        const Math::Vector3D offset = ShakeOffset(2.0f, 1.0f, i * kFrame, right, up);
        EXPECT_LE(offset.Length(), 2.0f * std::sqrt(2.0f) + 1e-4f);
        EXPECT_FLOAT_EQ(offset.z, 0.0f);
        if (i < 20)
            largestEarly = std::max(largestEarly, offset.Length());
        if (i >= 40)
            largestLate = std::max(largestLate, offset.Length());
    }
    EXPECT_GT(largestEarly, largestLate);
    EXPECT_EQ(ShakeOffset(2.0f, 1.0f, 1.0f, right, up), Math::Vector3D());
    EXPECT_EQ(ShakeOffset(2.0f, 1.0f, 5.0f, right, up), Math::Vector3D());
    EXPECT_EQ(ShakeOffset(2.0f, 0.0f, 0.0f, right, up), Math::Vector3D());
    // The same time gives the same shake.
    EXPECT_EQ(ShakeOffset(2.0f, 1.0f, 0.3f, right, up), ShakeOffset(2.0f, 1.0f, 0.3f, right, up));
}

TEST(CameraMotionTest, ScreenAxesLieAcrossTheViewEvenLookingStraightDown)
{
    Math::Vector3D right;
    Math::Vector3D up;
    ScreenAxes(Math::Vector3D(0, 0, -1), Math::Vector3D(0, 1, 0), right, up);
    EXPECT_EQ(right, Math::Vector3D(1, 0, 0));
    EXPECT_EQ(up, Math::Vector3D(0, 1, 0));
    ScreenAxes(Math::Vector3D(0, -1, 0), Math::Vector3D(0, 1, 0), right, up);
    EXPECT_NEAR(right.Length(), 1.0f, 1e-5f);
    EXPECT_NEAR(up.Length(), 1.0f, 1e-5f);
    EXPECT_NEAR(right.DotProduct(Math::Vector3D(0, -1, 0)), 0.0f, 1e-5f);
    EXPECT_NEAR(up.DotProduct(Math::Vector3D(0, -1, 0)), 0.0f, 1e-5f);
}

TEST(CameraMotionTest, APanEasesInAndOutFromItsStartToItsGoal)
{
    const Math::Point3D from(0, 10, 0);
    const Math::Point3D to(20, 10, 0);
    EXPECT_EQ(PanPosition(from, to, 0.0f, 2.0f), from);
    EXPECT_EQ(PanPosition(from, to, 1.0f, 2.0f), Math::Point3D(10, 10, 0));
    EXPECT_EQ(PanPosition(from, to, 2.0f, 2.0f), to);
    EXPECT_EQ(PanPosition(from, to, 3.0f, 2.0f), to);
    EXPECT_EQ(PanPosition(from, to, 0.0f, 0.0f), to);
    // Slow at both ends, fastest in the middle.
    const float start = PanPosition(from, to, 0.1f, 2.0f).x;
    const float middle = PanPosition(from, to, 1.1f, 2.0f).x - PanPosition(from, to, 1.0f, 2.0f).x;
    const float end = to.x - PanPosition(from, to, 1.9f, 2.0f).x;
    EXPECT_LT(start, middle);
    EXPECT_LT(end, middle);
}
