#include "LanesState.h"

#include "utilities/lua/lanes/Universe.h"

#include <gtest/gtest.h>

using LanesTest::LanesState;

namespace
{
int LoaderOfAMissingFile(lua_State* L)
{
    if (luaL_loadfile(L, VORN_DATA_DIR "/LuaScripts/Globals/no-such-lanes.lua") == 0)
        lua_pcall(L, 0, LUA_MULTRET, 0);
    return 0;
}
}

TEST(LanesEmbedding, InstallingLeavesTheCoreTableAsTheOneValueOnTheStack)
{
    lua_State* L = luaL_newstate();
    luaL_openlibs(L);
    EXPECT_EQ(get_universe(L), nullptr);
    lua_pushliteral(L, "below");
    EXPECT_EQ(luaopen_lanes_embedded(L, LanesTest::LoadLanesFromRepository), 1);
    ASSERT_EQ(lua_gettop(L), 2);
    ASSERT_TRUE(lua_istable(L, -1));
    lua_getfield(L, -1, "lane_new");
    EXPECT_TRUE(lua_iscfunction(L, -1));
    lua_pop(L, 2);
    EXPECT_STREQ(lua_tostring(L, 1), "below");
    EXPECT_EQ(get_universe(L), &Universe::Process());
    lua_close(L);
}

TEST(LanesEmbedding, RequireGivesTheModuleAndConfigureGivesItReady)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local module = require("lanes")
        local before = module.gen
        local lanes = module.configure()
        local again = require("lanes").configure()
        return before == nil, lanes == module, again == lanes, type(lanes.gen), type(lanes.linda),
            lanes.cancel_error == require("lanes.core").cancel_error
    )"),
              "");
    ASSERT_EQ(state.Count(), 6);
    EXPECT_TRUE(state.Boolean(1));
    EXPECT_TRUE(state.Boolean(2));
    EXPECT_TRUE(state.Boolean(3));
    EXPECT_EQ(state.String(4), "function");
    EXPECT_EQ(state.String(5), "function");
    EXPECT_TRUE(state.Boolean(6));
}

TEST(LanesEmbedding, UnknownSettingIsAClearError)
{
    LanesState state;
    std::string error = state.Run(R"(require("lanes").configure({with_timers = true}))");
    EXPECT_NE(error.find("lanes.configure: unknown setting 'with_timers'"), std::string::npos) << error;
}

TEST(LanesEmbedding, LoaderThatFindsNoFileGivesAClearErrorAndTheStateLives)
{
    lua_State* L = luaL_newstate();
    luaL_openlibs(L);
    luaopen_lanes_embedded(L, LoaderOfAMissingFile);
    lua_pop(L, 1);
    ASSERT_NE(luaL_dostring(L, "return require('lanes')"), 0);
    std::string error = lua_tostring(L, -1);
    EXPECT_NE(error.find("lanes: the Lua half of the module (lanes.lua) could not be loaded: cannot open"),
              std::string::npos)
        << error;
    lua_pop(L, 1);
    ASSERT_EQ(luaL_dostring(L, "return 1 + 1"), 0);
    EXPECT_EQ(lua_tonumber(L, -1), 2.0);
    lua_close(L);
}

TEST(LanesEmbedding, StateWithoutThePackageLibraryStillGetsTheCore)
{
    lua_State* L = luaL_newstate();
    lua_pushcfunction(L, luaopen_base);
    lua_call(L, 0, 0);
    EXPECT_EQ(luaopen_lanes_embedded(L, LanesTest::LoadLanesFromRepository), 1);
    EXPECT_TRUE(lua_istable(L, -1));
    lua_close(L);
}
