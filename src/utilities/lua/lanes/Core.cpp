#include "utilities/lua/lanes/Core.h"

#include "utilities/lua/lanes/Lane.h"
#include "utilities/lua/lanes/LaneHandle.h"
#include "utilities/lua/lanes/Lanes.h"
#include "utilities/lua/lanes/Libraries.h"
#include "utilities/lua/lanes/Linda.h"
#include "utilities/lua/lanes/Universe.h"

#include <string>

namespace Lanes
{
namespace
{
// check_libs(list): true when the library list is valid, otherwise nil and the reason.
int CheckLibs(lua_State* L)
{
    const char* list = luaL_checkstring(L, 1);
    LibrarySet libraries;
    std::string error;
    if (ParseLibraries(list, &libraries, &error))
    {
        lua_pushboolean(L, 1);
        return 1;
    }
    lua_pushnil(L);
    lua_pushstring(L, error.c_str());
    return 2;
}

int OpenCore(lua_State* L)
{
    PushCore(L);
    return 1;
}

// package.preload["lanes"]: runs the loader (upvalue 1) directly, as a C call, and gives the module
// table that the Lua half returned; raises the loader's message when there is none.
int RequireLanes(lua_State* L)
{
    lua_CFunction loader = lua_tocfunction(L, lua_upvalueindex(1));
    int top = lua_gettop(L);
    if (loader)
        loader(L);
    if (lua_gettop(L) > top && lua_istable(L, top + 1))
    {
        lua_settop(L, top + 1);
        return 1;
    }
    const char* reason = "it gave no module table";
    if (lua_gettop(L) > top && lua_isstring(L, top + 1))
        reason = lua_tostring(L, top + 1);
    return luaL_error(L, "lanes: the Lua half of the module (lanes.lua) could not be loaded: %s", reason);
}

const luaL_Reg kFunctions[] = {
    {"lane_new", NewLane},   {"linda", NewLinda},     {"check_libs", CheckLibs},
    {"cancel_test", CancelTest}, {nullptr, nullptr},
};
}

void PushCore(lua_State* L)
{
    lua_newtable(L);
    luaL_register(L, nullptr, kFunctions);
    PushCancelError(L);
    lua_setfield(L, -2, "cancel_error");
}

void InstallRequireHooks(lua_State* L, lua_CFunction loader)
{
    lua_getfield(L, LUA_GLOBALSINDEX, "package");
    if (!lua_istable(L, -1))
    {
        lua_pop(L, 1);
        return;
    }
    lua_getfield(L, -1, "preload");
    if (lua_istable(L, -1))
    {
        lua_pushcfunction(L, OpenCore);
        lua_setfield(L, -2, "lanes.core");
        if (loader)
        {
            lua_pushcfunction(L, loader);
            lua_pushcclosure(L, RequireLanes, 1);
            lua_setfield(L, -2, "lanes");
        }
    }
    lua_pop(L, 2);
}

int CancelTest(lua_State* L)
{
    Lane* lane = Lane::Current();
    lua_pushboolean(L, lane && lane->CancelRequested());
    return 1;
}

const luaL_Reg* CoreFunctions()
{
    return kFunctions;
}
}

int luaopen_lanes_embedded(lua_State* L, lua_CFunction loader)
{
    Universe* U = &Universe::Process();
    Lanes::InstallUniverse(L, U, loader);
    Lanes::InstallRequireHooks(L, loader);
    Lanes::PushCore(L);
    // "lanes.core" is loaded already, so the Lua half finds this very table.
    lua_getfield(L, LUA_GLOBALSINDEX, "package");
    if (lua_istable(L, -1))
    {
        lua_getfield(L, -1, "loaded");
        if (lua_istable(L, -1))
        {
            lua_pushvalue(L, -3);
            lua_setfield(L, -2, "lanes.core");
        }
        lua_pop(L, 1);
    }
    lua_pop(L, 1);
    return 1;
}
