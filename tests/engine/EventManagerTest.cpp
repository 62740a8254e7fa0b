#include "engine/EventManager.h"

#include "engine/Component.h"
#include "engine/Event.h"
#include "engine/GameObject.h"
#include "utilities/Meta/Registration.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{
// A plain event that carries nothing.
class EventManagerTestEvent : public Event
{
public:
    Meta::Data* GetMeta() const override { return Meta::Get<EventManagerTestEvent>(); }
};

// A native listener that logs its calls and can run an action from inside its callback.
class Probe
{
public:
    void OnEvent(Event* event)
    {
        if (m_Log)
            m_Log->push_back(this);
        if (m_Action)
            m_Action(event);
    }
    void OnEventAgain(Event* event) { OnEvent(event); }

    std::vector<const void*>* m_Log = nullptr;
    std::function<void(Event*)> m_Action;
};

// A hand-made bind that reports its calls and its destruction.
class CountingBind final : public Engine::EventManager::EventBind
{
public:
    CountingBind(int* calls, bool* destroyed) : m_Calls(calls), m_Destroyed(destroyed) {}
    ~CountingBind() override { *m_Destroyed = true; }
    void Invoke(Event*) override { ++*m_Calls; }

private:
    int* m_Calls;
    bool* m_Destroyed;
};

// Test components for DispatchToObject; each call is logged as (component, which member function).
using CallLog = std::vector<std::pair<const void*, int>>;

class EventManagerTestAlpha : public Component
{
public:
    void OnHit(Event*) { m_Log->emplace_back(this, 1); }
    void OnHitAgain(Event*) { m_Log->emplace_back(this, 2); }
    Component* Clone() const override
    {
        auto* clone = new EventManagerTestAlpha(*this);
        clone->m_Owner = nullptr;
        return clone;
    }
    Meta::Data* GetMeta() const override { return Meta::Get<EventManagerTestAlpha>(); }

    CallLog* m_Log = nullptr;
};

class EventManagerTestBeta : public Component
{
public:
    void OnHit(Event*) { m_Log->emplace_back(this, 3); }
    Component* Clone() const override
    {
        auto* clone = new EventManagerTestBeta(*this);
        clone->m_Owner = nullptr;
        return clone;
    }
    Meta::Data* GetMeta() const override { return Meta::Get<EventManagerTestBeta>(); }

    CallLog* m_Log = nullptr;
};
}

META_REGISTER(EventManagerTestEvent)
{
    DERIVE(Event);
}

META_REGISTER(EventManagerTestAlpha)
{
    DERIVE(Component);
}

META_REGISTER(EventManagerTestBeta)
{
    DERIVE(Component);
}

namespace
{
using Engine::EventManager;
using Engine::HashName;

// Probes in one array, so that their addresses ascend with their index.
struct ProbeSet
{
    explicit ProbeSet(std::vector<const void*>* log)
    {
        for (Probe& probe : probes)
            probe.m_Log = log;
    }
    Probe& operator[](std::size_t i) { return probes[i]; }
    const void* at(std::size_t i) const { return &probes[i]; }
    Probe probes[4];
};

TEST(EventManagerTest, HashOfNamesIsFnv1a32)
{
    static_assert(HashName("") == 0x811C9DC5u);
    static_assert(HashName("a") == 0xE40C292Cu);
    EXPECT_EQ(HashName(""), 0x811C9DC5u);
    EXPECT_EQ(HashName("a"), 0xE40C292Cu);
    EXPECT_EQ(HashName("foobar"), 0xBF9CF968u);
}

TEST(EventManagerTest, BindFiledUnderHashIsReachedByName)
{
    EventManager table;
    int calls = 0;
    bool destroyed = false;
    table.AddBind(HashName("Ping"), &calls, new CountingBind(&calls, &destroyed));
    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(table.CountBinds(&calls, "Ping"), 1);
}

TEST(EventManagerTest, ListenersAreCalledInAscendingAddressOrderRegardlessOfRegistrationOrder)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    table.RegisterEvent(&p[2], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[3], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1), p.at(2), p.at(3)}));
}

TEST(EventManagerTest, ListenerWithTwoBindsOnOneEventIsCalledTwice)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEventAgain);
    EXPECT_EQ(table.CountBinds(&p[0], "Ping"), 2);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(0), p.at(1)}));
}

TEST(EventManagerTest, DispatchOfUnknownNameDoesNothing)
{
    EventManager empty;
    EventManagerTestEvent event;
    empty.Dispatch("Nothing", &event);
    EXPECT_FALSE(empty.IsDispatching());

    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    table.Dispatch("Nothing", &event);
    table.Dispatch("", &event);
    EXPECT_TRUE(log.empty());
    EXPECT_FALSE(table.IsDispatching());
    EXPECT_EQ(table.CountBinds(&p[0], "Nothing"), 0);
}

TEST(EventManagerTest, ListenerAddedForSameEventDuringDispatchIsCalledOnlyFromNextDispatch)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    bool added = false;
    // p[1] sits after p[0] in address order, so an immediate insert would be reached by this dispatch.
    p[0].m_Action = [&](Event*) {
        if (!added)
        {
            added = true;
            table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
            EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 0);
        }
    };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 1);

    log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));
}

TEST(EventManagerTest, ListenerAddedForAnotherEventDuringDispatchWaitsForTheEnd)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    EventManagerTestEvent event;
    p[0].m_Action = [&](Event*) {
        table.RegisterEvent(&p[1], "Pong", &Probe::OnEvent);
        EXPECT_EQ(table.CountBinds(&p[1], "Pong"), 0);
        // Not even a dispatch of the other event, inside this one, reaches it.
        table.Dispatch("Pong", &event);
    };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
    EXPECT_EQ(table.CountBinds(&p[1], "Pong"), 1);

    log.clear();
    table.Dispatch("Pong", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(1)}));
}

TEST(EventManagerTest, ListenerRemovedDuringDispatchIsNotCalledLaterInThatDispatch)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    p[0].m_Action = [&](Event*) {
        table.UnregisterAll(&p[2]);
        EXPECT_EQ(table.CountBinds(&p[2], "Ping"), 0);
    };
    table.RegisterEvent(&p[2], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));

    log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));
}

TEST(EventManagerTest, BindRemovedDuringDispatchIsDeletedAtOnce)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    int calls = 0;
    bool destroyed = false;
    // Listener address p[3] sorts after p[0].
    table.AddBind(HashName("Ping"), &p[3], new CountingBind(&calls, &destroyed));
    p[0].m_Action = [&](Event*) {
        table.Unregister(&p[3], "Ping");
        EXPECT_TRUE(destroyed);
    };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(table.CountBinds(&p[3], "Ping"), 0);
}

TEST(EventManagerTest, ListenerRemovingItselfDuringItsOwnCallIsSafe)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    // p[1] has two binds; the first removes both, so the second is skipped.
    p[1].m_Action = [&](Event*) { table.UnregisterAll(&p[1]); };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEventAgain);
    table.RegisterEvent(&p[1], "Pong", &Probe::OnEvent);
    table.RegisterEvent(&p[2], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1), p.at(2)}));
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 0);
    EXPECT_EQ(table.CountBinds(&p[1], "Pong"), 0);

    log.clear();
    table.Dispatch("Ping", &event);
    table.Dispatch("Pong", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(2)}));
}

TEST(EventManagerTest, HeapListenerThatUnregistersAndDeletesItselfDuringItsCallIsSafe)
{
    std::vector<const void*> log;
    EventManager table;
    auto* doomed = new Probe();
    doomed->m_Log = &log;
    const void* doomedAddress = doomed;
    doomed->m_Action = [&table, doomed](Event*) {
        table.UnregisterAll(doomed);
        // Nothing of the listener or its bind may be touched after this.
        delete doomed;
    };
    table.RegisterEvent(doomed, "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{doomedAddress}));
    EXPECT_EQ(table.CountBinds(const_cast<void*>(doomedAddress), "Ping"), 0);
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log.size(), 1u);
}

TEST(EventManagerTest, NestedDispatchHoldsAddsAndRemovesUntilOutermostEnds)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    EventManagerTestEvent event;
    bool changed = false;

    // "Inner": p[0] removes p[2] and adds p[1], once.
    p[0].m_Action = [&](Event*) {
        if (changed)
            return;
        changed = true;
        table.UnregisterAll(&p[2]);
        table.RegisterEvent(&p[1], "Inner", &Probe::OnEvent);
    };
    table.RegisterEvent(&p[0], "Inner", &Probe::OnEvent);
    table.RegisterEvent(&p[2], "Inner", &Probe::OnEvent);

    // "Outer": p[3] dispatches "Inner" twice.
    std::vector<const void*> innerFirst;
    std::vector<const void*> innerSecond;
    p[3].m_Action = [&](Event* e) {
        log.clear();
        table.Dispatch("Inner", e);
        innerFirst = log;
        EXPECT_TRUE(table.IsDispatching());
        EXPECT_EQ(table.CountBinds(&p[1], "Inner"), 0);
        EXPECT_EQ(table.CountBinds(&p[2], "Inner"), 0);

        log.clear();
        table.Dispatch("Inner", e);
        innerSecond = log;
        EXPECT_EQ(table.CountBinds(&p[1], "Inner"), 0);
    };
    table.RegisterEvent(&p[3], "Outer", &Probe::OnEvent);

    table.Dispatch("Outer", &event);
    EXPECT_FALSE(table.IsDispatching());
    EXPECT_EQ(innerFirst, (std::vector<const void*>{p.at(0)}));
    // The add is still held and the removed bind stays gone during the outer dispatch.
    EXPECT_EQ(innerSecond, (std::vector<const void*>{p.at(0)}));
    EXPECT_EQ(table.CountBinds(&p[1], "Inner"), 1);
    EXPECT_EQ(table.CountBinds(&p[2], "Inner"), 0);

    log.clear();
    table.Dispatch("Inner", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));
}

TEST(EventManagerTest, ExplicitBeginDispatchHoldsAddsUntilMatchingEnd)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    EventManagerTestEvent event;

    table.BeginDispatch();
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    table.Dispatch("Ping", &event);
    EXPECT_TRUE(table.IsDispatching());
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(table.CountBinds(&p[0], "Ping"), 0);
    table.EndDispatch();
    EXPECT_FALSE(table.IsDispatching());
    EXPECT_EQ(table.CountBinds(&p[0], "Ping"), 1);

    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
}

TEST(EventManagerTest, RemovalForListenerNotOnTheListDoesNothing)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    Probe stranger;
    EventManager table;
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);

    table.UnregisterAll(&stranger);
    table.Unregister(&stranger, "Ping");
    table.Unregister(&p[0], "Nothing");
    table.Unregister(&stranger, "Nothing");

    p[0].m_Action = [&](Event*) {
        table.UnregisterAll(&stranger);
        table.Unregister(&stranger, "Ping");
        table.Unregister(&p[1], "Nothing");
    };
    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));
    EXPECT_EQ(table.CountBinds(&p[0], "Ping"), 1);
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 1);

    log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));
}

TEST(EventManagerTest, AddThenUnregisterAllInSameDispatchLeavesNothingAfterFlush)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    int calls = 0;
    bool destroyed = false;
    p[0].m_Action = [&](Event*) {
        table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
        table.RegisterEvent(&p[1], "Pong", &Probe::OnEvent);
        table.AddBind(HashName("Ping"), &p[1], new CountingBind(&calls, &destroyed));
        table.UnregisterAll(&p[1]);
        // The dropped pending bind is deleted at once.
        EXPECT_TRUE(destroyed);
    };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    // p[1] also had a live bind before the dispatch.
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 0);
    EXPECT_EQ(table.CountBinds(&p[1], "Pong"), 0);

    p[0].m_Action = nullptr;
    log.clear();
    table.Dispatch("Ping", &event);
    table.Dispatch("Pong", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
    EXPECT_EQ(calls, 0);
}

TEST(EventManagerTest, UnregisterAllThenAddInSameDispatchKeepsOnlyTheNewBind)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    bool done = false;
    p[0].m_Action = [&](Event*) {
        if (done)
            return;
        done = true;
        table.UnregisterAll(&p[1]);
        table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
    };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 1);

    log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));
}

TEST(EventManagerTest, DeletingTableDeletesLiveAndPendingBinds)
{
    int calls = 0;
    bool liveDestroyed = false;
    bool pendingDestroyed = false;
    int listeners[2] = {};
    auto table = std::make_unique<EventManager>();
    table->AddBind(HashName("Ping"), &listeners[0], new CountingBind(&calls, &liveDestroyed));
    table->BeginDispatch();
    table->AddBind(HashName("Ping"), &listeners[1], new CountingBind(&calls, &pendingDestroyed));
    EXPECT_EQ(table->CountBinds(&listeners[1], "Ping"), 0);
    // Deleted while the add is still held.
    table.reset();
    EXPECT_TRUE(liveDestroyed);
    EXPECT_TRUE(pendingDestroyed);
    EXPECT_EQ(calls, 0);
}

// Builds an object whose component order is the reverse of the components' address order.
struct ObjectFixture
{
    ObjectFixture()
    {
        object = new GameObject();
        auto* a = new EventManagerTestAlpha();
        auto* b = new EventManagerTestBeta();
        auto* c = new EventManagerTestAlpha();
        std::vector<Component*> parts = {a, b, c};
        std::sort(parts.begin(), parts.end(), std::greater<Component*>());
        for (Component* part : parts)
        {
            part->m_Owner = object;
            object->m_Components.push_back(part);
        }
        for (Component* part : parts)
        {
            if (auto* alpha = dynamic_cast<EventManagerTestAlpha*>(part))
                alpha->m_Log = &log;
            if (auto* beta = dynamic_cast<EventManagerTestBeta*>(part))
                beta->m_Log = &log;
        }
    }
    ~ObjectFixture() { delete object; }

    CallLog log;
    GameObject* object = nullptr;
};

TEST(EventManagerTest, DispatchToObjectReachesOnlyThatObjectsComponentsInComponentOrder)
{
    ObjectFixture mine;
    ObjectFixture other;
    EventManager table;
    std::vector<const void*> probeLog;
    ProbeSet p(&probeLog);

    // Register in a shuffled order, mixing in listeners that aren't components of `mine`.
    table.RegisterEvent(&p[0], "Hit", &Probe::OnEvent);
    for (Component* part : other.object->m_Components)
        if (auto* alpha = dynamic_cast<EventManagerTestAlpha*>(part))
            table.RegisterEvent(alpha, "Hit", &EventManagerTestAlpha::OnHit);
    for (auto it = mine.object->m_Components.rbegin(); it != mine.object->m_Components.rend(); ++it)
    {
        if (auto* alpha = dynamic_cast<EventManagerTestAlpha*>(*it))
            table.RegisterEvent(alpha, "Hit", &EventManagerTestAlpha::OnHit);
        else if (auto* beta = dynamic_cast<EventManagerTestBeta*>(*it))
            table.RegisterEvent(beta, "Hit", &EventManagerTestBeta::OnHit);
    }
    table.RegisterEvent(&p[1], "Hit", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.DispatchToObject(mine.object, "Hit", &event);

    CallLog expected;
    for (Component* part : mine.object->m_Components)
        expected.emplace_back(part, dynamic_cast<EventManagerTestAlpha*>(part) ? 1 : 3);
    EXPECT_EQ(mine.log, expected);
    EXPECT_TRUE(other.log.empty());
    EXPECT_TRUE(probeLog.empty());
    EXPECT_FALSE(table.IsDispatching());
}

TEST(EventManagerTest, DispatchToObjectCallsOnlyTheFirstBindOfAComponent)
{
    ObjectFixture mine;
    EventManager table;
    Component* first = mine.object->m_Components[0];
    auto* alpha = dynamic_cast<EventManagerTestAlpha*>(first);
    if (!alpha)
        alpha = dynamic_cast<EventManagerTestAlpha*>(mine.object->m_Components[2]);
    ASSERT_NE(alpha, nullptr);
    table.RegisterEvent(alpha, "Hit", &EventManagerTestAlpha::OnHit);
    table.RegisterEvent(alpha, "Hit", &EventManagerTestAlpha::OnHitAgain);

    EventManagerTestEvent event;
    table.DispatchToObject(mine.object, "Hit", &event);
    EXPECT_EQ(mine.log, (CallLog{{alpha, 1}}));

    // A plain dispatch walks both binds.
    mine.log.clear();
    table.Dispatch("Hit", &event);
    EXPECT_EQ(mine.log, (CallLog{{alpha, 1}, {alpha, 2}}));
}

TEST(EventManagerTest, DispatchToObjectSkipsComponentsWithoutBindAndUnknownNames)
{
    ObjectFixture mine;
    EventManager table;
    Component* middle = mine.object->m_Components[1];
    auto* alpha = dynamic_cast<EventManagerTestAlpha*>(middle);
    auto* beta = dynamic_cast<EventManagerTestBeta*>(middle);
    if (alpha)
        table.RegisterEvent(alpha, "Hit", &EventManagerTestAlpha::OnHit);
    else
        table.RegisterEvent(beta, "Hit", &EventManagerTestBeta::OnHit);

    EventManagerTestEvent event;
    table.DispatchToObject(mine.object, "Nothing", &event);
    EXPECT_TRUE(mine.log.empty());

    table.DispatchToObject(mine.object, "Hit", &event);
    EXPECT_EQ(mine.log, (CallLog{{middle, alpha ? 1 : 3}}));

    mine.log.clear();
    table.DispatchToObject(nullptr, "Hit", &event);
    EXPECT_TRUE(mine.log.empty());
    EXPECT_FALSE(table.IsDispatching());
}

TEST(EventManagerTest, DispatchToObjectSkipsBindRemovedEarlierInThatDispatch)
{
    ObjectFixture mine;
    EventManager table;
    std::vector<Component*>& parts = mine.object->m_Components;
    // The first component (in object order) removes the last one's bind.
    int calls = 0;
    bool destroyed = false;
    struct Remover final : public Engine::EventManager::EventBind
    {
        Engine::EventManager* table;
        void* victim;
        int* calls;
        void Invoke(Event*) override
        {
            ++*calls;
            table->UnregisterAll(victim);
        }
    };
    auto* remover = new Remover();
    remover->table = &table;
    remover->victim = parts[2];
    remover->calls = &calls;
    table.AddBind(HashName("Hit"), parts[0], remover);
    table.AddBind(HashName("Hit"), parts[2], new CountingBind(&calls, &destroyed));

    EventManagerTestEvent event;
    table.DispatchToObject(mine.object, "Hit", &event);
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(table.CountBinds(parts[2], "Hit"), 0);
}
}

namespace
{
// Thrown by a listener in the tests of unusual ends of a dispatch.
struct ListenerFailure
{
};

TEST(EventManagerTest, ListenerThatThrowsStillEndsTheDispatchSoHeldAndLaterAddsApply)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    p[0].m_Action = [&](Event*) {
        table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
        throw ListenerFailure();
    };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    EXPECT_THROW(table.Dispatch("Ping", &event), ListenerFailure);
    EXPECT_FALSE(table.IsDispatching());
    // The add held by the failed dispatch was applied at its end.
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 1);

    // A later add is applied at once, not held for a dispatch that never ends.
    p[0].m_Action = nullptr;
    table.RegisterEvent(&p[2], "Ping", &Probe::OnEvent);
    EXPECT_EQ(table.CountBinds(&p[2], "Ping"), 1);
    log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1), p.at(2)}));
}

TEST(EventManagerTest, ListenerThatThrowsInsideAnExplicitScopeEndsEveryLevel)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    p[0].m_Action = [](Event*) { throw ListenerFailure(); };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    try
    {
        EventManager::DispatchScope outer(table);
        table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
        table.Dispatch("Ping", &event);
    }
    catch (const ListenerFailure&)
    {
    }
    EXPECT_FALSE(table.IsDispatching());
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 1);
}

TEST(EventManagerTest, EndWithoutBeginIsIgnoredAndAddsStillApply)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    table.EndDispatch();
    table.BeginDispatch();
    table.EndDispatch();
    table.EndDispatch();
    EXPECT_FALSE(table.IsDispatching());

    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);
    EXPECT_EQ(table.CountBinds(&p[0], "Ping"), 1);
    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
}

TEST(EventManagerTest, UnregisterOfABindAddedInTheSameDispatchDropsIt)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    p[0].m_Action = [&](Event*) {
        table.RegisterEvent(&p[1], "Ping", &Probe::OnEvent);
        table.Unregister(&p[1], "Ping");
    };
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(table.CountBinds(&p[1], "Ping"), 0);
    p[0].m_Action = nullptr;
    log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
}

// Many probes in one array: their addresses ascend with their index.
struct ManyProbes
{
    explicit ManyProbes(std::size_t count) : probes(count)
    {
        for (Probe& probe : probes)
            probe.m_Log = &log;
    }
    // The probes with the given indices, in index order.
    std::vector<const void*> Addresses(const std::vector<std::size_t>& indices) const
    {
        std::vector<const void*> addresses;
        for (std::size_t i : indices)
            addresses.push_back(&probes[i]);
        return addresses;
    }

    std::vector<const void*> log;
    std::vector<Probe> probes;
};

// Indices 0..count-1 in a fixed scrambled order.
std::vector<std::size_t> Scrambled(std::size_t count)
{
    std::vector<std::size_t> order(count);
    for (std::size_t i = 0; i < count; ++i)
        order[i] = (i * 7919) % count;
    return order;
}

TEST(EventManagerTest, ManyListenersUnregisteredFromInsideADispatchLeaveTheRestInOrder)
{
    constexpr std::size_t kCount = 600;
    ManyProbes many(kCount);
    EventManager table;
    for (std::size_t i : Scrambled(kCount))
    {
        table.RegisterEvent(&many.probes[i], "Ping", &Probe::OnEvent);
        table.RegisterEvent(&many.probes[i], "Pong", &Probe::OnEvent);
    }

    // The first listener removes every third one from both events, drops every fifth one's
    // "Ping" only, and gives listener 1 a "Pong" bind that it takes back at once.
    many.probes[0].m_Action = [&](Event*) {
        for (std::size_t i = 3; i < kCount; i += 3)
            table.UnregisterAll(&many.probes[i]);
        for (std::size_t i = 5; i < kCount; i += 5)
            table.Unregister(&many.probes[i], "Ping");
        table.RegisterEvent(&many.probes[1], "Pung", &Probe::OnEventAgain);
        table.Unregister(&many.probes[1], "Pung");
    };
    std::vector<std::size_t> pingSurvivors;
    std::vector<std::size_t> pongSurvivors;
    for (std::size_t i = 0; i < kCount; ++i)
    {
        const bool gone = i != 0 && i % 3 == 0;
        if (!gone)
            pongSurvivors.push_back(i);
        if (!gone && (i == 0 || i % 5 != 0))
            pingSurvivors.push_back(i);
    }

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    // Removed later listeners were skipped in the very dispatch that removed them.
    EXPECT_EQ(many.log, many.Addresses(pingSurvivors));

    many.probes[0].m_Action = nullptr;
    many.log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(many.log, many.Addresses(pingSurvivors));
    many.log.clear();
    table.Dispatch("Pong", &event);
    EXPECT_EQ(many.log, many.Addresses(pongSurvivors));
    EXPECT_EQ(table.CountBinds(&many.probes[1], "Ping"), 1);
    EXPECT_EQ(table.CountBinds(&many.probes[1], "Pung"), 0);
    EXPECT_EQ(table.CountBinds(&many.probes[5], "Pong"), 1);
    EXPECT_EQ(table.CountBinds(&many.probes[6], "Pong"), 0);
}

TEST(EventManagerTest, ManyListenersAddedAndRemovedOutsideDispatchKeepAscendingOrder)
{
    constexpr std::size_t kCount = 2000;
    ManyProbes many(kCount);
    EventManager table;
    const std::vector<std::size_t> order = Scrambled(kCount);
    // Register the first half, remove most of it, then register the rest in between.
    for (std::size_t n = 0; n < kCount / 2; ++n)
        table.RegisterEvent(&many.probes[order[n]], "Ping", &Probe::OnEvent);
    for (std::size_t n = 0; n < kCount / 2; ++n)
        if (order[n] % 4 != 0)
            table.UnregisterAll(&many.probes[order[n]]);
    for (std::size_t n = kCount / 2; n < kCount; ++n)
    {
        table.RegisterEvent(&many.probes[order[n]], "Ping", &Probe::OnEvent);
        table.RegisterEvent(&many.probes[order[n]], "Ping", &Probe::OnEventAgain);
    }

    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < kCount; ++i)
    {
        const bool firstHalf =
            std::find(order.begin(), order.begin() + kCount / 2, i) != order.begin() + kCount / 2;
        if (!firstHalf)
        {
            expected.push_back(i);
            expected.push_back(i);
        }
        else if (i % 4 == 0)
        {
            expected.push_back(i);
        }
    }
    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(many.log, many.Addresses(expected));
}

TEST(EventManagerTest, DispatchToObjectReachesTheFirstBindThatIsStillLive)
{
    ObjectFixture mine;
    ManyProbes many(16);
    EventManager table;
    for (Probe& probe : many.probes)
        table.RegisterEvent(&probe, "Hit", &Probe::OnEvent);
    Component* first = mine.object->m_Components[0];
    auto* alpha = dynamic_cast<EventManagerTestAlpha*>(first);
    if (!alpha)
        alpha = dynamic_cast<EventManagerTestAlpha*>(mine.object->m_Components[2]);
    ASSERT_NE(alpha, nullptr);
    table.RegisterEvent(alpha, "Hit", &EventManagerTestAlpha::OnHit);
    table.RegisterEvent(alpha, "Hit", &EventManagerTestAlpha::OnHitAgain);

    // The removed first bind may still hold its place in the list.
    table.Unregister(alpha, "Hit");
    EventManagerTestEvent event;
    table.DispatchToObject(mine.object, "Hit", &event);
    EXPECT_EQ(mine.log, (CallLog{{alpha, 2}}));
}

// A listener interface that a component may implement beside Component.
class EventManagerTestWatcher
{
public:
    virtual ~EventManagerTestWatcher() = default;
    virtual void Watch() {}

    int m_Watched = 0;
};

// A component whose Component part does not sit at the start of the object.
class EventManagerTestWatcherComponent : public EventManagerTestWatcher, public Component
{
public:
    void OnHit(Event*) { ++m_Hits; }
    Component* Clone() const override { return new EventManagerTestWatcherComponent(); }
    Meta::Data* GetMeta() const override { return Meta::Get<EventManagerTestWatcherComponent>(); }

    int m_Hits = 0;
};

TEST(EventManagerTest, ComponentNotAtTheStartOfItsObjectIsReachedAndRemovedThroughAnyPointer)
{
    auto* watcher = new EventManagerTestWatcherComponent();
    Component* part = watcher;
    // The test means something only where the two addresses differ.
    ASSERT_NE(static_cast<const void*>(watcher), static_cast<const void*>(part));

    GameObject object;
    object.m_Components.push_back(part);
    part->m_Owner = &object;
    EventManager table;
    table.RegisterEvent(watcher, "Hit", &EventManagerTestWatcherComponent::OnHit);
    EXPECT_EQ(table.CountBinds(part, "Hit"), 1);

    EventManagerTestEvent event;
    table.DispatchToObject(&object, "Hit", &event);
    EXPECT_EQ(watcher->m_Hits, 1);

    // What the object does when it dies: remove its components' binds through Component pointers.
    table.UnregisterAll(part);
    EXPECT_EQ(table.CountBinds(watcher, "Hit"), 0);
    table.Dispatch("Hit", &event);
    table.DispatchToObject(&object, "Hit", &event);
    EXPECT_EQ(watcher->m_Hits, 1);

    // And the other way round: filed through its Component pointer, removed through its own class.
    int calls = 0;
    bool destroyed = false;
    table.AddBind(HashName("Hit"), part, new CountingBind(&calls, &destroyed));
    EXPECT_EQ(table.CountBinds(watcher, "Hit"), 1);
    table.Unregister(watcher, "Hit");
    EXPECT_TRUE(destroyed);
    EXPECT_EQ(table.CountBinds(part, "Hit"), 0);
}
}

namespace
{
// A listener whose handler is virtual.
class EventManagerTestBase
{
public:
    virtual ~EventManagerTestBase() = default;
    virtual void OnPing(Event*) { m_Calls.push_back("base"); }

    std::vector<std::string> m_Calls;
};

class EventManagerTestDerived : public EventManagerTestBase
{
public:
    void OnPing(Event*) override { m_Calls.push_back("derived"); }
};

TEST(EventManagerTest, VirtualHandlerNamedThroughTheBaseReachesTheOverride)
{
    EventManagerTestDerived derived;
    EventManager table;
    table.RegisterEvent(&derived, "Ping", &EventManagerTestBase::OnPing);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(derived.m_Calls, (std::vector<std::string>{"derived"}));
    table.UnregisterAll(&derived);
    table.Dispatch("Ping", &event);
    EXPECT_EQ(derived.m_Calls.size(), 1u);
}

TEST(EventManagerTest, MemberFunctionHeldInAnOwnedBindIsCalledAndDeletedWithIt)
{
    std::vector<const void*> log;
    ProbeSet p(&log);
    EventManager table;
    table.AddBind(HashName("Ping"), &p[1], new EventManager::EventBindObject<Probe>(&p[1], &Probe::OnEvent));
    table.RegisterEvent(&p[0], "Ping", &Probe::OnEvent);

    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0), p.at(1)}));
    table.Unregister(&p[1], "Ping");
    log.clear();
    table.Dispatch("Ping", &event);
    EXPECT_EQ(log, (std::vector<const void*>{p.at(0)}));
}

TEST(EventManagerTest, RegistrationWithoutListenerOrFunctionIsIgnored)
{
    EventManager table;
    Probe probe;
    table.RegisterEvent(static_cast<Probe*>(nullptr), "Ping", &Probe::OnEvent);
    table.RegisterEvent(&probe, "Ping", static_cast<void (Probe::*)(Event*)>(nullptr));
    table.AddBind(HashName("Ping"), &probe, nullptr);
    EventManagerTestEvent event;
    table.Dispatch("Ping", &event);
    EXPECT_EQ(table.CountBinds(&probe, "Ping"), 0);
}
}
