// MakeCoroutine, Value and CheckIfPtr on a Lua system whose classes are bound.
#include "utilities/lua/ScriptValues.h"

#include "engine/GameObject.h"
#include "utilities/lua/LuaTestSupport.h"
#include "utilities/lua/luabridge/detail/Keys.h"
#include "utilities/lua/luabridge/detail/Userdata.h"

namespace
{
// A Lua system of the test's own with every registered class bound.
class ScriptValuesTest : public LuaTest
{
protected:
    ScriptValuesTest()
    {
        StdoutCapture quiet; // The temporary data directory has no global script to run.
        m_Lua.Initialize();
    }
};
}

TEST_F(ScriptValuesTest, ValueOfANumberOrAStringIsTheSame)
{
    Run("number = Value(2.5) string = Value('text') nothing = Value(print)");
    EXPECT_EQ(Number("number"), 2.5);
    EXPECT_EQ(String("string"), "text");
    EXPECT_EQ(String("nothing"), "");
}

TEST_F(ScriptValuesTest, ValueOfABoundValueIsADetachedCopy)
{
    Run("v = Vector3D(1, 2, 3)\n"
        "copy = Value(v)\n"
        "copy.x = 10\n"
        "original = v.x copied = copy.x");
    EXPECT_EQ(Number("original"), 1.0);
    EXPECT_EQ(Number("copied"), 10.0);
}

TEST_F(ScriptValuesTest, CheckIfPtrIsTrueOnlyForObjectsOwnedElsewhere)
{
    GameObject object;
    luabridge::PushPointer(L(), &object, luabridge::detail::ClassKey<GameObject>());
    lua_setglobal(L(), "object");
    Run("pointer = CheckIfPtr(object) value = CheckIfPtr(Vector3D(1, 2, 3)) number = CheckIfPtr(3)");
    lua_getglobal(L(), "pointer");
    EXPECT_TRUE(lua_toboolean(L(), -1));
    lua_getglobal(L(), "value");
    EXPECT_FALSE(lua_toboolean(L(), -1));
    lua_getglobal(L(), "number");
    EXPECT_FALSE(lua_toboolean(L(), -1));
    lua_settop(L(), 0);
}

TEST_F(ScriptValuesTest, MadeCoroutineYieldsThenFinishesAndLoops)
{
    Run("steps = 0\n"
        "co = MakeCoroutine(function() steps = steps + 1 coroutine.yield() steps = steps + 10 end)\n"
        "first = co:resume() second = co:resume() third = co:resume()");
    EXPECT_EQ(Number("first"), 1.0);
    EXPECT_EQ(Number("second"), 0.0);
    EXPECT_EQ(Number("third"), 1.0);
    EXPECT_EQ(Number("steps"), 12.0);
}
