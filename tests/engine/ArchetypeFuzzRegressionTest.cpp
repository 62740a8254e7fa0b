// Every input that ever broke the archetype reader under the fuzzer (kept in
// tests/data/ReadArchetypeFuzz/), and the fuzzer's seeds, read again: each must be
// read and written back without a crash, a hang or a sanitizer report, with
// dialogs answered Ignore.

#include "engine/ArchetypeFuzzInput.h"

#include "support/FuzzInputs.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

TEST(ArchetypeFuzzRegressionTest, KeptInputsAndSeedsAreReadWithoutHarm)
{
    const std::filesystem::path data = VORN_TEST_DATA_DIR;
    std::vector<std::filesystem::path> inputs = InputsIn(data / "ReadArchetypeFuzz");
    const std::vector<std::filesystem::path> seeds = InputsIn(data / ".." / ".." / "fuzz" / "seeds" / "ReadArchetype");
    ASSERT_GE(seeds.size(), 6u);
    inputs.insert(inputs.end(), seeds.begin(), seeds.end());
    ReportCapture reports;
    for (const auto& input : inputs)
    {
        SCOPED_TRACE(input.string());
        ReadComponentListAndWriteBack(Contents(input));
    }
}

TEST(ArchetypeFuzzRegressionTest, EveryCutOfTheSeedsIsReadWithoutHarm)
{
    // Each seed cut short at every length: the reader meets the end of the input everywhere.
    const std::filesystem::path seeds = std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "fuzz" / "seeds" /
                                        "ReadArchetype";
    ReportCapture reports;
    for (const auto& seed : InputsIn(seeds))
    {
        SCOPED_TRACE(seed.string());
        const std::string text = Contents(seed);
        for (std::size_t length = 1; length <= text.size(); ++length)
            ReadComponentListAndWriteBack(text.substr(0, length));
    }
}
