#include "utilities/lua/lanes/NativeFunctions.h"

#include "utilities/lua/lanes/Core.h"
#include "utilities/lua/lanes/LaneHandle.h"
#include "utilities/lua/lanes/Linda.h"

namespace Lanes
{
namespace
{
// The standard library tables whose functions are found by "library.name".
const char* const kLibraries[] = {"string", "table", "math", "io", "os", "package", "debug", "bit", "jit", "coroutine"};

// Searches the table on top of L for a value raw-equal to the one at `index` (absolute); gives its
// key, prefixed by `prefix`, or an empty string.
std::string FindIn(lua_State* L, int index, const char* prefix)
{
    lua_pushnil(L);
    while (lua_next(L, -2))
    {
        if (lua_type(L, -2) == LUA_TSTRING && lua_rawequal(L, -1, index))
        {
            std::string name = std::string(prefix) + lua_tostring(L, -2);
            lua_pop(L, 2);
            return name;
        }
        lua_pop(L, 1);
    }
    return {};
}

bool InList(const luaL_Reg* list, lua_CFunction function)
{
    for (; list->name; ++list)
        if (list->func == function)
            return true;
    return false;
}
}

std::string StandardFunctionName(lua_State* L, int index)
{
    if (index < 0)
        index = lua_gettop(L) + index + 1;
    if (!lua_checkstack(L, 4))
        return {};
    for (const char* library : kLibraries)
    {
        lua_getfield(L, LUA_GLOBALSINDEX, library);
        if (lua_istable(L, -1))
        {
            std::string name = FindIn(L, index, (std::string(library) + ".").c_str());
            if (!name.empty())
            {
                lua_pop(L, 1);
                return name;
            }
        }
        lua_pop(L, 1);
    }
    lua_pushvalue(L, LUA_GLOBALSINDEX);
    std::string name = FindIn(L, index, "");
    lua_pop(L, 1);
    return name;
}

bool PushStandardFunction(lua_State* L, const std::string& name)
{
    std::string::size_type dot = name.find('.');
    if (dot == std::string::npos)
    {
        lua_getfield(L, LUA_GLOBALSINDEX, name.c_str());
    }
    else
    {
        lua_getfield(L, LUA_GLOBALSINDEX, name.substr(0, dot).c_str());
        if (!lua_istable(L, -1))
        {
            lua_pop(L, 1);
            return false;
        }
        lua_getfield(L, -1, name.substr(dot + 1).c_str());
        lua_remove(L, -2);
    }
    if (!lua_iscfunction(L, -1))
    {
        lua_pop(L, 1);
        return false;
    }
    return true;
}

bool IsModuleFunction(lua_CFunction function)
{
    return function && (InList(CoreFunctions(), function) || InList(LindaMethods(), function) ||
                        InList(LaneHandleMethods(), function));
}
}
