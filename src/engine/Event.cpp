#include "engine/Event.h"

#include "utilities/Meta/Registration.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/luabridge/Stack.h"

#include <lua.hpp>

META_REGISTER(Event)
{
    DESCRIPTION("Base of everything sent through an event table.");
}

void Event::CallLua(LuaScript& script, std::string_view functionName)
{
    const int function = script.FindFunction(functionName);
    if (function == -1)
        return;
    LuaSystem& system = script.GetSystem();
    lua_State* L = system.m_State;
    const int top = lua_gettop(L);
    lua_rawgeti(L, LUA_REGISTRYINDEX, function);
    const int event = ToLua(L);
    lua_rawgeti(L, LUA_REGISTRYINDEX, event);
    luaL_unref(L, LUA_REGISTRYINDEX, event);
    system.ReportStatus(lua_pcall(L, 1, 0, 0));
    lua_settop(L, top);
}

int Event::ToLua(lua_State* L)
{
    luabridge::Stack<Event*>::Push(L, this);
    return luaL_ref(L, LUA_REGISTRYINDEX);
}
