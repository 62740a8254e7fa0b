#include "engine/Space.h"

#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/GenericEvents.h"
#include "engine/Log.h"
#include "engine/System.h"
#include "engine/TestComponents.h"
#include "physics/PhysicsSystem.h"
#include "platform/Dialog.h"
#include "support/ReportCapture.h"
#include "support/Scoped.h"
#include "sound/SoundSpace.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
class SpaceTest : public ::testing::Test
{
protected:
    void SetUp() override { ProbeJournal().clear(); }

    static int Count(const std::string& line)
    {
        const auto& journal = ProbeJournal();
        return static_cast<int>(std::count(journal.begin(), journal.end(), line));
    }

    Engine::Space m_Space{Engine::Level};
};

}

TEST_F(SpaceTest, ObjectMadeAndDestroyedInOneFrameIsInitializedThenCollectedWithoutLateStart)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Short", {"Probe"}));
    const GameObjectId id = object->GetId();
    EXPECT_EQ(Count("probe:Initialize"), 1);
    object->Destroy();
    // Still findable until the collection at the end of the update.
    EXPECT_EQ(m_Space.GetGameObject(id), object);
    m_Space.GarbageCollectObjects();
    EXPECT_EQ(m_Space.GetGameObject(id), nullptr);
    m_Space.Update(0.016f);
    EXPECT_EQ(Count("probe:LateInitialize"), 0);
    EXPECT_EQ(Count("probe:Uninitialize"), 1);
    EXPECT_EQ(Count("probe:Destroyed"), 1);
}

TEST_F(SpaceTest, ObjectDestroyedDuringItsFirstUpdateIsCollectedAtTheEndOfThatUpdate)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Doomed", {"Probe"}));
    const GameObjectId id = object->GetId();
    object->Destroy();
    m_Space.Update(0.016f);
    EXPECT_EQ(m_Space.GetGameObject(id), nullptr);
    EXPECT_EQ(Count("probe:Destroyed"), 1);
}

TEST_F(SpaceTest, DestroyTwiceInAFrameMakesOneEntryAndOneDestruction)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Twice", {"Probe"}));
    object->Destroy();
    object->Destroy();
    EXPECT_EQ(m_Space.m_Garbage.size(), 1u);
    m_Space.Update(0.016f);
    EXPECT_EQ(Count("probe:Destroyed"), 1);
    EXPECT_TRUE(m_Space.m_Objects.empty());
}

TEST_F(SpaceTest, ObjectMadeInLateInitializeStartsInTheSameSpaceUpdate)
{
    const ArchetypeId childType = MakeArchetype("Spawned", {"Probe"});
    auto* spawner = new GameObject();
    spawner->m_Name = "Spawner";
    auto* probe = static_cast<Probe*>(spawner->AddComponentUninitialized("Probe"));
    probe->m_Label = "spawner";
    Engine::Space* space = &m_Space;
    probe->m_OnLateInitialize = [space, childType](Probe&) { space->CreateObject(childType); };
    const ArchetypeId spawnerType = Engine::ArchetypeManager::Get().Add(spawner);

    m_Space.CreateObject(spawnerType);
    m_Space.Update(0.016f);

    const std::vector<std::string> expected = {"spawner:Initialize", "spawner:LateInitialize", "probe:Initialize",
                                               "probe:LateInitialize"};
    std::vector<std::string> journal = ProbeJournal();
    journal.resize(std::min(journal.size(), expected.size()));
    EXPECT_EQ(journal, expected);
    for (const auto& [id, object] : m_Space.m_Objects)
        EXPECT_TRUE(object->m_Started) << object->m_Name;
}

TEST_F(SpaceTest, PausedSpaceRunsNoLogicUpdateButCollectsObjectsMarkedFromElsewhere)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Listener", {"Probe"}));
    auto* probe = object->GetComponent<Probe>();
    m_Space.m_Events.RegisterEvent(probe, "LogicUpdate", &Probe::OnEvent);
    m_Space.SetPause(true);

    // Another space's script marks the object.
    object->Destroy();
    m_Space.Update(0.016f);

    EXPECT_EQ(Count("probe:Event"), 0);
    EXPECT_TRUE(m_Space.m_Objects.empty());
}

TEST_F(SpaceTest, UnpausedSpaceSendsLogicUpdateWithTheFrameTime)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Ticker", {"Probe"}));
    auto* probe = object->GetComponent<Probe>();
    float seen = 0.0f;
    probe->m_OnEvent = [&seen](Probe&, Event* event) { seen = static_cast<GenericEvent::LogicUpdate*>(event)->Dt; };
    m_Space.m_Events.RegisterEvent(probe, "LogicUpdate", &Probe::OnEvent);
    m_Space.Update(0.02f);
    EXPECT_FLOAT_EQ(seen, 0.02f);
}

TEST_F(SpaceTest, SetPauseTwiceSendsOneEvent)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("PauseListener", {"Probe"}));
    auto* probe = object->GetComponent<Probe>();
    bool paused = false;
    probe->m_OnEvent = [&paused](Probe&, Event* event) { paused = static_cast<GenericEvent::Pause*>(event)->m_Paused; };
    m_Space.m_Events.RegisterEvent(probe, "Pause", &Probe::OnEvent);
    m_Space.SetPause(true);
    m_Space.SetPause(true);
    EXPECT_EQ(probe->m_Events, 1);
    EXPECT_TRUE(paused);
    EXPECT_TRUE(m_Space.IsPaused());
    m_Space.SetPause(false);
    EXPECT_EQ(probe->m_Events, 2);
    EXPECT_FALSE(paused);
}

TEST_F(SpaceTest, SetHideSendsAnEventOnlyOnChangeAndLogicPauseSendsNone)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("HideListener", {"Probe"}));
    auto* probe = object->GetComponent<Probe>();
    m_Space.m_Events.RegisterEvent(probe, "Hide", &Probe::OnEvent);
    m_Space.SetHide(false);
    EXPECT_EQ(probe->m_Events, 0);
    m_Space.SetHide(true);
    EXPECT_EQ(probe->m_Events, 1);
    m_Space.SetLogicPause(true);
    EXPECT_TRUE(m_Space.IsLogicPaused());
    EXPECT_EQ(probe->m_Events, 1);
}

namespace
{
int g_Updates[3];

class GraphicsProbe : public Graphics::GraphicsSpace
{
public:
    void Update(float) override { ++g_Updates[0]; }
};
class SoundProbe : public SoundSpace
{
public:
    void Update(float) override { ++g_Updates[1]; }
};
class PhysicsProbe : public PhysicsSystem
{
public:
    void Update(float) override { ++g_Updates[2]; }
};
}

TEST_F(SpaceTest, LogicPausedSpaceUpdatesOnlyGraphicsAndSound)
{
    std::fill(std::begin(g_Updates), std::end(g_Updates), 0);
    m_Space.AddSystem(new GraphicsProbe(), Meta::Get<Graphics::GraphicsSpace>());
    m_Space.AddSystem(new SoundProbe(), Meta::Get<SoundSpace>());
    m_Space.AddSystem(new PhysicsProbe(), Meta::Get<PhysicsSystem>());
    GameObject* object = m_Space.CreateObject(MakeArchetype("Logic", {"Probe"}));
    m_Space.m_Events.RegisterEvent(object->GetComponent<Probe>(), "LogicUpdate", &Probe::OnEvent);

    m_Space.SetLogicPause(true);
    m_Space.Update(0.016f);
    EXPECT_EQ(g_Updates[0], 1);
    EXPECT_EQ(g_Updates[1], 1);
    EXPECT_EQ(g_Updates[2], 0);
    EXPECT_EQ(Count("probe:Event"), 0);

    m_Space.SetLogicPause(false);
    m_Space.Update(0.016f);
    EXPECT_EQ(g_Updates[2], 1);
    EXPECT_EQ(Count("probe:Event"), 1);
}

TEST_F(SpaceTest, SystemLookupKeepsTheFirstSystemOfAKey)
{
    System* first = new PhysicsProbe();
    System* second = new PhysicsProbe();
    m_Space.AddSystem(first, Meta::Get<PhysicsSystem>());
    m_Space.AddSystem(second, Meta::Get<PhysicsSystem>());
    EXPECT_EQ(m_Space.GetSystem<PhysicsSystem>(), first);
    EXPECT_EQ(m_Space.m_Systems.size(), 2u);
    EXPECT_EQ(first->m_Space, &m_Space);
    EXPECT_EQ(m_Space.GetSystem<SoundSpace>(), nullptr);
}

TEST_F(SpaceTest, IdsAreUniqueAcrossSpacesAndNeverReused)
{
    Engine::Space other(Engine::HUD);
    const ArchetypeId type = MakeArchetype("Counted", {});
    GameObject* a = m_Space.CreateObject(type);
    GameObject* b = other.CreateObject(type);
    const GameObjectId firstB = b->GetId();
    EXPECT_NE(a->GetId(), b->GetId());
    EXPECT_NE(a->GetId(), 0u);
    b->Destroy();
    other.GarbageCollectObjects();
    GameObject* c = other.CreateObject(type);
    EXPECT_GT(c->GetId(), firstB);
}

TEST_F(SpaceTest, CollectingAPointerThatIsNoLiveObjectReportsBadThings)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    m_Space.m_Garbage.insert(reinterpret_cast<GameObject*>(0x1000));
    testing::internal::CaptureStderr();
    m_Space.GarbageCollectObjects();
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("BAD THINGS HAPPENDED"), std::string::npos);
    EXPECT_TRUE(m_Space.m_Garbage.empty());
}

TEST_F(SpaceTest, DestroyingTheSpaceDestroysObjectsBeforeSystems)
{
    {
        Engine::Space space(Engine::Menu);
        space.CreateObject(MakeArchetype("Last", {"Probe"}));
        auto* system = new PhysicsProbe();
        space.AddSystem(system, Meta::Get<PhysicsSystem>());
    }
    EXPECT_EQ(Count("probe:Destroyed"), 1);
}

TEST_F(SpaceTest, BroadcastToAnUnknownObjectDoesNothing)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Target", {"Probe"}));
    auto* probe = object->GetComponent<Probe>();
    m_Space.m_Events.RegisterEvent(probe, "Ping", &Probe::OnEvent);
    GenericEvent::EndOfFrame event;
    m_Space.BroadcastEventToObject("Ping", &event, 999999);
    EXPECT_EQ(probe->m_Events, 0);
    m_Space.BroadcastEventToObject("Ping", &event, object->GetId());
    EXPECT_EQ(probe->m_Events, 1);
}

TEST_F(SpaceTest, CollectingThousandsOfBoundObjectsUnbindsThemAndKeepsTheSurvivorsReachable)
{
    const ArchetypeId type = MakeArchetype("Bound", {"Probe", "OtherProbe"});
    std::vector<GameObject*> objects;
    for (int i = 0; i < 3000; ++i)
    {
        GameObject* object = m_Space.CreateObject(type);
        for (Component* component : object->m_Components)
        {
            m_Space.m_Events.RegisterEvent(static_cast<Probe*>(component), "LogicUpdate", &Probe::OnEvent);
            m_Space.m_Events.RegisterEvent(static_cast<Probe*>(component), "Ping", &Probe::OnEvent);
        }
        objects.push_back(object);
    }
    std::vector<GameObject*> survivors;
    for (std::size_t i = 0; i < objects.size(); ++i)
    {
        if (i % 3 == 0)
            survivors.push_back(objects[i]);
        else
            objects[i]->Destroy();
    }
    m_Space.GarbageCollectObjects();
    EXPECT_EQ(m_Space.m_Objects.size(), survivors.size());
    EXPECT_EQ(Count("probe:Destroyed"), 4000);

    m_Space.Update(0.016f);
    GenericEvent::EndOfFrame ping;
    m_Space.BroadcastEventToObject("Ping", &ping, survivors.back()->GetId());
    for (GameObject* survivor : survivors)
    {
        for (Component* component : survivor->m_Components)
        {
            EXPECT_EQ(m_Space.m_Events.CountBinds(component, "LogicUpdate"), 1);
            EXPECT_EQ(static_cast<Probe*>(component)->m_Events, survivor == survivors.back() ? 2 : 1);
        }
    }
}

TEST_F(SpaceTest, CreateObjectOfAnUnknownArchetypeIsReportedAndMakesNothing)
{
    ReportCapture reports;
    EXPECT_EQ(m_Space.CreateObject(0), nullptr);
    EXPECT_EQ(m_Space.CreateObjectUninitialized(4000000000u), nullptr);
    EXPECT_NE(reports.Text().find("No archetype has the id 0: no object is made."), std::string::npos) << reports.Text();
    EXPECT_TRUE(m_Space.m_Objects.empty());
}
