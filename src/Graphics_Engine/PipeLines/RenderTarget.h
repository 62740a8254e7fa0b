// Graphics::RenderTarget: a texture that is both drawn into and sampled: the
// texture, its shader view, its unordered (image) view when asked for, the
// target views it is drawn through (one), its size, mip count, viewport
// (0, 0, width, height, 0, 1), bind flags (always shader resource and render
// target, plus what the creator added) and format. The depth buffer is one
// too (a 32-bit float depth texture that shaders may read), and the window's
// picture is wrapped as one with no texture of its own: binding it binds the
// window. Release gives every device object back; a target on no device
// (the device failed) holds nothing and binds nothing.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"

#include <cstdint>
#include <vector>

namespace Graphics
{
class RenderTarget
{
public:
    // Makes a colour target of the size and format; `extraBindFlags` may add BindUnorderedAccess, which
    // makes the image view too. False (and nothing held) when the device refuses.
    bool Create(GraphicsDevice& device, int width, int height, Format format, std::uint32_t extraBindFlags = 0);
    // Makes the depth buffer: R32_TYPELESS storage with a depth view and a shader view.
    bool CreateDepth(GraphicsDevice& device, int width, int height);
    // Stands for the window's picture of the given size (the back buffer).
    void WrapWindow(int width, int height);
    // Gives the device objects back and empties the target.
    void Release(GraphicsDevice& device);
    // Draws into this target alone from now on (the window when it wraps the window).
    void Bind(GraphicsDevice& device) const;
    // True when it holds a texture or wraps the window.
    bool IsValid() const { return m_Texture || m_Window; }
    // True when it stands for the window.
    bool IsWindow() const { return m_Window; }

    // The 2D texture.
    TextureHandle m_Texture;
    // The view shaders sample through.
    TextureViewHandle m_ShaderView;
    // The image written by compute shaders (the texture itself), when made with unordered access.
    TextureHandle m_UnorderedView;
    // The views it is drawn through: one target of this texture alone (none for the depth buffer).
    std::vector<RenderTargetHandle> m_TargetViews;
    // Size in texels.
    int m_Width = 0;
    int m_Height = 0;
    // Mip levels.
    unsigned m_MipCount = 1;
    // 0, 0, width, height, depth 0 to 1.
    Viewport m_Viewport;
    // TextureBindFlags combined.
    std::uint32_t m_BindFlags = 0;
    // The storage format.
    Format m_Format = Format::UNKNOWN;

private:
    bool m_Window = false;
};
}
