#include "sound/SoundSpace.h"

#include "engine/GameState.h"
#include "engine/GameStateManager.h"
#include "engine/GenericEvents.h"
#include "engine/Manager.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "engine/Window.h"
#include "sound/SoundInstance.h"
#include "sound/SoundTestData.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <memory>

using SoundTest::Level;

namespace
{
// A frame of sound at 60 frames a second.
constexpr float kFrame = 1.0f / 60.0f;
// Below this level the mix counts as silent.
constexpr float kSilence = 1e-4f;

class SoundSpaceTest : public ::testing::Test
{
protected:
    SoundSpaceTest()
    {
        m_Space.AddSystem(m_Sound, Meta::Get<SoundSpace>());
        m_Sound->Initialize();
    }

    // One frame of the game's sound: the space's update, the layer's update, the mix of the frame.
    std::vector<float> Frame()
    {
        m_Sound->Update(kFrame);
        SoundSystem::Get().Update(kFrame);
        return m_Data.Render(kFrame);
    }
    // Runs frames for `seconds` and gives the level of the last 50 ms mixed after them.
    float LevelAfter(float seconds)
    {
        for (float t = 0.0f; t < seconds; t += kFrame)
            Frame();
        return Level(m_Data.Render(0.05f));
    }
    // True when the sound layer runs on its loopback device (it always should in tests).
    bool Mixing() const { return SoundSystem::Get().m_Studio && !SoundSystem::Get().m_Studio->isSilent(); }

    SoundTest::SoundTestData m_Data;
    Engine::Space m_Space{Engine::Level};
    SoundSpace* m_Sound = new SoundSpace();
};

// A state of the given name, made current for one scope.
class ScopedCurrentState
{
public:
    explicit ScopedCurrentState(const std::string& name) : m_Old(GameStateManager::Get().m_Current)
    {
        GameStateManager::Get().m_Current = std::make_shared<GameState>(name);
    }
    ~ScopedCurrentState() { GameStateManager::Get().m_Current = m_Old; }

private:
    std::shared_ptr<GameState> m_Old;
};

void SendFocus(bool focused)
{
    WindowFocus event(focused);
    Engine::Manager::Get().m_Events.Dispatch("WindowFocus", &event);
}
}

TEST_F(SoundSpaceTest, VolumeIsCutToTheRangeAndAVolumeOfZeroRefusesEffects)
{
    SoundSpace::SetEffectsVolume(1.5f);
    EXPECT_FLOAT_EQ(SoundSpace::GetEffectsVolume(), 1.0f);
    SoundSpace::SetMusicVolume(1.5f);
    EXPECT_FLOAT_EQ(SoundSpace::GetMusicVolume(), 1.0f);
    SoundSpace::SetEffectsVolume(-0.2f);
    EXPECT_FLOAT_EQ(SoundSpace::GetEffectsVolume(), 0.0f);
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Long"), 0u);
    SoundSpace::SetEffectsVolume(0.0f);
    EXPECT_FLOAT_EQ(SoundSpace::GetEffectsVolume(), 0.0f);
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Long"), 0u);
    EXPECT_TRUE(m_Sound->m_Effects.empty());
    SoundSpace::SetEffectsVolume(0.5f);
    EXPECT_NE(m_Sound->PlayEffect("Effects/Long"), 0u);
}

TEST_F(SoundSpaceTest, IdsGrowForeverAndAreSharedByMusicAndEffects)
{
    const std::uint32_t first = m_Sound->PlayEffect("Effects/Short");
    EXPECT_EQ(first, 1u);
    m_Sound->PlayMusic("Music/Loop", false);
    EXPECT_EQ(m_Sound->m_Music.begin()->first, 2u);
    m_Sound->StopEffect(first);
    Frame();
    EXPECT_TRUE(m_Sound->m_Effects.empty());
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Short"), 3u);
    m_Sound->RemoveAllSoundEffectInstances();
    m_Sound->RemoveAllLoopingTracks();
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Short"), 4u);
}

TEST_F(SoundSpaceTest, ALimitOfTwoRefusesTheThirdEffectUntilOneEnds)
{
    SoundInstance::AddMaxSoundLimit("Effects/Short", 2);
    EXPECT_NE(m_Sound->PlayEffect("Effects/Short"), 0u);
    EXPECT_NE(m_Sound->PlayEffect("Effects/Short"), 0u);
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Short"), 0u);
    EXPECT_EQ(SoundLimits::Find("Effects/Short")->m_Count, 2);
    // The 0.1 s clips end; the next update finishes them and the count drops.
    LevelAfter(0.3f);
    EXPECT_EQ(SoundLimits::Find("Effects/Short")->m_Count, 0);
    EXPECT_TRUE(m_Sound->m_Effects.empty());
    EXPECT_NE(m_Sound->PlayEffect("Effects/Short"), 0u);
}

TEST_F(SoundSpaceTest, AnEffectOnAnObjectPlaysForTheObjectsLifeAndIsCutAtTheNextUpdateAfterItIsGone)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Emitter", {}));
    const std::uint32_t id = m_Sound->PlayEffectOnObject("Effects/Long", object->GetId());
    ASSERT_NE(id, 0u);
    EXPECT_GT(LevelAfter(0.2f), kSilence);
    EXPECT_EQ(m_Sound->m_Effects.count(id), 1u);
    object->Destroy();
    m_Space.GarbageCollectObjects();
    EXPECT_EQ(m_Sound->m_Effects.count(id), 1u);
    Frame();
    EXPECT_EQ(m_Sound->m_Effects.count(id), 0u);
    if (Mixing())
    {
        EXPECT_LT(LevelAfter(0.05f), kSilence);
    }
}

TEST_F(SoundSpaceTest, PlayMusicWithTheNameOfARunningTrackAndNoRestartChangesNothing)
{
    m_Sound->PlayMusic("Music/Loop", false);
    ASSERT_EQ(m_Sound->m_Music.size(), 1u);
    const SoundInstance* track = m_Sound->m_Music.begin()->second;
    LevelAfter(0.2f);
    m_Sound->PlayMusic("Music/Loop", false);
    EXPECT_EQ(m_Sound->m_Music.size(), 1u);
    EXPECT_EQ(m_Sound->m_Music.begin()->second, track);
    EXPECT_EQ(m_Sound->m_NextId, 1u);
    m_Sound->PlayMusic("Music/Loop", true);
    EXPECT_EQ(m_Sound->m_Music.size(), 1u);
    EXPECT_EQ(m_Sound->m_NextId, 1u);
}

TEST_F(SoundSpaceTest, AMusicEventThatEndsByItselfRestartsInTheNextUpdate)
{
    m_Sound->PlayMusic("Music/Short", false);
    ASSERT_EQ(m_Sound->m_Music.size(), 1u);
    SoundInstance* track = m_Sound->m_Music.begin()->second;
    // Past the 0.1 s clip without an update of the space: the layer has ended it.
    SoundSystem::Get().Update(kFrame);
    m_Data.Render(0.2f);
    SoundSystem::Get().Update(kFrame);
    EXPECT_EQ(track->GetPlaybackState(), Studio::PLAYBACK_STOPPED);
    m_Sound->Update(kFrame);
    EXPECT_NE(track->GetPlaybackState(), Studio::PLAYBACK_STOPPED);
    if (Mixing())
    {
        EXPECT_GT(Level(m_Data.Render(0.05f)), kSilence);
    }
}

TEST_F(SoundSpaceTest, AnUnknownEventNamePlaysNothingAndSaysNothing)
{
    ReportCapture reports;
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Nowhere"), 0u);
    m_Sound->PlayMusic("Music/Nowhere", false);
    EXPECT_TRUE(m_Sound->m_Music.empty());
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Nowhere"), 0u);
    EXPECT_EQ(reports.Text(), "");
    // Remembered as no event.
    ASSERT_EQ(SoundSystem::Get().m_Descriptions.count("Effects/Nowhere"), 1u);
    EXPECT_EQ(SoundSystem::Get().m_Descriptions["Effects/Nowhere"], nullptr);
}

TEST_F(SoundSpaceTest, MutingEffectsSilencesThemAndRefusesNewOnes)
{
    m_Sound->PlayEffect("Effects/Long");
    const float playing = LevelAfter(0.1f);
    SoundSpace::SetEffectsMute(true);
    const float muted = LevelAfter(0.1f);
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Long"), 0u);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_GT(playing, 0.05f);
    EXPECT_LT(muted, kSilence);
    SoundSpace::SetEffectsMute(false);
    EXPECT_NEAR(LevelAfter(0.1f), playing, playing * 0.05f);
}

TEST_F(SoundSpaceTest, TheVolumeSettingsScaleTheRenderedLevel)
{
    SoundSpace::SetEffectsVolume(0.6f);
    SoundSpace::SetMusicVolume(0.4f);
    m_Sound->PlayEffect("Effects/Long");
    const float effect = LevelAfter(0.1f);
    SoundSpace::SetEffectsVolume(0.3f);
    const float half = LevelAfter(0.1f);
    m_Sound->RemoveAllSoundEffectInstances();
    m_Sound->PlayMusic("Music/Loop", false);
    const float music = LevelAfter(0.1f);
    SoundSpace::SetMusicMute(true);
    const float mutedMusic = LevelAfter(0.1f);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_NEAR(half / effect, 0.5f, 0.03f);
    // The same tone at 0.4 against 0.6.
    EXPECT_NEAR(music / effect, 0.4f / 0.6f, 0.03f);
    EXPECT_LT(mutedMusic, kSilence);
}

TEST_F(SoundSpaceTest, PausingSilencesTheMixAndResumingGoesOn)
{
    m_Sound->PlayMusic("Music/Loop", false);
    m_Sound->PlayEffect("Effects/Long");
    const float playing = LevelAfter(0.1f);
    m_Sound->SetPauseAllInstances(true);
    const float paused = LevelAfter(0.1f);
    m_Sound->SetPauseAllInstances(false);
    const float resumed = LevelAfter(0.1f);
    m_Sound->ToggleLoopTrackPause();
    EXPECT_TRUE(m_Sound->m_Paused);
    const float effectOnly = LevelAfter(0.1f);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_GT(playing, 0.05f);
    EXPECT_LT(paused, kSilence);
    EXPECT_NEAR(resumed, playing, playing * 0.05f);
    EXPECT_GT(effectOnly, kSilence);
    EXPECT_LT(effectOnly, playing);
}

TEST_F(SoundSpaceTest, TheEffectLimitHoldsTheMixToTheLimitedCount)
{
    m_Sound->PlayEffect("Effects/Long");
    const float one = LevelAfter(0.05f);
    m_Sound->RemoveAllSoundEffectInstances();
    SoundInstance::AddMaxSoundLimit("Effects/Long", 1);
    EXPECT_NE(m_Sound->PlayEffect("Effects/Long"), 0u);
    EXPECT_EQ(m_Sound->PlayEffect("Effects/Long"), 0u);
    const float limited = LevelAfter(0.05f);
    SoundInstance::AddMaxSoundLimit("Effects/Long", 3);
    m_Sound->RemoveAllSoundEffectInstances();
    SoundInstance::AddMaxSoundLimit("Effects/Long", 3);
    EXPECT_NE(m_Sound->PlayEffect("Effects/Long"), 0u);
    EXPECT_NE(m_Sound->PlayEffect("Effects/Long"), 0u);
    const float two = LevelAfter(0.05f);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_NEAR(limited, one, one * 0.05f);
    // Two of the same tone started in the same frame add up in phase.
    EXPECT_NEAR(two / one, 2.0f, 0.1f);
}

TEST_F(SoundSpaceTest, TheSpacesPauseEventPausesAndResumesEverySound)
{
    m_Sound->PlayMusic("Music/Loop", false);
    GenericEvent::Pause pause(true);
    m_Space.m_Events.Dispatch("Pause", &pause);
    EXPECT_TRUE(m_Sound->m_Paused);
    const float paused = LevelAfter(0.1f);
    GenericEvent::Pause resume(false);
    m_Space.m_Events.Dispatch("Pause", &resume);
    EXPECT_FALSE(m_Sound->m_Paused);
    const float resumed = LevelAfter(0.1f);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_LT(paused, kSilence);
    EXPECT_GT(resumed, 0.02f);
}

TEST_F(SoundSpaceTest, LosingFocusPausesEverythingAtTheNextUpdateAndRegainingItResumesOutsideGameplay)
{
    ScopedCurrentState title("TitleState");
    m_Sound->PlayMusic("Music/Loop", false);
    SendFocus(false);
    EXPECT_FALSE(m_Sound->m_Focused);
    EXPECT_FALSE(m_Sound->m_FocusPauseDone);
    Frame();
    EXPECT_TRUE(m_Sound->m_FocusPauseDone);
    const float unfocused = LevelAfter(0.1f);
    SendFocus(true);
    const float back = LevelAfter(0.1f);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_LT(unfocused, kSilence);
    EXPECT_GT(back, 0.02f);
}

TEST_F(SoundSpaceTest, FocusRegainedInTheGameplayStateDoesNotResumeSound)
{
    ScopedCurrentState gameplay("GameplayState");
    m_Sound->PlayMusic("Music/Loop", false);
    m_Sound->PlayEffect("Effects/Long");
    SendFocus(false);
    Frame();
    SendFocus(true);
    EXPECT_TRUE(m_Sound->m_Focused);
    const float back = LevelAfter(0.1f);
    bool paused = false;
    m_Sound->m_Music.begin()->second->m_Instance->getPaused(&paused);
    EXPECT_TRUE(paused);
    // The game resumes it through its own pause.
    GenericEvent::Pause resume(false);
    m_Space.m_Events.Dispatch("Pause", &resume);
    const float resumed = LevelAfter(0.1f);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_LT(back, kSilence);
    EXPECT_GT(resumed, 0.02f);
}

TEST_F(SoundSpaceTest, StopEffectEndsTheEffectAtTheNextUpdate)
{
    const std::uint32_t id = m_Sound->PlayEffect("Effects/Long");
    m_Sound->StopEffect(id);
    m_Sound->StopEffect(999);
    EXPECT_EQ(m_Sound->m_Effects.count(id), 1u);
    Frame();
    EXPECT_TRUE(m_Sound->m_Effects.empty());
    if (Mixing())
    {
        EXPECT_LT(LevelAfter(0.05f), kSilence);
    }
}

TEST_F(SoundSpaceTest, RemovingALoopingTrackStopsOnlyThatTrack)
{
    m_Sound->PlayMusic("Music/Loop", false);
    m_Sound->PlayMusic("Music/Short", false);
    m_Sound->RemoveLoopingTrack("Music/Short");
    ASSERT_EQ(m_Sound->m_Music.size(), 1u);
    EXPECT_EQ(m_Sound->m_Music.begin()->second->m_Name, "Music/Loop");
    m_Sound->RemoveLoopingTrack("Music/Nowhere");
    EXPECT_EQ(m_Sound->m_Music.size(), 1u);
}

TEST_F(SoundSpaceTest, ParametersOfUnknownTracksAndEffectsGiveZero)
{
    EXPECT_FLOAT_EQ(m_Sound->GetMusicInstanceParameter("Music/Loop", "Intensity"), 0.0f);
    EXPECT_FLOAT_EQ(m_Sound->GetEffectParameter(42, "Intensity"), 0.0f);
    m_Sound->SetEffectParameter(42, "Intensity", 1.0f);
    m_Sound->SetMusicInstanceParameter("Music/Loop", "Intensity", 1.0f);
    m_Sound->PlayMusic("Music/Loop", false);
    EXPECT_FLOAT_EQ(m_Sound->GetMusicInstanceParameter("Music/Loop", "NoSuchParameter"), 0.0f);
}

TEST_F(SoundSpaceTest, AnEffectParameterThatDrivesTheVolumeChangesTheMix)
{
    const std::uint32_t id = m_Sound->PlayEffect("Effects/Tuned");
    ASSERT_NE(id, 0u);
    EXPECT_FLOAT_EQ(m_Sound->GetEffectParameter(id, "Loudness"), 1.0f);
    const float full = LevelAfter(0.1f);
    m_Sound->SetEffectParameter(id, "Loudness", 0.5f);
    EXPECT_FLOAT_EQ(m_Sound->GetEffectParameter(id, "Loudness"), 0.5f);
    const float half = LevelAfter(0.1f);
    if (!Mixing())
        GTEST_SKIP() << "no loopback mix";
    EXPECT_NEAR(half / full, 0.5f, 0.03f);
}
