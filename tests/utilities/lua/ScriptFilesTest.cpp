// Feature scripts under tests/data/lua/ that need the whole Lua system (events,
// coroutines), each run as a script of its own and checked by the table it returns.
#include "utilities/lua/LuaTestSupport.h"

#include "engine/Space.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/luabridge/Stack.h"

#include <fstream>
#include <sstream>

namespace
{
class ScriptFilesTest : public LuaTest
{
protected:
    void SetUp() override
    {
        {
            StdoutCapture quiet;  // The temporary data directory has no global script to run.
            m_Lua.Initialize();
        }
        luabridge::Stack<Engine::Space*>::Push(L(), &m_Space);
        lua_setglobal(L(), "space");
    }
    // Copies tests/data/lua/<name> into the data folder and runs it as a LuaScript whose chunk
    // returns its results into the global `results`; gives what it printed.
    std::string RunScript(const std::string& name)
    {
        std::ifstream in(std::string(VORN_TEST_DATA_DIR) + "/lua/" + name);
        std::stringstream text;
        text << in.rdbuf();
        const std::string body = "results = (function()\n" + text.str() + "\nend)()\n";
        m_Script = std::make_unique<LuaScript>(m_Temp.Write(name, body), LuaScript::SetupEnvironment{}, &m_Lua);
        StdoutCapture output;
        m_Script->Run();
        // The script's globals live in its environment: fetch `results` from there.
        m_Script->CacheFunction("results");
        lua_rawgeti(L(), LUA_REGISTRYINDEX, m_Script->FindFunction("results"));
        lua_setglobal(L(), "results");
        return output.Text();
    }
    std::string Field(const char* name)
    {
        Run(std::string("field = tostring(results.") + name + ")");
        return String("field");
    }

    Engine::Space m_Space{Engine::Level};
    std::unique_ptr<LuaScript> m_Script;
};
}

TEST_F(ScriptFilesTest, EventsRegisteredAndBroadcastFromLuaReachObjectsAndScriptFunctions)
{
    const std::string output = RunScript("events.lua");
    EXPECT_EQ(output.find("Lua Error"), std::string::npos) << output;
    EXPECT_EQ(Field("objectDamage"), "7");
    EXPECT_EQ(Field("scriptDamage"), "7");
    EXPECT_EQ(Field("blastName"), "Blast");
    EXPECT_EQ(Field("unknownIdIgnored"), "true");
}

TEST_F(ScriptFilesTest, CoroutinesStartOverWithLoopOnAndStayDeadWithLoopOff)
{
    const std::string output = RunScript("coroutines.lua");
    // Loop on: yield, finish and start over, yield, finish. Loop off: yield, finish, then a resume
    // of the finished thread is a Lua error that marks the coroutine dead (-1 from then on).
    EXPECT_EQ(Field("looping"), "22");
    EXPECT_EQ(Field("once"), "11");
    EXPECT_EQ(Field("statuses"), "1 1 0 0 1 2 0 -1");
    EXPECT_NE(output.find("Lua Error: cannot resume dead coroutine"), std::string::npos) << output;
    EXPECT_EQ(Field("defaultLoop"), "true");
}
