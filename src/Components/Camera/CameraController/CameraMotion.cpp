#include "Components/Camera/CameraController/CameraMotion.h"

#include <algorithm>
#include <cmath>

namespace CameraMath
{
namespace
{
constexpr float kPi = 3.14159265f;
// The shake's waves a second along the screen's right and up.
constexpr float kShakeRightHz = 13.0f;
constexpr float kShakeUpHz = 17.0f;
// The up wave starts a little later, so that the shake does not run along a diagonal.
constexpr float kShakeUpPhase = 1.0f;

bool Finite(const Math::Point3D& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

bool Finite(const Math::Vector3D& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// The shift that keeps [low, high] inside [least, most] on one axis; `middle` is the middle of [low, high].
float AxisShift(float low, float high, float middle, float least, float most)
{
    const bool pastLeast = low < least;
    const bool pastMost = high > most;
    if (pastLeast && pastMost)
        return (least + most) * 0.5f - middle;
    if (pastLeast)
        return least - low;
    if (pastMost)
        return most - high;
    return 0.0f;
}
}

float ChooseZoom(float needed, float minZoom, const CameraLimits& limits)
{
    float zoom = std::isfinite(needed) ? needed : 0.0f;
    if (std::isfinite(minZoom))
        zoom = std::max(zoom, minZoom);
    const float span = (limits.MaxX - limits.MinX) + (limits.MaxZ - limits.MinZ);
    if (std::isfinite(span) && span > 0.0f)
        zoom = std::min(zoom, span);
    return zoom;
}

float FollowFraction(float panSpeed, float trackingModifier, float dt)
{
    if (!std::isfinite(panSpeed) || !std::isfinite(trackingModifier) || !std::isfinite(dt) || dt <= 0.0f ||
        panSpeed <= 0.0f)
        return 0.0f;
    const float share = 1.0f - std::pow(0.5f, panSpeed * dt);
    return std::clamp(share * trackingModifier, 0.0f, 1.0f);
}

Math::Point3D ClampToLimits(const Math::Point3D& position, const Math::Vector3D& direction, float zoom,
                            float fieldOfView, float aspect, const CameraLimits& limits)
{
    const float halfDepth = std::fabs(zoom * std::tan(fieldOfView * 0.5f * kPi / 180.0f));
    const float halfWidth = std::fabs(halfDepth * aspect);
    if (!std::isfinite(halfDepth) || !std::isfinite(halfWidth))
        return position;
    const Math::Point3D look = position + direction * zoom;
    Math::Point3D result = position;
    result.x += AxisShift(look.x - halfWidth, look.x + halfWidth, look.x, limits.MinX, limits.MaxX);
    result.z += AxisShift(look.z - halfDepth, look.z + halfDepth, look.z, limits.MinZ, limits.MaxZ);
    result.y += AxisShift(position.y, position.y, position.y, limits.MinY, limits.MaxY);
    return Finite(result) ? result : position;
}

Math::Point3D GoalPosition(const Math::Point3D& center, const Math::Vector3D& viewVector, float zoom)
{
    Math::Vector3D direction = viewVector;
    direction.Normalize();
    return center + direction * -zoom;
}

CameraStep StepCamera(const CameraInformation& targets, const Math::Vector3D& viewVector, float fieldOfView,
                      float aspect, const CameraSettings& settings, const Math::Point3D& current, bool tracking,
                      float lastZoom, float dt)
{
    CameraStep step;
    step.Position = current;
    step.Zoom = lastZoom;
    step.Tracking = tracking;
    // 1. The view direction and the targets.
    Math::Vector3D direction = viewVector;
    direction.Normalize();
    if (targets.Empty() || !Finite(direction) || direction.LengthSquare() == 0.0f || !Finite(current))
        return step;

    // 2 to 4. The distance the targets need, held between the nearest zoom and the span of the limits.
    const float needed = targets.RequiredDistance(fieldOfView, settings.InnerPad, settings.AreaModifier);
    step.Zoom = ChooseZoom(needed, settings.MinZoom, settings.Limits);

    // 5. Where the camera wants to be.
    const Math::Point3D goal = GoalPosition(targets.Center(), direction, step.Zoom);

    // 6. Follow once the goal leaves the dead zone, until the camera arrives.
    const Math::Vector3D toGoal = goal - current;
    const float distance = toGoal.Length();
    if (distance - settings.DeadZone > 0.0f)
        step.Tracking = true;
    Math::Point3D moved = current;
    if (step.Tracking)
    {
        if (distance <= kArrivedDistance)
        {
            moved = goal;
            step.Tracking = false;
        }
        else
        {
            moved = current + toGoal * FollowFraction(settings.PanSpeed, settings.TrackingModifier, dt);
        }
    }

    // 7. Keep what the camera sees inside the limits.
    step.Position = ClampToLimits(moved, direction, step.Zoom, fieldOfView, aspect, settings.Limits);
    return step;
}

void ScreenAxes(const Math::Vector3D& viewVector, const Math::Vector3D& up, Math::Vector3D& right,
                Math::Vector3D& screenUp)
{
    Math::Vector3D direction = viewVector;
    direction.Normalize();
    right = direction.CrossProduct(up);
    if (!Finite(right) || right.LengthSquare() < 1e-12f)
        right = Math::Vector3D(1.0f, 0.0f, 0.0f);
    right.Normalize();
    screenUp = right.CrossProduct(direction);
    if (!Finite(screenUp) || screenUp.LengthSquare() < 1e-12f)
        screenUp = Math::Vector3D(0.0f, 1.0f, 0.0f);
    screenUp.Normalize();
}

Math::Vector3D ShakeOffset(float magnitude, float duration, float elapsed, const Math::Vector3D& right,
                           const Math::Vector3D& up)
{
    if (!std::isfinite(magnitude) || !std::isfinite(duration) || !std::isfinite(elapsed) || duration <= 0.0f ||
        elapsed < 0.0f || elapsed >= duration)
        return Math::Vector3D();
    const float fade = magnitude * (1.0f - elapsed / duration);
    const float across = std::sin(2.0f * kPi * kShakeRightHz * elapsed);
    const float upward = std::sin(2.0f * kPi * kShakeUpHz * elapsed + kShakeUpPhase);
    return right * (across * fade) + up * (upward * fade);
}

Math::Point3D PanPosition(const Math::Point3D& from, const Math::Point3D& to, float elapsed, float duration)
{
    if (!std::isfinite(duration) || duration <= 0.0f || !std::isfinite(elapsed) || elapsed >= duration)
        return to;
    const float t = std::clamp(elapsed / duration, 0.0f, 1.0f);
    const float eased = t * t * (3.0f - 2.0f * t);
    return from + (to - from) * eased;
}
}
