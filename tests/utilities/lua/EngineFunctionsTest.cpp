// Engine functions that scripts call by global name.
#include "utilities/lua/EngineFunctions.h"

#include "engine/Files.h"
#include "engine/PerformanceData.h"
#include "engine/Settings.h"
#include "sound/SoundSystem.h"
#include "utilities/lua/LuaTestSupport.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{
using EngineFunctionsTest = LuaTest;
}

TEST_F(EngineFunctionsTest, SaveSettingsWritesTheSettingsFile)
{
    // The sound system adds the volume settings.
    SoundSystem::Get();
    const std::string path = Settings::GetPath();
    std::filesystem::remove(path);
    Run("SaveSettings()");
    std::ifstream file(path);
    ASSERT_TRUE(file.is_open()) << path;
    std::stringstream text;
    text << file.rdbuf();
    EXPECT_NE(text.str().find("MusicVolume"), std::string::npos) << text.str();
}

TEST_F(EngineFunctionsTest, PerformanceDataDumpLogsEachTimer)
{
    PerformanceData& timers = PerformanceData::Get();
    timers.Start("ScriptVisibleTimer");
    timers.Stop();
    StdoutCapture output;
    Run("PerformanceDataDump()");
    EXPECT_NE(output.Text().find("[Performance] ScriptVisibleTimer (Usage: "), std::string::npos) << output.Text();
}
