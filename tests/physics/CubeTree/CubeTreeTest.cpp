// The cube tree's insertion, removal, refresh and pair listing on small hand-made scenes.
#include "physics/CubeTree/CubeTree.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "physics/CubeTree/LeafByLeafScan.h"
#include "physics/CubeTree/TestBoxCollider.h"
#include "support/ReportCapture.h"

namespace
{
Math::Point3D P(float x, float y, float z)
{
    return Math::Point3D(x, y, z);
}

// A unit cube with its minimum corner at (x, y, z).
std::unique_ptr<TestBoxCollider> UnitCube(float x, float y, float z)
{
    return std::make_unique<TestBoxCollider>(P(x, y, z), P(x + 1, y + 1, z + 1));
}

// The index of the live leaf that holds `collider`, or -1.
int32_t LeafOf(const CubeTree& tree, const Collider* collider)
{
    const auto& nodes = tree.GetNodes();
    for (size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].collider == collider && nodes[i].free == 0)
            return static_cast<int32_t>(i);
    return -1;
}

bool SameBox(const CubeTreeNode& node, const Collider& c)
{
    return node.min.x == c.min.x && node.min.y == c.min.y && node.min.z == c.min.z && node.max.x == c.max.x &&
           node.max.y == c.max.y && node.max.z == c.max.z;
}
}

TEST(CubeTree, AnEmptyTreeGivesNoPairsAndItsUpdateDoesNothing)
{
    CubeTree tree;
    tree.Update();
    EXPECT_EQ(tree.GetRoot(), -1);
    EXPECT_TRUE(tree.QueryPairs().empty());
    EXPECT_EQ(tree.GetMargin(), 0.0f);
}

TEST(CubeTree, ATreeWithOneColliderGivesNoPairsAndStillUpdatesItsBoundsEachFrame)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    tree.Insert(a.get());
    for (int frame = 1; frame <= 3; ++frame)
    {
        a->Place(P(frame, 0, 0), P(frame + 2.0f, 1, 1));
        tree.Update();
        EXPECT_TRUE(tree.QueryPairs().empty());
        EXPECT_EQ(a->updates, frame);
        EXPECT_TRUE(SameBox(tree.GetNodes()[tree.GetRoot()], *a));
    }
}

TEST(CubeTree, TwoCollidersWithExactlyTouchingBoxesAreReported)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto faceTouch = UnitCube(1, 0, 0);
    auto cornerTouch = UnitCube(-1, -1, -1);
    tree.Insert(a.get());
    tree.Insert(faceTouch.get());
    tree.Insert(cornerTouch.get());
    tree.Update();
    const auto& pairs = tree.QueryPairs();
    ASSERT_EQ(pairs.size(), 2u);
    for (const auto& [first, second] : pairs)
        EXPECT_TRUE(first == a.get() || second == a.get());
}

TEST(CubeTree, BoxesApartByAHairAreNotReported)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto b = UnitCube(1.001f, 0, 0);
    tree.Insert(a.get());
    tree.Insert(b.get());
    tree.Update();
    EXPECT_TRUE(tree.QueryPairs().empty());
}

TEST(CubeTree, RemovingTheLastColliderEmptiesTheTreeAndTheNextInsertTakesAFreshNode)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto b = UnitCube(5, 0, 0);
    tree.Insert(a.get());
    tree.Remove(a.get());
    EXPECT_EQ(tree.GetRoot(), -1);
    tree.Update();
    EXPECT_TRUE(tree.QueryPairs().empty());
    EXPECT_EQ(a->updates, 0);

    // The lone leaf's node is released but not offered for reuse: the next leaf is a fresh node.
    tree.Insert(b.get());
    EXPECT_EQ(tree.GetNodes().size(), 2u);
    EXPECT_EQ(tree.GetRoot(), 1);
    EXPECT_EQ(tree.GetNodes()[1].collider, b.get());
}

TEST(CubeTree, RemovingTheLastCollidersEmptiesTheTreeAndTheNextInsertTakesARecycledNode)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto b = UnitCube(0.5f, 0, 0);
    auto c = UnitCube(9, 0, 0);
    tree.Insert(a.get());
    tree.Insert(b.get());
    const size_t nodeCount = tree.GetNodes().size();
    tree.Remove(a.get());
    tree.Remove(b.get());
    EXPECT_EQ(tree.GetRoot(), -1);
    EXPECT_TRUE(tree.QueryPairs().empty());

    tree.Insert(c.get());
    EXPECT_EQ(tree.GetNodes().size(), nodeCount);
    EXPECT_EQ(tree.GetNodes()[tree.GetRoot()].collider, c.get());
    tree.Update();
    EXPECT_EQ(c->updates, 1);
}

TEST(CubeTree, RemovingAColliderWithoutALeafChangesNothing)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto b = UnitCube(0.5f, 0, 0);
    auto stranger = UnitCube(0, 0, 0);
    tree.Insert(a.get());
    tree.Insert(b.get());
    tree.Remove(stranger.get());
    tree.Remove(nullptr);
    tree.Update();
    EXPECT_EQ(tree.QueryPairs().size(), 1u);
}

TEST(CubeTree, RemovingAColliderDropsItsPairsAndKeepsTheOthers)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto b = UnitCube(0.5f, 0, 0);
    auto c = UnitCube(0.25f, 0.5f, 0);
    tree.Insert(a.get());
    tree.Insert(b.get());
    tree.Insert(c.get());
    tree.Update();
    EXPECT_EQ(tree.QueryPairs().size(), 3u);
    tree.Remove(b.get());
    tree.Update();
    const auto& pairs = tree.QueryPairs();
    ASSERT_EQ(pairs.size(), 1u);
    EXPECT_TRUE((pairs[0].first == a.get() && pairs[0].second == c.get()) ||
                (pairs[0].first == c.get() && pairs[0].second == a.get()));
}

TEST(CubeTree, AColliderThatMovesEveryFrameIsReinsertedEveryFrameAndTheNodeCountStaysConstant)
{
    CubeTree tree;
    std::vector<std::unique_ptr<TestBoxCollider>> still;
    for (int i = 0; i < 4; ++i)
    {
        still.push_back(UnitCube(3.0f * i, 0, 0));
        tree.Insert(still.back().get());
    }
    auto mover = UnitCube(0, 0, 0);
    tree.Insert(mover.get());
    tree.Update();
    const size_t nodeCount = tree.GetNodes().size();
    for (int frame = 1; frame <= 40; ++frame)
    {
        const float x = 0.25f * frame;
        mover->Place(P(x, 0, 0), P(x + 1, 1, 1));
        tree.Update();
        // Only a re-insertion refits a leaf to its moved collider.
        const int32_t leaf = LeafOf(tree, mover.get());
        ASSERT_NE(leaf, -1);
        EXPECT_TRUE(SameBox(tree.GetNodes()[leaf], *mover)) << "frame " << frame;
        EXPECT_EQ(tree.GetNodes().size(), nodeCount) << "frame " << frame;
        tree.QueryPairs();
    }
}

TEST(CubeTree, AColliderThatOnlyShrinksKeepsItsOldBox)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto b = UnitCube(0.9f, 0, 0);
    tree.Insert(a.get());
    tree.Insert(b.get());
    a->Place(P(0, 0, 0), P(0.5f, 1, 1));
    tree.Update();
    const CubeTreeNode& leaf = tree.GetNodes()[LeafOf(tree, a.get())];
    EXPECT_EQ(leaf.max.x, 1.0f);
    EXPECT_EQ(tree.QueryPairs().size(), 1u);
}

TEST(CubeTree, EqualInsertionCostsAlwaysTakeTheRightChild)
{
    CubeTree tree;
    auto a = UnitCube(0, 0, 0);
    auto b = UnitCube(0, 0, 0);
    auto c = UnitCube(0, 0, 0);
    tree.Insert(a.get());
    tree.Insert(b.get());
    const auto& nodes = tree.GetNodes();
    const CubeTreeNode& root = nodes[tree.GetRoot()];
    ASSERT_FALSE(root.IsLeaf());
    EXPECT_EQ(nodes[root.left].collider, b.get());
    EXPECT_EQ(nodes[root.right].collider, a.get());

    // Both children grow by nothing: the tie goes right, where c pairs up with a.
    tree.Insert(c.get());
    const CubeTreeNode& top = tree.GetNodes()[tree.GetRoot()];
    EXPECT_EQ(tree.GetNodes()[top.left].collider, b.get());
    const CubeTreeNode& right = tree.GetNodes()[top.right];
    ASSERT_FALSE(right.IsLeaf());
    EXPECT_EQ(tree.GetNodes()[right.left].collider, c.get());
    EXPECT_EQ(tree.GetNodes()[right.right].collider, a.get());
}

TEST(CubeTree, ATreeDeeperThanTheQueryStackIsReportedAndTheQueryEnds)
{
    // Identical boxes tie everywhere, so each goes right and the tree becomes one long chain.
    CubeTree tree;
    std::vector<std::unique_ptr<TestBoxCollider>> boxes;
    for (int i = 0; i < CubeTree::kStackSize + 100; ++i)
    {
        boxes.push_back(UnitCube(0, 0, 0));
        tree.Insert(boxes.back().get());
    }
    ReportCapture capture;
    const auto& pairs = tree.QueryPairs();
    EXPECT_FALSE(pairs.empty());
    EXPECT_TRUE(capture.Holds("sp < stack_size"));
    EXPECT_TRUE(capture.Holds("CubeTree"));
}

TEST(CubeTree, TwoLeavesBesideATreeDeeperThanTheQueryStackListTheirPairsAsTheLeafByLeafScanDoes)
{
    // a, then the first cube: a root with the cube on the left and a on the right. b lands beside a,
    // and every further cube, costing nothing on the left, lengthens a chain there. The two leaves
    // on the right come off the stack first, with the chain below them, which they overlap.
    CubeTree tree;
    auto a = std::make_unique<TestBoxCollider>(P(0.5f, 0.5f, 0.5f), P(1.5f, 1.5f, 1.5f));
    auto b = std::make_unique<TestBoxCollider>(P(0.6f, 0.6f, 0.6f), P(1.6f, 1.6f, 1.6f));
    std::vector<std::unique_ptr<TestBoxCollider>> chain;
    tree.Insert(a.get());
    chain.push_back(UnitCube(0, 0, 0));
    tree.Insert(chain.back().get());
    tree.Insert(b.get());
    for (int i = 0; i < CubeTree::kStackSize + 100; ++i)
    {
        chain.push_back(UnitCube(0, 0, 0));
        tree.Insert(chain.back().get());
    }
    const CubeTreeNode& root = tree.GetNodes()[tree.GetRoot()];
    const CubeTreeNode& right = tree.GetNodes()[root.right];
    ASSERT_FALSE(right.IsLeaf());
    EXPECT_EQ(tree.GetNodes()[right.left].collider, b.get());
    EXPECT_EQ(tree.GetNodes()[right.right].collider, a.get());

    ReportCapture capture;
    const auto& pairs = tree.QueryPairs();
    EXPECT_TRUE(capture.Holds("sp < stack_size"));
    EXPECT_FALSE(pairs.empty());
    EXPECT_TRUE(pairs == LeafByLeafScan::Pairs(tree));
}
