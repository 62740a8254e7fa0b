// Stack<T>: how a native value of type T goes onto the Lua stack (Push), whether
// the value at an index can be taken as a T (Is) and how it is taken (Get).
//
//   numbers (float, double, int, unsigned, ...)   Lua numbers
//   bool                                          booleans (nil reads as false)
//   std::string, const char*                      strings
//   enumerations                                  their integer values
//   a bound class by value                        a copy owned by Lua (UserdataValue)
//   a bound class by reference or pointer         a reference (UserdataPtr); null is nil,
//                                                 and an object that names its own class
//                                                 (GetMeta) is pushed as that class
//   other pointers                                light userdata
//   std::vector<E>                                a new table of the elements, 1 to n,
//                                                 each pushed as an E by value; taken
//                                                 from a table whose elements 1 to n
//                                                 are all E
//
// A reference argument given nil raises the Lua error "nil passed to reference".
#pragma once

#include "utilities/Meta/ClassInfo.h"
#include "utilities/Meta/Data.h"
#include "utilities/lua/luabridge/detail/Keys.h"
#include "utilities/lua/luabridge/detail/Userdata.h"

#include <lua.hpp>

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

namespace luabridge
{
namespace detail
{
// A class whose objects name their concrete registered class.
template <class T>
concept NamesItsClass = requires(const T* object) {
    { object->GetMeta() } -> std::convertible_to<const Meta::Data*>;
};

// The registry key of the class table of `object`'s concrete class.
template <class T>
const void* ClassKeyOfObject(const T* object)
{
    if constexpr (NamesItsClass<T>)
    {
        const Meta::Data* type = object->GetMeta();
        if (type && type->m_Info)
            return type->m_Info->GetLuaKey();
    }
    return ClassKey<std::remove_cv_t<T>>();
}

// True for class types carried as bound objects (everything but strings).
template <class T>
constexpr bool kIsObject = std::is_class_v<T> && !std::is_same_v<T, std::string>;

// True for std::vector, which is pushed as a table of its elements.
template <class T>
constexpr bool kIsVector = false;
template <class E, class A>
constexpr bool kIsVector<std::vector<E, A>> = true;
}

// Pushes a copy of `value`, owned by Lua.
template <class T>
void PushCopy(lua_State* L, const T& value);

template <class T>
struct Stack
{
    // The type without reference and cv qualifiers.
    using Bare = std::remove_cv_t<std::remove_reference_t<T>>;
    // What Push takes.
    using In = std::conditional_t<std::is_reference_v<T>, T, const Bare&>;
    // What Get gives: a reference to the object for bound classes, else a value.
    using Out = std::conditional_t<detail::kIsObject<Bare> && !detail::kIsVector<Bare>, Bare&, Bare>;

    // True when T is a reference: objects travel as references, not copies.
    static constexpr bool kIsReference = std::is_reference_v<T>;
    // True when T is a const reference: objects travel with their const table.
    static constexpr bool kIsConstReference = kIsReference && std::is_const_v<std::remove_reference_t<T>>;

    // Pushes `value`.
    static void Push(lua_State* L, In value)
    {
        if constexpr (std::is_same_v<Bare, bool>)
            lua_pushboolean(L, value ? 1 : 0);
        else if constexpr (std::is_enum_v<Bare>)
            lua_pushinteger(L, static_cast<lua_Integer>(value));
        else if constexpr (std::is_arithmetic_v<Bare>)
            lua_pushnumber(L, static_cast<lua_Number>(value));
        else if constexpr (std::is_same_v<Bare, std::string>)
            lua_pushlstring(L, value.data(), value.size());
        else if constexpr (std::is_same_v<Bare, const char*> || std::is_same_v<Bare, char*>)
        {
            if (value)
                lua_pushstring(L, value);
            else
                lua_pushnil(L);
        }
        else if constexpr (std::is_pointer_v<Bare>)
        {
            using Pointee = std::remove_pointer_t<Bare>;
            if constexpr (detail::kIsObject<std::remove_cv_t<Pointee>>)
            {
                if (!value)
                    lua_pushnil(L);
                else if constexpr (std::is_const_v<Pointee>)
                    PushPointer(L, value, detail::ConstKeyOf(detail::ClassKeyOfObject(value)));
                else
                    PushPointer(L, value, detail::ClassKeyOfObject(value));
            }
            else if (value)
                lua_pushlightuserdata(L, const_cast<void*>(static_cast<const void*>(value)));
            else
                lua_pushnil(L);
        }
        else if constexpr (detail::kIsVector<Bare>)
        {
            lua_createtable(L, static_cast<int>(value.size()), 0);
            for (std::size_t i = 0; i < value.size(); ++i)
            {
                Stack<typename Bare::value_type>::Push(L, value[i]);
                lua_rawseti(L, -2, static_cast<int>(i + 1));
            }
        }
        else if constexpr (kIsReference)
        {
            if constexpr (kIsConstReference)
                PushPointer(L, &value, detail::ConstKeyOf(detail::ClassKeyOfObject(&value)));
            else
                PushPointer(L, &value, detail::ClassKeyOfObject(&value));
        }
        else
        {
            if constexpr (std::is_copy_constructible_v<Bare> && !std::is_abstract_v<Bare>)
                UserdataValue<Bare>::Push(L, detail::ClassKey<Bare>(), value);
            else
                lua_pushnil(L);
        }
    }

    // True if the value at `index` can be taken as a T.
    static bool Is(lua_State* L, int index)
    {
        const int type = lua_type(L, index);
        if constexpr (std::is_same_v<Bare, bool>)
            return type == LUA_TBOOLEAN || type == LUA_TNIL;
        else if constexpr (std::is_enum_v<Bare> || std::is_arithmetic_v<Bare>)
            return type == LUA_TNUMBER;
        else if constexpr (std::is_same_v<Bare, std::string> || std::is_same_v<Bare, const char*>)
            return type == LUA_TSTRING;
        else if constexpr (std::is_pointer_v<Bare>)
        {
            using Pointee = std::remove_cv_t<std::remove_pointer_t<Bare>>;
            if (type == LUA_TNIL)
                return true;
            if constexpr (detail::kIsObject<Pointee>)
                return detail::IsInstanceOf(L, index, Meta::Get<Pointee>());
            else
                return type == LUA_TLIGHTUSERDATA;
        }
        else if constexpr (detail::kIsVector<Bare>)
        {
            if (type != LUA_TTABLE)
                return false;
            const int table = index < 0 ? lua_gettop(L) + 1 + index : index;
            const int count = static_cast<int>(lua_objlen(L, table));
            for (int i = 1; i <= count; ++i)
            {
                lua_rawgeti(L, table, i);
                const bool fits = Stack<typename Bare::value_type>::Is(L, -1);
                lua_pop(L, 1);
                if (!fits)
                    return false;
            }
            return true;
        }
        else if constexpr (kIsReference)
            // nil fits, so that taking it reports the error of a nil reference.
            return type == LUA_TNIL || detail::IsInstanceOf(L, index, Meta::Get<Bare>());
        else
            return detail::IsInstanceOf(L, index, Meta::Get<Bare>());
    }

    // The value at `index` as a T; the caller checked it with Is.
    static Out Get(lua_State* L, int index)
    {
        if constexpr (std::is_same_v<Bare, bool>)
            return lua_toboolean(L, index) != 0;
        else if constexpr (std::is_enum_v<Bare>)
            return static_cast<Bare>(lua_tointeger(L, index));
        else if constexpr (std::is_floating_point_v<Bare>)
            return static_cast<Bare>(lua_tonumber(L, index));
        else if constexpr (std::is_arithmetic_v<Bare>)
            return static_cast<Bare>(static_cast<long long>(lua_tonumber(L, index)));
        else if constexpr (std::is_same_v<Bare, std::string>)
        {
            std::size_t length = 0;
            const char* text = lua_tolstring(L, index, &length);
            return text ? std::string(text, length) : std::string();
        }
        else if constexpr (std::is_same_v<Bare, const char*>)
            return lua_tostring(L, index);
        else if constexpr (std::is_pointer_v<Bare>)
        {
            using Pointee = std::remove_cv_t<std::remove_pointer_t<Bare>>;
            if constexpr (detail::kIsObject<Pointee>)
                return static_cast<Bare>(detail::ObjectOf(L, index, Meta::Get<Pointee>()));
            else
                return static_cast<Bare>(lua_touserdata(L, index));
        }
        else if constexpr (detail::kIsVector<Bare>)
        {
            const int table = index < 0 ? lua_gettop(L) + 1 + index : index;
            Bare elements(lua_objlen(L, table));
            for (std::size_t i = 0; i < elements.size(); ++i)
            {
                lua_rawgeti(L, table, static_cast<int>(i + 1));
                elements[i] = Stack<typename Bare::value_type>::Get(L, -1);
                lua_pop(L, 1);
            }
            return elements;
        }
        else
        {
            void* object = detail::ObjectOf(L, index, Meta::Get<Bare>());
            if (!object)
                luaL_error(L, "nil passed to reference");
            return *static_cast<Bare*>(object);
        }
    }
};

template <class T>
void PushCopy(lua_State* L, const T& value)
{
    Stack<T>::Push(L, value);
}
}
