// How a C++ value, reference or pointer of a registered type travels as a
// Meta::Any. Pointers and references are no types of their own in the
// registry: a T* or T& travels as a reference to a T, a T by value as an owned
// copy.
#pragma once

#include "utilities/Meta/Any.h"

#include <type_traits>

namespace Meta
{
// True if values of V can be compared with ==, looking into the elements of containers and
// the halves of pairs, whose own operator== exists whether or not their contents have one.
template <class V>
constexpr bool CanCompare()
{
    if constexpr (requires { typename V::first_type; typename V::second_type; })
        return CanCompare<std::remove_const_t<typename V::first_type>>() && CanCompare<typename V::second_type>();
    else if constexpr (requires { typename V::value_type; typename V::const_iterator; })
        return CanCompare<std::remove_const_t<typename V::value_type>>();
    else
        return requires(const V& a) { a == a; };
}

// Equality of two values of one type, false where the type has no operator==.
template <class V>
bool ValuesEqual(const V& a, const V& b)
{
    if constexpr (CanCompare<V>())
        return a == b;
    else
        return false;
}

template <class T>
struct ValueTraits
{
    using Bare = std::remove_cvref_t<T>;
    // True for pointers: the value is the object pointed to.
    static constexpr bool kIsPointer = std::is_pointer_v<Bare>;
    // True for references: the value is the object referred to.
    static constexpr bool kIsReference = std::is_reference_v<T>;
    // The registered type the value is of.
    using Value = std::remove_cv_t<std::remove_pointer_t<Bare>>;

    // The registry record of the value's type.
    static Data* Type() { return Meta::Get<Value>(); }

    // Wraps a result: pointers and references as references, values as owned copies.
    static Any Wrap(T&& result)
    {
        if constexpr (kIsPointer)
            return AnyRef(const_cast<Value*>(result), Type());
        else if constexpr (kIsReference)
            return AnyRef(const_cast<Value*>(&result), Type());
        else
            return Any::Own(new Value(std::move(result)));
    }

    // True if `value` can be passed as a T.
    static bool Accepts(const Any& value)
    {
        if constexpr (kIsPointer)
            return value.IsEmpty() || value.Holds(Type());
        else
            return value.Holds(Type());
    }

    // The argument of type T that `value` (pointing at a Value) stands for.
    static T Unwrap(const void* value)
    {
        if constexpr (kIsPointer)
            return static_cast<Value*>(const_cast<void*>(value));
        else
            return *static_cast<Value*>(const_cast<void*>(value));
    }
};
}
