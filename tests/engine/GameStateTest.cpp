// Game states written in Lua: discovery, entry points, events bound by a state
// and released when it unloads, its globals seen through the state, and the
// script surface of the manager.
#include "utilities/lua/LuaTestSupport.h"

#include "engine/GameState.h"
#include "engine/GameStateManager.h"
#include "engine/Manager.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/Stack.h"

namespace
{
class GameStateTest : public LuaTest
{
protected:
    void SetUp() override { luabridge::LuaBinding::Get().BindAll(L()); }
    void TearDown() override
    {
        if (m_State && m_State->m_Loaded)
            m_State->Unload();
    }
    // A state on a script of the test's data folder.
    GameState& MakeState(const std::string& name, const std::string& text)
    {
        m_State = std::make_shared<GameState>(name, m_Temp.Write("LuaScripts/GameStates/" + name + ".lua", text),
                                              &m_Lua);
        return *m_State;
    }
    // The global `name` of the state's environment as a string ("" when not a string).
    std::string StateText(const char* name)
    {
        m_State->GetProperty(L(), name);
        const char* text = lua_tostring(L(), -1);
        const std::string value = text ? text : "";
        lua_pop(L(), 1);
        return value;
    }

    std::shared_ptr<GameState> m_State;
};

const char* kRecorder = R"(
log = ""
function Load() log = log .. "Load;" end
function Initialize() log = log .. "Initialize;" end
function Update(dt) log = log .. "Update " .. dt .. ";" end
function Uninitialize() log = log .. "Uninitialize;" end
function Unload() log = log .. "Unload;" end
)";
}

TEST_F(GameStateTest, EntryPointsAreCalledInTurnAndUpdateGetsTheFrameTime)
{
    GameState& state = MakeState("Recorder", kRecorder);
    state.Load();
    state.Initialize();
    state.Update(0.25f);
    state.Uninitialize();
    EXPECT_EQ(StateText("log"), "Load;Initialize;Update 0.25;Uninitialize;");
    state.Unload();
    EXPECT_FALSE(state.m_Loaded);
}

TEST_F(GameStateTest, MissingEntryPointsAreSkipped)
{
    GameState& state = MakeState("Sparse", "function Update(dt) seen = dt end");
    state.Load();
    state.Initialize();
    state.Update(0.5f);
    state.Uninitialize();
    state.GetProperty(L(), "seen");
    EXPECT_DOUBLE_EQ(lua_tonumber(L(), -1), 0.5);
    lua_pop(L(), 1);
}

TEST_F(GameStateTest, LuaErrorInAnEntryPointIsReportedAndTheNextOneRuns)
{
    GameState& state = MakeState("Faulty", R"(
function Initialize() error("initialize failed on purpose") end
function Update(dt) updated = true end
)");
    StdoutCapture output;
    state.Load();
    state.Initialize();
    state.Update(0.016f);
    EXPECT_NE(output.Text().find("initialize failed on purpose"), std::string::npos);
    state.GetProperty(L(), "updated");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
}

TEST_F(GameStateTest, RegisterEventBindsTheStatesHandlerOnTheGlobalTableUntilUnload)
{
    GameState& state = MakeState("Listener", R"(
hits = 0
function HitEvent(e) hits = hits + 1 end
function Initialize() this:RegisterEvent("Hit") end
)");
    state.Load();
    state.Initialize();
    Engine::Manager::Get().BroadcastEvent("Hit", nullptr);
    Run("manager = Manager.Get(); manager:BroadcastEvent('Hit', ScriptEvent('Hit'))");
    state.GetProperty(L(), "hits");
    EXPECT_DOUBLE_EQ(lua_tonumber(L(), -1), 1.0);
    lua_pop(L(), 1);
    EXPECT_EQ(Engine::Manager::Get().m_Events.CountBinds(&state, "Hit"), 1);
    state.Unload();
    EXPECT_EQ(Engine::Manager::Get().m_Events.CountBinds(&state, "Hit"), 0);
}

TEST_F(GameStateTest, SpaceBindsAStatesHandlerGivenTheState)
{
    GameState& state = MakeState("Watcher", R"(
function OnDoor(e) opened = e.Name end
function Initialize() SpaceManager.Get():GetSpace(Space.Level):RegisterEvent(this, "Door", "OnDoor") end
)");
    state.Load();
    state.Initialize();
    Run("SpaceManager.Get():GetSpace(Space.Level):BroadcastEvent(ScriptEvent('Door'))");
    EXPECT_EQ(StateText("opened"), "Door");
    Engine::Space* level = Engine::SpaceManager::Get().GetSpace(Engine::Level);
    EXPECT_EQ(level->m_Events.CountBinds(&state, "Door"), 1);
    state.Unload();
    EXPECT_EQ(level->m_Events.CountBinds(&state, "Door"), 0);
}

TEST_F(GameStateTest, GlobalsOfTheStateAreReadAndWrittenThroughIt)
{
    GameState& state = MakeState("Scored", "score = 3 function Get() return score end");
    state.Load();
    luabridge::Stack<GameState*>::Push(L(), &state);
    lua_setglobal(L(), "state");
    Run("before = state.score; state.score = 10; name = state.ScriptName; other = state:GetName()");
    EXPECT_DOUBLE_EQ(Number("before"), 3.0);
    EXPECT_EQ(StateText("score"), "10");
    EXPECT_EQ(String("name"), "Scored");
    EXPECT_EQ(String("other"), "Scored");
}

TEST_F(GameStateTest, RegisterGameStatesMakesAStateOfEveryScriptWithoutRunningIt)
{
    m_Temp.Write("LuaScripts/GameStates/Alpha.lua", "ran = true");
    m_Temp.Write("LuaScripts/GameStates/Beta.lua", "ran = true");
    m_Temp.Write("LuaScripts/GameStates/notes.txt", "not a state");
    GameStateManager states;
    states.RegisterGameStates(&m_Lua);
    ASSERT_EQ(states.m_States.size(), 2u);
    ASSERT_NE(states.GetGameState("Alpha"), nullptr);
    ASSERT_NE(states.GetGameState("Beta"), nullptr);
    EXPECT_EQ(states.GetGameState("Alpha")->m_Id, 0);
    EXPECT_EQ(states.GetGameState("Beta")->m_Id, 1);
    EXPECT_FALSE(states.GetGameState("Alpha")->m_Loaded);
    EXPECT_EQ(String("ran"), "");
}

TEST_F(GameStateTest, ScriptsPickStatesAndEndTheGameThroughTheManager)
{
    GameStateManager& states = GameStateManager::Get();
    states.AddState(std::make_shared<GameState>("ScriptPickedA"));
    states.AddState(std::make_shared<GameState>("ScriptPickedB"));
    Run(R"(
        GameStateManager.SetInitialState("ScriptPickedA")
        GameStateManager.SetNextState("ScriptPickedB")
        picked = GameStateManager.GetGameState("ScriptPickedB"):GetName()
        current = GameStateManager.GetCurrentState().ScriptName
        missing = GameStateManager.GetGameState("Nowhere") == nil
        GameStateManager.Next = GameStateManager.Quit
        quit, restart, invalid = GameStateManager.Quit, GameStateManager.Restart, GameStateManager.Invalid
    )");
    EXPECT_EQ(String("picked"), "ScriptPickedB");
    EXPECT_EQ(String("current"), "ScriptPickedA");
    EXPECT_EQ(states.GetNextStateId(), GameStateManager::Quit);
    EXPECT_DOUBLE_EQ(Number("quit"), -2.0);
    EXPECT_DOUBLE_EQ(Number("restart"), -1.0);
    EXPECT_DOUBLE_EQ(Number("invalid"), -3.0);
}
