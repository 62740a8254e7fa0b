// The profiler's script hook: calls of Lua functions, tail calls, errors and
// coroutines all end up balanced in the profiler's table.
#include "utilities/lua/ProfilerHook.h"

#include "engine/Profiler.h"

#include <gtest/gtest.h>
#include <lua.hpp>

#include <sstream>
#include <string>
#include <vector>

namespace
{
// A plain state with the profiler on, for one test.
class ProfilerHookTest : public ::testing::Test
{
protected:
    ProfilerHookTest()
    {
        Profiler::Get().Clear();
        Profiler::Get().SetEnabled(true);
        L = luaL_newstate();
        luaL_openlibs(L);
    }
    ~ProfilerHookTest() override
    {
        lua_close(L);
        Profiler::Get().Clear();
    }

    // Runs `code` as the file "Profiled.lua", with the hook on.
    void RunProfiled(const std::string& code)
    {
        InstallProfilerHook(L);
        ASSERT_EQ(luaL_loadbuffer(L, code.data(), code.size(), "@Profiled.lua"), 0);
        ASSERT_EQ(lua_pcall(L, 0, 0, 0), 0) << lua_tostring(L, -1);
        RemoveProfilerHook(L);
    }

    // Calls counted on the report's lines that name `place` ("Lua: Profiled.lua Line: 3;").
    static unsigned long CallsAt(const std::string& place)
    {
        std::istringstream report(Profiler::Get().Report());
        unsigned long calls = 0;
        for (std::string line; std::getline(report, line);)
            if (line.rfind(place, 0) == 0)
                calls += std::stoul(line.substr(line.rfind(';') + 1));
        return calls;
    }

    lua_State* L = nullptr;
};
}

TEST_F(ProfilerHookTest, EachCallOfAScriptFunctionIsCountedUnderItsFileAndLine)
{
    RunProfiled("local function leaf(x) return x + 1 end\n"
                "local s = 0\n"
                "for i = 1, 10 do s = s + leaf(i) end\n");
    EXPECT_EQ(CallsAt("Lua: Profiled.lua Line: 1;"), 10u) << Profiler::Get().Report();
}

TEST_F(ProfilerHookTest, TailCallsErrorsAndYieldsLeaveTheProfilerBalanced)
{
    static int outerKey;
    Profiler::Get().Enter(&outerKey, "ProfilerHookTest.cpp", "Outer");
    RunProfiled("local function leaf(x) return x + 1 end\n"
                "local function tail(x) return leaf(x) end\n"
                "for i = 1, 10 do tail(i) end\n"
                "pcall(function() error('boom') end)\n"
                "local co = coroutine.create(function() leaf(1) coroutine.yield() leaf(2) end)\n"
                "coroutine.resume(co)\n");
    Profiler::Get().Leave();
    // Had any script entry stayed open, this Leave would have closed it instead of Outer.
    EXPECT_EQ(CallsAt("ProfilerHookTest.cpp;Outer;"), 1u) << Profiler::Get().Report();
    EXPECT_EQ(CallsAt("Lua: Profiled.lua Line: 2;"), 10u);
    EXPECT_EQ(CallsAt("Lua: Profiled.lua Line: 1;"), 11u);
}

TEST_F(ProfilerHookTest, NativeFunctionsThatScriptsCallAreCountedByName)
{
    RunProfiled("for i = 1, 3 do math.floor(i) end\n");
    std::istringstream report(Profiler::Get().Report());
    unsigned long floors = 0;
    for (std::string line; std::getline(report, line);)
        if (line.find(";floor;") != std::string::npos)
            floors += std::stoul(line.substr(line.rfind(';') + 1));
    EXPECT_EQ(floors, 3u) << Profiler::Get().Report();
}
