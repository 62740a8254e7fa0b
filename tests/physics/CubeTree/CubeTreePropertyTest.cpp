// The cube tree against a brute-force reference: on random scenes of moving and
// still boxes, over many frames with insertions and removals, the tree lists
// exactly the overlapping pairs, each once.
#include "physics/CubeTree/CubeTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <set>
#include <utility>
#include <vector>

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

class Scene
{
public:
    explicit Scene(unsigned seed) : m_Random(seed) {}

    void Add(bool moving)
    {
        Body body;
        body.center = Math::Point3D(Uniform(-20, 20), Uniform(-20, 20), Uniform(-20, 20));
        body.half = Math::Vector3D(Uniform(0.1f, 2.5f), Uniform(0.1f, 2.5f), Uniform(0.1f, 2.5f));
        if (moving)
            body.velocity = Math::Vector3D(Uniform(-0.6f, 0.6f), Uniform(-0.6f, 0.6f), Uniform(-0.6f, 0.6f));
        body.collider = std::make_unique<TestBoxCollider>(Lo(body), Hi(body));
        tree.Insert(body.collider.get());
        m_Bodies.push_back(std::move(body));
    }

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
        for (Body& body : m_Bodies)
        {
            if (body.velocity.x == 0 && body.velocity.y == 0 && body.velocity.z == 0)
                continue;
            body.center = Math::Point3D(body.center.x + body.velocity.x, body.center.y + body.velocity.y,
                                        body.center.z + body.velocity.z);
            if (std::abs(body.center.x) > 22)
                body.velocity.x = -body.velocity.x;
            if (std::abs(body.center.y) > 22)
                body.velocity.y = -body.velocity.y;
            if (std::abs(body.center.z) > 22)
                body.velocity.z = -body.velocity.z;
            if (Uniform(0, 1) < 0.05f)
                body.half = Math::Vector3D(std::min(body.half.x * 1.3f, 3.0f), std::min(body.half.y * 1.3f, 3.0f),
                                           std::min(body.half.z * 1.3f, 3.0f));
            body.collider->Place(Lo(body), Hi(body));
        }
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
    std::vector<Body> m_Bodies;
};
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
            const auto& listed = scene.tree.QueryPairs();

            std::set<Key> found;
            for (const auto& [a, b] : listed)
            {
                ASSERT_NE(a, b) << "seed " << seed << " frame " << frame;
                ASSERT_TRUE(found.insert(Ordered(a, b)).second)
                    << "a pair listed twice, seed " << seed << " frame " << frame;
            }
            ASSERT_EQ(found, scene.BruteForcePairs()) << "seed " << seed << " frame " << frame;
            pairsSeen += found.size();
        }
        EXPECT_GT(pairsSeen, 1000u) << "seed " << seed;
    }
}
