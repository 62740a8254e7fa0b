// Meta::Member: a field of a registered class, read and written in place
// through its pointer-to-member. Members are what the text format saves and the
// editor shows; comparison uses the field type's operator==.
//
// A member may carry a custom getter or setter; that is a retired design, and
// using one reports an error once per site and then goes through the accessor.
#pragma once

#include "utilities/Meta/Any.h"
#include "utilities/Meta/DataInfo.h"
#include "utilities/Meta/ValueTraits.h"
#include "utilities/Serialization/TextValue.h"
#include "utilities/lua/luabridge/MemberBinding.h"

#include <functional>

namespace Meta
{
class Member : public DataInfo
{
public:
    // A custom read of the field (retired): the address of the value to read.
    using Getter = std::function<void*(const void* object)>;
    // A custom write of the field (retired).
    using Setter = std::function<void(void* object, const void* value)>;

    using DataInfo::DataInfo;

    // The field's value, as a reference into the object.
    virtual AnyRef Get(const void* object) const = 0;
    // Copies `value` (of the member's type) into the field.
    virtual void Set(void* object, const void* value) const = 0;
    // Writes the member's line, name and value, if the member is saved.
    virtual void Serialize(const void* object, Util::Serializer& serializer) const = 0;
    // Reads the value and sets the field; a value that fails to read leaves the field as it was.
    // A member not marked to be saved is reported, and read all the same.
    virtual void Deserialize(void* object, Util::Serializer& serializer) const = 0;
    // Adds a getter and a setter of the field to the class being bound.
    virtual void RegisterLua(luabridge::ClassScope& scope) const = 0;
    // Draws the editor control; true if changed.
    virtual bool DrawEditor(void* object) const { return false; }
    // True if the field is equal in both objects.
    virtual bool Compare(const void* a, const void* b) const = 0;
    // Copies the field from one object to another.
    virtual void SetFromOther(void* to, const void* from) const = 0;
    // Installs a custom setter (retired).
    void SetSetter(Setter setter) { m_Setter = std::move(setter); }
    // Installs a custom getter (retired).
    void SetGetter(Getter getter) { m_Getter = std::move(getter); }

    // Reports the use of a custom accessor.
    static void ReportCustomAccessor();
    // Logs that a member not marked to be saved is being read.
    void ReportUnsavedRead() const;

protected:
    Getter m_Getter;
    Setter m_Setter;
};

// A member M of class C.
template <class C, class M>
class MemberD_class final : public Member
{
public:
    MemberD_class(const std::string& name, M C::*field) : Member(name, Meta::Get<M>()), m_Field(field) {}

    bool HasTextForm() const override { return Util::TextFormIsRegistered<M>(); }

    AnyRef Get(const void* object) const override
    {
        if (m_Getter)
        {
            ReportCustomAccessor();
            return AnyRef(m_Getter(object), m_Type);
        }
        return AnyRef(&Field(const_cast<void*>(object)), m_Type);
    }
    void Set(void* object, const void* value) const override
    {
        if (m_Setter)
        {
            ReportCustomAccessor();
            m_Setter(object, value);
            return;
        }
        Field(object) = *static_cast<const M*>(value);
    }
    void Serialize(const void* object, Util::Serializer& serializer) const override
    {
        if (!m_Serialize)
            return;
        serializer.WriteName(m_Name);
        if constexpr (Util::kHasTextForm<M>)
            Util::WriteValue(serializer, *static_cast<const M*>(Get(object).m_Value));
        serializer.m_Stream << '\n';
    }
    void Deserialize(void* object, Util::Serializer& serializer) const override
    {
        if (!m_Serialize)
            ReportUnsavedRead();
        if constexpr (Util::kHasTextForm<M> && std::is_copy_constructible_v<M>)
        {
            // Read into a copy, so that a value that fails to read leaves the field as it was.
            M value = *static_cast<const M*>(Get(object).m_Value);
            Util::ReadValue(serializer, value);
            if (!serializer.Failed())
                Set(object, &value);
        }
        else if constexpr (Util::kHasTextForm<M>)
            Util::ReadValue(serializer, Field(object));
        else
            serializer.SkipValue();
    }
    bool Compare(const void* a, const void* b) const override
    {
        return ValuesEqual(Field(const_cast<void*>(a)), Field(const_cast<void*>(b)));
    }
    void SetFromOther(void* to, const void* from) const override { Set(to, &Field(const_cast<void*>(from))); }
    void RegisterLua(luabridge::ClassScope& scope) const override { luabridge::BindMember<C, M>(scope, m_Name, m_Field); }

    // The field itself.
    M C::*m_Field;

private:
    M& Field(void* object) const { return static_cast<C*>(object)->*m_Field; }
};
}
