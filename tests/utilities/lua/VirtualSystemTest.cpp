// Space systems written in Lua: the test's own scripts, and the game's three
// level systems (Actions, Animations, MassiveUpdate) driven frame by frame.
#include "utilities/lua/LuaTestSupport.h"

#include "utilities/lua/LuaScript.h"
#include "utilities/lua/VirtualSystem.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/Stack.h"

namespace
{
class VirtualSystemTest : public LuaTest
{
protected:
    void SetUp() override { luabridge::LuaBinding::Get().BindAll(L()); }
    // A system on the game's script LuaScripts/Systems/<name>.lua, initialized.
    std::unique_ptr<VirtualSystem> GameSystem(const std::string& name)
    {
        auto system = std::make_unique<VirtualSystem>(std::string(VORN_DATA_DIR) + "/LuaScripts/Systems/" + name,
                                                      &m_Lua);
        system->Initialize();
        return system;
    }
};
}

TEST_F(VirtualSystemTest, InitializeRunsTheScriptOnceAndUpdateGetsTheFrameTime)
{
    VirtualSystem system(m_Temp.Write("Counter.lua", R"(
runs = (runs or 0) + 1
total = 0
function Initialize() initialized = this end
function Update(dt) total = total + dt end
)"), &m_Lua);
    system.Initialize();
    system.Update(0.25f);
    system.Update(0.5f);
    luabridge::Stack<VirtualSystem*>::Push(L(), &system);
    lua_setglobal(L(), "system");
    Run("total = system.total; runs = system.runs; same = type(system.initialized) == 'userdata'");
    EXPECT_DOUBLE_EQ(Number("total"), 0.75);
    EXPECT_DOUBLE_EQ(Number("runs"), 1.0);
    lua_getglobal(L(), "same");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
}

TEST_F(VirtualSystemTest, ScriptGlobalsAreWrittenThroughTheSystem)
{
    VirtualSystem system(m_Temp.Write("Tuned.lua", "Speed = 1 function Update(dt) seen = Speed end"), &m_Lua);
    system.Initialize();
    luabridge::Stack<VirtualSystem*>::Push(L(), &system);
    lua_setglobal(L(), "system");
    Run("system.Speed = 4");
    system.Update(0.016f);
    Run("seen = system.seen");
    EXPECT_DOUBLE_EQ(Number("seen"), 4.0);
}

TEST_F(VirtualSystemTest, MissingScriptOrEntryPointsLeaveTheSystemIdle)
{
    StdoutCapture output;
    VirtualSystem missing(m_Temp.Path() + "Nothing.lua", &m_Lua);
    missing.Initialize();
    missing.Update(0.016f);
    VirtualSystem bare(m_Temp.Write("Bare.lua", "x = 1"), &m_Lua);
    bare.Initialize();
    bare.Update(0.016f);
    SUCCEED();
}

TEST_F(VirtualSystemTest, ActionsRunWhenTheirTimeComesAndAFailingOneIsDropped)
{
    auto actions = GameSystem("Actions.lua");
    Run(R"(
        order = ""
        Actions.After(0.5, function() order = order .. "late;" end)
        Actions.After(0.1, function() order = order .. "soon;" end)
        Actions.After(0.1, function() error("action failed on purpose") end)
    )");
    StdoutCapture output;
    actions->Update(0.2f);
    EXPECT_EQ(String("order"), "soon;");
    actions->Update(0.4f);
    EXPECT_EQ(String("order"), "soon;late;");
    Run("left = Actions.Count()");
    EXPECT_DOUBLE_EQ(Number("left"), 0.0);
    EXPECT_NE(output.Text().find("action failed on purpose"), std::string::npos);
}

TEST_F(VirtualSystemTest, AnimationsEaseAFieldToItsValueAndCallDone)
{
    auto animations = GameSystem("Animations.lua");
    Run(R"(
        light = {Intensity = 0}
        Animations.To(light, "Intensity", 10, 1.0, function() finished = true end)
    )");
    animations->Update(0.5f);
    Run("half = light.Intensity");
    EXPECT_NEAR(Number("half"), 5.0, 1e-4);
    animations->Update(0.6f);
    Run("full = light.Intensity; running = Animations.Count()");
    EXPECT_DOUBLE_EQ(Number("full"), 10.0);
    EXPECT_DOUBLE_EQ(Number("running"), 0.0);
    lua_getglobal(L(), "finished");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
}

TEST_F(VirtualSystemTest, MassiveUpdateCallsEveryAddedFunctionUntilItIsRemoved)
{
    auto massive = GameSystem("MassiveUpdate.lua");
    Run(R"(
        sum = 0
        first = MassiveUpdate.Add(function(dt) sum = sum + dt end)
        MassiveUpdate.Add(function(dt) sum = sum + 10 * dt end)
    )");
    massive->Update(1.0f);
    Run("MassiveUpdate.Remove(first)");
    massive->Update(1.0f);
    EXPECT_DOUBLE_EQ(Number("sum"), 21.0);
}
