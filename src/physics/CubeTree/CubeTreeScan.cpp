// The cube tree's pair listing. The main walk pops nodes off a stack; when a
// leaf comes off, it is scanned against a copy of the stack, which holds
// exactly the subtrees not yet visited.
//
// Small subtrees (two to four leaves, each child a leaf or a node of two
// leaves) are popped as a group: their leaves would come off the stack one
// after the other, each with the same shared part of the stack below a few
// entries of its own subtree. Each leaf's own entries are scanned on their own;
// the shared part is walked once for all of them, testing each node against
// every leaf at once. That walk meets, for each leaf, the nodes that leaf's own
// scan would meet, in the same order and at the same stack depth, so the pairs
// and their order are those of the leaf-by-leaf scans.
#include "physics/CubeTree/CubeTree.h"

#include <algorithm>

#include "physics/CubeTree/CubeBoxTests.h"
#include "physics/CubeTree/CubeTreeChecks.h"

using CubeTreeChecks::NodeAt;
using CubeTreeChecks::Prefetch;
using CubeTreeChecks::Push;

namespace
{
// Stack entries a group needs above the shared part: the subtree's own entries while the leaves
// come off it, and their children.
constexpr int kGroupRoom = 8;
}

const std::vector<CubeTree::Pair>& CubeTree::QueryPairs()
{
    m_Pairs.clear();
    if (m_Root == -1 || At(m_Root).IsLeaf())
        return m_Pairs;

    Stack stack;
    stack.fill(-1);
    // Each leaf's scan runs on its own copy of the stack. Only the entries below the stack pointer
    // are copied: the scan reads an entry at or above it only after writing it itself, so the
    // entries above (all -1 or left over from earlier pops) never matter, and the result is the
    // same as that of a copy of the whole stack.
    Stack copy;
    std::array<std::vector<Pair>, CubeBoxTests::kGroupSize - 1> later;
    int sp = 0;
    Push(stack, sp, m_Root);
    while (sp > 0)
    {
        const int32_t index = stack[--sp];
        const CubeTreeNode& node = At(index);
        if (!node.IsLeaf())
        {
            GroupLeaf group[CubeBoxTests::kGroupSize];
            const int count = sp + kGroupRoom <= kStackSize ? SmallSubtree(node, group) : 0;
            if (count > 0)
            {
                ScanGroup(group, count, stack, sp, copy, later.data());
                continue;
            }
            Push(stack, sp, node.left);
            Push(stack, sp, node.right);
            continue;
        }
        // The stack now holds exactly the subtrees not yet visited.
        std::copy_n(stack.begin(), sp, copy.begin());
        ScanAgainst(index, copy, sp);
    }
    return m_Pairs;
}

int CubeTree::SmallSubtree(const CubeTreeNode& node, GroupLeaf* group)
{
    const CubeTreeNode& left = At(node.left);
    const CubeTreeNode& right = At(node.right);
    const bool leftSmall = left.IsLeaf() || (At(left.left).IsLeaf() && At(left.right).IsLeaf());
    const bool rightSmall = right.IsLeaf() || (At(right.left).IsLeaf() && At(right.right).IsLeaf());
    if (!leftSmall || !rightSmall)
        return 0;
    // Pushed left then right, the right child comes off first; a child with two leaves pushes
    // them in turn, and again the right one comes off first.
    int count = 0;
    if (right.IsLeaf())
        group[count++] = {node.right, {node.left, -1}, 1};
    else
    {
        group[count++] = {right.right, {node.left, right.left}, 2};
        group[count++] = {right.left, {node.left, -1}, 1};
    }
    if (left.IsLeaf())
        group[count++] = {node.left, {-1, -1}, 0};
    else
    {
        group[count++] = {left.right, {left.left, -1}, 1};
        group[count++] = {left.left, {-1, -1}, 0};
    }
    return count;
}

void CubeTree::ScanAgainst(int32_t leaf, Stack& stack, int sp)
{
    // The leaf's box and collider, held apart from the node so that appending a pair cannot force
    // them to be read again.
    const CubeTreeNode l = At(leaf);
    const CubeBoxTests::LeafBox box = CubeBoxTests::BoxOf(l);
    const CubeTreeNode* const nodes = m_Nodes.data();
    const size_t count = m_Nodes.size();
    while (sp > 0)
    {
        const int32_t index = stack[--sp];
        if (index == -1)
            continue;
        const CubeTreeNode& node = NodeAt(nodes, count, index);
        if (!CubeBoxTests::Overlaps(node, box))
            continue;
        if (index == leaf || !node.IsLeaf())
        {
            if (sp + 2 <= kStackSize) [[likely]]
            {
                // Both children are tested soon: the right one next, the left one after the right's subtree.
                Prefetch(nodes, count, node.left);
                Prefetch(nodes, count, node.right);
                stack[sp] = node.left;
                stack[sp + 1] = node.right;
                sp += 2;
            }
            else
            {
                Push(stack, sp, node.left);
                Push(stack, sp, node.right);
            }
        }
        else
        {
            m_Pairs.emplace_back(node.collider, l.collider);
        }
    }
}

void CubeTree::ScanGroup(const GroupLeaf* group, int count, const Stack& stack, int sp, Stack& copy,
                         std::vector<Pair>* later)
{
    const size_t mark = m_Pairs.size();
    const CubeTreeNode* const nodes = m_Nodes.data();
    const size_t nodeCount = m_Nodes.size();
    CubeTreeNode leaves[CubeBoxTests::kGroupSize];
    const CubeTreeNode* leafPointers[CubeBoxTests::kGroupSize];
    // Leaf i's pairs: the first leaf's go straight to the list, the others' wait in `later`.
    std::vector<Pair>* out[CubeBoxTests::kGroupSize];
    for (int i = 0; i < count; ++i)
    {
        leaves[i] = At(group[i].leaf);
        leafPointers[i] = &leaves[i];
        out[i] = i == 0 ? &m_Pairs : &later[i - 1];
        if (i > 0)
            out[i]->clear();
    }

    // Each leaf's own entries, on top of the shared part, come off its stack first.
    for (int i = 0; i < count; ++i)
    {
        const CubeTreeNode& leaf = leaves[i];
        int32_t own[kGroupRoom];
        int top = group[i].aboveCount;
        std::copy_n(group[i].above, top, own);
        while (top > 0)
        {
            const int32_t index = own[--top];
            if (index == -1)
                continue;
            const CubeTreeNode& node = NodeAt(nodes, nodeCount, index);
            if (!CubeBoxTests::Overlaps(node, leaf))
                continue;
            if ((index == group[i].leaf || !node.IsLeaf()) && top + 2 <= kGroupRoom)
            {
                own[top++] = node.left;
                own[top++] = node.right;
            }
            else if (index != group[i].leaf && node.IsLeaf())
            {
                out[i]->emplace_back(node.collider, leaf.collider);
            }
        }
    }

    // The shared part, walked once. Each entry carries the leaves whose own scan would reach it:
    // bit i for leaf i, set when every node above the entry overlapped that leaf.
    const CubeBoxTests::GroupBoxes boxes = CubeBoxTests::BoxesOf(leafPointers, count);
    std::array<uint8_t, kStackSize> walkers;
    std::copy_n(stack.begin(), sp, copy.begin());
    std::fill_n(walkers.begin(), sp, static_cast<uint8_t>((1u << count) - 1));
    int top = sp;
    bool full = false;
    while (top > 0)
    {
        const int32_t index = copy[--top];
        const uint32_t walking = walkers[top];
        if (index == -1)
            continue;
        const CubeTreeNode& node = NodeAt(nodes, nodeCount, index);
        const uint32_t overlapping = CubeBoxTests::Overlapping(node, boxes) & walking;
        if (overlapping == 0)
            continue;
        uint32_t descending = overlapping;
        if (node.IsLeaf())
        {
            descending = 0;
            for (int i = 0; i < count; ++i)
            {
                if (!(overlapping & (1u << i)))
                    continue;
                if (index == group[i].leaf)
                    descending |= 1u << i;
                else
                    out[i]->emplace_back(node.collider, leaves[i].collider);
            }
            if (descending == 0)
                continue;
        }
        if (top + 2 > kStackSize)
        {
            full = true;
            break;
        }
        Prefetch(nodes, nodeCount, node.left);
        Prefetch(nodes, nodeCount, node.right);
        copy[top] = node.left;
        walkers[top] = static_cast<uint8_t>(descending);
        copy[top + 1] = node.right;
        walkers[top + 1] = static_cast<uint8_t>(descending);
        top += 2;
    }

    if (full)
    {
        // Some leaf's own scan runs out of stack: scan the leaves one by one, which reports it.
        m_Pairs.resize(mark);
        for (int i = 0; i < count; ++i)
        {
            std::copy_n(stack.begin(), sp, copy.begin());
            std::copy_n(group[i].above, group[i].aboveCount, copy.begin() + sp);
            ScanAgainst(group[i].leaf, copy, sp + group[i].aboveCount);
        }
        return;
    }
    for (int i = 1; i < count; ++i)
        m_Pairs.insert(m_Pairs.end(), later[i - 1].begin(), later[i - 1].end());
}
