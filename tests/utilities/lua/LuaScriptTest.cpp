// Scripts with private environments: running, cached functions, variables set
// from native code, hot reload of one file shared by two scripts.
#include "utilities/lua/LuaScript.h"

#include "utilities/lua/LuaTestSupport.h"
#include "utilities/lua/ScriptFile.h"

#include <string>
#include <vector>

namespace
{
class LuaScriptTest : public LuaTest
{
protected:
    // Calls the cached function `name` of `script`; false if it is not cached.
    bool Call(LuaScript& script, const char* name)
    {
        const int ref = script.FindFunction(name);
        if (ref == -1)
            return false;
        m_Lua.CallRef(ref);
        return true;
    }
};
}

TEST_F(LuaScriptTest, ConstructionLoadsTheFileWithoutRunningIt)
{
    const std::string path = m_Temp.Write("s.lua", "ran = true");
    LuaScript script(path, {}, &m_Lua);
    EXPECT_EQ(m_Lua.GetScript(script.m_Index).path, path);
    EXPECT_TRUE(m_Lua.GetScript(script.m_Index).HasListener(&script));
    lua_getglobal(L(), "ran");
    EXPECT_TRUE(lua_isnil(L(), -1));
    lua_settop(L(), 0);
}

TEST_F(LuaScriptTest, TopLevelGlobalsLandInThePrivateEnvironmentAndReadsFallThroughToG)
{
    Run("shared = 5");
    const std::string path = m_Temp.Write("s.lua", "own = shared * 2 function Get() return own end");
    LuaScript script(path, {}, &m_Lua);
    script.Run();
    lua_getglobal(L(), "own");
    EXPECT_TRUE(lua_isnil(L(), -1));
    lua_settop(L(), 0);
    const int get = script.CacheFunction("Get");
    ASSERT_NE(get, -1);
    lua_rawgeti(L(), LUA_REGISTRYINDEX, get);
    lua_call(L(), 0, 1);
    EXPECT_EQ(lua_tonumber(L(), -1), 10);
    lua_settop(L(), 0);
}

TEST_F(LuaScriptTest, EnvironmentSetupAddsFieldsBeforeTheChunkRuns)
{
    const std::string path = m_Temp.Write("s.lua", "function Get() return this end");
    LuaScript script(path,
                     [](lua_State* L) {
                         lua_pushnumber(L, 99);
                         lua_setfield(L, -2, "this");
                         lua_pushstring(L, "left over");
                     },
                     &m_Lua);
    script.Run();
    lua_rawgeti(L(), LUA_REGISTRYINDEX, script.CacheFunction("Get"));
    lua_call(L(), 0, 1);
    EXPECT_EQ(lua_tonumber(L(), -1), 99);
    lua_settop(L(), 0);
}

TEST_F(LuaScriptTest, TwoScriptsOnOneFileShareTheFileAndHaveTheirOwnGlobals)
{
    const std::string path = m_Temp.Write("s.lua", "value = base + 1 function Get() return value end");
    auto withBase = [](double base) {
        return [base](lua_State* L) {
            lua_pushnumber(L, base);
            lua_setfield(L, -2, "base");
        };
    };
    LuaScript first(path, withBase(10), &m_Lua);
    LuaScript second(path, withBase(20), &m_Lua);
    EXPECT_EQ(first.m_Index, second.m_Index);
    EXPECT_EQ(m_Lua.m_Scripts.size(), 1u);
    first.Run();
    first.CacheFunction("Get");
    second.Run();
    second.CacheFunction("Get");
    lua_rawgeti(L(), LUA_REGISTRYINDEX, first.FindFunction("Get"));
    lua_call(L(), 0, 1);
    EXPECT_EQ(lua_tonumber(L(), -1), 11);
    lua_rawgeti(L(), LUA_REGISTRYINDEX, second.FindFunction("Get"));
    lua_call(L(), 0, 1);
    EXPECT_EQ(lua_tonumber(L(), -1), 21);
    lua_settop(L(), 0);
}

TEST_F(LuaScriptTest, ErrorWhileRunningIsPrintedAndTheStackIsLeftAsItWas)
{
    const std::string path = m_Temp.Write("s.lua", "local x = nil + 1");
    LuaScript script(path, {}, &m_Lua);
    StdoutCapture capture;
    script.Run();
    EXPECT_EQ(capture.Text().rfind("Lua Error: ", 0), 0u) << capture.Text();
    EXPECT_NE(capture.Text().find("s.lua:1: attempt to perform arithmetic"), std::string::npos) << capture.Text();
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(LuaScriptTest, CacheFunctionOfANameThatIsNilGivesMinusOne)
{
    LuaScript script(m_Temp.Write("s.lua", "function Here() end"), {}, &m_Lua);
    script.Run();
    EXPECT_EQ(script.CacheFunction("Missing"), -1);
    EXPECT_EQ(script.FindFunction("Missing"), -1);
    EXPECT_NE(script.CacheFunction("Here"), -1);
    EXPECT_EQ(script.FindFunction("Never cached"), -1);
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(LuaScriptTest, CachingANameAgainReplacesItsReference)
{
    LuaScript script(m_Temp.Write("s.lua", "function F() return 1 end"), {}, &m_Lua);
    script.Run();
    script.CacheFunction("F");
    Run("");
    const int again = script.CacheFunction("F");
    ASSERT_EQ(script.m_Functions.size(), 1u);
    EXPECT_EQ(script.FindFunction("F"), again);
}

TEST_F(LuaScriptTest, VariableSetFromNativeCodeIsTheValueAtStackIndexThree)
{
    LuaScript script(m_Temp.Write("s.lua", ""), {}, &m_Lua);
    // As a binding's __newindex sees it: the object, the key, the value.
    lua_pushnil(L());
    lua_pushstring(L(), "Speed");
    lua_pushnumber(L(), 12);
    EXPECT_TRUE(script.SetVariable(L(), "Speed"));
    lua_settop(L(), 0);
    ASSERT_TRUE(script.GetVariable(L(), "Speed"));
    EXPECT_EQ(lua_tonumber(L(), -1), 12);
    lua_settop(L(), 0);

    lua_pushnil(L());
    lua_pushstring(L(), "Speed");
    lua_pushnumber(L(), 13);
    script.SetVariable(L(), "Speed");
    lua_settop(L(), 0);
    EXPECT_EQ(script.m_Variables.size(), 1u);
    script.GetVariable(L(), "Speed");
    EXPECT_EQ(lua_tonumber(L(), -1), 13);
    lua_settop(L(), 0);
    EXPECT_FALSE(script.GetVariable(L(), "Unknown"));
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(LuaScriptTest, VariableMovesFromAThreadOfTheMainState)
{
    LuaScript script(m_Temp.Write("s.lua", ""), {}, &m_Lua);
    lua_State* thread = lua_newthread(L());
    lua_pushnil(thread);
    lua_pushstring(thread, "Name");
    lua_pushstring(thread, "Ember");
    EXPECT_TRUE(script.SetVariable(thread, "Name"));
    EXPECT_EQ(lua_gettop(thread), 3);
    ASSERT_TRUE(script.GetVariable(thread, "Name"));
    EXPECT_STREQ(lua_tostring(thread, -1), "Ember");
    lua_settop(L(), 0);
}

TEST_F(LuaScriptTest, VariableFromAnotherLuaUniverseOrWithoutAValueIsRefused)
{
    LuaScript script(m_Temp.Write("s.lua", ""), {}, &m_Lua);
    lua_State* other = luaL_newstate();
    lua_pushnil(other);
    lua_pushnil(other);
    lua_pushnumber(other, 1);
    EXPECT_FALSE(script.SetVariable(other, "x"));
    EXPECT_FALSE(script.GetVariable(other, "x"));
    lua_close(other);
    lua_pushnil(L());
    EXPECT_FALSE(script.SetVariable(L(), "x"));
    lua_settop(L(), 0);
    EXPECT_TRUE(script.m_Variables.empty());
}

TEST_F(LuaScriptTest, ReloadRunsTheChunkForgetsTheVariablesAndCallsTheReloadCallback)
{
    LuaScript script(m_Temp.Write("s.lua", "runs = (runs or 0) + 1"), {}, &m_Lua);
    Run("runs = 0");
    int reloads = 0;
    script.m_OnReload = [&reloads] { ++reloads; };
    lua_pushnil(L());
    lua_pushnil(L());
    lua_pushnumber(L(), 1);
    script.SetVariable(L(), "x");
    lua_settop(L(), 0);
    m_Lua.GetScript(script.m_Index).Compile();
    EXPECT_EQ(reloads, 1);
    EXPECT_TRUE(script.m_Variables.empty());
    // The run read `runs` from _G (0) and wrote 1 into its own environment.
    EXPECT_EQ(Number("runs"), 0);
}

TEST_F(LuaScriptTest, TwoScriptsOnOnePathAreReRunInTheOrderOfTheirRegistration)
{
    const std::string path = m_Temp.Write("s.lua", "table.insert(order, name)");
    Run("order = {}");
    auto named = [](const char* name) {
        return [name](lua_State* L) {
            lua_pushstring(L, name);
            lua_setfield(L, -2, "name");
        };
    };
    LuaScript second(path, named("second"), &m_Lua);
    LuaScript first(path, named("first"), &m_Lua);
    m_Lua.GetScript(first.m_Index).Compile();
    Run("result = table.concat(order, ',')");
    EXPECT_EQ(String("result"), "second,first");
}

TEST_F(LuaScriptTest, HotReloadCallsTheNewFunctionInBothScriptsOnTheFile)
{
    const std::string path = m_Temp.Write("Hot.lua", "function Value() return 'old' end");
    auto make = [&](LuaScript& script) {
        script.m_OnReload = [&script] { script.CacheFunction("Value"); };
        script.Run();
        script.CacheFunction("Value");
    };
    LuaScript first(path, {}, &m_Lua);
    LuaScript second(path, {}, &m_Lua);
    make(first);
    make(second);
    FileWatcher::Get().Update(0.0f);
    Run("seen = {}");
    auto result = [&](LuaScript& script) {
        lua_rawgeti(L(), LUA_REGISTRYINDEX, script.FindFunction("Value"));
        lua_call(L(), 0, 1);
        const std::string value = lua_tostring(L(), -1);
        lua_settop(L(), 0);
        return value;
    };
    EXPECT_EQ(result(first), "old");
    EXPECT_EQ(result(second), "old");

    m_Temp.Write("Hot.lua", "function Value() return 'new' end");
    TouchLater(path, 2);
    PollAndUpdateWatcher();
    EXPECT_EQ(result(first), "new");
    EXPECT_EQ(result(second), "new");

    // A rewrite with a syntax error is reported and both keep the function they had.
    m_Temp.Write("Hot.lua", "function Value() return 'broken' end end");
    TouchLater(path, 4);
    StdoutCapture capture;
    PollAndUpdateWatcher();
    const std::string text = capture.Text();
    EXPECT_EQ(text.rfind("Lua Error: ", 0), 0u) << text;
    EXPECT_NE(text.find("Hot.lua:1:"), std::string::npos) << text;
    EXPECT_EQ(result(first), "new");
    EXPECT_EQ(result(second), "new");
}

TEST_F(LuaScriptTest, DestroyedScriptStopsListeningToItsFile)
{
    m_Lua.LoadScript(m_Temp.Write("first.lua", ""));
    const std::string path = m_Temp.Write("s.lua", "");
    int index = -1;
    {
        LuaScript script(path, {}, &m_Lua);
        index = script.m_Index;
        script.Run();
        script.CacheFunction("Nothing");
    }
    ASSERT_GT(index, 0);
    EXPECT_TRUE(m_Lua.GetScript(index).listeners.empty());
    m_Lua.GetScript(index).Compile();
}

TEST_F(LuaScriptTest, DestroyedScriptAtIndexZeroKeepsAListenerThatNoLongerReachesIt)
{
    const std::string path = m_Temp.Write("Global.lua", "");
    {
        LuaScript script(path, {}, &m_Lua);
        script.m_OnReload = [] { ADD_FAILURE() << "a destroyed script was reloaded"; };
        ASSERT_EQ(script.m_Index, 0);
    }
    ScriptFile& file = m_Lua.GetScript(0);
    EXPECT_EQ(file.listeners.size(), 1u);
    file.Compile();
}
