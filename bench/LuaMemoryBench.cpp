// The Lua state's memory over 10,000 frames of a script that makes garbage
// every frame. The engine's state runs with the automatic collector off and one
// collector step per frame (LuaSystem::Update); the reference is a plain state
// with Lua's automatic collector on. Both print the state's memory at the start
// and at the end; the line "memory ... ratio" gives the engine's end memory over
// the reference's. The time of the 10,000 frames is compared as usual.
#include "utilities/lua/LuaSystem.h"

#include <benchmark/benchmark.h>
#include <lua.hpp>

#include <cstdio>

namespace
{
constexpr int kFrames = 10000;

// Each frame drops fifty small tables and their strings; the last one is kept in a global, so the
// compiler can't leave the allocations out.
constexpr const char* kFrameScript = R"(
function Frame()
    local list = {}
    for i = 1, 50 do
        list[i] = {x = i, y = i * 2, name = "item" .. i}
    end
    lastFrame = list
end
)";

struct MemoryRun
{
    int startKb = 0;
    int endKb = 0;
    int peakKb = 0;
};

// Runs the frames on `L`, calling `step` after each; gives the memory at start, end and its peak.
template <class Step>
MemoryRun RunFrames(lua_State* L, Step step)
{
    luaL_dostring(L, kFrameScript);
    lua_getglobal(L, "Frame");
    const int frame = luaL_ref(L, LUA_REGISTRYINDEX);
    MemoryRun run;
    run.startKb = run.peakKb = lua_gc(L, LUA_GCCOUNT, 0);
    for (int i = 0; i < kFrames; ++i)
    {
        lua_rawgeti(L, LUA_REGISTRYINDEX, frame);
        lua_call(L, 0, 0);
        step();
        const int kb = lua_gc(L, LUA_GCCOUNT, 0);
        if (kb > run.peakKb)
            run.peakKb = kb;
    }
    run.endKb = lua_gc(L, LUA_GCCOUNT, 0);
    luaL_unref(L, LUA_REGISTRYINDEX, frame);
    return run;
}

MemoryRun RunReference()
{
    lua_State* L = luaL_newstate();
    luaL_openlibs(L);
    const MemoryRun run = RunFrames(L, [] {});
    lua_close(L);
    return run;
}

void SetCounters(benchmark::State& state, const MemoryRun& run)
{
    state.counters["StartKB"] = run.startKb;
    state.counters["EndKB"] = run.endKb;
    state.counters["PeakKB"] = run.peakKb;
}

void LuaMemoryOver10000Frames(benchmark::State& state)
{
    MemoryRun run;
    for (auto _ : state)
    {
        LuaSystem lua;
        run = RunFrames(lua.m_State, [&lua] { lua.Update(0.016f); });
    }
    SetCounters(state, run);
    const MemoryRun reference = RunReference();
    std::printf("memory LuaMemoryOver10000Frames: start %d KB, end %d KB, peak %d KB; reference (automatic "
                "collector): start %d KB, end %d KB, peak %d KB; end ratio %.3gx of reference\n",
                run.startKb, run.endKb, run.peakKb, reference.startKb, reference.endKb, reference.peakKb,
                static_cast<double>(run.endKb) / reference.endKb);
}
BENCHMARK(LuaMemoryOver10000Frames)->Unit(benchmark::kMillisecond)->Iterations(3);

void LuaMemoryOver10000Frames_Reference(benchmark::State& state)
{
    MemoryRun run;
    for (auto _ : state)
        run = RunReference();
    SetCounters(state, run);
}
BENCHMARK(LuaMemoryOver10000Frames_Reference)->Unit(benchmark::kMillisecond)->Iterations(3);
}
