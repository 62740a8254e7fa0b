// The game builds every room of its data in turn, headless, and leaves a
// picture of each; an edited room file is read again and rebuilt. The tour
// state of tests/data/RoomTour is laid over a copy of the game's data.

#include "platform/ImageDecoder.h"
#include "support/HeadlessGame.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace
{
namespace fs = std::filesystem;

class RoomTourEndToEndTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Root = fs::temp_directory_path() / ("vorn_room_tour_" + std::to_string(getpid()));
        fs::remove_all(m_Root);
        fs::create_directories(m_Root / "pictures");
        fs::copy(VORN_DATA_DIR, m_Root / "Data", fs::copy_options::recursive);
        fs::copy(VORN_TEST_DATA_DIR "/RoomTour", m_Root / "Data",
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
    void TearDown() override { fs::remove_all(m_Root); }

    // Runs the game on the tour's data; gives what it printed.
    std::string RunTour() const
    {
        return RunHeadlessGame("--frames=3000 --datadir=\"" + (m_Root / "Data").string() + "\"", m_Root / "appdata",
                               "VORN_TOUR_FOLDER=\"" + (m_Root / "pictures").string() + "\"", "ignore")
            .output;
    }

    // The room names of the game's data, sorted.
    static std::vector<std::string> RoomNames()
    {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(fs::path(VORN_DATA_DIR) / "Rooms"))
            if (entry.path().extension() == ".txt")
                names.insert(entry.path().stem().string());
        return {names.begin(), names.end()};
    }

    fs::path m_Root;
};

// The largest difference of any channel between the picture's pixels: 0 for a picture of one colour.
int ChannelSpread(const Platform::DecodedImage& image)
{
    int low[3] = {255, 255, 255};
    int high[3] = {0, 0, 0};
    for (std::size_t at = 0; at + 3 < image.pixels.size(); at += 4)
        for (int channel = 0; channel < 3; ++channel)
        {
            low[channel] = std::min<int>(low[channel], image.pixels[at + channel]);
            high[channel] = std::max<int>(high[channel], image.pixels[at + channel]);
        }
    return std::max({high[0] - low[0], high[1] - low[1], high[2] - low[2]});
}

// Number of pixels whose colour differs by more than `tolerance` in some channel.
std::size_t DifferentPixels(const Platform::DecodedImage& a, const Platform::DecodedImage& b, int tolerance)
{
    std::size_t count = 0;
    for (std::size_t at = 0; at + 3 < a.pixels.size() && at + 3 < b.pixels.size(); at += 4)
        for (int channel = 0; channel < 3; ++channel)
            if (std::abs(int(a.pixels[at + channel]) - int(b.pixels[at + channel])) > tolerance)
            {
                ++count;
                break;
            }
    return count;
}
}

TEST_F(RoomTourEndToEndTest, EveryRoomIsBuiltAndDrawnAndAnEditedRoomIsRebuilt)
{
    const std::vector<std::string> names = RoomNames();
    ASSERT_GE(names.size(), 9u);
    const std::string output = RunTour();
    EXPECT_NE(output.find("Tour: done"), std::string::npos) << output;
    EXPECT_EQ(output.find("Lua Error"), std::string::npos) << output;
    EXPECT_EQ(output.find("[FATAL]"), std::string::npos) << output;

    for (const std::string& name : names)
    {
        EXPECT_NE(output.find("Tour: built " + name + ","), std::string::npos) << name;
        const Platform::DecodedImage picture = Platform::DecodeImageFile((m_Root / "pictures" / (name + ".png")).string());
        ASSERT_TRUE(picture.Valid()) << name << ": " << picture.error;
        EXPECT_GT(ChannelSpread(picture), 40) << name << " is drawn in one colour";
    }

    // The first room with pits was rewritten without them and built again from the new file.
    std::smatch edited;
    ASSERT_TRUE(std::regex_search(output, edited, std::regex("Tour: edited (\\w+)"))) << output;
    const std::string name = edited[1];
    const std::string after = output.substr(static_cast<std::size_t>(edited.position(0)));
    EXPECT_NE(after.find("Tour: built " + name + ", biome"), std::string::npos) << after;
    EXPECT_TRUE(std::regex_search(after, std::regex("Tour: built " + name + ", biome \\w+, pits 0"))) << after;
    const Platform::DecodedImage before = Platform::DecodeImageFile((m_Root / "pictures" / (name + ".png")).string());
    const Platform::DecodedImage rebuilt =
        Platform::DecodeImageFile((m_Root / "pictures" / (name + "-edited.png")).string());
    ASSERT_TRUE(rebuilt.Valid()) << rebuilt.error;
    EXPECT_GT(DifferentPixels(before, rebuilt, 24), before.pixels.size() / 4 / 100)
        << "the rebuilt room looks like the room before its edit";
}
