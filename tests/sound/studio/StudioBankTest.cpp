// Loading banks: clips found under the data directory, missing and undecodable
// clips reported once while the other events play, every file format, the
// order of clips, and events listed by bank.
#include "sound/studio/StudioFixture.h"

#include "support/ReportCapture.h"

#include <set>

namespace
{
using StudioBankTest = StudioFixture;

std::size_t Count(const std::string& text, const std::string& part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST_F(StudioBankTest, MissingAndUndecodableClipsAreReportedOnceAndTheOtherEventsPlay)
{
    Clip("Sounds/Good.wav", SoundClips::Tone(1.0, 0.5f));
    m_Folder.Write("Sounds/Garbage.ogg", std::string(3000, '\x5a') + "not a sound at all");
    ReportCapture reports;
    Studio::Bank* bank = Bank(R"(Event
{
  Path "event:/Missing"
  Clips { "Sounds/Missing.wav" }
}
Event
{
  Path "event:/AlsoMissing"
  Clips { "Sounds/Missing.wav", "Sounds/Garbage.ogg" }
}
Event
{
  Path "event:/Garbage"
  Clips { "Sounds/Garbage.ogg" }
}
Event
{
  Path "event:/Good"
  Clips { "Sounds/Garbage.ogg", "Sounds/Good.wav" }
}
)");
    const std::string text = reports.Text();
    EXPECT_EQ(Count(text, "Sound clip not found: "), Count(text, "Sound clip can't be decoded: ")) << text;
    EXPECT_GE(Count(text, "Sounds/Missing.wav"), 1u) << text;
    EXPECT_EQ(Count(text, "Sounds/Missing.wav"), Count(text, "Sound clip not found: ")) << text;
    EXPECT_EQ(Count(text, "Sounds/Garbage.ogg"), Count(text, "Sound clip can't be decoded: ")) << text;
    int count = 0;
    ASSERT_EQ(bank->getEventCount(&count), Studio::OK);
    EXPECT_EQ(count, 4);

    // The event with no clip left plays nothing and ends; the one with a good clip plays it.
    Studio::EventInstance* missing = Instance("event:/Missing");
    ASSERT_EQ(missing->start(), Studio::OK);
    EXPECT_EQ(State(missing), Studio::PLAYBACK_STOPPED);
    Studio::EventInstance* good = Instance("event:/Good");
    ASSERT_EQ(good->start(), Studio::OK);
    EXPECT_GT(SoundClips::Rms(Render(0.2), 0, 480), 0.2);
}

struct Format
{
    const char* file;
    int format;
};

TEST_F(StudioBankTest, WavFlacOggAndOpusClipsDecode)
{
    const Format formats[] = {{"Sounds/Tone.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                              {"Sounds/Tone.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
                              {"Sounds/Tone.ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS}};
    std::string bank;
    for (const Format& format : formats)
    {
        Clip(format.file, SoundClips::Tone(0.5, 0.5f), 1, format.format);
        bank += std::string("Event\n{\n  Path \"event:/") + format.file + "\"\n  Clips { \"" + format.file + "\" }\n}\n";
    }
    Bank(bank);
    const double expected = 0.5 / std::sqrt(2.0) * kCentredMonoGain;
    for (const Format& format : formats)
    {
        Studio::EventInstance* instance = Instance((std::string("event:/") + format.file).c_str());
        ASSERT_NE(instance, nullptr) << format.file;
        ASSERT_EQ(instance->start(), Studio::OK);
        EXPECT_NEAR(SoundClips::Rms(Render(0.2), 0, 2400), expected, expected * 0.05) << format.file;
        ASSERT_EQ(instance->stop(Studio::STOP_IMMEDIATE), Studio::OK);
        Render(0.02);
    }
}

TEST_F(StudioBankTest, OpusClipDecodesWhereTheLibraryHasIt)
{
    const int opus = SF_FORMAT_OGG | 0x0064; // SF_FORMAT_OPUS in libsndfile 1.0.29 and later
    if (!SoundClips::CanWrite(opus))
        GTEST_SKIP() << "libsndfile has no Opus here";
    Clip("Sounds/Tone.opus", SoundClips::Tone(0.5, 0.5f), 1, opus);
    Bank("Event\n{\n  Path \"event:/Opus\"\n  Clips { \"Sounds/Tone.opus\" }\n}\n");
    Studio::EventInstance* instance = Instance("event:/Opus");
    ASSERT_EQ(instance->start(), Studio::OK);
    const double expected = 0.5 / std::sqrt(2.0) * kCentredMonoGain;
    EXPECT_NEAR(SoundClips::Rms(Render(0.2), 0, 2400), expected, expected * 0.1);
}

TEST_F(StudioBankTest, RandomOrderNeverRepeatsAClipAndSequentialGoesRound)
{
    Clip("Sounds/A.wav", SoundClips::Tone(0.05, 0.1f));
    Clip("Sounds/B.wav", SoundClips::Tone(0.05, 0.3f));
    Clip("Sounds/C.wav", SoundClips::Tone(0.05, 0.6f));
    Bank(R"(Event
{
  Path "event:/Random"
  Clips { "Sounds/A.wav", "Sounds/B.wav", "Sounds/C.wav" }
}
Event
{
  Path "event:/Sequential"
  Clips { "Sounds/A.wav", "Sounds/B.wav", "Sounds/C.wav" }
  Order Sequential
}
)");
    // Each start's level tells which clip played.
    auto levelOfNextStart = [this](Studio::EventInstance* instance) {
        EXPECT_EQ(instance->start(), Studio::OK);
        const double level = SoundClips::Rms(Render(0.03), 0, 240);
        EXPECT_EQ(instance->stop(Studio::STOP_IMMEDIATE), Studio::OK);
        Render(0.02);
        return level < 0.05 ? 0 : level < 0.15 ? 1 : 2;
    };
    Studio::EventInstance* random = Instance("event:/Random");
    std::set<int> seen;
    int last = -1;
    for (int start = 0; start < 12; ++start)
    {
        const int clip = levelOfNextStart(random);
        EXPECT_NE(clip, last);
        seen.insert(clip);
        last = clip;
    }
    EXPECT_EQ(seen.size(), 3u);
    Studio::EventInstance* sequential = Instance("event:/Sequential");
    for (int start = 0; start < 6; ++start)
        EXPECT_EQ(levelOfNextStart(sequential), start % 3);
}

TEST_F(StudioBankTest, BankListsItsEventsAndLoadsOnce)
{
    Clip("Sounds/A.wav", SoundClips::Tone(0.05, 0.1f));
    Studio::Bank* bank = Bank("Event\n{\n  Path \"event:/One\"\n  Clips { \"Sounds/A.wav\" }\n}\n"
                              "Event\n{\n  Path \"event:/Two\"\n}\n");
    Studio::EventDescription* list[4] = {};
    int count = 0;
    ASSERT_EQ(bank->getEventList(list, 1, &count), Studio::OK);
    EXPECT_EQ(count, 1);
    ASSERT_EQ(bank->getEventList(list, 4, &count), Studio::OK);
    ASSERT_EQ(count, 2);
    char path[32];
    ASSERT_EQ(list[1]->getPath(path, sizeof(path), nullptr), Studio::OK);
    EXPECT_STREQ(path, "event:/Two");
    EXPECT_EQ(Bank("", "Test.bank"), bank);
    Studio::Bank* empty = Bank("// No events yet.\n", "Empty.bank");
    ASSERT_EQ(empty->getEventCount(&count), Studio::OK);
    EXPECT_EQ(count, 0);
}
}
