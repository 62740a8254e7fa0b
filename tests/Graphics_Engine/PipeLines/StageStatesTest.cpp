// Every stage's state block as tabled, read back from the stages after they were built.
#include "Graphics_Engine/PipeLines/RenderPipeline.h"

#include "Graphics_Engine/PipeLines/PipelineRecorder.h"

#include <gtest/gtest.h>

using namespace Graphics;

namespace
{
void ExpectRasterizer(const RenderStateBlock& block, FillMode fill, CullMode cull)
{
    EXPECT_EQ(block.m_Rasterizer.Fill, fill);
    EXPECT_EQ(block.m_Rasterizer.Cull, cull);
    EXPECT_TRUE(block.m_Rasterizer.FrontCounterClockwise);
    EXPECT_TRUE(block.m_Rasterizer.DepthClipEnable);
}

void ExpectAdditive(const BlendDescription& blend)
{
    EXPECT_TRUE(blend.BlendEnable);
    EXPECT_EQ(blend.SrcBlend, Blend::One);
    EXPECT_EQ(blend.DestBlend, Blend::One);
    EXPECT_EQ(blend.Op, BlendOp::Add);
    EXPECT_EQ(blend.SrcBlendAlpha, Blend::One);
    EXPECT_EQ(blend.DestBlendAlpha, Blend::One);
    EXPECT_EQ(blend.OpAlpha, BlendOp::Add);
}

void ExpectTwoTargetBlend(const BlendDescription& blend, bool independent)
{
    EXPECT_TRUE(blend.BlendEnable);
    EXPECT_EQ(blend.SrcBlend, Blend::One);
    EXPECT_EQ(blend.DestBlend, Blend::InvSrcAlpha);
    EXPECT_EQ(blend.Op, BlendOp::Add);
    EXPECT_EQ(blend.SrcBlendAlpha, Blend::One);
    EXPECT_EQ(blend.DestBlendAlpha, Blend::One);
    EXPECT_EQ(blend.OpAlpha, BlendOp::Max);
    EXPECT_EQ(blend.WriteMask, 0xFu);
    const TargetBlendDescription& second = blend.OtherTargets[0];
    EXPECT_TRUE(second.BlendEnable);
    EXPECT_EQ(second.SrcBlend, Blend::One);
    EXPECT_EQ(second.DestBlend, Blend::Zero);
    EXPECT_EQ(second.Op, BlendOp::Add);
    EXPECT_EQ(second.SrcBlendAlpha, Blend::One);
    EXPECT_EQ(second.DestBlendAlpha, Blend::Zero);
    EXPECT_EQ(second.OpAlpha, BlendOp::Add);
    EXPECT_EQ(second.WriteMask, 0xFu);
    EXPECT_EQ(blend.IndependentBlendEnable, independent);
}

class StageStatesTest : public testing::TestWithParam<bool>
{
protected:
    void SetUp() override { m_Pipeline.Build(m_Recorder, m_Recorder, {GetParam(), false}); }
    PipelineRecorder m_Recorder;
    RenderPipeline m_Pipeline{nullptr};
};
}

TEST_P(StageStatesTest, GeometryStageHasNoBlendSolidBackCullAndDepthLessWithWrites)
{
    const RenderStateBlock& block = m_Pipeline.Geometry().States();
    EXPECT_FALSE(block.m_Blend.BlendEnable);
    ExpectRasterizer(block, FillMode::Solid, CullMode::Back);
    EXPECT_TRUE(block.m_DepthStencil.DepthEnable);
    EXPECT_TRUE(block.m_DepthStencil.DepthWrite);
    EXPECT_EQ(block.m_DepthStencil.DepthFunc, ComparisonFunc::Less);
}

TEST_P(StageStatesTest, LightStageBlocksAddAndCullFrontThenBackWithDepthOff)
{
    const RenderStateBlock& a = m_Pipeline.Light().StatesA();
    const RenderStateBlock& b = m_Pipeline.Light().StatesB();
    ExpectAdditive(a.m_Blend);
    ExpectAdditive(b.m_Blend);
    ExpectRasterizer(a, FillMode::Solid, CullMode::Front);
    ExpectRasterizer(b, FillMode::Solid, CullMode::Back);
    EXPECT_FALSE(a.m_DepthStencil.DepthEnable);
    EXPECT_FALSE(b.m_DepthStencil.DepthEnable);
}

TEST_P(StageStatesTest, ForwardAndParticleStagesBlendTwoTargetsIndependentlyWhenComputeLighting)
{
    for (const RenderStateBlock* block : {&m_Pipeline.Forward().States(), &m_Pipeline.Particles().States()})
    {
        ExpectTwoTargetBlend(block->m_Blend, GetParam());
        ExpectRasterizer(*block, FillMode::Solid, CullMode::None);
        EXPECT_TRUE(block->m_DepthStencil.DepthEnable);
        EXPECT_FALSE(block->m_DepthStencil.DepthWrite);
        EXPECT_EQ(block->m_DepthStencil.DepthFunc, ComparisonFunc::Less);
    }
}

TEST_P(StageStatesTest, DebugStageIsWireframeWithBackCullAndDefaultDepth)
{
    const RenderStateBlock& block = m_Pipeline.Debug().States();
    EXPECT_FALSE(block.m_Blend.BlendEnable);
    ExpectRasterizer(block, FillMode::Wireframe, CullMode::Back);
    EXPECT_EQ(block.m_DepthStencil, DepthStencilDescription{});
}

TEST_P(StageStatesTest, ImGuiStageBlendsByAlphaWithScissorAndDepthOff)
{
    const RenderStateBlock& block = m_Pipeline.ImGui().States();
    EXPECT_TRUE(block.m_Blend.BlendEnable);
    EXPECT_EQ(block.m_Blend.SrcBlend, Blend::SrcAlpha);
    EXPECT_EQ(block.m_Blend.DestBlend, Blend::InvSrcAlpha);
    EXPECT_EQ(block.m_Blend.Op, BlendOp::Add);
    EXPECT_EQ(block.m_Blend.SrcBlendAlpha, Blend::One);
    EXPECT_EQ(block.m_Blend.DestBlendAlpha, Blend::One);
    EXPECT_EQ(block.m_Blend.OpAlpha, BlendOp::Add);
    ExpectRasterizer(block, FillMode::Solid, CullMode::None);
    EXPECT_TRUE(block.m_Rasterizer.ScissorEnable);
    EXPECT_FALSE(block.m_DepthStencil.DepthEnable);
}

INSTANTIATE_TEST_SUITE_P(ComputeLighting, StageStatesTest, testing::Bool());
