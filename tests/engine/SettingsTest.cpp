#include "engine/Settings.h"

#include "engine/Files.h"
#include "sound/SoundSystem.h"
#include "support/ReportCapture.h"
#include "support/Scoped.h"
#include "support/TempFolder.h"
#include "utilities/Serialization/Serializer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace
{
int g_Difficulty = 2;
int GetDifficulty() { return g_Difficulty; }
void SetDifficulty(int difficulty) { g_Difficulty = difficulty; }
int GetOther() { return -1; }
void SetOther(int) {}

// Settings of a test in an application data folder of its own, with the sound settings at their defaults.
class SettingsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_Temp = std::make_unique<TempFolder>();
        m_AppData = std::make_unique<ScopedEnvironment>("VORN_APPDATA_DIR", m_Temp->Path().c_str());
        Util::ResetAppDataDirectory();
        SoundSystem::Get();
        Settings::Add<int>("Difficulty", &GetDifficulty, &SetDifficulty);
        SoundSystem::SetMusicVolume(0.4f);
        SoundSystem::SetEffectsVolume(0.6f);
        SoundSystem::SetMusicMute(false);
        SoundSystem::SetEffectsMute(false);
        g_Difficulty = 2;
    }
    void TearDown() override
    {
        Util::ResetAppDataDirectory();
        m_AppData.reset();
        m_Temp.reset();
    }

    std::unique_ptr<TempFolder> m_Temp;
    std::unique_ptr<ScopedEnvironment> m_AppData;
};
}

TEST_F(SettingsTest, FileIsInTheAppDataFolder)
{
    EXPECT_EQ(Settings::GetPath(), m_Temp->Path() + "Settings.txt");
}

TEST_F(SettingsTest, SaveWritesOneNamelessBlockInTheOrderSettingsWereAdded)
{
    Settings::Get().Save();
    EXPECT_EQ(m_Temp->Read("Settings.txt"),
              "{\n  MusicVolume 0.4\n  EffectsVolume 0.6\n  MusicMute false\n  EffectsMute false\n  Difficulty 2\n}\n");
}

TEST_F(SettingsTest, LoadSetsEverySettingThroughItsSetter)
{
    m_Temp->Write("Settings.txt", "{\n  MusicVolume 1.5\n  EffectsMute true\n  Difficulty 4\n}\n");
    Settings::Get().Load();
    EXPECT_FLOAT_EQ(SoundSystem::GetMusicVolume(), 1.0f);
    EXPECT_TRUE(SoundSystem::GetEffectsMute());
    EXPECT_EQ(g_Difficulty, 4);
}

TEST_F(SettingsTest, MissingFileLeavesTheDefaults)
{
    Settings::Get().Load();
    EXPECT_FLOAT_EQ(SoundSystem::GetMusicVolume(), 0.4f);
    EXPECT_EQ(g_Difficulty, 2);
}

TEST_F(SettingsTest, UnknownNameIsSkippedAndTheNextSaveLeavesItOut)
{
    m_Temp->Write("Settings.txt", "{\n  OldSetting { 1 2 3 }\n  Retired \"yes\"\n  Difficulty 3\n}\n");
    Settings::Get().Load();
    EXPECT_EQ(g_Difficulty, 3);
    Settings::Get().Save();
    const std::string saved = m_Temp->Read("Settings.txt");
    EXPECT_EQ(saved.find("OldSetting"), std::string::npos);
    EXPECT_EQ(saved.find("Retired"), std::string::npos);
    EXPECT_NE(saved.find("  Difficulty 3\n"), std::string::npos);
}

TEST_F(SettingsTest, LoadClearsTheTolerantFlagWhateverItWasBefore)
{
    m_Temp->Write("Settings.txt", "{\n}\n");
    Util::SetTolerantRead(true);
    Settings::Get().Load();
    EXPECT_FALSE(Util::IsTolerantRead());
}

TEST_F(SettingsTest, GarbledValueIsReportedAndLaterSettingsKeepTheirDefaults)
{
    ReportCapture reports;
    m_Temp->Write("Settings.txt", "{\n  MusicVolume loud\n  Difficulty 5\n}\n");
    Settings::Get().Load();
    EXPECT_EQ(g_Difficulty, 2);
    EXPECT_TRUE(reports.Holds("Failed to read member."));
}

TEST_F(SettingsTest, SettingAddedTwiceKeepsTheFirst)
{
    Settings::Add<int>("Difficulty", &GetOther, &SetOther);
    Settings::Get().Save();
    EXPECT_NE(m_Temp->Read("Settings.txt").find("  Difficulty 2\n"), std::string::npos);
}
