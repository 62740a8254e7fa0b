// GlTestDevice: a test fixture with a hidden window on the offscreen driver, an
// OpenGL 4.5 core context on it and the device. Being test code of the
// platform layer, its helpers may ask GL directly (sampler parameters,
// texture formats and mip levels, resource properties) to check what the device
// did, and it saves pictures as PNG files for a person to look at.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"
#include "platform/NativeWindow.h"
#include "platform/gl/GlContext.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace GlTest
{
// The side of the fixture's render targets.
inline constexpr int kSize = 64;

// One RGBA8 pixel.
using Rgba = std::array<std::uint8_t, 4>;

// A kSize x kSize RGBA8 colour texture with a 32-bit float depth texture, as one render target.
struct Target
{
    Graphics::TextureHandle colour;
    Graphics::TextureHandle depth;
    Graphics::RenderTargetHandle target;
};
Target MakeTarget(Graphics::GraphicsDevice& device);

// A pipeline of a vertex and a pixel stage compiled from source; the test fails on a log.
Graphics::PipelineHandle MakePipeline(Graphics::GraphicsDevice& device, const char* vertex, const char* pixel);

// The pixel of colour target 0 at (x, y), counted from the top-left.
Rgba PixelAt(Graphics::GraphicsDevice& device, Graphics::RenderTargetHandle target, int x, int y);
}

class GlDeviceFixture : public testing::Test
{
protected:
    void SetUp() override;
    void TearDown() override;

    // One GL integer parameter of a sampler object.
    static int SamplerParameter(Graphics::SamplerHandle sampler, unsigned parameter);
    // One GL float parameter of a sampler object.
    static float SamplerParameterFloat(Graphics::SamplerHandle sampler, unsigned parameter);
    // The offset GL reports for a uniform of a stage program, by name; -1 when absent.
    static int UniformOffset(Graphics::StageProgramHandle program, const std::string& name);
    // The internal format GL reports for level 0 of a texture (GL_RGBA8, GL_SRGB8_ALPHA8, ...); 0 for none.
    static int TextureInternalFormat(Graphics::TextureHandle texture);
    // The number of mip levels GL holds for a texture (its immutable levels).
    static int TextureMipCount(Graphics::TextureHandle texture);
    // The width and height GL reports for one mip level of a texture.
    static std::array<int, 2> TextureLevelSize(Graphics::TextureHandle texture, int level);
    // Writes RGBA8 pixels, top row first, as a PNG file; true on success.
    static bool SavePng(const std::string& path, const std::vector<std::uint8_t>& rgba, int width, int height);

    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
    Platform::NativeWindow m_Window;
    Platform::GlContext m_Context;
    std::unique_ptr<Graphics::GraphicsDevice> m_Device;
};
