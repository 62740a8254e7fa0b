// Start-up cost of the game's content, beside reading the same files' bytes
// from disk, in one run; the ratio lines compare them:
//
// - ModelManagerLoadAll: ModelManager::Initialize on the game's data
//   directory (the built-in shapes, then every kbm and kba of "Models/",
//   read, checked and turned into immutable vertex and index buffers);
// - TextureManagerLoadAll: InitTextureManager (each file of "3DTextures/"
//   decoded and made into a texture with its mip chain, the mips generated,
//   and the built-in GUI font image);
// - ContentLoadAll: both, as the game starts them.
//
// The context is made on the offscreen video driver unless SDL_VIDEODRIVER
// names another; GL work is waited for inside each iteration.
#include "Graphics_Engine/Material/Texture/TextureManager.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "engine/Files.h"
#include "platform/NativeWindow.h"
#include "platform/gl/GlContext.h"
#include "platform/gl/GlDevice.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace
{
const std::string kDataDirectory = std::string(VORN_DATA_DIR) + "/";

// Runs `load` once per iteration on a real device, waiting for the device each time.
void OnDevice(benchmark::State& state, const std::function<void(Graphics::GraphicsDevice&)>& load)
{
    setenv("SDL_VIDEODRIVER", "offscreen", 0);
    Platform::NativeWindow window;
    Platform::GlContext context;
    std::string error;
    window.RequestOpenGl(true);
    if (!window.Create("Vorn content benchmark", 64, 64, 1, 1) || !context.Create(window, error))
    {
        state.SkipWithError(("no OpenGL context: " + error).c_str());
        return;
    }
    {
        const std::unique_ptr<Graphics::GraphicsDevice> device = Platform::CreateGlDevice(context);
        for (auto _ : state)
        {
            load(*device);
            device->Finish();
        }
    }
    context.Destroy();
    window.Destroy();
}

// Reads every file of the folders' bytes once per iteration.
void ReadBytes(benchmark::State& state, const std::vector<std::string>& folders)
{
    std::vector<std::string> files;
    for (const std::string& folder : folders)
        Util::ListFiles(kDataDirectory + folder, files, true);
    std::size_t bytes = 0;
    for (auto _ : state)
    {
        bytes = 0;
        for (const std::string& path : files)
        {
            std::ifstream file(path, std::ios::binary);
            const std::vector<char> data{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
            bytes += data.size();
            benchmark::DoNotOptimize(data.data());
        }
    }
    state.counters["bytes"] = static_cast<double>(bytes);
    state.counters["files"] = static_cast<double>(files.size());
}

void LoadModels(Graphics::GraphicsDevice& device)
{
    Graphics::ModelManager models(device);
    models.Initialize(kDataDirectory);
    benchmark::DoNotOptimize(models.ModelCount());
}

void LoadTextures(Graphics::GraphicsDevice& device)
{
    Graphics::TextureManager textures(device);
    textures.InitTextureManager(kDataDirectory);
    benchmark::DoNotOptimize(textures.Slots().size());
}

void ModelManagerLoadAll(benchmark::State& state)
{
    OnDevice(state, LoadModels);
}
BENCHMARK(ModelManagerLoadAll)->Unit(benchmark::kMillisecond);

void ModelManagerLoadAll_Reference(benchmark::State& state)
{
    ReadBytes(state, {"Models/"});
}
BENCHMARK(ModelManagerLoadAll_Reference)->Unit(benchmark::kMillisecond);

void TextureManagerLoadAll(benchmark::State& state)
{
    OnDevice(state, LoadTextures);
}
BENCHMARK(TextureManagerLoadAll)->Unit(benchmark::kMillisecond);

void TextureManagerLoadAll_Reference(benchmark::State& state)
{
    ReadBytes(state, {Graphics::TextureManager::kFolder});
}
BENCHMARK(TextureManagerLoadAll_Reference)->Unit(benchmark::kMillisecond);

void ContentLoadAll(benchmark::State& state)
{
    OnDevice(state, [](Graphics::GraphicsDevice& device) {
        LoadModels(device);
        LoadTextures(device);
    });
}
BENCHMARK(ContentLoadAll)->Unit(benchmark::kMillisecond);

void ContentLoadAll_Reference(benchmark::State& state)
{
    ReadBytes(state, {"Models/", Graphics::TextureManager::kFolder});
}
BENCHMARK(ContentLoadAll_Reference)->Unit(benchmark::kMillisecond);
}
