#include "utilities/lua/luabridge/detail/Metamethods.h"

#include "utilities/lua/luabridge/detail/AbsIndex.h"
#include "utilities/lua/luabridge/detail/Keys.h"
#include "utilities/lua/luabridge/detail/DirectFloat.h"
#include "utilities/lua/luabridge/detail/Userdata.h"

#include <new>
#include <stdexcept>

namespace luabridge::detail
{
namespace
{
// Pushes t[key] for a light-userdata key, raw.
void RawGetKey(lua_State* L, int table, const void* key)
{
    table = AbsIndex(L, table);
    lua_pushlightuserdata(L, const_cast<void*>(key));
    lua_rawget(L, table);
}

// True if the third argument is the boolean true.
bool WantsReference(lua_State* L)
{
    return lua_gettop(L) >= 3 && lua_type(L, 3) == LUA_TBOOLEAN && lua_toboolean(L, 3);
}

// Replaces the table on top with its parent table; false (and the table popped) at the root.
bool GoToParent(lua_State* L)
{
    RawGetKey(L, -1, ParentKey());
    lua_remove(L, -2);
    if (lua_istable(L, -1))
        return true;
    lua_pop(L, 1);
    return false;
}

// The lookup of key 2 on object 1 from the metatable on top up through the parents.
int LookUp(lua_State* L)
{
    for (;;)
    {
        lua_pushvalue(L, 2);
        lua_rawget(L, -2);
        if (lua_iscfunction(L, -1))
            return 1;
        if (!lua_isnil(L, -1))
            throw std::runtime_error("not a cfunction");
        lua_pop(L, 1);

        RawGetKey(L, -1, PropGetKey());
        if (lua_istable(L, -1))
        {
            RawGetKey(L, -1, DynamicKey());
            if (lua_iscfunction(L, -1))
            {
                lua_pushvalue(L, 1);
                lua_pushvalue(L, 2);
                lua_call(L, 2, 1);
                if (!lua_isnil(L, -1))
                    return 1;
            }
            lua_pop(L, 1);
            lua_pushvalue(L, 2);
            lua_rawget(L, -2);
            if (lua_CFunction getter = lua_tocfunction(L, -1))
            {
                // A float field's getter is read in place: the same result without a nested call.
                if (GetFloatDirect(L, getter, 1))
                    return 1;
                lua_pushvalue(L, 1);
                lua_call(L, 1, 1);
                return 1;
            }
            lua_pop(L, 1);
        }
        lua_pop(L, 1);
        if (!GoToParent(L))
            return 0;
    }
}
}

void PushPropertyReference(lua_State* L, int objectIndex, int keyIndex)
{
    objectIndex = AbsIndex(L, objectIndex);
    keyIndex = AbsIndex(L, keyIndex);
    lua_createtable(L, 0, 4);
    lua_pushvalue(L, objectIndex);
    lua_setfield(L, -2, "__data");
    lua_createtable(L, 1, 0);
    lua_pushvalue(L, keyIndex);
    lua_rawseti(L, -2, 1);
    lua_setfield(L, -2, "__propref");
    lua_pushcfunction(L, &PropertyReferenceCopy);
    lua_setfield(L, -2, "__copy");
    lua_pushcfunction(L, &PropertyReferenceAssign);
    lua_setfield(L, -2, "assign");
    // One metatable of the static kind serves every reference of the state.
    static const char metatableKey = 0;
    RawGetKey(L, LUA_REGISTRYINDEX, &metatableKey);
    if (!lua_istable(L, -1))
    {
        lua_pop(L, 1);
        lua_createtable(L, 0, 2);
        lua_pushcfunction(L, &StaticIndex);
        lua_setfield(L, -2, "__index");
        lua_pushcfunction(L, &StaticNewIndex);
        lua_setfield(L, -2, "__newindex");
        lua_pushlightuserdata(L, const_cast<char*>(&metatableKey));
        lua_pushvalue(L, -2);
        lua_rawset(L, LUA_REGISTRYINDEX);
    }
    lua_setmetatable(L, -2);
}

int InstanceIndex(lua_State* L)
{
    if (WantsReference(L))
    {
        PushPropertyReference(L, 1, 2);
        return 1;
    }
    if (!lua_getmetatable(L, 1))
        return 0;
    return LookUp(L);
}

namespace
{
// __index of a class or const table without a dynamic-property hook of its own and whose getters share no
// name with its own entries. Upvalue 1 is the table, upvalue 2 its getter table. Since no name stands in
// both, asking the getters first gives what asking the table first gives.
int OwnIndex(lua_State* L)
{
    // Called as a plain function on something else (a script may), it takes the general way.
    const int arguments = lua_gettop(L);
    if (arguments >= 3 || !lua_getmetatable(L, 1) || !lua_rawequal(L, -1, lua_upvalueindex(1)))
    {
        lua_settop(L, arguments);
        return InstanceIndex(L);
    }
    lua_pushvalue(L, 2);
    lua_rawget(L, lua_upvalueindex(2));
    if (lua_CFunction getter = lua_tocfunction(L, -1))
    {
        if (GetFloatDirect(L, getter, 1, true))
            return 1;
        lua_pushvalue(L, 1);
        lua_call(L, 1, 1);
        return 1;
    }
    lua_pushvalue(L, 2);
    lua_rawget(L, lua_upvalueindex(1));
    if (lua_iscfunction(L, -1))
        return 1;
    if (!lua_isnil(L, -1))
        throw std::runtime_error("not a cfunction");
    // Not the class's own: look further up, from the parent.
    lua_settop(L, 2);
    lua_pushlightuserdata(L, const_cast<void*>(ParentKey()));
    lua_rawget(L, lua_upvalueindex(1));
    if (!lua_istable(L, -1))
        return 0;
    return LookUp(L);
}

// __newindex of a class table. Upvalue 1 is its setter table, upvalue 2 the table: a setter of the class itself is called at once,
// anything else goes the general way.
int OwnNewIndex(lua_State* L)
{
    // Called as a plain function on something else (a script may), it takes the general way.
    if (lua_gettop(L) != 3 || !lua_getmetatable(L, 1) || !lua_rawequal(L, -1, lua_upvalueindex(2)))
    {
        lua_settop(L, 3);
        return InstanceNewIndex(L);
    }
    lua_pushvalue(L, 2);
    lua_rawget(L, lua_upvalueindex(1));
    if (SetFloatDirect(L, lua_tocfunction(L, -1), 1, 2, 3, true))
        return 0;
    lua_settop(L, 3);
    return InstanceNewIndex(L);
}
}

void SetInstanceLookups(lua_State* L, int table)
{
    table = AbsIndex(L, table);
    RawGetKey(L, table, PropGetKey());
    if (!lua_istable(L, -1))
    {
        lua_pop(L, 1);
        return;
    }
    const int getters = lua_gettop(L);
    RawGetKey(L, getters, DynamicKey());
    bool generalOnly = !lua_isnil(L, -1);
    lua_settop(L, getters);
    // A getter named like an entry of the table itself must lose to it: then only the general order will do.
    lua_pushnil(L);
    while (!generalOnly && lua_next(L, getters))
    {
        lua_pushvalue(L, -2);
        lua_rawget(L, table);
        generalOnly = !lua_isnil(L, -1);
        lua_pop(L, 2);
    }
    lua_settop(L, getters);
    if (generalOnly)
        lua_pop(L, 1);
    else
    {
        lua_pushvalue(L, table);
        lua_insert(L, -2);
        lua_pushcclosure(L, &OwnIndex, 2);
        lua_setfield(L, table, "__index");
    }
    RawGetKey(L, table, PropSetKey());
    if (!lua_istable(L, -1))
    {
        lua_pop(L, 1);
        return;
    }
    lua_pushvalue(L, table);
    lua_pushcclosure(L, &OwnNewIndex, 2);
    lua_setfield(L, table, "__newindex");
}

int InstanceNewIndex(lua_State* L)
{
    if (!lua_getmetatable(L, 1))
        return luaL_error(L, "no member named '%s'", lua_tostring(L, 2));
    const int classTable = lua_gettop(L);
    lua_pushvalue(L, classTable);
    for (;;)
    {
        RawGetKey(L, -1, PropSetKey());
        if (lua_istable(L, -1))
        {
            lua_pushvalue(L, 2);
            lua_rawget(L, -2);
            if (lua_CFunction setter = lua_tocfunction(L, -1))
            {
                // A float field's setter is applied in place; it ends the assignment as its nil result would.
                if (SetFloatDirect(L, setter, 1, 2, 3))
                    return 0;
                lua_pushvalue(L, 1);
                lua_pushvalue(L, 3);
                lua_call(L, 2, 1);
                if (lua_isnil(L, -1) || (lua_isboolean(L, -1) && lua_toboolean(L, -1)))
                    return 0;
            }
            lua_pop(L, 1);
        }
        lua_pop(L, 1);
        if (!GoToParent(L))
            break;
    }
    RawGetKey(L, classTable, PropSetKey());
    if (lua_istable(L, -1))
    {
        RawGetKey(L, -1, DynamicKey());
        if (lua_iscfunction(L, -1))
        {
            lua_pushvalue(L, 1);
            lua_pushvalue(L, 2);
            lua_pushvalue(L, 3);
            lua_call(L, 3, 1);
            // A hook that gives false did not take the name: it is nobody's.
            if (!lua_isboolean(L, -1) || lua_toboolean(L, -1))
                return 0;
        }
    }
    return luaL_error(L, "no member named '%s'", lua_tostring(L, 2));
}

int StaticIndex(lua_State* L)
{
    if (WantsReference(L))
    {
        if (!lua_istable(L, 1))
        {
            PushPropertyReference(L, 1, 2);
            return 1;
        }
        lua_getfield(L, 1, "__propref");
        if (!lua_istable(L, -1))
        {
            lua_pop(L, 1);
            lua_newtable(L);
        }
        lua_pushvalue(L, 2);
        lua_rawseti(L, -2, static_cast<int>(lua_objlen(L, -2)) + 1);
        lua_setfield(L, 1, "__propref");
        lua_pushvalue(L, 1);
        return 1;
    }
    if (!lua_getmetatable(L, 1))
        return 0;
    return LookUp(L);
}

int StaticNewIndex(lua_State* L)
{
    if (lua_getmetatable(L, 1))
    {
        for (;;)
        {
            RawGetKey(L, -1, PropSetKey());
            if (lua_istable(L, -1))
            {
                lua_pushvalue(L, 2);
                lua_rawget(L, -2);
                if (lua_iscfunction(L, -1))
                {
                    lua_pushvalue(L, 3);
                    lua_call(L, 1, 0);
                    return 0;
                }
                lua_pop(L, 1);
            }
            lua_pop(L, 1);
            if (!GoToParent(L))
                break;
        }
    }
    return luaL_error(L, "no writable variable '%s'", lua_tostring(L, 2));
}

int CollectUserdata(lua_State* L)
{
    if (Userdata* userdata = UserdataAt(L, 1))
    {
        userdata->~Userdata();
        // What stays is an empty reference, so that a second __gc (a script may call it) destroys nothing.
        new (userdata) UserdataPtr(nullptr);
    }
    return 0;
}

namespace
{
// Pushes the object of reference 1 and its path; returns the path's length. Raises on a table that is no reference.
int OpenReference(lua_State* L)
{
    luaL_checktype(L, 1, LUA_TTABLE);
    lua_getfield(L, 1, "__data");
    lua_getfield(L, 1, "__propref");
    if (!lua_istable(L, -1))
        luaL_error(L, "not a property reference");
    return static_cast<int>(lua_objlen(L, -1));
}
}

int PropertyReferenceCopy(lua_State* L)
{
    const int length = OpenReference(L);
    const int path = lua_gettop(L);
    lua_pushvalue(L, path - 1);
    for (int i = 1; i <= length; ++i)
    {
        if (lua_isnil(L, -1))
            return 1;
        lua_rawgeti(L, path, i);
        lua_gettable(L, -2);
        lua_remove(L, -2);
    }
    return 1;
}

int PropertyReferenceAssign(lua_State* L)
{
    if (lua_gettop(L) < 2)
        lua_settop(L, 2);
    const int length = OpenReference(L);
    const int path = lua_gettop(L);
    if (length < 1)
        return 0;
    lua_pushvalue(L, path - 1);
    for (int i = 1; i < length; ++i)
    {
        lua_rawgeti(L, path, i);
        lua_gettable(L, -2);
        lua_remove(L, -2);
    }
    lua_rawgeti(L, path, length);
    lua_pushvalue(L, 2);
    lua_settable(L, -3);
    return 0;
}

namespace
{
int RaiseReadOnly(lua_State* L)
{
    return luaL_error(L, "'%s' is read-only", lua_tostring(L, lua_upvalueindex(1)));
}
}

void PushReadOnlySetter(lua_State* L, const char* name)
{
    lua_pushstring(L, name);
    lua_pushcclosure(L, &RaiseReadOnly, 1);
}
}
