// A data folder for the sound systems' tests: banks under "Banks/" and short
// tones written as WAV files under "Sounds/" (support/SoundClips.h), and the SoundSystem opened
// on it through the sound layer's loopback device, so that a test can render the
// mix and measure it.
//
//   SoundTestData data;          // writes the folder, opens the sound system on it
//   data.Render(0.1f);           // mixes 0.1 s, stereo
//   Level(data.Render(0.05f));   // the left channel's root mean square
#pragma once

#include "engine/Files.h"
#include "sound/SoundLimits.h"
#include "sound/SoundSystem.h"
#include "support/SoundClips.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace SoundTest
{
// Writes a mono WAV file of a 1000 Hz sine of amplitude 0.5 lasting `seconds`.
inline void WriteTone(const std::string& path, float seconds)
{
    SoundClips::Write(path, SoundClips::Tone(seconds, 0.5f, 1000.0f));
}

// The root mean square of the left channel of a stereo mix.
inline float Level(const std::vector<float>& stereo)
{
    return static_cast<float>(SoundClips::Rms(stereo, 0));
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
    // Mixes `seconds` of sound; the stereo samples, interleaved.
    std::vector<float> Render(float seconds)
    {
        const int frames = static_cast<int>(seconds * SoundSystem::Get().m_Studio->getSampleRate());
        std::vector<float> stereo(static_cast<std::size_t>(frames) * 2);
        EXPECT_EQ(SoundSystem::Get().m_Studio->renderSamples(stereo.data(), frames), Studio::OK);
        return stereo;
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
