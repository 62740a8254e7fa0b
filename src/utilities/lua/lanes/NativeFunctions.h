// NativeFunctions: which C functions may cross between states. A C function cannot be copied, so one
// crosses only when the other side can find its own copy: the standard libraries' functions by name
// ("print", "string.format", looked up in the receiving state's globals), and the lanes module's own
// functions by address (they need nothing from the state they were made in).
#pragma once

#include <lua.hpp>

#include <string>

namespace Lanes
{
// The name under which the C function at `index` of L is a standard library function of L
// ("print", "string.format"); empty when it is none.
std::string StandardFunctionName(lua_State* L, int index);
// Pushes the function called `name` in L's globals; false, with nothing pushed, when L has none.
bool PushStandardFunction(lua_State* L, const std::string& name);
// True when `function` is one of the lanes module's own C functions.
bool IsModuleFunction(lua_CFunction function);
}
