#include "Graphics_Engine/PipeLines/RenderTarget.h"

namespace Graphics
{
namespace
{
Viewport WholeOf(int width, int height)
{
    return {0.0f, 0.0f, static_cast<float>(width), static_cast<float>(height), 0.0f, 1.0f};
}
}

bool RenderTarget::Create(GraphicsDevice& device, int width, int height, Format format, std::uint32_t extraBindFlags)
{
    Release(device);
    if (width <= 0 || height <= 0)
        return false;
    m_BindFlags = BindShaderResource | BindRenderTarget | extraBindFlags;
    TextureDesc desc;
    desc.width = static_cast<std::uint32_t>(width);
    desc.height = static_cast<std::uint32_t>(height);
    desc.mipLevels = 1;
    desc.format = format;
    desc.bindFlags = m_BindFlags;
    m_Texture = device.CreateTexture2D(desc);
    if (!m_Texture)
    {
        m_BindFlags = 0;
        return false;
    }
    m_ShaderView = device.DefaultView(m_Texture);
    if (m_BindFlags & BindUnorderedAccess)
        m_UnorderedView = m_Texture;
    const RenderTargetHandle view = device.CreateRenderTarget({{m_Texture}, {}});
    if (view)
        m_TargetViews.push_back(view);
    m_Width = width;
    m_Height = height;
    m_MipCount = 1;
    m_Viewport = WholeOf(width, height);
    m_Format = format;
    return true;
}

bool RenderTarget::CreateDepth(GraphicsDevice& device, int width, int height)
{
    Release(device);
    if (width <= 0 || height <= 0)
        return false;
    m_BindFlags = BindShaderResource | BindDepthStencil;
    TextureDesc desc;
    desc.width = static_cast<std::uint32_t>(width);
    desc.height = static_cast<std::uint32_t>(height);
    desc.format = Format::R32_TYPELESS;
    desc.bindFlags = m_BindFlags;
    m_Texture = device.CreateTexture2D(desc);
    if (!m_Texture)
    {
        m_BindFlags = 0;
        return false;
    }
    m_ShaderView = device.DefaultView(m_Texture);
    m_Width = width;
    m_Height = height;
    m_Viewport = WholeOf(width, height);
    m_Format = Format::R32_TYPELESS;
    return true;
}

void RenderTarget::WrapWindow(int width, int height)
{
    m_Window = true;
    m_Width = width;
    m_Height = height;
    m_Viewport = WholeOf(width, height);
    m_BindFlags = BindRenderTarget;
    m_Format = Format::R8G8B8A8_UNORM;
}

void RenderTarget::Bind(GraphicsDevice& device) const
{
    device.BindRenderTarget(m_TargetViews.empty() ? RenderTargetHandle{} : m_TargetViews.front());
}

void RenderTarget::Release(GraphicsDevice& device)
{
    for (RenderTargetHandle view : m_TargetViews)
        device.DestroyRenderTarget(view);
    m_TargetViews.clear();
    if (m_Texture)
        device.DestroyTexture(m_Texture);
    m_Texture = {};
    m_ShaderView = {};
    m_UnorderedView = {};
    m_Width = 0;
    m_Height = 0;
    m_Viewport = {};
    m_BindFlags = 0;
    m_Format = Format::UNKNOWN;
    m_Window = false;
}
}
