// Every input that ever broke the text reader under the fuzzer, and the fuzzer's
// seeds, read again: each must be read and written back without a crash, a hang
// or a sanitizer report, with dialogs answered Ignore.

#include "support/ReportCapture.h"
#include "utilities/Serialization/TextSamples.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace
{
std::vector<std::filesystem::path> InputsIn(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> inputs;
    if (!std::filesystem::is_directory(folder))
        return inputs;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.is_regular_file())
            inputs.push_back(entry.path());
    return inputs;
}

std::string Contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}
}

TEST(FuzzRegressionTest, KeptInputsAndSeedsAreReadWithoutHarm)
{
    const std::filesystem::path data = VORN_TEST_DATA_DIR;
    std::vector<std::filesystem::path> inputs = InputsIn(data / "ReadObjectFuzz");
    const std::vector<std::filesystem::path> seeds = InputsIn(data / ".." / ".." / "fuzz" / "seeds" / "ReadObject");
    ASSERT_FALSE(seeds.empty());
    inputs.insert(inputs.end(), seeds.begin(), seeds.end());
    ReportCapture reports;
    for (const auto& input : inputs)
    {
        SCOPED_TRACE(input.string());
        ReadAndWriteBack(Contents(input));
    }
}
