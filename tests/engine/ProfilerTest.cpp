#include "engine/Profiler.h"

#include "platform/Clock.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace
{
class ProfilerTest : public ::testing::Test
{
protected:
    void SetUp() override { Profiler::Get().Clear(); }
    void TearDown() override { Profiler::Get().Clear(); }
};

// Busy for about `milliseconds`, so that timings are clearly apart.
void Spin(double milliseconds)
{
    const std::uint64_t start = Platform::GetPerformanceCounter();
    const double ticks = milliseconds / 1000.0 * static_cast<double>(Platform::GetPerformanceFrequency());
    while (static_cast<double>(Platform::GetPerformanceCounter() - start) < ticks)
    {
    }
}

void Inner()
{
    PROFILE_FUNCTION();
    Spin(4);
}

void Outer()
{
    PROFILE_FUNCTION();
    Spin(2);
    Inner();
    Inner();
}

// The report's line for a function, split at ';'.
std::vector<std::string> LineOf(const std::string& report, const std::string& function)
{
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);)
    {
        std::vector<std::string> fields;
        std::istringstream split(line);
        for (std::string field; std::getline(split, field, ';');)
            fields.push_back(field);
        if (fields.size() == 9 && fields[1] == function)
            return fields;
    }
    return {};
}
}

TEST_F(ProfilerTest, NothingIsCollectedWhileOff)
{
    Outer();
    EXPECT_FALSE(Profiler::Get().HasData());
}

TEST_F(ProfilerTest, ReportStartsWithTheSeparatorAndHeaderLines)
{
    const std::string report = Profiler::Get().Report();
    EXPECT_EQ(report, "sep=;\nFile;Function;Average Exclusive Time;Exclusive Percentage;Total Exclusive Time;"
                      "Average Inclusive Time;Inclusive Percentage;Total Inclusive Time;Times Called\n");
}

TEST_F(ProfilerTest, NestedScopesSplitInclusiveAndExclusiveTime)
{
    Profiler::Get().SetEnabled(true);
    Outer();
    Profiler::Get().SetEnabled(false);
    const std::string report = Profiler::Get().Report();
    const std::vector<std::string> outer = LineOf(report, "{anonymous}::Outer");
    const std::vector<std::string> inner = LineOf(report, "{anonymous}::Inner");
    ASSERT_EQ(outer.size(), 9u) << report;
    ASSERT_EQ(inner.size(), 9u) << report;
    EXPECT_NE(outer[0].find("ProfilerTest.cpp"), std::string::npos);
    EXPECT_EQ(outer[8], "1");
    EXPECT_EQ(inner[8], "2");
    const double outerExclusive = std::stod(outer[4]);
    const double outerInclusive = std::stod(outer[7]);
    const double innerInclusive = std::stod(inner[7]);
    // Outer spins 2 ms itself; each Inner spins 4 ms.
    EXPECT_GE(innerInclusive, 8.0);
    EXPECT_NEAR(outerInclusive, outerExclusive + innerInclusive, 0.01);
    EXPECT_GE(outerExclusive, 2.0);
    EXPECT_LT(outerExclusive, innerInclusive);
    EXPECT_NEAR(std::stod(inner[5]), innerInclusive / 2.0, 0.001);
    const double share = std::stod(outer[6]);
    EXPECT_GT(share, 0.0);
    EXPECT_LE(share, 100.0);
}

TEST_F(ProfilerTest, ScriptFunctionsNameTheirFileAndLine)
{
    Profiler& profiler = Profiler::Get();
    profiler.SetEnabled(true);
    profiler.EnterScript("LuaScripts/Components/Door.lua", 12, "Open");
    profiler.Leave();
    profiler.EnterScript("", 0, "chunk");
    profiler.Leave();
    const std::string report = profiler.Report();
    EXPECT_NE(report.find("Lua: LuaScripts/Components/Door.lua Line: 12;Open;"), std::string::npos) << report;
    EXPECT_NE(report.find("No filename;chunk;"), std::string::npos) << report;
}

TEST_F(ProfilerTest, ScopesBeyondTheStackCapacityAreNotTimedButStayBalanced)
{
    Profiler& profiler = Profiler::Get();
    profiler.SetEnabled(true);
    static char keys[Profiler::kStackCapacity + 10];
    for (char& key : keys)
        profiler.Enter(&key, "file.cpp", "void Deep()");
    for (unsigned i = 0; i < sizeof(keys); ++i)
        profiler.Leave();
    profiler.Leave();
    const std::vector<std::string> deep = LineOf(profiler.Report(), "Deep");
    ASSERT_EQ(deep.size(), 9u);
    profiler.Enter(&keys[0], "file.cpp", "void Deep()");
    profiler.Leave();
    EXPECT_TRUE(profiler.HasData());
}
