// One whole physics frame of a busy room: 1,000 balls with gravity and little
// bounce falling and piling up inside a box of five planes (a floor and four
// walls), among 2,000 still boulders of density 0. Each iteration is one
// PhysicsSystem::Update: integration, the cube tree, the plane pairs, the
// narrow phase, resolution and the events. The reference is the same frame's
// integration and broad phase alone (the tree's refresh and pair listing),
// from the same state (restored untimed before each round), so the ratio says
// what the narrow phase, the resolution and the events add to them.
#include "Components/Transform/Transform.h"
#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "physics/Body.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/PhysicsSystem.h"
#include "physics/Resolution.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{
constexpr int kBalls = 1000;
constexpr int kBoulders = 2000;
constexpr float kHalfRoom = 40.0f;

ArchetypeId ArchetypeOf(const std::string& name, const std::vector<std::string>& components)
{
    auto* archetype = new GameObject();
    archetype->m_Name = name;
    for (const std::string& component : components)
        archetype->AddComponentUninitialized(component);
    return Engine::ArchetypeManager::Get().Add(archetype);
}

// The room: a level space with its physics, the planes, the boulders and the balls, run for a while
// so that the balls have landed and pile up.
struct BusyRoom
{
    BusyRoom() : space(Engine::Level), physics(new PhysicsSystem())
    {
        space.AddSystem(physics, Meta::Get<PhysicsSystem>());
        const ArchetypeId plane = ArchetypeOf("BenchPlane", {"Transform", "PhysicsBody", "ColliderPlane"});
        const ArchetypeId ball = ArchetypeOf("BenchBall", {"Transform", "PhysicsBody", "ColliderSphere"});
        const struct { float x, y, z; } normals[] = {{0, 1, 0}, {1, 0, 0}, {-1, 0, 0}, {0, 0, 1}, {0, 0, -1}};
        for (const auto& n : normals)
        {
            GameObject* wall = space.CreateObject(plane);
            wall->GetComponent<Transform>()->m_Position = Math::Point3D(-n.x * kHalfRoom, 0.0f, -n.z * kHalfRoom);
            wall->GetComponent<ColliderPlane>()->SetNormal(Math::Vector3D(n.x, n.y, n.z));
            wall->GetComponent<PhysicsBody>()->Material.Density = 0.0f;
        }
        std::mt19937 random(11);
        std::uniform_real_distribution<float> across(-kHalfRoom + 2.0f, kHalfRoom - 2.0f);
        for (int i = 0; i < kBoulders; ++i)
        {
            GameObject* boulder = space.CreateObject(ball);
            boulder->GetComponent<Transform>()->m_Position = Math::Point3D(across(random), 0.5f, across(random));
            boulder->GetComponent<ColliderSphere>()->Radius = 0.5f;
            boulder->GetComponent<PhysicsBody>()->Material.Density = 0.0f;
        }
        std::uniform_real_distribution<float> height(2.0f, 30.0f);
        for (int i = 0; i < kBalls; ++i)
        {
            GameObject* object = space.CreateObject(ball);
            object->GetComponent<Transform>()->m_Position = Math::Point3D(across(random), height(random), across(random));
            object->GetComponent<ColliderSphere>()->Radius = 0.5f;
            auto* body = object->GetComponent<PhysicsBody>();
            body->Gravity = Math::Vector3D(0.0f, -20.0f, 0.0f);
            body->Material.Bounciness = 0.2f;
            body->Material.Friction = 0.3f;
            body->AddToList(0);
        }
        for (int frame = 0; frame < 120; ++frame)
            physics->Update(kDt);
    }

    static constexpr float kDt = 1.0f / 60.0f;
    Engine::Space space;
    PhysicsSystem* physics;
};

BusyRoom& Room()
{
    static BusyRoom room;
    return room;
}

void PhysicsStep(benchmark::State& state)
{
    BusyRoom& room = Room();
    for (auto _ : state)
    {
        room.physics->Update(BusyRoom::kDt);
        benchmark::DoNotOptimize(room.physics->m_Pairs.data());
    }
    state.counters["pairs"] = static_cast<double>(room.physics->m_Pairs.size());
}
BENCHMARK(PhysicsStep)->Unit(benchmark::kMicrosecond);

void PhysicsStep_Reference(benchmark::State& state)
{
    BusyRoom& room = Room();
    std::vector<Math::Point3D> positions;
    std::vector<Math::Vector3D> velocities;
    for (PhysicsBody* body : room.physics->m_Bodies)
    {
        positions.push_back(body->transform->m_Position);
        velocities.push_back(body->Velocity);
    }
    for (auto _ : state)
    {
        state.PauseTiming();
        for (std::size_t i = 0; i < positions.size(); ++i)
        {
            room.physics->m_Bodies[i]->transform->m_Position = positions[i];
            room.physics->m_Bodies[i]->Velocity = velocities[i];
        }
        state.ResumeTiming();
        for (PhysicsBody* body : room.physics->m_Bodies)
            Resolution::Integrate(*body, BusyRoom::kDt);
        room.physics->m_Tree.Update();
        benchmark::DoNotOptimize(room.physics->m_Tree.QueryPairs().data());
    }
}
BENCHMARK(PhysicsStep_Reference)->Unit(benchmark::kMicrosecond);
}
