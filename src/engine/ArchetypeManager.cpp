#include "engine/ArchetypeManager.h"

namespace Engine
{
ArchetypeManager& ArchetypeManager::Get()
{
    // Lives until the process ends; shutdown empties it in its turn.
    static ArchetypeManager* manager = new ArchetypeManager();
    return *manager;
}

ArchetypeManager::~ArchetypeManager()
{
    Clear();
}

ArchetypeId ArchetypeManager::Add(GameObject* archetype)
{
    m_Archetypes.push_back(archetype);
    archetype->m_Archetype = static_cast<ArchetypeId>(m_Archetypes.size());
    return archetype->m_Archetype;
}

GameObject* ArchetypeManager::GetArchetype(ArchetypeId id) const
{
    return id >= 1 && id <= m_Archetypes.size() ? m_Archetypes[id - 1] : nullptr;
}

ArchetypeId ArchetypeManager::Find(const std::string& name) const
{
    for (std::size_t i = 0; i < m_Archetypes.size(); ++i)
        if (m_Archetypes[i]->m_Name == name)
            return static_cast<ArchetypeId>(i + 1);
    return 0;
}

void ArchetypeManager::Clear()
{
    for (GameObject* archetype : m_Archetypes)
        delete archetype;
    m_Archetypes.clear();
}
}
