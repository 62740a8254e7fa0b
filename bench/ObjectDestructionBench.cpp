// Destroying many objects in one frame. Each object has three components, and
// each component is bound to a few events of its space's table when it is
// initialized, as real components are. The frame marks every object with
// Destroy and then runs the space's collection, which unbinds and deletes them.
//
// "DestroyObjectsInOneFrame" destroys 10,000 objects; its reference runs the very
// same code with 1,000. Both report the time per object, so the printed ratio
// says whether the cost of one destruction grows with the number destroyed
// together: near 1 means it does not.
#include "engine/ArchetypeManager.h"
#include "engine/Component.h"
#include "engine/Event.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "utilities/Meta/Data.h"

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace
{
class FrameEvent : public Event
{
public:
    Meta::Data* GetMeta() const override { return Meta::Get<FrameEvent>(); }
};

// Events a component of each kind binds itself to; an empty name ends a list.
constexpr std::array<std::array<std::string_view, 3>, 3> kEventsByKind = {{
    {"LogicUpdate", "Pause", ""},
    {"LogicUpdate", "Collision", "GhostCollision"},
    {"LogicUpdate", "Hide", "GraphicsUpdate"},
}};

// A component that binds itself to the events of its kind when it is initialized.
template <int Kind>
class BoundComponent : public Component
{
public:
    void Initialize() override
    {
        for (std::string_view name : kEventsByKind[Kind])
            if (!name.empty())
                GetSpace()->m_Events.RegisterEvent(this, name, &BoundComponent::OnEvent);
    }
    void OnEvent(Event*)
    {
        ++m_Hits;
        benchmark::DoNotOptimize(m_Hits);
    }
    Component* Clone() const override { return new BoundComponent(); }
    Meta::Data* GetMeta() const override { return Meta::Get<BoundComponent>(); }

    std::uint64_t m_Hits = 0;
};

// The archetype of the destroyed objects, made once.
ArchetypeId BoundArchetype()
{
    static const ArchetypeId id = [] {
        auto* archetype = new GameObject();
        archetype->m_Name = "Bound";
        archetype->m_Components = {new BoundComponent<0>(), new BoundComponent<1>(), new BoundComponent<2>()};
        return Engine::ArchetypeManager::Get().Add(archetype);
    }();
    return id;
}

// One frame that destroys `count` objects; the time reported is per object.
void DestroyObjects(benchmark::State& state, std::size_t count)
{
    const ArchetypeId archetype = BoundArchetype();
    std::vector<GameObject*> objects;
    objects.reserve(count);
    FrameEvent frame;
    for (auto _ : state)
    {
        Engine::Space space(Engine::Level);
        objects.clear();
        for (std::size_t i = 0; i < count; ++i)
            objects.push_back(space.CreateObject(archetype));
        // The objects live through one frame before they go.
        space.m_Events.Dispatch("LogicUpdate", &frame);

        const auto start = std::chrono::steady_clock::now();
        for (GameObject* object : objects)
            object->Destroy();
        space.GarbageCollectObjects();
        const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;

        if (!space.m_Objects.empty())
            state.SkipWithError("objects survived the collection");
        state.SetIterationTime(elapsed.count() / static_cast<double>(count));
    }
    state.counters["objects"] = static_cast<double>(count);
}

void DestroyObjectsInOneFrame(benchmark::State& state)
{
    DestroyObjects(state, 10000);
}

// The same frame with a tenth of the objects.
void DestroyObjectsInOneFrame_Reference(benchmark::State& state)
{
    DestroyObjects(state, 1000);
}

// A fixed number of frames each (the time per iteration is the time per object, far below
// what an automatic iteration count expects); equal settings keep the two names paired.
BENCHMARK(DestroyObjectsInOneFrame)->UseManualTime()->Iterations(30)->Unit(benchmark::kNanosecond);
BENCHMARK(DestroyObjectsInOneFrame_Reference)->UseManualTime()->Iterations(30)->Unit(benchmark::kNanosecond);
}
