#include "LanesState.h"

#include <gtest/gtest.h>

using LanesTest::LanesState;

TEST(LanesInterMove, NestedTablesWithACycleAndASharedSubtableCrossIntoALane)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local t = {1, 2, "three", flag = true, nested = {deep = {value = 4.5}}, [true] = "yes", [7.25] = "x"}
        t.self = t
        local shared = {name = "shared"}
        t.a, t.b = shared, shared
        setmetatable(t.nested, {__index = function() return "meta" end})
        return lanes.gen("*", function(v)
            return v.self == v, v.a == v.b, v.a.name, v.nested.deep.value, v[3], v.flag, #v, v[true], v[7.25],
                v.nested.missing
        end)(t):join()
    )"),
              "");
    ASSERT_EQ(state.Count(), 10);
    EXPECT_TRUE(state.Boolean(1)) << "the cycle is kept";
    EXPECT_TRUE(state.Boolean(2)) << "the shared subtable stays one table";
    EXPECT_EQ(state.String(3), "shared");
    EXPECT_EQ(state.Number(4), 4.5);
    EXPECT_EQ(state.String(5), "three");
    EXPECT_TRUE(state.Boolean(6));
    EXPECT_EQ(state.Number(7), 3.0);
    EXPECT_EQ(state.String(8), "yes");
    EXPECT_EQ(state.String(9), "x");
    EXPECT_EQ(state.String(10), "meta") << "the metatable crosses with its table";
}

TEST(LanesInterMove, FunctionsWithUpvaluesCrossIntoALane)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local offset = 10
        local function add(x) return x + offset end
        local function factorial(n) if n <= 1 then return 1 end return n * factorial(n - 1) end
        local format = string.format
        local config = {scale = 2}
        local function scaled(x) return x * config.scale end
        return lanes.gen("base,string", function(f, g)
            return f(5), factorial(5), format("%03d", 7), g(21), config.scale
        end)(add, scaled):join()
    )"),
              "");
    ASSERT_EQ(state.Count(), 5);
    EXPECT_EQ(state.Number(1), 15.0);
    EXPECT_EQ(state.Number(2), 120.0);
    EXPECT_EQ(state.String(3), "007");
    EXPECT_EQ(state.Number(4), 42.0);
    EXPECT_EQ(state.Number(5), 2.0);
}

TEST(LanesInterMove, LindaCrossesAsArgumentAndAsUpvalueAndStaysOneObject)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda("mailbox")
        local same = lanes.gen("base", function(l)
            l:send("k", "from argument")
            linda:send("k", "from upvalue")
            return l == linda, tostring(l)
        end)(linda):join()
        local _, first = linda:receive(30, "k")
        local _, second = linda:receive(30, "k")
        linda:send("self", linda)
        local _, back = linda:receive(0, "self")
        return same, first, second, back == linda, tostring(linda)
    )"),
              "");
    ASSERT_EQ(state.Count(), 5);
    EXPECT_TRUE(state.Boolean(1)) << "argument and upvalue are one userdata in the lane";
    EXPECT_EQ(state.String(2), "from argument");
    EXPECT_EQ(state.String(3), "from upvalue");
    EXPECT_TRUE(state.Boolean(4)) << "a linda sent through itself comes back as itself";
    EXPECT_EQ(state.String(5), "Linda: mailbox");
}

TEST(LanesInterMove, UserdataIsRefusedWithAMessageThatNamesItAndWhereItWas)
{
    LanesState state;
    std::string error = state.Run(R"(
        local lanes = require("lanes").configure()
        lanes.gen("*", function(config) end)({output = {file = io.stdout}})
    )");
    EXPECT_NE(error.find("lanes.gen: the lane's arguments: cannot copy a userdata into another Lua state"),
              std::string::npos)
        << error;
    EXPECT_NE(error.find("value 1.output.file"), std::string::npos) << error;

    error = state.Run(R"(
        local lanes = require("lanes").configure()
        local out = io.stdout
        lanes.gen("*", function() return out end)()
    )");
    EXPECT_NE(error.find("lanes.gen: the lane's function: cannot copy a userdata"), std::string::npos) << error;
    EXPECT_NE(error.find("/upvalue:out"), std::string::npos) << error;

    error = state.Run(R"(
        local lanes = require("lanes").configure()
        lanes.linda():send("k", coroutine.create(function() end))
    )");
    EXPECT_NE(error.find("linda:send: cannot copy a coroutine"), std::string::npos) << error;
}

TEST(LanesInterMove, StandardFunctionNeedsItsLibraryOpenInTheLane)
{
    LanesState state;
    std::string error = state.Run(R"(
        local lanes = require("lanes").configure()
        local upper = string.upper
        lanes.gen("base", function() return upper("x") end)()
    )");
    EXPECT_NE(error.find("the function string.upper, whose library is not open"), std::string::npos) << error;
}

namespace
{
int NotStandard(lua_State*)
{
    return 0;
}

// Two raw states with nothing of the module in them: luaG_inter_move needs none of it.
struct TwoStates
{
    TwoStates()
    {
        from = luaL_newstate();
        to = luaL_newstate();
        luaL_openlibs(from);
        luaL_openlibs(to);
    }
    ~TwoStates()
    {
        lua_close(from);
        lua_close(to);
    }
    lua_State* from;
    lua_State* to;
};
}

TEST(LanesInterMove, MovesValuesBetweenTwoStatesAndPopsThem)
{
    TwoStates states;
    lua_pushnumber(states.from, 1.5);
    luaL_dostring(states.from, "local t = {n = 'x'} t.me = t return t");
    lua_pushliteral(states.from, "text");
    std::string error;
    ASSERT_EQ(luaG_inter_move(nullptr, states.from, states.to, 3, &error), 0) << error;
    EXPECT_EQ(lua_gettop(states.from), 0);
    ASSERT_EQ(lua_gettop(states.to), 3);
    EXPECT_EQ(lua_tonumber(states.to, 1), 1.5);
    lua_getfield(states.to, 2, "me");
    EXPECT_TRUE(lua_rawequal(states.to, -1, 2));
    lua_getfield(states.to, 2, "n");
    EXPECT_STREQ(lua_tostring(states.to, -1), "x");
    EXPECT_STREQ(lua_tostring(states.to, 3), "text");
}

TEST(LanesInterMove, RefusalLeavesBothStacksAsTheyWere)
{
    TwoStates states;
    lua_pushliteral(states.to, "kept");
    lua_pushnumber(states.from, 1);
    lua_newtable(states.from);
    lua_newuserdata(states.from, 16);
    lua_setfield(states.from, -2, "blob");
    std::string error;
    EXPECT_EQ(luaG_inter_move(nullptr, states.from, states.to, 2, &error), -1);
    EXPECT_EQ(error, "cannot copy a userdata into another Lua state (found at value 2.blob)");
    EXPECT_EQ(lua_gettop(states.from), 2);
    EXPECT_EQ(lua_gettop(states.to), 1);
    EXPECT_STREQ(lua_tostring(states.to, 1), "kept");

    lua_settop(states.from, 0);
    lua_pushcfunction(states.from, NotStandard);
    EXPECT_EQ(luaG_inter_move(nullptr, states.from, states.to, 1, &error), -1);
    EXPECT_NE(error.find("a C function that is not part of a standard library"), std::string::npos) << error;
    EXPECT_EQ(luaG_inter_move(nullptr, states.from, states.to, 5, &error), -1);
    EXPECT_EQ(lua_gettop(states.from), 1);
}

TEST(LanesInterMove, DeeplyNestedTableIsRefusedNotOverflowed)
{
    TwoStates states;
    luaL_dostring(states.from, "local t = {} local top = t for i = 1, 1000 do t.next = {} t = t.next end return top");
    std::string error;
    EXPECT_EQ(luaG_inter_move(nullptr, states.from, states.to, 1, &error), -1);
    EXPECT_NE(error.find("nested more than 200 levels deep"), std::string::npos) << error;
}

TEST(LanesInterMove, CoroutineOfTheSameStateGetsTheValuesThemselves)
{
    TwoStates states;
    lua_State* thread = lua_newthread(states.from);
    lua_newtable(states.from);
    const void* table = lua_topointer(states.from, -1);
    ASSERT_EQ(luaG_inter_move(nullptr, states.from, thread, 1, nullptr), 0);
    EXPECT_EQ(lua_topointer(thread, -1), table);
}
