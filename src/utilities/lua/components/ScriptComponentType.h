// ScriptComponentType: what the engine knows of one script component type,
// read once from the comment block at the head of its script:
//
//   --[[!
//   Dependency Transform
//   float Speed 1.5
//   Vector3D Axis { 0 1 0 }
//   ]]
//
// Each typed line declares a variable: its type's LuaProperty, its index into
// the component's values (block order) and its default, which the type's
// prototype component holds. Variables are found by the FNV-1a hash of their
// name, the way scripts and files name them. Every instance of a type points at
// the one record of its type.
#pragma once

#include "utilities/Meta/Any.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class LuaProperty;

struct ScriptVariable
{
    // Index into the component's values.
    unsigned index = 0;
    // How values of the variable's type move; never null.
    const LuaProperty* property = nullptr;
};

struct ScriptComponentType
{
    // The variable of hash `hash`, or null.
    const ScriptVariable* Find(unsigned hash) const;
    // The variable named `name`, or null.
    const ScriptVariable* Find(std::string_view name) const;

    // Variables by the hash of their name.
    std::unordered_map<unsigned, ScriptVariable> variables;
    // Names of the variables by the same hash.
    std::unordered_map<unsigned, std::string> names;
    // Hashes in block order.
    std::vector<unsigned> order;
    // Component types the script says it needs.
    std::vector<std::string> dependencies;
    // Names of the functions the script defines, for completion lists and generated documentation.
    std::vector<std::string> functions;
};

// The record of every script type, by script name; made on first use.
ScriptComponentType& ScriptComponentTypeOf(const std::string& scriptName);
