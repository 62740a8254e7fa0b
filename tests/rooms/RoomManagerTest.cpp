// The room manager: which room and biome come next, the recently-used list,
// and loading and reloading rooms and biomes from their files.

#include "rooms/RoomManager.h"

#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "engine/Random.h"
#include "rooms/Room.h"
#include "support/ReportCapture.h"
#include "support/TempFolder.h"
#include "utilities/lua/LuaTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <sstream>

namespace
{
class RoomManagerTest : public testing::Test
{
protected:
    void SetUp() override { Util::Random::Seed(5489); }
    void TearDown() override { m_Manager.Clear(); }

    // Adds a room called `name` as LoadRoom would, without a file.
    Room* AddRoom(const std::string& name, float difficulty, bool boss = false)
    {
        auto* room = new Room();
        room->m_Name = name;
        room->m_Difficulty = difficulty;
        room->m_BossRoom = boss;
        m_Manager.m_Rooms.push_back(room);
        m_Manager.m_RoomIndex[name] = static_cast<int>(m_Manager.m_Rooms.size());
        return room;
    }
    // The names of `rooms`, in order.
    static std::vector<std::string> Names(const std::vector<Room*>& rooms)
    {
        std::vector<std::string> names;
        for (const Room* room : rooms)
            names.push_back(room->GetName());
        return names;
    }
    // A room file with a difficulty and a grid of one floor tile.
    static std::string RoomText(float difficulty)
    {
        std::ostringstream text;
        text << "{\n  Difficulty " << difficulty << "\n  RoomFloor {\n  0 0 0\n  0 1 0\n  0 0 0\n  }\n}\n";
        return text.str();
    }

    RoomManager m_Manager;
};

// Sets a file's modification time `seconds` ahead of now, so the watcher sees a change at once.
void TouchAhead(const std::string& path, int seconds)
{
    std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() +
                                               std::chrono::seconds(seconds));
}
}

TEST_F(RoomManagerTest, RoomsCloserThanOneAndAHalfJoinTheCandidatesWithoutDisplacingThem)
{
    AddRoom("One", 1.0f);
    AddRoom("Two", 2.0f);
    AddRoom("Three", 3.0f);
    m_Manager.m_Difficulty = 2.0f;
    EXPECT_EQ(Names(m_Manager.GetCandidates(false)), (std::vector<std::string>{"One", "Two", "Three"}));
}

TEST_F(RoomManagerTest, ARoomCloserByOneAndAHalfOrMoreDisplacesTheCandidates)
{
    AddRoom("Easy", 0.0f);
    AddRoom("Hard", 5.0f);
    m_Manager.m_Difficulty = 5.0f;
    EXPECT_EQ(Names(m_Manager.GetCandidates(false)), std::vector<std::string>{"Hard"});
}

TEST_F(RoomManagerTest, ABossRoomNeverComesFromTheDifficultyPick)
{
    AddRoom("Boss", 2.0f, true);
    AddRoom("Far", 9.0f);
    m_Manager.m_Difficulty = 2.0f;
    m_Manager.m_RoomsUntilBoss = 100;
    for (int pick = 0; pick < 50; ++pick)
    {
        m_Manager.ClearOldRooms();
        m_Manager.PickRoom();
        ASSERT_NE(m_Manager.GetCurrentRoom(), nullptr);
        EXPECT_EQ(m_Manager.GetCurrentRoom()->GetName(), "Far");
    }
}

TEST_F(RoomManagerTest, TheBossRoomComesWhenTheRoomCountIsReachedAndIsNotRemembered)
{
    AddRoom("Near", 2.0f);
    Room* boss = AddRoom("Boss", 40.0f, true);
    m_Manager.m_Difficulty = 2.0f;
    m_Manager.SetRoomsUntilBoss(1);
    m_Manager.PickRoom();
    EXPECT_EQ(m_Manager.GetCurrentRoom()->GetName(), "Near");
    m_Manager.IncrementRoomCount();
    m_Manager.PickRoom();
    EXPECT_EQ(m_Manager.GetCurrentRoom(), boss);
    EXPECT_EQ(m_Manager.m_OldRooms.size(), 1u);
}

TEST_F(RoomManagerTest, SetBiomeHoldsForOneMainBiomePickThenTheNextDrawsAgain)
{
    m_Manager.SetBiome("Swamp");
    m_Manager.PickRandomMainBiome();
    EXPECT_EQ(m_Manager.m_MainBiome, "Swamp");
    EXPECT_FALSE(m_Manager.m_MainBiomeForced);
    m_Manager.PickRandomMainBiome();
    EXPECT_TRUE(m_Manager.m_MainBiome == "Cave" || m_Manager.m_MainBiome == "Ice" || m_Manager.m_MainBiome == "Lava")
        << m_Manager.m_MainBiome;
}

TEST_F(RoomManagerTest, MainBiomeDrawsCoverCaveIceAndLava)
{
    std::set<std::string> drawn;
    for (int pick = 0; pick < 60; ++pick)
    {
        m_Manager.PickRandomMainBiome();
        drawn.insert(m_Manager.m_MainBiome);
    }
    EXPECT_EQ(drawn, (std::set<std::string>{"Cave", "Ice", "Lava"}));
}

TEST_F(RoomManagerTest, TheBiomeIsDrawnAmongNamesThatBeginWithTheMainBiome)
{
    for (const char* name : {"Cave", "CaveDeep", "Ice", "Lava", "LavaAsh", "ACave"})
        m_Manager.m_Biomes[name];
    m_Manager.m_MainBiome = "Cave";
    std::set<std::string> drawn;
    for (int pick = 0; pick < 60; ++pick)
    {
        m_Manager.PickRandomBiome();
        drawn.insert(m_Manager.GetCurrentBiomeName());
    }
    EXPECT_EQ(drawn, (std::set<std::string>{"Cave", "CaveDeep"}));
}

TEST_F(RoomManagerTest, AChosenBiomeSkipsOneBiomeDrawAndIsCleared)
{
    m_Manager.m_Biomes["Ice"];
    m_Manager.m_MainBiome = "Ice";
    m_Manager.m_CurrentBiome = "Kept";
    m_Manager.m_BiomeChosen = true;
    m_Manager.PickRandomBiome();
    EXPECT_EQ(m_Manager.GetCurrentBiomeName(), "Kept");
    EXPECT_FALSE(m_Manager.m_BiomeChosen);
    m_Manager.PickRandomBiome();
    EXPECT_EQ(m_Manager.GetCurrentBiomeName(), "Ice");
}

TEST_F(RoomManagerTest, BiomeColourIsOpaqueBlackForAnUnknownBiome)
{
    m_Manager.m_Biomes["Ice"].m_RoomColor = Math::Color(0.2f, 0.4f, 0.9f, 1.0f);
    m_Manager.m_CurrentBiome = "Ice";
    EXPECT_FLOAT_EQ(m_Manager.GetBiomeColor().b, 0.9f);
    m_Manager.m_CurrentBiome = "Nowhere";
    const Math::Color black = m_Manager.GetBiomeColor();
    EXPECT_EQ(black.r + black.g + black.b, 0.0f);
    EXPECT_EQ(black.a, 1.0f);
}

TEST_F(RoomManagerTest, ARoomDoesNotComeBackWithinThreePicks)
{
    for (const char* name : {"A", "B", "C", "D", "E"})
        AddRoom(name, 1.0f);
    m_Manager.m_Difficulty = 1.0f;
    m_Manager.m_RoomsUntilBoss = -1;
    std::vector<std::string> picked;
    for (int pick = 0; pick < 40; ++pick)
    {
        m_Manager.PickRoom();
        picked.push_back(m_Manager.GetCurrentRoom()->GetName());
        EXPECT_LE(m_Manager.m_OldRooms.size(), 3u);
    }
    for (std::size_t i = 1; i < picked.size(); ++i)
        for (std::size_t back = 1; back <= 3 && back <= i; ++back)
            EXPECT_NE(picked[i], picked[i - back]) << "pick " << i;
}

TEST_F(RoomManagerTest, TheOldRoomListTakesFourByNameAndFiveWhenAPickFollows)
{
    for (const char* name : {"A", "B", "C", "D", "E", "F"})
        AddRoom(name, 1.0f);
    m_Manager.m_RoomsUntilBoss = -1;
    for (const char* name : {"A", "B", "C", "D", "E", "Nowhere"})
        m_Manager.AddToOldRoomList(name);
    ASSERT_EQ(m_Manager.m_OldRooms.size(), 4u);
    EXPECT_EQ(m_Manager.m_OldRooms.front()->GetName(), "B");
    m_Manager.PickRoom();
    EXPECT_EQ(m_Manager.GetCurrentRoom()->GetName(), "F");
    EXPECT_EQ(m_Manager.m_OldRooms.size(), 5u);
    m_Manager.ClearOldRooms();
    EXPECT_TRUE(m_Manager.m_OldRooms.empty());
}

TEST_F(RoomManagerTest, APickWithEveryRoomRecentKeepsTheCurrentRoom)
{
    Room* only = AddRoom("Only", 1.0f);
    m_Manager.m_RoomsUntilBoss = -1;
    m_Manager.PickRoom();
    EXPECT_EQ(m_Manager.GetCurrentRoom(), only);
    m_Manager.PickRoom();
    EXPECT_EQ(m_Manager.GetCurrentRoom(), only);
}

TEST_F(RoomManagerTest, RandomRoomDiffersFromTheCurrentAndDoesNothingWithOneRoom)
{
    Room* first = AddRoom("First", 1.0f);
    m_Manager.m_CurrentRoom = first;
    m_Manager.PickRandomRoom();
    EXPECT_EQ(m_Manager.GetCurrentRoom(), first);
    AddRoom("Second", 1.0f);
    AddRoom("Third", 1.0f);
    for (int pick = 0; pick < 20; ++pick)
    {
        Room* before = m_Manager.GetCurrentRoom();
        m_Manager.PickRandomRoom();
        EXPECT_NE(m_Manager.GetCurrentRoom(), before);
    }
    RoomManager empty;
    empty.PickRandomRoom();
    EXPECT_EQ(empty.GetCurrentRoom(), nullptr);
}

TEST_F(RoomManagerTest, AnUnknownRoomNameGivesTheDialogAndKeepsTheCurrentRoom)
{
    Room* first = AddRoom("First", 1.0f);
    m_Manager.SetCurrentRoom("First");
    EXPECT_EQ(m_Manager.GetCurrentRoom(), first);
    ReportCapture reports;
    m_Manager.SetCurrentRoom("Attic");
    EXPECT_TRUE(reports.Holds("The room \"Attic\" doesn't exist!"));
    EXPECT_TRUE(reports.Holds("RoomManager::SetCurrentRoom"));
    EXPECT_TRUE(reports.Holds("RoomManager.cpp"));
    EXPECT_EQ(m_Manager.GetCurrentRoom(), first);
}

TEST_F(RoomManagerTest, AMissingBiomeFileGivesTheSingleGreyCave)
{
    TempFolder folder;
    m_Manager.m_Biomes["Old"];
    m_Manager.LoadBiomes(folder.Path() + "Biomes.txt");
    ASSERT_EQ(m_Manager.m_Biomes.size(), 1u);
    const Math::Color grey = m_Manager.m_Biomes.at("Cave").m_RoomColor;
    EXPECT_FLOAT_EQ(grey.r, 0.5f);
    EXPECT_FLOAT_EQ(grey.g, 0.5f);
    EXPECT_FLOAT_EQ(grey.b, 0.5f);
    EXPECT_FLOAT_EQ(grey.a, 1.0f);
}

TEST_F(RoomManagerTest, BiomesAreReadByNameInAlphabeticalOrder)
{
    TempFolder folder;
    const std::string path = folder.Write("Biomes.txt", "Lava\n{\n  RoomColor { 229.5 76.5 25.5 255 }\n}\n"
                                                        "Cave\n{\n  RoomColor { 127 115 102 255 }\n}\n"
                                                        "Ice\n{\n  RoomColor { 153 204 255 255 }\n}\n");
    m_Manager.LoadBiomes(path);
    std::vector<std::string> names;
    for (const auto& entry : m_Manager.m_Biomes)
        names.push_back(entry.first);
    EXPECT_EQ(names, (std::vector<std::string>{"Cave", "Ice", "Lava"}));
    EXPECT_NEAR(m_Manager.m_Biomes.at("Lava").m_RoomColor.r, 0.9f, 0.005f);
    EXPECT_NEAR(m_Manager.m_Biomes.at("Ice").m_RoomColor.g, 0.8f, 0.005f);
}

TEST_F(RoomManagerTest, LoadReadsBiomesAndEveryRoomAndSelectsTheFirstRoom)
{
    TempFolder folder;
    ScopedDataDirectory data(folder.Path());
    folder.Write("Biomes.txt", "Ice\n{\n  RoomColor { 0.6 0.8 1 1 }\n}\nCave\n{\n}\n");
    folder.Write("Rooms/Alpha.txt", RoomText(1.0f));
    folder.Write("Rooms/Beta.txt", RoomText(2.0f));
    folder.Write("Rooms/notes.md", "not a room");
    m_Manager.Load();
    EXPECT_EQ(m_Manager.GetCurrentBiomeName(), "Cave");
    ASSERT_EQ(m_Manager.m_Rooms.size(), 2u);
    EXPECT_EQ(m_Manager.m_RoomIndex.at("Beta"), 2);
    EXPECT_EQ(m_Manager.m_RoomPaths.at("Alpha"), folder.Path() + "Rooms/Alpha.txt");
    ASSERT_NE(m_Manager.GetCurrentRoom(), nullptr);
    EXPECT_EQ(m_Manager.GetCurrentRoom()->GetName(), "Alpha");
    EXPECT_FLOAT_EQ(m_Manager.FindRoom("Beta")->m_Difficulty, 2.0f);
}

TEST_F(RoomManagerTest, AnEditedRoomFileReplacesTheRoomAndTheCurrentRoomFollows)
{
    TempFolder folder;
    ScopedDataDirectory data(folder.Path());
    const std::string path = folder.Write("Rooms/Alpha.txt", RoomText(1.0f));
    m_Manager.Load();
    FileWatcher::Get().Update(0.016f);
    Room* before = m_Manager.GetCurrentRoom();
    m_Manager.AddToOldRoomList("Alpha");

    folder.Write("Rooms/Alpha.txt", RoomText(7.0f));
    TouchAhead(path, 5);
    FileWatcher::Get().Poll();
    FileWatcher::Get().Update(0.016f);

    ASSERT_EQ(m_Manager.m_Rooms.size(), 1u);
    Room* after = m_Manager.GetCurrentRoom();
    ASSERT_NE(after, nullptr);
    EXPECT_NE(after, before);
    EXPECT_EQ(after, m_Manager.m_Rooms[0]);
    EXPECT_FLOAT_EQ(after->m_Difficulty, 7.0f);
    EXPECT_EQ(m_Manager.m_OldRooms.front(), after);
}

TEST_F(RoomManagerTest, AnEditedBiomeFileIsReadAgain)
{
    TempFolder folder;
    ScopedDataDirectory data(folder.Path());
    const std::string path = folder.Write("Biomes.txt", "Cave\n{\n  RoomColor { 25 25 25 255 }\n}\n");
    m_Manager.Load();
    FileWatcher::Get().Update(0.016f);
    folder.Write("Biomes.txt", "Cave\n{\n  RoomColor { 178.5 25 25 255 }\n}\nIce\n{\n}\n");
    TouchAhead(path, 5);
    FileWatcher::Get().Poll();
    FileWatcher::Get().Update(0.016f);
    EXPECT_EQ(m_Manager.m_Biomes.size(), 2u);
    EXPECT_NEAR(m_Manager.m_Biomes.at("Cave").m_RoomColor.r, 0.7f, 0.005f);
}

// One seed, one run: the same rooms and biomes in the same order. The sequence is printed so a
// change of it shows in the test's output.
TEST_F(RoomManagerTest, AFixedSeedGivesTheSameRoomsAndBiomesOnEveryRun)
{
    for (const char* name : {"Cave", "CaveDeep", "Ice", "IceBlue", "Lava", "LavaAsh"})
        m_Manager.m_Biomes[name];
    for (int difficulty = 1; difficulty <= 8; ++difficulty)
        AddRoom("Room" + std::to_string(difficulty), static_cast<float>(difficulty));
    AddRoom("Extra", 2.5f);
    AddRoom("Boss", 9.0f, true);

    auto run = [this](std::uint32_t seed) {
        Util::Random::Seed(seed);
        m_Manager.ClearOldRooms();
        m_Manager.m_CurrentRoomCount = 0;
        m_Manager.SetRoomsUntilBoss(8);
        std::string sequence;
        for (int room = 0; room <= 8; ++room)
        {
            m_Manager.m_Difficulty = 1.0f + static_cast<float>(room);
            m_Manager.PickRandomMainBiome();
            m_Manager.PickRoom();
            m_Manager.PickRandomBiome();
            sequence += m_Manager.GetCurrentRoom()->GetName() + "/" + m_Manager.GetCurrentBiomeName() + " ";
            m_Manager.IncrementRoomCount();
        }
        return sequence;
    };
    const std::string first = run(2026);
    std::printf("Rooms of seed 2026: %s\n", first.c_str());
    EXPECT_EQ(run(2026), first);
    EXPECT_NE(run(7), first);
    EXPECT_NE(first.find("Boss/"), std::string::npos);
    EXPECT_EQ(first.find("Boss/"), first.rfind(' ', first.size() - 2) + 1);
}
