#include "engine/FrameRateController.h"

#include "engine/GenericEvents.h"
#include "engine/Manager.h"
#include "platform/Clock.h"

#include <gtest/gtest.h>

TEST(FrameRateControllerTest, DefaultsHoldSixtyFramesASecond)
{
    FrameRateController controller;
    EXPECT_EQ(controller.m_TargetDt, 0.016666668f);
    EXPECT_EQ(controller.m_Dt, 0.016666668f);
    EXPECT_EQ(controller.m_Elapsed, 0.0f);
    EXPECT_GT(controller.m_Frequency, 0.0f);
}

TEST(FrameRateControllerTest, FrameOfHalfASecondEntersTheNextFrameClamped)
{
    FrameRateController controller;
    controller.m_Dt = 0.5f;
    EXPECT_EQ(controller.ClampDt(), 0.033333335f);
    EXPECT_EQ(controller.m_Dt, 0.033333335f);
    controller.m_Dt = 0.01f;
    EXPECT_EQ(controller.ClampDt(), 0.01f);
}

TEST(FrameRateControllerTest, CapTruncatesTheDefaultTargetToSixteenMilliseconds)
{
    const FrameRateController::Capped capped = FrameRateController::Cap(0.0f, 0.016666668f);
    EXPECT_EQ(capped.waitMs, 16u);
    EXPECT_FLOAT_EQ(capped.dt, 0.016f);
}

TEST(FrameRateControllerTest, CapWaitsOnlyForTheMissingWholeMilliseconds)
{
    const FrameRateController::Capped capped = FrameRateController::Cap(0.0105f, 0.016666668f);
    EXPECT_EQ(capped.waitMs, 6u);
    EXPECT_FLOAT_EQ(capped.dt, 0.006f + 0.0105f);
}

TEST(FrameRateControllerTest, TargetBelowOneMillisecondNeverSleeps)
{
    const FrameRateController::Capped capped = FrameRateController::Cap(0.0f, 0.0009f);
    EXPECT_EQ(capped.waitMs, 0u);
    EXPECT_EQ(capped.dt, 0.0f);
}

TEST(FrameRateControllerTest, SlowFrameIsNotPadded)
{
    const FrameRateController::Capped capped = FrameRateController::Cap(0.05f, 0.016666668f);
    EXPECT_EQ(capped.waitMs, 0u);
    EXPECT_EQ(capped.dt, 0.05f);
}

namespace
{
struct EndOfFrameCounter
{
    int count = 0;
    void OnEndOfFrame(Event*) { ++count; }
};
}

TEST(FrameRateControllerTest, UpdateSleepsToTheCapAddsUpTimeAndEndsTheFrame)
{
    FrameRateController controller;
    EndOfFrameCounter counter;
    Engine::Manager::Get().m_Events.RegisterEvent(&counter, "EndOfFrame", &EndOfFrameCounter::OnEndOfFrame);

    const std::uint64_t before = Platform::GetPerformanceCounter();
    controller.m_LastCounter = before;
    controller.Update(0.0f);
    const double waited =
        static_cast<double>(Platform::GetPerformanceCounter() - before) / Platform::GetPerformanceFrequency();

    EXPECT_GE(controller.m_Dt, 0.016f);
    EXPECT_GE(waited, 0.015);
    EXPECT_EQ(controller.m_Elapsed, controller.m_Dt);
    EXPECT_GE(controller.m_LastCounter, before);
    EXPECT_EQ(counter.count, 1);
    Engine::Manager::Get().m_Events.UnregisterAll(&counter);
}
