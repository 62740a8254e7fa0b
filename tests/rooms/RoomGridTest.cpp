// The room's grid queries: FloorType, FloorTypeFromPos, SetFloorFromRect, ShootRay
// and the bounds of the open tiles, on hand-drawn grids.

#include "rooms/Room.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
// A room whose built grid is `grid`.
Room Built(std::vector<std::vector<int>> grid)
{
    Room room;
    room.RoomFloor.RoomVec = std::move(grid);
    room.PrepareGrid();
    return room;
}

// 5 x 5: a ring of wall, floor inside, a pit at column 3, row 2 and a wall at column 2, row 2.
std::vector<std::vector<int>> Sample()
{
    return {{0, 0, 0, 0, 0}, {0, 1, 1, 1, 0}, {0, 1, 0, 2, 0}, {0, 1, 1, 1, 0}, {0, 0, 0, 0, 0}};
}
}

TEST(RoomGridTest, EmptyRoomGivesWallDefaultRayAndExtremeBounds)
{
    Room room = Built({});
    EXPECT_EQ(room.FloorType(0, 0), 0);
    EXPECT_EQ(room.FloorTypeFromPos(0.0f, 0.0f), 0);
    const RoomRay ray = room.ShootRay(-1.0f, -1.0f, 3.0f, 2.0f);
    EXPECT_EQ(ray.Start, Wall);
    EXPECT_EQ(ray.End, Wall);
    EXPECT_FALSE(ray.FoundWall);
    EXPECT_FALSE(ray.FoundPitFirst);
    EXPECT_EQ(ray.FirstWallPosition.x, 0.0f);
    EXPECT_EQ(ray.FirstWallPosition.z, 0.0f);
    constexpr float kMax = std::numeric_limits<float>::max();
    EXPECT_EQ(room.RoomFloor.Left, kMax);
    EXPECT_EQ(room.RoomFloor.Right, -kMax);
    EXPECT_EQ(room.RoomFloor.Top, -kMax);
    EXPECT_EQ(room.RoomFloor.Bottom, kMax);
}

TEST(RoomGridTest, AllWallRoomKeepsExtremeBounds)
{
    Room room = Built({{0, 0}, {0, 0}});
    EXPECT_EQ(room.RoomFloor.Left, std::numeric_limits<float>::max());
    EXPECT_EQ(room.RoomFloor.Top, -std::numeric_limits<float>::max());
}

TEST(RoomGridTest, BoundsAreTheExtremesOfTheOpenTiles)
{
    Room room = Built(Sample());
    // x = c - 2.5 - 0.5, z = r - 2.5 - 0.5 for the open columns and rows 1 to 3.
    EXPECT_FLOAT_EQ(room.RoomFloor.Left, -2.0f);
    EXPECT_FLOAT_EQ(room.RoomFloor.Right, 0.0f);
    EXPECT_FLOAT_EQ(room.RoomFloor.Bottom, -2.0f);
    EXPECT_FLOAT_EQ(room.RoomFloor.Top, 0.0f);
}

TEST(RoomGridTest, FloorTypeOutsideTheGridIsWallNegativesToo)
{
    Room room = Built(Sample());
    EXPECT_EQ(room.FloorType(1, 1), 1);
    EXPECT_EQ(room.FloorType(3, 2), 2);
    EXPECT_EQ(room.FloorType(-1, 1), 0);
    EXPECT_EQ(room.FloorType(1, -1), 0);
    EXPECT_EQ(room.FloorType(5, 1), 0);
    EXPECT_EQ(room.FloorType(1, 5), 0);
}

TEST(RoomGridTest, RaggedRowsReadPastTheirEndAsWall)
{
    Room room = Built({{1, 1, 1}, {1}});
    EXPECT_EQ(room.FloorType(2, 0), 1);
    EXPECT_EQ(room.FloorType(1, 1), 0);
}

TEST(RoomGridTest, FloorTypeFromPosRoundsToTheTileIndex)
{
    Room room = Built(Sample());
    // column = roundf(2.5 + x + 0.5): x = 0 is column 3, x = -2 is column 1.
    EXPECT_EQ(room.FloorTypeFromPos(0.0f, -1.0f), 2);
    EXPECT_EQ(room.FloorTypeFromPos(-1.0f, -1.0f), 0);
    EXPECT_EQ(room.FloorTypeFromPos(-2.0f, -2.0f), 1);
    // roundf rounds half away from zero: x = -0.5 gives 2.5 + 0 = 3 -> roundf(3.0) = 3.
    EXPECT_EQ(room.FloorTypeFromPos(-0.5f, -1.0f), 2);
    EXPECT_EQ(room.FloorTypeFromPos(-0.6f, -1.0f), 0);
}

TEST(RoomGridTest, EditsOfTheGridAreSeenOnlyAfterTheNextBuild)
{
    Room room = Built(Sample());
    room.SetFloorFromRect(1, 1, 3, 3, 2);
    EXPECT_EQ(room.FloorType(2, 2), 0);
    room.PrepareGrid();
    EXPECT_EQ(room.FloorType(2, 2), 2);
    EXPECT_EQ(room.FloorType(0, 0), 0);
}

TEST(RoomGridTest, SetFloorFromRectTakesCornersInAnyOrderAndStaysInsideTheGrid)
{
    Room room;
    room.RoomFloor.RoomVec = Sample();
    room.SetFloorFromRect(7, -3, 3, 1, 1);
    EXPECT_EQ(room.RoomFloor.RoomVec[0][3], 1);
    EXPECT_EQ(room.RoomFloor.RoomVec[1][4], 1);
    EXPECT_EQ(room.RoomFloor.RoomVec[0][2], 0);
    EXPECT_EQ(room.RoomFloor.RoomVec[2][4], 0);
    EXPECT_EQ(room.RoomFloor.RoomVec.size(), 5u);
    EXPECT_EQ(room.RoomFloor.RoomVec[0].size(), 5u);
}

TEST(RoomGridTest, RayFromATileToItselfReportsOnlyItsEnds)
{
    Room room = Built(Sample());
    // Start in the pit, then in a wall: neither sets FoundWall nor FoundPitFirst.
    RoomRay ray = room.ShootRay(0.0f, -1.0f, 0.2f, -0.9f);
    EXPECT_EQ(ray.Start, Pit);
    EXPECT_EQ(ray.End, Pit);
    EXPECT_FALSE(ray.FoundWall);
    EXPECT_FALSE(ray.FoundPitFirst);
    ray = room.ShootRay(-3.0f, -3.0f, -3.0f, -3.0f);
    EXPECT_EQ(ray.Start, Wall);
    EXPECT_FALSE(ray.FoundWall);
}

TEST(RoomGridTest, RayStartingInAWallFindsItAtOnce)
{
    Room room = Built(Sample());
    // Column 2, row 2 is the inner wall; the ray goes on to the floor at column 2, row 3.
    const RoomRay ray = room.ShootRay(-1.0f, -1.0f, -1.0f, 0.0f);
    EXPECT_EQ(ray.Start, Wall);
    EXPECT_EQ(ray.End, Floor);
    EXPECT_TRUE(ray.FoundWall);
    EXPECT_FLOAT_EQ(ray.FirstWallPosition.x, -1.0f);
    EXPECT_FLOAT_EQ(ray.FirstWallPosition.y, 0.0f);
    EXPECT_FLOAT_EQ(ray.FirstWallPosition.z, -1.0f);
}

TEST(RoomGridTest, PitBehindAWallDoesNotCountAsFirst)
{
    Room room = Built(Sample());
    // Along row 2 from column 1: the wall at column 2 comes before the pit at column 3.
    RoomRay ray = room.ShootRay(-2.0f, -1.0f, 0.0f, -1.0f);
    EXPECT_TRUE(ray.FoundWall);
    EXPECT_FALSE(ray.FoundPitFirst);
    EXPECT_EQ(ray.End, Pit);
    // From the other side the pit comes first, and the walk goes on past the wall.
    ray = room.ShootRay(0.0f, -1.0f, -2.0f, -1.0f);
    EXPECT_TRUE(ray.FoundPitFirst);
    EXPECT_TRUE(ray.FoundWall);
    EXPECT_FLOAT_EQ(ray.FirstWallPosition.x, -1.0f);
}

TEST(RoomGridTest, RowZeroAndColumnZeroCountAsWallWhateverTheTile)
{
    Room room = Built({{1, 1, 1}, {1, 1, 1}, {1, 1, 1}});
    const RoomRay ray = room.ShootRay(-2.0f, -2.0f, -2.0f, 0.0f);
    EXPECT_EQ(ray.Start, Floor);
    EXPECT_TRUE(ray.FoundWall);
    EXPECT_FLOAT_EQ(ray.FirstWallPosition.x, -2.0f);
    EXPECT_FLOAT_EQ(ray.FirstWallPosition.z, -2.0f);
}

TEST(RoomGridTest, SecondPitKindIsNotAPitForRays)
{
    Room room = Built({{0, 0, 0, 0}, {0, 1, 3, 1}, {0, 0, 0, 0}});
    const RoomRay ray = room.ShootRay(-1.5f, -1.0f, 0.5f, -1.0f);
    EXPECT_EQ(ray.Start, Floor);
    EXPECT_EQ(ray.End, Floor);
    EXPECT_FALSE(ray.FoundWall);
    EXPECT_FALSE(ray.FoundPitFirst);
}

TEST(RoomGridTest, WallHeightFollowsThePitDepthFromFifteenOn)
{
    Room room;
    room.m_PitDepth = 14.9f;
    EXPECT_FLOAT_EQ(room.WallTop(), 22.5f);
    EXPECT_FLOAT_EQ(room.WallExtra(), 3.75f);
    room.m_PitDepth = 15.0f;
    EXPECT_FLOAT_EQ(room.WallTop(), 22.5f);
    room.m_PitDepth = 20.0f;
    EXPECT_FLOAT_EQ(room.WallTop(), 27.5f);
    EXPECT_FLOAT_EQ(room.WallExtra(), 6.25f);
}

TEST(RoomGridTest, FarAndUndefinedPositionsReadAsWallWithoutAWalkAcrossThem)
{
    Room room = Built(Sample());
    constexpr float kFar = 1e30f;
    const float nan = std::nanf("");
    EXPECT_EQ(room.FloorTypeFromPos(kFar, 0.0f), 0);
    EXPECT_EQ(room.FloorTypeFromPos(-kFar, nan), 0);
    // From the floor at column 1, row 1 out along the row: the ring's wall at column 4 is the first.
    RoomRay ray = room.ShootRay(-2.0f, -2.0f, kFar, -2.0f);
    EXPECT_EQ(ray.Start, Floor);
    EXPECT_EQ(ray.End, Wall);
    EXPECT_TRUE(ray.FoundWall);
    EXPECT_FLOAT_EQ(ray.FirstWallPosition.x, 1.0f);
    ray = room.ShootRay(nan, nan, -kFar, kFar);
    EXPECT_EQ(ray.Start, Wall);
    EXPECT_TRUE(ray.FoundWall);
}
