// The game's banks as shipped in Data/Banks: they load without a report, every
// event the game's scripts play is there, and the music is heard.

#include "sound/SoundSpace.h"
#include "sound/SoundSystem.h"
#include "sound/SoundTestData.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace
{
// Every event name the shipped scripts play, from the literal names they pass to PlayMusic and
// PlayEffect: "Music/..." and "Effects/...".
std::set<std::string> EventsNamedByScripts()
{
    std::set<std::string> names;
    const std::regex pattern("\"((Music|Effects)/[A-Za-z0-9]+)\"");
    const std::string folders[] = {VORN_DATA_DIR "/LuaScripts", VORN_DATA_DIR "/Archetypes"};
    for (const std::string& folder : folders)
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        {
            if (!entry.is_regular_file())
                continue;
            std::ifstream file(entry.path());
            std::stringstream text;
            text << file.rdbuf();
            const std::string content = text.str();
            for (std::sregex_iterator it(content.begin(), content.end(), pattern), end; it != end; ++it)
                names.insert((*it)[1]);
        }
    return names;
}

// Opens the sound system on the shipped data, on the loopback device, for one scope.
class ShippedSound
{
public:
    ShippedSound() : m_OldData(Util::GetDataDirectory())
    {
        Util::SetDataDirectory(VORN_DATA_DIR "/");
        SoundSystem::Get().m_InitFlags = Studio::INIT_LOOPBACK;
        SoundSystem::Get().Initialize();
    }
    ~ShippedSound()
    {
        SoundSystem::Get().Shutdown();
        SoundSystem::Get().m_InitFlags = 0;
        Util::SetDataDirectory(m_OldData);
    }

private:
    std::string m_OldData;
};
}

TEST(SoundFilesInDataTest, TheShippedBanksLoadWithoutAReportAndHoldEveryEventTheScriptsPlay)
{
    ReportCapture reports;
    ShippedSound sound;
    EXPECT_EQ(reports.Text(), "");
    const std::set<std::string> named = EventsNamedByScripts();
    EXPECT_GE(named.size(), 5u);
    for (const std::string& name : named)
    {
        auto found = SoundSystem::Get().m_Descriptions.find(name);
        EXPECT_TRUE(found != SoundSystem::Get().m_Descriptions.end() && found->second) << name;
    }
    for (const char* name : {"Music/Menu", "Music/Play"})
        EXPECT_EQ(SoundSystem::Get().m_Descriptions.count(name), 1u) << name;
}

TEST(SoundFilesInDataTest, TheMenuAndPlayMusicAreHeardAndTheBossIntensityIsAccepted)
{
    ShippedSound sound;
    SoundSpace space;
    space.Initialize();
    Studio::System* studio = SoundSystem::Get().m_Studio;
    ASSERT_NE(studio, nullptr);
    auto level = [&](float seconds) {
        std::vector<float> samples(static_cast<std::size_t>(seconds * studio->getSampleRate()) * 2);
        studio->renderSamples(samples.data(), static_cast<int>(samples.size() / 2));
        space.Update(0.0f);
        SoundSystem::Get().Update(0.0f);
        return SoundTest::Level(samples);
    };
    space.PlayMusic("Music/Menu", false);
    EXPECT_GT(level(1.0f), 0.01f);
    space.RemoveAllLoopingTracks();
    space.PlayMusic("Music/Play", false);
    EXPECT_GT(level(1.0f), 0.01f);
    space.SetMusicInstanceParameter("Music/Play", "Intensity", 1.0f);
    EXPECT_FLOAT_EQ(space.GetMusicInstanceParameter("Music/Play", "Intensity"), 1.0f);
    EXPECT_GT(level(0.5f), 0.01f);
}
