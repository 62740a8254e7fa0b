// Meta::ClassInfo: how the registry makes, copies and deletes instances of one
// type without knowing it. Registration picks one of three forms for a type:
// DerivedClassInfo (default and copy constructible), DerivedClassInfoNoCopyConstructor
// (default constructible only) and DerivedClassInfoNoConstructors (neither, as an
// abstract base). Every operation given a null pointer does nothing.
//
// ToLua pushes a copy of a value onto a Lua stack (a number, string or a bound
// object owned by Lua); GetLuaKey is the registry key of the type's class table.
#pragma once

#include "utilities/lua/luabridge/detail/Keys.h"

#include <new>
#include <type_traits>

struct lua_State;

namespace luabridge
{
template <class T>
void PushCopy(lua_State* L, const T& value);
}

namespace Meta
{
class ClassInfo
{
public:
    virtual ~ClassInfo() = default;
    // A new default instance, or null when the type can't be made.
    virtual void* New() const = 0;
    // A default instance built in place at `at`.
    virtual void Construct(void* at) const = 0;
    // A copy of `from` built in place at `at`.
    virtual void CopyConstruct(void* at, const void* from) const = 0;
    // True if instances can be copied.
    virtual bool CanCopy() const = 0;
    // A new copy of `from`, or null when the type can't be copied.
    virtual void* Clone(const void* from) const = 0;
    // Deletes an instance made by New or Clone.
    virtual void Delete(void* object) const = 0;
    // Runs the destructor of an instance built in place.
    virtual void Destruct(void* object) const = 0;
    // Pushes a copy of `value` onto the Lua stack; pushes nothing when the type can't be copied.
    virtual void ToLua(lua_State* L, const void* value) const = 0;
    // The registry key of the type's class table.
    virtual const void* GetLuaKey() const = 0;
};

// Instance operations of a type that can be made and copied.
template <class T>
class DerivedClassInfo final : public ClassInfo
{
public:
    void* New() const override { return new T(); }
    void Construct(void* at) const override
    {
        if (at)
            new (at) T();
    }
    void CopyConstruct(void* at, const void* from) const override
    {
        if (at && from)
            new (at) T(*static_cast<const T*>(from));
    }
    bool CanCopy() const override { return true; }
    void* Clone(const void* from) const override { return from ? new T(*static_cast<const T*>(from)) : nullptr; }
    void Delete(void* object) const override { delete static_cast<T*>(object); }
    void Destruct(void* object) const override
    {
        if (object)
            static_cast<T*>(object)->~T();
    }
    void ToLua(lua_State* L, const void* value) const override
    {
        if (value)
            luabridge::PushCopy<T>(L, *static_cast<const T*>(value));
    }
    const void* GetLuaKey() const override { return luabridge::detail::ClassKey<T>(); }
};

// Instance operations of a type that can be made but not copied.
template <class T>
class DerivedClassInfoNoCopyConstructor final : public ClassInfo
{
public:
    void* New() const override { return new T(); }
    void Construct(void*) const override {}
    void CopyConstruct(void*, const void*) const override {}
    bool CanCopy() const override { return false; }
    void* Clone(const void*) const override { return nullptr; }
    void Delete(void* object) const override { delete static_cast<T*>(object); }
    void Destruct(void* object) const override
    {
        if (object)
            static_cast<T*>(object)->~T();
    }
    void ToLua(lua_State*, const void*) const override {}
    const void* GetLuaKey() const override { return luabridge::detail::ClassKey<T>(); }
};

// Instance operations of a type that the registry can't make (abstract, or no default constructor).
template <class T>
class DerivedClassInfoNoConstructors final : public ClassInfo
{
public:
    void* New() const override { return nullptr; }
    void Construct(void*) const override {}
    void CopyConstruct(void*, const void*) const override {}
    bool CanCopy() const override { return false; }
    void* Clone(const void*) const override { return nullptr; }
    void Delete(void* object) const override
    {
        if constexpr (std::is_destructible_v<T>)
            delete static_cast<T*>(object);
    }
    void Destruct(void* object) const override
    {
        if constexpr (std::is_destructible_v<T>)
            if (object)
                static_cast<T*>(object)->~T();
    }
    void ToLua(lua_State*, const void*) const override {}
    const void* GetLuaKey() const override { return luabridge::detail::ClassKey<T>(); }
};

// The ClassInfo form that fits T.
template <class T>
using ClassInfoFor = std::conditional_t<
    std::is_abstract_v<T> || !std::is_default_constructible_v<T>, DerivedClassInfoNoConstructors<T>,
    std::conditional_t<std::is_copy_constructible_v<T>, DerivedClassInfo<T>, DerivedClassInfoNoCopyConstructor<T>>>;

// The one set of instance operations of T, whether or not T is registered.
template <class T>
const ClassInfo& InstanceOperations()
{
    static const ClassInfoFor<T> operations;
    return operations;
}
}

// The Lua pushes that ToLua uses.
#include "utilities/lua/luabridge/Stack.h"
