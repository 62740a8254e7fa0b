#include "utilities/lua/luabridge/LuaTestState.h"

#include "utilities/lua/luabridge/Operators.h"

using MathOperatorsTest = LuaTestState;

TEST_F(MathOperatorsTest, VectorAndQuaternionOperatorsWorkFromLua)
{
    ASSERT_EQ(RunFile("math_operators.lua"), "");
    EXPECT_DOUBLE_EQ(FieldNumber("sumX"), 2.0);
    EXPECT_DOUBLE_EQ(FieldNumber("sumY"), 3.0);
    EXPECT_DOUBLE_EQ(FieldNumber("sumZ"), 4.0);
    EXPECT_DOUBLE_EQ(FieldNumber("differenceX"), 4.0);
    EXPECT_DOUBLE_EQ(FieldNumber("scaledZ"), 6.0);
    EXPECT_DOUBLE_EQ(FieldNumber("halvedY"), 2.0);
    EXPECT_DOUBLE_EQ(FieldNumber("negatedX"), -1.0);
    EXPECT_DOUBLE_EQ(FieldNumber("negatedW"), -4.0);
    EXPECT_DOUBLE_EQ(FieldNumber("productX"), 1.0);
    EXPECT_DOUBLE_EQ(FieldNumber("productW"), 4.0);
    EXPECT_DOUBLE_EQ(FieldNumber("quaternionScaledY"), 4.0);
    EXPECT_DOUBLE_EQ(FieldNumber("quaternionDifferenceZ"), 2.0);
    EXPECT_TRUE(FieldBool("equal"));
    EXPECT_FALSE(FieldBool("unequal"));
    EXPECT_TRUE(FieldBool("less"));
    EXPECT_TRUE(FieldBool("lessEqual"));
    EXPECT_DOUBLE_EQ(FieldNumber("assignedY"), 8.0);
    EXPECT_DOUBLE_EQ(FieldNumber("pointPlusVector"), 4.0);
    EXPECT_DOUBLE_EQ(FieldNumber("colourSum"), 0.5);
    EXPECT_EQ(FieldText("type"), "Vector3D");
}

TEST_F(MathOperatorsTest, OperatorNamesMapToLuaMetamethods)
{
    EXPECT_EQ(luabridge::LuaNameOf("operator+"), "__add");
    EXPECT_EQ(luabridge::LuaNameOf("operator-"), "__sub");
    EXPECT_EQ(luabridge::LuaNameOf("operator-()"), "__unm");
    EXPECT_EQ(luabridge::LuaNameOf("operator*"), "__mul");
    EXPECT_EQ(luabridge::LuaNameOf("operator/"), "__div");
    EXPECT_EQ(luabridge::LuaNameOf("operator%"), "__mod");
    EXPECT_EQ(luabridge::LuaNameOf("operator=="), "__eq");
    EXPECT_EQ(luabridge::LuaNameOf("operator<"), "__lt");
    EXPECT_EQ(luabridge::LuaNameOf("operator<="), "__le");
    EXPECT_EQ(luabridge::LuaNameOf("operator="), "assign");
    EXPECT_EQ(luabridge::LuaNameOf("Length"), "Length");
}

TEST_F(MathOperatorsTest, VectorMethodsTakeAndGiveVectors)
{
    EXPECT_DOUBLE_EQ(Number("Vector3D(1, 0, 0):CrossProduct(Vector3D(0, 1, 0)).z"), 1.0);
    EXPECT_DOUBLE_EQ(Number("Vector3D(1, 2, 3):DotProduct(Vector3D(1, 1, 1))"), 6.0);
    EXPECT_EQ(Text("Vector3D(1, 2, 3):Print()"), "Vector3D(1, 2, 3)");
    EXPECT_DOUBLE_EQ(Number("Quaternion.CreateFromEuler(0, 0, 0).w"), 1.0);
}
