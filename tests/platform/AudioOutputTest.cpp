// The sound output: the loopback device mixes on demand, and the silent output
// asked for by the environment.
#include "platform/AudioOutput.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace
{
TEST(AudioOutputTest, LoopbackMixesSilenceWithNothingPlaying)
{
    Platform::AudioOutput output;
    ASSERT_EQ(output.Open(true), Platform::AudioOutput::Mode::Loopback);
    ASSERT_TRUE(output.HasMixer());
    EXPECT_EQ(output.GetSampleRate(), 48000);
    std::vector<float> mix(512 * 2, 1.0f);
    ASSERT_TRUE(output.Render(mix.data(), 512));
    for (float sample : mix)
        EXPECT_EQ(sample, 0.0f);
    EXPECT_FALSE(output.Render(mix.data(), 0));
    output.Close();
    EXPECT_EQ(output.GetMode(), Platform::AudioOutput::Mode::Closed);
    EXPECT_FALSE(output.Render(mix.data(), 512));
}

TEST(AudioOutputTest, EnvironmentAsksForTheSilentOutput)
{
    setenv("VORN_AUDIO_SILENT", "1", 1);
    EXPECT_TRUE(Platform::AudioOutput::SilenceRequested());
    Platform::AudioOutput output;
    EXPECT_EQ(output.Open(false), Platform::AudioOutput::Mode::Silent);
    output.RenderElapsed(0.5);
    output.RenderElapsed(-1.0);
    setenv("VORN_AUDIO_SILENT", "0", 1);
    EXPECT_FALSE(Platform::AudioOutput::SilenceRequested());
    unsetenv("VORN_AUDIO_SILENT");
    EXPECT_FALSE(Platform::AudioOutput::SilenceRequested());
}
}
