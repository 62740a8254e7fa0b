#include "utilities/lua/LuaTestSupport.h"

#include "engine/Manager.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/Stack.h"

namespace
{
// A Lua system with every registered class bound; scripts see the manager and the level space.
class ManagerScriptEventsTest : public LuaTest
{
protected:
    void SetUp() override
    {
        luabridge::LuaBinding::Get().BindAll(L());
        luabridge::Stack<Engine::Manager*>::Push(L(), &Engine::Manager::Get());
        lua_setglobal(L(), "manager");
        luabridge::Stack<Engine::Space*>::Push(L(), Engine::SpaceManager::Get().GetSpace(Engine::Level));
        lua_setglobal(L(), "level");
    }
    // The global tables outlive this test's Lua system: take its binds off them.
    void TearDown() override
    {
        for (const char* name : {"globalHandler", "levelHandler"})
        {
            lua_getglobal(L(), name);
            const void* listener = lua_topointer(L(), -1);
            lua_pop(L(), 1);
            Engine::Manager::Get().m_Events.UnregisterAll(listener);
            Engine::SpaceManager::Get().GetSpace(Engine::Level)->m_Events.UnregisterAll(listener);
        }
    }
};
}

TEST_F(ManagerScriptEventsTest, ScriptBroadcastReachesTheGlobalTableAndTheSpaces)
{
    Run(R"(
        globalHandler = {}
        function globalHandler:On(e) globalValue = e.Value end
        levelHandler = {}
        function levelHandler:On(e) levelValue = e.Value end
        manager:RegisterEvent(globalHandler, "Signal", "On")
        level:RegisterEvent(levelHandler, "Signal", "On")
        local e = ScriptEvent()
        e.Value = 3
        manager:BroadcastEvent("Signal", e)
    )");
    EXPECT_DOUBLE_EQ(Number("globalValue"), 3.0);
    EXPECT_DOUBLE_EQ(Number("levelValue"), 3.0);
}
