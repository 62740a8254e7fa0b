// What a Lua-held native object is: a full userdata holding a Userdata. A
// UserdataPtr refers to an object owned elsewhere (its flag word is 0); a
// UserdataValue<T> holds a T inline, owned by Lua and destroyed by the class
// table's __gc (flag word 1). In both, p addresses the object.
//
// PushPointer(L, object, classKey) pushes a UserdataPtr with the class table
// under classKey as its metatable: nil for a null object, and a light userdata
// of the raw pointer when that class was never bound in this state.
#pragma once

#include <lua.hpp>

#include <new>
#include <type_traits>
#include <utility>

namespace Meta
{
class Data;
}

namespace luabridge
{
class Userdata
{
public:
    // Destroys what the userdata owns (nothing for a reference).
    virtual ~Userdata() = default;
    // The object.
    void* p = nullptr;
    // 0 for a pointer to an object owned elsewhere, 1 for a value owned by Lua.
    int m_Flags = 0;
};

// A reference to a native object owned elsewhere.
class UserdataPtr final : public Userdata
{
public:
    // A reference to `object`.
    explicit UserdataPtr(void* object) { p = object; }
};

// A T owned by Lua, built inline behind the header.
template <class T>
class UserdataValue final : public Userdata
{
public:
    // Builds the T inline from `arguments`.
    template <class... A>
    explicit UserdataValue(A&&... arguments)
    {
        p = new (m_Storage) T(std::forward<A>(arguments)...);
        m_Flags = 1;
    }
    // Destroys the T.
    ~UserdataValue() override { static_cast<T*>(p)->~T(); }
    UserdataValue(const UserdataValue&) = delete;
    UserdataValue& operator=(const UserdataValue&) = delete;

    // Pushes a new T made from `arguments` with the class table under `classKey` as metatable, and
    // returns it; pushes nil and makes nothing when the class is not bound in this state.
    template <class... A>
    static T* Push(lua_State* L, const void* classKey, A&&... arguments)
    {
        lua_pushlightuserdata(L, const_cast<void*>(classKey));
        lua_rawget(L, LUA_REGISTRYINDEX);
        if (!lua_istable(L, -1))
        {
            lua_pop(L, 1);
            lua_pushnil(L);
            return nullptr;
        }
        void* memory = lua_newuserdata(L, sizeof(UserdataValue<T>));
        auto* value = new (memory) UserdataValue<T>(std::forward<A>(arguments)...);
        lua_insert(L, -2);
        lua_setmetatable(L, -2);
        return static_cast<T*>(value->p);
    }

private:
    alignas(T) unsigned char m_Storage[sizeof(T)];
};

// Pushes a reference to `object` (nil when null) with the table under `classKey` as metatable.
void PushPointer(lua_State* L, const void* object, const void* classKey);

namespace detail
{
// The Userdata at `index`, or null when the value there is no full userdata of the binding.
Userdata* UserdataAt(lua_State* L, int index);
// The registry record of the class of the bound object at `index`, or null.
const Meta::Data* TypeAt(lua_State* L, int index);
// True if the value at `index` is a bound object of `type` or of a class derived from it.
bool IsInstanceOf(lua_State* L, int index, const Meta::Data* type);
// The object at `index` when it is a bound object of `type` (or derived), else null.
void* ObjectOf(lua_State* L, int index, const Meta::Data* type);
}
}
