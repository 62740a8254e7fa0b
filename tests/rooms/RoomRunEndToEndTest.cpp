// Runs the built game headless on the shipped data with a short time per room
// and reads the line the play state prints for each room it enters: a run
// goes through the rooms at rising difficulty, ends in the boss room and goes
// back to the title.

#include "support/HeadlessGame.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace
{
// One line "Emberfallow: room <name>, biome <biome>, difficulty <d>".
struct EnteredRoom
{
    std::string name;
    std::string biome;
    float difficulty = 0.0f;
};

class RoomRunEndToEndTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_AppData = std::filesystem::temp_directory_path() /
                    ("vorn_rooms_e2e_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(m_AppData);
    }
    void TearDown() override { std::filesystem::remove_all(m_AppData); }

    // Runs the game headless on the shipped data with `arguments` and `environment` ("NAME=value
    // ..."); returns what it printed, and its exit code in `exitCode`.
    std::string RunGame(const std::string& arguments, const std::string& environment, int& exitCode)
    {
        const HeadlessGameRun run =
            RunHeadlessGame(arguments + " --datadir=\"" VORN_DATA_DIR "\"", m_AppData, environment);
        exitCode = run.exitCode;
        return run.output;
    }

    // The rooms entered, in the order of the printed lines.
    static std::vector<EnteredRoom> RoomsEntered(const std::string& output)
    {
        static const std::regex line("Emberfallow: room (\\S+), biome (\\S*), difficulty ([0-9.]+)");
        std::vector<EnteredRoom> rooms;
        for (auto it = std::sregex_iterator(output.begin(), output.end(), line); it != std::sregex_iterator(); ++it)
            rooms.push_back({(*it)[1], (*it)[2], std::stof((*it)[3])});
        return rooms;
    }

    std::filesystem::path m_AppData;
};
}

TEST_F(RoomRunEndToEndTest, RunGoesThroughRoomsOfRisingDifficultyToTheBossRoomAndBackToTheTitle)
{
    // The title starts a run after 3 seconds; a room lasts a quarter of a second: the whole run
    // of eight rooms and the boss fits in 400 frames.
    int exitCode = -1;
    const std::string output = RunGame("--frames=400 --seed=5489", "EMBERFALLOW_ROOM_SECONDS=0.25", exitCode);
    EXPECT_EQ(exitCode, 0) << output;
    EXPECT_EQ(output.find("Lua Error"), std::string::npos) << output;
    EXPECT_EQ(output.find("does not exist"), std::string::npos) << output;

    const std::vector<EnteredRoom> rooms = RoomsEntered(output);
    ASSERT_GE(rooms.size(), 9u) << output;
    for (std::size_t i = 0; i < 9; ++i)
    {
        SCOPED_TRACE(rooms[i].name);
        // One more difficulty a room, never the same room twice in a row, each in a biome of the list.
        EXPECT_EQ(rooms[i].difficulty, static_cast<float>(i + 1));
        if (i > 0)
        {
            EXPECT_NE(rooms[i].name, rooms[i - 1].name);
        }
        EXPECT_TRUE(rooms[i].biome.rfind("Cave", 0) == 0 || rooms[i].biome.rfind("Ice", 0) == 0 ||
                    rooms[i].biome.rfind("Lava", 0) == 0);
        // The boss's arena comes only at the end.
        if (i < 8)
        {
            EXPECT_NE(rooms[i].name, "WardenArena");
        }
    }
    // The first room is the easiest.
    EXPECT_EQ(rooms[0].name, "EmberHall");
    // The ninth room is the boss's arena, in its forced biome; then the run is over.
    EXPECT_EQ(rooms[8].name, "WardenArena");
    EXPECT_EQ(rooms[8].biome.rfind("Lava", 0), 0u) << rooms[8].biome;
    const std::size_t boss = output.find("Emberfallow: room WardenArena");
    EXPECT_NE(output.find("Emberfallow: title.", boss), std::string::npos) << output;
}
