// A stream on a voice of the loopback output: its queue is refilled by Update,
// a looping stream wraps, and one that is not looping ends.
#include "platform/AudioOutput.h"
#include "platform/AudioStream.h"
#include "platform/AudioVoice.h"

#include "support/SoundClips.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{
class AudioStreamTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(m_Output.Open(true), Platform::AudioOutput::Mode::Loopback);
        ASSERT_TRUE(m_Output.HasMixer());
        ASSERT_TRUE(m_Voice.Create());
        m_Voice.SetCentred(false);
        m_Path = m_Folder.Path() + "Steady.wav";
        ASSERT_TRUE(SoundClips::Write(m_Path, SoundClips::Tone(1.2, 0.1f, 300.0f, 1, 0.4f)));
    }
    void TearDown() override { m_Voice.Destroy(); }

    // Mixes `seconds` in frames of 1/60 s, updating the stream after each; false once it ended.
    bool Play(Platform::AudioStream& stream, double seconds, bool loop, std::vector<float>& mix)
    {
        constexpr int kFrame = 800;
        bool playing = true;
        std::vector<float> frame(kFrame * 2);
        for (int done = 0; done < static_cast<int>(seconds * 48000); done += kFrame)
        {
            m_Output.Render(frame.data(), kFrame);
            mix.insert(mix.end(), frame.begin(), frame.end());
            playing = stream.Update(m_Voice, loop, m_Path, false);
        }
        return playing;
    }

    TempFolder m_Folder;
    Platform::AudioOutput m_Output;
    Platform::AudioVoice m_Voice;
    std::string m_Path;
};

TEST_F(AudioStreamTest, LoopingStreamWrapsWithoutAGap)
{
    Platform::AudioStream stream;
    std::string error;
    ASSERT_TRUE(stream.Start(m_Path, m_Voice, true, error)) << error;
    m_Voice.Play();
    std::vector<float> mix;
    EXPECT_TRUE(Play(stream, 4.0, true, mix));
    EXPECT_EQ(SoundClips::LongestQuietRun(mix, 0.05f, 480, mix.size() / 2), 0u);
    stream.Stop(m_Voice);
    EXPECT_EQ(m_Voice.GetState(), Platform::AudioVoice::State::Stopped);
}

TEST_F(AudioStreamTest, StreamThatDoesNotLoopEnds)
{
    Platform::AudioStream stream;
    std::string error;
    ASSERT_TRUE(stream.Start(m_Path, m_Voice, false, error)) << error;
    m_Voice.Play();
    std::vector<float> mix;
    EXPECT_TRUE(Play(stream, 1.1, false, mix));
    EXPECT_FALSE(Play(stream, 0.3, false, mix));
}

TEST_F(AudioStreamTest, MissingFileDoesNotStart)
{
    Platform::AudioStream stream;
    std::string error;
    EXPECT_FALSE(stream.Start(m_Folder.Path() + "None.ogg", m_Voice, true, error));
    EXPECT_FALSE(error.empty());
}
}
