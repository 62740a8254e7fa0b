// The printing helpers and the global print and stackDump built on them.
#include "utilities/lua/LuaPrint.h"

#include "utilities/lua/LuaTestSupport.h"

#include <cstdio>
#include <string>

namespace
{
class LuaPrintTest : public LuaTest
{
protected:
    // What `code` prints on standard output.
    std::string Printed(const std::string& code)
    {
        StdoutCapture capture;
        Run(code);
        return capture.Text();
    }
};
}

TEST_F(LuaPrintTest, PrintWithNoArgumentPrintsOnlyTheLineEnd)
{
    EXPECT_EQ(Printed("print()"), "\n");
}

TEST_F(LuaPrintTest, PrintWritesEachArgumentWithNoSeparator)
{
    EXPECT_EQ(Printed("print('a', 1.5, nil, true, false, 'b')"), "a1.500000niltruefalseb\n");
}

TEST_F(LuaPrintTest, NumbersArePrintedWithSixDecimals)
{
    EXPECT_EQ(Printed("print(3)"), "3.000000\n");
    EXPECT_EQ(Printed("print(-0.25)"), "-0.250000\n");
}

TEST_F(LuaPrintTest, TableIsPrintedByItsKeysOnly)
{
    EXPECT_EQ(Printed("print({hidden = 'value'})"), "Table: \n{\n  Key: hidden\n}\n");
}

TEST_F(LuaPrintTest, ATableValueIsNeverExpanded)
{
    EXPECT_EQ(Printed("print({inner = {deep = 1}})"), "Table: \n{\n  Key: inner\n}\n");
}

TEST_F(LuaPrintTest, ATableKeyIsPrintedByItsOwnKeysOneLevelDeeper)
{
    EXPECT_EQ(Printed("local k = {x = 1} print({[k] = 2})"),
              "Table: \n{\n  Key: Table: \n  {\n    Key: x\n  }\n}\n");
}

TEST_F(LuaPrintTest, ATableThatIsAKeyOfItselfPrintsAndEnds)
{
    const std::string text = Printed("local t = {} t[t] = 1 print(t)");
    EXPECT_NE(text.find("Table: ..."), std::string::npos);
    EXPECT_EQ(luabridge::GetPrintIndent(), 0);
}

TEST_F(LuaPrintTest, FunctionsAndLightUserdataArePrintedByAddress)
{
    lua_pushlightuserdata(L(), reinterpret_cast<void*>(0x1234));
    lua_setglobal(L(), "light");
    char light[64];
    std::snprintf(light, sizeof light, "[Light Userdata]: %p\n", reinterpret_cast<void*>(0x1234));
    EXPECT_EQ(Printed("print(light)"), light);
    // A Lua function has no C function pointer.
    char function[64];
    std::snprintf(function, sizeof function, "[Function]: %p\n", static_cast<void*>(nullptr));
    EXPECT_EQ(Printed("print(function() end)"), function);
}

TEST_F(LuaPrintTest, FullUserdataIsPrintedByItsFirstWordAndALineEnd)
{
    void** block = static_cast<void**>(lua_newuserdata(L(), sizeof(void*)));
    *block = reinterpret_cast<void*>(0xBEEF);
    lua_setglobal(L(), "object");
    char expected[64];
    std::snprintf(expected, sizeof expected, "[Userdata]: %p\n\n", reinterpret_cast<void*>(0xBEEF));
    EXPECT_EQ(Printed("print(object)"), expected);
}

TEST_F(LuaPrintTest, AThreadIsPrintedAsAnUnknownType)
{
    EXPECT_EQ(Printed("print(coroutine.create(function() end))"), "dumpStack Err, type encountered: thread\n");
}

TEST_F(LuaPrintTest, StackDumpNumbersEveryValueFromTheBottom)
{
    EXPECT_EQ(Printed("stackDump('a', 2)"), "--- LUA TOP ---\n1 - a\n2 - 2.000000\n--- END ---\n\n");
}

TEST_F(LuaPrintTest, StackDumpKeepsTheIndentCounter)
{
    // A dump taken while the counter stands at 4 (as from a debugger in the middle of a table) indents
    // its tables from there and leaves the counter at 4.
    luabridge::SetPrintIndent(4);
    lua_newtable(L());
    lua_pushnumber(L(), 1);
    StdoutCapture capture;
    luabridge::Lua_stackDump(L());
    luabridge::PrintIndent();
    std::printf("|");
    EXPECT_EQ(capture.Text(), "--- LUA TOP ---\n1 - Table: \n    {\n    }\n2 - 1.000000\n--- END ---\n\n    |");
    EXPECT_EQ(luabridge::GetPrintIndent(), 4);
    luabridge::SetPrintIndent(0);
    lua_settop(L(), 0);
}

TEST_F(LuaPrintTest, StackTracePrintsTheCallStackAndLeavesTheStackAsItWas)
{
    lua_pushnumber(L(), 7);
    StdoutCapture capture;
    luabridge::Lua_stackTrace(L());
    EXPECT_EQ(capture.Text().rfind("stack traceback:", 0), 0u) << capture.Text();
    EXPECT_EQ(lua_gettop(L()), 1);
    lua_settop(L(), 0);
}
