// Runs the built Game binary headless, as a user or CI would, and checks what it leaves behind.
#include "platform/ImageDecoder.h"
#include "support/HeadlessGame.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

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

    // Starts the game with `arguments`, headless, writing into a fresh application data folder;
    // error dialogs get `answer`; `environment` ("NAME=value ...") goes before the command.
    GameRun RunGame(const std::string& arguments, const std::string& answer = "abort",
                    const std::string& environment = "")
    {
        const HeadlessGameRun run = RunHeadlessGame(arguments, m_AppData, environment, answer);
        return {run.exitCode, run.output};
    }

    std::string ReadLog() const { return ReadFile(m_AppData / "GameLog.log"); }

    // Every crash report in the dump folder.
    std::vector<std::string> ReadReports() const
    {
        std::vector<std::string> reports;
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(m_AppData / "MiniDumps", error))
            if (entry.path().filename().string().rfind("MiniDump--", 0) == 0 && entry.path().extension() == ".dmp")
                reports.push_back(ReadFile(entry.path()));
        return reports;
    }

    static std::string ReadFile(const std::filesystem::path& path)
    {
        std::ifstream in(path);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    std::filesystem::path m_AppData;
};
}

TEST_F(GameEndToEndTest, HeadlessRunEndsAfterTheAskedFramesAndWritesTheLog)
{
    const GameRun run = RunGame("--frames=12 --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_TRUE(std::filesystem::exists(m_AppData / "GameLog.log")) << run.output;
    EXPECT_NE(ReadLog().find("Frames run: 12\n"), std::string::npos) << ReadLog();
}

TEST_F(GameEndToEndTest, UnknownOptionIsPrintedAndTheGameRuns)
{
    const GameRun run = RunGame("--frames=03 --NoSuchThing=1 --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Unknown command line arg: \"nosuchthing\""), std::string::npos) << run.output;
    EXPECT_NE(ReadLog().find("Frames run: 3\n"), std::string::npos) << ReadLog();
}

TEST_F(GameEndToEndTest, MissingDataDirectoryIsReportedAndTheGameRunsOn)
{
    // Without data there is no game state either: that is reported too, and the frames run on.
    const GameRun run = RunGame("--frames=04 --datadir=/no/such/data/dir", "ignore");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Invalid game state!"), std::string::npos) << run.output;
    const std::string log = ReadLog();
    EXPECT_NE(log.find("Data directory not found: \"/no/such/data/dir/\""), std::string::npos) << log;
    EXPECT_NE(log.find("Frames run: 4\n"), std::string::npos) << log;
}

TEST_F(GameEndToEndTest, DataDirectoryWrittenWithBackslashesIsFound)
{
    // The test data folder, relative to the game's working folder, spelt with '\\'.
    std::string relative =
        std::filesystem::relative(VORN_TEST_DATA_DIR "/MinimalData", std::filesystem::path(VORN_GAME_PATH).parent_path())
            .string();
    std::replace(relative.begin(), relative.end(), '/', '\\');
    ASSERT_EQ(relative.rfind("..\\", 0), 0u) << relative;
    const GameRun run = RunGame("--frames=02 --datadir='" + relative + "'");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    const std::string log = ReadLog();
    EXPECT_EQ(log.find("Data directory not found"), std::string::npos) << log;

    const GameRun missing = RunGame("--frames=02 --datadir='..\\No\\Such'", "ignore");
    EXPECT_EQ(missing.exitCode, 0) << missing.output;
    EXPECT_NE(ReadLog().find("Data directory not found: \"../No/Such/\""), std::string::npos) << ReadLog();
}

TEST_F(GameEndToEndTest, FirstRunWritesTheSettingsFileWithDefaults)
{
    const GameRun run = RunGame("--frames=02 --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    const std::string settings = ReadFile(m_AppData / "Settings.txt");
    EXPECT_NE(settings.find("  MusicVolume 0.4\n"), std::string::npos) << settings;
    EXPECT_NE(settings.find("  EffectsMute false\n"), std::string::npos) << settings;
}

TEST_F(GameEndToEndTest, BrokenSettingsFileRunsWithDefaultsAndIsRewrittenWithoutUnknownNames)
{
    std::filesystem::create_directories(m_AppData);
    std::ofstream(m_AppData / "Settings.txt") << "{\n  Ghost 7\n  OldBlock\n  {\n    Size 3\n  }\n"
                                                 "  MusicVolume 0.25\n  EffectsVolume loud\n  MusicMute true\n}\n";
    const GameRun run = RunGame("--frames=03 --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"", "ignore");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Failed to read member.  Make sure to define all members for the member.\nMember: "
                              "EffectsVolume"),
              std::string::npos)
        << run.output;
    EXPECT_NE(ReadLog().find("Frames run: 3\n"), std::string::npos);
    const std::string settings = ReadFile(m_AppData / "Settings.txt");
    EXPECT_EQ(settings, "{\n  MusicVolume 0.25\n  EffectsVolume 0.6\n  MusicMute false\n  EffectsMute false\n}\n");
}

TEST_F(GameEndToEndTest, CrashWritesAReportThatNamesTheCrashingFunction)
{
    const GameRun run = RunGame("--CrashTest --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"");
    EXPECT_NE(run.exitCode, 0) << run.output;
    std::string report;
    for (const auto& entry : std::filesystem::directory_iterator(m_AppData / "MiniDumps"))
        if (entry.path().filename().string().rfind("MiniDump--", 0) == 0 && entry.path().extension() == ".dmp")
            report = ReadFile(entry.path());
    ASSERT_FALSE(report.empty()) << run.output;
    EXPECT_NE(report.find("SIGSEGV"), std::string::npos) << report;
    EXPECT_NE(report.find("Address: 0x10"), std::string::npos) << report;
    EXPECT_NE(report.find("CrashOnPurpose"), std::string::npos) << report;
    EXPECT_NE(report.find("End of report\n"), std::string::npos) << report;
}

TEST_F(GameEndToEndTest, CrashFlushesTheLogWithANoteOfTheReport)
{
    const GameRun run = RunGame("--CrashTest --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"");
    EXPECT_NE(run.exitCode, 0) << run.output;
    const std::string log = ReadLog();
    EXPECT_NE(log.find("[Info] Crashing on purpose (--CrashTest)."), std::string::npos) << log;
    EXPECT_NE(log.find("[FATAL] The game crashed. Crash report: " + (m_AppData / "MiniDumps").string() + "/MiniDump--"),
              std::string::npos)
        << log;
}

TEST_F(GameEndToEndTest, TwoThreadsCrashingAtOnceStillWriteOneCompleteReport)
{
    // --frames ends a run whose crash never comes.
    const GameRun run = RunGame("--frames=30 --CrashTest=TwoThreads --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"");
    EXPECT_NE(run.exitCode, 0) << run.output;
    const std::vector<std::string> reports = ReadReports();
    ASSERT_EQ(reports.size(), 1u) << run.output;
    const std::string& report = reports.front();
    EXPECT_NE(report.find("SIGSEGV"), std::string::npos) << report;
    EXPECT_NE(report.find("CrashOnPurposeOnThread"), std::string::npos) << report;
    EXPECT_NE(report.find("End of report\n"), std::string::npos) << report;
}

TEST_F(GameEndToEndTest, StackOverflowOnAnEngineThreadStillWritesAReport)
{
    // Without the sanitizer's own signal stacks, only the engine's can carry the report.
    const GameRun run =
        RunGame("--frames=30 --CrashTest=ThreadStackOverflow --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"", "abort",
                "ASAN_OPTIONS=\"${ASAN_OPTIONS:+$ASAN_OPTIONS:}use_sigaltstack=0\"");
    EXPECT_NE(run.exitCode, 0) << run.output;
    const std::vector<std::string> reports = ReadReports();
    ASSERT_EQ(reports.size(), 1u) << run.output;
    const std::string& report = reports.front();
    EXPECT_NE(report.find("SIGSEGV"), std::string::npos) << report;
    EXPECT_NE(report.find("OverflowTheStack"), std::string::npos) << report;
    EXPECT_NE(report.find("End of report\n"), std::string::npos) << report;
}

TEST_F(GameEndToEndTest, ProfiledRunWritesTheProfileReport)
{
    const std::filesystem::path report =
        std::filesystem::path(VORN_GAME_PATH).parent_path() / "ProfileResults.csv";
    std::filesystem::remove(report);
    const GameRun run = RunGame("--profile --frames=05 --datadir=\"" VORN_TEST_DATA_DIR "/MinimalData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    const std::string text = ReadFile(report);
    std::filesystem::remove(report);
    EXPECT_EQ(text.rfind("sep=;\nFile;Function;Average Exclusive Time;", 0), 0u) << text;
    EXPECT_NE(text.find(";SpaceManager;"), std::string::npos) << text;
    EXPECT_NE(text.find(";5\n"), std::string::npos) << text;
}

TEST_F(GameEndToEndTest, LuaErrorsInEveryEntryPointArePrintedAndTheGameRunsOnUntilTheScriptEndsIt)
{
    // The frame limit is only a safety net: the debug script ends the run on its fifth frame.
    const GameRun run = RunGame("--frames=600 --datadir=\"" VORN_TEST_DATA_DIR "/LuaErrorData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Global.lua:2: Global.lua failed on purpose\n"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("GameInitialize.lua:4: event handler failed on purpose\n"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("after the event handler: false\n"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("GameInitialize.lua:16: coroutine failed on purpose\n"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("coroutine statuses: 1 error\n"), std::string::npos) << run.output;
    // A game state whose script doesn't compile is reported; the game runs in the other one.
    EXPECT_NE(run.output.find("Unfinished.lua:"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("GameInitialize.lua:21: InitializeGame failed on purpose\n"), std::string::npos)
        << run.output;
    std::size_t debugErrors = 0;
    for (std::size_t at = run.output.find("DebugUpdate failed on purpose"); at != std::string::npos;
         at = run.output.find("DebugUpdate failed on purpose", at + 1))
        ++debugErrors;
    EXPECT_EQ(debugErrors, 5u) << run.output;
    EXPECT_NE(ReadLog().find("Frames run: 5\n"), std::string::npos) << ReadLog();
}

TEST_F(GameEndToEndTest, ShippedScriptsRunWithoutALuaError)
{
    const GameRun run = RunGame("--frames=03 --datadir=\"" VORN_TEST_DATA_DIR "/../../Data\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output.find("Lua Error"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("Emberfallow: game initialized.\n"), std::string::npos) << run.output;
}

TEST_F(GameEndToEndTest, ScriptedStatesSwitchRestartAndQuitInTheRunLoopsOrder)
{
    // The frame limit is only a safety net: the second state quits the game itself.
    const GameRun run = RunGame("--frames=600 --datadir=\"" VORN_TEST_DATA_DIR "/StatesData\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    std::string calls;
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);)
        if (line.rfind("First ", 0) == 0 || line.rfind("Second ", 0) == 0)
            calls += line + ";";
    EXPECT_EQ(calls, "First Load;First Initialize;First Update 1;First Update 2;First Uninitialize;First Unload;"
                     "Second Load;Second Initialize 1;Second Update 1;Second Update 2;Second Uninitialize;"
                     "Second Initialize 2;Second Update 1;Second Uninitialize;Second Unload;");
    EXPECT_NE(ReadLog().find("Frames run: 5\n"), std::string::npos) << ReadLog();
}

TEST_F(GameEndToEndTest, HeadlessRunSavesTheAskedFrameAsAPngOfTheWindowSize)
{
    const std::filesystem::path picture = m_AppData / "frame.png";
    const GameRun run = RunGame("--frames=60 --screenshot=59 --screenshotpath=\"" + picture.string() +
                                "\" --datadir=\"" VORN_DATA_DIR "\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    ASSERT_TRUE(std::filesystem::exists(picture)) << run.output << ReadLog();
    // A PNG's size stands in its header: width and height, big-endian, from byte 16.
    const std::string bytes = ReadFile(picture);
    ASSERT_GE(bytes.size(), 24u);
    const auto word = [&](std::size_t at) {
        return (unsigned(std::uint8_t(bytes[at])) << 24) | (unsigned(std::uint8_t(bytes[at + 1])) << 16) |
               (unsigned(std::uint8_t(bytes[at + 2])) << 8) | unsigned(std::uint8_t(bytes[at + 3]));
    };
    EXPECT_EQ(bytes.substr(1, 3), "PNG");
    EXPECT_EQ(word(16), 1024u);
    EXPECT_EQ(word(20), 576u);
    EXPECT_NE(ReadLog().find("Frame 59 saved as"), std::string::npos) << ReadLog();
    EXPECT_NE(ReadLog().find("Graphics Hardware:"), std::string::npos);
}

// The first room as a headless run of the game with its own data leaves it at frame 59.
class FirstRoomEndToEndTest : public GameEndToEndTest
{
protected:
    Platform::DecodedImage Picture(const std::string& name, const std::string& options)
    {
        const std::filesystem::path picture = m_AppData.parent_path() / (m_AppData.filename().string() + name);
        m_Pictures.push_back(picture);
        const GameRun run = RunGame("--frames=60 --screenshot=59 --screenshotpath=\"" + picture.string() + "\" " +
                                    options + " --datadir=\"" VORN_DATA_DIR "\"");
        EXPECT_EQ(run.exitCode, 0) << run.output;
        EXPECT_EQ(run.output.find("Lua Error"), std::string::npos) << run.output;
        EXPECT_EQ(run.output.find("ERROR"), std::string::npos) << run.output;
        return Platform::DecodeImageFile(picture.string());
    }
    void TearDown() override
    {
        for (const auto& picture : m_Pictures)
            std::filesystem::remove(picture);
        GameEndToEndTest::TearDown();
    }
    static std::array<int, 3> PixelOf(const Platform::DecodedImage& image, int x, int y)
    {
        const std::size_t at = (static_cast<std::size_t>(y) * image.width + x) * 4;
        return {image.pixels[at], image.pixels[at + 1], image.pixels[at + 2]};
    }
    std::vector<std::filesystem::path> m_Pictures;
};

TEST_F(FirstRoomEndToEndTest, FirstRoomIsDrawnWithThePlayerInTheMiddleInItsMaterialColour)
{
    const Platform::DecodedImage image = Picture("first.png", "");
    ASSERT_TRUE(image.Valid()) << image.error;
    ASSERT_EQ(image.width, 1024);
    ASSERT_EQ(image.height, 576);
    // Not one colour: the floor's texture alone gives many.
    std::set<std::uint32_t> colours;
    for (std::size_t at = 0; at < image.pixels.size(); at += 4)
        colours.insert(image.pixels[at] | (image.pixels[at + 1] << 8) | (image.pixels[at + 2] << 16));
    EXPECT_GT(colours.size(), 100u);
    // The camera looks at the player's middle. Its material's diffuse colour (60, 150, 255), without
    // specular, under the room's grey global ambient (0.3) plus the material's ambient (0.2) and the
    // neutral key light, is that colour scaled by one factor: at least 0.5, and the hue kept.
    const std::array<int, 3> player = PixelOf(image, 512, 288);
    EXPECT_GE(player[2], 255 * 0.5 - 3);
    EXPECT_LT(player[2], 250) << "not clamped, so the hue can be compared";
    EXPECT_NEAR(static_cast<double>(player[0]) / player[2], 60.0 / 255.0, 0.03);
    EXPECT_NEAR(static_cast<double>(player[1]) / player[2], 150.0 / 255.0, 0.03);
}

TEST_F(FirstRoomEndToEndTest, FirstRoomLooksTheSameWhenLitByTheLightVolumePass)
{
    const Platform::DecodedImage compute = Picture("compute.png", "");
    const Platform::DecodedImage volumes = Picture("volumes.png", "--NoComputeLighting");
    ASSERT_TRUE(compute.Valid()) << compute.error;
    ASSERT_TRUE(volumes.Valid()) << volumes.error;
    ASSERT_EQ(compute.pixels.size(), volumes.pixels.size());
    std::size_t differing = 0;
    long long total = 0;
    for (std::size_t at = 0; at < compute.pixels.size(); ++at)
    {
        const int difference = std::abs(int(compute.pixels[at]) - int(volumes.pixels[at]));
        total += difference;
        differing += difference > 8 ? 1 : 0;
    }
    EXPECT_LT(static_cast<double>(total) / static_cast<double>(compute.pixels.size()), 1.0);
    EXPECT_LT(differing, compute.pixels.size() / 1000);
}

TEST_F(FirstRoomEndToEndTest, CratesDroppedInTheFirstRoomLandOnTheFloorAndTheirContactsArePrinted)
{
    const GameRun run = RunGame("--frames=120 --datadir=\"" VORN_DATA_DIR "\"");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output.find("Lua Error"), std::string::npos) << run.output;
    // The first crate lands on the floor plane: the normal points from the crate down to the floor.
    const std::size_t landing = run.output.find("met FloorPlaneCollision");
    ASSERT_NE(landing, std::string::npos) << run.output;
    const std::size_t line = run.output.rfind('\n', landing) + 1;
    EXPECT_EQ(run.output.compare(line, 18, "Collision: Crate ("), 0) << run.output.substr(line, 120);
    EXPECT_NE(run.output.find("normal (-0.00, -1.00, -0.00)", landing), std::string::npos) << run.output;
}
