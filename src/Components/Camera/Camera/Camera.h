// Camera: gives a space its view. It looks from its object's Transform
// position (plus the Transform's offset) along ViewVector, with an up vector
// kept beside it. SetAsPrimaryCamera makes it the current camera of its
// space's GraphicsSpace, which updates it each frame (building its view
// matrix) and hands its state to the shaders' variable table. A camera that
// ends while current leaves its space with no camera.
#pragma once

#include "Graphics_Engine/VariableTable.h"
#include "engine/Component.h"
#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

class Transform;

class Camera : public Component
{
public:
    Camera() = default;

    // Finds the owner's Transform.
    void Initialize() override;
    // Leaves the space with no camera if this one is current.
    void Uninitialize() override;
    Component* Clone() const override { return new Camera(*this); }
    Meta::Data* GetMeta() const override;

    // Makes this the current camera of its space's GraphicsSpace.
    void SetAsPrimaryCamera();
    // Builds the view matrix from the Transform, ViewVector and the up vector.
    void Update();
    // Where the camera looks from: the Transform's position plus its offset (the origin without one).
    Math::Point3D GetEyePosition() const;
    // The view matrix, position and direction for the variable table.
    Graphics::CameraState GetState() const;

    // The direction the camera looks in.
    Math::Vector3D ViewVector{0.0f, 0.0f, -1.0f};
    // The camera's up direction.
    Math::Vector3D m_Up{0.0f, 1.0f, 0.0f};
    // The owner's Transform, found at Initialize.
    Transform* m_Transform = nullptr;
    // The view matrix of the last Update (row vectors).
    Math::Matrix4 m_View;

private:
    Camera(const Camera& other)
        : Component(), ViewVector(other.ViewVector), m_Up(other.m_Up), m_View(other.m_View)
    {
    }
};
