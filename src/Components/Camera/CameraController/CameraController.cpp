#include "Components/Camera/CameraController/CameraController.h"

#include "Components/Camera/Camera/Camera.h"
#include "Components/Camera/CameraFocus/CameraFocus.h"
#include "Components/Camera/CameraFocus/FocusList.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/Spaces/GraphicsUpdateEvent.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"

#include <cmath>

META_REGISTER(CameraController)
{
    DERIVE(Component);
    DESCRIPTION("Moves the object's camera so that every CameraFocus target of the space stays on screen, inside "
                "limits. Needs a Camera.");
    DEPENDENCY(Camera);
    HELP("Sets the limits back to their defaults (-1000 to 1000 on every axis).");
    METHOD(ResetConstraints);
    HELP("CameraShake(magnitude, duration): shakes the camera by up to magnitude units, fading out over duration "
         "seconds.");
    METHOD(CameraShake);
    HELP("CinematicPan(point, duration): moves the camera to look at the point over duration seconds, then "
         "follows the targets again.");
    METHOD(CinematicPan);
    MEMBER(m_Active, "Whether the controller moves the camera.");
    MEMBER(m_MinZoom, "The nearest the camera comes to the targets' centre.");
    MEMBER(m_InnerPad, "Degrees added to the zoom angle: more room around the targets.");
    MEMBER(m_PanSpeed, "How many times a second the distance left to the goal halves while the camera follows.");
    MEMBER(m_DeadZone, "How far the goal may move before the camera starts to follow.");
    MEMBER(m_TrackingModifier, "Scales each frame's share of the way to the goal.");
    MEMBER(m_AreaModifier, "Scales the distance the targets need.");
    MEMBER(m_Max_X, "Largest x the seen ground may reach.");
    MEMBER(m_Min_X, "Smallest x the seen ground may reach.");
    MEMBER(m_Max_Y, "Highest the camera may be.");
    MEMBER(m_Min_Y, "Lowest the camera may be.");
    MEMBER(m_Max_Z, "Largest z the seen ground may reach.");
    MEMBER(m_Min_Z, "Smallest z the seen ground may reach.");
}

Meta::Data* CameraController::GetMeta() const
{
    return Meta::Get<CameraController>();
}

CameraController::CameraController(const CameraController& other)
    : Component(), m_Active(other.m_Active), m_MinZoom(other.m_MinZoom), m_InnerPad(other.m_InnerPad),
      m_PanSpeed(other.m_PanSpeed), m_DeadZone(other.m_DeadZone), m_TrackingModifier(other.m_TrackingModifier),
      m_AreaModifier(other.m_AreaModifier), m_Max_X(other.m_Max_X), m_Min_X(other.m_Min_X),
      m_Max_Y(other.m_Max_Y), m_Min_Y(other.m_Min_Y), m_Max_Z(other.m_Max_Z), m_Min_Z(other.m_Min_Z)
{
}

void CameraController::Initialize()
{
    m_Camera = m_Owner ? m_Owner->GetComponent<Camera>() : nullptr;
    if (!m_Camera)
    {
        ERROR_REPORT("Camera controller must be attached to an object with a camera!");
        return;
    }
    m_Transform = m_Owner->GetComponent<Transform>();
    m_Listening = GetSpace();
    if (m_Listening)
        m_Listening->m_Events.RegisterEvent(this, "GraphicsUpdate", &CameraController::OnGraphicsUpdate);
}

void CameraController::Uninitialize()
{
    if (m_Listening)
        m_Listening->m_Events.UnregisterAll(this);
    m_Listening = nullptr;
    RemoveShake();
    m_Camera = nullptr;
    m_Transform = nullptr;
}

void CameraController::ResetConstraints()
{
    const CameraMath::CameraLimits defaults;
    m_Max_X = defaults.MaxX;
    m_Min_X = defaults.MinX;
    m_Max_Y = defaults.MaxY;
    m_Min_Y = defaults.MinY;
    m_Max_Z = defaults.MaxZ;
    m_Min_Z = defaults.MinZ;
}

void CameraController::CameraShake(float magnitude, float duration)
{
    if (!std::isfinite(magnitude) || !std::isfinite(duration))
    {
        LOG("WARNING", "CameraShake needs a finite magnitude and duration; the shake is ignored.");
        return;
    }
    m_Shaking = duration > 0.0f && magnitude != 0.0f;
    m_ShakeMagnitude = magnitude;
    m_ShakeDuration = duration;
    m_ShakeElapsed = 0.0f;
}

void CameraController::CinematicPan(const Math::Point3D& target, float duration)
{
    if (!std::isfinite(target.x) || !std::isfinite(target.y) || !std::isfinite(target.z) ||
        !std::isfinite(duration))
    {
        LOG("WARNING", "CinematicPan needs a finite point and duration; the pan is ignored.");
        return;
    }
    m_Panning = true;
    m_PanFresh = true;
    m_PanTarget = target;
    m_PanDuration = duration;
    m_PanElapsed = 0.0f;
}

void CameraController::OnGraphicsUpdate(Event* event)
{
    if (auto* update = dynamic_cast<Graphics::GraphicsUpdateEvent*>(event))
        Update(update->m_Dt);
}

void CameraController::Update(float dt)
{
    const Graphics::GraphicsEngine& engine = Graphics::GraphicsEngine::Get();
    const float aspect = engine.GetHeight() > 0 ? static_cast<float>(engine.GetWidth()) / engine.GetHeight() : 1.0f;
    Advance(dt, engine.FieldOfView, aspect);
}

CameraMath::CameraSettings CameraController::GetSettings() const
{
    CameraMath::CameraSettings settings;
    settings.MinZoom = m_MinZoom;
    settings.InnerPad = m_InnerPad;
    settings.PanSpeed = m_PanSpeed;
    settings.DeadZone = m_DeadZone;
    settings.TrackingModifier = m_TrackingModifier;
    settings.AreaModifier = m_AreaModifier;
    settings.Limits.MinX = m_Min_X;
    settings.Limits.MaxX = m_Max_X;
    settings.Limits.MinY = m_Min_Y;
    settings.Limits.MaxY = m_Max_Y;
    settings.Limits.MinZ = m_Min_Z;
    settings.Limits.MaxZ = m_Max_Z;
    return settings;
}

CameraInformation CameraController::GatherTargets() const
{
    CameraInformation targets;
    for (const CameraFocus* focus : CameraFocusList::Of(m_Listening))
        if (focus->IsFollowed())
            targets.Add(focus->GetFocusPoint(), focus->m_BoundingSphere, focus->m_ViewDistance);
    return targets;
}

void CameraController::Advance(float dt, float fieldOfView, float aspect)
{
    if (!m_Camera || !m_Transform)
        return;
    if (!m_Active)
    {
        RemoveShake();
        return;
    }
    if (!std::isfinite(dt) || dt < 0.0f)
        dt = 0.0f;

    if (m_Panning)
    {
        m_Transform->m_Position = PanStep(dt, fieldOfView, aspect);
    }
    else
    {
        // Steps 1 to 7, then 8: the new position goes to the Transform.
        const CameraMath::CameraStep step =
            CameraMath::StepCamera(GatherTargets(), m_Camera->ViewVector, fieldOfView, aspect, GetSettings(),
                                   m_Transform->m_Position, m_Tracking, m_Zoom, dt);
        m_Zoom = step.Zoom;
        m_Tracking = step.Tracking;
        m_Transform->m_Position = step.Position;
    }
    ShakeStep(dt);
}

Math::Point3D CameraController::PanStep(float dt, float fieldOfView, float aspect)
{
    if (m_PanFresh)
    {
        m_PanFrom = m_Transform->m_Position;
        m_PanFresh = false;
    }
    m_PanElapsed += dt;
    Math::Vector3D direction = m_Camera->ViewVector;
    direction.Normalize();
    const float zoom = m_Zoom > 0.0f ? m_Zoom : m_MinZoom;
    const Math::Point3D goal = CameraMath::GoalPosition(m_PanTarget, direction, zoom);
    const Math::Point3D position = CameraMath::PanPosition(m_PanFrom, goal, m_PanElapsed, m_PanDuration);
    if (m_PanElapsed >= m_PanDuration)
    {
        m_Panning = false;
        m_Tracking = false;
    }
    return CameraMath::ClampToLimits(position, direction, zoom, fieldOfView, aspect, GetSettings().Limits);
}

void CameraController::ShakeStep(float dt)
{
    Math::Vector3D shake;
    if (m_Shaking)
    {
        m_ShakeElapsed += dt;
        Math::Vector3D right;
        Math::Vector3D up;
        CameraMath::ScreenAxes(m_Camera->ViewVector, m_Camera->m_Up, right, up);
        shake = CameraMath::ShakeOffset(m_ShakeMagnitude, m_ShakeDuration, m_ShakeElapsed, right, up);
        if (m_ShakeElapsed >= m_ShakeDuration)
            m_Shaking = false;
    }
    m_Transform->m_Offset = m_Transform->m_Offset - m_ShakeApplied + shake;
    m_ShakeApplied = shake;
}

void CameraController::RemoveShake()
{
    m_Shaking = false;
    if (m_Transform)
        m_Transform->m_Offset = m_Transform->m_Offset - m_ShakeApplied;
    m_ShakeApplied = Math::Vector3D();
}
