// luaG_inter_move: copying values from one Lua state into another. Tables and Lua functions are
// remembered by their address in the source while one move runs, so a table met twice (a shared
// subtable, a cycle, a function that refers to itself) is made once in the target. A Lua function is
// dumped to bytecode, loaded in the target (with the target's globals as its environment) and given
// copies of its upvalues. A table's metatable crosses with it.
#include "utilities/lua/lanes/Lanes.h"

#include "utilities/lua/lanes/Linda.h"
#include "utilities/lua/lanes/NativeFunctions.h"
#include "utilities/lua/lanes/Universe.h"

#include <cstdio>
#include <string>
#include <vector>

namespace Lanes
{
namespace
{
// Deeper nesting than this is refused, so that neither C stack nor Lua stack can run out.
constexpr int kMostDepth = 200;

int WriteChunk(lua_State*, const void* data, size_t size, void* buffer)
{
    auto* bytes = static_cast<std::string*>(buffer);
    bytes->append(static_cast<const char*>(data), size);
    return 0;
}

// Describes the key at `index` of L as a step of a path: ".name", "[3]", "[a table]". Other steps
// are "/upvalue:name", "/metatable" and "/key" (the failing value was a key).
std::string DescribeKey(lua_State* L, int index)
{
    switch (lua_type(L, index))
    {
    case LUA_TSTRING:
        return std::string(".") + lua_tostring(L, index);
    case LUA_TNUMBER:
    {
        char text[64];
        std::snprintf(text, sizeof(text), "[%.14g]", lua_tonumber(L, index));
        return text;
    }
    case LUA_TBOOLEAN:
        return lua_toboolean(L, index) ? "[true]" : "[false]";
    default:
        return std::string("[a ") + luaL_typename(L, index) + "]";
    }
}

class Copier
{
public:
    Copier(lua_State* from, lua_State* to, int cache) : m_From(from), m_To(to), m_Cache(cache) {}

    // Pushes onto the target a copy of the value at `index` (absolute) of the source. On failure
    // returns false with the reason and the path to the value; the caller restores both stacks.
    bool Copy(int index, int depth)
    {
        if (depth > kMostDepth)
            return Fail("a value nested more than 200 levels deep");
        if (!lua_checkstack(m_From, 6) || !lua_checkstack(m_To, 6))
            return Fail("a value too deep for the Lua stack");
        switch (lua_type(m_From, index))
        {
        case LUA_TNIL:
            lua_pushnil(m_To);
            return true;
        case LUA_TBOOLEAN:
            lua_pushboolean(m_To, lua_toboolean(m_From, index));
            return true;
        case LUA_TNUMBER:
            lua_pushnumber(m_To, lua_tonumber(m_From, index));
            return true;
        case LUA_TSTRING:
        {
            size_t length = 0;
            const char* text = lua_tolstring(m_From, index, &length);
            lua_pushlstring(m_To, text, length);
            return true;
        }
        case LUA_TLIGHTUSERDATA:
            lua_pushlightuserdata(m_To, lua_touserdata(m_From, index));
            return true;
        case LUA_TTABLE:
            return CopyTable(index, depth);
        case LUA_TFUNCTION:
            return lua_iscfunction(m_From, index) ? CopyCFunction(index) : CopyLuaFunction(index, depth);
        case LUA_TUSERDATA:
            if (Linda* linda = ToLinda(m_From, index))
            {
                PushLinda(m_To, linda);
                return true;
            }
            return Fail("a userdata");
        case LUA_TTHREAD:
            return Fail("a coroutine");
        default:
            // LuaJIT's cdata (FFI values) and anything else without a portable form.
            return Fail(std::string("a ") + luaL_typename(m_From, index));
        }
    }

    const std::string& What() const { return m_What; }
    const std::string& Path() const { return m_Path; }
    // Puts `step` in front of the path to the value that failed.
    void Prefix(const std::string& step) { m_Path = step + m_Path; }

private:
    bool Fail(std::string what)
    {
        m_What = std::move(what);
        return false;
    }

    // Pushes the copy already made of the source object at `index`; false (nothing pushed) when there is none.
    bool FindMade(int index)
    {
        lua_pushlightuserdata(m_To, const_cast<void*>(lua_topointer(m_From, index)));
        lua_rawget(m_To, m_Cache);
        if (!lua_isnil(m_To, -1))
            return true;
        lua_pop(m_To, 1);
        return false;
    }

    // Remembers the value on top of the target as the copy of the source object at `index`.
    void RememberMade(int index)
    {
        lua_pushlightuserdata(m_To, const_cast<void*>(lua_topointer(m_From, index)));
        lua_pushvalue(m_To, -2);
        lua_rawset(m_To, m_Cache);
    }

    bool CopyTable(int index, int depth)
    {
        if (FindMade(index))
            return true;
        lua_createtable(m_To, static_cast<int>(lua_objlen(m_From, index)), 0);
        RememberMade(index);
        int table = lua_gettop(m_To);
        lua_pushnil(m_From);
        while (lua_next(m_From, index))
        {
            int value = lua_gettop(m_From);
            if (!Copy(value - 1, depth + 1))
            {
                Prefix("/key" + DescribeKey(m_From, value - 1));
                return false;
            }
            if (!Copy(value, depth + 1))
            {
                Prefix(DescribeKey(m_From, value - 1));
                return false;
            }
            lua_rawset(m_To, table);
            lua_pop(m_From, 1);
        }
        if (lua_getmetatable(m_From, index))
        {
            if (!Copy(lua_gettop(m_From), depth + 1))
            {
                Prefix("/metatable");
                return false;
            }
            lua_setmetatable(m_To, table);
            lua_pop(m_From, 1);
        }
        return true;
    }

    bool CopyCFunction(int index)
    {
        lua_CFunction function = lua_tocfunction(m_From, index);
        if (IsModuleFunction(function))
        {
            lua_pushcfunction(m_To, function);
            return true;
        }
        std::string name = StandardFunctionName(m_From, index);
        if (name.empty())
            return Fail("a C function that is not part of a standard library");
        if (!PushStandardFunction(m_To, name))
            return Fail("the function " + name + ", whose library is not open in the receiving state");
        return true;
    }

    bool CopyLuaFunction(int index, int depth)
    {
        if (FindMade(index))
            return true;
        std::string bytecode;
        lua_pushvalue(m_From, index);
        int dumped = lua_dump(m_From, WriteChunk, &bytecode);
        lua_pop(m_From, 1);
        if (dumped != 0 || bytecode.empty())
            return Fail("a function that cannot be dumped");
        if (luaL_loadbuffer(m_To, bytecode.data(), bytecode.size(), "=lanes") != 0)
        {
            std::string reason = lua_isstring(m_To, -1) ? lua_tostring(m_To, -1) : "unknown";
            return Fail("a function that could not be loaded (" + reason + ")");
        }
        RememberMade(index);
        int function = lua_gettop(m_To);
        for (int upvalue = 1;; ++upvalue)
        {
            const char* name = lua_getupvalue(m_From, index, upvalue);
            if (!name)
                break;
            if (!Copy(lua_gettop(m_From), depth + 1))
            {
                Prefix(std::string("/upvalue:") + (*name ? name : "?"));
                return false;
            }
            lua_setupvalue(m_To, function, upvalue);
            lua_pop(m_From, 1);
        }
        return true;
    }

    lua_State* m_From;
    lua_State* m_To;
    int m_Cache;
    std::string m_What;
    std::string m_Path;
};

bool NeedsCache(lua_State* L, int first, int last)
{
    for (int i = first; i <= last; ++i)
    {
        int type = lua_type(L, i);
        if (type == LUA_TTABLE || type == LUA_TFUNCTION)
            return true;
    }
    return false;
}
}
}

int luaG_inter_move(Universe* U, lua_State* from, lua_State* to, int n, std::string* error)
{
    auto fail = [error](std::string reason) {
        if (error)
            *error = std::move(reason);
        return -1;
    };
    if (!from || !to || n < 0 || n > lua_gettop(from))
        return fail("there are not that many values to move");
    if (n == 0)
        return 0;
    if (lua_topointer(from, LUA_REGISTRYINDEX) == lua_topointer(to, LUA_REGISTRYINDEX))
    {
        // Two threads of one Lua state share their values.
        if (!lua_checkstack(to, n))
            return fail("too many values for the receiving stack");
        lua_xmove(from, to, n);
        return 0;
    }

    int fromTop = lua_gettop(from);
    int toTop = lua_gettop(to);
    int first = fromTop - n + 1;
    if (!lua_checkstack(to, n + 8) || !lua_checkstack(from, 8))
        return fail("too many values for the Lua stack");
    int cache = 0;
    if (Lanes::NeedsCache(from, first, fromTop))
    {
        lua_newtable(to);
        cache = lua_gettop(to);
    }
    Lanes::Copier copier(from, to, cache);
    for (int i = first; i <= fromTop; ++i)
    {
        if (!copier.Copy(i, 0))
        {
            std::string where = "value " + std::to_string(i - first + 1) + copier.Path();
            lua_settop(from, fromTop);
            lua_settop(to, toTop);
            return fail("cannot copy " + copier.What() + " into another Lua state (found at " + where + ")");
        }
    }
    if (cache)
        lua_remove(to, cache);
    lua_settop(from, first - 1);
    return 0;
}
