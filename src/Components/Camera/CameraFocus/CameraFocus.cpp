#include "Components/Camera/CameraFocus/CameraFocus.h"

#include "Components/Camera/CameraFocus/FocusList.h"
#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(CameraFocus)
{
    DERIVE(Component);
    DESCRIPTION("Marks an object that the space's camera controller keeps in view. Needs a Transform.");
    DEPENDENCY(Transform);
    MEMBER(m_Active, "Whether the camera follows this target.");
    MEMBER(m_BoundingSphere, "The radius around the target's centre that must stay on screen.");
    MEMBER(m_ViewDistance, "The least distance the camera keeps from the targets while this one is followed.");
}

Meta::Data* CameraFocus::GetMeta() const
{
    return Meta::Get<CameraFocus>();
}

void CameraFocus::Initialize()
{
    m_Transform = m_Owner ? m_Owner->GetComponent<Transform>() : nullptr;
    if (!m_Transform)
    {
        ERROR_REPORT("Camera focus targets must have a transform!");
        return;
    }
    m_ListedIn = GetSpace();
    m_Listed = true;
    CameraFocusList::Add(m_ListedIn, this);
}

void CameraFocus::Uninitialize()
{
    if (m_Listed)
        CameraFocusList::Remove(m_ListedIn, this);
    m_Listed = false;
    m_ListedIn = nullptr;
    m_Transform = nullptr;
}

Math::Point3D CameraFocus::GetFocusPoint() const
{
    return m_Transform ? m_Transform->m_Position + m_Transform->m_Offset : Math::Point3D();
}
