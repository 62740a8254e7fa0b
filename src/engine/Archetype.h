// Archetype: the scripts' view of the archetype manager. Scripts name an
// archetype once, keep its id, and make objects from the id:
//
//   local crawler = Archetype.Find("EmberCrawler")
//   local made = space:CreateObject(crawler)
//   print(Archetype.GetName(made:GetArchetype()))
//
// An Archetype value, Archetype("EmberCrawler"), holds the id found for the
// name when it was made, as the read-only ArchetypeId.
#pragma once

#include "engine/GameObject.h"

#include <string>

class Archetype
{
public:
    // No archetype: ArchetypeId 0.
    Archetype() = default;
    // The archetype of this name as it stands now; ArchetypeId 0 when there is none.
    explicit Archetype(const std::string& name);

    // The id of the archetype of this name, or 0.
    static ArchetypeId Find(const std::string& name);
    // The name of the archetype with this id; "" for 0 or an unknown id.
    static std::string GetName(ArchetypeId id);
    // The id this value holds.
    ArchetypeId GetArchetypeId() const { return m_Id; }

private:
    ArchetypeId m_Id = 0;
};
