// Named parameters: what Volume, Pitch and Clip drives change, and lookups by name.
#include "sound/studio/StudioFixture.h"

#include <cmath>

namespace
{
constexpr const char* kParameterBank = R"(Event
{
  Path "event:/Driven"
  Clips { "Sounds/Quiet.wav", "Sounds/Loud.wav" }
  Order Sequential
  Parameters
  {
    {
      Name "Intensity"
      Minimum 0
      Maximum 1
      Default 1
      Drives Volume
      From 0.3
      To 1
    },
    {
      Name "Speed"
      Minimum 0
      Maximum 10
      Default 0
      Drives Pitch
      From 1
      To 2
    },
    {
      Name "Which"
      Minimum 0
      Maximum 5
      Default 0
      Drives Clip
    }
  }
}
)";

class StudioParameterTest : public StudioFixture
{
protected:
    void SetUp() override
    {
        StudioFixture::SetUp();
        Clip("Sounds/Quiet.wav", SoundClips::Tone(0.4, 0.2f));
        Clip("Sounds/Loud.wav", SoundClips::Tone(0.4, 0.6f));
        Bank(kParameterBank);
    }
    Studio::ParameterInstance* Parameter(Studio::EventInstance* instance, const char* name)
    {
        Studio::ParameterInstance* parameter = nullptr;
        EXPECT_EQ(instance->getParameter(name, &parameter), Studio::OK);
        return parameter;
    }
};

TEST_F(StudioParameterTest, VolumeParameterScalesFromItsFromToItsTo)
{
    Studio::EventInstance* driven = Instance("event:/Driven");
    ASSERT_EQ(driven->start(), Studio::OK);
    const double full = SoundClips::Rms(Render(0.1), 0, 480);
    ASSERT_EQ(Parameter(driven, "Intensity")->setValue(0.0f), Studio::OK);
    const double low = SoundClips::Rms(Render(0.1), 0, 480);
    EXPECT_NEAR(low / full, 0.3, 0.02);
}

TEST_F(StudioParameterTest, PitchParameterSpeedsTheClipUp)
{
    Studio::EventInstance* slow = Instance("event:/Driven");
    Studio::EventInstance* fast = Instance("event:/Driven");
    ASSERT_EQ(Parameter(fast, "Speed")->setValue(10.0f), Studio::OK);
    ASSERT_EQ(slow->start(), Studio::OK);
    ASSERT_EQ(fast->start(), Studio::OK);
    // Twice the speed: the 0.4 s clip ends after 0.2 s.
    Render(0.3);
    EXPECT_EQ(State(fast), Studio::PLAYBACK_STOPPED);
    EXPECT_EQ(State(slow), Studio::PLAYBACK_PLAYING);
}

TEST_F(StudioParameterTest, ClipParameterPicksTheClipAtTheNextStart)
{
    Studio::EventInstance* driven = Instance("event:/Driven");
    ASSERT_EQ(driven->start(), Studio::OK);
    const double quiet = SoundClips::Rms(Render(0.1), 0, 480);
    // Past the list's end: the last clip.
    ASSERT_EQ(Parameter(driven, "Which")->setValue(4.7f), Studio::OK);
    EXPECT_NEAR(SoundClips::Rms(Render(0.1), 0, 480), quiet, quiet * 0.05);
    ASSERT_EQ(driven->start(), Studio::OK);
    const double loud = SoundClips::Rms(Render(0.1), 0, 480);
    EXPECT_NEAR(loud / quiet, 3.0, 0.1);
    ASSERT_EQ(Parameter(driven, "Which")->setValue(0.9f), Studio::OK);
    ASSERT_EQ(driven->start(), Studio::OK);
    EXPECT_NEAR(SoundClips::Rms(Render(0.1), 0, 480), quiet, quiet * 0.05);
}

TEST_F(StudioParameterTest, ValueIsCutToTheRange)
{
    Studio::EventInstance* driven = Instance("event:/Driven");
    Studio::ParameterInstance* speed = Parameter(driven, "Speed");
    float value = -1.0f;
    ASSERT_EQ(speed->getValue(&value), Studio::OK);
    EXPECT_EQ(value, 0.0f);
    ASSERT_EQ(speed->setValue(99.0f), Studio::OK);
    ASSERT_EQ(speed->getValue(&value), Studio::OK);
    EXPECT_EQ(value, 10.0f);
    EXPECT_EQ(speed->setValue(std::nanf("")), Studio::ERR_INVALID_PARAM);
}

TEST_F(StudioParameterTest, UnknownParameterIsNotFound)
{
    Studio::EventInstance* driven = Instance("event:/Driven");
    Studio::ParameterInstance* parameter = reinterpret_cast<Studio::ParameterInstance*>(1);
    EXPECT_EQ(driven->getParameter("Nothing", &parameter), Studio::ERR_EVENT_NOTFOUND);
    EXPECT_EQ(parameter, nullptr);
    EXPECT_EQ(driven->getParameter(nullptr, &parameter), Studio::ERR_INVALID_PARAM);
}
}
