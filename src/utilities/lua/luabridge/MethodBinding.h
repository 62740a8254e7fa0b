// How a native function is called from Lua. Each form is a candidate: it looks
// at the stack (the number of arguments and the type of each) and answers -1
// when the arguments don't fit, without touching anything; otherwise it calls
// and answers the number of results it pushed. The dispatcher of a name tries
// its candidates in order and the first answer that is not negative is final.
//
// Member functions take the object as argument 1 (as obj:Method(...) passes it);
// functions of the class take their arguments from argument 1.
#pragma once

#include "utilities/lua/luabridge/Stack.h"

#include <type_traits>
#include <utility>

namespace luabridge
{
namespace detail
{
// True if the stack from `first` on holds exactly arguments fitting Args.
template <class... Args, std::size_t... I>
bool ArgumentsFit(lua_State* L, int first, std::index_sequence<I...>)
{
    return lua_gettop(L) == first - 1 + static_cast<int>(sizeof...(Args)) &&
           (Stack<Args>::Is(L, first + static_cast<int>(I)) && ...);
}

// Calls `function` with the arguments from `first` on and pushes its result; the number of results.
template <class R, class... Args, class Function, std::size_t... I>
int CallWithArguments(lua_State* L, int first, Function&& function, std::index_sequence<I...>)
{
    if constexpr (std::is_void_v<R>)
    {
        function(Stack<Args>::Get(L, first + static_cast<int>(I))...);
        return 0;
    }
    else
    {
        Stack<R>::Push(L, function(Stack<Args>::Get(L, first + static_cast<int>(I))...));
        return 1;
    }
}
}

// Candidate of a member function of C called on the object at argument 1.
template <class R, class C, class... Args, class Function>
int CallMember(lua_State* L, Function function)
{
    using Indices = std::index_sequence_for<Args...>;
    if (!detail::ArgumentsFit<Args...>(L, 2, Indices()))
        return -1;
    auto* object = static_cast<C*>(detail::ObjectOf(L, 1, Meta::Get<std::remove_cv_t<C>>()));
    if (!object)
        return -1;
    return detail::CallWithArguments<R, Args...>(
        L, 2, [object, function](auto&&... arguments) -> R { return (object->*function)(std::forward<decltype(arguments)>(arguments)...); },
        Indices());
}

// Candidate of a function of the class, with its arguments from argument 1.
template <class R, class... Args>
int CallStatic(lua_State* L, R (*function)(Args...))
{
    using Indices = std::index_sequence_for<Args...>;
    if (!detail::ArgumentsFit<Args...>(L, 1, Indices()))
        return -1;
    return detail::CallWithArguments<R, Args...>(L, 1, function, Indices());
}

// Candidate of a member function that works the Lua stack itself.
template <class R, class C>
int CallCrosscall(lua_State* L, R (C::*function)(lua_State*))
{
    auto* object = static_cast<C*>(detail::ObjectOf(L, 1, Meta::Get<C>()));
    if (!object)
        return -1;
    if constexpr (std::is_integral_v<R>)
    {
        const int results = static_cast<int>((object->*function)(L));
        return results < 0 ? 0 : results;
    }
    else if constexpr (std::is_void_v<R>)
    {
        (object->*function)(L);
        return 0;
    }
    else
    {
        Stack<R>::Push(L, (object->*function)(L));
        return 1;
    }
}
}

namespace luabridge::detail
{
// Entry of a method with one form (upvalue 1: its Meta::Method); nothing when the arguments don't fit.
int CallMethod(lua_State* L);
// Entry of a method with several forms (upvalue 1: the vector of its Meta::Methods): the first form
// whose answer is not negative is final; nothing when every form refuses.
int CallOverloads(lua_State* L);
}
