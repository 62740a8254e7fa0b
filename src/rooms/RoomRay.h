// RoomRay: what Room::ShootRay found along a line over the grid: the tiles at
// both ends, whether a wall was crossed (and where the first one lies, in
// tile space with y = 0), and whether a pit came before any wall.
#pragma once

#include "engine/Math/Point3D.h"
#include "rooms/TileValue.h"

struct RoomRay
{
    // Tile under the start point; Wall outside the grid.
    TileValue Start = Wall;
    // Tile under the end point; Wall outside the grid.
    TileValue End = Wall;
    // The ray met a wall.
    bool FoundWall = false;
    // The ray met a pit before any wall.
    bool FoundPitFirst = false;
    // Tile-space position of the first wall tile met, y = 0.
    Math::Point3D FirstWallPosition;
};
