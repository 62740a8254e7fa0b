// The debug script of the run loop: "LuaScripts/DebugScript.lua" runs when the
// loop starts and its DebugUpdate is called at the start of every frame; an
// edit of the file takes effect in the next frame.
#include "engine/FrameRateController.h"
#include "engine/GameStateManager.h"
#include "engine/Manager.h"
#include "engine/System.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/LuaTestSupport.h"

#include <functional>
#include <string>

namespace
{
// An engine system that runs test code each frame.
class FrameHook : public System
{
public:
    void Update(float) override
    {
        if (m_OnUpdate)
            m_OnUpdate();
    }
    Meta::Data* GetMeta() const override { return Meta::Get<FrameHook>(); }

    std::function<void()> m_OnUpdate;
};

// A game state that does nothing.
class IdleState : public GameState
{
public:
    IdleState() : GameState("Idle") {}
};

class ManagerDebugScriptTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        GameStateManager& states = GameStateManager::Get();
        states.m_States.clear();
        states.m_Current = states.m_Next = nullptr;
        states.AddState(std::make_shared<IdleState>());
        Engine::Manager& manager = Engine::Manager::Get();
        manager.m_Systems.clear();
        manager.m_Running = true;
        manager.AddSystem(&m_Hook);
        FrameRateController::Get().m_Dt = 0.016f;
    }
    void TearDown() override
    {
        Engine::Manager& manager = Engine::Manager::Get();
        manager.m_Systems.clear();
        manager.SetFrameLimit(0);
    }
    // Runs `frames` frames of the loop.
    void RunFrames(unsigned frames)
    {
        Engine::Manager& manager = Engine::Manager::Get();
        manager.SetFrameLimit(manager.GetFrameCount() + frames);
        manager.Run();
    }
    // A global of the game's Lua state as a string ("" when it is none).
    static std::string Global(const char* name)
    {
        lua_State* L = LuaSystem::Get().m_State;
        lua_getglobal(L, name);
        const char* value = lua_tostring(L, -1);
        const std::string text = value ? value : "";
        lua_pop(L, 1);
        return text;
    }

    TempFolder m_Temp;
    ScopedDataDirectory m_DataDirectory{m_Temp.Path()};
    FrameHook m_Hook;
};
}

META_REGISTER(FrameHook)
{
    DERIVE(System);
}

TEST_F(ManagerDebugScriptTest, DebugUpdateIsCalledAtTheStartOfEveryFrame)
{
    m_Temp.Write("LuaScripts/DebugScript.lua",
                 "_G.debugTrace = '' function DebugUpdate() _G.debugTrace = _G.debugTrace .. 'D' end");
    m_Hook.m_OnUpdate = [] {
        lua_State* L = LuaSystem::Get().m_State;
        lua_getglobal(L, "debugTrace");
        lua_pushstring(L, "S");
        lua_concat(L, 2);
        lua_setglobal(L, "debugTrace");
    };
    RunFrames(3);
    EXPECT_EQ(Global("debugTrace"), "DSDSDS");
    EXPECT_EQ(Engine::Manager::Get().m_DebugScript, nullptr);
}

TEST_F(ManagerDebugScriptTest, AnEditedDebugScriptIsCalledFromTheNextFrame)
{
    const std::string path = m_Temp.Write("LuaScripts/DebugScript.lua",
                                          "_G.debugTrace = '' function DebugUpdate() _G.debugTrace = _G.debugTrace .. 'a' end");
    int frame = 0;
    m_Hook.m_OnUpdate = [&] {
        // The file watcher's own frame update, as the engine's system list runs it.
        FileWatcher::Get().Update(0.016f);
        if (++frame != 2)
            return;
        m_Temp.Write("LuaScripts/DebugScript.lua", "function DebugUpdate() _G.debugTrace = _G.debugTrace .. 'b' end");
        TouchLater(path);
        PollAndUpdateWatcher();
    };
    RunFrames(4);
    EXPECT_EQ(Global("debugTrace"), "aabb");
}

TEST_F(ManagerDebugScriptTest, AFailingDebugUpdateIsPrintedEachFrameAndTheLoopRunsOn)
{
    m_Temp.Write("LuaScripts/DebugScript.lua", "function DebugUpdate() error('debug broke') end");
    int frames = 0;
    m_Hook.m_OnUpdate = [&frames] { ++frames; };
    StdoutCapture capture;
    RunFrames(3);
    const std::string text = capture.Text();
    EXPECT_EQ(frames, 3);
    std::size_t errors = 0;
    for (std::size_t at = text.find("Lua Error: "); at != std::string::npos; at = text.find("Lua Error: ", at + 1))
        ++errors;
    EXPECT_EQ(errors, 3u) << text;
    EXPECT_NE(text.find("debug broke"), std::string::npos) << text;
    EXPECT_EQ(lua_gettop(LuaSystem::Get().m_State), 0);
}

TEST_F(ManagerDebugScriptTest, WithoutADebugScriptTheFramesRunAsBefore)
{
    int frames = 0;
    m_Hook.m_OnUpdate = [&frames] { ++frames; };
    StdoutCapture capture;
    RunFrames(2);
    EXPECT_EQ(frames, 2);
    EXPECT_EQ(capture.Text().rfind("Lua Error: cannot open ", 0), 0u) << capture.Text();
}
