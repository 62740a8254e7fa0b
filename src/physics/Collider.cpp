// The life cycle of every collider, the plane's included: finding the
// Transform, joining the space's PhysicsSystem and leaving it. Both report a
// missing Transform from here, each at its own site.
#include "physics/Collider.h"


#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "physics/ColliderPlane.h"
#include "physics/PhysicsSystem.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(Collider)
{
    DERIVE(Component);
    DESCRIPTION("The base of every physics shape; on its own it never collides.");
    DEPENDENCY(PhysicsBody);
}

Meta::Data* Collider::GetMeta() const
{
    return Meta::Get<Collider>();
}

namespace
{
const char* const kNoTransform = "PhysicsBody needs transform component";

Transform* TransformOf(const Component& component)
{
    return component.m_Owner ? component.m_Owner->GetComponent<Transform>() : nullptr;
}
}

void Collider::Initialize()
{
    transform = TransformOf(*this);
    if (!transform)
        VORN_REPORT_ERROR_IN(false, "Collider::Initialize", kNoTransform);
    PhysicsSystem* system = PhysicsSystem::Of(*this);
    if (!system || m_Joined)
        return;
    system->m_Tree.Insert(this);
    system->m_Colliders.push_back(this);
    m_Joined = true;
}

void Collider::Uninitialize()
{
    if (!m_Joined)
        return;
    if (PhysicsSystem* system = PhysicsSystem::Of(*this))
    {
        system->m_Tree.Remove(this);
        PhysicsSystem::Leave(system->m_Colliders, this);
    }
    m_Joined = false;
}

void ColliderPlane::Initialize()
{
    transform = TransformOf(*this);
    if (!transform)
        VORN_REPORT_ERROR_IN(false, "ColliderPlane::Initialize", kNoTransform);
    PhysicsSystem* system = PhysicsSystem::Of(*this);
    if (!system || m_InPlanes)
        return;
    system->m_Planes.push_back(this);
    m_InPlanes = true;
}

void ColliderPlane::Uninitialize()
{
    if (!m_InPlanes)
        return;
    if (PhysicsSystem* system = PhysicsSystem::Of(*this))
        PhysicsSystem::Leave(system->m_Planes, this);
    m_InPlanes = false;
}

Math::Point3D Collider::GetSupport(const Math::Vector3D&)
{
    return Math::Point3D();
}

Math::Point3D Collider::ToLocal(const Math::Point3D&) const
{
    return Math::Point3D();
}

Math::Point3D Collider::ToWorld(const Math::Point3D&) const
{
    return Math::Point3D();
}
