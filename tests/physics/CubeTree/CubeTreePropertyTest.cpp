// The cube tree against a brute-force reference: on random scenes of moving and
// still boxes (fixed seeds), over many frames with insertions and removals, the
// tree lists exactly the overlapping pairs, each once. Scenes on a grid of half
// units make exactly touching boxes common; scenes that empty out and fill
// again pass through the empty and one-leaf trees. Every frame the tree's links
// are also checked: each collider in exactly one leaf reachable from the root,
// each inner box holding its children's, every other node released; and the
// pairs come in the order of the plain leaf-by-leaf listing.
#include "physics/CubeTree/CubeTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "physics/CubeTree/LeafByLeafScan.h"
#include "physics/CubeTree/TestBoxCollider.h"

namespace
{
struct Body
{
    std::unique_ptr<TestBoxCollider> collider;
    Math::Vector3D velocity;
    Math::Point3D center;
    Math::Vector3D half;
};

using Key = std::pair<const Collider*, const Collider*>;

Key Ordered(const Collider* a, const Collider* b)
{
    return a < b ? Key(a, b) : Key(b, a);
}

bool Overlap(const Collider& a, const Collider& b)
{
    return !(a.min.x > b.max.x || a.min.y > b.max.y || a.min.z > b.max.z || b.min.x > a.max.x ||
             b.min.y > a.max.y || b.min.z > a.max.z);
}

// How a scene places, moves and grows its boxes.
enum class Layout
{
    // Anywhere, any size: exact touching is rare.
    Free,
    // Centres on whole units, sizes and moves in half units, all exact in floats: boxes often touch.
    Grid,
};

class Scene
{
public:
    explicit Scene(unsigned seed, Layout layout = Layout::Free) : m_Random(seed), m_Layout(layout) {}

    void Add(bool moving)
    {
        Body body;
        if (m_Layout == Layout::Grid)
        {
            body.center = Math::Point3D(Whole(-12, 12), Whole(-12, 12), Whole(-12, 12));
            body.half = Math::Vector3D(0.5f * Whole(1, 4), 0.5f * Whole(1, 4), 0.5f * Whole(1, 4));
            if (moving)
                body.velocity = Math::Vector3D(0.5f * Whole(-1, 1), 0.5f * Whole(-1, 1), 0.5f * Whole(-1, 1));
        }
        else
        {
            body.center = Math::Point3D(Uniform(-20, 20), Uniform(-20, 20), Uniform(-20, 20));
            body.half = Math::Vector3D(Uniform(0.1f, 2.5f), Uniform(0.1f, 2.5f), Uniform(0.1f, 2.5f));
            if (moving)
                body.velocity = Math::Vector3D(Uniform(-0.6f, 0.6f), Uniform(-0.6f, 0.6f), Uniform(-0.6f, 0.6f));
        }
        body.collider = std::make_unique<TestBoxCollider>(Lo(body), Hi(body));
        tree.Insert(body.collider.get());
        m_Bodies.push_back(std::move(body));
    }

    size_t Count() const { return m_Bodies.size(); }

    void RemoveOne()
    {
        if (m_Bodies.empty())
            return;
        const size_t index = std::uniform_int_distribution<size_t>(0, m_Bodies.size() - 1)(m_Random);
        tree.Remove(m_Bodies[index].collider.get());
        m_Bodies.erase(m_Bodies.begin() + static_cast<std::ptrdiff_t>(index));
    }

    // Moves the moving boxes (bouncing inside the scene), sometimes growing them. A box that only
    // shrinks keeps its larger leaf box in the tree, so the scene never shrinks one.
    void Step()
    {
        const float wall = m_Layout == Layout::Grid ? 13.0f : 22.0f;
        for (Body& body : m_Bodies)
        {
            if (body.velocity.x == 0 && body.velocity.y == 0 && body.velocity.z == 0)
                continue;
            body.center = Math::Point3D(body.center.x + body.velocity.x, body.center.y + body.velocity.y,
                                        body.center.z + body.velocity.z);
            if (std::abs(body.center.x) > wall)
                body.velocity.x = -body.velocity.x;
            if (std::abs(body.center.y) > wall)
                body.velocity.y = -body.velocity.y;
            if (std::abs(body.center.z) > wall)
                body.velocity.z = -body.velocity.z;
            if (Uniform(0, 1) < 0.05f)
                body.half = m_Layout == Layout::Grid
                                ? Math::Vector3D(std::min(body.half.x + 0.5f, 3.0f), std::min(body.half.y + 0.5f, 3.0f),
                                                 std::min(body.half.z + 0.5f, 3.0f))
                                : Math::Vector3D(std::min(body.half.x * 1.3f, 3.0f), std::min(body.half.y * 1.3f, 3.0f),
                                                 std::min(body.half.z * 1.3f, 3.0f));
            body.collider->Place(Lo(body), Hi(body));
        }
    }

    // The pairs whose boxes only touch: on some axis one's minimum equals the other's maximum.
    size_t TouchingPairs() const
    {
        size_t touching = 0;
        for (size_t i = 0; i < m_Bodies.size(); ++i)
            for (size_t j = i + 1; j < m_Bodies.size(); ++j)
            {
                const Collider& a = *m_Bodies[i].collider;
                const Collider& b = *m_Bodies[j].collider;
                if (Overlap(a, b) && (a.min.x == b.max.x || a.min.y == b.max.y || a.min.z == b.max.z ||
                                      b.min.x == a.max.x || b.min.y == a.max.y || b.min.z == a.max.z))
                    ++touching;
            }
        return touching;
    }

    // Every live collider, once each.
    std::multiset<const Collider*> Colliders() const
    {
        std::multiset<const Collider*> colliders;
        for (const Body& body : m_Bodies)
            colliders.insert(body.collider.get());
        return colliders;
    }

    // Every overlapping pair of boxes by testing all of them against each other.
    std::set<Key> BruteForcePairs() const
    {
        std::set<Key> pairs;
        for (size_t i = 0; i < m_Bodies.size(); ++i)
            for (size_t j = i + 1; j < m_Bodies.size(); ++j)
                if (Overlap(*m_Bodies[i].collider, *m_Bodies[j].collider))
                    pairs.insert(Ordered(m_Bodies[i].collider.get(), m_Bodies[j].collider.get()));
        return pairs;
    }

    float Uniform(float lo, float hi) { return std::uniform_real_distribution<float>(lo, hi)(m_Random); }
    // A whole number from lo to hi, both included, as a float.
    float Whole(int lo, int hi) { return static_cast<float>(std::uniform_int_distribution<int>(lo, hi)(m_Random)); }

    CubeTree tree;

private:
    static Math::Point3D Lo(const Body& b)
    {
        return Math::Point3D(b.center.x - b.half.x, b.center.y - b.half.y, b.center.z - b.half.z);
    }
    static Math::Point3D Hi(const Body& b)
    {
        return Math::Point3D(b.center.x + b.half.x, b.center.y + b.half.y, b.center.z + b.half.z);
    }

    std::mt19937 m_Random;
    Layout m_Layout;
    std::vector<Body> m_Bodies;
};

bool Holds(const CubeTreeNode& outer, const CubeTreeNode& inner)
{
    return outer.min.x <= inner.min.x && outer.min.y <= inner.min.y && outer.min.z <= inner.min.z &&
           outer.max.x >= inner.max.x && outer.max.y >= inner.max.y && outer.max.z >= inner.max.z;
}

// Checks the tree's links against the scene; returns a description of the first fault, or "".
std::string TreeFault(const Scene& scene)
{
    const CubeTree& tree = scene.tree;
    const auto& nodes = tree.GetNodes();
    std::vector<bool> reached(nodes.size(), false);
    std::multiset<const Collider*> leaves;
    std::vector<int32_t> walk;
    if (tree.GetRoot() != -1)
    {
        if (tree.GetRoot() < 0 || static_cast<size_t>(tree.GetRoot()) >= nodes.size())
            return "root out of range";
        if (nodes[tree.GetRoot()].parent != -1)
            return "root has a parent";
        walk.push_back(tree.GetRoot());
    }
    while (!walk.empty())
    {
        const int32_t index = walk.back();
        walk.pop_back();
        if (reached[index])
            return "node " + std::to_string(index) + " reached twice";
        reached[index] = true;
        const CubeTreeNode& node = nodes[index];
        if (node.free != 0)
            return "released node " + std::to_string(index) + " is linked";
        if (node.IsLeaf())
        {
            if (node.right != -1 || node.collider == nullptr)
                return "leaf " + std::to_string(index) + " has a right child or no collider";
            leaves.insert(node.collider);
            continue;
        }
        if (node.collider != nullptr)
            return "inner node " + std::to_string(index) + " has a collider";
        for (const int32_t child : {node.left, node.right})
        {
            if (child < 0 || static_cast<size_t>(child) >= nodes.size())
                return "child of " + std::to_string(index) + " out of range";
            if (nodes[child].parent != index)
                return "child " + std::to_string(child) + " does not name its parent " + std::to_string(index);
            if (!Holds(node, nodes[child]))
                return "inner box " + std::to_string(index) + " does not hold child " + std::to_string(child);
            walk.push_back(child);
        }
    }
    for (size_t i = 0; i < nodes.size(); ++i)
        if (!reached[i] && nodes[i].free == 0)
            return "node " + std::to_string(i) + " is neither linked nor released";
    if (leaves != scene.Colliders())
        return "the leaves do not hold each collider exactly once";
    return "";
}

// Checks the last query against brute force and the tree's links; returns the number of pairs.
size_t CheckFrame(Scene& scene, const std::string& where)
{
    const auto& listed = scene.tree.QueryPairs();
    std::set<Key> found;
    for (const auto& [a, b] : listed)
    {
        EXPECT_NE(a, b) << where;
        EXPECT_TRUE(found.insert(Ordered(a, b)).second) << "a pair listed twice, " << where;
    }
    EXPECT_EQ(found, scene.BruteForcePairs()) << where;
    EXPECT_EQ(TreeFault(scene), "") << where;
    EXPECT_TRUE(listed == LeafByLeafScan::Pairs(scene.tree)) << "pairs out of the leaf-by-leaf order, " << where;
    return found.size();
}
}

TEST(CubeTreeProperty, RandomScenesListEveryOverlappingPairExactlyOnce)
{
    for (unsigned seed : {1u, 2u, 3u, 17u})
    {
        Scene scene(seed);
        for (int i = 0; i < 120; ++i)
            scene.Add(i % 3 == 0);
        size_t pairsSeen = 0;
        for (int frame = 0; frame < 150; ++frame)
        {
            const float roll = scene.Uniform(0, 1);
            if (roll < 0.2f)
                scene.Add(roll < 0.1f);
            else if (roll < 0.35f)
                scene.RemoveOne();
            scene.Step();
            scene.tree.Update();
            pairsSeen += CheckFrame(scene, "seed " + std::to_string(seed) + " frame " + std::to_string(frame));
            if (HasFailure())
                return;
        }
        EXPECT_GT(pairsSeen, 1000u) << "seed " << seed;
    }
}

TEST(CubeTreeProperty, RandomScenesOnAGridListEveryTouchingPairExactlyOnce)
{
    for (unsigned seed : {5u, 6u, 7u})
    {
        Scene scene(seed, Layout::Grid);
        for (int i = 0; i < 150; ++i)
            scene.Add(i % 2 == 0);
        size_t touchingSeen = 0;
        for (int frame = 0; frame < 120; ++frame)
        {
            const float roll = scene.Uniform(0, 1);
            if (roll < 0.2f)
                scene.Add(roll < 0.1f);
            else if (roll < 0.35f)
                scene.RemoveOne();
            scene.Step();
            scene.tree.Update();
            CheckFrame(scene, "seed " + std::to_string(seed) + " frame " + std::to_string(frame));
            if (HasFailure())
                return;
            touchingSeen += scene.TouchingPairs();
        }
        // The scene is only a test of touching boxes if many of its pairs merely touch.
        EXPECT_GT(touchingSeen, 1000u) << "seed " << seed;
    }
}

TEST(CubeTreeProperty, ScenesThatEmptyAndFillAgainListEveryOverlappingPairExactlyOnce)
{
    for (unsigned seed : {11u, 12u})
    {
        Scene scene(seed);
        size_t emptied = 0;
        size_t pairsSeen = 0;
        for (int round = 0; round < 4; ++round)
        {
            // Fill in bursts while everything moves, then take colliders away until none is left.
            for (int frame = 0; frame < 40; ++frame)
            {
                for (int k = 0; k < 3; ++k)
                    scene.Add(scene.Uniform(0, 1) < 0.5f);
                scene.Step();
                scene.tree.Update();
                pairsSeen += CheckFrame(scene, "seed " + std::to_string(seed) + " filling, round " +
                                                   std::to_string(round) + " frame " + std::to_string(frame));
                if (HasFailure())
                    return;
            }
            for (int frame = 0; scene.Count() > 0; ++frame)
            {
                for (int k = 0; k < 4; ++k)
                    scene.RemoveOne();
                scene.Step();
                scene.tree.Update();
                pairsSeen += CheckFrame(scene, "seed " + std::to_string(seed) + " emptying, round " +
                                                   std::to_string(round) + " frame " + std::to_string(frame));
                if (HasFailure())
                    return;
            }
            emptied += scene.tree.GetRoot() == -1 ? 1 : 0;
        }
        EXPECT_EQ(emptied, 4u) << "seed " << seed;
        EXPECT_GT(pairsSeen, 500u) << "seed " << seed;
    }
}
