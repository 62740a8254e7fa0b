// CameraFocus: marks an object that the camera keeps in view. It needs its
// object's Transform: when it starts it joins the focus list of its space
// (the one its space's CameraController follows) and leaves it when it ends.
// Without a Transform it reports "Camera focus targets must have a
// transform!" and does nothing. An inactive target stays listed but is not
// followed.
#pragma once

#include "engine/Component.h"
#include "engine/Math/Point3D.h"

class Transform;
namespace Engine
{
class Space;
}

class CameraFocus : public Component
{
public:
    CameraFocus() = default;

    // Finds the owner's Transform and joins its space's focus list (reports a missing Transform).
    void Initialize() override;
    // Leaves the focus list.
    void Uninitialize() override;
    // Leaves the focus list if it is still on it.
    ~CameraFocus() override { CameraFocus::Uninitialize(); }
    Component* Clone() const override { return new CameraFocus(*this); }
    Meta::Data* GetMeta() const override;

    // True when the camera should follow this target: active, with a Transform.
    bool IsFollowed() const { return m_Active && m_Transform; }
    // The target's centre: its Transform's position plus offset.
    Math::Point3D GetFocusPoint() const;

    // Whether the camera follows this target.
    bool m_Active = true;
    // The radius around the target's centre that must stay on screen.
    float m_BoundingSphere = 1.0f;
    // The least distance the camera keeps from the targets while this one is followed (0: no such wish).
    float m_ViewDistance = 0.0f;
    // The owner's Transform, found at Initialize.
    Transform* m_Transform = nullptr;

private:
    CameraFocus(const CameraFocus& other)
        : Component(), m_Active(other.m_Active), m_BoundingSphere(other.m_BoundingSphere),
          m_ViewDistance(other.m_ViewDistance)
    {
    }

    // The space whose list this target joined; valid while m_Listed.
    const Engine::Space* m_ListedIn = nullptr;
    bool m_Listed = false;
};
