// The narrow phase's cost per pair: sphere against sphere (the closed test
// through the dispatch), a turned box against a turned box and an arc against
// a box (both through GJK and the expanding polytope). Each runs over the
// same 256 seeded poses, about half of them touching, and each stands beside
// the closed-form sphere test written as plain code over 256 pairs of
// centres; the ratio lines compare them. The counters give the average GJK
// and polytope rounds per pair and the share of pairs that touch.
#include "Components/Transform/Transform.h"
#include "physics/ColliderArc.h"
#include "physics/ColliderCube.h"
#include "physics/ColliderSphere.h"
#include "physics/Contact.h"
#include "physics/ConvexTest.h"
#include "physics/NarrowPhase.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace
{
constexpr int kPoses = 256;

enum class Shape
{
    Sphere,
    Cube,
    Arc,
};

struct Body
{
    Transform transform;
    std::unique_ptr<Collider> collider;
};

Math::Quaternion RandomRotation(std::mt19937& random)
{
    std::normal_distribution<float> normal;
    Math::Quaternion q(normal(random), normal(random), normal(random), normal(random));
    q.Normalize();
    return q;
}

std::unique_ptr<Body> MakeBody(Shape shape, const Math::Point3D& at, std::mt19937& random)
{
    auto body = std::make_unique<Body>();
    body->transform.m_Position = at;
    body->transform.m_Rotation = RandomRotation(random);
    if (shape == Shape::Sphere)
    {
        auto sphere = std::make_unique<ColliderSphere>();
        sphere->Radius = 0.6f;
        body->collider = std::move(sphere);
    }
    else if (shape == Shape::Cube)
    {
        body->collider = std::make_unique<ColliderCube>();
    }
    else
    {
        auto arc = std::make_unique<ColliderArc>();
        arc->BuildArc(90.0f, 1.2f, 0.3f, 0.5f);
        body->collider = std::move(arc);
    }
    body->collider->transform = &body->transform;
    body->collider->UpdateBounds();
    return body;
}

// Pairs of shapes at seeded poses: the second within 1.2 of the first on every axis.
struct Scene
{
    Scene(Shape first, Shape second)
    {
        std::mt19937 random(4242u);
        std::uniform_real_distribution<float> offset(-1.2f, 1.2f);
        for (int i = 0; i < kPoses; ++i)
        {
            a.push_back(MakeBody(first, Math::Point3D(), random));
            b.push_back(MakeBody(second, Math::Point3D(offset(random), offset(random), offset(random)), random));
        }
    }
    std::vector<std::unique_ptr<Body>> a, b;
};

void PairTest(benchmark::State& state, Shape first, Shape second)
{
    Scene scene(first, second);
    std::size_t touching = 0;
    for (auto _ : state)
    {
        for (int i = 0; i < kPoses; ++i)
        {
            Contact contact;
            contact.colliderA = scene.a[static_cast<std::size_t>(i)]->collider.get();
            contact.colliderB = scene.b[static_cast<std::size_t>(i)]->collider.get();
            touching += NarrowPhase::Collide(contact);
            benchmark::DoNotOptimize(contact.penetration);
        }
    }
    // The rounds the general test takes over the same poses, outside the timing.
    double gjk = 0.0, epa = 0.0;
    int hits = 0;
    for (int i = 0; i < kPoses; ++i)
    {
        ConvexTest::Stats stats;
        Math::Vector3D normal;
        float depth = 0.0f;
        hits += ConvexTest::Collide(*scene.a[static_cast<std::size_t>(i)]->collider,
                                    *scene.b[static_cast<std::size_t>(i)]->collider, normal, depth, &stats);
        gjk += stats.gjkIterations;
        epa += stats.epaIterations;
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * kPoses);
    state.counters["touching"] = static_cast<double>(touching) / (static_cast<double>(state.iterations()) * kPoses);
    if (first != Shape::Sphere || second != Shape::Sphere)
    {
        state.counters["gjk_rounds"] = gjk / kPoses;
        state.counters["epa_rounds"] = hits ? epa / hits : 0.0;
    }
}

// The closed-form sphere test as plain code: the same number of pairs of centres and radii.
void SpherePairsInPlainCode(benchmark::State& state)
{
    struct Ball
    {
        float x, y, z, radius;
    };
    std::mt19937 random(4242u);
    std::uniform_real_distribution<float> offset(-1.2f, 1.2f);
    std::vector<Ball> a(kPoses), b(kPoses);
    for (int i = 0; i < kPoses; ++i)
    {
        a[static_cast<std::size_t>(i)] = {0.0f, 0.0f, 0.0f, 0.6f};
        b[static_cast<std::size_t>(i)] = {offset(random), offset(random), offset(random), 0.6f};
    }
    for (auto _ : state)
    {
        for (int i = 0; i < kPoses; ++i)
        {
            const Ball& p = a[static_cast<std::size_t>(i)];
            const Ball& q = b[static_cast<std::size_t>(i)];
            const float dx = q.x - p.x, dy = q.y - p.y, dz = q.z - p.z;
            const float reach = p.radius + q.radius;
            const float lengthSquare = dx * dx + dy * dy + dz * dz;
            float depth = 0.0f;
            if (lengthSquare <= reach * reach)
                depth = reach - std::sqrt(lengthSquare);
            benchmark::DoNotOptimize(depth);
        }
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * kPoses);
}

void NarrowPhaseSphereSphere(benchmark::State& state) { PairTest(state, Shape::Sphere, Shape::Sphere); }
BENCHMARK(NarrowPhaseSphereSphere)->Unit(benchmark::kMicrosecond);
void NarrowPhaseSphereSphere_Reference(benchmark::State& state) { SpherePairsInPlainCode(state); }
BENCHMARK(NarrowPhaseSphereSphere_Reference)->Unit(benchmark::kMicrosecond);

void NarrowPhaseCubeCube(benchmark::State& state) { PairTest(state, Shape::Cube, Shape::Cube); }
BENCHMARK(NarrowPhaseCubeCube)->Unit(benchmark::kMicrosecond);
void NarrowPhaseCubeCube_Reference(benchmark::State& state) { SpherePairsInPlainCode(state); }
BENCHMARK(NarrowPhaseCubeCube_Reference)->Unit(benchmark::kMicrosecond);

void NarrowPhaseArcCube(benchmark::State& state) { PairTest(state, Shape::Arc, Shape::Cube); }
BENCHMARK(NarrowPhaseArcCube)->Unit(benchmark::kMicrosecond);
void NarrowPhaseArcCube_Reference(benchmark::State& state) { SpherePairsInPlainCode(state); }
BENCHMARK(NarrowPhaseArcCube_Reference)->Unit(benchmark::kMicrosecond);
}
