#include "utilities/lua/lanes/Linda.h"

#include "utilities/lua/lanes/Universe.h"


namespace Lanes
{
namespace
{
const char* const kLindaMetatable = "vorn.lanes.linda";
// Its address keys each state's weak table from linda to its userdata.
const char kLindaCacheKey = 0;

int LindaGc(lua_State* L)
{
    auto** slot = static_cast<Linda**>(lua_touserdata(L, 1));
    if (slot && *slot)
    {
        (*slot)->Release();
        *slot = nullptr;
    }
    return 0;
}

int LindaToString(lua_State* L)
{
    Linda* linda = ToLinda(L, 1);
    if (linda && !linda->Name().empty())
        lua_pushfstring(L, "Linda: %s", linda->Name().c_str());
    else
        lua_pushfstring(L, "Linda: %p", static_cast<void*>(linda));
    return 1;
}

// Pushes the metatable of lindas, made on first use in L.
void PushLindaMetatable(lua_State* L)
{
    if (luaL_newmetatable(L, kLindaMetatable))
    {
        lua_newtable(L);
        luaL_register(L, nullptr, LindaMethods());
        lua_setfield(L, -2, "__index");
        lua_pushcfunction(L, LindaGc);
        lua_setfield(L, -2, "__gc");
        lua_pushcfunction(L, LindaToString);
        lua_setfield(L, -2, "__tostring");
        lua_pushliteral(L, "Linda");
        lua_setfield(L, -2, "__metatable");
    }
}

// Pushes L's weak table from linda (light userdata) to its userdata.
void PushLindaCache(lua_State* L)
{
    lua_pushlightuserdata(L, const_cast<char*>(&kLindaCacheKey));
    lua_rawget(L, LUA_REGISTRYINDEX);
    if (lua_istable(L, -1))
        return;
    lua_pop(L, 1);
    lua_newtable(L);
    lua_newtable(L);
    lua_pushliteral(L, "v");
    lua_setfield(L, -2, "__mode");
    lua_setmetatable(L, -2);
    lua_pushlightuserdata(L, const_cast<char*>(&kLindaCacheKey));
    lua_pushvalue(L, -2);
    lua_rawset(L, LUA_REGISTRYINDEX);
}
}

void Linda::Release()
{
    if (m_Refs.fetch_sub(1, std::memory_order_acq_rel) == 1)
        Universe::Process().RetireLinda(this);
}

void PushLinda(lua_State* L, Linda* linda)
{
    PushLindaCache(L);
    lua_pushlightuserdata(L, linda);
    lua_rawget(L, -2);
    if (!lua_isnil(L, -1))
    {
        lua_remove(L, -2);
        return;
    }
    lua_pop(L, 1);
    auto** slot = static_cast<Linda**>(lua_newuserdata(L, sizeof(Linda*)));
    *slot = nullptr;
    PushLindaMetatable(L);
    lua_setmetatable(L, -2);
    *slot = linda;
    linda->AddRef();
    lua_pushlightuserdata(L, linda);
    lua_pushvalue(L, -2);
    lua_rawset(L, -4);
    lua_remove(L, -2);
}

Linda* ToLinda(lua_State* L, int index)
{
    if (lua_type(L, index) != LUA_TUSERDATA || !lua_getmetatable(L, index))
        return nullptr;
    lua_getfield(L, LUA_REGISTRYINDEX, kLindaMetatable);
    bool isLinda = lua_rawequal(L, -1, -2);
    lua_pop(L, 2);
    if (!isLinda)
        return nullptr;
    return *static_cast<Linda**>(lua_touserdata(L, index));
}

Linda* CheckLinda(lua_State* L, int index, const char* where)
{
    Linda* linda = ToLinda(L, index);
    if (!linda)
        luaL_error(L, "%s: expected a linda (call it with ':'), got a %s", where, luaL_typename(L, index));
    return linda;
}

int NewLinda(lua_State* L)
{
    std::string name;
    if (!lua_isnoneornil(L, 1))
    {
        if (lua_type(L, 1) != LUA_TSTRING)
            return luaL_error(L, "lanes.linda: the name must be a string, not a %s", luaL_typename(L, 1));
        name = lua_tostring(L, 1);
    }
    auto* linda = new Linda(std::move(name));
    Universe::Process().AdoptLinda(linda);
    PushLinda(L, linda);
    return 1;
}
}
