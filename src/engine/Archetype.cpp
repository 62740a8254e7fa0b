#include "engine/Archetype.h"

#include "engine/ArchetypeManager.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(Archetype)
{
    CONSTRUCTOR();
    CONSTRUCTOR(std::string);
    DESCRIPTION("Archetypes by name and id: Find a name's id once, then make objects with space:CreateObject(id).");
    PROPERTY_GET(ArchetypeId, GetArchetypeId, "The id found for the name this value was made with; 0 for none.");
    HELP("The id of the archetype of a name; 0 when there is none.");
    METHOD(Find);
    HELP("The name of the archetype of an id; an empty string for an unknown id.");
    METHOD(GetName);
}

Archetype::Archetype(const std::string& name) : m_Id(Find(name))
{
}

ArchetypeId Archetype::Find(const std::string& name)
{
    return Engine::ArchetypeManager::Get().GetArchetypeId(name);
}

std::string Archetype::GetName(ArchetypeId id)
{
    return Engine::ArchetypeManager::Get().GetArchetypeName(id);
}
