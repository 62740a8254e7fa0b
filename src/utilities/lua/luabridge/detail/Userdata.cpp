#include "utilities/lua/luabridge/detail/Userdata.h"

#include "utilities/Meta/Data.h"
#include "utilities/lua/luabridge/detail/Keys.h"

namespace luabridge
{
void PushPointer(lua_State* L, const void* object, const void* classKey)
{
    if (!object)
    {
        lua_pushnil(L);
        return;
    }
    void* memory = lua_newuserdata(L, sizeof(UserdataPtr));
    new (memory) UserdataPtr(const_cast<void*>(object));
    lua_pushlightuserdata(L, const_cast<void*>(classKey));
    lua_rawget(L, LUA_REGISTRYINDEX);
    if (!lua_istable(L, -1))
    {
        lua_pop(L, 2);
        lua_pushlightuserdata(L, const_cast<void*>(object));
        return;
    }
    lua_setmetatable(L, -2);
}

namespace detail
{
const Meta::Data* TypeAt(lua_State* L, int index)
{
    if (lua_type(L, index) != LUA_TUSERDATA || !lua_getmetatable(L, index))
        return nullptr;
    lua_pushlightuserdata(L, const_cast<void*>(TypeKey()));
    lua_rawget(L, -2);
    const auto* type = static_cast<const Meta::Data*>(lua_touserdata(L, -1));
    lua_pop(L, 2);
    return type;
}

Userdata* UserdataAt(lua_State* L, int index)
{
    return TypeAt(L, index) ? static_cast<Userdata*>(lua_touserdata(L, index)) : nullptr;
}

bool IsInstanceOf(lua_State* L, int index, const Meta::Data* type)
{
    const Meta::Data* actual = TypeAt(L, index);
    return actual && (actual == type || actual->IsDerivedFrom(type));
}

void* ObjectOf(lua_State* L, int index, const Meta::Data* type)
{
    return IsInstanceOf(L, index, type) ? static_cast<Userdata*>(lua_touserdata(L, index))->p : nullptr;
}
}
}
