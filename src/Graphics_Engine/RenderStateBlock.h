// Graphics::RenderStateBlock: one set of fixed-function state (blend,
// rasterizer, depth-stencil, primitive topology) that a stage sets in one go.
// It is applied in three forms: all of it; the topology and blend only; or the
// rasterizer and depth-stencil only. The blend factor is zero, the sample mask
// 0xFFFFFFFF and the stencil reference 1.
#pragma once

#include "Graphics_Engine/RenderStateApplier.h"
#include "Graphics_Engine/RenderStates.h"

namespace Graphics
{
class RenderStateBlock
{
public:
    // Keeps `description` as the blend state; reports "Failed To Create the Blend State" when refused.
    bool CreateBlendState(RenderStateApplier& device, const BlendDescription& description);
    // Keeps `description` as the rasterizer state; reports when refused.
    bool CreateRasterizerState(RenderStateApplier& device, const RasterizerDescription& description);
    // Keeps `description` as the depth-stencil state; reports when refused.
    bool CreateDepthStencilState(RenderStateApplier& device, const DepthStencilDescription& description);

    // Sets the topology, blend, depth-stencil and rasterizer states.
    void Apply(RenderStateApplier& device) const;
    // Sets the topology and the blend state.
    void ApplyBlendState(RenderStateApplier& device) const;
    // Sets the rasterizer and depth-stencil states.
    void ApplyRasterizerAndDepthState(RenderStateApplier& device) const;

    // The blend state.
    BlendDescription m_Blend;
    // The rasterizer state.
    RasterizerDescription m_Rasterizer;
    // The depth-stencil state.
    DepthStencilDescription m_DepthStencil;
    // The primitive topology.
    PrimitiveTopology m_PrimitiveTopology = PrimitiveTopology::TriangleList;
};
}
