#include "LanesState.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

using LanesTest::LanesState;

TEST(LanesLinda, ReceiveTimesOutWithNil)
{
    LanesState state;
    auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local key, value = linda:receive(0.2, "nothing")
        local polled = linda:receive(0, "nothing")
        return key == nil, value == nil, polled == nil
    )"),
              "");
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    EXPECT_TRUE(state.Boolean(1));
    EXPECT_TRUE(state.Boolean(2));
    EXPECT_TRUE(state.Boolean(3));
    EXPECT_GE(seconds, 0.19);
    EXPECT_LT(seconds, 10.0);
}

TEST(LanesLinda, SendQueuesValuesInOrderAndReceiveTakesFromTheFirstKeyThatHasOne)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        linda:send("b", 1, 2)
        linda:send("b", 3)
        local order = {}
        for _ = 1, 3 do
            local key, value = linda:receive(0, "a", "b")
            order[#order + 1] = key .. value
        end
        linda:send(nil, 5, "numeric key")
        local key, value = linda:receive(nil, 5)
        return table.concat(order, ","), linda:count("b"), key, value
    )"),
              "");
    EXPECT_EQ(state.String(1), "b1,b2,b3");
    EXPECT_EQ(state.Number(2), 0.0);
    EXPECT_EQ(state.Number(3), 5.0);
    EXPECT_EQ(state.String(4), "numeric key");
}

TEST(LanesLinda, SetReplacesTheSlotAndGetReadsWithoutTaking)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        linda:send("slot", "old", "older")
        linda:set("slot", {x = 1})
        local first = linda:get("slot")
        local again = linda:get("slot")
        local count = linda:count("slot")
        linda:set("slot")
        return first.x, again.x, count, linda:get("slot"), linda:get("never")
    )"),
              "");
    ASSERT_EQ(state.Count(), 5);
    EXPECT_EQ(state.Number(1), 1.0);
    EXPECT_EQ(state.Number(2), 1.0);
    EXPECT_EQ(state.Number(3), 1.0);
    EXPECT_TRUE(state.IsNil(4));
    EXPECT_TRUE(state.IsNil(5));
}

TEST(LanesLinda, BadKeysAndNilValuesAreClearErrors)
{
    LanesState state;
    std::string error = state.Run(R"(require("lanes").configure().linda():send({}, 1))");
    EXPECT_NE(error.find("linda:send: a key must be a string, a number or a boolean, not a table"), std::string::npos)
        << error;
    error = state.Run(R"(require("lanes").configure().linda():send("k", 1, nil))");
    EXPECT_NE(error.find("linda:send: nil cannot be sent (value 2)"), std::string::npos) << error;
    error = state.Run(R"(require("lanes").configure().linda():send("k"))");
    EXPECT_NE(error.find("there is no value to send"), std::string::npos) << error;
    error = state.Run(R"(require("lanes").configure().linda():receive(-1, "k"))");
    EXPECT_NE(error.find("linda:receive: the timeout must be a number of seconds, at least 0"), std::string::npos)
        << error;
    error = state.Run(R"(require("lanes").configure().linda():receive(0, 0/0))");
    EXPECT_NE(error.find("not a NaN"), std::string::npos) << error;
    error = state.Run(R"(local l = require("lanes").configure().linda() l.send("k", 1))");
    EXPECT_NE(error.find("linda:send: expected a linda (call it with ':')"), std::string::npos) << error;
}

TEST(LanesLinda, WriterInALaneWakesAReaderWaitingWithoutATimeout)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local writer = lanes.gen("base", function(n)
            for i = 1, n do linda:send("numbers", i) end
            return true
        end)(1000)
        local total = 0
        for _ = 1, 1000 do
            local _, value = linda:receive("numbers")
            total = total + value
        end
        return total, writer:join()
    )"),
              "");
    EXPECT_EQ(state.Number(1), 500500.0);
    EXPECT_TRUE(state.Boolean(2));
}

TEST(LanesLinda, LindaOutlivesTheStateThatMadeIt)
{
    // The lane keeps using the linda after the state that made it is closed; the sanitizers watch
    // for a use of freed memory, and the lane reports through a second linda made by a second state.
    LanesState reporter;
    ASSERT_EQ(reporter.Run(R"(
        report = require("lanes").configure().linda()
        return report
    )"),
              "");
    auto maker = std::make_unique<LanesState>();
    lua_getglobal(reporter.L(), "report");
    ASSERT_EQ(luaG_inter_move(nullptr, reporter.L(), maker->L(), 1, nullptr), 0);
    lua_setglobal(maker->L(), "report");
    ASSERT_EQ(maker->Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        local report = report
        lanes.gen("base", function()
            linda:receive(0.1, "wait")
            linda:send("k", "still here")
            local _, value = linda:receive(1, "k")
            report:send("result", value)
        end)()
    )"),
              "");
    maker.reset();
    ASSERT_EQ(reporter.Run(R"(
        local _, value = report:receive(30, "result")
        return value
    )"),
              "");
    EXPECT_EQ(reporter.String(1), "still here");
}

TEST(LanesLinda, FinalizerThatUsesALindaDuringALindaCallIsRefusedNotDeadlocked)
{
    LanesState state;
    ASSERT_EQ(state.Run(R"(
        local lanes = require("lanes").configure()
        local linda = lanes.linda()
        refused = nil
        collectgarbage("setpause", 1)
        collectgarbage("setstepmul", 1000)
        for i = 1, 200 do
            local proxy = newproxy(true)
            getmetatable(proxy).__gc = function()
                local ok, message = pcall(linda.send, linda, "from finalizer", 1)
                if not ok and refused == nil then refused = message end
            end
            proxy = nil
            linda:send("k", {i, {i}, "a string that takes memory " .. i})
            linda:receive(0, "k")
        end
        collectgarbage("setpause", 200)
        return refused
    )"),
              "");
    std::string refused = state.String(1);
    EXPECT_NE(refused.find("a linda cannot be used by a finalizer that runs during another linda call"),
              std::string::npos)
        << refused;
}
