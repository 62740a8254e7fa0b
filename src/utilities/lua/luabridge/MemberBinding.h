// How a field of a bound class reaches Lua: a getter and a setter closure over
// the field's offset in the object. Float fields take a direct path that only
// reads or writes the float. A field that is itself a bound class is not
// copied: its getter hands out a reference into the object (so that
// obj.Position.x = 1 writes through) whose metatable adds __copy, which gives a
// detached copy, and assign, which copies a value into the field.
#pragma once

#include "utilities/lua/luabridge/Stack.h"
#include "utilities/lua/luabridge/detail/ClassScope.h"
#include "utilities/lua/luabridge/detail/DirectFloat.h"
#include "utilities/lua/luabridge/detail/Metamethods.h"

#include <cstddef>
#include <string>

namespace luabridge
{
namespace detail
{
// The address of the field whose offset is upvalue 1, in the object at index 1; null when index 1 holds
// no bound object.
template <class M>
M* FieldAt(lua_State* L)
{
    Userdata* userdata = UserdataAt(L, 1);
    if (!userdata || !userdata->p)
        return nullptr;
    return reinterpret_cast<M*>(static_cast<char*>(userdata->p) + lua_tointeger(L, lua_upvalueindex(1)));
}

// Getter of a float field.
int GetFloatField(lua_State* L);

// Setter of a float field; a value that is not a number raises an error naming the field (upvalue 2).
int SetFloatField(lua_State* L);
// Raises the error of a value of the wrong type for field (upvalue 2).
int RaiseWrongType(lua_State* L);
// Pushes the metatable of references to value members of the class under `classKey`, made on first
// use from its class table with `copy` and `assign` added; pushes nil when the class is not bound.
void PushReferenceMetatable(lua_State* L, const void* classKey, lua_CFunction copy, lua_CFunction assign);

template <class M>
int GetField(lua_State* L)
{
    M* field = FieldAt<M>(L);
    if (!field)
        return 0;
    Stack<M>::Push(L, *field);
    return 1;
}

template <class M>
int SetField(lua_State* L)
{
    M* field = FieldAt<M>(L);
    if (!field)
        return 0;
    if (!Stack<M>::Is(L, 2))
        return RaiseWrongType(L);
    *field = Stack<M>::Get(L, 2);
    return 0;
}

// __copy of a value member: a copy owned by Lua.
template <class M>
int CopyValueMember(lua_State* L)
{
    Userdata* userdata = UserdataAt(L, 1);
    if (!userdata || !userdata->p)
        return luaL_error(L, "nil passed to reference");
    PushCopy<M>(L, *static_cast<const M*>(userdata->p));
    return 1;
}

// assign(member, value) of a value member: copies the value's fields into the member.
template <class M>
int AssignValueMember(lua_State* L)
{
    Userdata* userdata = UserdataAt(L, 1);
    void* from = ObjectOf(L, 2, Meta::Get<M>());
    if (!userdata || !userdata->p || !from)
        return luaL_error(L, "nil passed to reference");
    if constexpr (std::is_copy_assignable_v<M>)
        *static_cast<M*>(userdata->p) = *static_cast<const M*>(from);
    return 0;
}

// Getter of a field that is a bound class: a reference into the object.
template <class M>
int GetValueField(lua_State* L)
{
    M* field = FieldAt<M>(L);
    if (!field)
        return 0;
    void* memory = lua_newuserdata(L, sizeof(UserdataPtr));
    new (memory) UserdataPtr(field);
    PushReferenceMetatable(L, ClassKey<M>(), &CopyValueMember<M>, &AssignValueMember<M>);
    if (!lua_istable(L, -1))
    {
        lua_pop(L, 2);
        lua_pushnil(L);
        return 1;
    }
    lua_setmetatable(L, -2);
    return 1;
}

template <class M>
int SetValueField(lua_State* L)
{
    M* field = FieldAt<M>(L);
    if (!field)
        return 0;
    void* from = ObjectOf(L, 2, Meta::Get<M>());
    if (!from)
        return lua_isnil(L, 2) ? luaL_error(L, "nil passed to reference") : RaiseWrongType(L);
    if constexpr (std::is_copy_assignable_v<M>)
        *field = *static_cast<const M*>(from);
    return 0;
}

// The offset of `field` in C.
template <class C, class M>
std::ptrdiff_t OffsetOf(M C::*field)
{
    alignas(C) static unsigned char storage[sizeof(C)];
    C* object = reinterpret_cast<C*>(storage);
    return reinterpret_cast<unsigned char*>(&(object->*field)) - storage;
}
}

// Adds the getter and the setter of `field`, named `name`, to the class being bound.
template <class C, class M>
void BindMember(ClassScope& scope, const std::string& name, M C::*field)
{
    lua_State* L = scope.L;
    const auto offset = static_cast<lua_Integer>(detail::OffsetOf(field));
    lua_CFunction getter = nullptr;
    lua_CFunction setter = nullptr;
    if constexpr (std::is_same_v<M, float>)
    {
        getter = &detail::GetFloatField;
        setter = &detail::SetFloatField;
    }
    else if constexpr (detail::kIsObject<M> && !detail::kIsVector<M>)
    {
        getter = &detail::GetValueField<M>;
        setter = &detail::SetValueField<M>;
    }
    else
    {
        getter = &detail::GetField<M>;
        setter = &detail::SetField<M>;
    }
    // A float near the start of the object gets plain functions that the metamethods apply in place.
    lua_CFunction directGetter = std::is_same_v<M, float> ? detail::DirectFloatGetter(offset) : nullptr;
    lua_CFunction directSetter = std::is_same_v<M, float> ? detail::DirectFloatSetter(offset) : nullptr;
    if (directGetter)
        lua_pushcfunction(L, directGetter);
    else
    {
        lua_pushinteger(L, offset);
        lua_pushcclosure(L, getter, 1);
    }
    scope.AddGetter(name);
    if constexpr (std::is_const_v<M>)
        scope.AddReadOnly(name);
    else if (directSetter)
    {
        lua_pushcfunction(L, directSetter);
        scope.AddSetter(name);
    }
    else
    {
        lua_pushinteger(L, offset);
        lua_pushlstring(L, name.data(), name.size());
        lua_pushcclosure(L, setter, 2);
        scope.AddSetter(name);
    }
}
}
