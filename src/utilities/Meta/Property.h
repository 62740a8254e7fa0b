// Meta::Property: a value of a registered class reached through accessor
// functions rather than a field, so that setters run their side effects (also
// while loading). The family:
//
//   Property_class<C, G, S>        member getter and setter
//   Property_class_func<C, G, S>   free getter and setter taking C* first
//   Property_get_class<C, G>       member getter only: read-only
//   Property_get_class_func<C, G>  free getter only: read-only
//   Property_static_class<G, S>    free getter and setter of the class, not of an instance
//   Property_class_new<T>          no value: the hook through which scripts add
//                                  dynamic properties to T ("Lua_NewProperty")
//   Property_class_newscript<T>    the same for classes that run a script of their own
//
// Setting a read-only property reports "This property is readonly!".
//
// For scripts, PushToLua pushes the value and RegisterLua adds a getter (and a
// setter, or for read-only properties one that raises "'name' is read-only") to
// the class being bound; static properties go to the class's own table.
#pragma once

#include "engine/Log.h"
#include "utilities/Meta/DataInfo.h"
#include "utilities/Meta/ValueTraits.h"
#include "utilities/Serialization/TextValue.h"
#include "utilities/lua/luabridge/DynamicProperties.h"

struct lua_State;

namespace luabridge
{
class ClassScope;
}

namespace Meta
{
class Property : public DataInfo
{
public:
    Property(const std::string& name, Data* type, Data* owner) : DataInfo(name, type), m_Class(owner) {}

    // The value, read through the getter.
    virtual Any Get(const void* object) const = 0;
    // Hands `value` (of the property's type) to the setter.
    virtual void Set(void* object, const void* value) const = 0;
    // True if the property can be written.
    virtual bool CanSet() const = 0;
    // Draws the editor control; true if changed.
    virtual bool DrawEditor(void* object) const { return false; }
    // True if both objects give equal values; always false for read-only properties.
    virtual bool Compare(const void* a, const void* b) const = 0;
    // Copies the value from one object to another; nothing for read-only properties.
    virtual void SetFromOther(void* to, const void* from) const = 0;
    // Writes the property's line, name and value; nothing for read-only properties.
    virtual void Serialize(const void* object, Util::Serializer& serializer) const = 0;
    // Reads a value and hands it to the setter, unless it failed to read; nothing for read-only properties.
    virtual void Deserialize(void* object, Util::Serializer& serializer) const = 0;
    // Pushes the value read from `object` onto the Lua stack (nil when it can't be read).
    virtual void PushToLua(lua_State* L, const void* object) const;
    // Sets the value at `index` of the Lua stack on `object`; false when it is of the wrong type.
    virtual bool SetFromLua(lua_State* L, void* object, int index) const { return false; }
    // Adds the getter and the setter (or the read-only one) to the class being bound.
    virtual void RegisterLua(luabridge::ClassScope& scope) const;

    // The class the property belongs to.
    Data* m_Class = nullptr;

protected:
    // The report of a write to a property that can't be written.
    std::string ReadonlyMessage() const;
};

// The parts shared by the writable properties: comparison, copying and the text
// form, through Get and Set. V is the type the getter gives, In the type the setter takes.
template <class V, class In>
class WritableProperty : public Property
{
public:
    using Property::Property;
    bool CanSet() const override { return true; }
    bool HasTextForm() const override
    {
        return Util::TextFormIsRegistered<V>() && Util::TextFormIsRegistered<std::remove_cvref_t<In>>();
    }
    bool Compare(const void* a, const void* b) const override
    {
        const Any first = Get(a);
        const Any second = Get(b);
        if (first.IsEmpty() || second.IsEmpty())
            return first.IsEmpty() && second.IsEmpty();
        return ValuesEqual(*static_cast<const V*>(first.m_Value), *static_cast<const V*>(second.m_Value));
    }
    void SetFromOther(void* to, const void* from) const override
    {
        const Any value = Get(from);
        Set(to, value.m_Value);
    }
    void Serialize(const void* object, Util::Serializer& serializer) const override
    {
        if (!m_Serialize)
            return;
        const Any value = Get(object);
        serializer.WriteName(m_Name);
        if constexpr (Util::kHasTextForm<V>)
            if (!value.IsEmpty())
                Util::WriteValue(serializer, *static_cast<const V*>(value.m_Value));
        serializer.m_Stream << '\n';
    }
    void Deserialize(void* object, Util::Serializer& serializer) const override
    {
        if constexpr (Util::kHasTextForm<In>)
        {
            In value{};
            Util::ReadValue(serializer, value);
            if (!serializer.Failed())
                Set(object, &value);
        }
        else
            serializer.SkipValue();
    }
};

// The writable-property base that fits getter result G and setter argument S.
template <class G, class S>
using WritablePropertyOf = WritableProperty<typename ValueTraits<G>::Value, typename ValueTraits<S>::Value>;

// The parts shared by the read-only properties.
class ReadOnlyProperty : public Property
{
public:
    using Property::Property;
    bool CanSet() const override { return false; }
    bool Compare(const void*, const void*) const override { return false; }
    void SetFromOther(void*, const void*) const override {}
    void Serialize(const void*, Util::Serializer&) const override {}
    void Deserialize(void*, Util::Serializer&) const override {}
};

template <class C, class G, class S>
class Property_class final : public WritablePropertyOf<G, S>
{
public:
    using Getter = G (C::*)() const;
    using Setter = void (C::*)(S);
    Property_class(const std::string& name, Data* owner, Getter getter, Setter setter)
        : WritablePropertyOf<G, S>(name, ValueTraits<G>::Type(), owner), m_Getter(getter),
          m_Setter(setter)
    {
    }
    Any Get(const void* object) const override
    {
        return ValueTraits<G>::Wrap((static_cast<const C*>(object)->*m_Getter)());
    }
    void Set(void* object, const void* value) const override
    {
        (static_cast<C*>(object)->*m_Setter)(ValueTraits<S>::Unwrap(value));
    }
    void PushToLua(lua_State* L, const void* object) const override
    {
        luabridge::Stack<G>::Push(L, (static_cast<const C*>(object)->*m_Getter)());
    }
    bool SetFromLua(lua_State* L, void* object, int index) const override
    {
        if (!luabridge::Stack<S>::Is(L, index))
            return false;
        (static_cast<C*>(object)->*m_Setter)(luabridge::Stack<S>::Get(L, index));
        return true;
    }

private:
    Getter m_Getter;
    Setter m_Setter;
};

template <class C, class G, class S>
class Property_class_func final : public WritablePropertyOf<G, S>
{
public:
    using Getter = G (*)(C*);
    using Setter = void (*)(C*, S);
    Property_class_func(const std::string& name, Data* owner, Getter getter, Setter setter)
        : WritablePropertyOf<G, S>(name, ValueTraits<G>::Type(), owner), m_Getter(getter),
          m_Setter(setter)
    {
    }
    Any Get(const void* object) const override
    {
        return ValueTraits<G>::Wrap(m_Getter(static_cast<C*>(const_cast<void*>(object))));
    }
    void Set(void* object, const void* value) const override
    {
        m_Setter(static_cast<C*>(object), ValueTraits<S>::Unwrap(value));
    }
    void PushToLua(lua_State* L, const void* object) const override
    {
        luabridge::Stack<G>::Push(L, m_Getter(static_cast<C*>(const_cast<void*>(object))));
    }
    bool SetFromLua(lua_State* L, void* object, int index) const override
    {
        if (!luabridge::Stack<S>::Is(L, index))
            return false;
        m_Setter(static_cast<C*>(object), luabridge::Stack<S>::Get(L, index));
        return true;
    }

private:
    Getter m_Getter;
    Setter m_Setter;
};

template <class C, class G>
class Property_get_class final : public ReadOnlyProperty
{
public:
    using Getter = G (C::*)() const;
    Property_get_class(const std::string& name, Data* owner, Getter getter)
        : ReadOnlyProperty(name, ValueTraits<G>::Type(), owner), m_Getter(getter)
    {
    }
    Any Get(const void* object) const override
    {
        return ValueTraits<G>::Wrap((static_cast<const C*>(object)->*m_Getter)());
    }
    void Set(void*, const void*) const override { FATAL_ERROR(ReadonlyMessage()); }
    void PushToLua(lua_State* L, const void* object) const override
    {
        luabridge::Stack<G>::Push(L, (static_cast<const C*>(object)->*m_Getter)());
    }

private:
    Getter m_Getter;
};

template <class C, class G>
class Property_get_class_func final : public ReadOnlyProperty
{
public:
    using Getter = G (*)(C*);
    Property_get_class_func(const std::string& name, Data* owner, Getter getter)
        : ReadOnlyProperty(name, ValueTraits<G>::Type(), owner), m_Getter(getter)
    {
    }
    Any Get(const void* object) const override
    {
        return ValueTraits<G>::Wrap(m_Getter(static_cast<C*>(const_cast<void*>(object))));
    }
    void Set(void*, const void*) const override { FATAL_ERROR(ReadonlyMessage()); }
    void PushToLua(lua_State* L, const void* object) const override
    {
        luabridge::Stack<G>::Push(L, m_Getter(static_cast<C*>(const_cast<void*>(object))));
    }

private:
    Getter m_Getter;
};

// Adds a property of the class itself (not of instances) to the class being bound.
void RegisterStaticLua(const Property& property, luabridge::ClassScope& scope);

template <class G, class S>
class Property_static_class final : public WritablePropertyOf<G, S>
{
public:
    using Getter = G (*)();
    using Setter = void (*)(S);
    Property_static_class(const std::string& name, Data* owner, Getter getter, Setter setter)
        : WritablePropertyOf<G, S>(name, ValueTraits<G>::Type(), owner), m_Getter(getter),
          m_Setter(setter)
    {
    }
    Any Get(const void*) const override { return ValueTraits<G>::Wrap(m_Getter()); }
    void Set(void*, const void* value) const override
    {
        if (m_Setter)
            m_Setter(ValueTraits<S>::Unwrap(value));
        else
            FATAL_ERROR(this->ReadonlyMessage());
    }
    bool CanSet() const override { return m_Setter != nullptr; }
    void PushToLua(lua_State* L, const void*) const override { luabridge::Stack<G>::Push(L, m_Getter()); }
    bool SetFromLua(lua_State* L, void*, int index) const override
    {
        if (!m_Setter || !luabridge::Stack<S>::Is(L, index))
            return false;
        m_Setter(luabridge::Stack<S>::Get(L, index));
        return true;
    }
    void RegisterLua(luabridge::ClassScope& scope) const override { RegisterStaticLua(*this, scope); }

private:
    Getter m_Getter;
    Setter m_Setter;
};

// The name under which the dynamic-property hook of a class is registered.
inline constexpr const char* kNewPropertyName = "Lua_NewProperty";

// The dynamic-property hook of T: holds no value; scripts reach T's extra properties through it.
template <class T>
class Property_class_new : public ReadOnlyProperty
{
public:
    explicit Property_class_new(Data* owner) : ReadOnlyProperty(kNewPropertyName, owner, owner) {}
    Any Get(const void*) const override { return Any(); }
    void Set(void*, const void*) const override {}
    void PushToLua(lua_State* L, const void*) const override { lua_pushnil(L); }
    // Installs T's dynamic-property hooks (T::GetProperty(L, name) and T::SetProperty(L, name), when T has them).
    void RegisterLua(luabridge::ClassScope& scope) const override
    {
        if constexpr (luabridge::HasDynamicProperties<T>)
            luabridge::BindDynamicProperties<T>(scope);
    }
};

// The dynamic-property hook of a class that runs a script of its own.
template <class T>
class Property_class_newscript final : public Property_class_new<T>
{
public:
    using Property_class_new<T>::Property_class_new;
};
}
