#include "LanesState.h"

#include <gtest/gtest.h>

using LanesTest::LanesState;

TEST(LanesCancel, CancelWakesALaneBlockedOnReceive)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local h = lanes.gen("base", function() linda:receive("never") return "not cancelled" end)()
        for _ = 1, 1000 do
            if h.status == "waiting" then break end
            lanes.sleep(0.01)
        end
        local before = h.status
        local ended = h:cancel(30)
        local result, reason = h:join(30)
        return before, ended, h.status, result, reason
    )"),
              "");
    ASSERT_EQ(state.Count(), 5);
    EXPECT_EQ(state.String(1), "waiting");
    EXPECT_TRUE(state.Boolean(2));
    EXPECT_EQ(state.String(3), "cancelled");
    EXPECT_TRUE(state.IsNil(4));
    EXPECT_EQ(state.String(5), "cancelled");
}

TEST(LanesCancel, CancelStepStopsABusyLoopThroughTheDebugHook)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local h = lanes.gen("base", {cancelstep = 1000}, function()
            linda:send("started", true)
            local n = 0
            while true do n = n + 1 end
        end)()
        linda:receive(30, "started")
        return h:cancel(30), h.status
    )"),
              "");
    EXPECT_TRUE(state.Boolean(1));
    EXPECT_EQ(state.String(2), "cancelled");
}

TEST(LanesCancel, CancelTestLetsALaneEndByItself)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local h = lanes.gen("base", function()
            linda:send("started", true)
            while not cancel_test() do end
            return "saw the request"
        end)()
        linda:receive(30, "started")
        local ended = h:cancel(30)
        return ended, h.status, h:join()
    )"),
              "");
    EXPECT_TRUE(state.Boolean(1));
    EXPECT_EQ(state.String(2), "done");
    EXPECT_EQ(state.String(3), "saw the request");
}

TEST(LanesCancel, CancelOfAFinishedLaneKeepsItsResults)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local h = lanes.gen("base", function() return 5 end)()
        h:join()
        return h:cancel(), h.status, h:join()
    )"),
              "");
    EXPECT_TRUE(state.Boolean(1));
    EXPECT_EQ(state.String(2), "done");
    EXPECT_EQ(state.Number(3), 5.0);
}
