// GlDevice: the graphics device on an OpenGL 4.5 core context. Handles carry
// GL object names (state blocks carry their place in the device's lists);
// the device keeps what GL cannot be asked cheaply (buffer sizes, texture
// formats, which stage a program is). Requests it cannot honour (unknown
// formats, mapping a buffer that is not dynamic, writes out of range, stale
// handles) are refused with a message on standard error, and the program runs
// on. GlDevice.cpp makes and fills resources; GlDeviceDraw.cpp holds
// programs, states and drawing.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"

#include <memory>
#include <unordered_map>

namespace Platform
{
class GlContext;

// The device on a created context; null when the context is not created.
std::unique_ptr<Graphics::GraphicsDevice> CreateGlDevice(GlContext& context);

// True when a context of this version (major * 10 + minor), or with the
// compute extension, runs compute shaders.
bool ContextHasCompute(int version, bool hasComputeExtension);

class GlDevice final : public Graphics::GraphicsDevice
{
public:
    // Uses a created, current context.
    explicit GlDevice(GlContext& context);
    ~GlDevice() override;
    GlDevice(const GlDevice&) = delete;
    GlDevice& operator=(const GlDevice&) = delete;

    bool SupportsCompute() const override { return m_SupportsCompute; }
    std::string Describe() const override;

    Graphics::BufferHandle CreateBuffer(const Graphics::BufferDesc& desc, const void* initialData) override;
    void UpdateSubresource(Graphics::BufferHandle buffer, const void* data, std::uint32_t offset,
                           std::uint32_t size) override;
    void* Map(Graphics::BufferHandle buffer, Graphics::MapMode mode) override;
    void Unmap(Graphics::BufferHandle buffer) override;
    std::vector<std::uint8_t> ReadBuffer(Graphics::BufferHandle buffer) override;
    void DestroyBuffer(Graphics::BufferHandle buffer) override;

    Graphics::TextureHandle CreateTexture2D(const Graphics::TextureDesc& desc, const void* initialData) override;
    Graphics::TextureHandle CreateTexture3D(const Graphics::TextureDesc& desc, std::uint32_t depth) override;
    std::vector<std::uint8_t> ReadTexture3D(Graphics::TextureHandle texture) override;
    void UpdateTexture2D(Graphics::TextureHandle texture, const void* data) override;
    void GenerateMips(Graphics::TextureHandle texture) override;
    Graphics::TextureViewHandle CreateTextureView(Graphics::TextureHandle texture, Graphics::Format format) override;
    Graphics::TextureViewHandle DefaultView(Graphics::TextureHandle texture) const override;
    void DestroyTextureView(Graphics::TextureViewHandle view) override;
    void DestroyTexture(Graphics::TextureHandle texture) override;

    Graphics::RenderTargetHandle CreateRenderTarget(const Graphics::RenderTargetDesc& desc) override;
    void DestroyRenderTarget(Graphics::RenderTargetHandle target) override;
    void BindRenderTarget(Graphics::RenderTargetHandle target) override;
    void ClearColor(std::uint32_t index, const std::array<float, 4>& color) override;
    void ClearDepth(float depth) override;
    void SetViewport(const Graphics::Viewport& viewport) override;
    void SetScissor(int x, int y, int width, int height) override;
    std::vector<std::uint8_t> ReadPixels(Graphics::RenderTargetHandle target, std::uint32_t index, int x, int y,
                                         int width, int height) override;

    Graphics::SamplerHandle CreateSampler(const Graphics::SamplerDesc& desc) override;
    void DestroySampler(Graphics::SamplerHandle sampler) override;

    Graphics::BlendStateHandle CreateBlendState(const Graphics::BlendDesc& desc) override;
    Graphics::RasterizerStateHandle CreateRasterizerState(const Graphics::RasterizerDesc& desc) override;
    Graphics::DepthStencilStateHandle CreateDepthStencilState(const Graphics::DepthStencilDesc& desc) override;
    void SetBlendState(Graphics::BlendStateHandle state, const std::array<float, 4>& blendFactor,
                       std::uint32_t sampleMask) override;
    void SetRasterizerState(Graphics::RasterizerStateHandle state) override;
    void SetDepthStencilState(Graphics::DepthStencilStateHandle state, std::uint32_t stencilRef) override;
    void SetPrimitiveTopology(Graphics::PrimitiveTopology topology) override;

    Graphics::StageCompileResult CompileStage(Graphics::ShaderStage stage, const std::string& source) override;
    void DestroyStageProgram(Graphics::StageProgramHandle program) override;
    Graphics::ProgramReflection Reflect(Graphics::StageProgramHandle program) override;
    Graphics::PipelineHandle CreatePipeline(const Graphics::PipelineDesc& desc, std::string& log) override;
    void DestroyPipeline(Graphics::PipelineHandle pipeline) override;
    void BindPipeline(Graphics::PipelineHandle pipeline) override;

    Graphics::InputLayoutHandle CreateInputLayout(const std::vector<Graphics::InputElementDesc>& elements) override;
    void DestroyInputLayout(Graphics::InputLayoutHandle layout) override;
    void BindInputLayout(Graphics::InputLayoutHandle layout) override;
    void BindVertexBuffer(std::uint32_t slot, Graphics::BufferHandle buffer, std::uint32_t stride,
                          std::uint32_t offset) override;
    void BindIndexBuffer(Graphics::BufferHandle buffer, bool indices32) override;

    void BindUniformBuffer(std::uint32_t binding, Graphics::BufferHandle buffer, std::uint32_t offset,
                           std::uint32_t size) override;
    void BindStorageBuffer(std::uint32_t binding, Graphics::BufferHandle buffer) override;
    void BindTexture(std::uint32_t unit, Graphics::TextureViewHandle view) override;
    void BindSampler(std::uint32_t unit, Graphics::SamplerHandle sampler) override;
    void BindImage(std::uint32_t unit, Graphics::TextureHandle texture, Graphics::ImageAccess access) override;

    void Draw(std::uint32_t vertexCount, std::uint32_t startVertex) override;
    void DrawIndexed(std::uint32_t indexCount, std::uint32_t startIndex, std::int32_t baseVertex) override;
    void DrawInstanced(std::uint32_t vertexCount, std::uint32_t instanceCount, std::uint32_t startVertex,
                       std::uint32_t startInstance) override;
    void DrawIndexedInstanced(std::uint32_t indexCount, std::uint32_t instanceCount, std::uint32_t startIndex,
                              std::int32_t baseVertex, std::uint32_t startInstance) override;
    void Dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z) override;
    void Barrier() override;
    void Finish() override;
    void Present() override;

private:
    struct BufferRecord
    {
        Graphics::BufferDesc desc;
        bool mapped = false;
    };
    struct TextureRecord
    {
        Graphics::TextureDesc desc;
        std::uint32_t levels = 1;
        // Texels in z; more than 0 for a 3D texture, 0 for a 2D one.
        std::uint32_t depth = 0;
        std::vector<std::uint32_t> views;
    };
    struct TargetRecord
    {
        std::uint32_t colourCount = 0;
        int width = 0;
        int height = 0;
    };
    struct LayoutRecord
    {
        std::vector<Graphics::InputElementDesc> elements;
    };

    void ApplyWriteMasks();

    GlContext& m_Context;
    bool m_SupportsCompute = false;
    bool m_HasAnisotropy = false;
    bool m_HasMinMaxReduction = false;
    std::unordered_map<std::uint32_t, BufferRecord> m_Buffers;
    std::unordered_map<std::uint32_t, TextureRecord> m_Textures;
    std::unordered_map<std::uint32_t, std::uint32_t> m_ViewOwners;
    std::unordered_map<std::uint32_t, TargetRecord> m_Targets;
    std::unordered_map<std::uint32_t, Graphics::ShaderStage> m_StagePrograms;
    std::unordered_map<std::uint32_t, LayoutRecord> m_Layouts;
    std::vector<std::uint32_t> m_Samplers;
    std::vector<std::uint32_t> m_Pipelines;
    std::vector<Graphics::BlendDesc> m_BlendStates;
    std::vector<Graphics::RasterizerDesc> m_RasterizerStates;
    std::vector<Graphics::DepthStencilDesc> m_DepthStencilStates;
    Graphics::BlendDesc m_CurrentBlend;
    Graphics::DepthStencilDesc m_CurrentDepthStencil;
    Graphics::RasterizerDesc m_CurrentRasterizer;
    std::uint32_t m_EmptyLayout = 0;
    std::uint32_t m_BoundLayout = 0;
    std::uint32_t m_BoundTarget = 0;
    std::uint32_t m_PrimitiveMode = 0;
    std::uint32_t m_IndexType = 0;
    std::uint32_t m_IndexSize = 2;
};
}
