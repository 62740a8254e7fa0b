// Object differences: what an object changed with respect to the archetype it
// was made from, component by component, and how to carry those changes over
// to another object made from the same archetype.
//
// Components are matched by type id (Component::GetType), never by their native
// class, since script components share one class but each script is a type of
// its own. A component only in the object is "added", one only in the archetype
// is "removed", and for one in both every saved member and property of the
// type's whole registered chain is compared; the ones that differ are listed.
// Values are reached only through Meta::Member and Meta::Property (Compare,
// SetFromOther), so script variables, which scripts expose as members, take
// part without any case of their own.
//
// Applying a list to a target object adds the added components it lacks and,
// for every listed value, takes the source's value where the target still has
// the archetype's: a value the target has set for itself stays.
#pragma once

#include <vector>

class GameObject;
namespace Meta
{
class Member;
class Property;
}

namespace Engine
{
// How one component of an object differs from the archetype's component of the same type.
struct ComponentDifference
{
    // Type id of the component.
    unsigned m_Type = 0;
    // The object has the component and the archetype doesn't.
    bool m_Added = false;
    // The archetype has the component and the object doesn't.
    bool m_Removed = false;
    // Saved members whose values differ, from the most derived type up the chain.
    std::vector<Meta::Member*> m_Members;
    // Saved properties whose values differ, from the most derived type up the chain.
    std::vector<Meta::Property*> m_Properties;
};

// Every component of `instance` that differs from `archetype`: the object's components in
// order (added or with changed values), then the archetype's components the object lacks.
// An object equal to its archetype gives an empty list. Only the first component of a type
// on either side takes part.
std::vector<ComponentDifference> CompareWithArchetype(const GameObject& instance, const GameObject& archetype);

// Carries `differences`, taken from `source` against `oldArchetype`, over to `target`, when
// `target` was made from the same archetype as `oldArchetype` (otherwise nothing happens).
// An added component the target lacks is cloned from the source and appended (initialized if
// the target's components run); each listed value the target still shares with the old
// archetype takes the source's value; removals change nothing.
void ApplyDifferences(const std::vector<ComponentDifference>& differences, const GameObject& source,
                      const GameObject& oldArchetype, GameObject& target);
}
