// The greedy rectangle cover of one kind of cell of a tile grid.
#include "rooms/RoomRectangles.h"

#include <algorithm>
#include <cstddef>

namespace
{
// Marks of the id grid: a cell of the kind not yet in a rectangle, and a cell not to be merged.
constexpr int kFree = -1;
constexpr int kNotWanted = -2;

using IdGrid = std::vector<std::vector<int>>;

// True when every cell of columns [x0, x1) and rows [y0, y1) lies in the grid and is free.
bool AllFree(const IdGrid& ids, int x0, int x1, int y0, int y1)
{
    if (x0 < 0 || y0 < 0 || y1 > static_cast<int>(ids.size()))
        return false;
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x)
            if (x >= static_cast<int>(ids[y].size()) || ids[y][x] != kFree)
                return false;
    return true;
}

// Gives the cells of columns [x0, x1) and rows [y0, y1) to rectangle `id`.
void Mark(IdGrid& ids, int x0, int x1, int y0, int y1, int id)
{
    for (int y = y0; y < y1; ++y)
        for (int x = x0; x < x1; ++x)
            ids[y][x] = id;
}

// Grows `r` on each side whose new row or column is all free, until no side can grow.
void Expand(IdGrid& ids, GridRectangle& r, int id)
{
    bool grew = true;
    while (grew)
    {
        grew = false;
        if (AllFree(ids, r.x0 - 1, r.x0, r.y0, r.y1))
        {
            --r.x0;
            Mark(ids, r.x0, r.x0 + 1, r.y0, r.y1, id);
            grew = true;
        }
        if (AllFree(ids, r.x1, r.x1 + 1, r.y0, r.y1))
        {
            Mark(ids, r.x1, r.x1 + 1, r.y0, r.y1, id);
            ++r.x1;
            grew = true;
        }
        if (AllFree(ids, r.x0, r.x1, r.y0 - 1, r.y0))
        {
            --r.y0;
            Mark(ids, r.x0, r.x1, r.y0, r.y0 + 1, id);
            grew = true;
        }
        if (AllFree(ids, r.x0, r.x1, r.y1, r.y1 + 1))
        {
            Mark(ids, r.x0, r.x1, r.y1, r.y1 + 1, id);
            ++r.y1;
            grew = true;
        }
        r.width = r.x1 - r.x0;
        r.height = r.y1 - r.y0;
    }
}
}

std::vector<GridRectangle> FindRectangles(const std::vector<std::vector<int>>& grid,
                                          const std::function<bool(int)>& wanted)
{
    IdGrid ids(grid.size());
    for (std::size_t y = 0; y < grid.size(); ++y)
    {
        ids[y].resize(grid[y].size());
        for (std::size_t x = 0; x < grid[y].size(); ++x)
            ids[y][x] = wanted(grid[y][x]) ? kFree : kNotWanted;
    }

    std::vector<GridRectangle> all;
    auto at = [&](int x, int y) {
        if (y < 0 || x < 0 || y >= static_cast<int>(ids.size()) || x >= static_cast<int>(ids[y].size()))
            return kNotWanted;
        return ids[y][x];
    };

    // The row-major scan.
    for (int y = 0; y < static_cast<int>(ids.size()); ++y)
    {
        for (int x = 0; x < static_cast<int>(ids[y].size()); ++x)
        {
            if (ids[y][x] != kFree)
                continue;
            const int left = at(x - 1, y);
            const int above = at(x, y - 1);
            if (left >= 0 && all[left].x1 == x && all[left].height == 1)
            {
                GridRectangle& l = all[left];
                ++l.x1;
                ++l.width;
                ids[y][x] = left;
                if (above >= 0 && above != left)
                {
                    GridRectangle& a = all[above];
                    if (a.used && a.y1 == y && a.x0 == l.x0 && a.x1 == l.x1)
                    {
                        a.y1 = l.y1;
                        a.height += l.height;
                        l.used = false;
                        Mark(ids, l.x0, l.x1, l.y0, l.y1, above);
                    }
                }
            }
            else if (above >= 0 && all[above].y1 == y && all[above].width == 1 && all[above].x0 == x)
            {
                ++all[above].y1;
                ++all[above].height;
                ids[y][x] = above;
            }
            else
            {
                GridRectangle r;
                r.x0 = x;
                r.x1 = x + 1;
                r.y0 = y;
                r.y1 = y + 1;
                r.width = 1;
                r.height = 1;
                ids[y][x] = static_cast<int>(all.size());
                all.push_back(r);
            }
        }
    }

    // The expansion.
    for (std::size_t i = 0; i < all.size(); ++i)
        if (all[i].used)
            Expand(ids, all[i], static_cast<int>(i));

    // The cells each rectangle covers.
    for (int y = 0; y < static_cast<int>(ids.size()); ++y)
        for (int x = 0; x < static_cast<int>(ids[y].size()); ++x)
            if (ids[y][x] >= 0)
                all[static_cast<std::size_t>(ids[y][x])].cells.emplace_back(x, y);

    std::vector<GridRectangle> result;
    for (GridRectangle& r : all)
        if (r.used)
            result.push_back(std::move(r));
    return result;
}
