// The pipeline's construction order, shader names and effect list, without a device.
#include "Graphics_Engine/PipeLines/RenderPipeline.h"
#include "Graphics_Engine/VariableTable.h"

#include "Graphics_Engine/PipeLines/PipelineRecorder.h"

#include <gtest/gtest.h>

using namespace Graphics;

TEST(RenderPipelineTest, ComputeLightingBuildsStagesInConstructionOrderWithTheirShaderNames)
{
    PipelineRecorder recorder;
    RenderPipeline pipeline(nullptr);
    pipeline.Build(recorder, recorder, {true, false});
    const std::vector<std::string> expected{
        "states",                                       // geometry
        "states", "states", "compute LightCompute",     // light, blocks A and B
        "states",                                       // particles
        "states", "program imGuiVertex imGuiPixel",     // GUI
        "states", "program lineVertex linearColor",     // debug
        "program thickLineVertex lineGeo linearColor",  //
        "program wireFrameVertex linearColor",          //
        "states",                                       // forward
        "states",                                       // final
    };
    EXPECT_EQ(recorder.Log, expected);
    EXPECT_TRUE(pipeline.Effects().empty());
}

TEST(RenderPipelineTest, WithoutComputeLightingTheLightPassAndPostLightingEffectAreBuilt)
{
    PipelineRecorder recorder;
    RenderPipeline pipeline(nullptr);
    pipeline.Build(recorder, recorder, {false, false});
    const std::vector<std::string> expected{
        "states",
        "states", "states", "program baseLightVertex baseLightPixel",
        "states",
        "states", "program imGuiVertex imGuiPixel",
        "states", "program lineVertex linearColor",
        "program thickLineVertex lineGeo linearColor",
        "program wireFrameVertex linearColor",
        "states",
        "program PostProcessVertex PostLighting",  // the effect's Initialize, after the stages
        "states",
    };
    EXPECT_EQ(recorder.Log, expected);
    ASSERT_EQ(pipeline.Effects().size(), 1u);
    ASSERT_EQ(pipeline.Effects()[0]->m_Passes.size(), 1u);
    EXPECT_EQ(pipeline.Effects()[0]->m_Passes[0].Pixel, "PostLighting");
    EXPECT_EQ(pipeline.Effects()[0]->m_Passes[0].Vertex, "PostProcessVertex");
}

TEST(RenderPipelineTest, NoPostWithComputeLightingLeavesTheEffectListEmpty)
{
    PipelineRecorder recorder;
    RenderPipeline pipeline(nullptr);
    pipeline.Build(recorder, recorder, {true, true});
    EXPECT_TRUE(pipeline.Effects().empty());
}

TEST(RenderPipelineTest, NoPostWithoutComputeLightingKeepsOnlyPostLighting)
{
    PipelineRecorder recorder;
    RenderPipeline pipeline(nullptr);
    pipeline.Build(recorder, recorder, {false, true});
    ASSERT_EQ(pipeline.Effects().size(), 1u);
    EXPECT_EQ(pipeline.Effects()[0]->m_Passes[0].Pixel, "PostLighting");
}

TEST(RenderPipelineTest, PipelineWithoutDeviceMakesNoTargetsAndDrawsNothing)
{
    PipelineRecorder recorder;
    RenderPipeline pipeline(nullptr);
    pipeline.Build(recorder, recorder, {true, false});
    VariableTable table;
    EXPECT_FALSE(pipeline.CreateTargets(1024, 576, 1024, 576, table));
    EXPECT_FALSE(pipeline.m_Lighting.IsValid());
    EXPECT_EQ(pipeline.m_WindowViewport.width, 1024.0f);
    pipeline.ReleaseTargets();
}
