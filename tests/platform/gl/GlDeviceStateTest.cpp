#include "platform/gl/GlDevice.h"

#include "platform/gl/GlTestDevice.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace Graphics;
using namespace GlTest;

namespace
{
// A full-screen triangle, clockwise on the screen, at clip depth 0.5.
const char* kHalfDepthVertex = R"(#version 450
out gl_PerVertex { vec4 gl_Position; };
layout(location = 0) out vec2 v_Uv;
void main()
{
    vec2 corner = vec2((gl_VertexID == 2) ? 3.0 : -1.0, (gl_VertexID == 1) ? 3.0 : -1.0);
    v_Uv = corner * vec2(0.5, -0.5) + 0.5;
    gl_Position = vec4(corner, 0.5, 1.0);
}
)";

const char* kYellowPixel = R"(#version 450
layout(location = 0) out vec4 o_Color;
void main() { o_Color = vec4(1, 1, 0, 1); }
)";

// Writes the depth texture's value into red.
const char* kShowDepthPixel = R"(#version 450
layout(binding = 0) uniform sampler2D t_Depth;
layout(location = 0) in vec2 v_Uv;
layout(location = 0) out vec4 o_Color;
void main() { o_Color = vec4(texture(t_Depth, v_Uv).r, 0, 0, 1); }
)";

// Takes its colour from a uniform block.
const char* kBlockColourPixel = R"(#version 450
layout(std140, binding = 1) uniform Material { vec4 f4_Color; };
layout(location = 0) out vec4 o_Color;
void main() { o_Color = f4_Color; }
)";

void StartFrame(GraphicsDevice& device, const Target& target)
{
    device.BindRenderTarget(target.target);
    device.SetViewport({0, 0, kSize, kSize, 0, 1});
    device.ClearColor(0, {0, 0, 1, 1});
    device.ClearDepth(1.0f);
    device.SetPrimitiveTopology(PrimitiveTopology::TriangleList);
}
}

TEST_F(GlDeviceFixture, DepthIsStoredFrom0To1AndSampledAsATexture)
{
    const Target scene = MakeTarget(*m_Device);
    const Target shown = MakeTarget(*m_Device);
    StartFrame(*m_Device, scene);
    m_Device->BindPipeline(MakePipeline(*m_Device, kHalfDepthVertex, kYellowPixel));
    m_Device->Draw(3, 0);

    StartFrame(*m_Device, shown);
    const DepthStencilStateHandle noDepth = m_Device->CreateDepthStencilState({false, false});
    m_Device->SetDepthStencilState(noDepth, 0);
    SamplerDesc point;
    point.filter = 0x00;
    m_Device->BindSampler(0, m_Device->CreateSampler(point));
    m_Device->BindTexture(0, m_Device->DefaultView(scene.depth));
    m_Device->BindPipeline(MakePipeline(*m_Device, kHalfDepthVertex, kShowDepthPixel));
    m_Device->Draw(3, 0);
    // Clip depth 0.5 is stored as 0.5 (a -1 to 1 clip range would store 0.75).
    const Rgba pixel = PixelAt(*m_Device, shown.target, 10, 10);
    EXPECT_NEAR(pixel[0], 128, 1);
}

TEST_F(GlDeviceFixture, AnAdditiveBlendStateAddsToTheTarget)
{
    const Target target = MakeTarget(*m_Device);
    BlendDesc additive;
    additive.renderTargets[0] = {true, Blend::One, Blend::One, BlendOp::Add, Blend::One, Blend::One, BlendOp::Add};
    StartFrame(*m_Device, target);
    m_Device->SetBlendState(m_Device->CreateBlendState(additive), {0, 0, 0, 0}, 0xFFFFFFFF);
    m_Device->BindPipeline(MakePipeline(*m_Device, kHalfDepthVertex, kYellowPixel));
    m_Device->Draw(3, 0);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 20, 20), (Rgba{255, 255, 255, 255}));
}

TEST_F(GlDeviceFixture, TheDepthFunctionOfADepthStencilStateDecidesWhatIsDrawn)
{
    const Target target = MakeTarget(*m_Device);
    const PipelineHandle yellow = MakePipeline(*m_Device, kHalfDepthVertex, kYellowPixel);
    StartFrame(*m_Device, target);
    m_Device->SetDepthStencilState(m_Device->CreateDepthStencilState({true, true, ComparisonFunc::Greater}), 1);
    m_Device->BindPipeline(yellow);
    m_Device->Draw(3, 0);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 20, 20), (Rgba{0, 0, 255, 255}));
    m_Device->SetDepthStencilState(m_Device->CreateDepthStencilState({true, true, ComparisonFunc::LessEqual}), 1);
    m_Device->Draw(3, 0);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 20, 20), (Rgba{255, 255, 0, 255}));
}

TEST_F(GlDeviceFixture, AUniformBufferMappedWithDiscardFeedsTheDraw)
{
    const Target target = MakeTarget(*m_Device);
    const BufferHandle material = m_Device->CreateBuffer({16, BufferKind::Uniform, BufferUsage::Dynamic});
    const float colour[4] = {1.0f, 0.0f, 1.0f, 1.0f};
    void* memory = m_Device->Map(material, MapMode::WriteDiscard);
    ASSERT_NE(memory, nullptr);
    std::memcpy(memory, colour, sizeof(colour));
    m_Device->Unmap(material);
    StartFrame(*m_Device, target);
    m_Device->BindUniformBuffer(1, material);
    m_Device->BindPipeline(MakePipeline(*m_Device, kHalfDepthVertex, kBlockColourPixel));
    m_Device->Draw(3, 0);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 40, 40), (Rgba{255, 0, 255, 255}));
}

TEST_F(GlDeviceFixture, AnSrgbViewOfAnRgba8TextureReadsLinearValues)
{
    // 188 in sRGB is about 0.5 in linear light; the plain view reads it as 188 / 255.
    const std::vector<std::uint8_t> texels(4 * 4 * 4, 188);
    const TextureHandle texture =
        m_Device->CreateTexture2D({4, 4, 1, Format::R8G8B8A8_UNORM, BindShaderResource}, texels.data());
    const TextureViewHandle srgb = m_Device->CreateTextureView(texture, Format::R8G8B8A8_UNORM_SRGB);
    ASSERT_TRUE(srgb);
    const char* showTexture = R"(#version 450
layout(binding = 0) uniform sampler2D t_Image;
layout(location = 0) in vec2 v_Uv;
layout(location = 0) out vec4 o_Color;
void main() { o_Color = vec4(texture(t_Image, v_Uv).rgb, 1); }
)";
    const PipelineHandle pipeline = MakePipeline(*m_Device, kHalfDepthVertex, showTexture);
    SamplerDesc point;
    point.filter = 0x00;
    m_Device->BindSampler(0, m_Device->CreateSampler(point));

    const Target target = MakeTarget(*m_Device);
    StartFrame(*m_Device, target);
    m_Device->BindPipeline(pipeline);
    m_Device->BindTexture(0, srgb);
    m_Device->Draw(3, 0);
    EXPECT_NEAR(PixelAt(*m_Device, target.target, 8, 8)[0], 128, 2);

    StartFrame(*m_Device, target);
    m_Device->BindTexture(0, m_Device->DefaultView(texture));
    m_Device->Draw(3, 0);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 8, 8)[0], 188);
}

TEST_F(GlDeviceFixture, DrawingStraightIntoTheWindowStandsUpsideDownOnTheScreen)
{
    // Clip y > 0 is yellow, the rest blue. The window counts rows from the bottom of the screen, so
    // without the final pass's turn the yellow half shows at the bottom.
    const char* halves = R"(#version 450
layout(location = 0) in vec2 v_Uv;
layout(location = 0) out vec4 o_Color;
void main() { o_Color = v_Uv.y < 0.5 ? vec4(1, 1, 0, 1) : vec4(0, 0, 1, 1); }
)";
    m_Device->BindRenderTarget({});
    m_Device->SetViewport({0, 0, kSize, kSize, 0, 1});
    m_Device->ClearColor(0, {0, 0, 0, 1});
    m_Device->ClearDepth(1.0f);
    m_Device->SetPrimitiveTopology(PrimitiveTopology::TriangleList);
    m_Device->BindPipeline(MakePipeline(*m_Device, kHalfDepthVertex, halves));
    m_Device->Draw(3, 0);
    const std::vector<std::uint8_t> top = m_Device->ReadPixels({}, 0, 10, 2, 1, 1);
    const std::vector<std::uint8_t> bottom = m_Device->ReadPixels({}, 0, 10, kSize - 3, 1, 1);
    ASSERT_EQ(top.size(), 4u);
    ASSERT_EQ(bottom.size(), 4u);
    EXPECT_EQ(top[2], 255);     // blue at the top of the screen
    EXPECT_EQ(bottom[0], 255);  // yellow at the bottom
    EXPECT_TRUE(m_Device->ReadPixels({}, 0, 60, 60, 8, 8).empty());
    m_Device->Present();
}
