// Lanes: script threads. The engine's own `lanes` module, used from Lua the way Lua Lanes is:
//
//   local lanes = require("lanes").configure()
//   local sum = lanes.gen("*", function(a, b) local s = 0 for i = a, b do s = s + i end return s end)
//   local h = sum(1, 100)          -- runs on a new OS thread, in a Lua state of its own
//   print(h:join())                -- 5050
//
// Each lane is an OS thread with its own lua_State; nothing is shared between states but lindas
// (message boxes, reference counted, one object whatever the state that holds them). Values cross
// between states by copy: nil, booleans, numbers, strings, light userdata, tables (nested, cycles
// and shared subtables kept), Lua functions whose upvalues can cross, the standard libraries' C
// functions (looked up by name on the other side), the module's own C functions, and lindas.
// Anything else is refused with a Lua error that names the type and where it was found.
//
// The module has two halves: the native core here ("lanes.core") and the Lua half,
// "LuaScripts/Globals/lanes.lua" in the data directory, which builds the public table from the core.
// docs/Lanes.md says what the module offers and what it leaves out.
#pragma once

#include <lua.hpp>

#include <string>

// The per-process shared state of the module: the keeper that holds what lindas store, the list of
// running lanes, and what is needed to make the module available in a new lane. One for the whole
// process, created on first use and never freed, so a lane still running at exit touches no freed memory.
class Universe;

// Installs the module in L: `require("lanes")` then runs `loader` (given the requiring state, it
// loads and runs the Lua half, leaving the module table as the first value it pushed, and returns 0)
// and gives its table; "lanes.core" is set in package.loaded. Leaves the core table on the stack, for
// the caller to pop, and returns 1. A null loader installs the core alone. Without the package
// library no require hook is installed. The same loader is installed in lanes that open "package".
int luaopen_lanes_embedded(lua_State* L, lua_CFunction loader);

// The universe the module was installed with in L (by luaopen_lanes_embedded, or in a lane's own
// state), or null when it never was.
Universe* get_universe(lua_State* L);

// Copies the n values on top of `from` onto `to`, in order, and pops them from `from`. Returns 0 when
// they crossed; otherwise -1, with both stacks as they were and the reason in *error when error is
// given. U may be null (the process's universe is used). Two threads of one Lua state (a coroutine
// and its parent) move the values with lua_xmove. Both states must belong to the calling thread for
// the call; it never raises a Lua error but for running out of memory.
int luaG_inter_move(Universe* U, lua_State* from, lua_State* to, int n, std::string* error = nullptr);
