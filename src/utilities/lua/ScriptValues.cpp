#include "utilities/lua/ScriptValues.h"

#include "utilities/Meta/ClassInfo.h"
#include "utilities/Meta/Data.h"
#include "utilities/lua/Coroutine.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/luabridge/detail/Keys.h"
#include "utilities/lua/luabridge/detail/Userdata.h"

#include <lua.hpp>

#include <cstring>
#include <string_view>

namespace
{
// Calls the field `name` of the value at `index`'s table or metatable with that value; true if
// there was a function to call (its one result is then on top).
bool CallField(lua_State* L, int index, const char* name, bool inMetatable)
{
    if (inMetatable)
    {
        if (!lua_getmetatable(L, index))
            return false;
        lua_pushstring(L, name);
        lua_rawget(L, -2);
        lua_remove(L, -2);
    }
    else
    {
        lua_pushstring(L, name);
        lua_rawget(L, index);
    }
    if (!lua_isfunction(L, -1))
    {
        lua_pop(L, 1);
        return false;
    }
    lua_pushvalue(L, index);
    lua_call(L, 1, 1);
    return true;
}

int l_MakeCoroutine(lua_State* L)
{
    luaL_checktype(L, 1, LUA_TFUNCTION);
    lua_settop(L, 1);
    LuaSystem& system = LuaSystem::Of(L);
    auto* made = new Coroutine(system.m_State, L);
    system.m_Coroutines.push_back(made);
    luabridge::UserdataValue<Coroutine>::Push(L, luabridge::detail::ClassKey<Coroutine>(), *made);
    return 1;
}

int l_Value(lua_State* L)
{
    lua_settop(L, 1);
    const int kind = lua_type(L, 1);
    if (kind == LUA_TFUNCTION || kind == LUA_TTHREAD)
        return 0;
    if (kind == LUA_TTABLE)
    {
        // A property reference: its __copy follows the path to the value.
        if (!CallField(L, 1, "__copy", false))
            return 1;
        if (lua_type(L, -1) != LUA_TUSERDATA || !lua_touserdata(L, -1))
            return 1;
        lua_replace(L, 1);
    }
    else if (kind != LUA_TUSERDATA)
        return 1;

    // A value member handed out by reference carries its own __copy.
    if (CallField(L, 1, "__copy", true))
        return 1;
    if (!lua_getmetatable(L, 1))
        return 1;
    lua_pushstring(L, "__type");
    lua_rawget(L, -2);
    const char* name = lua_tostring(L, -1);
    const std::string_view type = name ? name : "";
    lua_pop(L, 2);
    luabridge::Userdata* userdata = luabridge::detail::UserdataAt(L, 1);
    if (!userdata || !userdata->p)
        return 1;
    if (type.size() >= 4 && type.substr(type.size() - 4) == "Enum")
    {
        int value = 0;
        std::memcpy(&value, userdata->p, sizeof(value));
        lua_pushnumber(L, value);
        return 1;
    }
    const Meta::Data* data = Meta::FindData(type);
    if (!data || !data->m_Info || !data->m_Info->CanCopy())
        return 1;
    data->m_Info->ToLua(L, userdata->p);
    return 1;
}

int l_CheckIfPtr(lua_State* L)
{
    luabridge::Userdata* userdata = lua_type(L, 1) == LUA_TUSERDATA ? luabridge::detail::UserdataAt(L, 1) : nullptr;
    lua_pushboolean(L, userdata && dynamic_cast<luabridge::UserdataPtr*>(userdata) != nullptr);
    return 1;
}

int l_resume(lua_State* L)
{
    auto* coroutine = static_cast<Coroutine*>(luabridge::detail::ObjectOf(L, 1, Meta::Get<Coroutine>()));
    if (!coroutine)
        return luaL_error(L, "resume needs a Coroutine before its arguments (call it as co:resume(...))");
    lua_pushinteger(L, coroutine->resume(L));
    return 1;
}

const luaL_Reg kScriptValueFunctions[] = {
    {"MakeCoroutine", l_MakeCoroutine},
    {"Value", l_Value},
    {"CheckIfPtr", l_CheckIfPtr},
    {nullptr, nullptr},
};
}

void RegisterScriptValueFunctions(lua_State* L)
{
    luaL_register(L, nullptr, kScriptValueFunctions);
}

void BindCoroutineResume(lua_State* L)
{
    lua_pushlightuserdata(L, const_cast<void*>(luabridge::detail::ClassKey<Coroutine>()));
    lua_rawget(L, LUA_REGISTRYINDEX);
    if (lua_istable(L, -1))
    {
        lua_pushstring(L, "resume");
        lua_pushcfunction(L, l_resume);
        lua_rawset(L, -3);
    }
    lua_pop(L, 1);
}
