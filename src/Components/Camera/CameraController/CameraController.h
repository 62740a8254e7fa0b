// CameraController: moves its object's camera so that every CameraFocus
// target of its space stays on screen, inside the limits. It needs a Camera
// on its object: without one it reports "Camera controller must be attached
// to an object with a camera!" and does nothing.
//
// Its tick is the space's "GraphicsUpdate" event, which the GraphicsSpace
// sends at the start of its update: after the logic and physics of the frame
// have moved the targets, and before the camera builds its view matrix, so
// the picture never lags a frame behind. The field of view and the aspect
// ratio come from the graphics engine. The maths of a frame is
// CameraMath::StepCamera (CameraMotion.h); this component only gathers the
// targets, keeps the state between frames and writes the Transform.
//
// Scripts may shake the camera (a fading offset on the screen's plane, kept
// in the Transform's m_Offset so that the followed position stays clean) and
// pan it to a point over a set time, during which the targets are not
// followed; afterwards the camera eases back to them.
#pragma once

#include "Components/Camera/CameraController/CameraMotion.h"
#include "engine/Component.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

class Camera;
class Event;
class Transform;
namespace Engine
{
class Space;
}

class CameraController : public Component
{
public:
    CameraController() = default;

    // Finds the Camera and the Transform and starts listening to the space's GraphicsUpdate
    // (reports a missing Camera).
    void Initialize() override;
    // Stops listening and takes a shake still applied out of the Transform.
    void Uninitialize() override;
    Component* Clone() const override { return new CameraController(*this); }
    Meta::Data* GetMeta() const override;

    // Sets the limits back to their defaults (-1000 to 1000 on every axis).
    void ResetConstraints();
    // Shakes the camera by up to `magnitude` world units, fading out over `duration` seconds;
    // a new shake replaces one under way.
    void CameraShake(float magnitude, float duration);
    // Moves the camera over `duration` seconds to look at `target` from the current zoom,
    // eased in and out; the focus targets are followed again afterwards.
    void CinematicPan(const Math::Point3D& target, float duration);

    // The GraphicsUpdate handler: one frame with the event's dt.
    void OnGraphicsUpdate(Event* event);
    // One frame with the graphics engine's field of view and aspect ratio.
    void Update(float dt);
    // One frame with the given field of view (degrees) and aspect ratio (width over height).
    void Advance(float dt, float fieldOfView, float aspect);

    // The settings and limits as the maths takes them.
    CameraMath::CameraSettings GetSettings() const;
    // True while a cinematic pan runs.
    bool IsPanning() const { return m_Panning; }
    // True while a shake runs.
    bool IsShaking() const { return m_Shaking; }

    // Whether the controller moves the camera.
    bool m_Active = true;
    // The nearest the camera comes to the targets' centre.
    float m_MinZoom = 20.0f;
    // Degrees added to the zoom angle: more room around the targets.
    float m_InnerPad = 0.0f;
    // How many times a second the distance left to the goal halves while the camera follows.
    float m_PanSpeed = 4.0f;
    // How far the goal may move before the camera starts to follow.
    float m_DeadZone = 0.5f;
    // Scales each frame's share of the way to the goal.
    float m_TrackingModifier = 1.0f;
    // Scales the distance the targets need.
    float m_AreaModifier = 1.0f;
    // Largest x the seen ground may reach.
    float m_Max_X = 1000.0f;
    // Smallest x the seen ground may reach.
    float m_Min_X = -1000.0f;
    // Highest the camera may be.
    float m_Max_Y = 1000.0f;
    // Lowest the camera may be.
    float m_Min_Y = -1000.0f;
    // Largest z the seen ground may reach.
    float m_Max_Z = 1000.0f;
    // Smallest z the seen ground may reach.
    float m_Min_Z = -1000.0f;

    // The current zoom distance (0 until the first frame with a target).
    float m_Zoom = 0.0f;
    // True while the camera follows its goal and has not arrived.
    bool m_Tracking = false;
    // The object's Camera and Transform, found at Initialize.
    Camera* m_Camera = nullptr;
    Transform* m_Transform = nullptr;

private:
    CameraController(const CameraController& other);

    // Folds the followed targets of this space into a record.
    CameraInformation GatherTargets() const;
    // The position of a frame of the cinematic pan.
    Math::Point3D PanStep(float dt, float fieldOfView, float aspect);
    // Brings the shake forward by dt and writes it into the Transform's offset.
    void ShakeStep(float dt);
    // Takes the applied shake out of the Transform's offset.
    void RemoveShake();

    Engine::Space* m_Listening = nullptr;

    bool m_Shaking = false;
    float m_ShakeMagnitude = 0.0f;
    float m_ShakeDuration = 0.0f;
    float m_ShakeElapsed = 0.0f;
    // The shake now in the Transform's offset.
    Math::Vector3D m_ShakeApplied;

    bool m_Panning = false;
    // True until the pan's first frame takes the position it starts from.
    bool m_PanFresh = false;
    Math::Point3D m_PanFrom;
    Math::Point3D m_PanTarget;
    float m_PanDuration = 0.0f;
    float m_PanElapsed = 0.0f;
};
