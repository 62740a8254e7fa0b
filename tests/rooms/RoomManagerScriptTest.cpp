// Scripts drive a run through the room manager: its singleton, its difficulty
// and its picks, and the shared random sequence's seed.

#include "utilities/lua/luabridge/LuaTestState.h"

#include "engine/Random.h"
#include "rooms/Room.h"
#include "rooms/RoomManager.h"

using RoomManagerScriptTest = LuaTestState;

TEST_F(RoomManagerScriptTest, ScriptsRunARunThroughTheSingleton)
{
    RoomManager& manager = RoomManager::Get();
    auto* room = new Room();
    room->m_Name = "Hall";
    room->m_Difficulty = 3.0f;
    manager.m_Rooms.push_back(room);
    manager.m_RoomIndex["Hall"] = 1;
    manager.m_Biomes["IceBlue"];

    EXPECT_EQ(Run("Random.Seed(11)"), "");
    EXPECT_EQ(Run("local rooms = RoomManager.Get()\n"
                  "rooms:ClearOldRooms()\n"
                  "rooms:SetRoomsUntilBoss(4)\n"
                  "rooms.Difficulty = 2.5\n"
                  "rooms:SetBiome('Ice')\n"
                  "rooms:PickRandomMainBiome()\n"
                  "rooms:PickRandomBiome()\n"
                  "rooms:PickRoom()\n"
                  "rooms:IncrementRoomCount()"),
              "");
    EXPECT_FLOAT_EQ(manager.m_Difficulty, 2.5f);
    EXPECT_EQ(manager.GetCurrentRoom(), room);
    EXPECT_EQ(Text("RoomManager.Get():GetCurrentRoom():GetName()"), "Hall");
    EXPECT_EQ(Text("RoomManager.Get():GetCurrentBiomeName()"), "IceBlue");
    EXPECT_DOUBLE_EQ(Number("RoomManager.Get():GetCurrentRoomCount()"), 1.0);
    EXPECT_DOUBLE_EQ(Number("RoomManager.Get():GetRoomsUntilBoss()"), 4.0);
    lua_settop(L, 0);
    manager.Clear();
}
