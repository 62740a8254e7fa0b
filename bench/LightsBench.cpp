// The CPU cost of lights: 1,000 moving point lights whose records a space
// writes from their components (the space's step of each frame) and the light
// manager uploads to sb_lights (the compute pass's first step), on a device
// that draws nothing (its buffers are plain memory). The reference copies the
// same 112,000 bytes, 1,000 records of 112, from one array into another; the
// ratio line compares them.
#include "Components/Light/Light.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "NullGraphicsDevice.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

namespace
{
constexpr int kLights = 1000;

void LightRecordsAndUpload(benchmark::State& state)
{
    NullGraphicsDevice device;
    Graphics::LightManager manager;
    manager.SetDevice(&device);
    manager.CreateLightBuffer();
    Graphics::GraphicsSpace graphics;
    graphics.SetLightManager(&manager);
    std::vector<std::unique_ptr<Transform>> transforms;
    std::vector<std::unique_ptr<Light>> lights;
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
    float time = 0.0f;
    for (auto _ : state)
    {
        // The lights move a little each frame, as scripts would move them.
        time += 0.016f;
        const float sway = std::sin(time);
        for (int i = 0; i < kLights; ++i)
            transforms[static_cast<std::size_t>(i)]->m_Position =
                Math::Point3D(static_cast<float>(i % 40) + sway, 1.0f, static_cast<float>(i / 40));
        graphics.WriteLightRecords();
        manager.Upload();
        benchmark::ClobberMemory();
    }
    if (manager.ActiveLights != static_cast<unsigned>(kLights))
        state.SkipWithError("not every light was uploaded");
    state.counters["lights"] = manager.ActiveLights;
    for (const auto& light : lights)
        graphics.RemoveLight(light.get());
    graphics.SetLightManager(nullptr);
}
BENCHMARK(LightRecordsAndUpload)->Unit(benchmark::kMicrosecond);

void LightRecordsAndUpload_Reference(benchmark::State& state)
{
    std::vector<Graphics::s_Light> records(kLights, Graphics::FreshLightRecord());
    std::vector<Graphics::s_Light> copies(kLights);
    for (auto _ : state)
    {
        std::memcpy(copies.data(), records.data(), kLights * sizeof(Graphics::s_Light));
        benchmark::DoNotOptimize(copies.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(LightRecordsAndUpload_Reference)->Unit(benchmark::kMicrosecond);
}
