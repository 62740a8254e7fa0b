#include "utilities/lua/luabridge/LuaTestState.h"

#include "utilities/lua/luabridge/detail/Namespace.h"

#include <stdexcept>
#include <string>

using BindingErrorsTest = LuaTestState;

namespace
{
// True if `text` ends with `end` (errors raised in a metamethod carry the script's position first).
bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}
}

TEST_F(BindingErrorsTest, RefusedWritesRaiseTheirErrorTexts)
{
    ASSERT_EQ(RunFile("read_only_errors.lua"), "");
    EXPECT_EQ(FieldText("readOnlyProperty"), "'Answer' is read-only");
    EXPECT_TRUE(EndsWith(FieldText("unknownMember"), "no member named 'Nope'")) << FieldText("unknownMember");
    EXPECT_TRUE(EndsWith(FieldText("unknownStatic"), "no writable variable 'Nope'")) << FieldText("unknownStatic");
    EXPECT_EQ(FieldText("readOnlyStatic"), "'Limit' is read-only");
    EXPECT_TRUE(EndsWith(FieldText("nilReference"), "nil passed to reference")) << FieldText("nilReference");
    EXPECT_EQ(FieldText("wrongType"), "'Health' can't take a value of type string");
}

TEST_F(BindingErrorsTest, PropertiesAndStaticPropertiesReadAndWrite)
{
    ASSERT_EQ(RunFile("read_only_errors.lua"), "");
    EXPECT_DOUBLE_EQ(FieldNumber("answer"), 42.0);
    EXPECT_DOUBLE_EQ(FieldNumber("health"), 3.0);
    EXPECT_DOUBLE_EQ(FieldNumber("counter"), 12.0);
    EXPECT_DOUBLE_EQ(FieldNumber("limit"), 99.0);
    EXPECT_TRUE(FieldBool("unknownRead"));
    EXPECT_DOUBLE_EQ(FieldNumber("lengthOfValue"), 5.0);
}

TEST_F(BindingErrorsTest, NonFunctionInAMetatableSlotThrowsNotACfunction)
{
    ASSERT_EQ(Run("v = Vector3D(1, 2, 3)"), "");
    lua_getglobal(L, "v");
    std::string what;
    try
    {
        lua_getfield(L, -1, "__type");
    }
    catch (const std::exception& error)
    {
        what = error.what();
    }
    EXPECT_EQ(what, "not a cfunction");
    lua_settop(L, 0);
    // Under pcall the script sees an error and goes on.
    EXPECT_NE(Run("local t = v.__type"), "");
    EXPECT_DOUBLE_EQ(Number("v.x"), 1.0);
}

TEST_F(BindingErrorsTest, ScopeThatPopsMoreThanTheStackHoldsThrowsInvalidStack)
{
    lua_settop(L, 0);
    std::string what;
    try
    {
        luabridge::detail::Namespace scope(L);
        scope.Enter("Nested");
        lua_settop(L, 1);
    }
    catch (const std::exception& error)
    {
        what = error.what();
    }
    EXPECT_EQ(what, "invalid stack");
    lua_settop(L, 0);
    {
        luabridge::detail::Namespace scope(L);
        scope.Enter("Nested");
        EXPECT_EQ(scope.Count(), 2);
    }
    EXPECT_EQ(lua_gettop(L), 0);
    EXPECT_EQ(Text("type(Nested)"), "table");
}

TEST_F(BindingErrorsTest, ReadOfAnUnknownMemberIsNil)
{
    EXPECT_EQ(Text("type(Vector3D(1, 2, 3).Nothing)"), "nil");
    EXPECT_EQ(Text("type(Vector3D.Nothing)"), "nil");
}

TEST_F(BindingErrorsTest, MethodCalledOnTheWrongObjectGivesNothing)
{
    EXPECT_EQ(Text("select('#', Vector3D(3, 4, 0).Length(Quaternion()))"), "number");
    EXPECT_DOUBLE_EQ(Number("select('#', Vector3D(3, 4, 0).Length(Quaternion()))"), 0.0);
    EXPECT_DOUBLE_EQ(Number("select('#', Vector3D(3, 4, 0).Length(5))"), 0.0);
    EXPECT_DOUBLE_EQ(Number("Vector3D(3, 4, 0):Length()"), 5.0);
}

TEST_F(BindingErrorsTest, MisusedMetamethodsFromScriptsNeverCrash)
{
    const char* attempts[] = {
        "local mt = getmetatable(Vector3D(1, 2, 3)) return mt.__index(5, 'x')",
        "local mt = getmetatable(Vector3D(1, 2, 3)) mt.__newindex({}, 'x', 1)",
        "local mt = getmetatable(Vector3D(1, 2, 3)) mt.__index(io.stdout, 'x')",
        "local mt = getmetatable(Vector3D(1, 2, 3)) mt.__newindex(io.stdout, 'x', 1)",
        "local v = BindingOverloads('name') local mt = getmetatable(v) mt.__gc(v) mt.__gc(v) return v.Name",
        "local mt = getmetatable(Vector3D(1, 2, 3)) for k, t in pairs(mt) do if type(t) == 'table' then "
        "for name, f in pairs(t) do if type(f) == 'function' then pcall(f, io.stdout, 1) pcall(f, 7, 1) end end end end",
        "local p = BindingLeaf().Position return p.__copy(5)",
        "local p = BindingLeaf().Position return p.assign(p, 5)",
        "return getmetatable(BindingLeaf()).__towatch(5)",
        "return Vector3D.x",
        "Vector3D.x = 1",
    };
    for (const char* attempt : attempts)
        Run(attempt);
    lua_gc(L, LUA_GCCOLLECT, 0);
    EXPECT_DOUBLE_EQ(Number("Vector3D(1, 2, 3).y"), 2.0);
}
