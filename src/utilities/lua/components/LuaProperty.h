// LuaProperty: how a script component keeps one variable of one type. Script
// variables are declared in a script's comment block by type name
// ("float Speed 1.5"); their values live in the component as Meta::Any, and a
// LuaProperty of the variable's type moves such a value between native code,
// Lua and the text format without the caller knowing the type.
//
// LuaPropertyD<T> is the one implementation. One is made for every basic type
// and for every registered class that can be made, copied and written as text,
// filed under the type's registry name:
//
//   const LuaProperty* property = LuaProperty::Find("float");
//   Meta::Any value;
//   property->MakeDefault(value);
//   property->Deserialize(reader, value);      // "1.5"
#pragma once

#include "utilities/Meta/Any.h"

#include <string>
#include <string_view>

struct lua_State;
namespace Util
{
class Serializer;
}

class LuaProperty
{
public:
    explicit LuaProperty(Meta::Data* type) : m_Type(type) {}
    virtual ~LuaProperty() = default;

    // Pushes on L a Lua value for `value`: a bound class by reference into the stored value (writes
    // through), other types by value; nil for an empty value.
    virtual void Push(lua_State* L, Meta::Any& value) const = 0;
    // Stores the Lua value at `index` of L into `value` (a copy); false, leaving it, when the Lua
    // value is not of this type.
    virtual bool Take(lua_State* L, int index, Meta::Any& value) const = 0;
    // Makes a registry reference in L to the value Push would push. The caller releases it.
    int ToLua(lua_State* L, Meta::Any& value) const;
    // Stores the Lua value of registry reference `ref` of L into `value`; false, leaving it, when the
    // Lua value is not of this type. Values are always copied in: a script can't keep a pointer into it.
    bool FromLua(lua_State* L, Meta::Any& value, int ref) const { return CopyFromLua(L, value, ref); }
    // Stores a detached copy of the Lua value of `ref`; false when it is not of this type.
    bool CopyFromLua(lua_State* L, Meta::Any& value, int ref) const;
    // Reads a value in the type's text form into `value`; a value that fails to read leaves the
    // reader failed.
    virtual void Deserialize(Util::Serializer& reader, Meta::Any& value) const = 0;
    // Writes the indent, `name`, a space and the value's text form, and a line end.
    virtual void Serialize(Util::Serializer& writer, const std::string& name, const Meta::Any& value) const = 0;
    // Puts a default-made value of the type into `value`.
    virtual void MakeDefault(Meta::Any& value) const = 0;
    // False for every property of a native type.
    virtual bool IsScriptType() const { return false; }

    // The property of the type named `typeName` in the registry; null when none was made.
    static const LuaProperty* Find(std::string_view typeName);
    // Files the property of T under T's registry name; a name keeps its first property.
    template <class T>
    static void Register();

    // The variable's type.
    Meta::Data* const m_Type;

private:
    // Files `property` under its type's name; deletes it when the name is taken.
    static void Add(LuaProperty* property);
};

#include "utilities/lua/components/LuaPropertyD.h"
