// Graphics::DeviceRenderStateApplier: RenderStateBlock's requests carried out
// on the graphics device. Each distinct description is made into a device
// state object once and kept; setting a description looks its object up (and
// makes it when it was never created). The topology numbers are the
// device's own.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/RenderStateApplier.h"

#include <utility>
#include <vector>

namespace Graphics
{
// The device's blend description of a render state block's blend state (one for every target).
BlendDesc ToDeviceBlend(const BlendDescription& description);
// The device's rasterizer description.
RasterizerDesc ToDeviceRasterizer(const RasterizerDescription& description);
// The device's depth-stencil description.
DepthStencilDesc ToDeviceDepthStencil(const DepthStencilDescription& description);

class DeviceRenderStateApplier final : public RenderStateApplier
{
public:
    // Makes and sets states on `device`, which must outlive the applier.
    explicit DeviceRenderStateApplier(GraphicsDevice& device) : m_Device(device) {}

    bool CreateBlendState(const BlendDescription& description) override;
    bool CreateRasterizerState(const RasterizerDescription& description) override;
    bool CreateDepthStencilState(const DepthStencilDescription& description) override;
    void SetTopology(PrimitiveTopology topology) override;
    void SetBlendState(const BlendDescription& description, const float factor[4], unsigned sampleMask) override;
    void SetDepthStencilState(const DepthStencilDescription& description, unsigned reference) override;
    void SetRasterizerState(const RasterizerDescription& description) override;

    // How many device state objects were made, of all three kinds.
    std::size_t StateObjectCount() const { return m_Blends.size() + m_Rasterizers.size() + m_DepthStencils.size(); }

private:
    BlendStateHandle Blend(const BlendDescription& description);
    RasterizerStateHandle Rasterizer(const RasterizerDescription& description);
    DepthStencilStateHandle DepthStencil(const DepthStencilDescription& description);

    GraphicsDevice& m_Device;
    std::vector<std::pair<BlendDescription, BlendStateHandle>> m_Blends;
    std::vector<std::pair<RasterizerDescription, RasterizerStateHandle>> m_Rasterizers;
    std::vector<std::pair<DepthStencilDescription, DepthStencilStateHandle>> m_DepthStencils;
};
}
