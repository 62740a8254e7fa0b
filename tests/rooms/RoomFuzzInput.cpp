#include "rooms/RoomFuzzInput.h"

#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "rooms/Room.h"
#include "utilities/Serialization/Serializer.h"

void ReadRoomAndWriteBack(const std::string& input)
{
    if (input.empty())
        return;
    Util::SetTolerantRead((input[0] & 1) != 0);
    Engine::ArchetypeManager& archetypes = Engine::ArchetypeManager::Get();
    archetypes.Clear();
    auto* crate = new GameObject();
    crate->m_Name = "Crate";
    crate->AddComponentUninitialized("Transform");
    archetypes.Add(crate);
    {
        Room room;
        room.FromText(input.substr(1), "fuzz.txt");
        room.PrepareGrid();
        (void)room.ToText();
        (void)room.FloorTypeFromPos(0.4f, -0.6f);
        (void)room.ShootRay(-3.0f, -2.0f, 4.0f, 5.0f);
        Room copy;
        copy.FromText(room.ToText(), "copy.txt");
    }
    archetypes.Clear();
    Util::SetTolerantRead(false);
}
