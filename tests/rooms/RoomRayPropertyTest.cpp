// FloorTypeFromPos and ShootRay against a brute-force walk of the grid, on rooms
// drawn at random from a fixed seed. The reference finds tiles by scanning every
// cell for the one whose centre lies near the point, and lists the cells a ray
// visits from the closed form of its error term, in exact integer arithmetic.

#include "rooms/Room.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace
{
using Grid = std::vector<std::vector<int>>;

// Width of a grid: its longest row.
int WidthOf(const Grid& grid)
{
    std::size_t width = 0;
    for (const auto& row : grid)
        width = std::max(width, row.size());
    return static_cast<int>(width);
}

// Value of the cell whose centre is within 0.45 tiles of (x, z) on both axes, scanning every cell; 0 if none.
int ScanForTile(const Grid& grid, float x, float z)
{
    const double w = WidthOf(grid);
    const double h = static_cast<double>(grid.size());
    for (std::size_t r = 0; r < grid.size(); ++r)
        for (std::size_t c = 0; c < grid[r].size(); ++c)
        {
            const double cx = static_cast<double>(c) - w * 0.5 - 0.5;
            const double cz = static_cast<double>(r) - h * 0.5 - 0.5;
            if (std::abs(cx - x) < 0.45 && std::abs(cz - z) < 0.45)
                return grid[r][c];
        }
    return 0;
}

// Value at (c, r), 0 outside.
int At(const Grid& grid, long long c, long long r)
{
    if (r < 0 || r >= static_cast<long long>(grid.size()) || c < 0 || c >= static_cast<long long>(grid[r].size()))
        return 0;
    return grid[r][c];
}

// Smallest integer not below a / b, for b > 0.
long long CeilDiv(long long a, long long b)
{
    return static_cast<long long>(std::ceil(static_cast<double>(a) / static_cast<double>(b)));
}

// The ray over `grid` between tile indices, by listing every cell it visits.
RoomRay Walk(const Grid& grid, long long c0, long long r0, long long c1, long long r1)
{
    const double w = WidthOf(grid);
    const double h = static_cast<double>(grid.size());
    RoomRay ray;
    ray.Start = static_cast<TileValue>(At(grid, c0, r0));
    ray.End = static_cast<TileValue>(At(grid, c1, r1));
    if (c0 == c1 && r0 == r1)
        return ray;
    const bool alongColumns = std::llabs(c1 - c0) >= std::llabs(r1 - r0);
    const long long major = alongColumns ? std::llabs(c1 - c0) : std::llabs(r1 - r0);
    const long long minor = alongColumns ? std::llabs(r1 - r0) : std::llabs(c1 - c0);
    const long long majorStep = alongColumns ? (c1 > c0 ? 1 : -1) : (r1 > r0 ? 1 : -1);
    const long long minorSign = alongColumns ? (r1 > r0) - (r1 < r0) : (c1 > c0) - (c1 < c0);
    // Minor steps taken once the error has grown k times.
    auto minorSteps = [&](long long k) { return std::max(0LL, CeilDiv(2 * k * minor - major, 2 * major)); };
    std::vector<std::pair<long long, long long>> cells;
    for (long long k = 0; k <= major; ++k)
    {
        const long long along = (alongColumns ? c0 : r0) + k * majorStep;
        const long long across = alongColumns ? r0 : c0;
        // The tile of this step, then each minor step taken before the next one.
        for (long long j = minorSteps(k); j <= minorSteps(k + 1); ++j)
            cells.emplace_back(alongColumns ? along : across + j * minorSign,
                               alongColumns ? across + j * minorSign : along);
    }
    for (const auto& [c, r] : cells)
    {
        const int value = At(grid, c, r);
        if (c < 1 || r < 1 || value == 0)
        {
            if (!ray.FoundWall)
            {
                ray.FoundWall = true;
                ray.FirstWallPosition = Math::Point3D(static_cast<float>(c - w * 0.5 - 0.5), 0.0f,
                                                      static_cast<float>(r - h * 0.5 - 0.5));
            }
        }
        else if (value == 2 && !ray.FoundWall)
            ray.FoundPitFirst = true;
    }
    return ray;
}

// A random grid: 0 to 12 rows of 1 to 12 cells, now and then ragged.
Grid RandomGrid(std::mt19937& random)
{
    std::uniform_int_distribution<int> size(0, 12);
    std::uniform_int_distribution<int> value(0, 3);
    const int rows = size(random);
    const int columns = std::max(1, size(random));
    const bool ragged = random() % 4 == 0;
    Grid grid(rows);
    for (auto& row : grid)
    {
        row.resize(ragged ? std::max(1, size(random)) : columns);
        for (int& cell : row)
            cell = value(random) == 0 ? 0 : value(random);
    }
    return grid;
}
}

TEST(RoomRayPropertyTest, FloorTypeAndShootRayAgreeWithABruteForceWalkOnRandomRooms)
{
    std::mt19937 random(20261122);
    std::uniform_real_distribution<float> jitter(-0.3f, 0.3f);
    for (int trial = 0; trial < 3000; ++trial)
    {
        const Grid grid = RandomGrid(random);
        Room room;
        room.RoomFloor.RoomVec = grid;
        room.PrepareGrid();
        const int w = WidthOf(grid);
        const int h = static_cast<int>(grid.size());
        std::uniform_int_distribution<int> column(-2, w + 2);
        std::uniform_int_distribution<int> row(-2, h + 2);
        // A point near the centre of tile (c, r), and the tile's indices.
        auto point = [&](int c, int r) {
            return std::pair<float, float>(static_cast<float>(c - w * 0.5 - 0.5) + jitter(random),
                                           static_cast<float>(r - h * 0.5 - 0.5) + jitter(random));
        };
        for (int query = 0; query < 10; ++query)
        {
            const int c0 = column(random), r0 = row(random), c1 = column(random), r1 = row(random);
            const auto [x0, z0] = point(c0, r0);
            const auto [x1, z1] = point(c1, r1);
            SCOPED_TRACE(testing::Message() << "trial " << trial << ": (" << c0 << ", " << r0 << ") to (" << c1
                                            << ", " << r1 << ") in " << w << " x " << h);
            if (h == 0)
            {
                EXPECT_EQ(room.FloorTypeFromPos(x0, z0), 0);
                const RoomRay ray = room.ShootRay(x0, z0, x1, z1);
                EXPECT_FALSE(ray.FoundWall);
                EXPECT_EQ(ray.Start, Wall);
                continue;
            }
            EXPECT_EQ(room.FloorTypeFromPos(x0, z0), ScanForTile(grid, x0, z0));
            EXPECT_EQ(room.FloorType(c0, r0), At(grid, c0, r0));
            const RoomRay expected = Walk(grid, c0, r0, c1, r1);
            const RoomRay ray = room.ShootRay(x0, z0, x1, z1);
            ASSERT_EQ(ray.Start, expected.Start);
            ASSERT_EQ(ray.End, expected.End);
            ASSERT_EQ(ray.FoundWall, expected.FoundWall);
            ASSERT_EQ(ray.FoundPitFirst, expected.FoundPitFirst);
            ASSERT_FLOAT_EQ(ray.FirstWallPosition.x, expected.FirstWallPosition.x);
            ASSERT_FLOAT_EQ(ray.FirstWallPosition.y, 0.0f);
            ASSERT_FLOAT_EQ(ray.FirstWallPosition.z, expected.FirstWallPosition.z);
        }
    }
}
