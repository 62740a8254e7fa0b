#include "engine/ObjectDifference.h"

#include "engine/Component.h"
#include "engine/GameObject.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/Member.h"
#include "utilities/Meta/Property.h"

namespace Engine
{
namespace
{
// The object's first component with this type id, or null.
Component* FirstOfType(const GameObject& object, unsigned type)
{
    for (Component* component : object.m_Components)
        if (component->GetType() == type)
            return component;
    return nullptr;
}

// True if `component` is the first of its type id in `object`: later ones of the same type take no part.
bool IsFirstOfType(const GameObject& object, const Component* component)
{
    return FirstOfType(object, component->GetType()) == component;
}

// Calls `visit(type)` for the component's type and each registered parent below Component.
template <class Visit>
void ForEachTypeInChain(const Component& component, Visit visit)
{
    const Meta::Data* root = Meta::Get<Component>();
    for (const Meta::Data* type = component.GetMeta(); type && type != root; type = type->m_Parent)
        visit(*type);
}

// The saved members and properties whose values differ between two components of one type.
ComponentDifference CompareComponents(const Component& instance, const Component& archetype)
{
    ComponentDifference difference;
    difference.m_Type = instance.GetType();
    ForEachTypeInChain(instance, [&](const Meta::Data& type) {
        for (const auto& [name, member] : type.m_Members.Items())
            if (member->m_Serialize && !member->Compare(&instance, &archetype))
                difference.m_Members.push_back(member.get());
        for (const auto& [name, property] : type.m_Properties.Items())
            if (property->m_Serialize && !property->Compare(&instance, &archetype))
                difference.m_Properties.push_back(property.get());
    });
    return difference;
}

// True if `record` is one of the members (or properties) registered along the component's chain,
// so that it may be used on the component's address.
bool InChain(const Component& component, const Meta::Member* record)
{
    bool found = false;
    ForEachTypeInChain(component, [&](const Meta::Data& type) {
        found = found || type.m_Members.Find(record->m_Name) == record;
    });
    return found;
}

bool InChain(const Component& component, const Meta::Property* record)
{
    bool found = false;
    ForEachTypeInChain(component, [&](const Meta::Data& type) {
        found = found || type.m_Properties.Find(record->m_Name) == record;
    });
    return found;
}

// Sets each listed value of `target` that still equals the old archetype's to the source's.
template <class Record>
void TakeUnchangedValues(const std::vector<Record*>& records, const Component& source, const Component& oldArchetype,
                         Component& target)
{
    for (Record* record : records)
    {
        // A record from another type would read the wrong memory: such a list is skipped entry by entry.
        if (!record || !InChain(target, record))
            continue;
        if (record->Compare(&target, &oldArchetype))
            record->SetFromOther(&target, &source);
    }
}
}

std::vector<ComponentDifference> CompareWithArchetype(const GameObject& instance, const GameObject& archetype)
{
    std::vector<ComponentDifference> differences;
    for (const Component* component : instance.m_Components)
    {
        if (!IsFirstOfType(instance, component))
            continue;
        const Component* counterpart = FirstOfType(archetype, component->GetType());
        if (!counterpart)
        {
            ComponentDifference added;
            added.m_Type = component->GetType();
            added.m_Added = true;
            differences.push_back(std::move(added));
            continue;
        }
        if (counterpart->GetMeta() != component->GetMeta())
            continue;
        ComponentDifference changed = CompareComponents(*component, *counterpart);
        if (!changed.m_Members.empty() || !changed.m_Properties.empty())
            differences.push_back(std::move(changed));
    }
    for (const Component* component : archetype.m_Components)
    {
        if (!IsFirstOfType(archetype, component) || FirstOfType(instance, component->GetType()))
            continue;
        ComponentDifference removed;
        removed.m_Type = component->GetType();
        removed.m_Removed = true;
        differences.push_back(std::move(removed));
    }
    return differences;
}

void ApplyDifferences(const std::vector<ComponentDifference>& differences, const GameObject& source,
                      const GameObject& oldArchetype, GameObject& target)
{
    if (target.m_Archetype != oldArchetype.m_Archetype)
        return;
    for (const ComponentDifference& difference : differences)
    {
        if (difference.m_Removed)
            continue;
        const Component* fromSource = FirstOfType(source, difference.m_Type);
        if (!fromSource)
            continue;
        Component* inTarget = FirstOfType(target, difference.m_Type);
        if (difference.m_Added)
        {
            if (!inTarget)
                target.AppendComponent(fromSource->Clone());
            continue;
        }
        const Component* inArchetype = FirstOfType(oldArchetype, difference.m_Type);
        if (!inTarget || !inArchetype || inTarget->GetMeta() != fromSource->GetMeta() ||
            inArchetype->GetMeta() != fromSource->GetMeta())
            continue;
        TakeUnchangedValues(difference.m_Members, *fromSource, *inArchetype, *inTarget);
        TakeUnchangedValues(difference.m_Properties, *fromSource, *inArchetype, *inTarget);
    }
}
}
