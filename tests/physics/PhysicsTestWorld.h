// A space with a PhysicsSystem for the physics tests, and a way to place
// bodies in it: a ball or a floor plane, each with a Transform, a PhysicsBody
// and its collider, plus a Probe that records the collision events it gets.
#pragma once

#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "physics/Body.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/CollisionEvents.h"
#include "physics/PhysicsSystem.h"

#include <string>
#include <vector>

// One event an object received.
struct ReceivedEvent
{
    std::string kind;
    uint32_t otherId = 0;
    Math::Vector3D normal;
};

class PhysicsTestWorld
{
public:
    PhysicsTestWorld() : space(Engine::Level), system(new PhysicsSystem())
    {
        space.AddSystem(system, Meta::Get<PhysicsSystem>());
    }

    // A ball of `radius` at `at`, recording its events into `received` when given.
    GameObject* Ball(Math::Point3D at, float radius, std::vector<ReceivedEvent>* received = nullptr)
    {
        GameObject* object =
            space.CreateObject(MakeArchetype("PhysicsTestBall", {"Transform", "PhysicsBody", "ColliderSphere", "Probe"}));
        object->GetComponent<Transform>()->m_Position = at;
        object->GetComponent<ColliderSphere>()->Radius = radius;
        object->GetComponent<ColliderSphere>()->UpdateBounds();
        Listen(object, received);
        return object;
    }

    // A floor plane through `at` facing up, with a body of density 0.
    GameObject* Floor(Math::Point3D at, std::vector<ReceivedEvent>* received = nullptr)
    {
        GameObject* object =
            space.CreateObject(MakeArchetype("PhysicsTestFloor", {"Transform", "PhysicsBody", "ColliderPlane", "Probe"}));
        object->GetComponent<Transform>()->m_Position = at;
        object->GetComponent<ColliderPlane>()->SetNormal(Math::Vector3D(0.0f, 1.0f, 0.0f));
        object->GetComponent<PhysicsBody>()->Material.Density = 0.0f;
        Listen(object, received);
        return object;
    }

    // Runs `frames` physics updates of `dt` seconds.
    void Step(int frames = 1, float dt = 1.0f / 60.0f)
    {
        for (int i = 0; i < frames; ++i)
            system->Update(dt);
    }

    Engine::Space space;
    PhysicsSystem* system;

private:
    void Listen(GameObject* object, std::vector<ReceivedEvent>* received)
    {
        if (!received)
            return;
        auto* probe = object->GetComponent<Probe>();
        probe->m_OnEvent = [received](Probe&, Event* event) {
            auto* collision = static_cast<CollisionEventBase*>(event);
            received->push_back({event->GetMeta()->GetName(), collision->m_Id, collision->m_Normal});
        };
        for (const char* name : {"Collision", "GhostCollision", "DiffGroupCollision"})
            space.m_Events.RegisterEvent(probe, name, &Probe::OnEvent);
    }
};

// The body of an object.
inline PhysicsBody& BodyOf(GameObject* object)
{
    return *object->GetComponent<PhysicsBody>();
}

// The position of an object.
inline Math::Point3D& PositionOf(GameObject* object)
{
    return object->GetComponent<Transform>()->m_Position;
}
