// Playback through the loopback device: levels, volume, pause, loops without
// gaps, streamed clips, instances that end, and more instances than voices.
#include "sound/studio/StudioFixture.h"

#include <cmath>

namespace
{
constexpr const char* kToneBank = R"(// Test.bank: one tone of each kind.
Event
{
  Path "event:/Tone"
  Clips { "Sounds/Tone.wav" }
}
Event
{
  Path "event:/Short"
  Clips { "Sounds/Short.wav" }
}
Event
{
  Path "event:/Loop"
  Clips { "Sounds/Steady.wav" }
  Loop true
}
Event
{
  Path "event:/LoopStream"
  Clips { "Sounds/Steady.wav" }
  Loop true
  Stream true
}
Event
{
  Path "event:/Music"
  Clips { "Sounds/Long.wav" }
  Stream true
}
Event
{
  Path "event:/Placed"
  Clips { "Sounds/Tone.wav" }
  Spatial true
  MinDistance 1
  MaxDistance 50
}
)";

class StudioPlaybackTest : public StudioFixture
{
protected:
    void SetUp() override
    {
        StudioFixture::SetUp();
        Clip("Sounds/Tone.wav", SoundClips::Tone(2.0, 0.5f));
        Clip("Sounds/Short.wav", SoundClips::Tone(0.2, 0.5f));
        // A steady level with a ripple: never near zero, so any gap shows as a quiet run.
        Clip("Sounds/Steady.wav", SoundClips::Tone(0.3, 0.1f, 300.0f, 1, 0.4f));
        Clip("Sounds/Long.wav", SoundClips::Tone(3.0, 0.1f, 300.0f, 1, 0.4f));
        Bank(kToneBank);
    }
};

TEST_F(StudioPlaybackTest, KnownClipRendersAtItsLevel)
{
    Studio::EventInstance* tone = Instance("event:/Tone");
    ASSERT_EQ(tone->start(), Studio::OK);
    const auto mix = Render(0.5);
    // A 0.5-amplitude sine has an RMS of 0.5 / sqrt(2); each side gets the centred-mono gain.
    const double expected = 0.5 / std::sqrt(2.0) * kCentredMonoGain;
    EXPECT_NEAR(SoundClips::Rms(mix, 0, 2400), expected, expected * 0.03);
    EXPECT_NEAR(SoundClips::Rms(mix, 1, 2400), expected, expected * 0.03);
}

TEST_F(StudioPlaybackTest, HalfVolumeHalvesTheLevel)
{
    Studio::EventInstance* tone = Instance("event:/Tone");
    ASSERT_EQ(tone->start(), Studio::OK);
    const double full = SoundClips::Rms(Render(0.3), 0, 2400);
    ASSERT_EQ(tone->setVolume(0.5f), Studio::OK);
    float volume = 0.0f;
    ASSERT_EQ(tone->getVolume(&volume), Studio::OK);
    EXPECT_EQ(volume, 0.5f);
    const double half = SoundClips::Rms(Render(0.3), 0, 2400);
    EXPECT_NEAR(half / full, 0.5, 0.02);
    EXPECT_EQ(tone->setVolume(-1.0f), Studio::ERR_INVALID_PARAM);
}

TEST_F(StudioPlaybackTest, PausedInstanceRendersSilenceAndResumeContinues)
{
    Studio::EventInstance* tone = Instance("event:/Tone");
    ASSERT_EQ(tone->start(), Studio::OK);
    Render(0.2);
    ASSERT_EQ(tone->setPaused(true), Studio::OK);
    bool paused = false;
    ASSERT_EQ(tone->getPaused(&paused), Studio::OK);
    EXPECT_TRUE(paused);
    Render(0.05);
    const auto silent = Render(0.3);
    EXPECT_EQ(SoundClips::Rms(silent, 0), 0.0);
    EXPECT_EQ(State(tone), Studio::PLAYBACK_PLAYING);
    ASSERT_EQ(tone->setPaused(false), Studio::OK);
    EXPECT_GT(SoundClips::Rms(Render(0.3), 0, 2400), 0.2);
}

TEST_F(StudioPlaybackTest, LoopingClipLoopsWithoutAGap)
{
    Studio::EventInstance* loop = Instance("event:/Loop");
    ASSERT_EQ(loop->start(), Studio::OK);
    // Five seams of a 0.3 s clip.
    const auto mix = Render(1.6);
    EXPECT_LE(SoundClips::LongestQuietRun(mix, 0.05f, 480, mix.size() / 2), 0u);
    EXPECT_EQ(State(loop), Studio::PLAYBACK_PLAYING);
}

TEST_F(StudioPlaybackTest, LoopingStreamLoopsWithoutAGap)
{
    Studio::EventInstance* loop = Instance("event:/LoopStream");
    ASSERT_EQ(loop->start(), Studio::OK);
    const auto mix = Render(3.0);
    EXPECT_LE(SoundClips::LongestQuietRun(mix, 0.05f, 480, mix.size() / 2), 0u);
    EXPECT_EQ(State(loop), Studio::PLAYBACK_PLAYING);
}

TEST_F(StudioPlaybackTest, ClipThatDoesNotLoopStopsAtItsEnd)
{
    Studio::EventInstance* shortTone = Instance("event:/Short");
    ASSERT_EQ(shortTone->start(), Studio::OK);
    Render(0.1);
    EXPECT_EQ(State(shortTone), Studio::PLAYBACK_PLAYING);
    Render(0.15);
    EXPECT_EQ(State(shortTone), Studio::PLAYBACK_STOPPED);
}

TEST_F(StudioPlaybackTest, StreamLongerThanItsQueuePlaysThroughWithoutAGap)
{
    Studio::EventInstance* music = Instance("event:/Music");
    ASSERT_EQ(music->start(), Studio::OK);
    const auto mix = Render(2.95);
    EXPECT_LE(SoundClips::LongestQuietRun(mix, 0.05f, 480, mix.size() / 2), 0u);
    EXPECT_EQ(State(music), Studio::PLAYBACK_PLAYING);
    Render(0.2);
    EXPECT_EQ(State(music), Studio::PLAYBACK_STOPPED);
}

TEST_F(StudioPlaybackTest, StreamThatMissedAnUpdateResumes)
{
    Studio::EventInstance* music = Instance("event:/Music");
    ASSERT_EQ(music->start(), Studio::OK);
    // 2.5 s in one go outruns the two seconds queued: the voice runs dry.
    std::vector<float> mix(static_cast<std::size_t>(SoundClips::kRate) * 5 / 2 * 2);
    ASSERT_EQ(m_System->renderSamples(mix.data(), static_cast<int>(mix.size() / 2)), Studio::OK);
    ASSERT_EQ(m_System->update(), Studio::OK);
    EXPECT_EQ(State(music), Studio::PLAYBACK_PLAYING);
    EXPECT_GT(SoundClips::Rms(Render(0.2), 0, 480), 0.2);
}

TEST_F(StudioPlaybackTest, StopCutsAtOnce)
{
    Studio::EventInstance* tone = Instance("event:/Tone");
    ASSERT_EQ(tone->start(), Studio::OK);
    Render(0.1);
    ASSERT_EQ(tone->stop(Studio::STOP_IMMEDIATE), Studio::OK);
    EXPECT_EQ(State(tone), Studio::PLAYBACK_STOPPED);
    Render(0.02);
    EXPECT_EQ(SoundClips::Rms(Render(0.1), 0), 0.0);
}

TEST_F(StudioPlaybackTest, InstancesPastTheVoicesPlayVirtuallyAndEndOnTime)
{
    m_System->release();
    ASSERT_EQ(Studio::System::create(&m_System), Studio::OK);
    ASSERT_EQ(m_System->initialize(2, Studio::INIT_LOOPBACK, 0, nullptr), Studio::OK);
    Bank(kToneBank);
    Studio::EventInstance* shorts[3] = {Instance("event:/Short"), Instance("event:/Short"), Instance("event:/Short")};
    for (Studio::EventInstance* instance : shorts)
        ASSERT_EQ(instance->start(), Studio::OK);
    const auto mix = Render(0.1);
    // Two voices are heard: twice one tone's level.
    const double one = 0.5 / std::sqrt(2.0) * kCentredMonoGain;
    EXPECT_NEAR(SoundClips::Rms(mix, 0, 480), 2.0 * one, 2.0 * one * 0.05);
    for (Studio::EventInstance* instance : shorts)
        EXPECT_EQ(State(instance), Studio::PLAYBACK_PLAYING);
    Render(0.15);
    for (Studio::EventInstance* instance : shorts)
        EXPECT_EQ(State(instance), Studio::PLAYBACK_STOPPED);
}

TEST_F(StudioPlaybackTest, SpatialEventIsHeardFromItsSide)
{
    Studio::EventInstance* placed = Instance("event:/Placed");
    Studio::Attributes3D where;
    where.position[0] = 5.0f;
    ASSERT_EQ(placed->set3DAttributes(where), Studio::OK);
    ASSERT_EQ(m_System->setListenerAttributes(Studio::Attributes3D{}), Studio::OK);
    ASSERT_EQ(placed->start(), Studio::OK);
    const auto mix = Render(0.3);
    const double left = SoundClips::Rms(mix, 0, 2400);
    const double right = SoundClips::Rms(mix, 1, 2400);
    EXPECT_GT(right, left * 2.0);
    // Five units away with full level up to one: fainter than at the listener.
    EXPECT_LT(std::hypot(left, right), 0.5 / std::sqrt(2.0));
}
}
