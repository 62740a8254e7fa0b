// Meta::Method: a callable of a registered class, called with its arguments as
// Meta::Anys and returning its result as one (empty for void, or when the
// arguments don't fit). The forms:
//
//   MethodD_class<R, C, Args...>          member function
//   MethodD_const_class<R, C, Args...>    const member function
//   MethodD_static_class<R, Args...>      free or static function
//   MethodD_crosscall<R, C>               member function that works the Lua stack itself
//   MethodOverload_class<id, R, C, Args...>, MethodOverload_const_class<...>
//                                          one of several forms of one name, told apart by id
#pragma once

#include "utilities/Meta/DataInfo.h"
#include "utilities/Meta/ValueTraits.h"
#include "utilities/lua/luabridge/MethodBinding.h"

#include <tuple>
#include <utility>
#include <vector>

struct lua_State;

namespace luabridge
{
class ClassScope;
}

namespace Meta
{
class Method : public DataInfo
{
public:
    Method(const std::string& name, Data* returnType, std::vector<Data*> argumentTypes, bool isConst)
        : DataInfo(name, returnType), m_ArgCount(static_cast<unsigned>(argumentTypes.size())), m_Const(isConst),
          m_ArgTypes(std::move(argumentTypes)), m_ReturnType(returnType)
    {
    }

    // Calls with no arguments.
    virtual Any Call(void* self) const
    {
        std::vector<Any> none;
        return Call(self, none);
    }
    // Calls with `arguments`; empty if their number or types don't fit.
    virtual Any Call(void* self, std::vector<Any>& arguments) const = 0;
    // Calls on a const object; empty unless the method is const.
    virtual Any Call(const void* self, std::vector<Any>& arguments) const
    {
        return m_Const ? Call(const_cast<void*>(self), arguments) : Any();
    }
    // Calls from Lua with the arguments on the stack: -1 when they don't fit, else the number of results.
    virtual int LuaCandidate(lua_State* L) const { return -1; }
    // True for a function of the class rather than of an instance.
    virtual bool IsStatic() const { return false; }
    // Adds the method to the class being bound, under its Lua name.
    virtual void RegisterLua(luabridge::ClassScope& scope) const;

    // Number of arguments.
    unsigned m_ArgCount = 0;
    // True for a const member function.
    bool m_Const = false;
    // Types of the arguments, in order.
    std::vector<Data*> m_ArgTypes;
    // Type of the result; null for void.
    Data* m_ReturnType = nullptr;
};

// Calls `function` with the arguments unwrapped from `arguments`; the caller checked them.
template <class R, class... Args, class Function, std::size_t... I>
Any CallUnwrapped(Function&& function, std::vector<Any>& arguments, std::index_sequence<I...>)
{
    if constexpr (std::is_void_v<R>)
    {
        function(ValueTraits<Args>::Unwrap(arguments[I].m_Value)...);
        return Any();
    }
    else
    {
        return ValueTraits<R>::Wrap(function(ValueTraits<Args>::Unwrap(arguments[I].m_Value)...));
    }
}

// True if the arguments fit the parameter types.
template <class... Args, std::size_t... I>
bool ArgumentsFit(const std::vector<Any>& arguments, std::index_sequence<I...>)
{
    return arguments.size() == sizeof...(Args) && (ValueTraits<Args>::Accepts(arguments[I]) && ...);
}

// Registry record of a result type; null for void.
template <class R>
Data* ResultType()
{
    if constexpr (std::is_void_v<R>)
        return nullptr;
    else
        return ValueTraits<R>::Type();
}

template <class R, class C, class... Args>
class MethodD_class : public Method
{
public:
    using Function = R (C::*)(Args...);
    MethodD_class(const std::string& name, Function function)
        : Method(name, ResultType<R>(), {ValueTraits<Args>::Type()...}, false), m_Function(function)
    {
    }
    Any Call(void* self, std::vector<Any>& arguments) const override
    {
        if (!self || !ArgumentsFit<Args...>(arguments, std::index_sequence_for<Args...>()))
            return Any();
        return Invoke(static_cast<C*>(self), arguments, std::index_sequence_for<Args...>());
    }
    using Method::Call;
    int LuaCandidate(lua_State* L) const override { return luabridge::CallMember<R, C, Args...>(L, m_Function); }

private:
    template <std::size_t... I>
    Any Invoke(C* object, std::vector<Any>& arguments, std::index_sequence<I...>) const
    {
        if constexpr (std::is_void_v<R>)
        {
            (object->*m_Function)(ValueTraits<Args>::Unwrap(arguments[I].m_Value)...);
            return Any();
        }
        else
        {
            return ValueTraits<R>::Wrap((object->*m_Function)(ValueTraits<Args>::Unwrap(arguments[I].m_Value)...));
        }
    }

    Function m_Function;
};

template <class R, class C, class... Args>
class MethodD_const_class : public Method
{
public:
    using Function = R (C::*)(Args...) const;
    MethodD_const_class(const std::string& name, Function function)
        : Method(name, ResultType<R>(), {ValueTraits<Args>::Type()...}, true), m_Function(function)
    {
    }
    Any Call(void* self, std::vector<Any>& arguments) const override
    {
        if (!self || !ArgumentsFit<Args...>(arguments, std::index_sequence_for<Args...>()))
            return Any();
        return Invoke(static_cast<const C*>(self), arguments, std::index_sequence_for<Args...>());
    }
    using Method::Call;
    int LuaCandidate(lua_State* L) const override
    {
        return luabridge::CallMember<R, const C, Args...>(L, m_Function);
    }

private:
    template <std::size_t... I>
    Any Invoke(const C* object, std::vector<Any>& arguments, std::index_sequence<I...>) const
    {
        if constexpr (std::is_void_v<R>)
        {
            (object->*m_Function)(ValueTraits<Args>::Unwrap(arguments[I].m_Value)...);
            return Any();
        }
        else
        {
            return ValueTraits<R>::Wrap((object->*m_Function)(ValueTraits<Args>::Unwrap(arguments[I].m_Value)...));
        }
    }

    Function m_Function;
};

// Adds a function of the class to the class being bound.
void RegisterStaticLua(const Method& method, luabridge::ClassScope& scope);

template <class R, class... Args>
class MethodD_static_class final : public Method
{
public:
    using Function = R (*)(Args...);
    MethodD_static_class(const std::string& name, Function function)
        : Method(name, ResultType<R>(), {ValueTraits<Args>::Type()...}, false), m_Function(function)
    {
    }
    // The object is not used: the function belongs to the class, not to an instance.
    Any Call(void*, std::vector<Any>& arguments) const override
    {
        if (!ArgumentsFit<Args...>(arguments, std::index_sequence_for<Args...>()))
            return Any();
        return CallUnwrapped<R, Args...>(m_Function, arguments, std::index_sequence_for<Args...>());
    }
    Any Call(const void* self, std::vector<Any>& arguments) const override
    {
        return Call(const_cast<void*>(self), arguments);
    }
    using Method::Call;
    int LuaCandidate(lua_State* L) const override { return luabridge::CallStatic<R, Args...>(L, m_Function); }
    bool IsStatic() const override { return true; }
    void RegisterLua(luabridge::ClassScope& scope) const override;

private:
    Function m_Function;
};

// A member function that reads its arguments from the Lua stack and pushes its results itself.
template <class R, class C>
class MethodD_crosscall final : public Method
{
public:
    using Function = R (C::*)(lua_State*);
    MethodD_crosscall(const std::string& name, Function function)
        : Method(name, ResultType<R>(), {}, false), m_Function(function)
    {
    }
    // Only a script can call it: there is no Lua stack to hand over here.
    Any Call(void*, std::vector<Any>&) const override { return Any(); }
    using Method::Call;
    int LuaCandidate(lua_State* L) const override { return luabridge::CallCrosscall<R, C>(L, m_Function); }

    // The function itself, for the script binding.
    Function m_Function;
};

// One form of an overloaded member function; `id` tells the forms apart.
template <int id, class R, class C, class... Args>
class MethodOverload_class final : public MethodD_class<R, C, Args...>
{
public:
    using MethodD_class<R, C, Args...>::MethodD_class;
    // The form's tag.
    static constexpr int kId = id;
};

// One form of an overloaded const member function.
template <int id, class R, class C, class... Args>
class MethodOverload_const_class final : public MethodD_const_class<R, C, Args...>
{
public:
    using MethodD_const_class<R, C, Args...>::MethodD_const_class;
    // The form's tag.
    static constexpr int kId = id;
};

// The method record that fits a member function, const member function or free function.
template <class R, class C, class... Args>
Method* MakeMethod(const std::string& name, R (C::*function)(Args...))
{
    return new MethodD_class<R, C, Args...>(name, function);
}
template <class R, class C, class... Args>
Method* MakeMethod(const std::string& name, R (C::*function)(Args...) const)
{
    return new MethodD_const_class<R, C, Args...>(name, function);
}
template <class R, class... Args>
Method* MakeMethod(const std::string& name, R (*function)(Args...))
{
    return new MethodD_static_class<R, Args...>(name, function);
}
template <int id, class R, class C, class... Args>
Method* MakeOverload(const std::string& name, R (C::*function)(Args...))
{
    return new MethodOverload_class<id, R, C, Args...>(name, function);
}
template <int id, class R, class C, class... Args>
Method* MakeOverload(const std::string& name, R (C::*function)(Args...) const)
{
    return new MethodOverload_const_class<id, R, C, Args...>(name, function);
}
template <int id, class R, class... Args>
Method* MakeOverload(const std::string& name, R (*function)(Args...))
{
    return new MethodD_static_class<R, Args...>(name, function);
}

template <class R, class... Args>
void MethodD_static_class<R, Args...>::RegisterLua(luabridge::ClassScope& scope) const
{
    RegisterStaticLua(*this, scope);
}
}
