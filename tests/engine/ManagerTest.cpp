#include "engine/Manager.h"

#include "engine/ArchetypeManager.h"
#include "engine/FrameRateController.h"
#include "engine/GameStateManager.h"
#include "engine/GenericEvents.h"
#include "engine/SpaceManager.h"
#include "engine/System.h"
#include "engine/Window.h"
#include "utilities/Meta/Registration.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace
{
std::vector<std::string>& Calls()
{
    static std::vector<std::string> calls;
    return calls;
}

// An engine system that records its updates and can run test code.
class RecordingSystem : public System
{
public:
    explicit RecordingSystem(std::string name) : m_Name(std::move(name)) {}
    void Update(float dt) override
    {
        Calls().push_back(m_Name);
        m_LastDt = dt;
        if (m_OnUpdate)
            m_OnUpdate();
    }
    Meta::Data* GetMeta() const override { return Meta::Get<RecordingSystem>(); }

    std::string m_Name;
    float m_LastDt = 0.0f;
    std::function<void()> m_OnUpdate;
};

// A game state that records its entry points and can run test code.
class RecordingState : public GameState
{
public:
    RecordingState() : GameState("Recording") {}
    void Load() override { Calls().push_back("Load"); }
    void Initialize() override
    {
        Calls().push_back("Initialize");
        if (m_OnInitialize)
            m_OnInitialize();
    }
    void Update(float) override { Calls().push_back("Update"); }
    void Uninitialize() override { Calls().push_back("Uninitialize"); }
    void Unload() override { Calls().push_back("Unload"); }

    std::function<void()> m_OnInitialize;
};

class ManagerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Calls().clear();
        GameStateManager& states = GameStateManager::Get();
        states.m_States.clear();
        states.m_Current = states.m_Next = nullptr;
        states.AddState(m_State);
        Engine::Manager& manager = Engine::Manager::Get();
        manager.m_Systems.clear();
        manager.m_Running = true;
        manager.SetFrameLimit(0);
        FrameRateController::Get().m_Dt = 0.016f;
    }
    void TearDown() override { Engine::Manager::Get().m_Systems.clear(); }

    std::shared_ptr<RecordingState> m_State = std::make_shared<RecordingState>();
    RecordingSystem m_First{"First"};
    RecordingSystem m_Second{"Second"};
};
}

META_REGISTER(RecordingSystem)
{
    DERIVE(System);
}

TEST_F(ManagerTest, FrameUpdatesSystemsInListOrder)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&m_Second);
    manager.AddSystem(&m_First);
    manager.RunFrame();
    EXPECT_EQ(Calls(), (std::vector<std::string>{"Second", "First"}));
}

TEST_F(ManagerTest, FrameAfterALargeStallSeesAThirtiethOfASecond)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&m_First);
    manager.AddSystem(&m_Second);
    FrameRateController::Get().m_Dt = 0.5f;
    manager.RunFrame();
    EXPECT_EQ(m_First.m_LastDt, 0.033333335f);
    EXPECT_EQ(m_Second.m_LastDt, 0.033333335f);
}

TEST_F(ManagerTest, ClosingDuringTheFrameEndsTheLoopInThatFrameAfterAllSystemsRan)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&m_First);
    manager.AddSystem(&m_Second);
    Window window;
    m_First.m_OnUpdate = [&window] {
        Platform::WindowMessage close;
        close.kind = Platform::WindowMessageKind::Close;
        window.HandleMessage(close);
    };
    manager.Run();
    EXPECT_EQ(Calls(), (std::vector<std::string>{"Load", "Initialize", "First", "Second", "Uninitialize", "Unload"}));
    EXPECT_FALSE(manager.m_Running);
}

TEST_F(ManagerTest, QuitBeforeTheFirstRoundRunsNoFrame)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&m_First);
    GameStateManager::Get().m_CurrentState = GameStateManager::Quit;
    manager.Run();
    EXPECT_TRUE(Calls().empty());
    EXPECT_FALSE(manager.m_Running);
}

TEST_F(ManagerTest, RestartReinitializesWithoutUnloadOrLoad)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&GameStateManager::Get());
    manager.AddSystem(&m_First);
    int frame = 0;
    m_First.m_OnUpdate = [&frame] {
        ++frame;
        GameStateManager::Get().SetNext(frame == 1 ? GameStateManager::Restart : GameStateManager::Quit);
    };
    manager.Run();
    EXPECT_EQ(Calls(), (std::vector<std::string>{"Load", "Initialize", "Update", "First", "Uninitialize", "Initialize",
                                                 "Update", "First", "Uninitialize", "Unload"}));
}

TEST_F(ManagerTest, StateThatSetsNextDuringInitializeRunsNoFrame)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&m_First);
    m_State->m_OnInitialize = [] { GameStateManager::Get().SetNext(GameStateManager::Quit); };
    manager.Run();
    EXPECT_EQ(Calls(), (std::vector<std::string>{"Load", "Initialize", "Uninitialize", "Unload"}));
}

TEST_F(ManagerTest, FrameLimitEndsTheRunThroughQuitAfterThatManyFrames)
{
    Engine::Manager& manager = Engine::Manager::Get();
    manager.AddSystem(&m_First);
    const unsigned before = manager.GetFrameCount();
    manager.SetFrameLimit(before + 3);
    manager.Run();
    EXPECT_EQ(manager.GetFrameCount() - before, 3u);
    EXPECT_EQ(Calls().back(), "Unload");
}

TEST_F(ManagerTest, StateChangeCollectsGarbageInEverySpace)
{
    Engine::Manager& manager = Engine::Manager::Get();
    Engine::Space* hud = Engine::SpaceManager::Get().GetSpace(Engine::HUD);
    m_State->m_OnInitialize = [hud] {
        auto* archetype = new GameObject();
        GameObject* object = hud->CreateObject(Engine::ArchetypeManager::Get().Add(archetype));
        object->Destroy();
        GameStateManager::Get().SetNext(GameStateManager::Quit);
    };
    manager.Run();
    EXPECT_TRUE(hud->m_Objects.empty());
}

namespace
{
struct Counter
{
    int count = 0;
    void On(Event*) { ++count; }
};
}

TEST_F(ManagerTest, BroadcastReachesTheGlobalTableAndEveryUnpausedSpace)
{
    Engine::Manager& manager = Engine::Manager::Get();
    Engine::SpaceManager& spaces = Engine::SpaceManager::Get();
    Counter global, level, hud, menu;
    manager.m_Events.RegisterEvent(&global, "EndOfFrame", &Counter::On);
    spaces.GetSpace(Engine::Level)->m_Events.RegisterEvent(&level, "EndOfFrame", &Counter::On);
    spaces.GetSpace(Engine::HUD)->m_Events.RegisterEvent(&hud, "EndOfFrame", &Counter::On);
    spaces.GetSpace(Engine::Menu)->m_Events.RegisterEvent(&menu, "EndOfFrame", &Counter::On);
    spaces.GetSpace(Engine::HUD)->SetPause(true);

    GenericEvent::EndOfFrame event;
    manager.BroadcastEvent(&event);

    EXPECT_EQ(global.count, 1);
    EXPECT_EQ(level.count, 1);
    EXPECT_EQ(hud.count, 0);
    EXPECT_EQ(menu.count, 1);
    spaces.GetSpace(Engine::HUD)->SetPause(false);
    manager.m_Events.UnregisterAll(&global);
    spaces.GetSpace(Engine::Level)->m_Events.UnregisterAll(&level);
    spaces.GetSpace(Engine::HUD)->m_Events.UnregisterAll(&hud);
    spaces.GetSpace(Engine::Menu)->m_Events.UnregisterAll(&menu);
}

TEST_F(ManagerTest, SpacesAreNamedAndUpdatedInIndexOrder)
{
    Engine::SpaceManager& spaces = Engine::SpaceManager::Get();
    ASSERT_EQ(spaces.m_Spaces.size(), 3u);
    EXPECT_STREQ(spaces.GetSpace(0)->GetName(), "Level");
    EXPECT_STREQ(spaces.GetSpace(1)->GetName(), "HUD");
    EXPECT_STREQ(spaces.GetSpace(2)->GetName(), "Menu");
    EXPECT_STREQ(Engine::kSpaceNames[3], "Pause");
}

TEST_F(ManagerTest, InvalidNextStateEndsTheStateAndIsReported)
{
    // Invalid is never compared with in the loop: the state ends and no state is left to load.
    GameStateManager& states = GameStateManager::Get();
    m_State->m_OnInitialize = [] { GameStateManager::Get().SetNext(GameStateManager::Invalid); };
    states.EnterState();
    states.LeaveState();
    states.Advance();
    EXPECT_EQ(states.GetCurrentState(), nullptr);
    EXPECT_EQ(Calls(), (std::vector<std::string>{"Load", "Initialize", "Uninitialize", "Unload"}));
}
