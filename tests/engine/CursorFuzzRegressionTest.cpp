// Every input that ever broke the cursor reader under the fuzzer (kept in
// tests/data/ReadCursorFuzz/), and the fuzzer's seeds, read again: each must be
// read or refused without a crash or a sanitizer report, and what is read must
// be a whole image with its hotspot inside.

#include "engine/CursorFile.h"

#include "support/FuzzInputs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{
// The file's bytes, as the reader takes them.
std::vector<std::uint8_t> Bytes(const std::filesystem::path& path)
{
    const std::string bytes = Contents(path);
    return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

const std::filesystem::path kSeeds = std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "fuzz" / "seeds" /
                                     "ReadCursor";
}

TEST(CursorFuzzRegressionTest, KeptInputsAndSeedsAreReadWithoutHarm)
{
    std::vector<std::filesystem::path> inputs = InputsIn(std::filesystem::path(VORN_TEST_DATA_DIR) / "ReadCursorFuzz");
    const std::vector<std::filesystem::path> seeds = InputsIn(kSeeds);
    ASSERT_FALSE(seeds.empty());
    inputs.insert(inputs.end(), seeds.begin(), seeds.end());
    for (const auto& input : inputs)
    {
        SCOPED_TRACE(input.string());
        const std::vector<std::uint8_t> bytes = Bytes(input);
        Engine::CursorImage image;
        std::string error;
        if (!Engine::ReadCursor(bytes.data(), bytes.size(), image, error))
        {
            EXPECT_FALSE(error.empty());
            continue;
        }
        EXPECT_EQ(image.pixels.size(), static_cast<std::size_t>(image.width) * image.height * 4);
        EXPECT_LT(image.hotspotX, image.width);
        EXPECT_LT(image.hotspotY, image.height);
    }
}

// The seeds drawn by tools/make_cursor.py at every depth it writes are read as cursors; the PNG one is refused.
TEST(CursorFuzzRegressionTest, SeedsOfEveryDepthAreReadAndThePngOneIsRefused)
{
    for (const auto& seed : InputsIn(kSeeds))
    {
        SCOPED_TRACE(seed.string());
        const std::vector<std::uint8_t> bytes = Bytes(seed);
        Engine::CursorImage image;
        std::string error;
        const bool read = Engine::ReadCursor(bytes.data(), bytes.size(), image, error);
        if (seed.filename().string().rfind("png", 0) == 0)
        {
            EXPECT_FALSE(read);
            EXPECT_NE(error.find("PNG"), std::string::npos);
            continue;
        }
        ASSERT_TRUE(read) << error;
        EXPECT_EQ(image.hotspotX, 0);
        EXPECT_EQ(image.hotspotY, 0);
        // The tail of the arrow is opaque, the far corner transparent.
        EXPECT_EQ(image.pixels[(static_cast<std::size_t>(image.height / 2) * image.width + 1) * 4 + 3], 255);
        EXPECT_EQ(image.pixels.back(), 0);
    }
}
