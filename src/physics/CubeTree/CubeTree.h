// CubeTree: the broad phase, a dynamic tree of axis-aligned boxes (cubes) over
// the colliders of one physics system. Leaves hold colliders; inner nodes hold
// the union of their children. There is no balancing: a leaf goes down to the
// child whose box grows least by taking it (ties go right).
//
// Once a frame Update refreshes every collider's bounds and re-inserts the
// leaves whose collider left its box, then QueryPairs lists every pair of
// colliders whose leaf boxes overlap (touching counts), each pair exactly
// once. The query needs no recursion and no set of visited pairs: when a leaf
// comes off the traversal stack, it is tested against exactly the subtrees
// still on that stack, through a copy of it.
//
// Nodes live by value in one vector and link by index, so growth moves no
// links; released nodes are reused through a stack of free indices. A negative
// node index or a traversal deeper than the stack's 1024 entries is reported
// as an error naming the file CubeTree, and the operation goes on without it.
// Colliders are not owned. Main thread only.
//
// CubeTree.cpp keeps the tree; CubeTreeScan.cpp lists the pairs, scanning the
// leaves of small subtrees together where that gives the same pairs in the
// same order, and CubeTreeChecks holds the two reported conditions.
#pragma once

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "physics/CubeTree/CubeTreeNode.h"

class Collider;

class CubeTree
{
public:
    // One overlapping pair of colliders.
    using Pair = std::pair<Collider*, Collider*>;
    // Entries in each traversal stack of QueryPairs.
    static constexpr int kStackSize = 1024;
    // A traversal stack: node indices, unused entries -1.
    using Stack = std::array<int32_t, kStackSize>;

    // Makes a leaf for the collider, boxed by its current bounds.
    void Insert(Collider* collider);
    // Removes the collider's leaf; nothing happens when it has none.
    void Remove(Collider* collider);
    // Refreshes every collider's bounds and re-inserts the leaves whose collider left its box.
    void Update();
    // Lists every pair of colliders whose leaf boxes overlap, each pair once.
    const std::vector<Pair>& QueryPairs();

    // Index of the root node; -1 when the tree is empty.
    int32_t GetRoot() const { return m_Root; }
    // Every node ever allocated, released ones included.
    const std::vector<CubeTreeNode>& GetNodes() const { return m_Nodes; }
    // Space added around every leaf box; always 0.
    float GetMargin() const { return m_Margin; }

private:
    // The node at `index`; reports a negative index and then hands out a scratch node.
    CubeTreeNode& At(int32_t index);
    // Asks the processor to fetch the node's children, which are about to be read; a leaf has none.
    void PrefetchChildren(const CubeTreeNode& node) const;
    // A fresh node: the top of the free stack reset, or a new one at the end of the vector.
    int32_t Allocate();
    // Sets a leaf's box from its collider's bounds, or an inner node's to its children's union.
    void Refit(int32_t index);
    // Links the already refitted leaf into the non-empty tree by the least-growth rule.
    void InsertLeaf(int32_t leaf);
    // Unlinks a leaf that has a parent: the sibling takes the parent's place, the parent is released.
    void Unlink(int32_t leaf);
    // Tests `leaf` against every subtree on `copy`, a copy of the traversal stack below `sp`,
    // appending the pairs; `copy` is the scan's own to overwrite.
    void ScanAgainst(int32_t leaf, Stack& copy, int sp);
    // One leaf of a small subtree whose leaves are scanned as a group: the leaf and the entries
    // of its own subtree that lie above the shared part of its stack, bottom first.
    struct GroupLeaf
    {
        int32_t leaf;
        int32_t above[2];
        int aboveCount;
    };
    // When each child of `node` is a leaf or a node of two leaves, fills `group` with its leaves in
    // the order they would come off the stack and returns how many; otherwise returns 0.
    int SmallSubtree(const CubeTreeNode& node, GroupLeaf* group);
    // Does the scans of a group's leaves, where `stack` holds the subtrees not yet visited below
    // `sp`: the same pairs in the same order as scanning them one by one. `copy` and the vectors
    // of `later`, one for each leaf but the first, are scratch.
    void ScanGroup(const GroupLeaf* group, int count, const Stack& stack, int sp, Stack& copy, std::vector<Pair>* later);

    int32_t m_Root = -1;
    std::vector<Pair> m_Pairs;
    float m_Margin = 0.0f;
    std::vector<int32_t> m_Invalid;
    std::vector<CubeTreeNode> m_Nodes;
    std::vector<int32_t> m_Free;
};
