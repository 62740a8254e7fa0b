// The banks under Data/Banks/ and the sounds tools/make_sounds.sh wrote into
// Data/Sounds/: every clip a bank names is there and decodes, and every sound
// there is named by a bank.
#include "tools/SoundDecode.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace
{
const std::filesystem::path kData = VORN_DATA_DIR;

// The quoted clip paths inside the "Clips { ... }" blocks of a bank, read
// simply: every quoted string on the lines between "Clips" and its "}".
std::vector<std::string> ClipsOf(const std::filesystem::path& bank)
{
    std::vector<std::string> clips;
    std::ifstream in(bank);
    std::string line;
    bool inClips = false;
    while (std::getline(in, line))
    {
        const std::size_t first = line.find_first_not_of(" \t\r");
        const std::string trimmed = first == std::string::npos ? "" : line.substr(first, line.find_last_not_of(" \t\r") - first + 1);
        if (trimmed == "Clips")
        {
            inClips = true;
            continue;
        }
        if (!inClips || trimmed == "{")
            continue;
        if (trimmed == "}")
        {
            inClips = false;
            continue;
        }
        const std::size_t open = trimmed.find('"');
        const std::size_t close = trimmed.find('"', open + 1);
        if (open != std::string::npos && close != std::string::npos)
            clips.push_back(trimmed.substr(open + 1, close - open - 1));
    }
    return clips;
}
}

TEST(GameSounds, EveryClipNamedByABankExistsUnderTheDataFolderAndDecodes)
{
    std::size_t banks = 0, clips = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kData / "Banks"))
    {
        if (entry.path().extension() != ".bank")
            continue;
        ++banks;
        for (const std::string& clip : ClipsOf(entry.path()))
        {
            ++clips;
            const std::filesystem::path path = kData / clip;
            ASSERT_TRUE(std::filesystem::is_regular_file(path)) << entry.path().filename() << " names " << clip;
            const ToolTest::DecodedSound sound = ToolTest::DecodeSound(path.string());
            EXPECT_TRUE(sound.Opened) << clip;
            EXPECT_EQ(sound.SampleRate, 48000) << clip;
            EXPECT_GT(sound.Frames(), 0u) << clip;
        }
    }
    EXPECT_EQ(banks, 4u);
    EXPECT_GE(clips, 22u);
}

TEST(GameSounds, EverySoundOfTheDataFolderIsNamedByABank)
{
    std::set<std::string> named;
    for (const char* bank : {"Effects.bank", "Music.bank"})
        for (const std::string& clip : ClipsOf(kData / "Banks" / bank))
            named.insert(clip);
    std::size_t sounds = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(kData / "Sounds"))
    {
        if (!entry.is_regular_file())
            continue;
        ++sounds;
        const std::string relative = std::filesystem::relative(entry.path(), kData).generic_string();
        EXPECT_TRUE(named.count(relative)) << relative;
    }
    EXPECT_EQ(sounds, 22u);
}

TEST(GameSounds, TheMasterBanksHoldNoEvents)
{
    for (const char* name : {"Master Bank.bank", "Master Bank.strings.bank"})
    {
        std::ifstream in(kData / "Banks" / name);
        ASSERT_TRUE(in) << name;
        std::string line;
        while (std::getline(in, line))
        {
            const std::size_t first = line.find_first_not_of(" \t\r");
            EXPECT_TRUE(first == std::string::npos || line.compare(first, 2, "//") == 0) << name << ": " << line;
        }
    }
}
