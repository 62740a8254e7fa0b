#include "platform/Clock.h"

#include <gtest/gtest.h>

TEST(PlatformClockTest, CounterIncreasesAndFrequencyIsPositive)
{
    EXPECT_GT(Platform::GetPerformanceFrequency(), 0u);
    const std::uint64_t first = Platform::GetPerformanceCounter();
    std::uint64_t later = Platform::GetPerformanceCounter();
    for (int i = 0; i < 1000000 && later == first; ++i)
        later = Platform::GetPerformanceCounter();
    EXPECT_GT(later, first);
}

TEST(PlatformClockTest, SleepWaitsAtLeastTheRequestedTime)
{
    const std::uint64_t start = Platform::GetPerformanceCounter();
    Platform::Sleep(20);
    const std::uint64_t elapsed = Platform::GetPerformanceCounter() - start;
    const double milliseconds = 1000.0 * static_cast<double>(elapsed) /
                                static_cast<double>(Platform::GetPerformanceFrequency());
    EXPECT_GE(milliseconds, 15.0);
}
