// LuaStateHandle: a Lua state as held by native objects that keep registry
// references (events with script fields, script event binds). Such an object
// may be destroyed after its state was closed; the handle says whether the
// state is still open, so that the reference is released only then. A state of
// a LuaSystem is known by its address and the serial the system got when it
// opened it, so a new state at an old address is never mistaken for the old
// one; any other state (one a test made itself) is taken to be open.
//
//   LuaStateHandle state = LuaStateHandle::Of(L);
//   if (state.IsOpen()) luaL_unref(state.state, LUA_REGISTRYINDEX, ref);
#pragma once

#include <cstdint>

struct lua_State;

struct LuaStateHandle
{
    // The main state of the LuaSystem that `L` belongs to (or `L` itself for any other state).
    static LuaStateHandle Of(lua_State* L);
    // Notes a LuaSystem's state as open and gives its serial.
    static std::uint64_t Opened(lua_State* L);
    // Notes a LuaSystem's state as closed.
    static void Closed(lua_State* L);

    // True while the state may be used.
    bool IsOpen() const;

    // The state; null for none.
    lua_State* state = nullptr;
    // The serial given when a LuaSystem opened it; 0 for a state of no LuaSystem.
    std::uint64_t serial = 0;
};
