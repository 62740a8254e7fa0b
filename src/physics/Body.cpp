#include "physics/Body.h"

#include <algorithm>

#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "physics/PhysicsSystem.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(PhysicsBody)
{
    DERIVE(Component);
    DESCRIPTION("The mass and motion of an object: velocity, its own gravity, material, collision group and list. "
                "Needs a Transform; its shape is a Collider on the same object.");
    DEPENDENCY(Transform);
    MEMBER(Velocity, "World units per second.");
    MEMBER(Material, "Friction, bounciness and density; writing it replaces all three.");
    MEMBER(Group, "The body's own group number.");
    MEMBER_AS(List, m_list, "The groups this body collides with.");
    MEMBER(Ghost, "When true, overlaps are reported and never resolved.");
    MEMBER(Gravity, "This body's own acceleration; there is no world gravity.");
    METHOD(AddToList);
    METHOD(AddVelocity);
    METHOD(RemoveFromList);
}

Meta::Data* PhysicsBody::GetMeta() const
{
    return Meta::Get<PhysicsBody>();
}

void PhysicsBody::Initialize()
{
    transform = m_Owner ? m_Owner->GetComponent<Transform>() : nullptr;
    if (!transform)
        VORN_REPORT_ERROR_IN(false, "PhysicsBody::Initialize", "PhysicsBody needs transform component");
    PhysicsSystem* system = PhysicsSystem::Of(*this);
    if (!system || m_Joined)
        return;
    system->m_Bodies.push_back(this);
    m_Joined = true;
}

void PhysicsBody::Uninitialize()
{
    if (!m_Joined)
        return;
    if (PhysicsSystem* system = PhysicsSystem::Of(*this))
        PhysicsSystem::Leave(system->m_Bodies, this);
    m_Joined = false;
}

void PhysicsBody::AddToList(int group)
{
    m_list.push_back(group);
}

void PhysicsBody::AddVelocity(const Math::Vector3D& delta)
{
    Velocity = Velocity + delta;
}

void PhysicsBody::RemoveFromList(int group)
{
    auto found = std::find(m_list.begin(), m_list.end(), group);
    if (found != m_list.end())
        m_list.erase(found);
}

bool PhysicsBody::Lists(int group) const
{
    return std::find(m_list.begin(), m_list.end(), group) != m_list.end();
}

float PhysicsBody::GetMass() const
{
    if (!transform)
        return 0.0f;
    const Math::Vector3D& scale = transform->m_Scale;
    return Material.Density * scale.x * scale.y * scale.z;
}

float PhysicsBody::GetInverseMass() const
{
    const float mass = GetMass();
    return mass > 0.0f ? 1.0f / mass : 0.0f;
}
