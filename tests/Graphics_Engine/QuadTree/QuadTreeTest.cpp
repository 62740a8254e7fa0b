#include "Graphics_Engine/QuadTree/QuadTree.h"

#include "Graphics_Engine/Frustum.h"
#include "engine/GameObject.h"
#include "support/TestGraphicsComponent.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Graphics;

namespace
{
const Math::Quaternion kNoRotation;
const Math::Vector3D kUnit(1.0f, 1.0f, 1.0f);

// A grid of `across` by `down` cells of 10 by 10 by 10 from the origin.
void MakeGrid(QuadTree& tree, int across, int down)
{
    tree.m_Origin = Math::Point3D(0.0f, 0.0f, 0.0f);
    tree.m_CellSize = Math::Vector3D(10.0f, 10.0f, 10.0f);
    tree.m_CellsAcross = across;
    tree.m_CellsDown = down;
    tree.Build();
}

std::vector<int> VisibleEverywhere(const QuadTree& tree)
{
    std::vector<int> found;
    tree.GetVisibleObjects(Frustum(), found);
    return found;
}

bool Holds(const std::vector<int>& indices, int index)
{
    return std::find(indices.begin(), indices.end(), index) != indices.end();
}
}

TEST(QuadTreeTest, UnbuiltTreeHasNoRootAndQueriesYieldNothing)
{
    QuadTree tree;
    TestGraphicsComponent component;
    GameObject owner;
    component.m_Owner = &owner;
    tree.AddObject(&component, Math::Point3D(1, 0, 1), kUnit, kNoRotation);
    tree.Update();
    EXPECT_EQ(tree.GetRoot(), -1);
    EXPECT_TRUE(VisibleEverywhere(tree).empty());
    EXPECT_TRUE(tree.GetObjectsInRadius(Math::Point3D(1, 0, 1), 100.0f).empty());
    component.m_Owner = nullptr;
}

TEST(QuadTreeTest, ObjectsAddedBeforeBuildWaitThenAppearAfterBuild)
{
    QuadTree tree;
    TestGraphicsComponent component;
    const int index = tree.AddObject(&component, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    tree.Update();
    EXPECT_EQ(tree.GetPending().size(), 1u);
    EXPECT_EQ(tree.GetObject(index).Node, -1);

    MakeGrid(tree, 4, 4);
    tree.Update();
    EXPECT_TRUE(tree.GetPending().empty());
    EXPECT_NE(tree.GetObject(index).Node, -1);
    EXPECT_EQ(VisibleEverywhere(tree), std::vector<int>{index});
}

TEST(QuadTreeTest, LeavesSitOnTheGridAndParentsAreTheUnionOfTheirChildren)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    // Four leaves and one parent.
    ASSERT_EQ(tree.GetNodeCount(), 5);
    EXPECT_EQ(tree.GetRoot(), 4);
    const QuadTreeNode& leaf = tree.GetNode(3);
    EXPECT_FLOAT_EQ(leaf.Center.x, 15.0f);
    EXPECT_FLOAT_EQ(leaf.Center.y, 0.0f);
    EXPECT_FLOAT_EQ(leaf.Center.z, 15.0f);
    EXPECT_FLOAT_EQ(leaf.HalfSize.x, 5.0f);
    const QuadTreeNode& root = tree.GetNode(4);
    EXPECT_FLOAT_EQ(root.Center.x, 10.0f);
    EXPECT_FLOAT_EQ(root.Center.z, 10.0f);
    EXPECT_FLOAT_EQ(root.HalfSize.x, 10.0f);
    EXPECT_FLOAT_EQ(root.HalfSize.y, 5.0f);
    EXPECT_FLOAT_EQ(root.HalfSize.z, 10.0f);
    EXPECT_EQ(root.Parent, -1);
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(root.Children[i], i);
        EXPECT_EQ(tree.GetNode(i).Parent, 4);
    }
}

TEST(QuadTreeTest, OddGridMakesTwoChildParentsAndCarriesTheCornerUp)
{
    QuadTree tree;
    MakeGrid(tree, 3, 3);
    // 9 leaves; level 2 is 2 by 2: one 4-child parent, two 2-child parents and the carried corner
    // (leaf 8); then the root over those four.
    ASSERT_EQ(tree.GetNodeCount(), 9 + 3 + 1);
    const QuadTreeNode& full = tree.GetNode(9);
    EXPECT_EQ(full.Children[0], 0);
    EXPECT_EQ(full.Children[1], 1);
    EXPECT_EQ(full.Children[2], 3);
    EXPECT_EQ(full.Children[3], 4);
    const QuadTreeNode& rightEdge = tree.GetNode(10);
    EXPECT_EQ(rightEdge.Children[0], 2);
    EXPECT_EQ(rightEdge.Children[1], 5);
    EXPECT_EQ(rightEdge.Children[2], -1);
    const QuadTreeNode& bottomEdge = tree.GetNode(11);
    EXPECT_EQ(bottomEdge.Children[0], 6);
    EXPECT_EQ(bottomEdge.Children[1], 7);
    const QuadTreeNode& root = tree.GetNode(tree.GetRoot());
    EXPECT_EQ(tree.GetRoot(), 12);
    EXPECT_EQ(root.Children[0], 9);
    EXPECT_EQ(root.Children[1], 10);
    EXPECT_EQ(root.Children[2], 11);
    EXPECT_EQ(root.Children[3], 8);
    EXPECT_EQ(tree.GetNode(8).Parent, 12);
    EXPECT_FLOAT_EQ(root.Center.x, 15.0f);
    EXPECT_FLOAT_EQ(root.HalfSize.z, 15.0f);
}

TEST(QuadTreeTest, OneByNGridHasItsRootAtCellZeroWithNoChildren)
{
    QuadTree tree;
    MakeGrid(tree, 1, 5);
    EXPECT_EQ(tree.GetRoot(), 0);
    EXPECT_EQ(tree.GetNodeCount(), 5);
    for (int child : tree.GetNode(0).Children)
        EXPECT_EQ(child, -1);

    QuadTree wide;
    MakeGrid(wide, 5, 1);
    EXPECT_EQ(wide.GetRoot(), 0);
}

TEST(QuadTreeTest, ObjectGoesToTheSmallestNodeThatLooselyContainsIt)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    // Fits inside leaf 3 (10..20 by 10..20).
    const int inside = tree.AddObject(&component, Math::Point3D(15, 0, 15), kUnit, kNoRotation);
    // Leaf 0 (x 0..10) takes objects within 1.05 times its half size: x -0.25..10.25. This one
    // reaches 10.4 and stays in the root; leaf 1 (loosely 9.75..20.25) does not hold it either.
    const int across = tree.AddObject(&component, Math::Point3D(9.9f, 0, 5), kUnit, kNoRotation);
    // This one reaches 10.2, inside the margin, so it goes into leaf 0.
    const int nearEdge = tree.AddObject(&component, Math::Point3D(9.7f, 0, 5), kUnit, kNoRotation);
    tree.Update();
    EXPECT_EQ(tree.GetObject(inside).Node, 3);
    EXPECT_EQ(tree.GetObject(across).Node, tree.GetRoot());
    EXPECT_EQ(tree.GetObject(nearEdge).Node, 0);
    EXPECT_EQ(tree.GetNode(3).Objects.count(inside), 1u);
}

TEST(QuadTreeTest, ContainmentIsStrictAtTheLooseEdge)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    // Leaf 0's loose box on x ends at 5 + 1.05 * 5; an object of scale 1 ending exactly there stays out.
    const float edge = 5.0f + 1.05f * 5.0f;
    const int onEdge = tree.AddObject(&component, Math::Point3D(edge - 0.5f, 0, 5), kUnit, kNoRotation);
    tree.Update();
    EXPECT_EQ(tree.GetObject(onEdge).Node, tree.GetRoot());
}

TEST(QuadTreeTest, ObjectLargerThanEveryCellStaysInTheRootAndEveryQueryReachingTheRootReturnsIt)
{
    QuadTree tree;
    MakeGrid(tree, 4, 4);
    TestGraphicsComponent component;
    const int big = tree.AddObject(&component, Math::Point3D(5, 0, 5), Math::Vector3D(30, 1, 30), kNoRotation);
    tree.Update();
    EXPECT_EQ(tree.GetObject(big).Node, tree.GetRoot());

    // A frustum that sees none of the cells still reaches the root.
    Math::Matrix4 lookingAway;
    lookingAway.m[3][0] = 1000.0f; // everything far off to the side of the view volume
    std::vector<int> found;
    tree.GetVisibleObjects(Frustum(lookingAway), found);
    EXPECT_EQ(found, std::vector<int>{big});
}

TEST(QuadTreeTest, QueryReturnsOnlyVisibleObjects)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    const int shown = tree.AddObject(&component, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    const int hidden = tree.AddObject(&component, Math::Point3D(15, 0, 5), kUnit, kNoRotation);
    tree.GetObject(hidden).Visible = false;
    tree.Update();
    const std::vector<int> found = VisibleEverywhere(tree);
    EXPECT_TRUE(Holds(found, shown));
    EXPECT_FALSE(Holds(found, hidden));
}

TEST(QuadTreeTest, ChildOutsideTheFrustumSkipsItsSubtree)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    const int left = tree.AddObject(&component, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    const int right = tree.AddObject(&component, Math::Point3D(15, 0, 5), kUnit, kNoRotation);
    tree.Update();
    // The clip box of the identity matrix is -1..1 on every axis, shifted here so that it covers
    // x in 4..6 (and every z): only leaf 0 (x 0..10) meets it, leaf 1 (10..20) does not.
    Math::Matrix4 view;
    view.m[3][0] = -5.0f;
    view.m[2][2] = 0.0f;
    view.m[1][1] = 0.1f;
    std::vector<int> found;
    tree.GetVisibleObjects(Frustum(view), found);
    EXPECT_TRUE(Holds(found, left));
    EXPECT_FALSE(Holds(found, right));
}

TEST(QuadTreeTest, MovedObjectIsReinsertedFromTheRoot)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    const int index = tree.AddObject(&component, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    tree.Update();
    EXPECT_EQ(tree.GetObject(index).Node, 0);
    tree.UpdateObject(index, Math::Point3D(15, 0, 15), kUnit, kNoRotation);
    EXPECT_EQ(tree.GetObject(index).Node, -1);
    EXPECT_EQ(tree.GetNode(0).Objects.count(index), 0u);
    EXPECT_EQ(tree.GetPending(), std::vector<int>{index});
    // A second move before the update does not list it twice.
    tree.UpdateObject(index, Math::Point3D(15, 0, 14), kUnit, kNoRotation);
    EXPECT_EQ(tree.GetPending().size(), 1u);
    tree.Update();
    EXPECT_EQ(tree.GetObject(index).Node, 3);
}

TEST(QuadTreeTest, RemovedIndexIsReusedFirst)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    const int first = tree.AddObject(&component, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    const int second = tree.AddObject(&component, Math::Point3D(15, 0, 5), kUnit, kNoRotation);
    tree.Update();
    tree.RemoveObject(first);
    EXPECT_TRUE(tree.GetObject(first).Removed);
    EXPECT_EQ(tree.GetNode(0).Objects.count(first), 0u);
    EXPECT_FALSE(Holds(VisibleEverywhere(tree), first));
    const int third = tree.AddObject(&component, Math::Point3D(5, 0, 15), kUnit, kNoRotation);
    EXPECT_EQ(third, first);
    EXPECT_FALSE(tree.GetObject(third).Removed);
    const int fourth = tree.AddObject(&component, Math::Point3D(5, 0, 15), kUnit, kNoRotation);
    EXPECT_EQ(fourth, second + 1);
}

TEST(QuadTreeTest, ObjectRemovedWhilePendingIsNotPlaced)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    const int index = tree.AddObject(&component, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    tree.RemoveObject(index);
    tree.Update();
    EXPECT_TRUE(VisibleEverywhere(tree).empty());
    EXPECT_EQ(tree.GetObject(index).Node, -1);
}

TEST(QuadTreeTest, RebuildPutsEveryLiveObjectBackAndDropsRemovedOnes)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    TestGraphicsComponent component;
    const int kept = tree.AddObject(&component, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    const int dropped = tree.AddObject(&component, Math::Point3D(15, 0, 5), kUnit, kNoRotation);
    tree.Update();
    tree.RemoveObject(dropped);
    MakeGrid(tree, 4, 4);
    EXPECT_EQ(tree.GetPending(), std::vector<int>{kept});
    tree.Update();
    EXPECT_EQ(VisibleEverywhere(tree), std::vector<int>{kept});
}

TEST(QuadTreeTest, ObjectsInRadiusComeFromTheirOwnersAndUseTheHalfWidthNodeBox)
{
    QuadTree tree;
    MakeGrid(tree, 2, 2);
    GameObject nearOwner;
    GameObject farOwner;
    TestGraphicsComponent nearComponent;
    TestGraphicsComponent farComponent;
    nearComponent.m_Owner = &nearOwner;
    farComponent.m_Owner = &farOwner;
    tree.AddObject(&nearComponent, Math::Point3D(5, 0, 5), kUnit, kNoRotation);
    tree.AddObject(&farComponent, Math::Point3D(15, 0, 15), kUnit, kNoRotation);
    tree.Update();

    EXPECT_EQ(tree.GetObjectsInRadius(Math::Point3D(5, 0, 6), 2.0f), std::vector<GameObject*>{&nearOwner});
    // The distance must be strictly below the radius.
    EXPECT_TRUE(tree.GetObjectsInRadius(Math::Point3D(5, 0, 7), 2.0f).empty());
    EXPECT_EQ(tree.GetObjectsInRadius(Math::Point3D(10, 0, 10), 8.0f).size(), 2u);

    // Leaf 0 spans 0..10 but is entered only through 2.5..7.5 (plus the radius): an object at its
    // corner is missed by a query next to it.
    GameObject cornerOwner;
    TestGraphicsComponent cornerComponent;
    cornerComponent.m_Owner = &cornerOwner;
    tree.AddObject(&cornerComponent, Math::Point3D(1, 0, 1), kUnit, kNoRotation);
    tree.Update();
    ASSERT_EQ(tree.GetObject(2).Node, 0);
    // The point (0.5, 0, 0.5) is 0.5 * 0.5 * 2 from the object but 4.5 * 4.5 * 2 from the root's
    // half-width box (5..15), so a radius of 1 does not even enter the root.
    EXPECT_TRUE(tree.GetObjectsInRadius(Math::Point3D(0.5f, 0, 0.5f), 1.0f).empty());
    const std::vector<GameObject*> wide = tree.GetObjectsInRadius(Math::Point3D(0.5f, 0, 0.5f), 7.0f);
    EXPECT_NE(std::find(wide.begin(), wide.end(), &cornerOwner), wide.end());
    EXPECT_NE(std::find(wide.begin(), wide.end(), &nearOwner), wide.end());

    nearComponent.m_Owner = farComponent.m_Owner = cornerComponent.m_Owner = nullptr;
}

TEST(QuadTreeTest, BuildGridSetsTheGridAndBuildsOverIt)
{
    QuadTree tree;
    tree.BuildGrid(Math::Point3D(-30.0f, -7.5f, -20.0f), Math::Vector3D(5.0f, 15.0f, 5.0f), 12, 8);
    EXPECT_EQ(tree.m_CellsAcross, 12);
    EXPECT_EQ(tree.m_CellsDown, 8);
    ASSERT_NE(tree.GetRoot(), -1);
    const QuadTreeNode& firstLeaf = tree.GetNode(0);
    EXPECT_FLOAT_EQ(firstLeaf.Center.x, -27.5f);
    EXPECT_FLOAT_EQ(firstLeaf.Center.z, -17.5f);
}

TEST(QuadTreeTest, GridTooLargeForARoomIsRefusedAndTheTreeStaysAsItWas)
{
    QuadTree tree;
    MakeGrid(tree, 4, 4);
    const int root = tree.GetRoot();
    testing::internal::CaptureStdout();
    tree.BuildGrid(Math::Point3D(), kUnit, 100000, 100000);
    const std::string output = testing::internal::GetCapturedStdout();
    EXPECT_NE(output.find("A quad tree grid of 100000 by 100000 cells is more than a room can have"), std::string::npos)
        << output;
    EXPECT_EQ(tree.m_CellsAcross, 4);
    EXPECT_EQ(tree.GetRoot(), root);
}
