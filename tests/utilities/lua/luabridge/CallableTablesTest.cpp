#include "utilities/lua/luabridge/LuaTestState.h"

#include "utilities/lua/luabridge/LuaBinding.h"

using CallableTablesTest = LuaTestState;

namespace
{
// Accepts one argument at most (after the table) and makes a string from it.
int MakeGreeting(lua_State* L)
{
    if (lua_gettop(L) > 2)
        return -1;
    lua_pushfstring(L, "made %s", lua_isstring(L, 2) ? lua_tostring(L, 2) : "plain");
    return 1;
}
}

TEST_F(CallableTablesTest, ScriptConstructedNamesBecomeCallableTables)
{
    ASSERT_EQ(Run("ScriptMadeThing = {}"), "");
    luabridge::LuaBinding& binding = luabridge::LuaBinding::Get();
    binding.AddScriptConstructed("ScriptMadeThing", &MakeGreeting);
    binding.BindAll(L);
    EXPECT_EQ(Text("ScriptMadeThing('hello')"), "made hello");
    EXPECT_EQ(Text("ScriptMadeThing()"), "made plain");
    EXPECT_DOUBLE_EQ(Number("select('#', ScriptMadeThing(1, 2))"), 0.0);
    binding.m_ScriptConstructed.erase("ScriptMadeThing");
}

TEST_F(CallableTablesTest, BindingAStateTwiceKeepsOneConstructorListPerClass)
{
    luabridge::LuaBinding::Get().BindAll(L);
    EXPECT_DOUBLE_EQ(Number("Vector3D(1, 2, 3).z"), 3.0);
    EXPECT_DOUBLE_EQ(Number("Vector3D().z"), 0.0);
}
