// Meta: the engine's run-time type registry.
//
// Every class that the engine makes by name, saves, shows in the editor or hands
// to scripts is described once, by a registration function beside it (see
// Registration.h). Its Meta::Data then knows the class's name, size, base,
// members, properties, methods and script constructors, and how to make, copy
// and delete instances. The text format, the script binding, the editor and the
// generated documentation are all walks over these records.
//
// Meta::Get<T>() gives a type's record (it exists before the registration has
// run, so a base can be named before it is filled); Meta::FindData(name) finds
// a registered type by name, "const X" finding X.
#pragma once

#include "utilities/Meta/NamedList.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Util
{
class Serializer;
}

namespace Meta
{
class Any;
class ClassInfo;
class Member;
class Method;
class Property;
class Data;

// One script constructor of a class: its argument types and how to make an instance from them.
struct Constructor
{
    // Types of the arguments, in order.
    std::vector<Data*> m_Arguments;
    // Makes an instance from fitting arguments (an empty Any when they don't fit).
    std::function<Any(std::vector<Any>& arguments)> m_Make;
};

// Writes a value of a type in the text format.
using ValueWriter = void (*)(Util::Serializer& serializer, const void* value);
// Reads a value of a type from the text format into place.
using ValueReader = void (*)(Util::Serializer& serializer, void* value);

class Data
{
public:
    // Names the type, gives it the next id and files it in the name table.
    void Set(const std::string& name, unsigned size, ClassInfo* info, bool isPrimitive = false, bool isEnum = false);
    // Sets the base type; a type that names itself is reported, and set all the same.
    void AddParent(Data* parent);
    // Adds a member; a name given twice keeps the first.
    void AddMember(Member* member);
    // Adds a property; a name given twice keeps the first.
    void AddProperty(Property* property);
    // Adds a method with one form; a name given twice keeps the first.
    void AddMethod(Method* method);
    // Adds one form of a method with several forms.
    void AddOverload(Method* method);
    // Adds a script constructor.
    void AddConstructor(Constructor constructor) { m_Constructors.push_back(std::move(constructor)); }

    // The member of this name, in this type or the nearest ancestor that has one; or null.
    Member* FindMember(std::string_view name) const;
    // The property of this name, in this type or the nearest ancestor; or null.
    Property* FindProperty(std::string_view name) const;
    // The single-form method of this name, in this type or the nearest ancestor; or null.
    Method* FindMethod(std::string_view name) const;
    // The forms of an overloaded method, in this type or the nearest ancestor; or null.
    const std::vector<std::shared_ptr<Method>>* FindOverloads(std::string_view name) const;

    // The type's name, without namespace.
    const std::string& GetName() const { return m_Name; }
    // The run-unique integer id of the type.
    unsigned GetId() const { return m_Id; }
    // True if `other` is a proper ancestor of this type.
    bool IsDerivedFrom(const Data* other) const;
    // A new default instance, or null when the type can't be made.
    void* New() const;
    // True once Set has run.
    bool IsRegistered() const { return m_Info != nullptr; }
    // Writes `value`, an instance of this type, in the text format; nothing where the type has no text form.
    void WriteValue(Util::Serializer& serializer, const void* value) const;
    // Reads an instance of this type into `value`; the value is skipped where the type has no text form.
    void ReadValue(Util::Serializer& serializer, void* value) const;

    // Members of this class only, by name, in registration order.
    NamedList<Member> m_Members;
    // Single-form methods of this class only.
    NamedList<Method> m_Methods;
    // Methods with several forms, of this class only.
    NamedList<std::vector<std::shared_ptr<Method>>> m_Overloads;
    // Properties of this class only, by name, in registration order.
    NamedList<Property> m_Properties;
    // Type name as files, the editor and scripts say it.
    std::string m_Name;
    // Size of an instance in bytes.
    unsigned m_Size = 0;
    // Operations on instances.
    ClassInfo* m_Info = nullptr;
    // The text writer of instances, or null.
    ValueWriter m_WriteValue = nullptr;
    // The text reader of instances, or null.
    ValueReader m_ReadValue = nullptr;
    // True for the built-in value types.
    bool m_IsPrimitive = false;
    // True for enumerations.
    bool m_IsEnum = false;
    // The base type, null at the root.
    Data* m_Parent = nullptr;
    // Run-unique id, never written to a file.
    unsigned m_Id = 0;
    // Namespace of the type, as "Math" or "Engine".
    std::string m_Namespace;
    // Help text of the type.
    std::string m_Description;
    // Script constructors.
    std::vector<Constructor> m_Constructors;
    // Names of the components an object must also have for a component of this type to work.
    std::vector<std::string> m_Dependencies;
};

// The record of type T (exists from the start; filled by T's registration).
template <class T>
Data* Get()
{
    static Data data;
    return &data;
}

// Takes the next type id from the counter that registered types draw from, for a type made at
// run time (a script component type).
unsigned TakeTypeId();
// The record registered under a name ("const X" finds X), or null.
Data* FindData(std::string_view name);
// Every registered type, in registration order.
const std::vector<Data*>& AllTypes();
}
