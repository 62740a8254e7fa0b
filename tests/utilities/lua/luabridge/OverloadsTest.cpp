#include "utilities/lua/luabridge/LuaTestState.h"

using OverloadsTest = LuaTestState;

TEST_F(OverloadsTest, FirstFormThatFitsTheArgumentsIsCalled)
{
    ASSERT_EQ(RunFile("overloads.lua"), "");
    EXPECT_EQ(FieldText("number"), "number");
    EXPECT_EQ(FieldText("text"), "string");
    EXPECT_EQ(FieldText("twoNumbers"), "two numbers");
    EXPECT_EQ(FieldText("vector"), "vector");
    EXPECT_TRUE(FieldBool("nothingFits"));
    EXPECT_DOUBLE_EQ(FieldNumber("constructedFromNumber"), 5.0);
    EXPECT_EQ(FieldText("constructedFromText"), "named");
}

TEST_F(OverloadsTest, ConstructorWithArgumentsThatMatchNothingReturnsNoObjectWithoutError)
{
    ASSERT_EQ(RunFile("overloads.lua"), "");
    EXPECT_FALSE(FieldBool("constructorRaised"));
    EXPECT_TRUE(FieldBool("constructorMadeNothing"));
    EXPECT_DOUBLE_EQ(Number("select('#', Vector3D('x', 'y'))"), 0.0);
}

TEST_F(OverloadsTest, QuaternionTimesQuaternionAndTimesNumberPickTheirForms)
{
    EXPECT_DOUBLE_EQ(Number("(Quaternion(0, 0, 0, 1) * Quaternion(1, 2, 3, 4)).z"), 3.0);
    EXPECT_DOUBLE_EQ(Number("(Quaternion(1, 2, 3, 4) * 3).w"), 12.0);
}
