// The render state block's three application forms against a fake device,
// and the messages of states the device refuses.

#include "Graphics_Engine/RenderStateBlock.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
class FakeApplier : public Graphics::RenderStateApplier
{
public:
    bool CreateBlendState(const Graphics::BlendDescription&) override { return accept; }
    bool CreateRasterizerState(const Graphics::RasterizerDescription&) override { return accept; }
    bool CreateDepthStencilState(const Graphics::DepthStencilDescription&) override { return accept; }
    void SetTopology(Graphics::PrimitiveTopology topology) override
    {
        calls.push_back("topology");
        lastTopology = topology;
    }
    void SetBlendState(const Graphics::BlendDescription& description, const float factor[4], unsigned mask) override
    {
        calls.push_back("blend");
        blendOn = description.BlendEnable;
        factorSum = factor[0] + factor[1] + factor[2] + factor[3];
        sampleMask = mask;
    }
    void SetDepthStencilState(const Graphics::DepthStencilDescription&, unsigned reference) override
    {
        calls.push_back("depth");
        stencilReference = reference;
    }
    void SetRasterizerState(const Graphics::RasterizerDescription& description) override
    {
        calls.push_back("rasterizer");
        fill = description.Fill;
    }

    bool accept = true;
    std::vector<std::string> calls;
    Graphics::PrimitiveTopology lastTopology = Graphics::PrimitiveTopology::Undefined;
    bool blendOn = false;
    float factorSum = -1;
    unsigned sampleMask = 0;
    unsigned stencilReference = 0;
    Graphics::FillMode fill = Graphics::FillMode::Solid;
};

Graphics::RenderStateBlock MadeBlock(FakeApplier& device)
{
    Graphics::RenderStateBlock block;
    Graphics::BlendDescription blend;
    blend.BlendEnable = true;
    Graphics::RasterizerDescription rasterizer;
    rasterizer.Fill = Graphics::FillMode::Wireframe;
    EXPECT_TRUE(block.CreateBlendState(device, blend));
    EXPECT_TRUE(block.CreateRasterizerState(device, rasterizer));
    EXPECT_TRUE(block.CreateDepthStencilState(device, Graphics::DepthStencilDescription()));
    block.m_PrimitiveTopology = Graphics::PrimitiveTopology::LineList;
    return block;
}
}

TEST(RenderStateBlockTest, ApplySetsEveryStateWithZeroFactorFullMaskAndReferenceOne)
{
    FakeApplier device;
    MadeBlock(device).Apply(device);
    EXPECT_EQ(device.calls, (std::vector<std::string>{"topology", "blend", "depth", "rasterizer"}));
    EXPECT_EQ(device.lastTopology, Graphics::PrimitiveTopology::LineList);
    EXPECT_TRUE(device.blendOn);
    EXPECT_EQ(device.factorSum, 0.0f);
    EXPECT_EQ(device.sampleMask, 0xFFFFFFFFu);
    EXPECT_EQ(device.stencilReference, 1u);
    EXPECT_EQ(device.fill, Graphics::FillMode::Wireframe);
}

TEST(RenderStateBlockTest, BlendFormSetsTopologyAndBlendOnly)
{
    FakeApplier device;
    MadeBlock(device).ApplyBlendState(device);
    EXPECT_EQ(device.calls, (std::vector<std::string>{"topology", "blend"}));
}

TEST(RenderStateBlockTest, RasterizerAndDepthFormSetsThoseTwoOnly)
{
    FakeApplier device;
    MadeBlock(device).ApplyRasterizerAndDepthState(device);
    EXPECT_EQ(device.calls, (std::vector<std::string>{"rasterizer", "depth"}));
}

TEST(RenderStateBlockTest, RefusedStatesAreReportedByName)
{
    FakeApplier device;
    device.accept = false;
    Graphics::RenderStateBlock block;
    {
        ReportCapture capture;
        EXPECT_FALSE(block.CreateBlendState(device, Graphics::BlendDescription()));
        EXPECT_TRUE(capture.Holds("Failed To Create the Blend State"));
    }
    {
        ReportCapture capture;
        EXPECT_FALSE(block.CreateRasterizerState(device, Graphics::RasterizerDescription()));
        EXPECT_TRUE(capture.Holds("Failed To Create the Rasterizer State"));
    }
    {
        ReportCapture capture;
        EXPECT_FALSE(block.CreateDepthStencilState(device, Graphics::DepthStencilDescription()));
        EXPECT_TRUE(capture.Holds("Failed To Create the Depth Stencil State"));
    }
}
