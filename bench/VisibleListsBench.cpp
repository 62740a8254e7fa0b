// Building the visible lists of a frame for 10,000 objects of 10 models, one
// program, in a quad tree over a room of 20 by 20 cells, seen whole from a
// camera above, beside a plain loop copying the same 10,000 world matrices into
// one array, in one run. The ratio line compares them.
#include "Components/Camera/Camera/ViewMatrix.h"
#include "Graphics_Engine/Components/BaseGraphicsComponent.h"
#include "Graphics_Engine/RenderLists.h"
#include "Graphics_Engine/ShaderLookup.h"
#include "Graphics_Engine/Spaces/SpaceRenderData.h"
#include "Graphics_Engine/WorldMatrix.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <vector>

namespace
{
constexpr int kObjects = 10000;
constexpr unsigned kModels = 10;

class BenchMesh : public Graphics::BaseGraphicsComponent
{
public:
    explicit BenchMesh(unsigned model) : m_Model(model) {}
    Component* Clone() const override { return new BenchMesh(m_Model); }
    unsigned GetModelId() const override { return m_Model; }
    unsigned m_Model;
};

char g_Program;

// One loaded deferred program for every object.
class OneProgram : public Graphics::ShaderLookup
{
public:
    Graphics::ShaderProgram* Resolve(Graphics::ShaderComponent& shaders) override
    {
        if (shaders.m_Dirty)
        {
            shaders.m_Shader = reinterpret_cast<Graphics::ShaderProgram*>(&g_Program);
            shaders.m_Dirty = false;
        }
        return shaders.m_Shader;
    }
    bool IsForward(const Graphics::ShaderProgram*) const override { return false; }
    bool IsLoaded(const Graphics::ShaderProgram* program) const override { return program != nullptr; }
};

Math::Point3D PositionOf(int i)
{
    return Math::Point3D(-49.5f + static_cast<float>(i % 100), 0.0f, -49.5f + static_cast<float>(i / 100));
}

const Math::Vector3D kScale(0.5f, 0.5f, 0.5f);

// A camera 150 units above the room's centre looking down, with the engine's 45-degree perspective.
Math::Matrix4 ViewProjection()
{
    const Math::Matrix4 view = CameraMath::LookAlong(Math::Point3D(0, 150, 0), Math::Vector3D(0, -1, 0),
                                                     Math::Vector3D(0, 1, 0));
    const float cot = 1.0f / std::tan(45.0f * 3.14159265f / 360.0f);
    Math::Matrix4 p(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    p.m[0][0] = cot / (1920.0f / 1080.0f);
    p.m[1][1] = cot;
    p.m[2][2] = 1000.0f / (0.1f - 1000.0f);
    p.m[2][3] = -1.0f;
    p.m[3][2] = 0.1f * 1000.0f / (0.1f - 1000.0f);
    return view * p;
}

void VisibleLists(benchmark::State& state)
{
    std::vector<std::unique_ptr<BenchMesh>> meshes;
    auto space = std::make_shared<Graphics::SpaceRenderData>();
    Graphics::QuadTree& tree = space->Tree;
    tree.m_Origin = Math::Point3D(-50, 0, -50);
    tree.m_CellSize = Math::Vector3D(5, 10, 5);
    tree.m_CellsAcross = 20;
    tree.m_CellsDown = 20;
    tree.Build();
    for (int i = 0; i < kObjects; ++i)
    {
        meshes.push_back(std::make_unique<BenchMesh>(static_cast<unsigned>(i) % kModels));
        tree.AddObject(meshes.back().get(), PositionOf(i), kScale, Math::Quaternion());
    }
    tree.Update();
    Graphics::RenderLists lists;
    lists.AddSpace(space);
    OneProgram shaders;
    const Math::Matrix4 viewProjection = ViewProjection();
    const Math::Point3D eye(0, 150, 0);
    for (auto _ : state)
    {
        lists.Build(viewProjection, eye, shaders);
        benchmark::DoNotOptimize(lists.m_Deferred.begin()->second.data());
        benchmark::ClobberMemory();
    }
    std::size_t listed = 0;
    for (const auto& entry : lists.m_Deferred)
        listed += entry.second.size();
    if (listed != static_cast<std::size_t>(kObjects) || lists.m_Deferred.size() != kModels)
        state.SkipWithError("not every object was listed");
}
BENCHMARK(VisibleLists)->Unit(benchmark::kMicrosecond);

void VisibleLists_Reference(benchmark::State& state)
{
    std::vector<Math::Matrix4> worlds;
    for (int i = 0; i < kObjects; ++i)
        worlds.push_back(Graphics::MakeWorldMatrix(PositionOf(i), kScale, Math::Quaternion()));
    std::vector<Math::Matrix4> copies(worlds.size());
    for (auto _ : state)
    {
        for (std::size_t i = 0; i < worlds.size(); ++i)
            copies[i] = worlds[i];
        benchmark::DoNotOptimize(copies.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(VisibleLists_Reference)->Unit(benchmark::kMicrosecond);
}
