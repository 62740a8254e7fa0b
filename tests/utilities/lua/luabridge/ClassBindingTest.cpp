#include "utilities/lua/luabridge/LuaTestState.h"

using ClassBindingTest = LuaTestState;

TEST_F(ClassBindingTest, ConstructorAndFloatMembersReadAndWrite)
{
    EXPECT_EQ(Run("v = Vector3D(1, 2, 3)"), "");
    EXPECT_DOUBLE_EQ(Number("v.x + v.y + v.z"), 6.0);
    EXPECT_EQ(Run("v.y = 10"), "");
    EXPECT_DOUBLE_EQ(Number("v.y"), 10.0);
}

TEST_F(ClassBindingTest, MethodWithThreeFloatsAndResult)
{
    EXPECT_EQ(Run("leaf = BindingLeaf() leaf:SetPosition(3, 0, 4)"), "");
    EXPECT_DOUBLE_EQ(Number("leaf.Position:Length()"), 5.0);
    EXPECT_EQ(Text("leaf:Who()"), "leaf");
}
