#include "utilities/lua/LuaGlobals.h"

#include "engine/Files.h"
#include "engine/Log.h"
#include "platform/Dialog.h"
#include "utilities/lua/LuaPrint.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/ScriptFile.h"

#include <lua.hpp>

#include <atomic>
#include <cstdio>

namespace luabridge
{
namespace
{
int l_fatal(lua_State* L)
{
    // With no argument there is no top: index -1 would reach below the function's frame.
    const char* message = lua_gettop(L) > 0 ? lua_tostring(L, -1) : nullptr;
    static std::atomic<bool>* site = Engine::Log::Get().NewSite();
    if (site->load())
        Engine::ReportAtSite(*site, message ? message : "", true, "l_fatal", "LuaSystem.cpp", 129);
    return 0;
}

int l_print(lua_State* L)
{
    const int count = lua_gettop(L);
    for (int i = 1; i <= count; ++i)
        Lua_PrintIndex(L, i);
    std::printf("\n");
    std::fflush(stdout);
    return 0;
}

// Accepts its arguments and prints nothing.
int l_info(lua_State* L)
{
    for (int i = 1, count = lua_gettop(L); i <= count; ++i)
        static_cast<void>(lua_type(L, i));
    return 0;
}

// Accepts its arguments (the first is a category) and prints nothing.
int l_log(lua_State* L)
{
    for (int i = 2, count = lua_gettop(L); i <= count; ++i)
        static_cast<void>(lua_type(L, i));
    return 0;
}

int l_debug_break(lua_State*)
{
    Platform::BreakIntoDebugger();
    return 0;
}

int l_stackDump(lua_State* L)
{
    Lua_stackDump(L);
    return 0;
}

int l_loadfile(lua_State* L)
{
    const char* path = luaL_checkstring(L, 1);
    LuaSystem& system = LuaSystem::Of(L);
    if (!LuaSystem::SameUniverse(L, system.m_State))
        return luaL_error(L, "loadfile: scripts are loaded on the main Lua state only");
    ScriptFile& file = system.GetScript(system.LoadScript(path));
    // The chunk lives on the main state; threads of it share the registry.
    if (file.ref != -1)
        lua_rawgeti(L, LUA_REGISTRYINDEX, file.ref);
    else
        lua_pushnil(L);
    // The null key stands once per file, so only the first loadfile of a file adds it.
    file.AddListener(nullptr, [&system] { system.RunGlobalScript(); });
    return 1;
}

// DataDirectory(): the folder the game's data is read from, ending in '/', for scripts that load
// other scripts with loadfile (which takes its path as given).
int l_DataDirectory(lua_State* L)
{
    lua_pushstring(L, Util::GetDataDirectory().c_str());
    return 1;
}

const luaL_Reg kGlobalFunctions[] = {
    {"fatal", l_fatal},
    {"print", l_print},
    {"info", l_info},
    {"log", l_log},
    {"debug_break", l_debug_break},
    {"__debugbreak", l_debug_break},
    {"stackDump", l_stackDump},
    {"loadfile", l_loadfile},
    {"DataDirectory", l_DataDirectory},
    {nullptr, nullptr},
};
}

void RegisterGlobalFunctions(lua_State* L)
{
    luaL_register(L, nullptr, kGlobalFunctions);
}
}
