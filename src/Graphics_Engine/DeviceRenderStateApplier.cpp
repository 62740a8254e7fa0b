#include "Graphics_Engine/DeviceRenderStateApplier.h"

namespace Graphics
{
namespace
{
StencilFaceDesc DeviceFace(const StencilFace& face)
{
    StencilFaceDesc desc;
    desc.failOp = face.FailOp;
    desc.depthFailOp = face.DepthFailOp;
    desc.passOp = face.PassOp;
    desc.func = face.Func;
    return desc;
}

template <typename Description, typename Handle, typename Make>
Handle FindOrMake(std::vector<std::pair<Description, Handle>>& made, const Description& description, Make make)
{
    for (const auto& [known, handle] : made)
        if (known == description)
            return handle;
    const Handle handle = make();
    if (handle)
        made.emplace_back(description, handle);
    return handle;
}
}

BlendDesc ToDeviceBlend(const BlendDescription& description)
{
    BlendDesc desc;
    desc.alphaToCoverage = description.AlphaToCoverageEnable;
    desc.independentBlend = description.IndependentBlendEnable;
    RenderTargetBlendDesc& target = desc.renderTargets[0];
    target.blendEnable = description.BlendEnable;
    target.srcBlend = description.SrcBlend;
    target.destBlend = description.DestBlend;
    target.blendOp = description.Op;
    target.srcBlendAlpha = description.SrcBlendAlpha;
    target.destBlendAlpha = description.DestBlendAlpha;
    target.blendOpAlpha = description.OpAlpha;
    target.writeMask = static_cast<std::uint8_t>(description.WriteMask & 0xF);
    for (std::size_t i = 1; i < desc.renderTargets.size(); ++i)
    {
        RenderTargetBlendDesc& other = desc.renderTargets[i];
        if (!description.IndependentBlendEnable)
        {
            other = target;
            continue;
        }
        const TargetBlendDescription& own = description.OtherTargets[i - 1];
        other.blendEnable = own.BlendEnable;
        other.srcBlend = own.SrcBlend;
        other.destBlend = own.DestBlend;
        other.blendOp = own.Op;
        other.srcBlendAlpha = own.SrcBlendAlpha;
        other.destBlendAlpha = own.DestBlendAlpha;
        other.blendOpAlpha = own.OpAlpha;
        other.writeMask = static_cast<std::uint8_t>(own.WriteMask & 0xF);
    }
    return desc;
}

RasterizerDesc ToDeviceRasterizer(const RasterizerDescription& description)
{
    RasterizerDesc desc;
    desc.fillMode = description.Fill;
    desc.cullMode = description.Cull;
    desc.frontCounterClockwise = description.FrontCounterClockwise;
    desc.depthBias = description.DepthBias;
    desc.depthBiasClamp = description.DepthBiasClamp;
    desc.slopeScaledDepthBias = description.SlopeScaledDepthBias;
    desc.depthClipEnable = description.DepthClipEnable;
    desc.scissorEnable = description.ScissorEnable;
    desc.multisampleEnable = description.MultisampleEnable;
    desc.antialiasedLineEnable = description.AntialiasedLineEnable;
    return desc;
}

DepthStencilDesc ToDeviceDepthStencil(const DepthStencilDescription& description)
{
    DepthStencilDesc desc;
    desc.depthEnable = description.DepthEnable;
    desc.depthWrite = description.DepthWrite;
    desc.depthFunc = description.DepthFunc;
    desc.stencilEnable = description.StencilEnable;
    desc.stencilReadMask = static_cast<std::uint8_t>(description.StencilReadMask & 0xFF);
    desc.stencilWriteMask = static_cast<std::uint8_t>(description.StencilWriteMask & 0xFF);
    desc.frontFace = DeviceFace(description.Front);
    desc.backFace = DeviceFace(description.Back);
    return desc;
}

BlendStateHandle DeviceRenderStateApplier::Blend(const BlendDescription& description)
{
    return FindOrMake(m_Blends, description,
                      [&] { return m_Device.CreateBlendState(ToDeviceBlend(description)); });
}

RasterizerStateHandle DeviceRenderStateApplier::Rasterizer(const RasterizerDescription& description)
{
    return FindOrMake(m_Rasterizers, description,
                      [&] { return m_Device.CreateRasterizerState(ToDeviceRasterizer(description)); });
}

DepthStencilStateHandle DeviceRenderStateApplier::DepthStencil(const DepthStencilDescription& description)
{
    return FindOrMake(m_DepthStencils, description,
                      [&] { return m_Device.CreateDepthStencilState(ToDeviceDepthStencil(description)); });
}

bool DeviceRenderStateApplier::CreateBlendState(const BlendDescription& description)
{
    return static_cast<bool>(Blend(description));
}

bool DeviceRenderStateApplier::CreateRasterizerState(const RasterizerDescription& description)
{
    return static_cast<bool>(Rasterizer(description));
}

bool DeviceRenderStateApplier::CreateDepthStencilState(const DepthStencilDescription& description)
{
    return static_cast<bool>(DepthStencil(description));
}

void DeviceRenderStateApplier::SetTopology(PrimitiveTopology topology)
{
    m_Device.SetPrimitiveTopology(topology);
}

void DeviceRenderStateApplier::SetBlendState(const BlendDescription& description, const float factor[4],
                                             unsigned sampleMask)
{
    m_Device.SetBlendState(Blend(description), {factor[0], factor[1], factor[2], factor[3]}, sampleMask);
}

void DeviceRenderStateApplier::SetDepthStencilState(const DepthStencilDescription& description, unsigned reference)
{
    m_Device.SetDepthStencilState(DepthStencil(description), reference);
}

void DeviceRenderStateApplier::SetRasterizerState(const RasterizerDescription& description)
{
    m_Device.SetRasterizerState(Rasterizer(description));
}
}
