// Every input that ever broke the room reader under the fuzzer (kept in
// tests/data/ReadRoomFuzz/), and the fuzzer's seeds, read again: each must be
// read and written back without a crash, a hang or a sanitizer report, with
// dialogs answered Ignore.

#include "rooms/RoomFuzzInput.h"

#include "support/FuzzInputs.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

TEST(RoomFuzzRegressionTest, KeptInputsAndSeedsAreReadWithoutHarm)
{
    const std::filesystem::path data = VORN_TEST_DATA_DIR;
    std::vector<std::filesystem::path> inputs = InputsIn(data / "ReadRoomFuzz");
    const std::vector<std::filesystem::path> seeds = InputsIn(data / ".." / ".." / "fuzz" / "seeds" / "ReadRoom");
    ASSERT_GE(seeds.size(), 4u);
    inputs.insert(inputs.end(), seeds.begin(), seeds.end());
    ReportCapture reports;
    for (const auto& input : inputs)
    {
        SCOPED_TRACE(input.string());
        ReadRoomAndWriteBack(Contents(input));
    }
}

TEST(RoomFuzzRegressionTest, EveryCutOfTheSeedsIsReadWithoutHarm)
{
    const std::filesystem::path seeds = std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "fuzz" / "seeds" /
                                        "ReadRoom";
    ReportCapture reports;
    for (const auto& seed : InputsIn(seeds))
    {
        SCOPED_TRACE(seed.string());
        const std::string text = Contents(seed);
        for (std::size_t length = 1; length <= text.size(); ++length)
            ReadRoomAndWriteBack(text.substr(0, length));
    }
}
