// Small-object churn shaped like the engine: blocks of 8 to 256 bytes, most
// freed a few allocations later, one in sixteen kept for a long while, run on
// one thread and on two. Engine::MemoryManager (a private instance) runs beside
// glibc malloc, mimalloc and jemalloc in the same run; each pair prints a ratio,
// "MemoryChurnVsGlibc/threads:1 : 0.5x" meaning the manager takes half glibc's time.
// MemoryChurnVsBareList sets the manager beside the least an allocator can do
// here (a free list per size, nothing checked or counted), the floor of the churn.
//
// mimalloc and jemalloc are loaded with dlopen and called through their own
// names (mi_malloc/mi_free, mallocx/dallocx), so that neither replaces the
// program's malloc. GameStartupMemoryManager runs the game for one frame with
// its operator new served by the manager, beside the same run with
// VORN_MEMORY_MANAGER=0 (malloc).
#include "engine/Memory/MemoryManager.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace
{
using AllocateFunction = void* (*)(std::size_t);
using ReleaseFunction = void (*)(void*);

// One allocator under test: its two calls, or why it could not be loaded.
struct Allocator
{
    AllocateFunction allocate = nullptr;
    ReleaseFunction release = nullptr;
    std::string missing;
};

// The benchmark's private manager, made before any benchmark runs.
Engine::MemoryManager* g_Manager = nullptr;

void* ManagerAllocate(std::size_t size) { return g_Manager->Allocate(size); }
void ManagerFree(void* pointer) { g_Manager->Free(pointer); }

const Allocator& Manager()
{
    static const Allocator allocator{ManagerAllocate, ManagerFree, {}};
    return allocator;
}

const Allocator& Glibc()
{
    static const Allocator allocator{std::malloc, std::free, {}};
    return allocator;
}

void* (*g_MiMalloc)(std::size_t) = nullptr;
void (*g_MiFree)(void*) = nullptr;
void* (*g_Mallocx)(std::size_t, int) = nullptr;
void (*g_Dallocx)(void*, int) = nullptr;

// Opens the first library of `names` that loads; null when none does.
void* OpenFirst(std::initializer_list<const char*> names, std::string& missing)
{
    for (const char* name : names)
        if (void* handle = dlopen(name, RTLD_NOW | RTLD_LOCAL))
            return handle;
    const char* error = dlerror();
    missing = error ? error : "not found";
    return nullptr;
}

const Allocator& Mimalloc()
{
    static const Allocator allocator = [] {
        Allocator result;
        if (void* library = OpenFirst({"libmimalloc.so.2", "libmimalloc.so"}, result.missing))
        {
            g_MiMalloc = reinterpret_cast<void* (*)(std::size_t)>(dlsym(library, "mi_malloc"));
            g_MiFree = reinterpret_cast<void (*)(void*)>(dlsym(library, "mi_free"));
        }
        if (g_MiMalloc && g_MiFree)
        {
            result.allocate = [](std::size_t size) { return g_MiMalloc(size); };
            result.release = [](void* pointer) { g_MiFree(pointer); };
        }
        else if (result.missing.empty())
            result.missing = "mi_malloc not found";
        return result;
    }();
    return allocator;
}

const Allocator& Jemalloc()
{
    static const Allocator allocator = [] {
        Allocator result;
        if (void* library = OpenFirst({"libjemalloc.so.2", "libjemalloc.so"}, result.missing))
        {
            g_Mallocx = reinterpret_cast<void* (*)(std::size_t, int)>(dlsym(library, "mallocx"));
            g_Dallocx = reinterpret_cast<void (*)(void*, int)>(dlsym(library, "dallocx"));
        }
        if (g_Mallocx && g_Dallocx)
        {
            result.allocate = [](std::size_t size) { return g_Mallocx(size, 0); };
            result.release = [](void* pointer) { g_Dallocx(pointer, 0); };
        }
        else if (result.missing.empty())
            result.missing = "mallocx not found";
        return result;
    }();
    return allocator;
}

// The floor of the churn: a free list per 16-byte size step, threaded through a one-word header in
// front of each block, and nothing else (no owner check, no counts, no flags, one thread only). Its
// blocks come from a fixed arena; the churn's peak use stays under a megabyte.
struct BareList
{
    static constexpr std::size_t kArenaBytes = 16 << 20;
    std::array<unsigned char*, 20> heads{};
    std::size_t used = 0;
    alignas(16) unsigned char arena[kArenaBytes];
};
BareList g_Bare;

void* BareAllocate(std::size_t size)
{
    const std::size_t step = (size + 15) >> 4;
    unsigned char* block = g_Bare.heads[step];
    if (block)
        g_Bare.heads[step] = *reinterpret_cast<unsigned char**>(block + 8);
    else
    {
        if (g_Bare.used + (step << 4) + 16 > BareList::kArenaBytes)
            std::abort();
        block = g_Bare.arena + g_Bare.used;
        g_Bare.used += (step << 4) + 16;
        *reinterpret_cast<std::size_t*>(block) = step;
    }
    return block + 16;
}

void BareFree(void* pointer)
{
    unsigned char* block = static_cast<unsigned char*>(pointer) - 16;
    const std::size_t step = *reinterpret_cast<std::size_t*>(block);
    *reinterpret_cast<unsigned char**>(block + 8) = g_Bare.heads[step];
    g_Bare.heads[step] = block;
}

const Allocator& Bare()
{
    static const Allocator allocator{BareAllocate, BareFree, {}};
    return allocator;
}

// Request sizes of 8 to 256 bytes, mostly small, as the engine's strings, nodes and binds are.
const std::array<std::uint16_t, 4096>& ChurnSizes()
{
    static const std::array<std::uint16_t, 4096> sizes = [] {
        std::array<std::uint16_t, 4096> result{};
        std::mt19937 random(7);
        for (std::uint16_t& size : result)
        {
            const unsigned pick = random() % 100;
            if (pick < 40)
                size = static_cast<std::uint16_t>(8 + random() % 25);
            else if (pick < 70)
                size = static_cast<std::uint16_t>(33 + random() % 32);
            else if (pick < 90)
                size = static_cast<std::uint16_t>(65 + random() % 64);
            else
                size = static_cast<std::uint16_t>(129 + random() % 128);
        }
        return result;
    }();
    return sizes;
}

constexpr int kOperationsPerIteration = 1000;

void Churn(benchmark::State& state, const Allocator& allocator)
{
    if (!allocator.allocate)
    {
        // jemalloc keeps its thread data in the static TLS block, which a library opened late may
        // not find room in: run with GLIBC_TUNABLES=glibc.rtld.optional_static_tls=65536.
        state.SkipWithError(("allocator not loaded: " + allocator.missing).c_str());
        return;
    }
    const auto& sizes = ChurnSizes();
    std::vector<void*> kept(2048, nullptr);
    std::array<void*, 8> recent{};
    std::uint32_t next = static_cast<std::uint32_t>(state.thread_index()) * 977;
    std::uint32_t keptSlot = 0;
    for (auto _ : state)
    {
        for (int operation = 0; operation < kOperationsPerIteration; ++operation)
        {
            const std::size_t size = sizes[next++ & 4095];
            auto* block = static_cast<unsigned char*>(allocator.allocate(size));
            std::memset(block, static_cast<int>(operation), 8);
            benchmark::DoNotOptimize(block);
            void*& place = (operation & 15) == 0 ? kept[(keptSlot += 613) & 2047] : recent[operation & 7];
            if (place)
                allocator.release(place);
            place = block;
        }
    }
    for (void* block : kept)
        if (block)
            allocator.release(block);
    for (void* block : recent)
        if (block)
            allocator.release(block);
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations()) * kOperationsPerIteration);
}

void RegisterPair(const char* name, const Allocator& (*reference)(), std::initializer_list<int> threadCounts = {1, 2})
{
    const std::string engineName = std::string("MemoryChurnVs") + name;
    for (int threads : threadCounts)
    {
        benchmark::RegisterBenchmark(engineName.c_str(), [](benchmark::State& state) { Churn(state, Manager()); })
            ->Threads(threads)
            ->UseRealTime();
        benchmark::RegisterBenchmark((engineName + "_Reference").c_str(),
                                     [reference](benchmark::State& state) { Churn(state, reference()); })
            ->Threads(threads)
            ->UseRealTime();
    }
}

const bool g_Registered = [] {
    g_Manager = new Engine::MemoryManager();
    RegisterPair("Glibc", Glibc);
    RegisterPair("Mimalloc", Mimalloc);
    RegisterPair("Jemalloc", Jemalloc);
    RegisterPair("BareList", Bare, {1});
    return true;
}();

// The shortest path: one 48-byte block allocated and freed at once, again and again.
void AllocateFreePair(benchmark::State& state, const Allocator& allocator)
{
    for (auto _ : state)
    {
        void* block = allocator.allocate(48);
        benchmark::DoNotOptimize(block);
        allocator.release(block);
    }
}

void MemoryAllocateFreePair(benchmark::State& state) { AllocateFreePair(state, Manager()); }
BENCHMARK(MemoryAllocateFreePair);

void MemoryAllocateFreePair_Reference(benchmark::State& state) { AllocateFreePair(state, Glibc()); }
BENCHMARK(MemoryAllocateFreePair_Reference);

// Runs the game for one frame on the project's data, with or without the manager.
void RunGameOneFrame(benchmark::State& state, bool manager)
{
    const std::filesystem::path appData = std::filesystem::temp_directory_path() / "vorn_bench_memory";
    const std::string command = "cd \"" + std::filesystem::path(VORN_GAME_PATH).parent_path().string() +
                                "\" && SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy VORN_DIALOG_ANSWER=abort " +
                                (manager ? "" : "VORN_MEMORY_MANAGER=0 ") + "VORN_APPDATA_DIR=\"" + appData.string() +
                                "\" \"" VORN_GAME_PATH "\" --frames=01 --datadir=\"" VORN_DATA_DIR "\" > /dev/null 2>&1";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0)
        {
            state.SkipWithError("the game did not end cleanly");
            break;
        }
    std::filesystem::remove_all(appData);
}

void GameStartupMemoryManager(benchmark::State& state) { RunGameOneFrame(state, true); }
BENCHMARK(GameStartupMemoryManager)->Unit(benchmark::kMillisecond)->Iterations(10);

void GameStartupMemoryManager_Reference(benchmark::State& state) { RunGameOneFrame(state, false); }
BENCHMARK(GameStartupMemoryManager_Reference)->Unit(benchmark::kMillisecond)->Iterations(10);
}
