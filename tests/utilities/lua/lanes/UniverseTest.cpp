#include "LanesState.h"

#include <gtest/gtest.h>

#include <cstdlib>

using LanesTest::LanesState;

namespace
{
// Starts a lane that waits forever on a linda, closes the state that started it and ends the
// process; the lane catches its cancel and says so on standard error.
[[noreturn]] void ExitWhileALaneWaits()
{
    auto* state = new LanesState();
    state->Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        lanes.gen("*", function()
            local ok, reason = pcall(linda.receive, linda, "never")
            if not ok and reason == lanes.cancel_error then io.stderr:write("lane cancelled at exit\n") end
        end)()
        lanes.sleep(0.05)
    )");
    delete state;
    std::exit(0);
}
}

TEST(LanesUniverse, LaneStillWaitingAtExitIsCancelledAndTheProcessEndsCleanly)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(ExitWhileALaneWaits(), testing::ExitedWithCode(0), "lane cancelled at exit");
}
