#include "physics/CubeTree/CubeTree.h"

#include <algorithm>

#include "physics/Collider.h"
#include "physics/CubeTree/CubeTreeChecks.h"

namespace
{
// Product of the three side lengths of the box.
float Volume(const CubeCorner& max, const CubeCorner& min)
{
    return (max.x - min.x) * (max.y - min.y) * (max.z - min.z);
}

// Growth of `child`'s volume when it takes in `leaf`'s box.
float InsertionCost(const CubeTreeNode& child, const CubeTreeNode& leaf)
{
    const CubeCorner max{std::max(child.max.x, leaf.max.x), std::max(child.max.y, leaf.max.y),
                         std::max(child.max.z, leaf.max.z)};
    const CubeCorner min{std::min(child.min.x, leaf.min.x), std::min(child.min.y, leaf.min.y),
                         std::min(child.min.z, leaf.min.z)};
    return Volume(max, min) - Volume(child.max, child.min);
}
}

void CubeTree::PrefetchChildren(const CubeTreeNode& node) const
{
    CubeTreeChecks::Prefetch(m_Nodes.data(), m_Nodes.size(), node.left);
    CubeTreeChecks::Prefetch(m_Nodes.data(), m_Nodes.size(), node.right);
}

int32_t CubeTree::Allocate()
{
    if (m_Free.empty())
    {
        m_Nodes.emplace_back();
        return static_cast<int32_t>(m_Nodes.size() - 1);
    }
    const int32_t index = m_Free.back();
    m_Free.pop_back();
    At(index) = CubeTreeNode{};
    return index;
}

void CubeTree::Refit(int32_t index)
{
    CubeTreeNode& node = At(index);
    if (node.IsLeaf())
    {
        if (!node.collider)
            return;
        const Collider& c = *node.collider;
        node.max = CubeCorner{c.max.x + m_Margin, c.max.y + m_Margin, c.max.z + m_Margin};
        node.min = CubeCorner{c.min.x - m_Margin, c.min.y - m_Margin, c.min.z - m_Margin};
        return;
    }
    const CubeTreeNode& l = At(node.left);
    const CubeTreeNode& r = At(node.right);
    node.max = CubeCorner{std::max(l.max.x, r.max.x), std::max(l.max.y, r.max.y), std::max(l.max.z, r.max.z)};
    node.min = CubeCorner{std::min(l.min.x, r.min.x), std::min(l.min.y, r.min.y), std::min(l.min.z, r.min.z)};
}

void CubeTree::Insert(Collider* collider)
{
    const int32_t leaf = Allocate();
    At(leaf).collider = collider;
    At(leaf).left = -1;
    At(leaf).right = -1;
    Refit(leaf);
    if (m_Root == -1)
    {
        m_Root = leaf;
        return;
    }
    InsertLeaf(leaf);
}

void CubeTree::InsertLeaf(int32_t leaf)
{
    if (At(m_Root).IsLeaf())
    {
        const int32_t node = Allocate();
        const int32_t oldRoot = m_Root;
        At(node).parent = At(oldRoot).parent;
        At(leaf).parent = node;
        At(oldRoot).parent = node;
        At(node).left = leaf;
        At(node).right = oldRoot;
        m_Root = node;
        Refit(m_Root);
        return;
    }

    int32_t parent = m_Root;
    for (;;)
    {
        const CubeTreeNode& p = At(parent);
        const int32_t leftChild = p.left;
        const int32_t rightChild = p.right;
        // The next step compares the children of whichever child is chosen: fetch all four early.
        PrefetchChildren(At(leftChild));
        PrefetchChildren(At(rightChild));
        const bool goRight = InsertionCost(At(rightChild), At(leaf)) <= InsertionCost(At(leftChild), At(leaf));
        const int32_t child = goRight ? rightChild : leftChild;
        if (!At(child).IsLeaf())
        {
            parent = child;
            continue;
        }
        const int32_t node = Allocate();
        At(node).parent = At(child).parent;
        At(leaf).parent = node;
        At(child).parent = node;
        At(node).left = leaf;
        At(node).right = child;
        if (goRight)
            At(parent).right = node;
        else
            At(parent).left = node;
        // Back up the path: every node the descent went through takes in the new leaf, the root last.
        for (int32_t up = node; up != -1; up = At(up).parent)
            Refit(up);
        return;
    }
}

void CubeTree::Unlink(int32_t leaf)
{
    const int32_t parent = At(leaf).parent;
    const int32_t sibling = At(parent).left == leaf ? At(parent).right : At(parent).left;
    const int32_t grandparent = At(parent).parent;
    At(sibling).parent = grandparent;
    if (grandparent == -1)
        m_Root = sibling;
    else if (At(grandparent).left == parent)
        At(grandparent).left = sibling;
    else
        At(grandparent).right = sibling;
}

void CubeTree::Remove(Collider* collider)
{
    auto found = std::find_if(m_Nodes.begin(), m_Nodes.end(), [collider](const CubeTreeNode& node) {
        return node.collider == collider && node.free == 0 && node.IsLeaf();
    });
    if (found == m_Nodes.end() || collider == nullptr)
        return;
    const int32_t leaf = static_cast<int32_t>(found - m_Nodes.begin());
    At(leaf).collider = nullptr;

    const int32_t parent = At(leaf).parent;
    if (parent == -1)
    {
        // The last leaf: its node is not reused, which is harmless.
        m_Root = -1;
        At(leaf).free = 1;
        return;
    }
    Unlink(leaf);
    At(leaf).free = 1;
    At(parent).free = 1;
    m_Free.push_back(leaf);
    m_Free.push_back(parent);
}

void CubeTree::Update()
{
    if (m_Root == -1)
        return;
    if (At(m_Root).IsLeaf())
    {
        if (At(m_Root).collider)
            At(m_Root).collider->UpdateBounds();
        Refit(m_Root);
        return;
    }

    // Every leaf, left subtree first: refresh its collider and note it if it left its box. The
    // leaves are listed first and refreshed after, in the same order, so that each collider can be
    // fetched from memory a few leaves ahead of its turn.
    m_Invalid.clear();
    std::vector<int32_t> leaves;
    leaves.reserve(m_Nodes.size() / 2 + 1);
    std::vector<int32_t> walk{m_Root};
    while (!walk.empty())
    {
        const int32_t index = walk.back();
        walk.pop_back();
        const CubeTreeNode& node = At(index);
        if (!node.IsLeaf())
        {
            PrefetchChildren(node);
            walk.push_back(node.right);
            walk.push_back(node.left);
            continue;
        }
        if (node.collider)
            leaves.push_back(index);
    }

    constexpr size_t kAhead = 8;
    for (size_t i = 0; i < leaves.size(); ++i)
    {
        if (i + kAhead < leaves.size())
        {
            const Collider* ahead = At(leaves[i + kAhead]).collider;
            __builtin_prefetch(ahead);
            __builtin_prefetch(&ahead->min);
            __builtin_prefetch(&ahead->max);
        }
        const int32_t index = leaves[i];
        const CubeTreeNode& node = At(index);
        node.collider->UpdateBounds();
        const Math::Point3D& cmin = node.collider->min;
        const Math::Point3D& cmax = node.collider->max;
        const bool inside = cmin.x >= node.min.x && cmin.y >= node.min.y && cmin.z >= node.min.z &&
                            cmax.x <= node.max.x && cmax.y <= node.max.y && cmax.z <= node.max.z;
        if (!inside)
            m_Invalid.push_back(index);
    }

    for (const int32_t leaf : m_Invalid)
    {
        const int32_t parent = At(leaf).parent;
        Unlink(leaf);
        At(parent).free = 1;
        m_Free.push_back(parent);
        At(leaf).parent = -1;
        Refit(leaf);
        InsertLeaf(leaf);
    }
    m_Invalid.clear();
}
