// Script files: one compile per file, a new compile on each change, listeners
// called in order, a failed compile keeping what stood.
#include "utilities/lua/ScriptFile.h"

#include "utilities/lua/LuaTestSupport.h"

#include <functional>
#include <string>
#include <vector>

namespace
{
using ScriptFileTest = LuaTest;
}

TEST_F(ScriptFileTest, FileIsCompiledOnceWhenLoaded)
{
    const std::string path = m_Temp.Write("a.lua", "return 1");
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(path));
    const int ref = file.ref;
    EXPECT_NE(ref, -1);
    m_Lua.LoadScript(path);
    EXPECT_EQ(file.ref, ref);
    ASSERT_TRUE(file.PushChunk());
    EXPECT_TRUE(lua_isfunction(L(), -1));
    lua_settop(L(), 0);
}

TEST_F(ScriptFileTest, ChangedFileIsCompiledAgainAndItsListenersCalledInOrder)
{
    const std::string path = m_Temp.Write("a.lua", "return 1");
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(path));
    std::vector<std::string> calls;
    int first = 0;
    int second = 0;
    file.AddListener(&first, [&calls] { calls.push_back("first"); });
    file.AddListener(&second, [&calls] { calls.push_back("second"); });
    FileWatcher::Get().Update(0.0f);

    m_Temp.Write("a.lua", "return 2");
    TouchLater(path);
    PollAndUpdateWatcher();
    EXPECT_EQ(calls, (std::vector<std::string>{"first", "second"}));
    file.PushChunk();
    lua_call(L(), 0, 1);
    EXPECT_EQ(lua_tonumber(L(), -1), 2);
    lua_settop(L(), 0);
}

TEST_F(ScriptFileTest, SyntaxErrorKeepsTheOldChunkAndCallsNoListener)
{
    const std::string path = m_Temp.Write("a.lua", "return 1");
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(path));
    const int ref = file.ref;
    int calls = 0;
    file.AddListener(this, [&calls] { ++calls; });
    StdoutCapture capture;
    m_Temp.Write("a.lua", "return return");
    file.Compile();
    const std::string text = capture.Text();
    EXPECT_EQ(text.rfind("Lua Error: ", 0), 0u) << text;
    EXPECT_NE(text.find("a.lua:1:"), std::string::npos) << text;
    EXPECT_EQ(file.ref, ref);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(file.listeners.size(), 1u);
    EXPECT_EQ(lua_gettop(L()), 0);
    file.PushChunk();
    lua_call(L(), 0, 1);
    EXPECT_EQ(lua_tonumber(L(), -1), 1);
    lua_settop(L(), 0);
}

TEST_F(ScriptFileTest, AFileThatAppearsLaterCompilesOnItsFirstChange)
{
    const std::string path = m_Temp.Path() + "late.lua";
    StdoutCapture capture;
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(path));
    FileWatcher::Get().Update(0.0f);
    EXPECT_EQ(file.ref, -1);
    m_Temp.Write("late.lua", "return 3");
    PollAndUpdateWatcher();
    EXPECT_NE(file.ref, -1);
}

TEST_F(ScriptFileTest, AListenerKeyStandsOnlyOnce)
{
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(m_Temp.Write("a.lua", "")));
    int calls = 0;
    EXPECT_TRUE(file.AddListener(this, [&calls] { ++calls; }));
    EXPECT_FALSE(file.AddListener(this, [&calls] { calls += 10; }));
    file.Compile();
    EXPECT_EQ(calls, 1);
}

TEST_F(ScriptFileTest, RemovedListenerIsNotCalled)
{
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(m_Temp.Write("a.lua", "")));
    int calls = 0;
    file.AddListener(this, [&calls] { ++calls; });
    file.RemoveListener(this);
    file.Compile();
    EXPECT_EQ(calls, 0);
    EXPECT_FALSE(file.HasListener(this));
}

TEST_F(ScriptFileTest, AListenerRemovedByAnEarlierOneIsNotCalled)
{
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(m_Temp.Write("a.lua", "")));
    int second = 0;
    int calls = 0;
    file.AddListener(this, [&file, &second] { file.RemoveListener(&second); });
    file.AddListener(&second, [&calls] { ++calls; });
    file.Compile();
    EXPECT_EQ(calls, 0);
}

TEST_F(ScriptFileTest, AListenerWithAnEmptyCallbackIsAFault)
{
    ScriptFile& file = m_Lua.GetScript(m_Lua.LoadScript(m_Temp.Write("a.lua", "")));
    file.AddListener(this, {});
    EXPECT_THROW(file.Compile(), std::bad_function_call);
}
