// The vorn_make_sounds program: it writes every sound as Ogg Vorbis that
// decodes to the expected channels, rate and length; effects are audible,
// unclipped and start and end near zero; music loops run seamlessly from their
// last sample into their first; the same run gives the same samples; and a
// wrong option or name writes nothing.
#include "sound_generator/SoundTable.h"
#include "support/TempFolder.h"
#include "tools/SoundDecode.h"
#include "tools/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>

namespace
{
constexpr const char* kMakeSounds = VORN_MAKE_SOUNDS_PATH;

std::string SoundPath(const std::string& dataFolder, const SoundTools::NamedSound& sound)
{
    return dataFolder + "Sounds/" + sound.Folder + "/" + sound.Name + ".ogg";
}

// The sounds, each written once into a folder shared by the suite's tests
// (writing them takes a while in the sanitized build): a test asks for the ones
// it looks at, and those not written yet are written by one run of the program.
class MakeSounds : public testing::Test
{
protected:
    static void TearDownTestSuite()
    {
        if (!s_Folder.empty())
            std::filesystem::remove_all(s_Folder);
        s_Folder.clear();
        s_Sounds.clear();
    }

    // Writes the named sounds (all when `names` is empty); false with a test
    // failure when the program fails.
    static bool Write(std::vector<std::string> names)
    {
        if (s_Folder.empty())
        {
            s_Folder = (std::filesystem::temp_directory_path() / ("vorn_MakeSounds_" + std::to_string(getpid()))).string() + "/";
            std::filesystem::remove_all(s_Folder);
        }
        if (names.empty())
            for (const SoundTools::NamedSound& sound : SoundTools::SoundTable())
                names.push_back(sound.Name);
        std::string missing;
        for (const std::string& name : names)
            if (!s_Sounds.count(name))
                missing += " " + name;
        if (missing.empty())
            return true;
        const ToolTest::ToolRun run = ToolTest::RunTool(kMakeSounds, "\"" + s_Folder + "\"" + missing);
        EXPECT_EQ(run.ExitCode, 0) << run.Output;
        if (run.ExitCode != 0)
            return false;
        for (const std::string& name : names)
            if (const SoundTools::NamedSound* sound = SoundTools::FindSound(name); sound && !s_Sounds.count(name))
                s_Sounds[name] = ToolTest::DecodeSound(SoundPath(s_Folder, *sound));
        return true;
    }

    static const ToolTest::DecodedSound& Decoded(const std::string& name) { return s_Sounds[name]; }

    static std::vector<std::string> Effects()
    {
        std::vector<std::string> names;
        for (const SoundTools::NamedSound& sound : SoundTools::SoundTable())
            if (sound.Folder == "Effects")
                names.push_back(sound.Name);
        return names;
    }

    static std::string s_Folder;
    static std::map<std::string, ToolTest::DecodedSound> s_Sounds;
};

std::string MakeSounds::s_Folder;
std::map<std::string, ToolTest::DecodedSound> MakeSounds::s_Sounds;
}

TEST_F(MakeSounds, WritesEverySoundAsOggVorbisWithItsChannelsRateAndLength)
{
    ASSERT_TRUE(Write({}));
    for (const SoundTools::NamedSound& sound : SoundTools::SoundTable())
    {
        const ToolTest::DecodedSound& decoded = Decoded(sound.Name);
        ASSERT_TRUE(decoded.Opened) << sound.Name;
        SF_INFO info{};
        SNDFILE* file = sf_open(SoundPath(s_Folder, sound).c_str(), SFM_READ, &info);
        ASSERT_NE(file, nullptr) << sound.Name;
        sf_close(file);
        EXPECT_EQ(info.format, SF_FORMAT_OGG | SF_FORMAT_VORBIS) << sound.Name;
        EXPECT_EQ(decoded.SampleRate, 48000) << sound.Name;
        const bool music = sound.Folder == "Music";
        EXPECT_EQ(decoded.Channels, music ? 2 : 1) << sound.Name;
        if (music)
        {
            EXPECT_GE(decoded.Seconds(), 16.0) << sound.Name;
            EXPECT_LE(decoded.Seconds(), 32.0) << sound.Name;
        }
        else
        {
            EXPECT_GE(decoded.Seconds(), 0.04) << sound.Name;
            EXPECT_LE(decoded.Seconds(), 2.0) << sound.Name;
        }
        // In place of listening: what each file measures.
        std::printf("  %-16s %6.3f s  peak %.3f (%.1f dBFS)  RMS %.3f  first %+.4f  last %+.4f\n", sound.Name.c_str(),
                    decoded.Seconds(), ToolTest::PeakOf(decoded),
                    20.0 * std::log10(std::max(1e-9f, ToolTest::PeakOf(decoded))), ToolTest::RmsOf(decoded),
                    decoded.Samples.empty() ? 0.0f : decoded.Samples.front(),
                    decoded.Samples.empty() ? 0.0f : decoded.Samples.back());
    }
}

TEST_F(MakeSounds, EffectsAreAudibleUnclippedAndStartAndEndNearZero)
{
    ASSERT_TRUE(Write(Effects()));
    for (const SoundTools::NamedSound& sound : SoundTools::SoundTable())
    {
        if (sound.Folder != "Effects")
            continue;
        const ToolTest::DecodedSound& decoded = Decoded(sound.Name);
        ASSERT_GT(decoded.Frames(), 0u) << sound.Name;
        const float peak = ToolTest::PeakOf(decoded);
        EXPECT_GT(peak, 0.5f) << sound.Name;
        EXPECT_LT(peak, 1.0f) << sound.Name;
        EXPECT_GT(ToolTest::RmsOf(decoded), 0.03) << sound.Name;
        EXPECT_LT(std::fabs(decoded.Samples.front()), 0.02f) << sound.Name;
        EXPECT_LT(std::fabs(decoded.Samples.back()), 0.02f) << sound.Name;
    }
}

TEST_F(MakeSounds, MusicLoopsRunSeamlesslyFromTheirLastSampleIntoTheirFirst)
{
    ASSERT_TRUE(Write({"MenuLoop", "PlayLoop", "PlayLoopIntense"}));
    for (const char* name : {"MenuLoop", "PlayLoop", "PlayLoopIntense"})
    {
        const ToolTest::DecodedSound& decoded = Decoded(name);
        ASSERT_GT(decoded.Frames(), 1u) << name;
        for (int channel = 0; channel < decoded.Channels; ++channel)
        {
            const float seam = std::fabs(decoded.At(0, channel) - decoded.At(decoded.Frames() - 1, channel));
            const float largest = ToolTest::LargestStep(decoded, channel);
            EXPECT_LE(seam, largest) << name << " channel " << channel;
            std::printf("  %-16s channel %d: seam step %.4f, largest step inside %.4f\n", name, channel, seam, largest);
        }
        EXPECT_GT(ToolTest::RmsOf(decoded), 0.03) << name;
    }
}

TEST_F(MakeSounds, TheIntenseLoopMatchesThePlayLoopsLengthAndIsLouder)
{
    ASSERT_TRUE(Write({"PlayLoop", "PlayLoopIntense"}));
    const ToolTest::DecodedSound& play = Decoded("PlayLoop");
    const ToolTest::DecodedSound& intense = Decoded("PlayLoopIntense");
    EXPECT_EQ(play.Frames(), intense.Frames());
    EXPECT_GT(ToolTest::RmsOf(intense), 1.3 * ToolTest::RmsOf(play));
}

TEST(MakeSoundsRun, RunningTwiceGivesTheSameSamples)
{
    TempFolder first, second;
    const std::string names = " Shot1 Footstep2 Explosion MenuLoop";
    const ToolTest::ToolRun a = ToolTest::RunTool(kMakeSounds, "\"" + first.Path() + "\"" + names);
    const ToolTest::ToolRun b = ToolTest::RunTool(kMakeSounds, "\"" + second.Path() + "\"" + names);
    ASSERT_EQ(a.ExitCode, 0) << a.Output;
    ASSERT_EQ(b.ExitCode, 0) << b.Output;
    for (const char* name : {"Shot1", "Footstep2", "Explosion", "MenuLoop"})
    {
        const SoundTools::NamedSound* sound = SoundTools::FindSound(name);
        ASSERT_NE(sound, nullptr) << name;
        const ToolTest::DecodedSound one = ToolTest::DecodeSound(SoundPath(first.Path(), *sound));
        const ToolTest::DecodedSound two = ToolTest::DecodeSound(SoundPath(second.Path(), *sound));
        ASSERT_TRUE(one.Opened && two.Opened) << name;
        EXPECT_FALSE(one.Samples.empty()) << name;
        EXPECT_EQ(one.Samples, two.Samples) << name;
    }
}

TEST(MakeSoundsRun, WritesOnlyTheNamedSounds)
{
    TempFolder folder;
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeSounds, "\"" + folder.Path() + "\" Jump MenuMove");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path()))
        if (entry.is_regular_file())
            names.push_back(std::filesystem::relative(entry.path(), folder.Path()).string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"Sounds/Effects/Jump.ogg", "Sounds/Effects/MenuMove.ogg"}));
}

TEST(MakeSoundsRun, AWrongOptionPrintsTheUsageAndWritesNothing)
{
    TempFolder folder;
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeSounds, "\"" + folder.Path() + "\" --loud");
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_NE(run.Output.find("unknown option \"--loud\""), std::string::npos) << run.Output;
    EXPECT_NE(run.Output.find("usage: vorn_make_sounds"), std::string::npos) << run.Output;
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(MakeSoundsRun, AnUnknownSoundPrintsTheUsageAndWritesNothing)
{
    TempFolder folder;
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeSounds, "\"" + folder.Path() + "\" Jump Kazoo");
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_NE(run.Output.find("unknown sound \"Kazoo\""), std::string::npos) << run.Output;
    EXPECT_NE(run.Output.find("usage: vorn_make_sounds"), std::string::npos) << run.Output;
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(MakeSoundsRun, NoDataFolderPrintsTheUsage)
{
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeSounds, "");
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_NE(run.Output.find("usage: vorn_make_sounds"), std::string::npos) << run.Output;
}
