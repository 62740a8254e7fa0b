// ClassScope: the tables of the class being bound, open on the Lua stack, and
// the operations through which members, properties and methods enter them.
// Each Add... takes the function on top of the stack and pops it.
#pragma once

#include <lua.hpp>

#include <string>

namespace Meta
{
class Data;
}

namespace luabridge
{
class ClassScope
{
public:
    // The scope of `data`'s tables at the given absolute stack indices.
    ClassScope(lua_State* state, Meta::Data& data, int classTable, int constTable, int staticTable);

    // Getter `name` of instances (the const table shares the getter table).
    void AddGetter(const std::string& name);
    // Setter `name` of instances.
    void AddSetter(const std::string& name);
    // A setter `name` that raises "'name' is read-only"; pushes and pops its own closure.
    void AddReadOnly(const std::string& name);
    // Method `name` (operators under their Lua names); a const method also goes into the const table.
    void AddMethod(const std::string& name, bool isConst);
    // Getter `name` of the class itself.
    void AddStaticGetter(const std::string& name);
    // Setter `name` of the class itself.
    void AddStaticSetter(const std::string& name);
    // A read-only setter `name` of the class itself.
    void AddStaticReadOnly(const std::string& name);
    // Function `name` of the class itself (also reachable from instances).
    void AddStaticFunction(const std::string& name);
    // The dynamic-property hooks: the getter hook below the setter hook on top; pops both.
    void SetDynamic();

    // The state.
    lua_State* const L;
    // The class being bound.
    Meta::Data& m_Data;
    // Absolute index of the class table.
    const int m_Class;
    // Absolute index of the const table.
    const int m_Const;
    // Absolute index of the static table's metatable.
    const int m_Static;
};
}
