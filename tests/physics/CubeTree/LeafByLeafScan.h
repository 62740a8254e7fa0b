// LeafByLeafScan: the cube tree's pair listing written the plain way, for the
// tests to compare the tree's own listing against. A walk pops nodes off a
// stack of 1024 entries, pushing an inner node's left then right child; each
// leaf that comes off is scanned against a by-value copy of the whole stack,
// descending into every overlapping inner node and listing every overlapping
// leaf. A push onto a full stack is dropped, as the tree does after its report.
#pragma once

#include <vector>

#include "physics/CubeTree/CubeTree.h"

namespace LeafByLeafScan
{
// True when the boxes overlap or touch.
inline bool Overlap(const CubeTreeNode& a, const CubeTreeNode& b)
{
    return !(a.min.x > b.max.x || a.min.y > b.max.y || a.min.z > b.max.z || b.min.x > a.max.x ||
             b.min.y > a.max.y || b.min.z > a.max.z);
}

// Pushes `index` unless the stack is full.
inline void Push(CubeTree::Stack& stack, int& sp, int32_t index)
{
    if (sp < CubeTree::kStackSize)
        stack[sp++] = index;
}

// The pairs of the tree's current leaves, in the order of the plain listing.
inline std::vector<CubeTree::Pair> Pairs(const CubeTree& tree)
{
    std::vector<CubeTree::Pair> pairs;
    const std::vector<CubeTreeNode>& nodes = tree.GetNodes();
    if (tree.GetRoot() == -1 || nodes[tree.GetRoot()].IsLeaf())
        return pairs;
    CubeTree::Stack stack;
    stack.fill(-1);
    int sp = 0;
    Push(stack, sp, tree.GetRoot());
    while (sp > 0)
    {
        const int32_t index = stack[--sp];
        const CubeTreeNode& node = nodes[index];
        if (!node.IsLeaf())
        {
            Push(stack, sp, node.left);
            Push(stack, sp, node.right);
            continue;
        }
        CubeTree::Stack copy = stack;
        int top = sp;
        while (top > 0)
        {
            const int32_t other = copy[--top];
            if (other == -1)
                continue;
            const CubeTreeNode& candidate = nodes[other];
            if (!Overlap(candidate, node))
                continue;
            if (other == index || !candidate.IsLeaf())
            {
                Push(copy, top, candidate.left);
                Push(copy, top, candidate.right);
            }
            else
            {
                pairs.emplace_back(candidate.collider, node.collider);
            }
        }
    }
    return pairs;
}
}
