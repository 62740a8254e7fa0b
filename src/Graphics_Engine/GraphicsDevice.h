// GraphicsDevice: what the renderer asks of the graphics hardware, behind
// handles and descriptors. It makes buffers, textures and their views, render
// targets, samplers, state blocks, stage programs and pipelines; binds them;
// draws and dispatches; clears and reads back. Creation failures give an empty
// handle (and, for programs, the compiler's log as text); calls with empty or
// stale handles do nothing. Its OpenGL implementation lives under
// src/platform/gl/; nothing here names a platform type.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"
#include "Graphics_Engine/ProgramReflection.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Graphics
{
// The result of compiling one stage: the program, or an empty handle and the log.
struct StageCompileResult
{
    StageProgramHandle program;
    // The compiler's and linker's messages as they stand; empty when there were none.
    std::string log;
};

// Which stage programs a pipeline uses; empty handles are absent stages.
struct PipelineDesc
{
    StageProgramHandle vertex;
    StageProgramHandle geometry;
    StageProgramHandle hull;
    StageProgramHandle domain;
    StageProgramHandle pixel;
    StageProgramHandle compute;
};

class GraphicsDevice
{
public:
    virtual ~GraphicsDevice() = default;

    // True when compute shaders, storage buffers and images are available.
    virtual bool SupportsCompute() const = 0;
    // The driver's name and version, for the log.
    virtual std::string Describe() const = 0;

    // Makes a buffer, filled from `initialData` when given (desc.size bytes).
    virtual BufferHandle CreateBuffer(const BufferDesc& desc, const void* initialData = nullptr) = 0;
    // Writes `size` bytes at `offset`; out-of-range writes are refused.
    virtual void UpdateSubresource(BufferHandle buffer, const void* data, std::uint32_t offset,
                                   std::uint32_t size) = 0;
    // Maps a dynamic buffer for writing; null for a buffer that cannot be mapped.
    virtual void* Map(BufferHandle buffer, MapMode mode) = 0;
    // Ends a Map.
    virtual void Unmap(BufferHandle buffer) = 0;
    // Reads the buffer's bytes back (for tests and tools).
    virtual std::vector<std::uint8_t> ReadBuffer(BufferHandle buffer) = 0;
    virtual void DestroyBuffer(BufferHandle buffer) = 0;

    // Makes a 2D texture; `initialData` fills mip 0, rows packed, top row first.
    virtual TextureHandle CreateTexture2D(const TextureDesc& desc, const void* initialData = nullptr) = 0;
    // Makes a 3D texture of one mip, desc.width x desc.height x `depth` texels (desc.mipLevels is not
    // used), that may be sampled and, with BindUnorderedAccess, written as a layered image; empty where
    // the device has no 3D textures or refuses the size.
    virtual TextureHandle CreateTexture3D(const TextureDesc& desc, std::uint32_t depth)
    {
        (void)desc;
        (void)depth;
        return {};
    }
    // Reads a 3D texture's texels back, slice after slice, rows top first, in its format's bytes (for
    // tests and tools); empty where the device cannot or the texture is no 3D texture.
    virtual std::vector<std::uint8_t> ReadTexture3D(TextureHandle texture)
    {
        (void)texture;
        return {};
    }
    // Writes mip 0 of a colour texture (rows packed, top row first).
    virtual void UpdateTexture2D(TextureHandle texture, const void* data) = 0;
    // Fills the lower mip levels from level 0.
    virtual void GenerateMips(TextureHandle texture) = 0;
    // A view of the texture's storage under a compatible format (RGBA8 as sRGB, say).
    virtual TextureViewHandle CreateTextureView(TextureHandle texture, Format format) = 0;
    // The view that reads a texture as it was made.
    virtual TextureViewHandle DefaultView(TextureHandle texture) const = 0;
    virtual void DestroyTextureView(TextureViewHandle view) = 0;
    virtual void DestroyTexture(TextureHandle texture) = 0;

    // Makes a render target of colour textures and a depth texture; empty when incomplete.
    virtual RenderTargetHandle CreateRenderTarget(const RenderTargetDesc& desc) = 0;
    virtual void DestroyRenderTarget(RenderTargetHandle target) = 0;
    // Draws into the target from now on; an empty handle is the window.
    virtual void BindRenderTarget(RenderTargetHandle target) = 0;
    // Clears colour target `index` of the bound target.
    virtual void ClearColor(std::uint32_t index, const std::array<float, 4>& color) = 0;
    // Clears the depth of the bound target.
    virtual void ClearDepth(float depth) = 0;
    virtual void SetViewport(const Viewport& viewport) = 0;
    // The scissor rectangle, top-left origin.
    virtual void SetScissor(int x, int y, int width, int height) = 0;
    // Reads RGBA8 pixels of colour target `index` of `target`, top row first.
    virtual std::vector<std::uint8_t> ReadPixels(RenderTargetHandle target, std::uint32_t index, int x, int y,
                                                 int width, int height) = 0;

    virtual SamplerHandle CreateSampler(const SamplerDesc& desc) = 0;
    virtual void DestroySampler(SamplerHandle sampler) = 0;

    virtual BlendStateHandle CreateBlendState(const BlendDesc& desc) = 0;
    virtual RasterizerStateHandle CreateRasterizerState(const RasterizerDesc& desc) = 0;
    virtual DepthStencilStateHandle CreateDepthStencilState(const DepthStencilDesc& desc) = 0;
    // Sets a blend state with its blend factor; the sample mask is kept for the record.
    virtual void SetBlendState(BlendStateHandle state, const std::array<float, 4>& blendFactor,
                               std::uint32_t sampleMask) = 0;
    virtual void SetRasterizerState(RasterizerStateHandle state) = 0;
    // Sets a depth-stencil state with its stencil reference.
    virtual void SetDepthStencilState(DepthStencilStateHandle state, std::uint32_t stencilRef) = 0;
    virtual void SetPrimitiveTopology(PrimitiveTopology topology) = 0;

    // Compiles one stage from GLSL source into a program of its own.
    virtual StageCompileResult CompileStage(ShaderStage stage, const std::string& source) = 0;
    virtual void DestroyStageProgram(StageProgramHandle program) = 0;
    // What the stage program declares.
    virtual ProgramReflection Reflect(StageProgramHandle program) = 0;
    // Combines stage programs; empty when they do not fit together (the log says why).
    virtual PipelineHandle CreatePipeline(const PipelineDesc& desc, std::string& log) = 0;
    virtual void DestroyPipeline(PipelineHandle pipeline) = 0;
    virtual void BindPipeline(PipelineHandle pipeline) = 0;

    // Makes a vertex input format.
    virtual InputLayoutHandle CreateInputLayout(const std::vector<InputElementDesc>& elements) = 0;
    virtual void DestroyInputLayout(InputLayoutHandle layout) = 0;
    virtual void BindInputLayout(InputLayoutHandle layout) = 0;
    // Binds a vertex buffer to a slot of the bound input layout.
    virtual void BindVertexBuffer(std::uint32_t slot, BufferHandle buffer, std::uint32_t stride,
                                  std::uint32_t offset) = 0;
    // Binds the index buffer of the bound input layout; 16- or 32-bit indices.
    virtual void BindIndexBuffer(BufferHandle buffer, bool indices32) = 0;

    // Binds a uniform buffer to a binding point (the whole buffer when size is 0).
    virtual void BindUniformBuffer(std::uint32_t binding, BufferHandle buffer, std::uint32_t offset = 0,
                                   std::uint32_t size = 0) = 0;
    virtual void BindStorageBuffer(std::uint32_t binding, BufferHandle buffer) = 0;
    // Binds a texture view to a texture unit; an empty handle clears the unit.
    virtual void BindTexture(std::uint32_t unit, TextureViewHandle view) = 0;
    virtual void BindSampler(std::uint32_t unit, SamplerHandle sampler) = 0;
    // Binds mip 0 of a texture to an image unit; an empty handle clears the unit.
    virtual void BindImage(std::uint32_t unit, TextureHandle texture, ImageAccess access) = 0;

    virtual void Draw(std::uint32_t vertexCount, std::uint32_t startVertex) = 0;
    virtual void DrawIndexed(std::uint32_t indexCount, std::uint32_t startIndex, std::int32_t baseVertex) = 0;
    virtual void DrawInstanced(std::uint32_t vertexCount, std::uint32_t instanceCount, std::uint32_t startVertex,
                               std::uint32_t startInstance) = 0;
    virtual void DrawIndexedInstanced(std::uint32_t indexCount, std::uint32_t instanceCount,
                                      std::uint32_t startIndex, std::int32_t baseVertex,
                                      std::uint32_t startInstance) = 0;
    // Runs the bound compute pipeline; nothing without compute support.
    virtual void Dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z) = 0;
    // Makes writes of earlier draws and dispatches visible to what follows.
    virtual void Barrier() = 0;
    // Waits until the device has done everything asked of it.
    virtual void Finish() = 0;
    // Shows the window's picture (swap, no vsync).
    virtual void Present() = 0;
};
}
