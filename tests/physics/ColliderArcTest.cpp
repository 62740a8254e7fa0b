#include "physics/ColliderArc.h"

#include "Components/Transform/Transform.h"
#include "utilities/Meta/Data.h"
#include "physics/ColliderCube.h"
#include "utilities/Meta/Method.h"
#include "utilities/lua/luabridge/LuaTestState.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ColliderArcTest, PieSliceHasTwelveVerticesEndingAtTheCentre)
{
    ColliderArc arc;
    arc.BuildArc(90.0f, 2.0f, 0.0f, 1.0f);
    ASSERT_EQ(arc.m_Vertices.size(), 12u);
    EXPECT_EQ(arc.m_Vertices[0], Math::Vector3D(2.0f, 0.5f, 0.0f));
    EXPECT_EQ(arc.m_Vertices[1], Math::Vector3D(2.0f, -0.5f, 0.0f));
    const float c = std::cos(3.1415927f / 4.0f) * 2.0f;
    EXPECT_EQ(arc.m_Vertices[2], Math::Vector3D(c, 0.5f, c));
    EXPECT_EQ(arc.m_Vertices[4], Math::Vector3D(c, 0.5f, -c));
    EXPECT_EQ(arc.m_Vertices[10], Math::Vector3D(0.0f, 0.5f, 0.0f));
    EXPECT_EQ(arc.m_Vertices[11], Math::Vector3D(0.0f, -0.5f, 0.0f));
}

TEST(ColliderArcTest, WiderThanHalfTurnBecomesAHalfDiscWithoutInnerRadius)
{
    ColliderArc arc;
    arc.BuildArc(200.0f, 5.0f, 2.0f, 1.0f);
    ASSERT_EQ(arc.m_Vertices.size(), 12u);
    EXPECT_EQ(arc.m_Vertices[2], Math::Vector3D(0.0f, 0.5f, 5.0f));
    EXPECT_EQ(arc.m_Vertices[4], Math::Vector3D(0.0f, 0.5f, -5.0f));
    EXPECT_EQ(arc.m_Vertices[10], Math::Vector3D(0.0f, 0.5f, 0.0f));
}

TEST(ColliderArcTest, RadiiGivenTheWrongWayRoundAreExchanged)
{
    ColliderArc arc;
    arc.BuildArc(90.0f, 1.0f, 3.0f, 1.0f);
    ASSERT_EQ(arc.m_Vertices.size(), 14u);
    EXPECT_EQ(arc.m_Vertices[0], Math::Vector3D(3.0f, 0.5f, 0.0f));
    const float inner = std::cos(3.1415927f / 4.0f);
    EXPECT_EQ(arc.m_Vertices[10], Math::Vector3D(inner, 0.5f, inner));
    EXPECT_EQ(arc.m_Vertices[12], Math::Vector3D(inner, 0.5f, -inner));
}

TEST(ColliderArcTest, NegativeAngleBecomesZero)
{
    ColliderArc arc;
    arc.BuildArc(-30.0f, 2.0f, 0.0f, 1.0f);
    ASSERT_EQ(arc.m_Vertices.size(), 12u);
    for (int i = 0; i < 10; i += 2)
        EXPECT_EQ(arc.m_Vertices[static_cast<std::size_t>(i)], Math::Vector3D(2.0f, 0.5f, 0.0f));
}

TEST(ColliderArcTest, BoundsAlwaysHoldThePositionAndIgnoreScale)
{
    Transform transform;
    transform.m_Position = Math::Point3D(1.0f, 1.0f, 1.0f);
    transform.m_Scale = Math::Vector3D(10.0f, 10.0f, 10.0f);
    ColliderArc arc;
    arc.transform = &transform;
    arc.BuildArc(60.0f, 3.0f, 2.0f, 2.0f);
    arc.UpdateBounds();
    // Every vertex lies at x > 1, yet the running minimum starts at zero.
    EXPECT_FLOAT_EQ(arc.min.x, 1.0f);
    EXPECT_FLOAT_EQ(arc.max.x, 4.0f);
    EXPECT_FLOAT_EQ(arc.max.y, 2.0f);
}

TEST(ColliderArcTest, SupportTurnsTheVerticesAndWithoutVerticesIsTheWorldOrigin)
{
    Transform transform;
    transform.m_Position = Math::Point3D(0.0f, 0.0f, 7.0f);
    ColliderArc arc;
    arc.transform = &transform;
    EXPECT_EQ(arc.GetSupport(Math::Vector3D(1.0f, 0.0f, 0.0f)), Math::Point3D());
    arc.BuildArc(90.0f, 2.0f, 0.0f, 1.0f);
    transform.m_Rotation = Math::Quaternion::CreateFromEuler(0.0f, 180.0f, 0.0f);
    const Math::Point3D far = arc.GetSupport(Math::Vector3D(-1.0f, 1.0f, 0.0f));
    EXPECT_NEAR(far.x, -2.0f, 1e-5f);
    EXPECT_NEAR(far.y, 0.5f, 1e-5f);
    EXPECT_NEAR(far.z, 7.0f, 1e-5f);
}

TEST(ColliderArcTest, BuildArcIsAScriptMethodOfFourFloats)
{
    const Meta::Method* build = Meta::Get<ColliderArc>()->FindMethod("BuildArc");
    ASSERT_NE(build, nullptr);
    ColliderArc arc;
    std::vector<Meta::Any> arguments = {Meta::Any::Make(45.0f), Meta::Any::Make(2.0f), Meta::Any::Make(1.0f),
                                        Meta::Any::Make(1.0f)};
    build->Call(&arc, arguments);
    EXPECT_EQ(arc.m_Vertices.size(), 14u);
}

using ColliderScriptTest = LuaTestState;

TEST_F(ColliderScriptTest, ScriptsBuildArcsAndSetCubeDimensions)
{
    ColliderArc arc;
    ColliderCube cube;
    SetGlobal("arc", &arc);
    SetGlobal("cube", &cube);
    EXPECT_EQ(Run("arc:BuildArc(200, 5, 2, 1)"), "");
    EXPECT_EQ(arc.m_Vertices.size(), 12u);
    EXPECT_EQ(Run("cube.Dimensions = Vector3D(2, 4, 6)"), "");
    EXPECT_EQ(cube.m_Vertices[0], Math::Vector3D(1.0f, 2.0f, 3.0f));
    EXPECT_DOUBLE_EQ(Number("cube.Dimensions.y"), 4.0);
}
