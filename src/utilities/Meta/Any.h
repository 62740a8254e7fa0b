// Meta::Any: one value of any registered type, owned. Meta::AnyRef: the same
// without ownership, a view of a value that lives elsewhere. Values travel
// through method calls and property reads as Anys.
//
//   Meta::Any three = Meta::Any::Make(3);           // owns an int
//   int* inside = three.Get<int>();                  // null if it holds no int
//   Meta::AnyRef view = Meta::AnyRef::To(position); // refers to position
//
// Copying an owning Any clones its value, so the copy holds a value of its own;
// copying a reference copies the reference. A reference never deletes what it
// refers to, even when it was passed around as a plain Any. An owning Any keeps
// the operations of the type it was made with, so a value of a type that was
// never registered is still deleted; and an AnyRef that is given an owned value
// (assigned through an Any&) owns and deletes it.
#pragma once

#include "utilities/Meta/ClassInfo.h"
#include "utilities/Meta/Data.h"

#include <type_traits>
#include <utility>

namespace Meta
{
class Any
{
public:
    Any() = default;
    // Takes ownership of `value`, of registered type `type`.
    Any(void* value, Data* type) : m_Value(value), m_Type(type), m_Ops(type ? type->m_Info : nullptr) {}
    Any(const Any& other);
    Any(Any&& other) noexcept;
    Any& operator=(Any other) noexcept;
    ~Any();

    // An Any owning a copy of `value`.
    template <class T>
    static Any Make(T value)
    {
        return Own(new T(std::move(value)));
    }
    // An Any owning `value`, made with new; deleted as a T whether or not T is registered.
    template <class T>
    static Any Own(T* value)
    {
        Any any(value, Meta::Get<T>());
        any.m_Ops = &InstanceOperations<T>();
        return any;
    }

    // The value as a T, or null if it holds no T (nor a type derived from T).
    template <class T>
    T* Get() const
    {
        return Holds(Meta::Get<T>()) ? static_cast<T*>(m_Value) : nullptr;
    }
    // True if it holds a value of `type` or of a type derived from it.
    bool Holds(const Data* type) const;
    // True if it holds nothing.
    bool IsEmpty() const { return m_Value == nullptr; }
    // True if it owns its value.
    bool Owns() const { return m_Owned; }

    // The value.
    void* m_Value = nullptr;
    // The value's type; null when empty.
    Data* m_Type = nullptr;

protected:
    bool m_Owned = true;
    // How to copy and delete the value: the type's, or those of the type it was made with.
    const ClassInfo* m_Ops = nullptr;
};

class AnyRef : public Any
{
public:
    AnyRef() { m_Owned = false; }
    // Refers to `value` of type `type` without owning it.
    AnyRef(void* value, Data* type) : Any(value, type) { m_Owned = false; }

    // An AnyRef to `value`.
    template <class T>
    static AnyRef To(T& value)
    {
        return AnyRef(const_cast<std::remove_const_t<T>*>(&value), Meta::Get<std::remove_const_t<T>>());
    }
};
}
