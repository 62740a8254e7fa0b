#include "Graphics_Engine/RenderLists.h"

#include "Graphics_Engine/Frustum.h"
#include "Graphics_Engine/ShaderLookup.h"
#include "Graphics_Engine/Spaces/SpaceRenderData.h"
#include "support/AllocationCounter.h"
#include "support/TestGraphicsComponent.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Graphics;

namespace
{
// Stand-in programs: only their addresses are used, as keys.
char g_Programs[3];
ShaderProgram* const kDeferredProgram = reinterpret_cast<ShaderProgram*>(&g_Programs[0]);
ShaderProgram* const kForwardProgram = reinterpret_cast<ShaderProgram*>(&g_Programs[1]);
ShaderProgram* const kBrokenProgram = reinterpret_cast<ShaderProgram*>(&g_Programs[2]);

// Resolves by the pixel name: "ForwardPixel" is forward, "BrokenPixel" did not load.
class FakeShaderLookup : public ShaderLookup
{
public:
    ShaderProgram* Resolve(ShaderComponent& shaders) override
    {
        if (!shaders.m_Dirty)
            return shaders.m_Shader;
        ++resolved;
        shaders.m_Shader = shaders.Pixel == "ForwardPixel"  ? kForwardProgram
                           : shaders.Pixel == "BrokenPixel" ? kBrokenProgram
                                                            : kDeferredProgram;
        ++shaders.m_ChangeCount;
        shaders.m_Dirty = false;
        return shaders.m_Shader;
    }
    bool IsForward(const ShaderProgram* program) const override { return program == kForwardProgram; }
    bool IsLoaded(const ShaderProgram* program) const override { return program && program != kBrokenProgram; }

    int resolved = 0;
};

class RenderListsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_Space = std::make_shared<SpaceRenderData>();
        QuadTree& tree = m_Space->Tree;
        tree.m_Origin = Math::Point3D(-50.0f, 0.0f, -50.0f);
        tree.m_CellSize = Math::Vector3D(10.0f, 20.0f, 10.0f);
        tree.m_CellsAcross = 10;
        tree.m_CellsDown = 10;
        tree.Build();
        m_Lists.AddSpace(m_Space);
    }

    // A component at `position` drawn with the given pixel shader name.
    TestGraphicsComponent& Add(const Math::Point3D& position, unsigned model = 1, const char* pixel = "BasePixel")
    {
        m_Components.push_back(std::make_unique<TestGraphicsComponent>(model));
        TestGraphicsComponent& component = *m_Components.back();
        component.m_ShaderComponent.Pixel = pixel;
        m_Indices.push_back(m_Space->Tree.AddObject(&component, position, Math::Vector3D(1, 1, 1), Math::Quaternion()));
        return component;
    }

    void Build(const Math::Matrix4& viewProjection = Math::Matrix4())
    {
        m_Space->Tree.Update();
        m_Lists.Build(viewProjection, Math::Point3D(0, 0, 0), m_Shaders);
    }

    std::shared_ptr<SpaceRenderData> m_Space;
    RenderLists m_Lists;
    FakeShaderLookup m_Shaders;
    std::vector<std::unique_ptr<TestGraphicsComponent>> m_Components;
    std::vector<int> m_Indices;
};

// A frustum that takes in everything within 100 units of the origin.
Math::Matrix4 Wide()
{
    return Math::Matrix4(0.01f, 0, 0, 0, 0, 0.01f, 0, 0, 0, 0, 0.01f, 0, 0, 0, 0, 1);
}
}

TEST_F(RenderListsTest, DeferredObjectsAreGroupedByModelAndProgramWithTheirWorldMatrices)
{
    TestGraphicsComponent& a = Add(Math::Point3D(1, 0, 1), 1);
    TestGraphicsComponent& b = Add(Math::Point3D(2, 0, 2), 2);
    TestGraphicsComponent& c = Add(Math::Point3D(3, 0, 3), 1);
    Build(Wide());
    ASSERT_EQ(m_Lists.m_Deferred.size(), 2u);
    const auto& first = m_Lists.m_Deferred.at(DrawKey{1, kDeferredProgram});
    ASSERT_EQ(first.size(), 2u);
    EXPECT_EQ(first[0].Component, &a);
    EXPECT_EQ(first[1].Component, &c);
    EXPECT_FLOAT_EQ(first[1].World.m[3][0], 3.0f);
    EXPECT_FLOAT_EQ(first[1].World.m[3][2], 3.0f);
    EXPECT_EQ(m_Lists.m_Deferred.at(DrawKey{2, kDeferredProgram}).front().Component, &b);
    EXPECT_TRUE(m_Lists.m_Forward.empty());
}

TEST_F(RenderListsTest, ForwardListIsSortedFarthestFirst)
{
    TestGraphicsComponent& nearest = Add(Math::Point3D(1, 0, 0), 1, "ForwardPixel");
    TestGraphicsComponent& farthest = Add(Math::Point3D(9, 0, 0), 1, "ForwardPixel");
    TestGraphicsComponent& middle = Add(Math::Point3D(0, 0, -5), 1, "ForwardPixel");
    Build(Wide());
    std::vector<const BaseGraphicsComponent*> order;
    for (const ForwardRecord& record : m_Lists.m_Forward)
        order.push_back(record.Component);
    EXPECT_EQ(order, (std::vector<const BaseGraphicsComponent*>{&farthest, &middle, &nearest}));
    EXPECT_FLOAT_EQ(m_Lists.m_Forward.front().DistanceSquared, 81.0f);
    EXPECT_EQ(m_Lists.m_Forward.front().Shader, kForwardProgram);
    EXPECT_TRUE(m_Lists.m_Deferred.empty());
}

TEST_F(RenderListsTest, TwoForwardObjectsAtTheSameDistanceDrawInArrivalOrder)
{
    // Same distance from the camera at the origin, in cells that the query meets in this order.
    TestGraphicsComponent& first = Add(Math::Point3D(-4, 0, -3), 1, "ForwardPixel");
    TestGraphicsComponent& second = Add(Math::Point3D(4, 0, 3), 1, "ForwardPixel");
    TestGraphicsComponent& third = Add(Math::Point3D(3, 0, 4), 1, "ForwardPixel");
    TestGraphicsComponent& farther = Add(Math::Point3D(8, 0, 0), 1, "ForwardPixel");
    Build(Wide());
    std::vector<int> arrival;
    m_Space->Tree.GetVisibleObjects(Frustum(Wide()), arrival);
    std::vector<const BaseGraphicsComponent*> expected{&farther};
    for (int index : arrival)
        if (m_Space->Tree.GetObject(index).Component != &farther)
            expected.push_back(m_Space->Tree.GetObject(index).Component);
    std::vector<const BaseGraphicsComponent*> order;
    for (const ForwardRecord& record : m_Lists.m_Forward)
        order.push_back(record.Component);
    EXPECT_EQ(order, expected);
    (void)first;
    (void)second;
    (void)third;
}

TEST_F(RenderListsTest, ForwardTiesKeepArrivalOrderWithinOneNode)
{
    // Both in the same leaf: the node's set gives them in index order.
    TestGraphicsComponent& first = Add(Math::Point3D(3, 0, 4), 1, "ForwardPixel");
    TestGraphicsComponent& second = Add(Math::Point3D(4, 0, 3), 1, "ForwardPixel");
    Build(Wide());
    ASSERT_EQ(m_Lists.m_Forward.size(), 2u);
    EXPECT_EQ(m_Lists.m_Forward.front().Component, &first);
    EXPECT_EQ(m_Lists.m_Forward.back().Component, &second);
}

TEST_F(RenderListsTest, KeysLeftEmptyAreDropped)
{
    Add(Math::Point3D(1, 0, 1), 1);
    const int moving = m_Indices.back();
    Add(Math::Point3D(2, 0, 2), 2);
    Build(Wide());
    ASSERT_EQ(m_Lists.m_Deferred.size(), 2u);
    m_Space->Tree.RemoveObject(moving);
    Build(Wide());
    ASSERT_EQ(m_Lists.m_Deferred.size(), 1u);
    EXPECT_EQ(m_Lists.m_Deferred.begin()->first.ModelId, 2u);
}

TEST_F(RenderListsTest, CulledObjectsAreAbsent)
{
    TestGraphicsComponent& seen = Add(Math::Point3D(-45, 0, -45), 1);
    Add(Math::Point3D(45, 0, 45), 1);
    // The clip box of this matrix covers x and z from -50 to -40 and every height.
    const Math::Matrix4 corner(0.2f, 0, 0, 0, 0, 0.001f, 0, 0, 0, 0, 0.2f, 0, 9.0f, 0, 9.0f, 1);
    Build(corner);
    ASSERT_EQ(m_Lists.m_Deferred.size(), 1u);
    const auto& records = m_Lists.m_Deferred.begin()->second;
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].Component, &seen);
}

TEST_F(RenderListsTest, HiddenObjectsAndInvisibleSpacesAreAbsent)
{
    Add(Math::Point3D(1, 0, 1), 1);
    m_Space->Tree.GetObject(m_Indices.back()).Visible = false;
    Build(Wide());
    EXPECT_TRUE(m_Lists.m_Deferred.empty());
    Add(Math::Point3D(2, 0, 2), 1);
    m_Space->Visible = false;
    Build(Wide());
    EXPECT_TRUE(m_Lists.m_Deferred.empty());
}

TEST_F(RenderListsTest, ObjectWhoseProgramDidNotLoadIsSkipped)
{
    Add(Math::Point3D(1, 0, 1), 1, "BrokenPixel");
    Add(Math::Point3D(2, 0, 2), 1, "BrokenPixel");
    TestGraphicsComponent& good = Add(Math::Point3D(3, 0, 3), 1);
    Build(Wide());
    ASSERT_EQ(m_Lists.m_Deferred.size(), 1u);
    EXPECT_EQ(m_Lists.m_Deferred.begin()->second.front().Component, &good);
}

TEST_F(RenderListsTest, ShaderNamesAreResolvedOnlyWhenDirty)
{
    TestGraphicsComponent& component = Add(Math::Point3D(1, 0, 1), 1);
    Build(Wide());
    Build(Wide());
    EXPECT_EQ(m_Shaders.resolved, 1);
    component.m_ShaderComponent.SetStage(4, "ForwardPixel");
    Build(Wide());
    EXPECT_EQ(m_Shaders.resolved, 2);
    EXPECT_EQ(m_Lists.m_Forward.size(), 1u);
    EXPECT_TRUE(m_Lists.m_Deferred.empty());
}

TEST_F(RenderListsTest, SecondIdenticalFrameReusesStorageAndAllocatesNothing)
{
    for (int i = 0; i < 40; ++i)
        Add(Math::Point3D(static_cast<float>(i % 9) - 4.0f, 0, static_cast<float>(i / 9) - 2.0f),
            static_cast<unsigned>(i % 3), i % 4 == 0 ? "ForwardPixel" : "BasePixel");
    Build(Wide());
    const std::size_t capacity = m_Lists.m_Deferred.begin()->second.capacity();
    const std::size_t forward = m_Lists.m_Forward.size();
    ASSERT_EQ(forward, 10u);

    const AllocationCount before;
    m_Lists.Build(Wide(), Math::Point3D(0, 0, 0), m_Shaders);
    EXPECT_EQ(before.Since(), 0u);
    EXPECT_EQ(m_Lists.m_Deferred.begin()->second.capacity(), capacity);
    EXPECT_EQ(m_Lists.m_Forward.size(), forward);
}

TEST_F(RenderListsTest, SpaceIsListedOnceAndCanBeUnlisted)
{
    m_Lists.AddSpace(m_Space);
    EXPECT_EQ(m_Lists.m_Spaces.size(), 1u);
    m_Lists.RemoveSpace(m_Space.get());
    EXPECT_TRUE(m_Lists.m_Spaces.empty());
}
