// Graphics::RenderStateApplier: what a RenderStateBlock asks of the device to
// create and set its states. The device implements it; tests implement it
// with a fake that records the calls.
#pragma once

#include "Graphics_Engine/RenderStates.h"

namespace Graphics
{
class RenderStateApplier
{
public:
    virtual ~RenderStateApplier() = default;
    // Prepares a blend state; false when the device refuses it.
    virtual bool CreateBlendState(const BlendDescription& description) = 0;
    // Prepares a rasterizer state; false when the device refuses it.
    virtual bool CreateRasterizerState(const RasterizerDescription& description) = 0;
    // Prepares a depth-stencil state; false when the device refuses it.
    virtual bool CreateDepthStencilState(const DepthStencilDescription& description) = 0;
    // Sets the primitive topology.
    virtual void SetTopology(PrimitiveTopology topology) = 0;
    // Sets the blend state with its blend factor and sample mask.
    virtual void SetBlendState(const BlendDescription& description, const float factor[4], unsigned sampleMask) = 0;
    // Sets the depth-stencil state with its stencil reference.
    virtual void SetDepthStencilState(const DepthStencilDescription& description, unsigned reference) = 0;
    // Sets the rasterizer state.
    virtual void SetRasterizerState(const RasterizerDescription& description) = 0;
};
}
