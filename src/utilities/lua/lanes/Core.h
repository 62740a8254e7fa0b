// Core: the native half of the lanes module ("lanes.core") and its installation in a state. The
// core table holds lane_new, linda, check_libs, cancel_test and cancel_error; the Lua half
// (lanes.lua) builds the public table on it.
#pragma once

#include <lua.hpp>

namespace Lanes
{
// Pushes a new core table.
void PushCore(lua_State* L);
// Sets package.preload["lanes.core"], and package.preload["lanes"] when a loader is given; does nothing without the package library.
void InstallRequireHooks(lua_State* L, lua_CFunction loader);
// cancel_test(): true when the lane running it was asked to cancel (false outside lanes).
int CancelTest(lua_State* L);
// The core table's functions, for the module's list of its own functions.
const luaL_Reg* CoreFunctions();
}
