// Start-up cost of the textures: InitTextureManager on the game's data
// directory (read each file of "3DTextures/", decode, make the texture with its
// mip chain on an OpenGL 4.5 context, generate the mips, and the built-in GUI
// font image), beside reading the same files' bytes from disk, in one run. The
// ratio line compares them. The context is made on the offscreen video driver
// unless SDL_VIDEODRIVER names another.
#include "Graphics_Engine/Material/Texture/TextureManager.h"
#include "engine/Files.h"
#include "platform/NativeWindow.h"
#include "platform/gl/GlContext.h"
#include "platform/gl/GlDevice.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{
const std::string kDataDirectory = std::string(VORN_DATA_DIR) + "/";

void TextureManagerLoadAll(benchmark::State& state)
{
    setenv("SDL_VIDEODRIVER", "offscreen", 0);
    Platform::NativeWindow window;
    Platform::GlContext context;
    std::string error;
    window.RequestOpenGl(true);
    if (!window.Create("Vorn texture benchmark", 64, 64, 1, 1) || !context.Create(window, error))
    {
        state.SkipWithError(("no OpenGL context: " + error).c_str());
        return;
    }
    {
        const std::unique_ptr<Graphics::GraphicsDevice> device = Platform::CreateGlDevice(context);
        std::size_t slots = 0;
        for (auto _ : state)
        {
            Graphics::TextureManager manager(*device);
            manager.InitTextureManager(kDataDirectory);
            device->Finish();
            slots = manager.Slots().size();
        }
        state.counters["textures"] = static_cast<double>(slots);
    }
    context.Destroy();
    window.Destroy();
}
BENCHMARK(TextureManagerLoadAll)->Unit(benchmark::kMillisecond);

void TextureManagerLoadAll_Reference(benchmark::State& state)
{
    std::vector<std::string> files;
    Util::ListFiles(kDataDirectory + Graphics::TextureManager::kFolder, files, true);
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
}
BENCHMARK(TextureManagerLoadAll_Reference)->Unit(benchmark::kMillisecond);
}
