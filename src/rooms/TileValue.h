// TileValue: what one cell of a room's grid holds. The grid stores these as
// plain ints (RoomData::RoomVec); the enumeration names them for code and
// scripts ("TileValue.Pit"). Values 2 and 3 are both pits: the mesh generator
// treats them alike, while ShootRay counts only 2 as a pit.
#pragma once

enum TileValue
{
    // A wall tile; also what any cell outside the grid reads as.
    Wall = 0,
    // Walkable floor.
    Floor = 1,
    // A pit.
    Pit = 2,
    // A second kind of pit, drawn apart in the editor.
    SecondPit = 3,
};
