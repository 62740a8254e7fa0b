#include "engine/PerformanceData.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
class PerformanceDataTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        PerformanceData& timers = PerformanceData::Get();
        timers.m_Averages.clear();
        timers.m_Total = 0.0f;
    }
};
}

TEST_F(PerformanceDataTest, StopFoldsTheTimeIntoAMovingAverage)
{
    PerformanceData& timers = PerformanceData::Get();
    timers.m_Averages["Physics"] = 1.0f;
    timers.Start("Physics");
    // Pretend the timer started long ago: one second of counter ticks.
    timers.m_Start -= static_cast<std::uint64_t>(timers.m_Frequency);
    timers.Stop();
    const float average = timers.m_Averages["Physics"];
    EXPECT_NEAR(average, 1.0f * 0.9f + 1.0f * 0.1f, 0.01f);
    EXPECT_NEAR(timers.m_Total, 1.0f, 0.01f);
}

TEST_F(PerformanceDataTest, NewNameStartsFromZero)
{
    PerformanceData& timers = PerformanceData::Get();
    timers.Start("Sound");
    timers.m_Start -= static_cast<std::uint64_t>(timers.m_Frequency * 2.0f);
    timers.Stop();
    EXPECT_NEAR(timers.m_Averages["Sound"], 0.2f, 0.01f);
    EXPECT_EQ(timers.m_Current, "Sound");
}

TEST_F(PerformanceDataTest, NestedStartReplacesTheOuterTimer)
{
    PerformanceData& timers = PerformanceData::Get();
    timers.Start("Outer");
    timers.Start("Inner");
    timers.Stop();
    EXPECT_EQ(timers.m_Averages.count("Outer"), 0u);
    EXPECT_EQ(timers.m_Averages.count("Inner"), 1u);
}

TEST_F(PerformanceDataTest, DumpLogsEveryAverageInNameOrder)
{
    PerformanceData& timers = PerformanceData::Get();
    timers.m_Averages["Window"] = 0.5f;
    timers.m_Averages["Automation"] = 0.25f;
    ReportCapture reports;
    timers.Dump();
    const std::string& text = reports.Text();
    const std::size_t automation = text.find("[Performance] Automation (Usage: 0.250000)");
    const std::size_t window = text.find("[Performance] Window (Usage: 0.500000)");
    ASSERT_NE(automation, std::string::npos) << text;
    ASSERT_NE(window, std::string::npos) << text;
    EXPECT_LT(automation, window);
}
