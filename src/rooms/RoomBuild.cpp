// Building a room into a space: Room::Create and Room::CreateEnviroment.
#include "rooms/Room.h"

#include "rooms/RoomManager.h"

std::vector<GameObjectId> Room::Create(Engine::Space& space)
{
    RoomManager& manager = RoomManager::Get();
    if (!m_BiomeOverride.empty())
        manager.SetBiome(m_BiomeOverride);
    manager.PickRandomBiome();
    PrepareGrid();
    return CreateEnviroment(space, false);
}

std::vector<GameObjectId> Room::CreateEnviroment(Engine::Space&, bool)
{
    // The environment's boxes are being built.
    return {};
}
