// Every input that ever broke the text reader under the fuzzer, and the fuzzer's
// seeds, read again: each must be read and written back without a crash, a hang
// or a sanitizer report, with dialogs answered Ignore.

#include "support/FuzzInputs.h"
#include "support/ReportCapture.h"
#include "utilities/Serialization/TextSamples.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>


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
