// The game's rooms and biomes as shipped in Data/: every room file reads
// without a report, is a walled grid with floor to stand on, places its
// objects on floor tiles from archetypes that exist, and the rooms rise in
// difficulty up to a boss room; the biome list has a biome for each main
// biome.
//
// Placed objects are read against the shipped archetypes, loaded with the
// shipped script components from a copy of those two folders of Data/ (the
// whole of Data/ would also start the game's states).

#include "rooms/Room.h"
#include "rooms/RoomManager.h"

#include "Components/Transform/Transform.h"
#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "support/ReportCapture.h"
#include "support/TempFolder.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/LuaTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{
// World size of a tile and the height of the floor's top, as the rooms are drawn.
constexpr float kTileSize = 5.0f;
constexpr float kFloorTop = -7.5f;

// The room files of Data/Rooms, in name order.
std::vector<std::filesystem::path> RoomFiles()
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(VORN_DATA_DIR "/Rooms"))
        if (entry.is_regular_file() && entry.path().extension() == ".txt")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

class RoomFilesInDataTest : public testing::Test
{
protected:
    void SetUp() override
    {
        namespace fs = std::filesystem;
        fs::copy(VORN_DATA_DIR "/Archetypes", m_Temp.Path() + "Archetypes", fs::copy_options::recursive);
        fs::create_directories(m_Temp.Path() + "LuaScripts");
        fs::copy(VORN_DATA_DIR "/LuaScripts/Components", m_Temp.Path() + "LuaScripts/Components",
                 fs::copy_options::recursive);
        Engine::ArchetypeManager& archetypes = Engine::ArchetypeManager::Get();
        archetypes.Clear();
        GameObject::RegisterComponentProperties();
        {
            StdoutCapture dropped;
            m_Lua.Initialize();
        }
        ReportCapture loading;
        archetypes.LoadAll();
        ASSERT_EQ(loading.Text(), "");
        for (const auto& path : RoomFiles())
        {
            auto room = std::make_unique<Room>();
            ReportCapture reports;
            const bool opened = room->Load(path.string());
            m_Reports[path.stem().string()] = reports.Text();
            ASSERT_TRUE(opened) << path;
            m_Rooms.push_back(std::move(room));
        }
    }
    void TearDown() override
    {
        m_Rooms.clear();
        Engine::ArchetypeManager::Get().Clear();
    }

    // Name of the archetype `object` was made from.
    static std::string ArchetypeOf(const GameObject* object)
    {
        return Engine::ArchetypeManager::Get().GetArchetypeName(object->GetArchetype());
    }
    // The placed objects of `room` made from the archetype `name`.
    static int CountPlaced(const Room& room, const std::string& name)
    {
        int count = 0;
        for (const GameObject* object : room.Objects.GetObjectList())
            count += ArchetypeOf(object) == name ? 1 : 0;
        return count;
    }

    TempFolder m_Temp;
    ScopedDataDirectory m_Data{m_Temp.Path()};
    LuaSystem m_Lua;
    std::vector<std::unique_ptr<Room>> m_Rooms;
    std::map<std::string, std::string> m_Reports;
};
}

TEST_F(RoomFilesInDataTest, EveryRoomFileLoadsWithoutAReport)
{
    ASSERT_GE(m_Rooms.size(), 9u);
    for (const auto& [name, reports] : m_Reports)
        EXPECT_EQ(reports, "") << name;
    // Every placed object was made from a shipped archetype.
    for (const auto& room : m_Rooms)
        for (const GameObject* object : room->Objects.GetObjectList())
            EXPECT_NE(ArchetypeOf(object), "") << room->GetName();
    for (const auto& room : m_Rooms)
    {
        EXPECT_EQ(room->m_GridSize.x, kTileSize) << room->GetName();
        EXPECT_EQ(room->m_GridSize.y, kTileSize) << room->GetName();
        // Written again, a room gives its file back: the files are in the engine's own form.
        std::ifstream in(room->m_FilePath);
        std::stringstream text;
        text << in.rdbuf();
        EXPECT_EQ(room->ToText(), text.str()) << room->GetName();
    }
}

TEST_F(RoomFilesInDataTest, EveryRoomIsARectangleOfTilesRingedByWallWithFloorInside)
{
    for (const auto& room : m_Rooms)
    {
        const auto& grid = room->RoomFloor.RoomVec;
        SCOPED_TRACE(room->GetName());
        ASSERT_FALSE(grid.empty());
        const std::size_t width = grid[0].size();
        const std::size_t height = grid.size();
        EXPECT_GE(width, 12u);
        EXPECT_LE(width, 30u);
        EXPECT_GE(height, 10u);
        EXPECT_LE(height, 24u);
        int floors = 0;
        for (std::size_t row = 0; row < height; ++row)
        {
            ASSERT_EQ(grid[row].size(), width) << "row " << row;
            for (std::size_t column = 0; column < width; ++column)
            {
                const int tile = grid[row][column];
                EXPECT_TRUE(tile >= 0 && tile <= 3) << "tile " << column << ", " << row;
                if (row == 0 || column == 0 || row + 1 == height || column + 1 == width)
                {
                    EXPECT_EQ(tile, 0) << "edge tile " << column << ", " << row;
                }
                floors += tile == 1 ? 1 : 0;
            }
        }
        EXPECT_GT(floors, 0);
    }
}

TEST_F(RoomFilesInDataTest, EveryPlacedObjectStandsOverAFloorTileAboveTheFloor)
{
    for (const auto& room : m_Rooms)
    {
        const auto& grid = room->RoomFloor.RoomVec;
        const float width = static_cast<float>(grid.at(0).size());
        const float height = static_cast<float>(grid.size());
        for (const GameObject* object : room->Objects.GetObjectList())
        {
            const Math::Point3D position = object->GetComponent<Transform>()->m_Position;
            // The tile whose floor box the room build centres at ((column - width / 2) * size,
            // (row - height / 2) * size): the boxes are laid over the grid with its ring of wall.
            const float column = position.x / room->m_GridSize.x + width * 0.5f;
            const float row = position.z / room->m_GridSize.y + height * 0.5f;
            SCOPED_TRACE(room->GetName() + ": " + ArchetypeOf(object) + " at " + std::to_string(position.x) + ", " +
                         std::to_string(position.z));
            EXPECT_FLOAT_EQ(column, std::round(column));
            EXPECT_FLOAT_EQ(row, std::round(row));
            const int c = static_cast<int>(std::round(column));
            const int r = static_cast<int>(std::round(row));
            ASSERT_TRUE(r >= 0 && r < static_cast<int>(height) && c >= 0 && c < static_cast<int>(width));
            EXPECT_EQ(grid[r][c], 1);
            EXPECT_GT(position.y, kFloorTop);
        }
    }
}

TEST_F(RoomFilesInDataTest, EveryRoomHasOnePlayerStartOneExitAndFoesToFight)
{
    for (const auto& room : m_Rooms)
    {
        SCOPED_TRACE(room->GetName());
        EXPECT_EQ(CountPlaced(*room, "Player"), 1);
        EXPECT_EQ(CountPlaced(*room, "Exit"), 1);
        EXPECT_GE(CountPlaced(*room, "EmberCrawler"), 1);
        EXPECT_GE(CountPlaced(*room, "KeyLight") + CountPlaced(*room, "EmberLight"), 1);
    }
}

TEST_F(RoomFilesInDataTest, DifficultiesRiseThroughEightRoomsToABossRoom)
{
    std::map<float, const Room*> byDifficulty;
    int bossRooms = 0;
    for (const auto& room : m_Rooms)
    {
        if (room->m_BossRoom)
        {
            ++bossRooms;
            continue;
        }
        EXPECT_TRUE(byDifficulty.emplace(room->m_Difficulty, room.get()).second)
            << room->GetName() << " shares its difficulty";
    }
    EXPECT_GE(bossRooms, 1);
    ASSERT_GE(byDifficulty.size(), 8u);
    // Harder rooms hold more foes (never fewer) and deeper pits (never shallower).
    const Room* easier = nullptr;
    for (const auto& [difficulty, room] : byDifficulty)
    {
        if (easier)
        {
            EXPECT_GE(CountPlaced(*room, "EmberCrawler"), CountPlaced(*easier, "EmberCrawler")) << room->GetName();
            EXPECT_GE(room->m_PitDepth, easier->m_PitDepth) << room->GetName();
        }
        easier = room;
    }
    EXPECT_GT(CountPlaced(*byDifficulty.rbegin()->second, "EmberCrawler"),
              CountPlaced(*byDifficulty.begin()->second, "EmberCrawler"));
}

TEST_F(RoomFilesInDataTest, BiomeListHoldsACaveAnIceAndALavaBiomeForEveryForcedBiome)
{
    RoomManager manager;
    ReportCapture reports;
    manager.LoadBiomes(VORN_DATA_DIR "/Biomes.txt");
    EXPECT_EQ(reports.Text(), "");
    std::set<std::string> mains;
    for (const auto& [name, biome] : manager.m_Biomes)
    {
        for (const char* main : {"Cave", "Ice", "Lava"})
            if (name.rfind(main, 0) == 0)
                mains.insert(main);
        // Every biome has a tint of its own, not the grey of a missing list.
        EXPECT_NE(biome.m_RoomColor, Math::Color(0.5f, 0.5f, 0.5f, 1.0f)) << name;
        EXPECT_EQ(biome.m_RoomColor.a, 1.0f) << name;
    }
    EXPECT_EQ(mains, (std::set<std::string>{"Cave", "Ice", "Lava"}));
    for (const auto& room : m_Rooms)
    {
        if (room->m_BiomeOverride.empty())
            continue;
        bool found = false;
        for (const auto& [name, biome] : manager.m_Biomes)
            found = found || name.rfind(room->m_BiomeOverride, 0) == 0;
        EXPECT_TRUE(found) << room->GetName() << " forces " << room->m_BiomeOverride;
    }
}
