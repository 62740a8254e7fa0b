#include "physics/CubeTree/CubeTree.h"

#include <algorithm>
#include <atomic>

#include "engine/Log.h"
#include "physics/Collider.h"

namespace
{
// Reports a broken condition of the tree as an error naming the file CubeTree, once per site.
void ReportBroken(std::atomic<bool>& site, const char* condition, const char* function)
{
    if (site.load())
        Engine::ReportAtSite(site, condition, true, function, "CubeTree", 0);
}

std::atomic<bool>& IndexSite()
{
    static std::atomic<bool>* site = Engine::Log::Get().NewSite();
    return *site;
}

std::atomic<bool>& StackSite()
{
    static std::atomic<bool>* site = Engine::Log::Get().NewSite();
    return *site;
}

// Product of the three side lengths of the box.
float Volume(const Math::Point3D& max, const Math::Point3D& min)
{
    return (max.x - min.x) * (max.y - min.y) * (max.z - min.z);
}

// True when the boxes overlap or touch: on no axis does one's minimum exceed the other's maximum.
bool Overlaps(const CubeTreeNode& a, const CubeTreeNode& b)
{
    return !(a.min.x > b.max.x || a.min.y > b.max.y || a.min.z > b.max.z || b.min.x > a.max.x ||
             b.min.y > a.max.y || b.min.z > a.max.z);
}

// Growth of `child`'s volume when it takes in `leaf`'s box.
float InsertionCost(const CubeTreeNode& child, const CubeTreeNode& leaf)
{
    const Math::Point3D max(std::max(child.max.x, leaf.max.x), std::max(child.max.y, leaf.max.y),
                            std::max(child.max.z, leaf.max.z));
    const Math::Point3D min(std::min(child.min.x, leaf.min.x), std::min(child.min.y, leaf.min.y),
                            std::min(child.min.z, leaf.min.z));
    return Volume(max, min) - Volume(child.max, child.min);
}

// Pushes `index` unless the stack is full, which is reported instead.
void Push(CubeTree::Stack& stack, int& sp, int32_t index)
{
    if (sp >= CubeTree::kStackSize)
    {
        ReportBroken(StackSite(), "sp < stack_size", "CubeTree::QueryPairs");
        return;
    }
    stack[sp++] = index;
}
}

namespace
{
// Reports a bad node index and hands out a blank scratch node, so that the caller goes on harmlessly.
[[gnu::noinline, gnu::cold]] CubeTreeNode& BadIndex()
{
    ReportBroken(IndexSite(), "index >= 0", "CubeTree::At");
    static CubeTreeNode scratch;
    scratch = CubeTreeNode{};
    return scratch;
}
}

inline CubeTreeNode& CubeTree::At(int32_t index)
{
    if (index >= 0 && static_cast<size_t>(index) < m_Nodes.size()) [[likely]]
        return m_Nodes[index];
    return BadIndex();
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
        node.max = Math::Point3D(c.max.x + m_Margin, c.max.y + m_Margin, c.max.z + m_Margin);
        node.min = Math::Point3D(c.min.x - m_Margin, c.min.y - m_Margin, c.min.z - m_Margin);
        return;
    }
    const CubeTreeNode& l = At(node.left);
    const CubeTreeNode& r = At(node.right);
    node.max = Math::Point3D(std::max(l.max.x, r.max.x), std::max(l.max.y, r.max.y), std::max(l.max.z, r.max.z));
    node.min = Math::Point3D(std::min(l.min.x, r.min.x), std::min(l.min.y, r.min.y), std::min(l.min.z, r.min.z));
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

    // Every leaf, left subtree first: refresh its collider and note it if it left its box.
    m_Invalid.clear();
    std::vector<int32_t> walk{m_Root};
    while (!walk.empty())
    {
        const int32_t index = walk.back();
        walk.pop_back();
        const CubeTreeNode& node = At(index);
        if (!node.IsLeaf())
        {
            walk.push_back(node.right);
            walk.push_back(node.left);
            continue;
        }
        if (!node.collider)
            continue;
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

const std::vector<CubeTree::Pair>& CubeTree::QueryPairs()
{
    m_Pairs.clear();
    if (m_Root == -1 || At(m_Root).IsLeaf())
        return m_Pairs;

    Stack stack;
    stack.fill(-1);
    int sp = 0;
    Push(stack, sp, m_Root);
    while (sp > 0)
    {
        const int32_t index = stack[--sp];
        const CubeTreeNode& node = At(index);
        if (!node.IsLeaf())
        {
            Push(stack, sp, node.left);
            Push(stack, sp, node.right);
            continue;
        }
        // The stack now holds exactly the subtrees not yet visited.
        ScanAgainst(index, stack, sp);
    }
    return m_Pairs;
}

void CubeTree::ScanAgainst(int32_t leaf, Stack stack, int sp)
{
    const CubeTreeNode& l = At(leaf);
    while (sp > 0)
    {
        const int32_t index = stack[--sp];
        if (index == -1)
            continue;
        const CubeTreeNode& node = At(index);
        if (!Overlaps(node, l))
            continue;
        if (index == leaf || !node.IsLeaf())
        {
            Push(stack, sp, node.left);
            Push(stack, sp, node.right);
        }
        else
        {
            m_Pairs.emplace_back(node.collider, l.collider);
        }
    }
}
