// The greedy rectangle cover of one kind of cell: every cell of the kind is in
// exactly one rectangle, rectangles hold only that kind, and hand-checked grids
// give the rectangles the scan rule says.

#include "rooms/RoomRectangles.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
using Grid = std::vector<std::vector<int>>;

bool IsFloor(int value)
{
    return value == 1;
}

// Checks that `rectangles` cover each cell of `grid` of the kind once and nothing else, and that
// each record's size and cells agree with its corners.
void ExpectExactCover(const Grid& grid, const std::vector<GridRectangle>& rectangles, int kind)
{
    Grid count(grid.size());
    for (std::size_t y = 0; y < grid.size(); ++y)
        count[y].assign(grid[y].size(), 0);
    for (const GridRectangle& r : rectangles)
    {
        EXPECT_TRUE(r.used);
        EXPECT_EQ(r.width, r.x1 - r.x0);
        EXPECT_EQ(r.height, r.y1 - r.y0);
        EXPECT_EQ(r.cells.size(), static_cast<std::size_t>(r.width * r.height));
        for (int y = r.y0; y < r.y1; ++y)
            for (int x = r.x0; x < r.x1; ++x)
            {
                ASSERT_LT(y, static_cast<int>(grid.size()));
                ASSERT_LT(x, static_cast<int>(grid[y].size()));
                EXPECT_EQ(grid[y][x], kind) << "cell " << x << ", " << y;
                ++count[y][x];
            }
    }
    for (std::size_t y = 0; y < grid.size(); ++y)
        for (std::size_t x = 0; x < grid[y].size(); ++x)
            EXPECT_EQ(count[y][x], grid[y][x] == kind ? 1 : 0) << "cell " << x << ", " << y;
}

void ExpectRectangle(const GridRectangle& r, int x0, int x1, int y0, int y1)
{
    EXPECT_EQ(r.x0, x0);
    EXPECT_EQ(r.x1, x1);
    EXPECT_EQ(r.y0, y0);
    EXPECT_EQ(r.y1, y1);
}
}

TEST(RoomRectanglesTest, AFullGridIsOneRectangle)
{
    const Grid grid = {{1, 1, 1}, {1, 1, 1}};
    const std::vector<GridRectangle> rectangles = FindRectangles(grid, IsFloor);
    ASSERT_EQ(rectangles.size(), 1u);
    ExpectRectangle(rectangles[0], 0, 3, 0, 2);
    EXPECT_EQ(rectangles[0].cells.size(), 6u);
}

TEST(RoomRectanglesTest, AOneColumnRunGrowsDownward)
{
    const Grid grid = {{1, 0}, {1, 0}, {1, 0}};
    const std::vector<GridRectangle> rectangles = FindRectangles(grid, IsFloor);
    ASSERT_EQ(rectangles.size(), 1u);
    ExpectRectangle(rectangles[0], 0, 1, 0, 3);
}

TEST(RoomRectanglesTest, ARowSpanningTheSameColumnsMergesIntoTheRectangleAbove)
{
    const Grid grid = {{0, 1, 1, 0}, {0, 1, 1, 0}, {1, 1, 1, 0}};
    const std::vector<GridRectangle> rectangles = FindRectangles(grid, IsFloor);
    ASSERT_EQ(rectangles.size(), 2u);
    ExpectRectangle(rectangles[0], 1, 3, 0, 2);
    ExpectRectangle(rectangles[1], 0, 3, 2, 3);
}

TEST(RoomRectanglesTest, AnLShapeIsARowAndAColumnPiece)
{
    const Grid grid = {{1, 1}, {1, 0}};
    const std::vector<GridRectangle> rectangles = FindRectangles(grid, IsFloor);
    ASSERT_EQ(rectangles.size(), 2u);
    ExpectRectangle(rectangles[0], 0, 2, 0, 1);
    ExpectRectangle(rectangles[1], 0, 1, 1, 2);
}

TEST(RoomRectanglesTest, WallRingOfAPaddedRoomIsFourRectangles)
{
    const Grid grid = {{0, 0, 0, 0, 0}, {0, 1, 1, 2, 0}, {0, 1, 1, 1, 0}, {0, 0, 0, 0, 0}};
    const std::vector<GridRectangle> walls = FindRectangles(grid, [](int value) { return value == 0; });
    ASSERT_EQ(walls.size(), 4u);
    ExpectRectangle(walls[0], 0, 5, 0, 1);
    ExpectRectangle(walls[1], 0, 1, 1, 4);
    ExpectRectangle(walls[2], 4, 5, 1, 3);
    ExpectRectangle(walls[3], 1, 5, 3, 4);
    ExpectExactCover(grid, walls, 0);
}

TEST(RoomRectanglesTest, NoCellOfTheKindGivesNoRectangle)
{
    EXPECT_TRUE(FindRectangles({{0, 2}, {2, 0}}, IsFloor).empty());
    EXPECT_TRUE(FindRectangles({}, IsFloor).empty());
}

TEST(RoomRectanglesTest, RaggedRowsAreCoveredWhereTheyHaveCells)
{
    const Grid grid = {{1, 1, 1}, {1}, {1, 1}};
    ExpectExactCover(grid, FindRectangles(grid, IsFloor), 1);
}

TEST(RoomRectanglesTest, RandomGridsAreCoveredExactlyOnceByRectanglesOfTheirKind)
{
    std::mt19937 random(1234u);
    for (int round = 0; round < 200; ++round)
    {
        const int width = 1 + static_cast<int>(random() % 12);
        const int height = 1 + static_cast<int>(random() % 12);
        Grid grid(static_cast<std::size_t>(height), std::vector<int>(static_cast<std::size_t>(width)));
        for (std::vector<int>& row : grid)
            for (int& cell : row)
                cell = static_cast<int>(random() % 3);
        for (int kind = 0; kind < 3; ++kind)
        {
            SCOPED_TRACE("round " + std::to_string(round) + ", kind " + std::to_string(kind));
            ExpectExactCover(grid, FindRectangles(grid, [kind](int value) { return value == kind; }), kind);
        }
    }
}
