#include "utilities/lua/LuaTestSupport.h"

#include "engine/EventManager.h"
#include "engine/GenericEvents.h"
#include "utilities/lua/EventBindLuaObject.h"
#include "utilities/lua/ScriptEvent.h"
#include "utilities/lua/luabridge/LuaBinding.h"

#include <thread>

namespace
{
// A Lua system with every registered class bound, and a table of its own.
class EventBindLuaObjectTest : public LuaTest
{
protected:
    void SetUp() override { luabridge::LuaBinding::Get().BindAll(L()); }
    // Registers the global table `object`'s function `function` for `name` on m_Table.
    void Register(const char* object, const char* name, const char* function)
    {
        lua_getglobal(L(), object);
        RegisterLuaEvent(m_Table, L(), lua_gettop(L()), name, function);
        lua_pop(L(), 1);
    }

public:
    Engine::EventManager m_Table;
};
}

TEST_F(EventBindLuaObjectTest, HandlerGetsItsObjectAndTheEventAsItsOwnClass)
{
    Run("handler = { hits = 0 } function handler:OnUpdate(e) self.hits = self.hits + 1; dt = e.Dt; "
        "kind = getmetatable(e).__type end");
    Register("handler", "LogicUpdate", "OnUpdate");
    GenericEvent::LogicUpdate update(0.25f, 1.0f);
    m_Table.Dispatch("LogicUpdate", &update);
    Run("hits = handler.hits");
    EXPECT_DOUBLE_EQ(Number("hits"), 1.0);
    EXPECT_DOUBLE_EQ(Number("dt"), 0.25);
    EXPECT_EQ(String("kind"), "LogicUpdate");
}

TEST_F(EventBindLuaObjectTest, HandlerThatRaisesIsReportedAndTheNextStillRuns)
{
    Run("bad = {} function bad:On(e) error('broken handler') end "
        "good = {} function good:On(e) reached = true end");
    Register("bad", "Hit", "On");
    Register("good", "Hit", "On");
    ScriptEvent event("Hit");
    StdoutCapture output;
    m_Table.Dispatch("Hit", &event);
    EXPECT_NE(output.Text().find("Lua Error: "), std::string::npos);
    EXPECT_NE(output.Text().find("broken handler"), std::string::npos);
    lua_getglobal(L(), "reached");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(EventBindLuaObjectTest, MissingHandlerFunctionDoesNothing)
{
    Run("empty = {}");
    Register("empty", "Hit", "Nowhere");
    ScriptEvent event("Hit");
    StdoutCapture output;
    m_Table.Dispatch("Hit", &event);
    EXPECT_EQ(output.Text(), "");
}

TEST_F(EventBindLuaObjectTest, QueuedEventArrivesOnTheNextUpdateAndNotBefore)
{
    Run("later = { count = 0 } function later:On(e) self.count = self.count + 1; value = e.Value end");
    lua_getglobal(L(), "later");
    EventBindLuaObject bind(L(), lua_gettop(L()), "On");
    lua_pop(L(), 1);
    ScriptEvent event("Later");
    Run("function setValue(e) e.Value = 7 end");
    lua_getglobal(L(), "setValue");
    luabridge::Stack<ScriptEvent*>::Push(L(), &event);
    ASSERT_EQ(lua_pcall(L(), 1, 0, 0), 0);

    std::thread poster([&] { bind.Queue(&event); });
    poster.join();
    Run("count = later.count");
    EXPECT_DOUBLE_EQ(Number("count"), 0.0);
    m_Lua.Update(0.016f);
    Run("count = later.count");
    EXPECT_DOUBLE_EQ(Number("count"), 1.0);
    EXPECT_DOUBLE_EQ(Number("value"), 7.0);
    m_Lua.Update(0.016f);
    Run("count = later.count");
    EXPECT_DOUBLE_EQ(Number("count"), 1.0);
}

TEST_F(EventBindLuaObjectTest, HandlerRemovingItsOwnBindIsSafe)
{
    Run("once = { count = 0 } function once:On(e) self.count = self.count + 1; unregister() end");
    lua_pushlightuserdata(L(), this);
    lua_pushcclosure(L(), [](lua_State* state) {
        auto* test = static_cast<EventBindLuaObjectTest*>(lua_touserdata(state, lua_upvalueindex(1)));
        lua_getglobal(state, "once");
        test->m_Table.UnregisterAll(lua_topointer(state, -1));
        lua_pop(state, 1);
        return 0;
    }, 1);
    lua_setglobal(L(), "unregister");
    Register("once", "Hit", "On");
    ScriptEvent event("Hit");
    m_Table.Dispatch("Hit", &event);
    m_Table.Dispatch("Hit", &event);
    Run("count = once.count");
    EXPECT_DOUBLE_EQ(Number("count"), 1.0);
}
