// Engine::ArchetypeManager: the prototypes that objects are cloned from. An
// archetype is a GameObject kept outside any space; ArchetypeId n is the n-th
// archetype added in this run. Archetypes are added from code for now; loading
// them from the data directory's "Archetypes/" files is not built yet.
#pragma once

#include "engine/GameObject.h"

#include <string>
#include <vector>

namespace Engine
{
class ArchetypeManager
{
public:
    // The one archetype manager.
    static ArchetypeManager& Get();
    ~ArchetypeManager();

    // Takes ownership of a prototype object and returns its id (1-based).
    ArchetypeId Add(GameObject* archetype);
    // The archetype with this id, or null for 0 or an unknown id.
    GameObject* GetArchetype(ArchetypeId id) const;
    // The id of the archetype with this name, or 0.
    ArchetypeId Find(const std::string& name) const;
    // Number of archetypes.
    std::size_t Count() const { return m_Archetypes.size(); }
    // Deletes every archetype.
    void Clear();

private:
    ArchetypeManager() = default;
    std::vector<GameObject*> m_Archetypes;
};
}
