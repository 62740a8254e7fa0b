#include "utilities/lua/LuaTestSupport.h"

#include "utilities/lua/ScriptEvent.h"
#include "utilities/lua/luabridge/LuaBinding.h"
#include "utilities/lua/luabridge/Stack.h"

namespace
{
// A Lua system with every registered class bound.
class ScriptEventTest : public LuaTest
{
protected:
    void SetUp() override { luabridge::LuaBinding::Get().BindAll(L()); }
};
}

TEST_F(ScriptEventTest, ScriptsMakeEventsWithAndWithoutAName)
{
    Run("plain = ScriptEvent(); named = ScriptEvent('Hit')");
    Run("plainName = plain.Name; namedName = named.Name; kind = getmetatable(named).__type");
    EXPECT_EQ(String("plainName"), "");
    EXPECT_EQ(String("namedName"), "Hit");
    EXPECT_EQ(String("kind"), "ScriptEvent");
}

TEST_F(ScriptEventTest, MoreThanOneArgumentMakesNoEvent)
{
    Run("made = ScriptEvent('A', 'B'); isNil = made == nil");
    lua_getglobal(L(), "isNil");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
}

TEST_F(ScriptEventTest, FieldsSetByScriptsReadBackAndUnsetOnesAreNil)
{
    Run("e = ScriptEvent('Hit'); e.Damage = 5; e.Who = 'orc'; damage = e.Damage; who = e.Who; "
        "missing = tostring(e.Nothing)");
    EXPECT_DOUBLE_EQ(Number("damage"), 5.0);
    EXPECT_EQ(String("who"), "orc");
    EXPECT_EQ(String("missing"), "nil");
}

TEST_F(ScriptEventTest, NativeEventSeesFieldsAndCopiesKeepTheirOwn)
{
    {
        ScriptEvent event("Native");
        luabridge::Stack<ScriptEvent*>::Push(L(), &event);
        lua_setglobal(L(), "e");
        Run("e.Count = 3; e.Name = 'Renamed'");
        EXPECT_EQ(event.GetName(), "Renamed");
        ScriptEvent copy(event);
        luabridge::Stack<ScriptEvent*>::Push(L(), &copy);
        lua_setglobal(L(), "c");
        Run("c.Count = 4; original = e.Count; copied = c.Count");
        EXPECT_DOUBLE_EQ(Number("original"), 3.0);
        EXPECT_DOUBLE_EQ(Number("copied"), 4.0);
        Run("e = nil; c = nil");
    }
}

TEST(ScriptEventLifetime, EventOutlivingItsStateReleasesNothing)
{
    ScriptEvent* event = new ScriptEvent("Late");
    {
        LuaSystem lua;
        luabridge::LuaBinding::Get().BindAll(lua.m_State);
        luabridge::Stack<ScriptEvent*>::Push(lua.m_State, event);
        lua_setglobal(lua.m_State, "e");
        ASSERT_EQ(luaL_dostring(lua.m_State, "e.Value = 1"), 0);
    }
    delete event;
}
