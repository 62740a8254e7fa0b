// The renderer's CPU side for a scene of 10,000 meshes of 10 models in a quad
// tree over a room of 20 by 20 cells, seen whole from a camera above at 1920
// by 1080, with 1,000 moving point lights.
//
// VisibleLists builds the visible lists alone. ListsAndInstanceRows builds them
// and writes every mesh's eleven
// instance rows through the geometry stage's batching, on a device that draws
// nothing, beside a plain loop that only copies the same 10,000 world
// matrices into one array (the reference of both). FrameCpuWork adds
// the lights' records and their upload, beside a plain copy of the same bytes
// (the instance rows and the light records). The ratio lines compare them.
// RendererFrame draws the whole scene with the engine on an OpenGL context
// (the offscreen driver here; a GPU where there is one) and reports the
// frame's wall and CPU time; it has no reference.
#include "Components/Camera/Camera/Camera.h"
#include "Components/Light/Light.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/Components/MeshResources.h"
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "Graphics_Engine/PipeLines/Batching.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "Graphics_Engine/Projection.h"
#include "Graphics_Engine/RenderLists.h"
#include "Graphics_Engine/ShaderLookup.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "Graphics_Engine/Spaces/SpaceRenderData.h"
#include "Graphics_Engine/VariableTable.h"
#include "Graphics_Engine/WorldMatrix.h"
#include "NullGraphicsDevice.h"
#include "platform/NativeWindow.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <vector>

namespace
{
constexpr int kMeshes = 10000;
constexpr int kLights = 1000;
constexpr int kRowsPerMesh = 11;
const std::string kDataDirectory = std::string(VORN_DATA_DIR) + "/";
// Ten models other than the cube, which is drawn one by one.
const char* const kModels[] = {"sphere", "capsule", "cone", "cylinder", "plane",
                               "ramp",   "rock0",   "rock1", "rock2",   "player"};
const Math::Vector3D kScale(0.5f, 0.5f, 0.5f);

Math::Point3D PositionOf(int i)
{
    return Math::Point3D(-49.5f + static_cast<float>(i % 100), 0.0f, -49.5f + static_cast<float>(i / 100));
}

// Every mesh draws with one loaded program.
class OneProgram : public Graphics::ShaderLookup
{
public:
    explicit OneProgram(Graphics::ShaderProgram& program) : m_Program(program) {}
    Graphics::ShaderProgram* Resolve(Graphics::ShaderComponent& shaders) override
    {
        shaders.m_Shader = &m_Program;
        shaders.m_Dirty = false;
        return &m_Program;
    }
    bool IsForward(const Graphics::ShaderProgram*) const override { return false; }
    bool IsLoaded(const Graphics::ShaderProgram* program) const override { return program && program->Loaded; }

private:
    Graphics::ShaderProgram& m_Program;
};

// A camera 150 units above the room's centre looking down, with the engine's perspective at 1920 by 1080.
Math::Matrix4 ViewProjection()
{
    Camera camera;
    Transform transform;
    transform.m_Position = Math::Point3D(0, 150, 0);
    camera.m_Transform = &transform;
    camera.ViewVector = Math::Vector3D(0, -1, 0);
    camera.m_Up = Math::Vector3D(0, 0, -1);
    camera.Update();
    return camera.m_View * Graphics::MakeProjection(45.0f, 1920, 1080);
}

// 1,000 point lights in a 40 by 25 grid over the room, owned with their Transforms.
struct LightField
{
    void Add(Graphics::GraphicsSpace& graphics)
    {
        for (int i = 0; i < kLights; ++i)
        {
            transforms.push_back(std::make_unique<Transform>());
            lights.push_back(std::make_unique<Light>());
            Light& light = *lights.back();
            light.LightType = LightType::Point;
            light.Diffuse = Math::Color(1.0f, 0.5f, 0.25f, 1.0f);
            light.Range = 5.0f;
            light.Attenuation = Math::Vector3D(1.0f, 0.0f, 0.1f);
            graphics.AddLight(&light, transforms.back().get());
        }
    }
    // Moves every light a little, as scripts would.
    void Move(float time)
    {
        const float sway = std::sin(time);
        for (int i = 0; i < kLights; ++i)
            transforms[static_cast<std::size_t>(i)]->m_Position =
                Math::Point3D(-48.0f + 2.4f * static_cast<float>(i % 40) + sway, 2.0f,
                              -48.0f + 4.0f * static_cast<float>(i / 40));
    }
    void Remove(Graphics::GraphicsSpace& graphics)
    {
        for (const auto& light : lights)
            graphics.RemoveLight(light.get());
    }

    std::vector<std::unique_ptr<Transform>> transforms;
    std::vector<std::unique_ptr<Light>> lights;
};

// The meshes in their tree, the visible lists and the instance buffer on a device that draws nothing.
struct MeshScene
{
    MeshScene() : models(device), program(device, table, 1, {}), shaders(program), instances(device)
    {
        models.Initialize(kDataDirectory);
        Graphics::SetMeshModels(&models);
        space->Tree.BuildGrid(Math::Point3D(-50, -5, -50), Math::Vector3D(5, 10, 5), 20, 20);
        for (int i = 0; i < kMeshes; ++i)
        {
            meshes.push_back(std::make_unique<Graphics::Mesh>());
            meshes.back()->SetModel(kModels[i % 10]);
            space->Tree.AddObject(meshes.back().get(), PositionOf(i), kScale, Math::Quaternion());
        }
        space->Tree.Update();
        lists.AddSpace(space);
        program.Loaded = true;
        instances.BuildBuffer();
    }
    ~MeshScene() { Graphics::SetMeshModels(nullptr); }

    // Builds the lists and writes every instance row through the batching.
    void DrawMeshes()
    {
        lists.Build(viewProjection, Math::Point3D(0, 150, 0), shaders);
        for (const auto& [key, records] : lists.m_Deferred)
            Graphics::DrawDeferredKey(records, nullptr, device, instances);
    }

    NullGraphicsDevice device;
    Graphics::VariableTable table;
    Graphics::ModelManager models;
    std::shared_ptr<Graphics::SpaceRenderData> space = std::make_shared<Graphics::SpaceRenderData>();
    std::vector<std::unique_ptr<Graphics::Mesh>> meshes;
    Graphics::RenderLists lists;
    Graphics::ShaderProgram program;
    OneProgram shaders;
    Graphics::InstanceBuffer instances;
    const Math::Matrix4 viewProjection = ViewProjection();
};

// Fails the run unless every mesh of every frame was drawn.
void CheckEveryMeshDrawn(benchmark::State& state, const NullGraphicsDevice& device)
{
    const double frames = static_cast<double>(state.iterations());
    state.counters["instances"] = frames > 0 ? static_cast<double>(device.Instances) / frames : 0.0;
    state.counters["draws"] = frames > 0 ? static_cast<double>(device.Draws) / frames : 0.0;
    if (frames > 0 && device.Instances != static_cast<unsigned long long>(kMeshes) * state.iterations())
        state.SkipWithError("not every mesh was drawn");
}

void VisibleLists(benchmark::State& state)
{
    MeshScene scene;
    for (auto _ : state)
    {
        scene.lists.Build(scene.viewProjection, Math::Point3D(0, 150, 0), scene.shaders);
        benchmark::ClobberMemory();
    }
    std::size_t listed = 0;
    for (const auto& entry : scene.lists.m_Deferred)
        listed += entry.second.size();
    if (listed != static_cast<std::size_t>(kMeshes) || scene.lists.m_Deferred.size() != 10)
        state.SkipWithError("not every mesh was listed");
}
BENCHMARK(VisibleLists)->Unit(benchmark::kMicrosecond);

void ListsAndInstanceRows(benchmark::State& state)
{
    MeshScene scene;
    for (auto _ : state)
    {
        scene.DrawMeshes();
        benchmark::ClobberMemory();
    }
    CheckEveryMeshDrawn(state, scene.device);
}
BENCHMARK(ListsAndInstanceRows)->Unit(benchmark::kMicrosecond);

// Copies the same 10,000 world matrices into one array: the reference of the two above.
void CopyWorldMatrices(benchmark::State& state)
{
    std::vector<Math::Matrix4> worlds;
    for (int i = 0; i < kMeshes; ++i)
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
BENCHMARK(CopyWorldMatrices)->Name("VisibleLists_Reference")->Unit(benchmark::kMicrosecond);
BENCHMARK(CopyWorldMatrices)->Name("ListsAndInstanceRows_Reference")->Unit(benchmark::kMicrosecond);

void FrameCpuWork(benchmark::State& state)
{
    MeshScene scene;
    Graphics::LightManager lightManager;
    lightManager.SetDevice(&scene.device);
    lightManager.CreateLightBuffer();
    Graphics::GraphicsSpace graphics;
    graphics.SetLightManager(&lightManager);
    LightField field;
    field.Add(graphics);
    float time = 0.0f;
    for (auto _ : state)
    {
        time += 0.016f;
        field.Move(time);
        graphics.WriteLightRecords();
        scene.DrawMeshes();
        lightManager.Upload();
        benchmark::ClobberMemory();
    }
    CheckEveryMeshDrawn(state, scene.device);
    if (lightManager.ActiveLights != static_cast<unsigned>(kLights))
        state.SkipWithError("not every light was uploaded");
    field.Remove(graphics);
    graphics.SetLightManager(nullptr);
}
BENCHMARK(FrameCpuWork)->Unit(benchmark::kMicrosecond);

void FrameCpuWork_Reference(benchmark::State& state)
{
    // The bytes a frame hands the GPU: eleven rows of four floats a mesh, and a record a light.
    const std::size_t bytes = static_cast<std::size_t>(kMeshes) * kRowsPerMesh * 16 +
                              static_cast<std::size_t>(kLights) * sizeof(Graphics::s_Light);
    std::vector<std::uint8_t> from(bytes, 1);
    std::vector<std::uint8_t> to(bytes);
    for (auto _ : state)
    {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(FrameCpuWork_Reference)->Unit(benchmark::kMicrosecond);

// The CPU seconds the calling thread has used.
double ThreadSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void RendererFrame(benchmark::State& state)
{
    setenv("SDL_VIDEODRIVER", "offscreen", 0);
    Platform::NativeWindow window;
    window.RequestOpenGl(true);
    if (!window.Create("Vorn renderer benchmark", 1920, 1080, 1, 1))
    {
        state.SkipWithError("no window");
        return;
    }
    {
        Graphics::GraphicsEngine engine;
        engine.Fullscreen = false;
        engine.Resolution = 6;
        engine.InitializeOn(window, 1.0f, 1.0f, kDataDirectory);
        if (!engine.Device())
        {
            state.SkipWithError("no OpenGL device");
            return;
        }
        Graphics::GraphicsSpace graphics;
        engine.AttachSpace(graphics);
        graphics.GetQuadTree()->BuildGrid(Math::Point3D(-50, -5, -50), Math::Vector3D(5, 10, 5), 20, 20);
        std::vector<std::unique_ptr<Transform>> transforms;
        std::vector<std::unique_ptr<Graphics::Mesh>> meshes;
        for (int i = 0; i < kMeshes; ++i)
        {
            transforms.push_back(std::make_unique<Transform>());
            transforms.back()->m_Position = PositionOf(i);
            transforms.back()->m_Scale = kScale;
            meshes.push_back(std::make_unique<Graphics::Mesh>());
            meshes.back()->SetModel(kModels[i % 10]);
            graphics.AddGraphicsComponent(static_cast<GameObjectId>(i + 1), meshes.back().get(),
                                          transforms.back().get());
        }
        LightField field;
        field.Add(graphics);
        Transform eye;
        eye.m_Position = Math::Point3D(0, 150, 0);
        Camera camera;
        camera.m_Transform = &eye;
        camera.ViewVector = Math::Vector3D(0, -1, 0);
        camera.m_Up = Math::Vector3D(0, 0, -1);
        graphics.SetCamera(&camera);
        // A first frame places the meshes and compiles what the driver compiles late.
        graphics.Update(0.016f);
        engine.Update(0.016f);
        engine.Device()->Finish();

        double cpu = 0.0;
        float time = 0.0f;
        for (auto _ : state)
        {
            time += 0.016f;
            field.Move(time);
            const double start = ThreadSeconds();
            graphics.Update(0.016f);
            engine.Update(0.016f);
            cpu += ThreadSeconds() - start;
            engine.Device()->Finish();
        }
        state.counters["frame_cpu_ms"] = benchmark::Counter(cpu * 1000.0 / static_cast<double>(state.iterations()));
        graphics.SetCamera(nullptr);
        field.Remove(graphics);
        graphics.SetRenderLists(nullptr);
        engine.ShutdownDevice();
    }
    window.Destroy();
}
BENCHMARK(RendererFrame)->Unit(benchmark::kMillisecond)->UseRealTime();
}
