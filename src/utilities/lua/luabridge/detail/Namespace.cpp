#include "utilities/lua/luabridge/detail/Namespace.h"

#include <stdexcept>

namespace luabridge::detail
{
Namespace::Namespace(lua_State* state) : L(state)
{
    lua_pushvalue(L, LUA_GLOBALSINDEX);
    m_Count = 1;
    m_Table = lua_gettop(L);
}

Namespace::~Namespace() noexcept(false)
{
    if (m_Count > lua_gettop(L))
        throw std::runtime_error("invalid stack");
    lua_pop(L, m_Count);
}

void Namespace::Enter(const std::string& name)
{
    lua_pushlstring(L, name.data(), name.size());
    lua_rawget(L, m_Table);
    if (!lua_istable(L, -1))
    {
        lua_pop(L, 1);
        lua_newtable(L);
        lua_pushlstring(L, name.data(), name.size());
        lua_pushvalue(L, -2);
        lua_rawset(L, m_Table);
    }
    ++m_Count;
    m_Table = lua_gettop(L);
}
}
