// The ring of three targets of the final stage and the ring steps of post-effects.
#include "Graphics_Engine/PipeLines/FinalStage.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/PostProcessEffect.h"
#include "Graphics_Engine/VariableTable.h"

#include "support/RecordingDevice.h"
#include "Graphics_Engine/PipeLines/PipelineRecorder.h"

#include <gtest/gtest.h>

#include <array>

using namespace Graphics;

namespace
{
// Runs the ring with effects that each return `steps`; records each effect's ring arguments.
unsigned RingWith(std::size_t count, unsigned steps, std::vector<std::array<unsigned, 3>>* calls = nullptr)
{
    return FinalStage::RunRing(count, [&](std::size_t, unsigned source, unsigned target, unsigned scratch) {
        if (calls)
            calls->push_back({source, target, scratch});
        return steps;
    });
}
}

TEST(FinalStageTest, ZeroEffectsUpscaleTheLightingTargetItself)
{
    EXPECT_EQ(RingWith(0, 0), 0u);
}

TEST(FinalStageTest, EffectsReturningZeroAdvanceTheRingOneStepEach)
{
    std::vector<std::array<unsigned, 3>> calls;
    EXPECT_EQ(RingWith(1, 0), 1u);
    EXPECT_EQ(RingWith(2, 0), 2u);
    EXPECT_EQ(RingWith(3, 0, &calls), 0u);
    const std::vector<std::array<unsigned, 3>> expected{{0, 1, 2}, {1, 2, 0}, {2, 0, 1}};
    EXPECT_EQ(calls, expected);
}

TEST(FinalStageTest, EffectsReturningOneAdvanceTheRingTwoStepsEach)
{
    std::vector<std::array<unsigned, 3>> calls;
    EXPECT_EQ(RingWith(1, 1), 2u);
    EXPECT_EQ(RingWith(2, 1, &calls), 1u);
    EXPECT_EQ(RingWith(3, 1), 0u);
    const std::vector<std::array<unsigned, 3>> expected{{0, 1, 2}, {2, 0, 1}};
    EXPECT_EQ(calls, expected);
}

TEST(FinalStageTest, EffectReturnsTheRingStepsOfItsPassCount)
{
    RecordingDevice device;
    PipelineRecorder states;
    VariableTable table;
    FrameContext frame{device, states, table, nullptr, true};
    RenderTarget source, target, scratch;
    // One pass writes the scratch member; two write it too; three end in the target; four in the scratch.
    const unsigned expected[] = {1, 1, 0, 1};
    for (unsigned passes = 1; passes <= 4; ++passes)
    {
        PostProcessEffect effect("PostProcessVertex", std::vector<std::string>(passes, "PostLighting"));
        EXPECT_EQ(effect.Run(frame, source, target, scratch), expected[passes - 1]) << passes << " passes";
        EXPECT_EQ(effect.m_Source, &source);
    }
}
