// Covering the cells of one kind of a room's tile grid with few large
// rectangles, so that a room is built from a few big boxes instead of one box
// a tile. The rule is greedy and fast, not optimal: a row-major scan lets each
// cell of the kind join the rectangle on its left (while that one is one row
// high) or the one above (while that one is one column wide), merging a row
// into the rectangle above when they span the same columns; then each
// rectangle grows on any side whose whole new row or column is of the kind and
// free. Every cell of the kind ends in exactly one rectangle, and a rectangle
// holds only cells of the kind.
//
//   std::vector<GridRectangle> walls = FindRectangles(grid, [](int v) { return v == 0; });
#pragma once

#include <functional>
#include <vector>

// One rectangle of grid cells: columns x0 .. x1 - 1 and rows y0 .. y1 - 1.
struct GridRectangle
{
    // First column.
    int x0 = 0;
    // One past the last column.
    int x1 = 0;
    // First row.
    int y0 = 0;
    // One past the last row.
    int y1 = 0;
    // False once the rectangle was merged into another.
    bool used = true;
    // x1 - x0.
    int width = 0;
    // y1 - y0.
    int height = 0;
    // The cells the rectangle covers, as (column, row) pairs in row-major order.
    std::vector<std::pair<int, int>> cells;
};

// The rectangles covering every cell of `grid` (grid[row][column]) for which `wanted` holds, in
// the order they were started; rows may differ in length (missing cells are not of any kind).
std::vector<GridRectangle> FindRectangles(const std::vector<std::vector<int>>& grid,
                                          const std::function<bool(int)>& wanted);
