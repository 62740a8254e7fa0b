// The shader description fuzzer's seeds (fuzz/seeds/ShaderDescription/) and
// any input it ever broke on (tests/data/ShaderDescriptionFuzz/), read again:
// each must be preprocessed or refused without a crash or sanitizer report,
// and what is accepted names a stage and an entry point.

#include "Graphics_Engine/ShaderPreprocessor.h"

#include "support/FuzzInputs.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <filesystem>

TEST(ShaderDescriptionFuzzRegressionTest, KeptInputsAndSeedsArePreprocessedWithoutHarm)
{
    std::vector<std::filesystem::path> inputs =
        InputsIn(std::filesystem::path(VORN_TEST_DATA_DIR) / "ShaderDescriptionFuzz");
    const std::vector<std::filesystem::path> seeds =
        InputsIn(std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "fuzz" / "seeds" / "ShaderDescription");
    ASSERT_FALSE(seeds.empty());
    inputs.insert(inputs.end(), seeds.begin(), seeds.end());
    for (const auto& input : inputs)
    {
        SCOPED_TRACE(input.string());
        ReportCapture capture;
        Graphics::ShaderDescription description;
        if (Graphics::PreprocessShader(Contents(input), input.filename().string(), description))
        {
            EXPECT_GE(description.Stage, Graphics::StageVertex);
            EXPECT_LE(description.Stage, Graphics::StageCompute);
            EXPECT_FALSE(description.EntryPoint.empty());
        }
    }
}

TEST(ShaderDescriptionFuzzRegressionTest, GoodSeedsAreAcceptedAndTheBadOneRefused)
{
    const auto seeds = std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "fuzz" / "seeds" / "ShaderDescription";
    for (const char* good : {"pixel-with-samplers.glsl", "comments-and-lines.glsl", "compute-crlf-no-final-newline.glsl"})
    {
        ReportCapture capture;
        Graphics::ShaderDescription description;
        EXPECT_TRUE(Graphics::PreprocessShader(Contents(seeds / good), good, description)) << good;
    }
    ReportCapture capture;
    Graphics::ShaderDescription description;
    EXPECT_FALSE(Graphics::PreprocessShader(Contents(seeds / "bad-values.glsl"), "bad-values.glsl", description));
}
