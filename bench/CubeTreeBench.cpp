// The cube tree broad phase over 2,000 moving and 10,000 still boxes spread
// through a cube 200 units wide. One iteration is one frame: the moving boxes
// move (bouncing at the walls), the tree refreshes its leaves and lists the
// overlapping pairs. The reference does the same frame by brute force: it
// copies every box, sorts them by their minimum x and sweeps along x, testing
// each box against those whose x range is still open. The ratio line compares
// them; both check that they found the same number of pairs.
#include "physics/Collider.h"
#include "physics/CubeTree/CubeTree.h"

#include <benchmark/benchmark.h>

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

// The same boxes and motion for the tree and for the reference.
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

// Pairs a brute-force sort and sweep along x finds among the boxes; fills `order` as scratch.
size_t SortAndSweep(const BoxScene& scene, std::vector<const BoxCollider*>& order)
{
    order.clear();
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
    size_t pairs = 0;
    for (auto _ : state)
    {
        scene.MoveAll();
        tree.Update();
        pairs = tree.QueryPairs().size();
        benchmark::DoNotOptimize(pairs);
    }
    std::vector<const BoxCollider*> order;
    if (pairs != SortAndSweep(scene, order))
        state.SkipWithError("the tree and the sweep found different pair counts");
    state.counters["pairs"] = static_cast<double>(pairs);
}
BENCHMARK(CubeTreeFrame)->Unit(benchmark::kMicrosecond);

void CubeTreeFrame_Reference(benchmark::State& state)
{
    BoxScene scene;
    std::vector<const BoxCollider*> order;
    size_t pairs = 0;
    for (auto _ : state)
    {
        scene.MoveAll();
        for (int i = 0; i < kMoving; ++i)
            scene.boxes[i]->UpdateBounds();
        pairs = SortAndSweep(scene, order);
        benchmark::DoNotOptimize(pairs);
    }
    state.counters["pairs"] = static_cast<double>(pairs);
}
BENCHMARK(CubeTreeFrame_Reference)->Unit(benchmark::kMicrosecond);
}
