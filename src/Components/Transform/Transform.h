// Transform: where an object is: position, a graphical offset, scale and
// rotation. Nearly every object has one; graphics, physics and scripts read it.
#pragma once

#include "engine/Component.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"

class Transform : public Component
{
public:
    Component* Clone() const override { return new Transform(*this); }
    Meta::Data* GetMeta() const override;

    // The position of the object in the world.
    Math::Point3D m_Position;
    // A graphical offset to nudge the model of an object.
    Math::Vector3D m_Offset;
    // The scale of the object.
    Math::Vector3D m_Scale{1.0f, 1.0f, 1.0f};
    // The rotation of the object.
    Math::Quaternion m_Rotation;

    Transform() = default;

private:
    Transform(const Transform& other) : Component(), m_Position(other.m_Position), m_Offset(other.m_Offset),
        m_Scale(other.m_Scale), m_Rotation(other.m_Rotation) {}
};
