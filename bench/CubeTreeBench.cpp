// The cube tree broad phase over 2,000 moving and 10,000 still boxes spread
// through a cube 200 units wide. One iteration is one frame: the moving boxes
// move (bouncing at the walls), the tree refreshes its leaves and lists the
// overlapping pairs.
//
// The reference is Bullet's dynamic AABB tree broad phase (btDbvtBroadphase)
// on the same boxes and motion: one proxy per box (the still ones in the
// static group), each frame the moving boxes' new boxes through setAabb, then
// calculateOverlappingPairs. Bullet keeps its pairs on enlarged boxes and
// drops stale ones over several frames, so the reference counts the cached
// pairs whose exact boxes overlap, which is the list the tree gives. Still
// boxes may collide with each other here, since the tree lists those pairs
// too. The ratio line compares the two.
//
// Both record their pair count frame by frame; every run compares its counts
// with those recorded before it, so the tree and Bullet are checked to agree
// on each frame. The tree's last frame is also checked against a brute-force
// sort and sweep along x.
#include "physics/Collider.h"
#include "physics/CubeTree/CubeTree.h"

#include <benchmark/benchmark.h>

#include <btBulletCollisionCommon.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace
{
constexpr int kMoving = 2000;
constexpr int kStill = 10000;
constexpr float kHalfWorld = 100.0f;

// A box collider whose bounds follow its centre and half size.
struct BoxCollider : Collider
{
    Math::Point3D center;
    Math::Vector3D half;
    Math::Vector3D velocity;

    void UpdateBounds() override
    {
        min = Math::Point3D(center.x - half.x, center.y - half.y, center.z - half.z);
        max = Math::Point3D(center.x + half.x, center.y + half.y, center.z + half.z);
    }
    // Moves one frame's worth, turning back at the walls.
    void Move()
    {
        center = Math::Point3D(center.x + velocity.x, center.y + velocity.y, center.z + velocity.z);
        if (std::abs(center.x) > kHalfWorld)
            velocity.x = -velocity.x;
        if (std::abs(center.y) > kHalfWorld)
            velocity.y = -velocity.y;
        if (std::abs(center.z) > kHalfWorld)
            velocity.z = -velocity.z;
    }
};

// The same boxes and motion for the tree and for the reference; the first kMoving boxes move.
struct BoxScene
{
    BoxScene()
    {
        std::mt19937 random(7);
        std::uniform_real_distribution<float> place(-kHalfWorld, kHalfWorld);
        std::uniform_real_distribution<float> size(0.5f, 2.0f);
        std::uniform_real_distribution<float> speed(-0.5f, 0.5f);
        for (int i = 0; i < kMoving + kStill; ++i)
        {
            auto box = std::make_unique<BoxCollider>();
            box->center = Math::Point3D(place(random), place(random), place(random));
            box->half = Math::Vector3D(size(random), size(random), size(random));
            if (i < kMoving)
                box->velocity = Math::Vector3D(speed(random), speed(random), speed(random));
            box->UpdateBounds();
            boxes.push_back(std::move(box));
        }
    }
    void MoveAll()
    {
        for (int i = 0; i < kMoving; ++i)
            boxes[i]->Move();
    }

    std::vector<std::unique_ptr<BoxCollider>> boxes;
};

// Pair counts frame by frame, as far as the longest run so far went.
std::vector<size_t>& RecordedPairCounts()
{
    static std::vector<size_t> counts;
    return counts;
}

// Compares a run's per-frame pair counts with the recorded ones and extends the record.
// Returns false at the first frame where they differ.
bool AgreesWithRecord(const std::vector<size_t>& counts)
{
    std::vector<size_t>& record = RecordedPairCounts();
    const size_t common = std::min(record.size(), counts.size());
    if (!std::equal(counts.begin(), counts.begin() + static_cast<std::ptrdiff_t>(common), record.begin()))
        return false;
    record.insert(record.end(), counts.begin() + static_cast<std::ptrdiff_t>(common), counts.end());
    return true;
}

// Pairs a brute-force sort and sweep along x finds among the boxes.
size_t SortAndSweep(const BoxScene& scene)
{
    std::vector<const BoxCollider*> order;
    for (const auto& box : scene.boxes)
        order.push_back(box.get());
    std::sort(order.begin(), order.end(), [](const BoxCollider* a, const BoxCollider* b) { return a->min.x < b->min.x; });
    size_t pairs = 0;
    for (size_t i = 0; i < order.size(); ++i)
    {
        const BoxCollider& a = *order[i];
        for (size_t j = i + 1; j < order.size() && order[j]->min.x <= a.max.x; ++j)
        {
            const BoxCollider& b = *order[j];
            if (!(a.min.y > b.max.y || b.min.y > a.max.y || a.min.z > b.max.z || b.min.z > a.max.z))
                ++pairs;
        }
    }
    return pairs;
}

void CubeTreeFrame(benchmark::State& state)
{
    BoxScene scene;
    CubeTree tree;
    for (const auto& box : scene.boxes)
        tree.Insert(box.get());
    std::vector<size_t> counts;
    counts.reserve(1 << 16);
    for (auto _ : state)
    {
        scene.MoveAll();
        tree.Update();
        counts.push_back(tree.QueryPairs().size());
    }
    if (!AgreesWithRecord(counts))
        state.SkipWithError("the tree and Bullet found different pair counts on some frame");
    else if (!counts.empty() && counts.back() != SortAndSweep(scene))
        state.SkipWithError("the tree and a brute-force sweep found different pair counts");
    if (!counts.empty())
        state.counters["pairs"] = static_cast<double>(counts.back());
}
BENCHMARK(CubeTreeFrame)->Unit(benchmark::kMicrosecond);

btVector3 ToBullet(const Math::Point3D& p)
{
    return btVector3(p.x, p.y, p.z);
}

// True when the proxies' exact boxes overlap or touch, the test the tree makes.
bool ExactOverlap(const btBroadphaseProxy& a, const btBroadphaseProxy& b)
{
    return !(a.m_aabbMin.x() > b.m_aabbMax.x() || a.m_aabbMin.y() > b.m_aabbMax.y() ||
             a.m_aabbMin.z() > b.m_aabbMax.z() || b.m_aabbMin.x() > a.m_aabbMax.x() ||
             b.m_aabbMin.y() > a.m_aabbMax.y() || b.m_aabbMin.z() > a.m_aabbMax.z());
}

void CubeTreeFrame_Reference(benchmark::State& state)
{
    BoxScene scene;
    btDefaultCollisionConfiguration configuration;
    btCollisionDispatcher dispatcher(&configuration);
    btDbvtBroadphase broadphase;
    std::vector<btBroadphaseProxy*> proxies;
    for (int i = 0; i < kMoving + kStill; ++i)
    {
        BoxCollider& box = *scene.boxes[i];
        const bool moving = i < kMoving;
        const int group = moving ? btBroadphaseProxy::DefaultFilter : btBroadphaseProxy::StaticFilter;
        proxies.push_back(broadphase.createProxy(ToBullet(box.min), ToBullet(box.max), BOX_SHAPE_PROXYTYPE, &box,
                                                 group, btBroadphaseProxy::AllFilter, &dispatcher));
    }
    std::vector<size_t> counts;
    counts.reserve(1 << 16);
    for (auto _ : state)
    {
        scene.MoveAll();
        for (int i = 0; i < kMoving; ++i)
        {
            BoxCollider& box = *scene.boxes[i];
            box.UpdateBounds();
            broadphase.setAabb(proxies[i], ToBullet(box.min), ToBullet(box.max), &dispatcher);
        }
        broadphase.calculateOverlappingPairs(&dispatcher);
        const btOverlappingPairCache& cache = *broadphase.getOverlappingPairCache();
        const btBroadphasePair* pairs = cache.getOverlappingPairArrayPtr();
        const int cached = cache.getNumOverlappingPairs();
        size_t overlapping = 0;
        for (int p = 0; p < cached; ++p)
            overlapping += ExactOverlap(*pairs[p].m_pProxy0, *pairs[p].m_pProxy1) ? 1 : 0;
        counts.push_back(overlapping);
    }
    if (!AgreesWithRecord(counts))
        state.SkipWithError("the tree and Bullet found different pair counts on some frame");
    if (!counts.empty())
        state.counters["pairs"] = static_cast<double>(counts.back());
    for (btBroadphaseProxy* proxy : proxies)
        broadphase.destroyProxy(proxy, &dispatcher);
}
BENCHMARK(CubeTreeFrame_Reference)->Unit(benchmark::kMicrosecond);
}
