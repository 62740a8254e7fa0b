#include "utilities/lua/luabridge/LuaTestState.h"

#include "utilities/lua/luabridge/BindingTestClasses.h"
#include "utilities/lua/luabridge/detail/Keys.h"

using DynamicPropertiesTest = LuaTestState;

TEST_F(DynamicPropertiesTest, DynamicKeyIsConsultedBeforeTheGetterTableAndOnTheWayUp)
{
    BindingDynamic dynamic;
    dynamic.m_Values["Hidden"] = 50.0;
    BindingDynamicChild child;
    child.m_Values["Inherited"] = 70.0;
    SetGlobal("dynamic", &dynamic);
    SetGlobal("child", &child);
    ASSERT_EQ(RunFile("dynamic_properties.lua"), "");
    EXPECT_DOUBLE_EQ(FieldNumber("extra"), 3.0);
    EXPECT_DOUBLE_EQ(dynamic.m_Values["Extra"], 3.0);
    // The dynamic "Hidden" hides the member of that name; the member keeps its value.
    EXPECT_DOUBLE_EQ(FieldNumber("hidden"), 50.0);
    EXPECT_FLOAT_EQ(dynamic.m_Hidden, 5.0f);
    // A member setter comes before the dynamic hook on writes.
    EXPECT_DOUBLE_EQ(FieldNumber("plain"), 16.0);
    EXPECT_FLOAT_EQ(dynamic.m_Plain, 16.0f);
    EXPECT_TRUE(FieldBool("missing"));
    // The child's reads reach the parent's hook; its writes only try its own.
    EXPECT_DOUBLE_EQ(FieldNumber("inherited"), 70.0);
    EXPECT_DOUBLE_EQ(FieldNumber("childOwn"), 7.0);
    EXPECT_TRUE(FieldBool("childWriteRaised"));
}

namespace
{
int g_DeclinedWrites = 0;

// A setter that declines every write.
int DecliningSetter(lua_State* L)
{
    ++g_DeclinedWrites;
    lua_pushboolean(L, 0);
    return 1;
}
}

TEST_F(DynamicPropertiesTest, SetterThatReturnsFalsePassesTheAssignmentToTheParentSetter)
{
    // BindingLeaf gets its own setter of "RootValue" that declines: the root's setter takes the write.
    lua_pushlightuserdata(L, const_cast<void*>(luabridge::detail::ClassKey<BindingLeaf>()));
    lua_rawget(L, LUA_REGISTRYINDEX);
    lua_pushlightuserdata(L, const_cast<void*>(luabridge::detail::PropSetKey()));
    lua_rawget(L, -2);
    lua_pushcfunction(L, &DecliningSetter);
    lua_setfield(L, -2, "RootValue");
    lua_settop(L, 0);

    BindingLeaf leaf;
    SetGlobal("leaf", &leaf);
    g_DeclinedWrites = 0;
    EXPECT_EQ(Run("leaf.RootValue = 12"), "");
    EXPECT_EQ(g_DeclinedWrites, 1);
    EXPECT_FLOAT_EQ(leaf.m_RootValue, 12.0f);
}
