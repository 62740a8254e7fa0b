// Getters and setters of float fields at small offsets, one plain C function
// per offset (no upvalues), so that the metamethods can recognise them and
// read or write the float in place instead of calling them through Lua. A
// float field farther in than the table reaches uses the closure form of
// MemberBinding.h.
#pragma once

#include <lua.hpp>

#include <cstddef>

namespace luabridge::detail
{
// The getter of a float at `offset` in the object, or null when the offset has no plain function.
lua_CFunction DirectFloatGetter(std::ptrdiff_t offset);
// The setter of a float at `offset` in the object, or null when the offset has no plain function.
lua_CFunction DirectFloatSetter(std::ptrdiff_t offset);
// If `getter` is a plain float getter: pushes the float of the object at `object` (nil when there is none)
// and answers true. `knownObject` says the caller checked that a bound object stands there.
bool GetFloatDirect(lua_State* L, lua_CFunction getter, int object, bool knownObject = false);
// If `setter` is a plain float setter: writes the value at `value` into the object at `object` (raising
// "'key' can't take a value of type ..." for a value that is no number, with the key at `key`) and answers true.
bool SetFloatDirect(lua_State* L, lua_CFunction setter, int object, int key, int value, bool knownObject = false);
}
