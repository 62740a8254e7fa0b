#include "utilities/lua/luabridge/MemberBinding.h"

#include "utilities/lua/luabridge/detail/Keys.h"

namespace luabridge::detail
{
int GetFloatField(lua_State* L)
{
    float* field = FieldAt<float>(L);
    if (!field)
        return 0;
    lua_pushnumber(L, *field);
    return 1;
}

int SetFloatField(lua_State* L)
{
    float* field = FieldAt<float>(L);
    if (!field)
        return 0;
    if (lua_type(L, 2) != LUA_TNUMBER)
        return RaiseWrongType(L);
    *field = static_cast<float>(lua_tonumber(L, 2));
    return 0;
}

int RaiseWrongType(lua_State* L)
{
    return luaL_error(L, "'%s' can't take a value of type %s", lua_tostring(L, lua_upvalueindex(2)),
                      luaL_typename(L, 2));
}

void PushReferenceMetatable(lua_State* L, const void* classKey, lua_CFunction copy, lua_CFunction assign)
{
    lua_pushlightuserdata(L, const_cast<void*>(ReferenceKeyOf(classKey)));
    lua_rawget(L, LUA_REGISTRYINDEX);
    if (lua_istable(L, -1))
        return;
    lua_pop(L, 1);
    lua_pushlightuserdata(L, const_cast<void*>(classKey));
    lua_rawget(L, LUA_REGISTRYINDEX);
    if (!lua_istable(L, -1))
        return;
    const int classTable = lua_gettop(L);
    lua_newtable(L);
    // Everything of the class table (getters, setters, methods, operators, parent), then the additions.
    lua_pushnil(L);
    while (lua_next(L, classTable))
    {
        lua_pushvalue(L, -2);
        lua_insert(L, -2);
        lua_rawset(L, -4);
    }
    lua_pushcfunction(L, copy);
    lua_setfield(L, -2, "__copy");
    lua_pushcfunction(L, assign);
    lua_setfield(L, -2, "assign");
    lua_pushcfunction(L, &StaticIndex);
    lua_setfield(L, -2, "__index");
    lua_remove(L, classTable);
    lua_pushlightuserdata(L, const_cast<void*>(ReferenceKeyOf(classKey)));
    lua_pushvalue(L, -2);
    lua_rawset(L, LUA_REGISTRYINDEX);
}
}
