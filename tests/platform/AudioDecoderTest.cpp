// The clip decoder: what it reads from each format, and what it refuses.
#include "platform/AudioDecoder.h"

#include "support/SoundClips.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace
{
TEST(AudioDecoderTest, ReadsWavAndFlacFramesAsWritten)
{
    TempFolder folder;
    for (const auto& [name, format] : {std::pair{"Tone.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                                       std::pair{"Tone.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16}})
    {
        const std::string path = folder.Path() + name;
        ASSERT_TRUE(SoundClips::Write(path, SoundClips::Tone(0.25, 0.5f, 440.0f, 2), 2, format));
        Platform::AudioDecoder decoder;
        std::string error;
        ASSERT_TRUE(decoder.Open(path, error)) << error;
        EXPECT_EQ(decoder.GetChannels(), 2);
        EXPECT_EQ(decoder.GetSampleRate(), SoundClips::kRate);
        EXPECT_EQ(decoder.GetFrames(), SoundClips::kRate / 4);
        std::vector<std::int16_t> samples(static_cast<std::size_t>(decoder.GetFrames()) * 2);
        EXPECT_EQ(decoder.Read(samples.data(), decoder.GetFrames()), decoder.GetFrames());
        EXPECT_EQ(decoder.Read(samples.data(), 10), 0);
        ASSERT_TRUE(decoder.Rewind());
        EXPECT_EQ(decoder.Read(samples.data(), 10), 10);
    }
}

TEST(AudioDecoderTest, ReadsOggVorbis)
{
    TempFolder folder;
    const std::string path = folder.Path() + "Tone.ogg";
    ASSERT_TRUE(SoundClips::Write(path, SoundClips::Tone(0.5, 0.5f), 1, SF_FORMAT_OGG | SF_FORMAT_VORBIS));
    Platform::AudioDecoder decoder;
    std::string error;
    ASSERT_TRUE(decoder.Open(path, error)) << error;
    EXPECT_EQ(decoder.GetChannels(), 1);
    EXPECT_NEAR(static_cast<double>(decoder.GetFrames()), SoundClips::kRate / 2.0, 2000.0);
}

TEST(AudioDecoderTest, RefusesGarbageMissingFilesAndManyChannels)
{
    TempFolder folder;
    Platform::AudioDecoder decoder;
    std::string error;
    EXPECT_FALSE(decoder.Open(folder.Write("Garbage.wav", std::string(500, 'x')), error));
    EXPECT_FALSE(error.empty());
    error.clear();
    EXPECT_FALSE(decoder.Open(folder.Path() + "Missing.wav", error));
    EXPECT_FALSE(error.empty());
    const std::string fourChannels = folder.Path() + "Four.wav";
    ASSERT_TRUE(SoundClips::Write(fourChannels, SoundClips::Tone(0.1, 0.5f, 440.0f, 4), 4));
    error.clear();
    EXPECT_FALSE(decoder.Open(fourChannels, error));
    EXPECT_NE(error.find("4 channels"), std::string::npos) << error;
    EXPECT_FALSE(decoder.IsOpen());
    std::int16_t sample = 0;
    EXPECT_EQ(decoder.Read(&sample, 1), 0);
}
}
