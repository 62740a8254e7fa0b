// A data folder for the sound systems' tests: banks under "Banks/" and short
// tones written as 16-bit WAV files under "Sounds/", and the SoundSystem opened
// on it through the sound layer's loopback device, so that a test can render the
// mix and measure it.
//
//   SoundTestData data;          // writes the folder, opens the sound system on it
//   data.Render(0.1f);           // mixes 0.1 s; gives the left channel
//   Level(data.Render(0.05f));   // its root mean square
#pragma once

#include "engine/Files.h"
#include "sound/SoundLimits.h"
#include "sound/SoundSystem.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

namespace SoundTest
{
// Sample rate of the test clips.
constexpr int kRate = 48000;

// Writes a mono 16-bit WAV file of a sine of `amplitude` at `frequency` Hz lasting `seconds`.
inline void WriteTone(const std::string& path, float seconds, float amplitude = 0.5f, float frequency = 1000.0f)
{
    const auto frames = static_cast<std::uint32_t>(seconds * kRate);
    std::vector<std::int16_t> samples(frames);
    for (std::uint32_t i = 0; i < frames; ++i)
        samples[i] = static_cast<std::int16_t>(std::lround(
            32767.0 * amplitude * std::sin(2.0 * 3.14159265358979 * frequency * i / kRate)));
    std::ofstream out(path, std::ios::binary);
    auto put32 = [&out](std::uint32_t value) { out.write(reinterpret_cast<const char*>(&value), 4); };
    auto put16 = [&out](std::uint16_t value) { out.write(reinterpret_cast<const char*>(&value), 2); };
    const std::uint32_t bytes = frames * 2;
    out.write("RIFF", 4);
    put32(36 + bytes);
    out.write("WAVEfmt ", 8);
    put32(16);
    put16(1);      // PCM
    put16(1);      // mono
    put32(kRate);
    put32(kRate * 2);
    put16(2);
    put16(16);
    out.write("data", 4);
    put32(bytes);
    out.write(reinterpret_cast<const char*>(samples.data()), bytes);
}

// The root mean square of samples.
inline float Level(const std::vector<float>& samples)
{
    double sum = 0.0;
    for (float sample : samples)
        sum += double(sample) * sample;
    return samples.empty() ? 0.0f : static_cast<float>(std::sqrt(sum / samples.size()));
}

// One event of a test bank.
inline std::string Event(const std::string& path, const std::string& clip, bool loop = false)
{
    return "Event\n{\n  Path \"event:/" + path + "\"\n  Clips\n  {\n    \"Sounds/" + clip + "\"\n  }\n  Loop " +
           (loop ? "true" : "false") + "\n}\n";
}

// An effect whose parameter "Loudness" (0 to 1, at first 1) scales its volume from 0 to 1.
inline const std::string kTunedEvent = R"(Event
{
  Path "event:/Effects/Tuned"
  Clips
  {
    "Sounds/Long.wav"
  }
  Parameters
  {
    {
      Name "Loudness"
      Minimum 0
      Maximum 1
      Default 1
      Drives Volume
      From 0
      To 1
    }
  }
}
)";

// The folder, its banks and clips, and the sound system opened on it for one test.
class SoundTestData
{
public:
    // Writes the folder, with `extraEffects` (bank text) at the end of the effects bank, and
    // opens the sound system on it unless `open` is false.
    explicit SoundTestData(const std::string& extraEffects = "", bool open = true)
    {
        std::filesystem::create_directories(m_Folder.Path() + "Sounds");
        WriteTone(m_Folder.Path() + "Sounds/Long.wav", 3.0f);
        WriteTone(m_Folder.Path() + "Sounds/Short.wav", 0.1f);
        m_Folder.Write("Banks/Master Bank.bank", Event("Master/Hidden", "Long.wav"));
        m_Folder.Write("Banks/Master Bank.strings.bank", "// No events.\n");
        m_Folder.Write("Banks/Music.bank", Event("Music/Loop", "Long.wav", true) + Event("Music/Short", "Short.wav"));
        m_Folder.Write("Banks/Effects.bank", Event("Effects/Long", "Long.wav") + Event("Effects/Short", "Short.wav") +
                                                 kTunedEvent + extraEffects);
        if (open)
            Open();
    }
    ~SoundTestData()
    {
        SoundSystem::Get().Shutdown();
        SoundSystem::Get().m_InitFlags = 0;
        SoundSystem::SetMusicVolume(0.4f);
        SoundSystem::SetEffectsVolume(0.6f);
        SoundSystem::SetMusicMute(false);
        SoundSystem::SetEffectsMute(false);
        SoundLimits::Clear();
        Util::SetDataDirectory(m_OldData);
    }
    SoundTestData(const SoundTestData&) = delete;
    SoundTestData& operator=(const SoundTestData&) = delete;

    // Opens the sound system on the folder with the loopback device.
    void Open()
    {
        Util::SetDataDirectory(m_Folder.Path());
        SoundSystem::Get().m_InitFlags = Studio::INIT_LOOPBACK;
        SoundSystem::Get().Initialize();
    }
    // Mixes `seconds` of sound; the left channel's samples.
    std::vector<float> Render(float seconds)
    {
        const int frames = static_cast<int>(seconds * SoundSystem::Get().m_Studio->getSampleRate());
        std::vector<float> stereo(static_cast<std::size_t>(frames) * 2);
        EXPECT_EQ(SoundSystem::Get().m_Studio->renderSamples(stereo.data(), frames), Studio::OK);
        std::vector<float> left(static_cast<std::size_t>(frames));
        for (int i = 0; i < frames; ++i)
            left[i] = stereo[2 * static_cast<std::size_t>(i)];
        return left;
    }
    // Writes a file into the folder.
    void Write(const std::string& name, const std::string& text) { m_Folder.Write(name, text); }
    // The folder, ending in '/'.
    std::string Path() const { return m_Folder.Path(); }

private:
    std::string m_OldData = Util::GetDataDirectory();
    TempFolder m_Folder;
};
}
