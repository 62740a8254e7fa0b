// LuaPropertyD<T>: LuaProperty for values of type T, through the binding's
// stack readers (luabridge::Stack<T>) and the text form (Util::ReadValue /
// Util::WriteValue). Included by LuaProperty.h.
#pragma once

#include "utilities/Meta/Data.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/Serialization/TextValue.h"
#include "utilities/lua/luabridge/Stack.h"

#include <lua.hpp>

#include <type_traits>

template <class T>
class LuaPropertyD final : public LuaProperty
{
public:
    LuaPropertyD() : LuaProperty(Meta::Get<T>()) {}

    void Push(lua_State* L, Meta::Any& value) const override
    {
        T* stored = value.Get<T>();
        if (!stored)
            lua_pushnil(L);
        else if constexpr (luabridge::detail::kIsObject<T>)
            luabridge::Stack<T&>::Push(L, *stored);
        else
            luabridge::Stack<T>::Push(L, *stored);
    }
    bool Take(lua_State* L, int index, Meta::Any& value) const override
    {
        if (!Fits(L, index))
            return false;
        T copy = luabridge::Stack<T>::Get(L, index);
        if (T* stored = value.Get<T>())
            *stored = std::move(copy);
        else
            value = Meta::Any::Make<T>(std::move(copy));
        return true;
    }
    void Deserialize(Util::Serializer& reader, Meta::Any& value) const override
    {
        if (!value.Get<T>())
            MakeDefault(value);
        Util::ReadValue(reader, *value.Get<T>());
    }
    void Serialize(Util::Serializer& writer, const std::string& name, const Meta::Any& value) const override
    {
        const T* stored = value.Get<T>();
        if (!stored)
            return;
        writer.WriteName(name);
        Util::WriteValue(writer, *stored);
        writer.m_Stream << '\n';
    }
    void MakeDefault(Meta::Any& value) const override { value = Meta::Any::Make<T>(T()); }

private:
    // True when the value at `index` of L can be taken as a T: numbers for numbers, strings for strings.
    static bool Fits(lua_State* L, int index)
    {
        if constexpr (std::is_same_v<T, bool>)
            return lua_isboolean(L, index);
        else if constexpr (std::is_arithmetic_v<T>)
            return lua_type(L, index) == LUA_TNUMBER;
        else if constexpr (std::is_same_v<T, std::string>)
            return lua_type(L, index) == LUA_TSTRING;
        else
            return luabridge::Stack<T>::Is(L, index);
    }
};

template <class T>
void LuaProperty::Register()
{
    if constexpr (std::is_default_constructible_v<T> && std::is_copy_assignable_v<T> &&
                  Util::kHasTextForm<T>)
        Add(new LuaPropertyD<T>());
}
