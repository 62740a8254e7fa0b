// The camera controller's maths as plain functions of plain inputs, so that
// they run and are tested without a window, a space or a GL context.
//
// StepCamera is one frame of the controller: from the focus targets (folded
// into a CameraInformation), the view direction, the field of view and aspect
// ratio, the settings and limits, the current position and the frame time it
// gives the new position. The camera looks at the targets' centre from the
// zoom distance; it starts moving once that goal is farther than the dead zone
// and keeps going until it arrives, each frame covering a share of what is
// left (so it slows down near the goal); then the ground area it sees is held
// inside the limits on x and z, and its height inside those on y.
//
// ShakeOffset and PanPosition are the two scripted effects: a fading shake in
// the screen's plane and an eased move to a point over a set time.
#pragma once

#include "Components/Camera/CameraInformation/CameraInformation.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

namespace CameraMath
{
// The box the camera (and the ground it sees) is kept in.
struct CameraLimits
{
    // Smallest and largest x the seen ground may reach.
    float MinX = -1000.0f;
    float MaxX = 1000.0f;
    // Lowest and highest the camera itself may be.
    float MinY = -1000.0f;
    float MaxY = 1000.0f;
    // Smallest and largest z the seen ground may reach.
    float MinZ = -1000.0f;
    float MaxZ = 1000.0f;
};

// How the controller frames and follows its targets.
struct CameraSettings
{
    // The nearest the camera comes to the targets' centre.
    float MinZoom = 20.0f;
    // Degrees added to the zoom angle: more room around the targets.
    float InnerPad = 0.0f;
    // How many times a second the distance left to the goal halves while the camera follows.
    float PanSpeed = 4.0f;
    // How far the goal may be before the camera starts to follow.
    float DeadZone = 0.5f;
    // Scales each frame's share of the way (1: as PanSpeed says; held between 0 and all of it).
    float TrackingModifier = 1.0f;
    // Scales the distance the targets need.
    float AreaModifier = 1.0f;
    // The limits.
    CameraLimits Limits;
};

// What a frame of the controller gives.
struct CameraStep
{
    // The camera's new position.
    Math::Point3D Position;
    // The zoom distance of this frame (unchanged when there was no target).
    float Zoom = 0.0f;
    // True while the camera follows its goal and has not arrived.
    bool Tracking = false;
};

// Distance to the goal under which the camera has arrived.
inline constexpr float kArrivedDistance = 1e-3f;

// The zoom: `needed`, at least minZoom, at most the span of the limits ((MaxX - MinX) + (MaxZ - MinZ))
// when that span is positive.
float ChooseZoom(float needed, float minZoom, const CameraLimits& limits);
// The share of the way to the goal covered in dt: 1 - 0.5^(panSpeed dt), times trackingModifier, held in [0, 1].
float FollowFraction(float panSpeed, float trackingModifier, float dt);
// `position` moved so that the ground the camera sees, a rectangle around the point it looks at (zoom along
// the unit `direction`) of half width zoom tan(fov/2) aspect on x and half depth zoom tan(fov/2) on z, stays
// inside the limits: pushed back by the excess, or centred between them on an axis where both are passed.
// The height is held between MinY and MaxY (centred between them if they cross).
Math::Point3D ClampToLimits(const Math::Point3D& position, const Math::Vector3D& direction, float zoom,
                            float fieldOfView, float aspect, const CameraLimits& limits);
// The point the camera looks from to see `center` along `viewVector` from `zoom` away.
Math::Point3D GoalPosition(const Math::Point3D& center, const Math::Vector3D& viewVector, float zoom);
// One frame of the controller (see the file comment). With no target, or no view direction, the camera stays.
CameraStep StepCamera(const CameraInformation& targets, const Math::Vector3D& viewVector, float fieldOfView,
                      float aspect, const CameraSettings& settings, const Math::Point3D& current, bool tracking,
                      float lastZoom, float dt);

// The shake at `elapsed` seconds into a shake of `magnitude` lasting `duration`: along `right` and `up`
// (unit vectors on the screen's plane), waves of 13 and 17 a second, fading linearly to nothing at the end.
Math::Vector3D ShakeOffset(float magnitude, float duration, float elapsed, const Math::Vector3D& right,
                           const Math::Vector3D& up);
// The unit right and up vectors of the screen for a camera looking along `viewVector` with `up`.
void ScreenAxes(const Math::Vector3D& viewVector, const Math::Vector3D& up, Math::Vector3D& right,
                Math::Vector3D& screenUp);
// Where a cinematic pan from `from` to `to` stands `elapsed` seconds into `duration`: eased in and out
// (smoothstep); `to` once the time is up or when the duration is not positive.
Math::Point3D PanPosition(const Math::Point3D& from, const Math::Point3D& to, float elapsed, float duration);
}
