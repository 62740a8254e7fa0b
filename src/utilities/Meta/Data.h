// Meta: the engine's run-time type registry.
//
// Every class that the engine makes by name, saves, shows in the editor or hands
// to scripts is described once by a registration function beside it:
//
//   META_REGISTER(Transform)
//   {
//       DERIVE(Component);
//       DESCRIPTION("Holds transformation data for the object.");
//   }
//
// The registry then knows the class's name, size, base and how to make and
// delete instances. Meta::Get<T>() gives a type's record, Meta::FindData(name)
// finds one by name.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Meta
{
// The operations on instances of one type.
class ClassInfo
{
public:
    virtual ~ClassInfo() = default;
    // A new default instance, or null when the type can't be made.
    virtual void* New() const = 0;
    // Deletes an instance made by New (null is ignored).
    virtual void Delete(void* object) const = 0;
};

// ClassInfo of a type with a default constructor.
template <class T>
class DerivedClassInfo final : public ClassInfo
{
public:
    void* New() const override { return new T(); }
    void Delete(void* object) const override { delete static_cast<T*>(object); }
};

// ClassInfo of a type that can't be made by the registry (abstract, or no default constructor).
template <class T>
class DerivedClassInfoNoConstructors final : public ClassInfo
{
public:
    void* New() const override { return nullptr; }
    void Delete(void* object) const override { delete static_cast<T*>(object); }
};

// The record of one registered type.
class Data
{
public:
    // Names the type, gives it the next id and files it in the name table.
    void Set(const std::string& name, unsigned size, ClassInfo* info, bool isPrimitive = false, bool isEnum = false);
    // Sets the base type; a type that names itself is reported.
    void AddParent(Data* parent);

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

    // Type name as files, the editor and scripts say it.
    std::string m_Name;
    // Size of an instance in bytes.
    unsigned m_Size = 0;
    // Operations on instances.
    ClassInfo* m_Info = nullptr;
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
};

// The record of type T (exists from the start; filled by T's registration).
template <class T>
Data* Get()
{
    static Data data;
    return &data;
}

// The record registered under a name ("const X" finds X), or null.
Data* FindData(std::string_view name);
// Every registered type, in registration order.
const std::vector<Data*>& AllTypes();

// Fills a type's name, size and instance operations, the first step of a registration.
template <class T>
Data& Register(const char* name, const char* nameSpace)
{
    using Info = std::conditional_t<std::is_abstract_v<T> || !std::is_default_constructible_v<T>,
                                    DerivedClassInfoNoConstructors<T>, DerivedClassInfo<T>>;
    static Info info;
    Data& data = *Get<T>();
    data.Set(name, sizeof(T), &info);
    data.m_Namespace = nameSpace;
    return data;
}

// Runs a registration function during static initialisation.
struct Registrar
{
    explicit Registrar(void (*registration)()) { registration(); }
};
}

#define META_CONCAT_INNER(a, b) a##b
#define META_CONCAT(a, b) META_CONCAT_INNER(a, b)

// Opens the registration function of a type in the global namespace.
#define META_REGISTER(Type) META_REGISTER_NAMED(Type, #Type, "")
// Opens the registration function of a type inside a namespace.
#define META_REGISTER_NS(Namespace, Type) META_REGISTER_NAMED(Namespace::Type, #Type, #Namespace)
// Opens a registration function; inside it `type` is the type's Meta::Data.
#define META_REGISTER_NAMED(Type, name, nameSpace)                                               \
    static void META_CONCAT(MetaRegistration_, __LINE__)(Meta::Data & type);                      \
    static const Meta::Registrar META_CONCAT(metaRegistrar_, __LINE__)(                           \
        [] { META_CONCAT(MetaRegistration_, __LINE__)(Meta::Register<Type>(name, nameSpace)); }); \
    static void META_CONCAT(MetaRegistration_, __LINE__)([[maybe_unused]] Meta::Data & type)

// Inside a registration: the registered type derives from Base.
#define DERIVE(Base) type.AddParent(Meta::Get<Base>())
// Inside a registration: the help text of the type.
#define DESCRIPTION(text) type.m_Description = (text)
