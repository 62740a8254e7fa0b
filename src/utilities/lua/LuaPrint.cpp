#include "utilities/lua/LuaPrint.h"

#include <lua.hpp>

#include <cstdio>

namespace luabridge
{
namespace
{
// Units of indentation; Lua_PrintTable adds two per level while it prints the keys.
int g_Indent = 0;
// Tables used as keys of tables nest this deep at most (a table can be a key of itself).
constexpr int kMaxTableDepth = 32;
}

void PrintIndent()
{
    for (int i = 0; i < g_Indent; ++i)
        std::fputs(" ", stdout);
}

int GetPrintIndent()
{
    return g_Indent;
}

void SetPrintIndent(int units)
{
    g_Indent = units;
}

void Lua_PrintIndex(lua_State* L, int index)
{
    switch (lua_type(L, index))
    {
    case LUA_TNIL:
        std::printf("nil");
        break;
    case LUA_TBOOLEAN:
        std::printf(lua_toboolean(L, index) ? "true" : "false");
        break;
    case LUA_TNUMBER:
        std::printf("%f", lua_tonumber(L, index));
        break;
    case LUA_TSTRING:
        std::printf("%s", lua_tostring(L, index));
        break;
    case LUA_TTABLE:
        Lua_PrintTable(L, index);
        break;
    case LUA_TFUNCTION:
        std::printf("[Function]: %p", reinterpret_cast<void*>(lua_tocfunction(L, index)));
        break;
    case LUA_TLIGHTUSERDATA:
        std::printf("[Light Userdata]: %p", lua_touserdata(L, index));
        break;
    case LUA_TUSERDATA:
    {
        // The object's first word: the pointer a pointer userdata holds, or the start of a value.
        void* const* block = static_cast<void* const*>(lua_touserdata(L, index));
        void* first = (block && lua_objlen(L, index) >= sizeof(void*)) ? *block : nullptr;
        std::printf("[Userdata]: %p\n", first);
        break;
    }
    default:
        std::printf("dumpStack Err, type encountered: %s", lua_typename(L, lua_type(L, index)));
        break;
    }
}

void Lua_PrintTable(lua_State* L, int index)
{
    // Pushing the iteration state moves relative indices; work from the absolute one.
    if (index < 0 && index > LUA_REGISTRYINDEX)
        index = lua_gettop(L) + index + 1;
    if (g_Indent >= 2 * kMaxTableDepth)
    {
        std::printf("Table: ...");
        return;
    }
    std::printf("Table: \n");
    PrintIndent();
    std::printf("{\n");
    g_Indent += 2;
    if (lua_checkstack(L, 3))
    {
        lua_pushnil(L);
        while (lua_next(L, index) != 0)
        {
            // Print a copy of the key: converting the key itself would confuse lua_next.
            lua_pushvalue(L, -2);
            PrintIndent();
            std::printf("Key: ");
            Lua_PrintIndex(L, -1);
            std::printf("\n");
            lua_pop(L, 2);
        }
    }
    g_Indent -= 2;
    PrintIndent();
    std::printf("}");
}

void Lua_stackDump(lua_State* L)
{
    std::printf("--- LUA TOP ---\n");
    const int top = lua_gettop(L);
    for (int i = 1; i <= top; ++i)
    {
        std::printf("%i - ", i);
        Lua_PrintIndex(L, i);
        std::printf("\n");
    }
    std::printf("--- END ---\n\n");
    std::fflush(stdout);
}

void Lua_stackTrace(lua_State* L)
{
    luaL_traceback(L, L, nullptr, 0);
    std::printf("%s\n", lua_tostring(L, -1));
    lua_pop(L, 1);
    std::fflush(stdout);
}
}
