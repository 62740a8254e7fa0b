#include "utilities/lua/luabridge/LuaTestState.h"

#include "engine/Math/Vector3D.h"

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

TEST_F(ClassBindingTest, FloatFieldFarIntoTheObjectReadsAndWrites)
{
    EXPECT_EQ(Run("far = BindingFar() far.Far = far.Far + 1"), "");
    EXPECT_DOUBLE_EQ(Number("far.Far"), 2.5);
    EXPECT_EQ(Run("far.Far = 'text'"), "'Far' can't take a value of type string");
}

TEST_F(ClassBindingTest, FloatFieldRefusesAValueThatIsNoNumber)
{
    EXPECT_EQ(Run("v = Vector3D(1, 2, 3)"), "");
    const std::string error = Run("v.x = 'text'");
    EXPECT_NE(error.find("'x' can't take a value of type string"), std::string::npos) << error;
    EXPECT_DOUBLE_EQ(Number("v.x"), 1.0);
}

TEST_F(ClassBindingTest, MethodsAreReachedFromInstancesNotFromTheClassTable)
{
    EXPECT_EQ(Text("type(Vector3D.Length)"), "nil");
    EXPECT_EQ(Text("type(Vector3D(1, 2, 3).Length)"), "function");
}

TEST_F(ClassBindingTest, ConstObjectReadsAndCallsConstMethodsOnly)
{
    const Math::Vector3D constant(3, 4, 0);
    luabridge::Stack<const Math::Vector3D*>::Push(L, &constant);
    lua_setglobal(L, "constant");
    EXPECT_EQ(Text("getmetatable(constant).__type"), "const Vector3D");
    EXPECT_DOUBLE_EQ(Number("constant.y"), 4.0);
    EXPECT_DOUBLE_EQ(Number("constant:Length()"), 5.0);
    EXPECT_EQ(Text("type(constant.Normalize)"), "nil");
    EXPECT_NE(Run("constant.x = 1"), "");
    EXPECT_FLOAT_EQ(constant.x, 3.0f);
}
