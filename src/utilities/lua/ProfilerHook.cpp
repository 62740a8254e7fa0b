#include "utilities/lua/ProfilerHook.h"

#include "engine/Profiler.h"

#include <lua.hpp>

#include <array>
#include <string_view>

namespace
{
// One script function open in the profiler: the thread and stack level it was called at.
struct OpenCall
{
    lua_State* thread;
    int level;
};

// The script entries open in the profiler, innermost last (the profiler's own stack holds them too).
struct OpenCalls
{
    std::array<OpenCall, Profiler::kStackCapacity> calls;
    unsigned count = 0;
};

OpenCalls& Open()
{
    static OpenCalls open;
    return open;
}

// Number of active frames of `L`, found in a logarithmic number of steps.
int StackDepth(lua_State* L)
{
    lua_Debug frame;
    int high = 1;
    while (lua_getstack(L, high, &frame))
        high *= 2;
    int low = high / 2;
    // Frame `low` exists (or low is 0), frame `high` does not.
    while (high - low > 1)
    {
        const int middle = (low + high) / 2;
        if (lua_getstack(L, middle, &frame))
            low = middle;
        else
            high = middle;
    }
    return high;
}

// Closes open entries from the innermost out while `stale` says so.
template <class Stale>
void CloseWhile(Stale stale)
{
    OpenCalls& open = Open();
    while (open.count > 0 && stale(open.calls[open.count - 1]))
    {
        --open.count;
        Profiler::Get().Leave();
    }
}

void Hook(lua_State* L, lua_Debug* event)
{
    const int level = StackDepth(L);
    if (event->event == LUA_HOOKCALL)
    {
        // A call at a level still held by an entry of this thread replaced it (a tail call) or
        // follows an unwound error.
        CloseWhile([&](const OpenCall& call) { return call.thread == L && call.level >= level; });
        OpenCalls& open = Open();
        if (open.count == open.calls.size())
            return;
        lua_getinfo(L, "Sn", event);
        std::string_view file = event->source ? event->source : "";
        if (!file.empty() && (file.front() == '@' || file.front() == '='))
            file.remove_prefix(1);
        Profiler::Get().EnterScript(file, event->linedefined, event->name ? event->name : "?");
        open.calls[open.count++] = {L, level};
    }
    else
    {
        // A return closes its own entry and whatever is stale above it: frames of this thread at
        // its level or deeper, and frames of other threads (a coroutine that yielded inside it).
        CloseWhile([&](const OpenCall& call) { return call.thread != L || call.level >= level; });
    }
}
}

void InstallProfilerHook(lua_State* L)
{
    luaJIT_setmode(L, 0, LUAJIT_MODE_ENGINE | LUAJIT_MODE_OFF);
    lua_sethook(L, Hook, LUA_MASKCALL | LUA_MASKRET, 0);
}

void RemoveProfilerHook(lua_State* L)
{
    lua_sethook(L, nullptr, 0, 0);
    CloseWhile([](const OpenCall&) { return true; });
    luaJIT_setmode(L, 0, LUAJIT_MODE_ENGINE | LUAJIT_MODE_ON);
}
