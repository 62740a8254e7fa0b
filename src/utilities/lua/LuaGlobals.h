// The global functions every script sees, registered into _G when the Lua state
// is made, over the standard `print` and `loadfile`:
//
//   fatal(message)        the error dialog with the message, as raised from "l_fatal"
//   print(...)            each argument printed in order, no separator, then a line end
//   info(...), log(...)   accepted and print nothing
//   debug_break(), __debugbreak()   stop in the attached debugger (nothing without one)
//   stackDump()           prints the calling state's stack
//   loadfile(path)        the compiled chunk of a file (path as given, not in the data
//                         directory), watched; a change re-runs "Global.lua"
//   DataDirectory()       the data folder, ending in '/', to build loadfile's paths with
//
// MakeCoroutine, Value and CheckIfPtr need the class binding and are registered with it.
#pragma once

struct lua_State;

namespace luabridge
{
// Registers the global functions into the table on top of the stack (leaves it there).
void RegisterGlobalFunctions(lua_State* L);
}
