// Runs the built Game binary headless, as a user or CI would, and checks what it leaves behind.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace
{
struct GameRun
{
    int exitCode = -1;
    std::string output;
};

class GameEndToEndTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_AppData = std::filesystem::temp_directory_path() /
                    ("vorn_e2e_" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
        std::filesystem::remove_all(m_AppData);
    }
    void TearDown() override { std::filesystem::remove_all(m_AppData); }

    // Starts the game with `arguments`, headless, writing into a fresh application data folder.
    GameRun RunGame(const std::string& arguments)
    {
        const std::string command = "cd \"" + std::filesystem::path(VORN_GAME_PATH).parent_path().string() +
                                    "\" && SDL_VIDEODRIVER=offscreen SDL_AUDIODRIVER=dummy VORN_DIALOG_ANSWER=abort "
                                    "VORN_APPDATA_DIR=\"" +
                                    m_AppData.string() + "\" \"" VORN_GAME_PATH "\" " + arguments + " 2>&1";
        GameRun run;
        FILE* pipe = popen(command.c_str(), "r");
        if (!pipe)
            return run;
        char buffer[4096];
        while (std::fgets(buffer, sizeof buffer, pipe))
            run.output += buffer;
        const int status = pclose(pipe);
        run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return run;
    }

    std::string ReadLog() const
    {
        std::ifstream in(m_AppData / "GameLog.log");
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    std::filesystem::path m_AppData;
};
}

TEST_F(GameEndToEndTest, HeadlessRunEndsAfterTheAskedFramesAndWritesTheLog)
{
    const GameRun run = RunGame("--frames=12 --datadir=\"" VORN_TEST_DATA_DIR "/EmptyData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_TRUE(std::filesystem::exists(m_AppData / "GameLog.log")) << run.output;
    EXPECT_NE(ReadLog().find("Frames run: 12\n"), std::string::npos) << ReadLog();
}

TEST_F(GameEndToEndTest, UnknownOptionIsPrintedAndTheGameRuns)
{
    const GameRun run = RunGame("--frames=03 --NoSuchThing=1 --datadir=\"" VORN_TEST_DATA_DIR "/EmptyData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Unknown command line arg: \"nosuchthing\""), std::string::npos) << run.output;
    EXPECT_NE(ReadLog().find("Frames run: 3\n"), std::string::npos) << ReadLog();
}

TEST_F(GameEndToEndTest, MissingDataDirectoryIsReportedAndTheGameRunsOn)
{
    const GameRun run = RunGame("--frames=04 --datadir=/no/such/data/dir");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    const std::string log = ReadLog();
    EXPECT_NE(log.find("Data directory not found: \"/no/such/data/dir/\""), std::string::npos) << log;
    EXPECT_NE(log.find("Frames run: 4\n"), std::string::npos) << log;
}
