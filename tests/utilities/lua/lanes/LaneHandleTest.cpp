#include "LanesState.h"

#include <gtest/gtest.h>

#include <memory>

using LanesTest::LanesState;

TEST(LanesGen, EightLanesSumRangesAndSendTheSumsThroughOneLinda)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local sum = lanes.gen("base", function(index, first, last)
            local total = 0
            for i = first, last do total = total + i end
            linda:send("sums", {index = index, sum = total})
            return total
        end)
        local handles = {}
        for i = 1, 8 do handles[i] = sum(i, (i - 1) * 100000 + 1, i * 100000) end
        local received = {}
        for _ = 1, 8 do
            local key, value = linda:receive(30, "sums")
            assert(key == "sums", "a sum did not arrive")
            received[value.index] = value.sum
        end
        local out = {}
        for i = 1, 8 do
            out[i] = received[i]
            out[8 + i] = handles[i]:join()
            out[16 + i] = handles[i].status
        end
        return unpack(out)
    )"),
              "");
    ASSERT_EQ(state.Count(), 24);
    for (int i = 1; i <= 8; ++i)
    {
        double first = (i - 1) * 100000.0 + 1.0;
        double last = i * 100000.0;
        double expected = (first + last) * (last - first + 1.0) / 2.0;
        EXPECT_EQ(state.Number(i), expected) << "sum " << i << " through the linda";
        EXPECT_EQ(state.Number(8 + i), expected) << "sum " << i << " from join";
        EXPECT_EQ(state.String(16 + i), "done");
    }
}

TEST(LanesGen, LaneThatRaisesReportsTheErrorOnJoinAndTheProgramLives)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local broken = lanes.gen("base", function() error("the lane broke") end)()
        local result, message = broken:join()
        local thrown = lanes.gen("base", function() error({code = 42}) end)()
        local _, value = thrown:join()
        local after = lanes.gen("base", function(x) return x * 2 end)(21):join()
        return result, message, broken.status, value.code, after
    )"),
              "");
    ASSERT_EQ(state.Count(), 5);
    EXPECT_TRUE(state.IsNil(1));
    EXPECT_NE(state.String(2).find("the lane broke"), std::string::npos) << state.String(2);
    EXPECT_EQ(state.String(3), "error");
    EXPECT_EQ(state.Number(4), 42.0);
    EXPECT_EQ(state.Number(5), 42.0);
}

TEST(LanesGen, JoinGivesEveryResultAndIndexingGivesOne)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local h = lanes.gen("*", function(a, b) return a + b, a * b, "text", nil end)(3, 4)
        local sum, product, text = h:join()
        return sum, product, text, select("#", h:join()), h[2], h[9]
    )"),
              "");
    ASSERT_EQ(state.Count(), 6);
    EXPECT_EQ(state.Number(1), 7.0);
    EXPECT_EQ(state.Number(2), 12.0);
    EXPECT_EQ(state.String(3), "text");
    EXPECT_EQ(state.Number(4), 4.0);
    EXPECT_EQ(state.Number(5), 12.0);
    EXPECT_TRUE(state.IsNil(6));
}

TEST(LanesGen, IndexingTheHandleOfAFailedLaneRaisesItsError)
{
    LanesState state;
    std::string error = state.Run(R"(
        local lanes = require("lanes").configure()
        local h = lanes.gen("base", function() error("indexed failure", 0) end)()
        return h[1]
    )");
    EXPECT_EQ(error, "indexed failure");
}

TEST(LanesGen, StatusGoesFromWaitingToDone)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local h = lanes.gen("base", function() return linda:receive("go") end)()
        local seen = h.status
        for _ = 1, 500 do
            if h.status == "waiting" then break end
            lanes.sleep(0.01)
        end
        local waiting = h.status
        linda:send("go", "now")
        local key, value = h:join(30)
        return seen, waiting, key, value, h.status
    )"),
              "");
    ASSERT_EQ(state.Count(), 5);
    std::string first = state.String(1);
    EXPECT_TRUE(first == "pending" || first == "running" || first == "waiting") << first;
    EXPECT_EQ(state.String(2), "waiting");
    EXPECT_EQ(state.String(3), "go");
    EXPECT_EQ(state.String(4), "now");
    EXPECT_EQ(state.String(5), "done");
}

TEST(LanesGen, JoinWithATimeoutGivesNilAndTimeoutWhileTheLaneRuns)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local h = lanes.gen("base", function() return linda:receive("go") end)()
        local result, reason = h:join(0.05)
        linda:send("go", 1)
        local _, value = h:join()
        return result, reason, value
    )"),
              "");
    EXPECT_TRUE(state.IsNil(1));
    EXPECT_EQ(state.String(2), "timeout");
    EXPECT_EQ(state.Number(3), 1.0);
}

TEST(LanesGen, LaneOpensOnlyTheLibrariesItAskedFor)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local probe = function() return type(string), type(math), type(io), type(print) end
        local a, b, c, d = lanes.gen("base,math", probe)():join()
        local e, f, g, h = lanes.gen("*", probe)():join()
        return a, b, c, d, e, f, g, h
    )"),
              "");
    ASSERT_EQ(state.Count(), 8);
    EXPECT_EQ(state.String(1), "nil");
    EXPECT_EQ(state.String(2), "table");
    EXPECT_EQ(state.String(3), "nil");
    EXPECT_EQ(state.String(4), "function");
    for (int i = 5; i <= 7; ++i)
        EXPECT_EQ(state.String(i), "table");
}

TEST(LanesGen, UnknownLibraryOrOptionIsAClearError)
{
    LanesState state;
    std::string error = state.Run(R"(
        local lanes = require("lanes").configure()
        lanes.gen("base,sockets", function() end)
    )");
    EXPECT_NE(error.find("unknown library 'sockets'"), std::string::npos) << error;
    error = state.Run(R"(
        local lanes = require("lanes").configure()
        lanes.gen("base", {priority = 3}, function() end)
    )");
    EXPECT_NE(error.find("unknown option 'priority'"), std::string::npos) << error;
    error = state.Run(R"(
        local lanes = require("lanes").configure()
        lanes.gen("base")
    )");
    EXPECT_NE(error.find("the last argument must be the lane's function"), std::string::npos) << error;
}

TEST(LanesGen, GlobalsOptionSetsGlobalsOfTheLane)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        return lanes.gen("base", {globals = {SCALE = 3}}, function(x) return x * SCALE end)(5):join()
    )"),
              "");
    EXPECT_EQ(state.Number(1), 15.0);
}

TEST(LanesGen, LaneCanStartLanesOfItsOwn)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local outer = lanes.gen("*", function()
            local inner = require("lanes").configure().gen("base", function(x) return x + 1 end)
            return inner(41):join()
        end)
        return outer():join()
    )"),
              "");
    EXPECT_EQ(state.Number(1), 42.0);
}

TEST(LanesGen, HandleCollectedWhileTheLaneRunsLetsTheLaneFinish)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        do
            local h = lanes.gen("base", function()
                linda:receive(30, "go")
                linda:send("done", "finished")
            end)()
        end
        collectgarbage()
        collectgarbage()
        linda:send("go", true)
        local _, value = linda:receive(30, "done")
        return value
    )"),
              "");
    EXPECT_EQ(state.String(1), "finished");
}

TEST(LanesGen, ClosingTheStateWhileLanesRunLeavesThemToEndOnTheirOwn)
{
    auto state = std::make_unique<LanesState>();
    ASSERT_EQ(state->Run(R"(
        local lanes = require("lanes").configure()
        for i = 1, 4 do
            lanes.gen("base", function()
                local total = 0
                for k = 1, 2000000 do total = total + k end
                return total
            end)()
        end
    )"),
              "");
    state.reset();
    // The lanes still run, each in its own state; a new state works meanwhile.
    LanesState other;
    ASSERT_EQ(other.Run(R"(return require("lanes").configure().gen("base", function() return 1 end)():join())"), "");
    EXPECT_EQ(other.Number(1), 1.0);
}
