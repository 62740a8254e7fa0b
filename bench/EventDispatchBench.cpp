// Event dispatch through Engine::EventManager, each beside a plain-code
// reference doing the same calls ("X_Reference"; the benchmark program prints
// the engine/reference time ratios at the end). Every engine benchmark also
// reports the heap allocations made per dispatch.
#include "engine/Component.h"
#include "engine/Event.h"
#include "engine/EventManager.h"
#include "engine/GameObject.h"
#include "utilities/Meta/Data.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

// Counted by the replaced global operator new of the benchmark program.
std::uint64_t BenchAllocationCount();

namespace
{
class TickEvent : public Event
{
public:
    Meta::Data* GetMeta() const override { return Meta::Get<TickEvent>(); }
};

// A cheap callback that the optimiser can't remove.
class Listener
{
public:
    void OnEvent(Event*)
    {
        ++m_Hits;
        benchmark::DoNotOptimize(m_Hits);
    }

    std::uint64_t m_Hits = 0;
};

class BenchComponent : public Component
{
public:
    void OnEvent(Event*)
    {
        ++m_Hits;
        benchmark::DoNotOptimize(m_Hits);
    }
    Component* Clone() const override
    {
        auto* clone = new BenchComponent(*this);
        clone->m_Owner = nullptr;
        return clone;
    }
    Meta::Data* GetMeta() const override { return Meta::Get<BenchComponent>(); }

    std::uint64_t m_Hits = 0;
};

void ReportAllocations(benchmark::State& state, std::uint64_t allocations)
{
    state.counters["allocs_per_dispatch"] =
        benchmark::Counter(static_cast<double>(allocations) / static_cast<double>(state.iterations()));
}

// Dispatch of one event with `count` listeners.
void Dispatch(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    std::vector<Listener> listeners(count);
    Engine::EventManager table;
    for (Listener& listener : listeners)
        table.RegisterEvent(&listener, "Tick", &Listener::OnEvent);
    TickEvent event;
    // Registrations are merged into the table's lists by its first read; that is setup too.
    table.Dispatch("Tick", &event);

    std::uint64_t allocations = 0;
    for (auto _ : state)
    {
        const std::uint64_t before = BenchAllocationCount();
        table.Dispatch("Tick", &event);
        allocations += BenchAllocationCount() - before;
    }
    ReportAllocations(state, allocations);
}

// The same callbacks called by a loop over a vector of std::function.
void Dispatch_Reference(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    std::vector<Listener> listeners(count);
    std::vector<std::function<void(Event*)>> callbacks;
    callbacks.reserve(count);
    for (Listener& listener : listeners)
        callbacks.emplace_back([&listener](Event* event) { listener.OnEvent(event); });
    TickEvent event;

    std::uint64_t allocations = 0;
    for (auto _ : state)
    {
        const std::uint64_t before = BenchAllocationCount();
        for (const std::function<void(Event*)>& callback : callbacks)
            callback(&event);
        allocations += BenchAllocationCount() - before;
    }
    ReportAllocations(state, allocations);
}

// Each size beside its reference.
BENCHMARK(Dispatch)->Arg(1);
BENCHMARK(Dispatch_Reference)->Arg(1);
BENCHMARK(Dispatch)->Arg(8);
BENCHMARK(Dispatch_Reference)->Arg(8);
BENCHMARK(Dispatch)->Arg(64);
BENCHMARK(Dispatch_Reference)->Arg(64);

constexpr std::size_t kTableSize = 10000;
constexpr std::size_t kObjectComponents = 4;

// A table of kTableSize listeners on one event, kObjectComponents of them the
// components of one object; built once (filling a table of this size is slow).
struct LargeTable
{
    LargeTable()
    {
        object = new GameObject();
        for (std::size_t i = 0; i < kObjectComponents; ++i)
        {
            auto* component = new BenchComponent();
            component->m_Owner = object;
            object->m_Components.push_back(component);
        }
        listeners = std::make_unique<Listener[]>(kTableSize - kObjectComponents);

        // Both sides hold the same listeners, in ascending address order.
        struct Item
        {
            void* address;
            std::function<void(Event*)> callback;
            std::function<void()> registration;
        };
        std::vector<Item> items;
        for (Component* part : object->m_Components)
        {
            auto* component = static_cast<BenchComponent*>(part);
            items.push_back({component, [component](Event* event) { component->OnEvent(event); },
                             [this, component] {
                                 table.RegisterEvent(component, "Hit", &BenchComponent::OnEvent);
                             }});
        }
        for (std::size_t i = 0; i < kTableSize - kObjectComponents; ++i)
        {
            Listener* listener = &listeners[i];
            items.push_back({listener, [listener](Event* event) { listener->OnEvent(event); },
                             [this, listener] { table.RegisterEvent(listener, "Hit", &Listener::OnEvent); }});
        }
        std::sort(items.begin(), items.end(),
                  [](const Item& a, const Item& b) { return std::less<void*>()(a.address, b.address); });
        reference.reserve(items.size());
        for (Item& item : items)
        {
            item.registration();
            reference.emplace_back(item.address, std::move(item.callback));
        }
    }
    ~LargeTable() { delete object; }

    Engine::EventManager table;
    GameObject* object = nullptr;
    std::unique_ptr<Listener[]> listeners;
    std::vector<std::pair<void*, std::function<void(Event*)>>> reference;
};

LargeTable& GetLargeTable()
{
    static LargeTable large;
    return large;
}

// DispatchToObject of one object's event in a table of kTableSize listeners.
void DispatchToObject(benchmark::State& state)
{
    LargeTable& large = GetLargeTable();
    TickEvent event;

    std::uint64_t allocations = 0;
    for (auto _ : state)
    {
        const std::uint64_t before = BenchAllocationCount();
        large.table.DispatchToObject(large.object, "Hit", &event);
        allocations += BenchAllocationCount() - before;
    }
    ReportAllocations(state, allocations);
}

// A linear walk over all (listener, callback) pairs, calling those of the object's components.
void DispatchToObject_Reference(benchmark::State& state)
{
    LargeTable& large = GetLargeTable();
    const std::vector<Component*>& components = large.object->m_Components;
    TickEvent event;

    std::uint64_t allocations = 0;
    for (auto _ : state)
    {
        const std::uint64_t before = BenchAllocationCount();
        for (const auto& [listener, callback] : large.reference)
        {
            for (Component* component : components)
            {
                if (listener == component)
                {
                    callback(&event);
                    break;
                }
            }
        }
        allocations += BenchAllocationCount() - before;
    }
    ReportAllocations(state, allocations);
}

BENCHMARK(DispatchToObject);
BENCHMARK(DispatchToObject_Reference);
}
