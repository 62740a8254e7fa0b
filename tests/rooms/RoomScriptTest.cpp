// Scripts see a room's grid queries, its values and its placed objects.

#include "utilities/lua/luabridge/LuaTestState.h"

#include "rooms/Room.h"

#include "engine/GameObject.h"

using RoomScriptTest = LuaTestState;

TEST_F(RoomScriptTest, ScriptsAskTheGridAndReadTheRay)
{
    Room room;
    room.RoomFloor.RoomVec = {{0, 0, 0, 0, 0}, {0, 1, 1, 1, 0}, {0, 1, 0, 2, 0}, {0, 1, 1, 1, 0}, {0, 0, 0, 0, 0}};
    room.PrepareGrid();
    room.m_PitDepth = 12.0f;
    SetGlobal("room", &room);
    EXPECT_DOUBLE_EQ(Number("room:FloorType(3, 2)"), 2.0);
    EXPECT_DOUBLE_EQ(Number("room:FloorTypeFromPos(-2, -2)"), 1.0);
    EXPECT_EQ(Text("tostring(room:ShootRay(-2, -1, 0, -1).FoundWall)"), "true");
    EXPECT_EQ(Text("tostring(room:ShootRay(0, -1, -2, -1).FoundPitFirst)"), "true");
    EXPECT_DOUBLE_EQ(Number("room:ShootRay(-2, -1, 0, -1).End"), 2.0);
    EXPECT_DOUBLE_EQ(Number("TileValue.Pit"), 2.0);
    EXPECT_DOUBLE_EQ(Number("room.PitDepth"), 12.0);
    EXPECT_EQ(Run("room:SetFloorFromRect(1, 1, 1, 1, 2)"), "");
    EXPECT_EQ(room.RoomFloor.RoomVec[1][1], 2);
    EXPECT_EQ(Text("type(room:GetGameObject(0))"), "nil");
    lua_settop(L, 0);
}
