// LaneHandle: starting a lane from Lua, and the handle scripts hold for it. The handle is a full
// userdata that shares the lane; its fields are `status` (a string) and the methods `join([timeout])`
// and `cancel([timeout])`; `handle[i]` waits for the lane and gives its i-th result (raising the
// lane's error if it failed). Collecting the handle of a running lane lets the lane run on.
#pragma once

#include <lua.hpp>

namespace Lanes
{
// lanes.core.lane_new(f, libs, globals, cancelstep, ...): makes a state with the libraries listed,
// copies the globals, f and the arguments into it, starts the lane and pushes its handle.
int NewLane(lua_State* L);
// The handle's methods (join, cancel), for the module's list of its own functions.
const luaL_Reg* LaneHandleMethods();
}
