// The model readers' fuzz seeds (fuzz/seeds/ReadKbm/, fuzz/seeds/ReadKba/) and
// any input they ever broke on (tests/data/ReadKbmFuzz/, tests/data/ReadKbaFuzz/),
// read again: each seed is a file the reader accepts, and every kept input is
// read or refused without a crash or sanitizer report.

#include "Graphics_Engine/Model/ModelFile.h"

#include "support/FuzzInputs.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
const std::filesystem::path kSeeds = std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "fuzz" / "seeds";

const std::uint8_t* Bytes(const std::string& text)
{
    return reinterpret_cast<const std::uint8_t*>(text.data());
}
}

TEST(ModelFileFuzzRegressionTest, KbmSeedsAreAcceptedAndKeptInputsReadWithoutHarm)
{
    const auto seeds = InputsIn(kSeeds / "ReadKbm");
    ASSERT_GE(seeds.size(), 3u);
    for (const auto& seed : seeds)
    {
        const std::string bytes = Contents(seed);
        Graphics::ModelFile file;
        std::string error;
        EXPECT_TRUE(Graphics::ReadKbm(Bytes(bytes), bytes.size(), file, error)) << seed << ": " << error;
        EXPECT_FALSE(file.Vertices.empty()) << seed;
    }
    for (const auto& kept : InputsIn(std::filesystem::path(VORN_TEST_DATA_DIR) / "ReadKbmFuzz"))
    {
        const std::string bytes = Contents(kept);
        Graphics::ModelFile file;
        std::string error;
        Graphics::ReadKbm(Bytes(bytes), bytes.size(), file, error);
    }
}

TEST(ModelFileFuzzRegressionTest, KbaSeedsAreAcceptedAndKeptInputsReadWithoutHarm)
{
    const auto seeds = InputsIn(kSeeds / "ReadKba");
    ASSERT_GE(seeds.size(), 2u);
    for (const auto& seed : seeds)
    {
        const std::string bytes = Contents(seed);
        std::vector<Graphics::Animation> animations;
        std::string error;
        EXPECT_TRUE(Graphics::ReadKba(Bytes(bytes), bytes.size(), animations, error)) << seed << ": " << error;
    }
    for (const auto& kept : InputsIn(std::filesystem::path(VORN_TEST_DATA_DIR) / "ReadKbaFuzz"))
    {
        const std::string bytes = Contents(kept);
        std::vector<Graphics::Animation> animations;
        std::string error;
        Graphics::ReadKba(Bytes(bytes), bytes.size(), animations, error);
    }
}
