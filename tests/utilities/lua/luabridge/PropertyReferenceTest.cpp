#include "utilities/lua/luabridge/LuaTestState.h"

#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"

class PropertyReferenceTest : public LuaTestState
{
protected:
    PropertyReferenceTest()
    {
        m_Object.AddComponentUninitialized("Transform");
        SetGlobal("obj", &m_Object);
        SetGlobal("bare", &m_Bare);
    }
    Transform& TransformOf() { return *m_Object.GetComponent<Transform>(); }

    GameObject m_Object;
    GameObject m_Bare;
};

TEST_F(PropertyReferenceTest, ValueMembersWriteThroughAndCopyDetached)
{
    ASSERT_EQ(RunFile("property_references.lua"), "");
    EXPECT_DOUBLE_EQ(FieldNumber("x"), 1.0);
    EXPECT_FLOAT_EQ(TransformOf().m_Position.x, 1.0f);
    EXPECT_DOUBLE_EQ(FieldNumber("detachedY"), 50.0);
    EXPECT_DOUBLE_EQ(FieldNumber("y"), 0.0);
    EXPECT_DOUBLE_EQ(FieldNumber("scale"), 2.0);
    EXPECT_DOUBLE_EQ(FieldNumber("offset"), 6.0);
    EXPECT_FLOAT_EQ(TransformOf().m_Offset.z, 6.0f);
    EXPECT_DOUBLE_EQ(FieldNumber("rotationW"), TransformOf().m_Rotation.w);
}

TEST_F(PropertyReferenceTest, ReferenceBuildsOnePathAndAssignsAtItsEnd)
{
    ASSERT_EQ(RunFile("property_references.lua"), "");
    EXPECT_DOUBLE_EQ(FieldNumber("referencePath"), 2.0);
    EXPECT_DOUBLE_EQ(FieldNumber("z"), 7.0);
    EXPECT_FLOAT_EQ(TransformOf().m_Position.z, 7.0f);
    EXPECT_DOUBLE_EQ(FieldNumber("referenceCopy"), 7.0);
}

TEST_F(PropertyReferenceTest, ChainThroughAComponentTheObjectLacksReadsNilNotAnError)
{
    ASSERT_EQ(RunFile("property_references.lua"), "");
    EXPECT_TRUE(FieldBool("bareTransform"));
    EXPECT_TRUE(FieldBool("barePath"));
}

TEST_F(PropertyReferenceTest, WriteThroughTheComponentPropertyOfAnObject)
{
    EXPECT_EQ(Run("obj.Transform.Position.x = 1"), "");
    EXPECT_FLOAT_EQ(TransformOf().m_Position.x, 1.0f);
    EXPECT_EQ(Run("obj.Transform.Rotation.w = 0.5"), "");
    EXPECT_FLOAT_EQ(TransformOf().m_Rotation.w, 0.5f);
    EXPECT_EQ(Run("obj.Transform = nil"), "'Transform' is read-only");
}
