#include "utilities/DocumentationGen/DocumentationGroups.h"

#include "utilities/Meta/Data.h"

#include <algorithm>

namespace DocGen
{
namespace
{
bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// True if `type` is the class named `base` or derived from it.
bool IsOrDerivesFrom(const Meta::Data& type, const char* base)
{
    for (const Meta::Data* at = &type; at; at = at->m_Parent)
        if (at->m_Name == base)
            return true;
    return false;
}

// True if `type` is derived from the class named `base` (not the class itself).
bool DerivesFrom(const Meta::Data& type, const char* base)
{
    return type.m_Parent && IsOrDerivesFrom(*type.m_Parent, base);
}
}

const std::vector<std::string>& GroupNames()
{
    static const std::vector<std::string> names = {"Components", "Events",       "Space Systems", "Systems",
                                                   "Math",       "Enumerations", "Other"};
    return names;
}

int GroupOf(const Meta::Data& type, const SpaceSystemTypes& spaceSystems)
{
    if (!type.IsRegistered() || type.m_IsPrimitive || type.m_Name.empty() ||
        type.m_Name.find(' ') != std::string::npos || type.m_Name == "LuaComponent")
        return -1;
    if (DerivesFrom(type, "Component"))
        return 0;
    if (DerivesFrom(type, "Event"))
        return 1;
    if (EndsWith(type.m_Name, "SpaceSystem") || spaceSystems.count(&type))
        return 2;
    if (DerivesFrom(type, "System"))
        return 3;
    if (type.m_Namespace == "Math")
        return 4;
    if (type.m_IsEnum)
        return 5;
    return 6;
}

std::vector<DocumentationGroup> MakeGroups(const std::vector<Meta::Data*>& types, const SpaceSystemTypes& spaceSystems)
{
    std::vector<DocumentationGroup> groups;
    for (const std::string& name : GroupNames())
        groups.push_back({name, {}});
    for (const Meta::Data* type : types)
    {
        if (!type)
            continue;
        const int group = GroupOf(*type, spaceSystems);
        if (group >= 0)
            groups[static_cast<std::size_t>(group)].m_Classes.push_back(type);
    }
    for (DocumentationGroup& group : groups)
        std::stable_sort(group.m_Classes.begin(), group.m_Classes.end(),
                         [](const Meta::Data* a, const Meta::Data* b) { return a->m_Name < b->m_Name; });
    return groups;
}
}
