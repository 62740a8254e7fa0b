// A program's Apply before a draw with 20 variables bound to the variable
// table, none changed since the last draw, beside a plain loop comparing 20
// integers with the ones last seen, in one run. The ratio line compares them.
#include "Graphics_Engine/ProgramBindings.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdint>
#include <string>

namespace
{
constexpr int kVariables = 20;

// Counts nothing: nothing should reach the device.
class IdleUploader : public Graphics::ProgramUploader
{
public:
    void UploadConstantBuffer(int, unsigned, const Graphics::ConstantBuffer&) override { ++calls; }
    void BindTextures(int, const std::vector<Graphics::ResourceHandle>&) override { ++calls; }
    void BindUnordered(int, const std::vector<Graphics::ResourceHandle>&) override { ++calls; }
    int calls = 0;
};

void ProgramApplyUnchanged(benchmark::State& state)
{
    Graphics::VariableTable table;
    Graphics::StageReflection vertex;
    Graphics::StageReflection pixel;
    vertex.AddConstantBuffer("Vertex", kVariables * 16);
    pixel.AddConstantBuffer("Pixel", kVariables * 16);
    for (int i = 0; i < kVariables; ++i)
    {
        const std::string name = "f4_Value" + std::to_string(i);
        table.SetVariable(name, Math::Vector4D(1, 2, 3, static_cast<float>(i)));
        (i % 2 ? pixel : vertex).AddVariable(0, name, static_cast<unsigned>(i / 2) * 16, 16);
    }
    Graphics::ProgramBindings bindings;
    bindings.Link({&vertex, nullptr, nullptr, nullptr, &pixel, nullptr}, table);
    IdleUploader device;
    bindings.Apply(device);
    device.calls = 0;
    for (auto _ : state)
    {
        bindings.Apply(device);
        benchmark::ClobberMemory();
    }
    if (device.calls != 0 || bindings.BindingCount() != kVariables)
        state.SkipWithError("Apply uploaded with nothing changed");
}
BENCHMARK(ProgramApplyUnchanged);

void ProgramApplyUnchanged_Reference(benchmark::State& state)
{
    std::array<std::uint64_t, kVariables> versions{};
    std::array<std::uint64_t, kVariables> lastSeen{};
    for (int i = 0; i < kVariables; ++i)
        versions[i] = lastSeen[i] = static_cast<std::uint64_t>(i) + 1;
    int changed = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(versions.data());
        benchmark::DoNotOptimize(lastSeen.data());
        for (int i = 0; i < kVariables; ++i)
            if (versions[i] != lastSeen[i])
                ++changed;
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(changed);
}
BENCHMARK(ProgramApplyUnchanged_Reference);
}
