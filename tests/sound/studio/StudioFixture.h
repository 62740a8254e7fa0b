// The fixture of the sound layer's tests: a temporary data directory with its
// Banks/ and Sounds/ folders, and a studio system on the loopback device that
// renders the mix in frames of 1/60 s, updating between them as a game does.
#pragma once

#include "sound/studio/Studio.h"
#include "support/SoundClips.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class StudioFixture : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(Studio::System::create(&m_System), Studio::OK);
        ASSERT_EQ(m_System->initialize(32, Studio::INIT_LOOPBACK, 0, nullptr), Studio::OK);
    }
    void TearDown() override
    {
        if (m_System)
            m_System->release();
    }

    // Writes a clip under the data directory; `name` is relative to it ("Sounds/Tone.wav").
    void Clip(const std::string& name, const std::vector<float>& samples, int channels = 1,
              int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16)
    {
        m_Folder.Write(name, "");
        ASSERT_TRUE(SoundClips::Write(m_Folder.Path() + name, samples, channels, format));
    }
    // Writes a bank under Banks/ and loads it.
    Studio::Bank* Bank(const std::string& text, const std::string& name = "Test.bank")
    {
        const std::string path = m_Folder.Write("Banks/" + name, text);
        Studio::Bank* bank = nullptr;
        EXPECT_EQ(m_System->loadBankFile(path.c_str(), Studio::LOAD_BANK_NORMAL, &bank), Studio::OK);
        return bank;
    }
    // A new instance of a loaded event.
    Studio::EventInstance* Instance(const char* path)
    {
        Studio::EventDescription* description = nullptr;
        EXPECT_EQ(m_System->getEvent(path, &description), Studio::OK);
        Studio::EventInstance* instance = nullptr;
        if (description)
        {
            EXPECT_EQ(description->createInstance(&instance), Studio::OK);
        }
        return instance;
    }
    // Renders `seconds` of the mix in frames of 1/60 s with an update after each; gives the stereo samples.
    std::vector<float> Render(double seconds)
    {
        constexpr int kFrame = SoundClips::kRate / 60;
        const int total = static_cast<int>(seconds * SoundClips::kRate);
        std::vector<float> mix(static_cast<std::size_t>(total) * 2);
        for (int done = 0; done < total; done += kFrame)
        {
            const int frames = std::min(kFrame, total - done);
            EXPECT_EQ(m_System->renderSamples(mix.data() + static_cast<std::size_t>(done) * 2, frames), Studio::OK);
            EXPECT_EQ(m_System->update(), Studio::OK);
        }
        return mix;
    }
    // The playback state of an instance.
    static Studio::PlaybackState State(Studio::EventInstance* instance)
    {
        Studio::PlaybackState state = Studio::PLAYBACK_PLAYING;
        EXPECT_EQ(instance->getPlaybackState(&state), Studio::OK);
        return state;
    }

    // Gain of a mono clip played centred, on each of the two channels, as OpenAL Soft's stereo
    // panning gives it: measured once on the loopback device (a 0.5-amplitude sine renders at an
    // RMS of 0.21059 a side, against 0.35355 in the clip).
    static constexpr double kCentredMonoGain = 0.5956;

    TempFolder m_Folder;
    Studio::System* m_System = nullptr;
};
