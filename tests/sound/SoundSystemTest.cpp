#include "sound/SoundSystem.h"

#include "engine/Options.h"
#include "engine/Settings.h"
#include "sound/SoundInstance.h"
#include "sound/SoundSpace.h"
#include "sound/SoundTestData.h"
#include "support/ReportCapture.h"
#include "support/Scoped.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

TEST(SoundSystemTest, OnlyTheMusicAndEffectsBanksAreEnteredUnderTheirPathsWithoutThePrefix)
{
    SoundTest::SoundTestData data;
    const auto& table = SoundSystem::Get().m_Descriptions;
    EXPECT_EQ(table.count("Music/Loop"), 1u);
    EXPECT_EQ(table.count("Music/Short"), 1u);
    EXPECT_EQ(table.count("Effects/Long"), 1u);
    EXPECT_EQ(table.count("Effects/Tuned"), 1u);
    EXPECT_EQ(table.count("Master/Hidden"), 0u);
    EXPECT_EQ(table.count("event:/Effects/Long"), 0u);
    // The last bank loaded is the effects bank; the strings bank is kept apart.
    EXPECT_NE(SoundSystem::Get().m_Bank, nullptr);
    EXPECT_NE(SoundSystem::Get().m_StringsBank, nullptr);
    EXPECT_NE(SoundSystem::Get().m_Bank, SoundSystem::Get().m_StringsBank);
}

TEST(SoundSystemTest, ALaterEventOfTheSamePathReplacesTheEarlierOne)
{
    SoundTest::SoundTestData data(SoundTest::Event("Effects/Long", "Short.wav"));
    SoundSpace space;
    space.Initialize();
    const std::uint32_t id = space.PlayEffect("Effects/Long");
    ASSERT_NE(id, 0u);
    // The short clip of the later event: it has ended after 0.3 s.
    std::vector<float> samples(static_cast<std::size_t>(2 * 0.3f * SoundSystem::Get().m_Studio->getSampleRate()));
    SoundSystem::Get().m_Studio->renderSamples(samples.data(), static_cast<int>(samples.size() / 2));
    SoundSystem::Get().Update(0.0f);
    space.Update(0.0f);
    EXPECT_TRUE(space.m_Effects.empty());
}

TEST(SoundSystemTest, ABankThatFailsToLoadLeavesOnlyItsOwnEventsOut)
{
    SoundTest::SoundTestData data("", false);
    std::filesystem::remove(data.Path() + "Banks/Music.bank");
    data.Open();
    const auto& table = SoundSystem::Get().m_Descriptions;
    EXPECT_EQ(table.count("Music/Loop"), 0u);
    EXPECT_EQ(table.count("Effects/Long"), 1u);
    SoundSpace space;
    space.Initialize();
    space.PlayMusic("Music/Loop", false);
    EXPECT_TRUE(space.m_Music.empty());
    EXPECT_NE(space.PlayEffect("Effects/Long"), 0u);
}

TEST(SoundSystemTest, WithNoBanksAtAllTheGameRunsOnAndPlaysNothing)
{
    SoundTest::SoundTestData data("", false);
    std::filesystem::remove_all(data.Path() + "Banks");
    data.Open();
    SoundSpace space;
    space.Initialize();
    EXPECT_EQ(space.PlayEffect("Effects/Long"), 0u);
    space.Update(0.0f);
    SoundSystem::Get().Update(0.0f);
    EXPECT_TRUE(SoundSystem::Get().m_Descriptions.count("Effects/Long") == 1 &&
                SoundSystem::Get().m_Descriptions.at("Effects/Long") == nullptr);
}

TEST(SoundSystemTest, TheFmodOptionSetsTheLiveUpdateFlag)
{
    Engine::Options options;
    SoundSystem::AddStartupOption();
    SoundSystem::Get().m_InitFlags = 0;
    testing::internal::CaptureStdout();
    Engine::Options::ParseCommandLine("--FMOD");
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(SoundSystem::Get().m_InitFlags, unsigned(Studio::INIT_LIVEUPDATE));
    SoundSystem::Get().m_InitFlags = 0;
}

TEST(SoundSystemTest, TheVolumeSettingsAreSavedInTheSettingsFileUnderTheirKeys)
{
    std::string text;
    {
        TempFolder appData;
        ScopedEnvironment redirect("VORN_APPDATA_DIR", appData.Path().c_str());
        Util::ResetAppDataDirectory();
        SoundSystem::SetMusicVolume(0.25f);
        SoundSystem::SetEffectsVolume(0.75f);
        SoundSystem::SetMusicMute(true);
        Settings::Get().Save();
        text = appData.Read("Settings.txt");
        SoundSystem::SetMusicVolume(0.4f);
        SoundSystem::SetEffectsVolume(0.6f);
        SoundSystem::SetMusicMute(false);
    }
    Util::ResetAppDataDirectory();
    EXPECT_NE(text.find("MusicVolume 0.25"), std::string::npos) << text;
    EXPECT_NE(text.find("EffectsVolume 0.75"), std::string::npos);
    EXPECT_NE(text.find("MusicMute true"), std::string::npos);
    EXPECT_NE(text.find("EffectsMute false"), std::string::npos);
}

TEST(SoundSystemTest, ShutdownStopsEverySpacesSoundsAndInitializeOpensItAgain)
{
    SoundTest::SoundTestData data;
    SoundSpace space;
    space.Initialize();
    space.PlayMusic("Music/Loop", false);
    space.PlayEffect("Effects/Long");
    SoundSystem::Get().Shutdown();
    EXPECT_TRUE(space.m_Music.empty());
    EXPECT_TRUE(space.m_Effects.empty());
    EXPECT_EQ(SoundSystem::Get().m_Studio, nullptr);
    data.Open();
    space.PlayMusic("Music/Loop", false);
    EXPECT_EQ(space.m_Music.size(), 1u);
}

TEST(SoundSystemTest, ScriptsSeeTheSoundSpaceInterfaceInItsOrder)
{
    const Meta::Data* type = Meta::Get<SoundSpace>();
    EXPECT_EQ(type->m_Description, "An interface to the sound system for the space");
    std::vector<std::string> names;
    for (const auto& [name, method] : type->m_Methods.Items())
        names.push_back(name);
    const std::vector<std::string> expected = {
        "PlayMusic", "StopEffect", "RemoveAllSoundEffectInstances", "RemoveLoopingTrack", "RemoveAllLoopingTracks",
        "ToggleLoopTrackPause", "SetEffectsVolume", "SetMusicVolume", "SetEffectsMute", "SetMusicMute",
        "GetEffectsVolume", "GetMusicVolume", "GetEffectsMute", "GetMusicMute", "PauseEffects",
        "SetPauseAllInstances", "SetMusicInstanceParameter", "GetMusicInstanceParameter", "SetEffectParameter",
        "GetEffectParameter"};
    EXPECT_EQ(names, expected);
    // Both forms of PlayEffect: (name) and (name, objectId).
    const auto* playEffect = type->m_Overloads.Find("PlayEffect");
    ASSERT_NE(playEffect, nullptr);
    EXPECT_EQ(playEffect->size(), 2u);
    EXPECT_NE(Meta::Get<SoundInstance>()->m_Methods.Find("AddMaxSoundLimit"), nullptr);
}

TEST(SoundSystemTest, ReloadingTheBanksKeepsTheMusicPlayingAndTakesInTheNewEvents)
{
    SoundTest::SoundTestData data;
    SoundSpace space;
    space.Initialize();
    space.PlayMusic("Music/Loop", false);
    space.PlayEffect("Effects/Long");
    EXPECT_EQ(SoundSystem::Get().m_Descriptions.count("Effects/New"), 0u);
    data.Write("Banks/Effects.bank", SoundTest::Event("Effects/New", "Short.wav"));
    SoundSystem::Get().ReloadBanks();
    EXPECT_EQ(SoundSystem::Get().m_Descriptions.count("Effects/New"), 1u);
    EXPECT_EQ(SoundSystem::Get().m_Descriptions.count("Effects/Long"), 0u);
    EXPECT_TRUE(space.m_Effects.empty());
    ASSERT_EQ(space.m_Music.size(), 1u);
    EXPECT_EQ(space.m_Music.begin()->second->m_Name, "Music/Loop");
    EXPECT_NE(space.m_Music.begin()->second->GetPlaybackState(), Studio::PLAYBACK_STOPPED);
    EXPECT_NE(space.PlayEffect("Effects/New"), 0u);
}
