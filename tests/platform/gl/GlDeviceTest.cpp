#include "platform/gl/GlDevice.h"

#include "platform/gl/GlTestDevice.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

using namespace Graphics;
using namespace GlTest;

namespace
{
// A triangle that covers the whole target, from gl_VertexID alone, clockwise on the screen (the
// front face of the default rasterizer state); it passes its clip position on.
const char* kFullScreenVertex = R"(#version 450
out gl_PerVertex { vec4 gl_Position; };
layout(location = 0) out vec2 v_Clip;
void main()
{
    vec2 corner = vec2((gl_VertexID == 2) ? 3.0 : -1.0, (gl_VertexID == 1) ? 3.0 : -1.0);
    v_Clip = corner;
    gl_Position = vec4(corner, 0.5, 1.0);
}
)";

// Four quarters: top left red, top right green, bottom left blue, bottom right white.
const char* kQuartersPixel = R"(#version 450
layout(location = 0) in vec2 v_Clip;
layout(location = 0) out vec4 o_Color;
void main()
{
    bool top = v_Clip.y > 0.0;
    bool left = v_Clip.x < 0.0;
    o_Color = top ? (left ? vec4(1, 0, 0, 1) : vec4(0, 1, 0, 1)) : (left ? vec4(0, 0, 1, 1) : vec4(1, 1, 1, 1));
}
)";

// Vertices from a buffer, moved right by 1 for each instance.
const char* kInstancedVertex = R"(#version 450
out gl_PerVertex { vec4 gl_Position; };
layout(location = 0) in vec2 a_Position;
layout(location = 1) in float a_Shift;
void main()
{
    gl_Position = vec4(a_Position.x + a_Shift, a_Position.y, 0.5, 1.0);
}
)";

const char* kYellowPixel = R"(#version 450
layout(location = 0) out vec4 o_Color;
void main() { o_Color = vec4(1, 1, 0, 1); }
)";

}

TEST_F(GlDeviceFixture, TheOffscreenWindowGivesAnOpenGl45CoreContext)
{
    EXPECT_GE(m_Context.Version(), 45);
    EXPECT_FALSE(m_Device->Describe().empty());
}

TEST(GlDeviceCapabilities, ComputeNeedsVersion43OrTheComputeExtension)
{
    EXPECT_FALSE(Platform::ContextHasCompute(42, false));
    EXPECT_TRUE(Platform::ContextHasCompute(42, true));
    EXPECT_TRUE(Platform::ContextHasCompute(43, false));
    EXPECT_TRUE(Platform::ContextHasCompute(45, false));
}

TEST_F(GlDeviceFixture, ABufferKeepsItsDataAndTakesInRangeUpdatesOnly)
{
    const std::uint32_t initial[4] = {1, 2, 3, 4};
    const BufferHandle buffer = m_Device->CreateBuffer({16, BufferKind::Uniform, BufferUsage::Default}, initial);
    ASSERT_TRUE(buffer);
    const std::uint32_t two[2] = {20, 30};
    m_Device->UpdateSubresource(buffer, two, 4, 8);
    m_Device->UpdateSubresource(buffer, two, 12, 8);  // past the end: refused
    std::vector<std::uint8_t> bytes = m_Device->ReadBuffer(buffer);
    ASSERT_EQ(bytes.size(), 16u);
    std::uint32_t values[4] = {};
    std::memcpy(values, bytes.data(), 16);
    EXPECT_EQ(values[0], 1u);
    EXPECT_EQ(values[1], 20u);
    EXPECT_EQ(values[2], 30u);
    EXPECT_EQ(values[3], 4u);
    EXPECT_FALSE(m_Device->CreateBuffer({0, BufferKind::Vertex, BufferUsage::Default}));
}

TEST_F(GlDeviceFixture, ADynamicBufferMapsWithDiscardAndNoOverwrite)
{
    const BufferHandle dynamic = m_Device->CreateBuffer({8, BufferKind::Vertex, BufferUsage::Dynamic});
    auto* memory = static_cast<std::uint8_t*>(m_Device->Map(dynamic, MapMode::WriteDiscard));
    ASSERT_NE(memory, nullptr);
    std::memset(memory, 7, 8);
    EXPECT_EQ(m_Device->Map(dynamic, MapMode::WriteDiscard), nullptr);  // mapped already
    m_Device->Unmap(dynamic);
    memory = static_cast<std::uint8_t*>(m_Device->Map(dynamic, MapMode::WriteNoOverwrite));
    ASSERT_NE(memory, nullptr);
    memory[4] = 9;
    m_Device->Unmap(dynamic);
    const std::vector<std::uint8_t> expected = {7, 7, 7, 7, 9, 7, 7, 7};
    EXPECT_EQ(m_Device->ReadBuffer(dynamic), expected);

    const BufferHandle fixed = m_Device->CreateBuffer({8, BufferKind::Vertex, BufferUsage::Default});
    EXPECT_EQ(m_Device->Map(fixed, MapMode::WriteDiscard), nullptr);
}

TEST_F(GlDeviceFixture, TexturesOfEveryRendererFormatAreMade)
{
    for (Format format : {Format::R8G8B8A8_UNORM, Format::R8G8B8A8_UNORM_SRGB, Format::R10G10B10A2_UNORM,
                          Format::R16_FLOAT, Format::R16G16B16A16_FLOAT, Format::R32G32B32A32_FLOAT,
                          Format::R32_TYPELESS, Format::B8G8R8A8_UNORM})
        EXPECT_TRUE(m_Device->CreateTexture2D({8, 8, 0, format, BindShaderResource})) << static_cast<int>(format);
    EXPECT_FALSE(m_Device->CreateTexture2D({8, 8, 1, Format::UNKNOWN, BindShaderResource}));
    EXPECT_FALSE(m_Device->CreateTexture2D({0, 8, 1, Format::R8G8B8A8_UNORM, BindShaderResource}));

    const TextureHandle linear = m_Device->CreateTexture2D({8, 8, 1, Format::R8G8B8A8_UNORM, BindShaderResource});
    EXPECT_TRUE(m_Device->CreateTextureView(linear, Format::R8G8B8A8_UNORM_SRGB));
    EXPECT_FALSE(m_Device->CreateTextureView(linear, Format::R32G32B32A32_FLOAT));
    EXPECT_EQ(m_Device->DefaultView(linear).id, linear.id);
}

TEST_F(GlDeviceFixture, ClearingARenderTargetReadsBackTheClearColour)
{
    const Target target = MakeTarget(*m_Device);
    ASSERT_TRUE(target.target);
    m_Device->BindRenderTarget(target.target);
    m_Device->ClearColor(0, {0.0f, 1.0f, 0.0f, 1.0f});
    m_Device->ClearDepth(1.0f);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 5, 5), (Rgba{0, 255, 0, 255}));
    EXPECT_TRUE(m_Device->ReadPixels(target.target, 0, 60, 60, 8, 8).empty());
    EXPECT_TRUE(m_Device->ReadPixels(target.target, 3, 0, 0, 1, 1).empty());
}

TEST_F(GlDeviceFixture, AFullScreenTriangleDrawsItsQuartersTopRowFirst)
{
    const Target target = MakeTarget(*m_Device);
    const PipelineHandle pipeline = MakePipeline(*m_Device, kFullScreenVertex, kQuartersPixel);
    ASSERT_TRUE(pipeline);
    m_Device->BindRenderTarget(target.target);
    m_Device->SetViewport({0, 0, kSize, kSize, 0, 1});
    m_Device->ClearColor(0, {0, 0, 0, 1});
    m_Device->ClearDepth(1.0f);
    m_Device->BindPipeline(pipeline);
    m_Device->SetPrimitiveTopology(PrimitiveTopology::TriangleList);
    m_Device->Draw(3, 0);

    const std::vector<std::uint8_t> frame = m_Device->ReadPixels(target.target, 0, 0, 0, kSize, kSize);
    ASSERT_EQ(frame.size(), static_cast<std::size_t>(kSize * kSize * 4));
    const std::filesystem::path picture = std::filesystem::current_path() / "DeviceQuarters.png";
    EXPECT_TRUE(SavePng(picture.string(), frame, kSize, kSize)) << picture;

    EXPECT_EQ(PixelAt(*m_Device, target.target, 2, 2), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(PixelAt(*m_Device, target.target, 61, 2), (Rgba{0, 255, 0, 255}));
    EXPECT_EQ(PixelAt(*m_Device, target.target, 2, 61), (Rgba{0, 0, 255, 255}));
    EXPECT_EQ(PixelAt(*m_Device, target.target, 61, 61), (Rgba{255, 255, 255, 255}));
}

TEST_F(GlDeviceFixture, BackFaceCullingKeepsTrianglesClockwiseOnTheScreen)
{
    const Target target = MakeTarget(*m_Device);
    const PipelineHandle pipeline = MakePipeline(*m_Device, kInstancedVertex, kYellowPixel);
    // Left: clockwise as seen (top, right, bottom-left); right: the same corners counter-clockwise.
    const float vertices[] = {-0.5f, 0.5f, 0.0f, -0.5f, -1.0f, -0.5f, 0.5f, 0.5f, 0.0f, -0.5f, 1.0f, -0.5f};
    const float shifts[] = {0.0f};
    const BufferHandle vertexBuffer = m_Device->CreateBuffer({sizeof(vertices), BufferKind::Vertex}, vertices);
    const BufferHandle shiftBuffer = m_Device->CreateBuffer({sizeof(shifts), BufferKind::Vertex}, shifts);
    const InputLayoutHandle layout = m_Device->CreateInputLayout(
        {{0, Format::R32G32_FLOAT, 0, kAppendAligned, false}, {1, Format::R32_FLOAT, 1, kAppendAligned, true}});
    ASSERT_TRUE(layout);
    const RasterizerStateHandle cullBack = m_Device->CreateRasterizerState({});
    m_Device->BindRenderTarget(target.target);
    m_Device->SetViewport({0, 0, kSize, kSize, 0, 1});
    m_Device->ClearColor(0, {0, 0, 0, 1});
    m_Device->ClearDepth(1.0f);
    m_Device->BindPipeline(pipeline);
    m_Device->BindInputLayout(layout);
    m_Device->BindVertexBuffer(0, vertexBuffer, 8, 0);
    m_Device->BindVertexBuffer(1, shiftBuffer, 4, 0);
    m_Device->SetRasterizerState(cullBack);
    m_Device->SetPrimitiveTopology(PrimitiveTopology::TriangleList);
    m_Device->Draw(6, 0);
    // Near the middle of each triangle: clip (-0.5, 0) is x 16, y 32; clip (0.5, 0) is x 48.
    EXPECT_EQ(PixelAt(*m_Device, target.target, 16, 28), (Rgba{255, 255, 0, 255}));
    EXPECT_EQ(PixelAt(*m_Device, target.target, 48, 28), (Rgba{0, 0, 0, 255}));
}

TEST_F(GlDeviceFixture, AnIndexedInstancedDrawPlacesEachInstance)
{
    const Target target = MakeTarget(*m_Device);
    const PipelineHandle pipeline = MakePipeline(*m_Device, kInstancedVertex, kYellowPixel);
    // A quad over clip x -1 to -0.5, y -1 to 1; instance 1 is moved to x 0 to 0.5.
    const float vertices[] = {-1.0f, 1.0f, -0.5f, 1.0f, -0.5f, -1.0f, -1.0f, -1.0f};
    const std::uint16_t indices[] = {0, 1, 2, 0, 2, 3};
    const float shifts[] = {0.0f, 1.0f};
    const BufferHandle vertexBuffer = m_Device->CreateBuffer({sizeof(vertices), BufferKind::Vertex}, vertices);
    const BufferHandle indexBuffer = m_Device->CreateBuffer({sizeof(indices), BufferKind::Index}, indices);
    const BufferHandle shiftBuffer = m_Device->CreateBuffer({sizeof(shifts), BufferKind::Vertex}, shifts);
    const InputLayoutHandle layout = m_Device->CreateInputLayout(
        {{0, Format::R32G32_FLOAT, 0, kAppendAligned, false}, {1, Format::R32_FLOAT, 1, kAppendAligned, true}});
    const RasterizerStateHandle noCull = m_Device->CreateRasterizerState({FillMode::Solid, CullMode::None});
    m_Device->BindRenderTarget(target.target);
    m_Device->SetViewport({0, 0, kSize, kSize, 0, 1});
    m_Device->ClearColor(0, {0, 0, 0, 1});
    m_Device->ClearDepth(1.0f);
    m_Device->BindPipeline(pipeline);
    m_Device->BindInputLayout(layout);
    m_Device->BindVertexBuffer(0, vertexBuffer, 8, 0);
    m_Device->BindVertexBuffer(1, shiftBuffer, 4, 0);
    m_Device->BindIndexBuffer(indexBuffer, false);
    m_Device->SetRasterizerState(noCull);
    m_Device->SetPrimitiveTopology(PrimitiveTopology::TriangleList);
    m_Device->DrawIndexedInstanced(6, 2, 0, 0, 0);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 4, 32), (Rgba{255, 255, 0, 255}));
    EXPECT_EQ(PixelAt(*m_Device, target.target, 36, 32), (Rgba{255, 255, 0, 255}));
    EXPECT_EQ(PixelAt(*m_Device, target.target, 24, 32), (Rgba{0, 0, 0, 255}));
    EXPECT_EQ(PixelAt(*m_Device, target.target, 56, 32), (Rgba{0, 0, 0, 255}));
}

TEST_F(GlDeviceFixture, ACompileErrorGivesTheDriverLogAndNoProgram)
{
    const StageCompileResult result =
        m_Device->CompileStage(ShaderStage::Pixel, "#version 450\nvoid main() { this is not glsl; }\n");
    EXPECT_FALSE(result.program);
    EXPECT_NE(result.log.find("error"), std::string::npos) << result.log;

    std::string log;
    PipelineDesc desc;
    desc.pixel = result.program;
    EXPECT_FALSE(m_Device->CreatePipeline(desc, log));
    EXPECT_FALSE(log.empty());
}

TEST_F(GlDeviceFixture, StaleHandlesAreIgnored)
{
    m_Device->BindPipeline(PipelineHandle{999});
    m_Device->BindRenderTarget(RenderTargetHandle{999});
    m_Device->BindTexture(0, TextureViewHandle{999});
    m_Device->BindInputLayout(InputLayoutHandle{999});
    m_Device->UpdateSubresource(BufferHandle{999}, "x", 0, 1);
    EXPECT_EQ(m_Device->Map(BufferHandle{999}, MapMode::WriteDiscard), nullptr);
    m_Device->SetBlendState(BlendStateHandle{999}, {0, 0, 0, 0}, 0xFFFFFFFF);
    m_Device->DestroyTexture(TextureHandle{999});
    EXPECT_TRUE(m_Device->Reflect(StageProgramHandle{999}).uniformBlocks.empty());
    EXPECT_TRUE(m_Device->ReadPixels(RenderTargetHandle{999}, 0, 0, 0, 1, 1).empty());
}

TEST_F(GlDeviceFixture, AComputeDispatchWritesAStorageBufferAndAnImage)
{
    if (!m_Device->SupportsCompute())
        GTEST_SKIP() << "this context has no compute shaders";
    const StageCompileResult cs = m_Device->CompileStage(ShaderStage::Compute, R"(#version 450
layout(local_size_x = 4, local_size_y = 4) in;
layout(std430, binding = 2) buffer Output { uint values[]; };
layout(binding = 1, rgba8) uniform writeonly image2D u_Image;
void main()
{
    uint index = gl_GlobalInvocationID.y * 4u + gl_GlobalInvocationID.x;
    values[index] = index * 10u;
    imageStore(u_Image, ivec2(gl_GlobalInvocationID.xy), vec4(1, 0, 1, 1));
}
)");
    ASSERT_TRUE(cs.program) << cs.log;
    PipelineDesc desc;
    desc.compute = cs.program;
    std::string log;
    const PipelineHandle pipeline = m_Device->CreatePipeline(desc, log);
    ASSERT_TRUE(pipeline) << log;
    const BufferHandle storage = m_Device->CreateBuffer({16 * 4, BufferKind::ShaderStorage});
    const TextureHandle image = m_Device->CreateTexture2D(
        {4, 4, 1, Format::R8G8B8A8_UNORM, BindShaderResource | BindUnorderedAccess | BindRenderTarget});
    const RenderTargetHandle imageTarget = m_Device->CreateRenderTarget({{image}, {}});
    m_Device->BindPipeline(pipeline);
    m_Device->BindStorageBuffer(2, storage);
    m_Device->BindImage(1, image, ImageAccess::WriteOnly);
    m_Device->Dispatch(1, 1, 1);
    m_Device->Barrier();
    const std::vector<std::uint8_t> bytes = m_Device->ReadBuffer(storage);
    ASSERT_EQ(bytes.size(), 64u);
    std::uint32_t values[16] = {};
    std::memcpy(values, bytes.data(), 64);
    for (std::uint32_t i = 0; i < 16; ++i)
        EXPECT_EQ(values[i], i * 10) << i;
    EXPECT_EQ(PixelAt(*m_Device, imageTarget, 3, 3), (Rgba{255, 0, 255, 255}));
}
