// AbsIndex: a stack index made absolute, so that it stays valid while values
// are pushed (pseudo-indices such as the registry are kept as they are).
#pragma once

#include <lua.hpp>

namespace luabridge::detail
{
// The absolute form of `index`.
inline int AbsIndex(lua_State* L, int index)
{
    return (index > 0 || index <= LUA_REGISTRYINDEX) ? index : lua_gettop(L) + index + 1;
}
}
