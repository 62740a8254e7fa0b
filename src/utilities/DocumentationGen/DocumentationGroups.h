// The seven groups of the script reference, in the order the index lists them:
// "Components", "Events", "Space Systems", "Systems", "Math", "Enumerations",
// "Other". Each registered class goes into the group of the first test it
// passes:
//
//   derived from Component                        Components
//   derived from Event                            Events
//   name ending in "SpaceSystem", or filed as a   Space Systems
//     system of a space
//   derived from System                           Systems
//   in the namespace "Math"                       Math
//   an enumeration                                Enumerations
//   anything else                                 Other
//
// Left out of every group: LuaComponent (the carrier of script components, not
// a class scripts use), the built-in value types (int, string, ...) and any
// type whose name holds a blank ("const X").
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

namespace Meta
{
class Data;
}

namespace DocGen
{
// One group of the reference: its name and its classes, sorted by name.
struct DocumentationGroup
{
    // The group's name, also the name of its page.
    std::string m_Name;
    // The classes of the group, sorted by name.
    std::vector<const Meta::Data*> m_Classes;
};

// The types a space files as its systems.
using SpaceSystemTypes = std::unordered_set<const Meta::Data*>;

// The seven group names, in order.
const std::vector<std::string>& GroupNames();
// The index into GroupNames() of the group of `type`, or -1 when it is left out.
int GroupOf(const Meta::Data& type, const SpaceSystemTypes& spaceSystems);
// The seven groups filled from `types`, each sorted by name.
std::vector<DocumentationGroup> MakeGroups(const std::vector<Meta::Data*>& types, const SpaceSystemTypes& spaceSystems);
}
