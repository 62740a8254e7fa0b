#include "Components/Camera/Camera/Camera.h"

#include "Components/Camera/Camera/ViewMatrix.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(Camera)
{
    DERIVE(Component);
    DESCRIPTION("Gives a space its view: looks from the object's Transform along ViewVector. Needs a Transform.");
    DEPENDENCY(Transform);
    MEMBER(ViewVector, "The direction the camera looks in.");
    MEMBER_FLAGS(m_Up, false, true, "The camera's up direction.");
    HELP("Makes this the current camera of its space.");
    METHOD(SetAsPrimaryCamera);
}

Meta::Data* Camera::GetMeta() const
{
    return Meta::Get<Camera>();
}

namespace
{
Graphics::GraphicsSpace* GraphicsOf(const Component& component)
{
    Engine::Space* space = component.GetSpace();
    return space ? space->GetSystem<Graphics::GraphicsSpace>() : nullptr;
}
}

void Camera::Initialize()
{
    m_Transform = m_Owner ? m_Owner->GetComponent<Transform>() : nullptr;
}

void Camera::Uninitialize()
{
    if (Graphics::GraphicsSpace* graphics = GraphicsOf(*this); graphics && graphics->GetCamera() == this)
        graphics->SetCamera(nullptr);
    m_Transform = nullptr;
}

void Camera::SetAsPrimaryCamera()
{
    if (Graphics::GraphicsSpace* graphics = GraphicsOf(*this))
        graphics->SetCamera(this);
}

Math::Point3D Camera::GetEyePosition() const
{
    return m_Transform ? m_Transform->m_Position + m_Transform->m_Offset : Math::Point3D();
}

void Camera::Update()
{
    m_View = CameraMath::LookAlong(GetEyePosition(), ViewVector, m_Up);
}

Graphics::CameraState Camera::GetState() const
{
    Graphics::CameraState state;
    state.View = m_View;
    state.Position = GetEyePosition().ToVector();
    state.ViewDirection = ViewVector;
    return state;
}
