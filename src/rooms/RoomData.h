// RoomData: a room's tile grid and the bounds of its open tiles.
//
// RoomVec[row][column] holds TileValue numbers. Rows may differ in length; a
// column past the end of its row reads as wall. The grid is `Width()` columns
// (its longest row) by `Height()` rows, and the tile at column c, row r sits
// at x = c - w * 0.5 - 0.5, z = r - h * 0.5 - 0.5 in tiles from the centre.
// Left, Right, Top and Bottom are the extremes of those positions over the
// tiles that are not wall (ComputeBounds); with no such tile they stay at the
// largest float values, Left and Bottom positive, Right and Top negative.
//
// Its text form is a block of rows, one line of integers a row:
//
//   RoomFloor {
//     0 0 0
//     0 1 0
//   }
#pragma once

#include "utilities/Serialization/TextValue.h"

#include <vector>


class RoomData
{
public:
    // The grid, RoomVec[row][column].
    std::vector<std::vector<int>> RoomVec;
    // Smallest x of a non-wall tile, in tiles from the centre.
    float Left = 0.0f;
    // Largest x of a non-wall tile.
    float Right = 0.0f;
    // Largest z of a non-wall tile.
    float Top = 0.0f;
    // Smallest z of a non-wall tile.
    float Bottom = 0.0f;

    // Number of columns: the length of the longest row.
    static std::size_t Width(const std::vector<std::vector<int>>& grid);
    // Number of rows.
    static std::size_t Height(const std::vector<std::vector<int>>& grid) { return grid.size(); }
    // Sets Left, Right, Top and Bottom from the grid's non-wall tiles.
    void ComputeBounds();

    // Equal grids and bounds.
    bool operator==(const RoomData& other) const = default;
};

namespace Util
{
// Writes the grid block: "{", a line per row, "}" at the current indent.
template <>
void WriteValue<RoomData>(Serializer& serializer, const RoomData& value);
// Reads the grid block: "{", a line end, then rows until a line that begins with "}".
template <>
void ReadValue<RoomData>(Serializer& serializer, RoomData& value);
}
