#include "Graphics_Engine/RenderStateBlock.h"

#include "engine/Log.h"

namespace Graphics
{
namespace
{
constexpr float kBlendFactor[4] = {0.0f, 0.0f, 0.0f, 0.0f};
constexpr unsigned kSampleMask = 0xFFFFFFFFu;
constexpr unsigned kStencilReference = 1;
}

bool RenderStateBlock::CreateBlendState(RenderStateApplier& device, const BlendDescription& description)
{
    m_Blend = description;
    if (device.CreateBlendState(description))
        return true;
    ERROR_REPORT("Failed To Create the Blend State");
    return false;
}

bool RenderStateBlock::CreateRasterizerState(RenderStateApplier& device, const RasterizerDescription& description)
{
    m_Rasterizer = description;
    if (device.CreateRasterizerState(description))
        return true;
    ERROR_REPORT("Failed To Create the Rasterizer State");
    return false;
}

bool RenderStateBlock::CreateDepthStencilState(RenderStateApplier& device,
                                               const DepthStencilDescription& description)
{
    m_DepthStencil = description;
    if (device.CreateDepthStencilState(description))
        return true;
    ERROR_REPORT("Failed To Create the Depth Stencil State");
    return false;
}

void RenderStateBlock::Apply(RenderStateApplier& device) const
{
    device.SetTopology(m_PrimitiveTopology);
    device.SetBlendState(m_Blend, kBlendFactor, kSampleMask);
    device.SetDepthStencilState(m_DepthStencil, kStencilReference);
    device.SetRasterizerState(m_Rasterizer);
}

void RenderStateBlock::ApplyBlendState(RenderStateApplier& device) const
{
    device.SetTopology(m_PrimitiveTopology);
    device.SetBlendState(m_Blend, kBlendFactor, kSampleMask);
}

void RenderStateBlock::ApplyRasterizerAndDepthState(RenderStateApplier& device) const
{
    device.SetRasterizerState(m_Rasterizer);
    device.SetDepthStencilState(m_DepthStencil, kStencilReference);
}
}
