// Registering a class with the type registry: one short function beside the
// class, run from a static initialiser, that states the facts in this order:
// name (given by the opening macro), script constructors, base, help text,
// the components it depends on, members, properties, methods.
//
//   META_REGISTER(Transform)
//   {
//       DERIVE(Component);
//       DESCRIPTION("Holds transformation data for the object.");
//       MEMBER(m_Position, "The position of the object in the world");
//       METHOD(GetParent);
//   }
//
// Inside the function, `Self` is the class and `type` its Meta::Data. Members
// and methods must be reachable from the registration (public). Help text given
// with HELP(...) goes to the next member, property or method registered.
//
// The registration also leaves the class for the Lua binding: a Class<Self>
// binder (a DerivedClass<Self, Base> after DERIVE), a constructor binder per
// CONSTRUCTOR, and at the end the class itself, under order 0 (or the order
// given to META_REGISTER_ORDER: a class of a higher order is bound after every
// class of a lower one).
#pragma once

#include "utilities/Meta/Any.h"
#include "utilities/Meta/ClassInfo.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/EnumMeta.h"
#include "utilities/Meta/Member.h"
#include "utilities/Meta/Method.h"
#include "utilities/Meta/Property.h"
#include "utilities/Serialization/TextValue.h"
#include "utilities/lua/luabridge/LuaBinding.h"

namespace Meta
{
// Fills a type's name, size and instance operations, the first step of a registration.
template <class T>
Data& Register(const char* name, const char* nameSpace)
{
    static ClassInfoFor<T> info;
    Data& data = *Get<T>();
    data.Set(name, sizeof(T), &info);
    data.m_Namespace = nameSpace;
    Util::SetTextForm<T>(data);
    return data;
}

// Registers an enumeration type by name with its values.
template <class E>
Data& RegisterEnum(const char* name, const char* nameSpace, std::vector<EnumMeta::Entry> values)
{
    static DerivedClassInfo<E> info;
    Data& data = *Get<E>();
    data.Set(name, sizeof(E), &info, false, true);
    data.m_Namespace = nameSpace;
    Util::SetTextForm<E>(data);
    EnumMeta::Register(name, std::move(values));
    luabridge::RegisterEnum(&data);
    return data;
}

// A script constructor of T from arguments of types Args.
template <class T, class... Args>
Constructor MakeConstructor()
{
    Constructor constructor;
    constructor.m_Arguments = {ValueTraits<Args>::Type()...};
    constructor.m_Make = [](std::vector<Any>& arguments) -> Any {
        if (!ArgumentsFit<Args...>(arguments, std::index_sequence_for<Args...>()))
            return Any();
        auto make = [](Args... values) { return T(values...); };
        return CallUnwrapped<T, Args...>(make, arguments, std::index_sequence_for<Args...>());
    };
    return constructor;
}

// Runs a registration function during static initialisation.
struct Registrar
{
    explicit Registrar(void (*registration)()) { registration(); }
};

// Runs the registration function `run` of T, between the start and the end of its binding record.
template <class T>
void RunRegistration(const char* name, const char* nameSpace, unsigned order, void (*run)(Data&))
{
    Data& data = Register<T>(name, nameSpace);
    luabridge::BeginClass<T>();
    run(data);
    luabridge::LuaBinding::Get().RegisterClass(&data, order);
}

// A member record with its flags. A saved member must be of a type with a text form.
template <bool Saved, class C, class M>
Member* MakeMember(const char* name, M C::*field, bool script)
{
    static_assert(!Saved || Util::kHasTextForm<M>,
                  "a saved member needs a type with a text form: register it with MEMBER_FLAGS(field, false, ...)");
    Member* member = new MemberD_class<C, M>(name, field);
    member->m_Serialize = Saved;
    member->m_Script = script;
    return member;
}

// A dynamic-property hook, which the script binding installs.
inline Property* ScriptHook(Property* hook)
{
    hook->m_Script = true;
    return hook;
}

// A method record visible to scripts.
inline Method* ScriptVisible(Method* method)
{
    method->m_Script = true;
    return method;
}
}

#define META_CONCAT_INNER(a, b) a##b
#define META_CONCAT(a, b) META_CONCAT_INNER(a, b)

// Opens the registration function of a type in the global namespace.
#define META_REGISTER(Type) META_REGISTER_NAMED(Type, #Type, "")
// Opens the registration function of a type inside a namespace.
#define META_REGISTER_NS(Namespace, Type) META_REGISTER_NAMED(Namespace::Type, #Type, #Namespace)
// Opens a registration function; inside it `Self` is the type and `type` its Meta::Data.
#define META_REGISTER_NAMED(Type, name, nameSpace) META_REGISTER_NAMED_ORDER(Type, name, nameSpace, 0)
// Opens the registration function of a type in the global namespace, bound to Lua in `order`.
#define META_REGISTER_ORDER(Type, order) META_REGISTER_NAMED_ORDER(Type, #Type, "", order)
// Opens a registration function whose class is bound to Lua in `order` (0 for nearly all).
#define META_REGISTER_NAMED_ORDER(Type, name, nameSpace, order)                                      \
    namespace                                                                                        \
    {                                                                                                \
    struct META_CONCAT(MetaRegistration_, __LINE__)                                                  \
    {                                                                                                \
        using Self = Type;                                                                           \
        static void Run(Meta::Data& type);                                                           \
        inline static const Meta::Registrar registrar{                                               \
            [] { Meta::RunRegistration<Type>(name, nameSpace, order, &Run); }};                      \
    };                                                                                               \
    }                                                                                                \
    void META_CONCAT(MetaRegistration_, __LINE__)::Run([[maybe_unused]] Meta::Data& type)

// Registers an enumeration: META_REGISTER_ENUM(ScreenMode, {{"Keep", 0}, {"Toggle", 3}});
#define META_REGISTER_ENUM(Type, ...)                                                                 \
    static const Meta::Registrar META_CONCAT(metaEnum_, __LINE__)(                                    \
        [] { Meta::RegisterEnum<Type>(#Type, "", std::vector<Meta::EnumMeta::Entry> __VA_ARGS__); })

// The registered type derives from Base.
#define DERIVE(Base) (type.AddParent(Meta::Get<Base>()), luabridge::Derive<Self, Base>())
// The help text of the registered type.
#define DESCRIPTION(text) type.m_Description = (text)
// Help text for the next member, property or method.
#define HELP(text) Meta::AddPendingDescription(text)
// The registered component needs a component of the named type on the same object: DEPENDENCY(Transform).
#define DEPENDENCY(Component) type.m_Dependencies.push_back(#Component)
// A script constructor taking the given argument types: CONSTRUCTOR(float, float, float).
#define CONSTRUCTOR(...)                                                      \
    (type.AddConstructor(Meta::MakeConstructor<Self __VA_OPT__(, ) __VA_ARGS__>()), \
     luabridge::AddConstructor<Self __VA_OPT__(, ) __VA_ARGS__>())

// A field, saved and visible to scripts, with its help text.
#define MEMBER(field, help) MEMBER_FLAGS(field, true, true, help)
// A field saved and visible to scripts under another name: MEMBER_AS(List, m_list, "...").
#define MEMBER_AS(name, field, help) \
    (HELP(help), type.AddMember(Meta::MakeMember<true>(#name, &Self::field, true)))
// A field with explicit save and script flags (both written as true or false).
#define MEMBER_FLAGS(field, serialize, script, help) \
    (HELP(help), type.AddMember(Meta::MakeMember<serialize>(#field, &Self::field, script)))

// A property read and written through member functions.
#define PROPERTY(name, getter, setter, help)                                                                        \
    (HELP(help), type.AddProperty(Meta::MakeProperty(#name, &type, &Self::getter, &Self::setter)))
// A read-only property read through a member function.
#define PROPERTY_GET(name, getter, help) (HELP(help), type.AddProperty(Meta::MakeProperty(#name, &type, &Self::getter)))
// A property read and written through free functions taking the object first.
#define PROPERTY_FUNC(name, getter, setter, help) \
    (HELP(help), type.AddProperty(Meta::MakeProperty(#name, &type, getter, setter)))
// A read-only property read through a free function taking the object.
#define PROPERTY_GET_FUNC(name, getter, help) (HELP(help), type.AddProperty(Meta::MakeProperty(#name, &type, getter)))
// A property of the class itself, through free getter and setter functions (setter may be null).
#define PROPERTY_STATIC(name, getter, setter, help) \
    (HELP(help), type.AddProperty(Meta::MakeStaticProperty(#name, &type, getter, setter)))
// The hook through which scripts add dynamic properties to the class.
#define PROPERTY_NEW() type.AddProperty(Meta::ScriptHook(new Meta::Property_class_new<Self>(&type)))
// The same hook for a class that runs a script of its own.
#define PROPERTY_NEWSCRIPT() type.AddProperty(Meta::ScriptHook(new Meta::Property_class_newscript<Self>(&type)))

// A method with one form, visible to scripts.
#define METHOD(name) type.AddMethod(Meta::ScriptVisible(Meta::MakeMethod(#name, &Self::name)))
// A method with one form under another script name.
#define METHOD_AS(scriptName, function) type.AddMethod(Meta::ScriptVisible(Meta::MakeMethod(scriptName, function)))
// One form of an overloaded method: OVERLOAD(RegisterEvent, 0, void (Self::*)(const std::string&)).
#define OVERLOAD(name, id, signature) \
    type.AddOverload(Meta::ScriptVisible(Meta::MakeOverload<id>(#name, static_cast<signature>(&Self::name))))
// One form of an overloaded method under another script name: OVERLOAD_AS("Send", 1, &Self::SendAll).
#define OVERLOAD_AS(scriptName, id, function) \
    type.AddOverload(Meta::ScriptVisible(Meta::MakeOverload<id>(scriptName, function)))

namespace Meta
{
// The property record that fits a member getter and setter.
template <class C, class G, class S>
Property* MakeProperty(const char* name, Data* owner, G (C::*getter)() const, void (C::*setter)(S))
{
    static_assert(Util::kHasTextForm<std::remove_cvref_t<G>> && Util::kHasTextForm<std::remove_cvref_t<S>>,
                  "a saved property needs a type with a text form");
    Property* property = new Property_class<C, G, S>(name, owner, getter, setter);
    property->m_Script = property->m_Serialize = true;
    return property;
}
// The property record that fits a member getter alone: read-only.
template <class C, class G>
Property* MakeProperty(const char* name, Data* owner, G (C::*getter)() const)
{
    Property* property = new Property_get_class<C, G>(name, owner, getter);
    property->m_Script = true;
    return property;
}
// The property record that fits free getter and setter functions.
template <class C, class G, class S>
Property* MakeProperty(const char* name, Data* owner, G (*getter)(C*), void (*setter)(C*, S))
{
    static_assert(Util::kHasTextForm<std::remove_cvref_t<G>> && Util::kHasTextForm<std::remove_cvref_t<S>>,
                  "a saved property needs a type with a text form");
    Property* property = new Property_class_func<C, G, S>(name, owner, getter, setter);
    property->m_Script = property->m_Serialize = true;
    return property;
}
// The property record that fits a free getter alone: read-only.
template <class C, class G>
Property* MakeProperty(const char* name, Data* owner, G (*getter)(C*))
{
    Property* property = new Property_get_class_func<C, G>(name, owner, getter);
    property->m_Script = true;
    return property;
}
// The property record of a class-wide value.
template <class G, class S>
Property* MakeStaticProperty(const char* name, Data* owner, G (*getter)(), void (*setter)(S))
{
    Property* property = new Property_static_class<G, S>(name, owner, getter, setter);
    property->m_Script = true;
    return property;
}
template <class G>
Property* MakeStaticProperty(const char* name, Data* owner, G (*getter)(), std::nullptr_t)
{
    return MakeStaticProperty<G, G>(name, owner, getter, static_cast<void (*)(G)>(nullptr));
}
}
