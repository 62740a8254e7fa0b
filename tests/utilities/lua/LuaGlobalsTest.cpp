// The global functions scripts see: fatal, info, log, debug_break, loadfile.
#include "utilities/lua/LuaGlobals.h"

#include "support/ReportCapture.h"
#include "utilities/lua/LuaTestSupport.h"
#include "utilities/lua/ScriptFile.h"

#include <string>

namespace
{
using LuaGlobalsTest = LuaTest;
}

TEST_F(LuaGlobalsTest, FatalRaisesTheDialogWithTheMessageAsFromLFatal)
{
    ReportCapture reports;
    Run("fatal('the bridge is out')");
    const std::string text = reports.Text();
    EXPECT_NE(text.find("[FATAL] the bridge is out\nFunction: l_fatal\nLuaSystem.cpp\nLine: 129"), std::string::npos)
        << text;
}

TEST_F(LuaGlobalsTest, FatalReportsTheLastArgument)
{
    ReportCapture reports;
    Run("fatal('first', 'last')");
    EXPECT_TRUE(reports.Holds("[FATAL] last\n")) << reports.Text();
}

TEST_F(LuaGlobalsTest, FatalWithNoMessageStillReportsAndTheScriptGoesOn)
{
    ReportCapture reports;
    Run("fatal() after = true");
    EXPECT_TRUE(reports.Holds("Function: l_fatal")) << reports.Text();
    lua_getglobal(L(), "after");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
}

TEST_F(LuaGlobalsTest, InfoAndLogPrintNothing)
{
    StdoutCapture capture;
    Run("info('a', 1, {}) log('Category', 'text', 2) info() log()");
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(LuaGlobalsTest, DebugBreakWithoutADebuggerDoesNothing)
{
    ASSERT_FALSE(Platform::IsDebuggerAttached());
    Run("debug_break() __debugbreak() reached = true");
    lua_getglobal(L(), "reached");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
}

TEST_F(LuaGlobalsTest, LoadfileGivesTheCompiledChunkOfThePathAsGiven)
{
    const std::string path = m_Temp.Write("Other/Chunk.lua", "return 6 * 7");
    // The path is not joined to the data directory.
    Run("local chunk = loadfile('" + path + "') answer = chunk()");
    EXPECT_EQ(Number("answer"), 42);
    EXPECT_EQ(m_Lua.GetScript(m_Lua.LoadScript(path)).ref != -1, true);
}

TEST_F(LuaGlobalsTest, LoadfileOfTheSameFileSharesOneScriptFile)
{
    const std::string path = m_Temp.Write("Chunk.lua", "return 1");
    Run("a = loadfile('" + path + "') b = loadfile('" + path + "') same = rawequal(a, b)");
    lua_getglobal(L(), "same");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
    EXPECT_EQ(m_Lua.m_Scripts.size(), 1u);
}

TEST_F(LuaGlobalsTest, LoadfileOfAMissingFileGivesNilAndReportsIt)
{
    StdoutCapture capture;
    Run("result = loadfile('" + m_Temp.Path() + "Missing.lua') isNil = result == nil");
    lua_getglobal(L(), "isNil");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_pop(L(), 1);
    EXPECT_EQ(capture.Text().rfind("Lua Error: cannot open ", 0), 0u) << capture.Text();
}

TEST_F(LuaGlobalsTest, LoadfileWithoutAPathIsALuaError)
{
    lua_getglobal(L(), "loadfile");
    EXPECT_NE(lua_pcall(L(), 0, 1, 0), 0);
    EXPECT_NE(std::string(lua_tostring(L(), -1)).find("bad argument #1"), std::string::npos);
    lua_settop(L(), 0);
}

TEST_F(LuaGlobalsTest, LoadfileAddsOneNullKeyListenerPerFile)
{
    const std::string path = m_Temp.Write("Chunk.lua", "return 1");
    Run("loadfile('" + path + "') loadfile('" + path + "')");
    const ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(path));
    ASSERT_EQ(file.listeners.size(), 1u);
    EXPECT_EQ(file.listeners[0].key, nullptr);
}

TEST_F(LuaGlobalsTest, AChangedLoadfileFileRunsTheGlobalScriptAgain)
{
    m_Temp.Write("LuaScripts/Globals/Global.lua", "globalRuns = (globalRuns or 0) + 1");
    m_Temp.Write("LuaScripts/Globals/Closing.lua", "");
    m_Lua.Initialize();
    const std::string path = m_Temp.Write("Chunk.lua", "return 1");
    Run("loadfile('" + path + "')");
    FileWatcher::Get().Update(0.0f);
    EXPECT_EQ(Number("globalRuns"), 1);

    m_Temp.Write("Chunk.lua", "return 2");
    TouchLater(path);
    PollAndUpdateWatcher();
    EXPECT_EQ(Number("globalRuns"), 2);
    Run("value = loadfile('" + path + "')()");
    EXPECT_EQ(Number("value"), 2);
}

TEST_F(LuaGlobalsTest, DataDirectoryIsTheFolderTheGameReadsItsDataFrom)
{
    Run("folder = DataDirectory()");
    EXPECT_EQ(String("folder"), Util::GetDataDirectory());
    EXPECT_EQ(String("folder").back(), '/');
}
