// The text form of every value type: Util::WriteValue prints a value as the
// data format has it, Util::ReadValue reads it back.
//
//   int, unsigned, short, u_short   decimal                     Count 3
//   float, double                   six significant digits      Radius 2.5
//   bool                            true or false               Visible true
//   char, u_char                    the raw character           Key w
//   string                          quoted, no escaping         Texture "brick.dds"
//   enum                            the value's name            Mode Additive
//   vectors, points, quaternion     { x y z }                   Position { 1 2.5 -3 }
//   colour                          { r g b a } times 255       Tint { 255 0 0 255 }
//   pair                            { first second }            PairTest { 5 "five" }
//   vector, list, deque, sets       a braced list, one element a line, comma-separated
//   maps                            the same, each element a pair
//   any other registered class      a block of all its members and properties
//
// The registry keeps a type-erased writer and reader per registered type
// (Meta::Data::WriteValue / ReadValue), given by SetTextForm<T>.
#pragma once

#include "utilities/Meta/Data.h"
#include "utilities/Meta/EnumMeta.h"
#include "utilities/Serialization/Serializer.h"

#include <string>
#include <type_traits>
#include <utility>

namespace Math
{
class Vector2D;
class Vector3D;
class Vector4D;
class Point2D;
class Point3D;
class Point4D;
class Quaternion;
class Color;
}

namespace Util
{
void WriteValue(Serializer& serializer, int value);
void WriteValue(Serializer& serializer, unsigned value);
void WriteValue(Serializer& serializer, short value);
void WriteValue(Serializer& serializer, unsigned short value);
void WriteValue(Serializer& serializer, float value);
void WriteValue(Serializer& serializer, double value);
void WriteValue(Serializer& serializer, bool value);
void WriteValue(Serializer& serializer, char value);
void WriteValue(Serializer& serializer, unsigned char value);
void WriteValue(Serializer& serializer, const std::string& value);
void WriteValue(Serializer& serializer, const Math::Vector2D& value);
void WriteValue(Serializer& serializer, const Math::Vector3D& value);
void WriteValue(Serializer& serializer, const Math::Vector4D& value);
void WriteValue(Serializer& serializer, const Math::Point2D& value);
void WriteValue(Serializer& serializer, const Math::Point3D& value);
void WriteValue(Serializer& serializer, const Math::Point4D& value);
void WriteValue(Serializer& serializer, const Math::Quaternion& value);
void WriteValue(Serializer& serializer, const Math::Color& value);

void ReadValue(Serializer& serializer, int& value);
void ReadValue(Serializer& serializer, unsigned& value);
void ReadValue(Serializer& serializer, short& value);
void ReadValue(Serializer& serializer, unsigned short& value);
void ReadValue(Serializer& serializer, float& value);
void ReadValue(Serializer& serializer, double& value);
void ReadValue(Serializer& serializer, bool& value);
void ReadValue(Serializer& serializer, char& value);
void ReadValue(Serializer& serializer, unsigned char& value);
void ReadValue(Serializer& serializer, std::string& value);
void ReadValue(Serializer& serializer, Math::Vector2D& value);
void ReadValue(Serializer& serializer, Math::Vector3D& value);
void ReadValue(Serializer& serializer, Math::Vector4D& value);
void ReadValue(Serializer& serializer, Math::Point2D& value);
void ReadValue(Serializer& serializer, Math::Point3D& value);
void ReadValue(Serializer& serializer, Math::Point4D& value);
void ReadValue(Serializer& serializer, Math::Quaternion& value);
void ReadValue(Serializer& serializer, Math::Color& value);

// Writes an enumeration value of the named type by its name.
void WriteEnum(Serializer& serializer, const std::string& typeName, int value);
// Reads an enumeration value's name (a trailing comma is left on the stream) and gives its value.
int ReadEnum(Serializer& serializer, const std::string& typeName);

// The kinds of container, told apart by what they offer.
template <class T>
concept SequenceContainer = requires(T& container, typename T::value_type element) {
    container.push_back(element);
    container.begin();
} && !std::is_same_v<T, std::string>;
template <class T>
concept MapContainer = requires { typename T::key_type; typename T::mapped_type; };
template <class T>
concept SetContainer = requires(T& container, typename T::value_type element) {
    typename T::key_type;
    container.insert(element);
} && !MapContainer<T>;
template <class T>
inline constexpr bool kIsPair = false;
template <class A, class B>
inline constexpr bool kIsPair<std::pair<A, B>> = true;

// Container reading, step by step (what the two helpers below share):
// Finds the container's "{"; false if the input ends first or the container is empty.
bool BeginContainer(Serializer& serializer);
// Which reader a separator belongs to: each reports a missing one from a site of its own,
// so that Ignore on one leaves the other's report standing.
enum class ContainerKind
{
    List,
    Tree,
};
// Reads past a separator: true if another element follows, false at "}" or the end.
// Anything but a separator or blank is reported as the reader of `kind` reports it.
bool NextElement(Serializer& serializer, ContainerKind kind);

template <class T>
void WriteValue(Serializer& serializer, const T& value);
template <class T>
void ReadValue(Serializer& serializer, T& value);

// Writes a braced list with one element a line, comma-separated.
template <class C>
void WriteContainer(Serializer& serializer, const C& container)
{
    std::iostream& out = serializer.m_Stream;
    out << '\n';
    serializer.WriteIndent();
    out << "{\n";
    ++serializer.m_Depth;
    std::size_t left = container.size();
    for (const auto& element : container)
    {
        serializer.WriteIndent();
        WriteValue(serializer, static_cast<const typename C::value_type&>(element));
        out << (--left > 0 ? ",\n" : "\n");
    }
    --serializer.m_Depth;
    serializer.WriteIndent();
    out << '}';
}

// Reads a braced list into a vector, list or deque, appending to what it holds.
template <class C>
void ReadStreamContainerHelper(Serializer& serializer, C& container)
{
    if (!BeginContainer(serializer))
        return;
    do
    {
        typename C::value_type element{};
        ReadValue(serializer, element);
        if (serializer.Failed())
            return;
        container.push_back(std::move(element));
    } while (NextElement(serializer, ContainerKind::List));
}

// Reads a braced list into a set or map, inserting into what it holds.
template <class C>
void ReadTreeHelper(Serializer& serializer, C& container)
{
    if (!BeginContainer(serializer))
        return;
    do
    {
        if constexpr (MapContainer<C>)
        {
            typename C::key_type key{};
            typename C::mapped_type mapped{};
            serializer.ReadUntil('{');
            ReadValue(serializer, key);
            ReadValue(serializer, mapped);
            serializer.ReadUntil('}');
            if (serializer.Failed())
                return;
            container.insert({std::move(key), std::move(mapped)});
        }
        else
        {
            typename C::value_type element{};
            ReadValue(serializer, element);
            if (serializer.Failed())
                return;
            container.insert(std::move(element));
        }
    } while (NextElement(serializer, ContainerKind::Tree));
}

// Writes enumerations, pairs, containers and registered classes.
template <class T>
void WriteValue(Serializer& serializer, const T& value)
{
    if constexpr (std::is_enum_v<T>)
        WriteEnum(serializer, Meta::Get<T>()->GetName(), static_cast<int>(value));
    else if constexpr (kIsPair<T>)
    {
        serializer.m_Stream << "{ ";
        WriteValue(serializer, value.first);
        serializer.m_Stream << ' ';
        WriteValue(serializer, value.second);
        serializer.m_Stream << " }";
    }
    else if constexpr (SequenceContainer<T> || SetContainer<T> || MapContainer<T>)
        WriteContainer(serializer, value);
    else
    {
        static_assert(std::is_class_v<T>, "this type has no text form");
        serializer.WriteObjectBlock(Meta::Get<T>(), &value);
    }
}

// Reads enumerations, pairs, containers and registered classes.
template <class T>
void ReadValue(Serializer& serializer, T& value)
{
    if constexpr (std::is_enum_v<T>)
        value = static_cast<T>(ReadEnum(serializer, Meta::Get<T>()->GetName()));
    else if constexpr (kIsPair<T>)
    {
        serializer.ReadUntil('{');
        ReadValue(serializer, value.first);
        ReadValue(serializer, value.second);
        serializer.ReadUntil('}');
    }
    else if constexpr (SequenceContainer<T>)
        ReadStreamContainerHelper(serializer, value);
    else if constexpr (SetContainer<T> || MapContainer<T>)
        ReadTreeHelper(serializer, value);
    else
    {
        static_assert(std::is_class_v<T>, "this type has no text form");
        serializer.ReadObject(Meta::Get<T>(), &value);
    }
}

// True for the built-in scalars that have a text form.
template <class T>
inline constexpr bool kIsTextScalar =
    std::is_same_v<T, int> || std::is_same_v<T, unsigned> || std::is_same_v<T, short> ||
    std::is_same_v<T, unsigned short> || std::is_same_v<T, float> || std::is_same_v<T, double> ||
    std::is_same_v<T, bool> || std::is_same_v<T, char> || std::is_same_v<T, unsigned char>;

// True for the types that can have a text form, as far as the compiler can tell: the scalars
// above, enumerations, classes, and pairs and containers of such types. Pointers, other
// integer widths and arrays have none.
template <class T>
constexpr bool HasTextForm()
{
    if constexpr (kIsPair<T>)
        return HasTextForm<std::remove_const_t<typename T::first_type>>() && HasTextForm<typename T::second_type>();
    else if constexpr (MapContainer<T>)
        return HasTextForm<typename T::key_type>() && HasTextForm<typename T::mapped_type>();
    else if constexpr (SequenceContainer<T> || SetContainer<T>)
        return HasTextForm<typename T::value_type>();
    else
        return kIsTextScalar<T> || std::is_enum_v<T> || std::is_class_v<T>;
}
template <class T>
inline constexpr bool kHasTextForm = HasTextForm<T>();

// True if T's text form can be written now: every class and enumeration it is made of
// (itself, a container's elements, a pair's halves) is registered. Classes that nobody
// registered have no members to write, and an unregistered enumeration has no names.
template <class T>
bool TextFormIsRegistered()
{
    if constexpr (!kHasTextForm<T>)
        return false;
    else if constexpr (kIsPair<T>)
        return TextFormIsRegistered<std::remove_const_t<typename T::first_type>>() &&
               TextFormIsRegistered<typename T::second_type>();
    else if constexpr (MapContainer<T>)
        return TextFormIsRegistered<typename T::key_type>() && TextFormIsRegistered<typename T::mapped_type>();
    else if constexpr (SequenceContainer<T> || SetContainer<T>)
        return TextFormIsRegistered<typename T::value_type>();
    else if constexpr (std::is_enum_v<T> || std::is_class_v<T>)
        return Meta::Get<T>()->IsRegistered();
    else
        return true;
}

// Gives a type's registry record the writer and reader of T's text form (none where T has none).
template <class T>
void SetTextForm(Meta::Data& data)
{
    if constexpr (kHasTextForm<T>)
    {
        data.m_WriteValue = [](Serializer& serializer, const void* value) {
            WriteValue(serializer, *static_cast<const T*>(value));
        };
        data.m_ReadValue = [](Serializer& serializer, void* value) { ReadValue(serializer, *static_cast<T*>(value)); };
    }
}
}
