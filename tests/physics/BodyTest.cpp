#include "physics/Body.h"

#include "PhysicsTestWorld.h"
#include "support/ReportCapture.h"
#include "utilities/Meta/Data.h"
#include "utilities/lua/luabridge/LuaTestState.h"

#include <gtest/gtest.h>

TEST(BodyTest, PropertiesAreRegisteredInOrderWithTheirDefaults)
{
    const Meta::Data* type = Meta::FindData("PhysicsBody");
    ASSERT_NE(type, nullptr);
    std::vector<std::string> names;
    for (const auto& [name, member] : type->m_Members.Items())
        names.push_back(name);
    const std::vector<std::string> expected = {"Velocity", "Material", "Group", "List", "Ghost", "Gravity"};
    EXPECT_EQ(names, expected);
    ASSERT_EQ(type->m_Dependencies.size(), 1u);
    EXPECT_EQ(type->m_Dependencies[0], "Transform");
    for (const char* method : {"AddToList", "AddVelocity", "RemoveFromList"})
        EXPECT_NE(type->FindMethod(method), nullptr) << method;

    const PhysicsBody body;
    EXPECT_EQ(body.Velocity, Math::Vector3D());
    EXPECT_EQ(body.Gravity, Math::Vector3D());
    EXPECT_EQ(body.Group, 0);
    EXPECT_TRUE(body.m_list.empty());
    EXPECT_FALSE(body.Ghost);
    EXPECT_FLOAT_EQ(body.Material.Friction, 0.0f);
    EXPECT_FLOAT_EQ(body.Material.Bounciness, 1.0f);
    EXPECT_FLOAT_EQ(body.Material.Density, 1.0f);
}

TEST(BodyTest, RemoveFromListRemovesOnlyTheFirstOfAValueListedTwice)
{
    PhysicsBody body;
    body.AddToList(3);
    body.AddToList(5);
    body.AddToList(3);
    body.RemoveFromList(3);
    EXPECT_EQ(body.m_list, (std::vector<int32_t>{5, 3}));
    body.RemoveFromList(7);
    EXPECT_EQ(body.m_list, (std::vector<int32_t>{5, 3}));
}

TEST(BodyTest, MassIsDensityTimesScaleVolumeAndZeroMassHasZeroInverse)
{
    Transform transform;
    transform.m_Scale = Math::Vector3D(2.0f, 3.0f, 0.5f);
    PhysicsBody body;
    body.transform = &transform;
    body.Material.Density = 2.0f;
    EXPECT_FLOAT_EQ(body.GetMass(), 6.0f);
    EXPECT_FLOAT_EQ(body.GetInverseMass(), 1.0f / 6.0f);
    transform.m_Scale.z = 0.0f;
    EXPECT_FLOAT_EQ(body.GetInverseMass(), 0.0f);
    transform.m_Scale.z = 1.0f;
    body.Material.Density = -1.0f;
    EXPECT_FLOAT_EQ(body.GetInverseMass(), 0.0f);
}

TEST(BodyTest, BodyJoinsItsSpaceInOrderAndLeavesKeepingTheOrder)
{
    PhysicsTestWorld world;
    GameObject* first = world.Ball(Math::Point3D(0.0f, 0.0f, 0.0f), 1.0f);
    GameObject* second = world.Ball(Math::Point3D(10.0f, 0.0f, 0.0f), 1.0f);
    GameObject* third = world.Ball(Math::Point3D(20.0f, 0.0f, 0.0f), 1.0f);
    ASSERT_EQ(world.system->m_Bodies.size(), 3u);
    EXPECT_EQ(BodyOf(first).transform, first->GetComponent<Transform>());
    second->Destroy();
    world.space.GarbageCollectObjects();
    EXPECT_EQ(world.system->m_Bodies, (std::vector<PhysicsBody*>{&BodyOf(first), &BodyOf(third)}));
}

TEST(BodyTest, BodyWithoutTransformIsReportedAndStaysStill)
{
    PhysicsTestWorld world;
    ReportCapture reports;
    GameObject* bare = world.space.CreateObject(MakeArchetype("BareBody", {"PhysicsBody"}));
    EXPECT_TRUE(reports.Holds("PhysicsBody needs transform component"));
    EXPECT_TRUE(reports.Holds("PhysicsBody::Initialize"));
    BodyOf(bare).Velocity = Math::Vector3D(1.0f, 0.0f, 0.0f);
    world.Step();
    EXPECT_EQ(BodyOf(bare).Velocity, Math::Vector3D(1.0f, 0.0f, 0.0f));
}

TEST(BodyTest, ClonedBodyCopiesEveryValue)
{
    PhysicsBody body;
    body.Velocity = Math::Vector3D(1.0f, 2.0f, 3.0f);
    body.Material.Bounciness = 0.25f;
    body.Group = 4;
    body.AddToList(2);
    body.Ghost = true;
    body.Gravity = Math::Vector3D(0.0f, -9.8f, 0.0f);
    std::unique_ptr<Component> copy(body.Clone());
    auto& clone = static_cast<PhysicsBody&>(*copy);
    EXPECT_EQ(clone.Velocity, body.Velocity);
    EXPECT_EQ(clone.Material, body.Material);
    EXPECT_EQ(clone.Group, 4);
    EXPECT_EQ(clone.m_list, body.m_list);
    EXPECT_TRUE(clone.Ghost);
    EXPECT_EQ(clone.Gravity, body.Gravity);
}

using BodyScriptTest = LuaTestState;

TEST_F(BodyScriptTest, ScriptsReadAndWriteEveryPropertyAndCallTheListMethods)
{
    PhysicsBody body;
    SetGlobal("body", &body);
    EXPECT_EQ(Run("body.Velocity = Vector3D(1, 2, 3); body:AddVelocity(Vector3D(1, 0, 0))"), "");
    EXPECT_EQ(body.Velocity, Math::Vector3D(2.0f, 2.0f, 3.0f));
    EXPECT_EQ(Run("local m = Material(); m.Friction = 0.5; m.Bounciness = 0.25; m.Density = 3; body.Material = m"), "");
    EXPECT_EQ(body.Material, (Material{0.5f, 0.25f, 3.0f}));
    EXPECT_EQ(Run("body.Group = 7; body.Ghost = true; body.Gravity = Vector3D(0, -10, 0)"), "");
    EXPECT_EQ(body.Group, 7);
    EXPECT_TRUE(body.Ghost);
    EXPECT_EQ(body.Gravity, Math::Vector3D(0.0f, -10.0f, 0.0f));
    EXPECT_EQ(Run("body:AddToList(2); body:AddToList(4); body:RemoveFromList(2)"), "");
    EXPECT_EQ(body.m_list, (std::vector<int32_t>{4}));
    EXPECT_DOUBLE_EQ(Number("#body.List"), 1.0);
    EXPECT_DOUBLE_EQ(Number("body.List[1]"), 4.0);
    EXPECT_DOUBLE_EQ(Number("body.Material.Density"), 3.0);
    EXPECT_EQ(Run("body.List = {5, 6, 5}"), "");
    EXPECT_EQ(body.m_list, (std::vector<int32_t>{5, 6, 5}));
    EXPECT_NE(Run("body.List = {5, 'six'}"), "");
    EXPECT_EQ(body.m_list, (std::vector<int32_t>{5, 6, 5}));
    lua_settop(L, 0);
}
