#include "utilities/lua/luabridge/LuaTestState.h"

using EnumsTest = LuaTestState;

TEST_F(EnumsTest, EnumerationsAreReadOnlyIntegersByQualifiedName)
{
    ASSERT_EQ(RunFile("enums.lua"), "");
    EXPECT_DOUBLE_EQ(FieldNumber("red"), 1.0);
    EXPECT_DOUBLE_EQ(FieldNumber("blue"), 4.0);
    EXPECT_DOUBLE_EQ(FieldNumber("toggle"), 3.0);
    EXPECT_DOUBLE_EQ(FieldNumber("keep"), 0.0);
    EXPECT_TRUE(FieldBool("unknown"));
    EXPECT_EQ(FieldText("writeError"), "'Red' is read-only");
    EXPECT_EQ(FieldText("type"), "BindingColourEnum");
}
