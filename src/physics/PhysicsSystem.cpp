#include "physics/PhysicsSystem.h"

#include <utility>

#include "engine/GameObject.h"
#include "engine/PerformanceData.h"
#include "engine/Space.h"
#include "physics/Body.h"
#include "physics/Collider.h"
#include "physics/CollisionEvents.h"
#include "physics/ColliderPlane.h"
#include "physics/Contact.h"
#include "physics/NarrowPhase.h"
#include "physics/Resolution.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(PhysicsSystem)
{
    DERIVE(System);
    DESCRIPTION("The physics of a space: moves its bodies, finds their contacts, resolves them and sends the "
                "collision events.");
}

Meta::Data* PhysicsSystem::GetMeta() const
{
    return Meta::Get<PhysicsSystem>();
}

PhysicsSystem* PhysicsSystem::Of(const Component& component)
{
    Engine::Space* space = component.GetSpace();
    return space ? space->GetSystem<PhysicsSystem>() : nullptr;
}

namespace
{
// Events of one kind waiting for delivery, each with the object it goes to.
template <class E>
using EventQueue = std::vector<std::pair<GameObject*, E>>;

// The body on the collider's object, or null.
PhysicsBody* BodyOf(const Collider& collider)
{
    return collider.m_Owner ? collider.m_Owner->GetComponent<PhysicsBody>() : nullptr;
}

// Queues one event for each object of the pair: A's with the normal, B's with it negated.
template <class E>
void QueueBoth(EventQueue<E>& queue, const Contact& contact)
{
    GameObject* a = contact.bodyA->m_Owner;
    GameObject* b = contact.bodyB->m_Owner;
    queue.emplace_back(a, E(b->GetId(), contact.normal));
    queue.emplace_back(b, E(a->GetId(), contact.normal * -1.0f));
}

// Sends each queued event, front to back, to its object through the object's space.
template <class E>
void Deliver(EventQueue<E>& queue, const char* name)
{
    for (auto& [target, event] : queue)
        if (Engine::Space* space = target->GetSpace())
            space->m_Events.DispatchToObject(target, name, &event);
}
}

void PhysicsSystem::Update(float dt)
{
    for (PhysicsBody* body : m_Bodies)
        Resolution::Integrate(*body, dt);

    m_Tree.Update();
    m_Pairs = m_Tree.QueryPairs();
    for (Collider* collider : m_Colliders)
        for (ColliderPlane* plane : m_Planes)
            m_Pairs.emplace_back(collider, plane);

    EventQueue<Collision> collisions;
    EventQueue<DiffGroupCollision> differentGroups;
    EventQueue<GhostCollision> ghosts;
    for (const auto& [colliderA, colliderB] : m_Pairs)
    {
        Contact contact;
        contact.colliderA = colliderA;
        contact.colliderB = colliderB;
        contact.bodyA = BodyOf(*colliderA);
        contact.bodyB = BodyOf(*colliderB);
        // A collider whose object lacks a body takes no part.
        if (!contact.bodyA || !contact.bodyB)
            continue;
        const float massA = contact.bodyA->GetMass();
        const float massB = contact.bodyB->GetMass();
        if (massA == 0.0f && massB == 0.0f)
            continue;
        if (!NarrowPhase::Collide(contact))
            continue;

        const bool allowed = contact.bodyA->Lists(contact.bodyB->Group) || contact.bodyB->Lists(contact.bodyA->Group);
        if (!allowed)
            QueueBoth(differentGroups, contact);
        else if (!contact.bodyA->Ghost && !contact.bodyB->Ghost)
        {
            QueueBoth(collisions, contact);
            Resolution::CorrectPositions(contact, massA, massB);
            Resolution::ApplyImpulse(contact);
        }
        else
            QueueBoth(ghosts, contact);
    }

    PerformanceData::Get().Start("Collision Events");
    Deliver(collisions, "Collision");
    Deliver(differentGroups, "DiffGroupCollision");
    Deliver(ghosts, "GhostCollision");
}
