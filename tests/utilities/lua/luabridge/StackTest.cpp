#include "utilities/lua/luabridge/LuaTestState.h"

#include "engine/Math/Vector3D.h"

#include <string>
#include <vector>

using StackTest = LuaTestState;

TEST_F(StackTest, AVectorIsPushedAsATableOfItsElementsFromOne)
{
    luabridge::Stack<std::vector<int>>::Push(L, {4, 5, 6});
    lua_setglobal(L, "numbers");
    EXPECT_EQ(Text("type(numbers)"), "table");
    EXPECT_DOUBLE_EQ(Number("#numbers"), 3.0);
    EXPECT_DOUBLE_EQ(Number("numbers[1]"), 4.0);
    EXPECT_DOUBLE_EQ(Number("numbers[3]"), 6.0);
    lua_settop(L, 0);
}

TEST_F(StackTest, AVectorByReferenceIsPushedAsACopy)
{
    std::vector<std::string> names = {"a", "b"};
    luabridge::Stack<const std::vector<std::string>&>::Push(L, names);
    lua_setglobal(L, "names");
    names[0] = "changed";
    EXPECT_EQ(Text("names[1]"), "a");
    EXPECT_EQ(Text("names[2]"), "b");
    lua_settop(L, 0);
}

TEST_F(StackTest, AVectorOfBoundValuesHoldsCopiesOfThem)
{
    std::vector<Math::Vector3D> points = {{1, 2, 3}, {4, 5, 6}};
    luabridge::Stack<std::vector<Math::Vector3D>&>::Push(L, points);
    lua_setglobal(L, "points");
    EXPECT_DOUBLE_EQ(Number("points[2].y"), 5.0);
    EXPECT_EQ(Run("points[2].y = 50"), "");
    EXPECT_EQ(points[1].y, 5.0f);
    lua_settop(L, 0);
}

TEST_F(StackTest, AnEmptyVectorIsAnEmptyTable)
{
    luabridge::Stack<std::vector<float>>::Push(L, {});
    lua_setglobal(L, "none");
    EXPECT_EQ(Text("type(none)"), "table");
    EXPECT_DOUBLE_EQ(Number("#none"), 0.0);
    lua_settop(L, 0);
}
