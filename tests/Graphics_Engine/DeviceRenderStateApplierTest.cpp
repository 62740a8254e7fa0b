// The device's blend description made from a state block's: one blending for every target, or
// independent blending of the targets after the first.
#include "Graphics_Engine/DeviceRenderStateApplier.h"

#include <gtest/gtest.h>

using namespace Graphics;

TEST(DeviceRenderStateApplierTest, WithoutIndependentBlendEveryTargetBlendsAsTheFirst)
{
    BlendDescription blend;
    blend.BlendEnable = true;
    blend.DestBlend = Blend::InvSrcAlpha;
    blend.OtherTargets[0].DestBlend = Blend::SrcColor;
    const BlendDesc desc = ToDeviceBlend(blend);
    EXPECT_FALSE(desc.independentBlend);
    for (const RenderTargetBlendDesc& target : desc.renderTargets)
    {
        EXPECT_TRUE(target.blendEnable);
        EXPECT_EQ(target.destBlend, Blend::InvSrcAlpha);
    }
}

TEST(DeviceRenderStateApplierTest, IndependentBlendGivesTheLaterTargetsTheirOwnBlending)
{
    BlendDescription blend;
    blend.BlendEnable = true;
    blend.DestBlend = Blend::InvSrcAlpha;
    blend.OpAlpha = BlendOp::Max;
    blend.IndependentBlendEnable = true;
    blend.OtherTargets[0].BlendEnable = true;
    blend.OtherTargets[0].DestBlend = Blend::Zero;
    blend.OtherTargets[0].DestBlendAlpha = Blend::Zero;
    blend.OtherTargets[0].WriteMask = 0x7;
    const BlendDesc desc = ToDeviceBlend(blend);
    EXPECT_TRUE(desc.independentBlend);
    EXPECT_EQ(desc.renderTargets[0].destBlend, Blend::InvSrcAlpha);
    EXPECT_EQ(desc.renderTargets[0].blendOpAlpha, BlendOp::Max);
    EXPECT_TRUE(desc.renderTargets[1].blendEnable);
    EXPECT_EQ(desc.renderTargets[1].destBlend, Blend::Zero);
    EXPECT_EQ(desc.renderTargets[1].destBlendAlpha, Blend::Zero);
    EXPECT_EQ(desc.renderTargets[1].writeMask, 0x7);
    EXPECT_FALSE(desc.renderTargets[2].blendEnable);
}
