// A plain Lua state for the lanes tests: luaL_newstate, the standard libraries and the lanes module,
// whose Lua half is loaded from the repository's Data folder. Run() executes a chunk and keeps its
// results on the stack for the test to read.
#pragma once

#include "utilities/lua/lanes/Lanes.h"

#include <lua.hpp>

#include <string>

namespace LanesTest
{
// The loader the tests give the module: loads and runs Data/LuaScripts/Globals/lanes.lua.
inline int LoadLanesFromRepository(lua_State* L)
{
    if (luaL_loadfile(L, VORN_DATA_DIR "/LuaScripts/Globals/lanes.lua") == 0)
        lua_pcall(L, 0, LUA_MULTRET, 0);
    return 0;
}

class LanesState
{
public:
    LanesState()
    {
        m_State = luaL_newstate();
        luaL_openlibs(m_State);
        luaopen_lanes_embedded(m_State, LoadLanesFromRepository);
        lua_pop(m_State, 1);
    }
    ~LanesState() { lua_close(m_State); }
    LanesState(const LanesState&) = delete;
    LanesState& operator=(const LanesState&) = delete;

    lua_State* L() const { return m_State; }

    // Runs `code` with the stack cleared first; gives "" when it ran, otherwise the error message.
    // The chunk's results stay on the stack, from index 1.
    std::string Run(const char* code)
    {
        lua_settop(m_State, 0);
        if (luaL_loadbuffer(m_State, code, std::char_traits<char>::length(code), "=test") != 0 ||
            lua_pcall(m_State, 0, LUA_MULTRET, 0) != 0)
        {
            std::string message = lua_isstring(m_State, -1) ? lua_tostring(m_State, -1) : "(not a string)";
            lua_settop(m_State, 0);
            return message;
        }
        return "";
    }

    // Number of results on the stack.
    int Count() const { return lua_gettop(m_State); }
    // The result at `index` as a number / string / boolean, and whether it is nil.
    double Number(int index) const { return lua_tonumber(m_State, index); }
    std::string String(int index) const
    {
        return lua_isstring(m_State, index) ? lua_tostring(m_State, index) : "(" + std::string(luaL_typename(m_State, index)) + ")";
    }
    bool Boolean(int index) const { return lua_toboolean(m_State, index) != 0; }
    bool IsNil(int index) const { return lua_isnil(m_State, index); }

private:
    lua_State* m_State;
};
}
