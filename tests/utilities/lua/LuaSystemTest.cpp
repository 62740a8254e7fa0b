// The Lua system: its state as made, the collector, script loading, error
// reports, the boot scripts and the closing script.
#include "utilities/lua/LuaSystem.h"

#include "support/ReportCapture.h"
#include "utilities/Meta/Data.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/LuaTestSupport.h"
#include "utilities/lua/ScriptFile.h"

#include <algorithm>
#include <memory>
#include <string>

namespace
{
using LuaSystemTest = LuaTest;

// Kilobytes the state holds.
int MemoryKb(lua_State* L)
{
    return lua_gc(L, LUA_GCCOUNT, 0);
}

// Tables dropped one after the other; each is stored in a global, so the compiler can't leave it out.
const char* kGarbage = "for i = 1, 200000 do garbage = {i, i, i} end garbage = nil";
}

TEST_F(LuaSystemTest, NewStateHasTheLibrariesLuaFileSystemAndAnEmptyStack)
{
    EXPECT_EQ(lua_gettop(L()), 0);
    Run("kinds = type(string.format) .. type(math.sin) .. type(io.open) .. type(os.time) .. type(jit)");
    EXPECT_EQ(String("kinds"), "functionfunctionfunctionfunctiontable");
    Run("directory = lfs.currentdir()");
    EXPECT_FALSE(String("directory").empty());
}

TEST_F(LuaSystemTest, GlobalFunctionsStandOverTheStandardPrintAndLoadfile)
{
    for (const char* name : {"fatal", "print", "info", "log", "debug_break", "__debugbreak", "stackDump", "loadfile"})
    {
        lua_getglobal(L(), name);
        EXPECT_TRUE(lua_iscfunction(L(), -1)) << name;
        lua_pop(L(), 1);
    }
    lua_getglobal(L(), "print");
    lua_getglobal(L(), "loadfile");
    EXPECT_EQ(LuaSystem::Of(L()).m_State, L());
    lua_settop(L(), 0);
}

TEST_F(LuaSystemTest, StateKnowsItsOwnSystemAndItsThreadsShareIt)
{
    lua_State* thread = lua_newthread(L());
    EXPECT_EQ(&LuaSystem::Of(thread), &m_Lua);
    EXPECT_TRUE(LuaSystem::SameUniverse(thread, L()));
    lua_State* other = luaL_newstate();
    EXPECT_FALSE(LuaSystem::SameUniverse(other, L()));
    EXPECT_EQ(&LuaSystem::Of(other), &LuaSystem::Get());
    lua_close(other);
    lua_settop(L(), 0);
}

TEST_F(LuaSystemTest, TheAutomaticCollectorIsStopped)
{
    const int before = MemoryKb(L());
    Run(kGarbage);
    // 200000 dropped tables stay: a running collector would have freed most of them on the way.
    EXPECT_GT(MemoryKb(L()) - before, 10000);
}

TEST_F(LuaSystemTest, UpdateTakesOneCollectorStepAFrame)
{
    Run(kGarbage);
    const int full = MemoryKb(L());
    m_Lua.Update(0.016f);
    const int afterOne = MemoryKb(L());
    EXPECT_LE(afterOne, full);
    // One step is bounded work: it doesn't collect everything at once...
    EXPECT_GT(afterOne, full / 2);
    // ...but the steps of a few hundred frames do.
    for (int frame = 0; frame < 2000 && MemoryKb(L()) > full / 4; ++frame)
        m_Lua.Update(0.016f);
    EXPECT_LT(MemoryKb(L()), full / 4);
}

TEST_F(LuaSystemTest, LoadScriptOfTheSamePathGivesTheSameIndex)
{
    const std::string path = m_Temp.Write("a.lua", "x = 1");
    const int first = m_Lua.LoadScript(path);
    EXPECT_EQ(m_Lua.LoadScript(path), first);
    EXPECT_EQ(m_Lua.m_Scripts.size(), 1u);
    EXPECT_NE(m_Lua.GetScript(first).ref, -1);
}

TEST_F(LuaSystemTest, LoadScriptFindsEverySpellingOfAPathAsOneFile)
{
    const std::string path = m_Temp.Write("Sub/b.lua", "x = 1");
    const int index = m_Lua.LoadScript(path);
    std::string other = m_Temp.Path() + "Sub/./b.lua";
    EXPECT_EQ(m_Lua.LoadScript(other), index);
    std::replace(other.begin(), other.end(), '/', '\\');
    EXPECT_EQ(m_Lua.LoadScript(other), index);
}

TEST_F(LuaSystemTest, MissingScriptFileStillGetsAnIndexWithNoChunk)
{
    StdoutCapture capture;
    const int index = m_Lua.LoadScript(m_Temp.Path() + "NoSuch.lua");
    EXPECT_EQ(m_Lua.GetScript(index).ref, -1);
    EXPECT_EQ(lua_gettop(L()), 0);
    const std::string text = capture.Text();
    EXPECT_EQ(text.rfind("Lua Error: cannot open ", 0), 0u) << text;
    EXPECT_NE(text.find("NoSuch.lua"), std::string::npos) << text;
}

TEST_F(LuaSystemTest, RunningAMissingScriptCallsNothingAndTheProgramGoesOn)
{
    StdoutCapture capture;
    LuaScript script(m_Temp.Path() + "NoSuch.lua", {}, &m_Lua);
    script.Run();
    EXPECT_EQ(script.CacheFunction("Anything"), -1);
    EXPECT_EQ(lua_gettop(L()), 0);
    // Only the load reports; running nothing reports nothing more.
    const std::string text = capture.Text();
    EXPECT_EQ(text.find("Lua Error:"), text.rfind("Lua Error:")) << text;
}

TEST_F(LuaSystemTest, ReportStatusOfSuccessPrintsNothing)
{
    StdoutCapture capture;
    m_Lua.ReportStatus(0);
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(LuaSystemTest, ReportStatusOfAnErrorPrintsTheMessageAndLeavesItOnTheStack)
{
    lua_pushstring(L(), "something broke");
    StdoutCapture capture;
    m_Lua.ReportStatus(LUA_ERRRUN);
    EXPECT_EQ(capture.Text(), "Lua Error: something broke\n");
    ASSERT_EQ(lua_gettop(L()), 1);
    EXPECT_STREQ(lua_tostring(L(), 1), "something broke");
    lua_settop(L(), 0);
}

TEST_F(LuaSystemTest, ReportStatusOfAYieldPrintsTheCallStackAndPopsIt)
{
    StdoutCapture capture;
    m_Lua.ReportStatus(LUA_YIELD);
    EXPECT_EQ(capture.Text().rfind("Lua Error: Function Yielded.\n stack traceback:", 0), 0u) << capture.Text();
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(LuaSystemTest, ReportStatusOfAnErrorThatIsNoStringNamesItsType)
{
    lua_newtable(L());
    StdoutCapture capture;
    m_Lua.ReportStatus(LUA_ERRRUN);
    EXPECT_EQ(capture.Text(), "Lua Error: (error object is a table value)\n");
    lua_settop(L(), 0);
}

TEST_F(LuaSystemTest, CallRefCallsTheFunctionAndReportsItsErrorWithTheStackAsItWas)
{
    Run("calls = 0 function Count() calls = calls + 1 return 1, 2 end function Fail() error('failed') end");
    lua_getglobal(L(), "Count");
    const int count = luaL_ref(L(), LUA_REGISTRYINDEX);
    lua_getglobal(L(), "Fail");
    const int fail = luaL_ref(L(), LUA_REGISTRYINDEX);
    m_Lua.CallRef(count);
    EXPECT_EQ(Number("calls"), 1);
    StdoutCapture capture;
    m_Lua.CallRef(fail);
    EXPECT_EQ(capture.Text().rfind("Lua Error: [string ", 0), 0u) << capture.Text();
    EXPECT_NE(capture.Text().find(":1: failed\n"), std::string::npos) << capture.Text();
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(LuaSystemTest, InitializeRunsTheGlobalScriptAndLoadsTheClosingScriptWithoutRunningIt)
{
    m_Temp.Write("LuaScripts/Globals/Global.lua", "globalRuns = (globalRuns or 0) + 1");
    m_Temp.Write("LuaScripts/Globals/Closing.lua", "closingRan = true");
    m_Lua.Initialize();
    EXPECT_EQ(Number("globalRuns"), 1);
    lua_getglobal(L(), "closingRan");
    EXPECT_TRUE(lua_isnil(L(), -1));
    lua_pop(L(), 1);
    ASSERT_NE(m_Lua.m_ClosingScript, -1);
    EXPECT_EQ(m_Lua.GetScript(m_Lua.m_ClosingScript).path, m_Temp.Path() + "LuaScripts/Globals/Closing.lua");
    EXPECT_EQ(m_Lua.GetScript(0).path, m_Temp.Path() + "LuaScripts/Globals/Global.lua");
    EXPECT_NE(m_Lua.GetMutex(), nullptr);
    EXPECT_EQ(m_Lua.m_WorkerPool, nullptr);
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(LuaSystemTest, AnErrorInTheGlobalScriptIsPrintedAndInitializeGoesOn)
{
    m_Temp.Write("LuaScripts/Globals/Global.lua", "error('no globals today')");
    StdoutCapture capture;
    m_Lua.Initialize();
    EXPECT_NE(capture.Text().find("Lua Error: "), std::string::npos);
    EXPECT_NE(capture.Text().find("no globals today"), std::string::npos);
    EXPECT_NE(m_Lua.m_ClosingScript, -1);
    EXPECT_NE(m_Lua.GetMutex(), nullptr);
}

TEST_F(LuaSystemTest, ShippedGlobalScriptComparesAndSetsProperties)
{
    ScopedDataDirectory shipped(VORN_TEST_DATA_DIR "/../../Data");
    StdoutCapture capture;
    m_Lua.Initialize();
    Run("same = CompareProperties(1.5, 1.5) and CompareProperties('a', 'a') and not CompareProperties(1, 2)");
    Run("object = {} SetProperty(object, 'Speed', 4) speed = object.Speed");
    lua_getglobal(L(), "same");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
    EXPECT_EQ(Number("speed"), 4);
    EXPECT_EQ(capture.Text().find("Lua Error"), std::string::npos) << capture.Text();
}

TEST_F(LuaSystemTest, GameInitializeRunsTheScriptThenItsInitializeGameOnce)
{
    m_Temp.Write("LuaScripts/GameInitialize.lua", "print('run') function InitializeGame() print('InitializeGame') end");
    StdoutCapture capture;
    m_Lua.GameInitialize();
    EXPECT_EQ(capture.Text(), "run\nInitializeGame\n");
    // The script ran in an environment of its own: its globals are not in _G.
    lua_getglobal(L(), "InitializeGame");
    EXPECT_TRUE(lua_isnil(L(), -1));
    lua_settop(L(), 0);
}

TEST_F(LuaSystemTest, GameInitializeWithoutTheFileReportsItAndGoesOn)
{
    StdoutCapture capture;
    m_Lua.GameInitialize();
    EXPECT_EQ(lua_gettop(L()), 0);
    EXPECT_EQ(capture.Text().rfind("Lua Error: cannot open ", 0), 0u) << capture.Text();
}

TEST_F(LuaSystemTest, GameInitializeWithoutInitializeGameRunsTheScriptOnly)
{
    m_Temp.Write("LuaScripts/GameInitialize.lua", "print('only the script')");
    StdoutCapture capture;
    m_Lua.GameInitialize();
    EXPECT_EQ(capture.Text(), "only the script\n");
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST_F(LuaSystemTest, AnErrorInInitializeGameIsPrinted)
{
    m_Temp.Write("LuaScripts/GameInitialize.lua", "function InitializeGame() error('bad start') end");
    StdoutCapture capture;
    m_Lua.GameInitialize();
    EXPECT_NE(capture.Text().find("Lua Error: "), std::string::npos);
    EXPECT_NE(capture.Text().find("bad start"), std::string::npos);
    EXPECT_EQ(lua_gettop(L()), 0);
}

TEST(LuaSystemLifetimeTest, DestructionRunsTheClosingScriptWhileTheStateStillStands)
{
    TempFolder temp;
    ScopedDataDirectory data(temp.Path());
    temp.Write("LuaScripts/Globals/Closing.lua", "print('closing', globalValue)");
    temp.Write("LuaScripts/Globals/Global.lua", "globalValue = 42");
    auto lua = std::make_unique<LuaSystem>();
    lua->Initialize();
    StdoutCapture capture;
    lua.reset();
    EXPECT_EQ(capture.Text(), "closing42.000000\n");
}

TEST(LuaSystemLifetimeTest, DestructionEndsTheWatchesOfItsScripts)
{
    TempFolder temp;
    const std::string path = temp.Write("a.lua", "x = 1");
    FileWatcher::Get().Update(0.0f);
    const std::size_t watched = FileWatcher::Get().CountWatched();
    {
        LuaSystem lua;
        lua.LoadScript(path);
        FileWatcher::Get().Update(0.0f);
        EXPECT_EQ(FileWatcher::Get().CountWatched(), watched + 1);
    }
    FileWatcher::Get().Update(0.0f);
    EXPECT_EQ(FileWatcher::Get().CountWatched(), watched);
}

TEST(LuaSystemLifetimeTest, TheOneSystemIsAnEngineSystemWithAState)
{
    LuaSystem& system = LuaSystem::Get();
    EXPECT_EQ(&system, &LuaSystem::Get());
    EXPECT_NE(system.m_State, nullptr);
    EXPECT_EQ(system.GetMeta()->GetName(), "LuaSystem");
}

TEST(LuaSystemLifetimeTest, PanicPrintsTheErrorAndRaisesTheDialogOhGodLuaDied)
{
    // Lua calls the state's panic function with the error on top, then ends the process. The error is
    // not thrown here: on this platform it unwinds as a C++ exception, which the test framework would
    // catch first.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            Platform::SetDialogPolicy(Platform::DialogPolicy::Abort);
            LuaSystem lua;
            const lua_CFunction panic = lua_atpanic(lua.m_State, nullptr);
            lua_atpanic(lua.m_State, panic);
            lua_pushstring(lua.m_State, "unprotected");
            panic(lua.m_State);
        },
        ::testing::ExitedWithCode(Engine::kAbortExitCode), "OH GOD LUA DIED\\.(.|\n)*Function: l_panic");
}

TEST_F(LuaSystemTest, LanesModuleLoadsItsLuaHalfFromTheDataDirectoryAndRunsALane)
{
    const ScopedDataDirectory data(VORN_DATA_DIR);
    Run("local lanes = require('lanes').configure()\n"
        "local sum = lanes.gen('*', function(a, b) local s = 0 for i = a, b do s = s + i end return s end)\n"
        "laneSum = sum(1, 100):join()");
    EXPECT_EQ(String("laneSum"), "5050");
}
