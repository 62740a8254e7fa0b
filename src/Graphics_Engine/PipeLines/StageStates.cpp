#include "Graphics_Engine/PipeLines/StageStates.h"

namespace Graphics
{
namespace
{
RasterizerDescription Rasterizer(FillMode fill, CullMode cull)
{
    RasterizerDescription description;
    description.Fill = fill;
    description.Cull = cull;
    description.FrontCounterClockwise = true;
    description.DepthClipEnable = true;
    return description;
}

DepthStencilDescription DepthOff()
{
    DepthStencilDescription description;
    description.DepthEnable = false;
    description.DepthWrite = false;
    return description;
}

DepthStencilDescription DepthTestNoWrite()
{
    DepthStencilDescription description;
    description.DepthEnable = true;
    description.DepthWrite = false;
    description.DepthFunc = ComparisonFunc::Less;
    return description;
}

BlendDescription Additive()
{
    BlendDescription blend;
    blend.BlendEnable = true;
    blend.SrcBlend = Blend::One;
    blend.DestBlend = Blend::One;
    blend.Op = BlendOp::Add;
    blend.SrcBlendAlpha = Blend::One;
    blend.DestBlendAlpha = Blend::One;
    blend.OpAlpha = BlendOp::Add;
    return blend;
}

BlendDescription TwoTargetBlend(bool computeLighting)
{
    BlendDescription blend;
    blend.BlendEnable = true;
    blend.SrcBlend = Blend::One;
    blend.DestBlend = Blend::InvSrcAlpha;
    blend.Op = BlendOp::Add;
    blend.SrcBlendAlpha = Blend::One;
    blend.DestBlendAlpha = Blend::One;
    blend.OpAlpha = BlendOp::Max;
    blend.WriteMask = 0xF;
    TargetBlendDescription& second = blend.OtherTargets[0];
    second.BlendEnable = true;
    second.SrcBlend = Blend::One;
    second.DestBlend = Blend::Zero;
    second.Op = BlendOp::Add;
    second.SrcBlendAlpha = Blend::One;
    second.DestBlendAlpha = Blend::Zero;
    second.OpAlpha = BlendOp::Add;
    second.WriteMask = 0xF;
    blend.IndependentBlendEnable = computeLighting;
    return blend;
}
}

StageStateDescriptions GeometryStates()
{
    StageStateDescriptions states;
    states.Rasterizer = Rasterizer(FillMode::Solid, CullMode::Back);
    states.DepthStencil.DepthEnable = true;
    states.DepthStencil.DepthWrite = true;
    states.DepthStencil.DepthFunc = ComparisonFunc::Less;
    return states;
}

StageStateDescriptions LightStatesA()
{
    return {Additive(), Rasterizer(FillMode::Solid, CullMode::Front), DepthOff()};
}

StageStateDescriptions LightStatesB()
{
    return {Additive(), Rasterizer(FillMode::Solid, CullMode::Back), DepthOff()};
}

StageStateDescriptions ForwardStates(bool computeLighting)
{
    return {TwoTargetBlend(computeLighting), Rasterizer(FillMode::Solid, CullMode::None), DepthTestNoWrite()};
}

StageStateDescriptions ParticleStates(bool computeLighting)
{
    return {TwoTargetBlend(computeLighting), Rasterizer(FillMode::Solid, CullMode::None), DepthTestNoWrite()};
}

StageStateDescriptions DebugStates()
{
    StageStateDescriptions states;
    states.Rasterizer = Rasterizer(FillMode::Wireframe, CullMode::Back);
    return states;
}

StageStateDescriptions ImGuiStates()
{
    StageStateDescriptions states;
    states.Blend.BlendEnable = true;
    states.Blend.SrcBlend = Blend::SrcAlpha;
    states.Blend.DestBlend = Blend::InvSrcAlpha;
    states.Blend.Op = BlendOp::Add;
    states.Blend.SrcBlendAlpha = Blend::One;
    states.Blend.DestBlendAlpha = Blend::One;
    states.Blend.OpAlpha = BlendOp::Add;
    states.Rasterizer = Rasterizer(FillMode::Solid, CullMode::None);
    states.Rasterizer.ScissorEnable = true;
    states.DepthStencil = DepthOff();
    return states;
}

StageStateDescriptions FinalStates()
{
    return {BlendDescription{}, Rasterizer(FillMode::Solid, CullMode::None), DepthOff()};
}

void CreateStateBlock(RenderStateBlock& block, RenderStateApplier& device, const StageStateDescriptions& states)
{
    block.CreateBlendState(device, states.Blend);
    block.CreateRasterizerState(device, states.Rasterizer);
    block.CreateDepthStencilState(device, states.DepthStencil);
}
}
