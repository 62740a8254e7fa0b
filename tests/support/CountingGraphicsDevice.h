// A graphics device with no hardware behind it, for tests of code that only
// makes and destroys textures: textures get increasing ids (or none, when
// told to refuse them), and every creation, mip generation and destruction is
// counted. Every other call does nothing and makes nothing.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"

#include <map>
#include <vector>

class CountingGraphicsDevice final : public Graphics::GraphicsDevice
{
public:
    using TextureHandle = Graphics::TextureHandle;
    using TextureViewHandle = Graphics::TextureViewHandle;

    // When set, CreateTexture2D refuses every texture.
    bool RefuseTextures = false;
    // The description of every texture made, by id.
    std::map<std::uint32_t, Graphics::TextureDesc> Made;
    // Ids given to GenerateMips, in order.
    std::vector<std::uint32_t> MipsGenerated;
    // Ids given to DestroyTexture, in order.
    std::vector<std::uint32_t> Destroyed;

    bool SupportsCompute() const override { return false; }
    std::string Describe() const override { return "counting device"; }
    Graphics::BufferHandle CreateBuffer(const Graphics::BufferDesc&, const void*) override { return {}; }
    void UpdateSubresource(Graphics::BufferHandle, const void*, std::uint32_t, std::uint32_t) override {}
    void* Map(Graphics::BufferHandle, Graphics::MapMode) override { return nullptr; }
    void Unmap(Graphics::BufferHandle) override {}
    std::vector<std::uint8_t> ReadBuffer(Graphics::BufferHandle) override { return {}; }
    void DestroyBuffer(Graphics::BufferHandle) override {}
    TextureHandle CreateTexture2D(const Graphics::TextureDesc& desc, const void*) override
    {
        if (RefuseTextures)
            return {};
        const TextureHandle made{m_NextId++};
        Made[made.id] = desc;
        return made;
    }
    void UpdateTexture2D(TextureHandle, const void*) override {}
    void GenerateMips(TextureHandle texture) override { MipsGenerated.push_back(texture.id); }
    TextureViewHandle CreateTextureView(TextureHandle, Graphics::Format) override { return {}; }
    TextureViewHandle DefaultView(TextureHandle texture) const override { return TextureViewHandle{texture.id}; }
    void DestroyTextureView(TextureViewHandle) override {}
    void DestroyTexture(TextureHandle texture) override { Destroyed.push_back(texture.id); }
    Graphics::RenderTargetHandle CreateRenderTarget(const Graphics::RenderTargetDesc&) override { return {}; }
    void DestroyRenderTarget(Graphics::RenderTargetHandle) override {}
    void BindRenderTarget(Graphics::RenderTargetHandle) override {}
    void ClearColor(std::uint32_t, const std::array<float, 4>&) override {}
    void ClearDepth(float) override {}
    void SetViewport(const Graphics::Viewport&) override {}
    void SetScissor(int, int, int, int) override {}
    std::vector<std::uint8_t> ReadPixels(Graphics::RenderTargetHandle, std::uint32_t, int, int, int, int) override
    {
        return {};
    }
    Graphics::SamplerHandle CreateSampler(const Graphics::SamplerDesc&) override { return {}; }
    void DestroySampler(Graphics::SamplerHandle) override {}
    Graphics::BlendStateHandle CreateBlendState(const Graphics::BlendDesc&) override { return {}; }
    Graphics::RasterizerStateHandle CreateRasterizerState(const Graphics::RasterizerDesc&) override { return {}; }
    Graphics::DepthStencilStateHandle CreateDepthStencilState(const Graphics::DepthStencilDesc&) override
    {
        return {};
    }
    void SetBlendState(Graphics::BlendStateHandle, const std::array<float, 4>&, std::uint32_t) override {}
    void SetRasterizerState(Graphics::RasterizerStateHandle) override {}
    void SetDepthStencilState(Graphics::DepthStencilStateHandle, std::uint32_t) override {}
    void SetPrimitiveTopology(Graphics::PrimitiveTopology) override {}
    Graphics::StageCompileResult CompileStage(Graphics::ShaderStage, const std::string&) override { return {}; }
    void DestroyStageProgram(Graphics::StageProgramHandle) override {}
    Graphics::ProgramReflection Reflect(Graphics::StageProgramHandle) override { return {}; }
    Graphics::PipelineHandle CreatePipeline(const Graphics::PipelineDesc&, std::string&) override { return {}; }
    void DestroyPipeline(Graphics::PipelineHandle) override {}
    void BindPipeline(Graphics::PipelineHandle) override {}
    Graphics::InputLayoutHandle CreateInputLayout(const std::vector<Graphics::InputElementDesc>&) override
    {
        return {};
    }
    void DestroyInputLayout(Graphics::InputLayoutHandle) override {}
    void BindInputLayout(Graphics::InputLayoutHandle) override {}
    void BindVertexBuffer(std::uint32_t, Graphics::BufferHandle, std::uint32_t, std::uint32_t) override {}
    void BindIndexBuffer(Graphics::BufferHandle, bool) override {}
    void BindUniformBuffer(std::uint32_t, Graphics::BufferHandle, std::uint32_t, std::uint32_t) override {}
    void BindStorageBuffer(std::uint32_t, Graphics::BufferHandle) override {}
    void BindTexture(std::uint32_t, TextureViewHandle) override {}
    void BindSampler(std::uint32_t, Graphics::SamplerHandle) override {}
    void BindImage(std::uint32_t, TextureHandle, Graphics::ImageAccess) override {}
    void Draw(std::uint32_t, std::uint32_t) override {}
    void DrawIndexed(std::uint32_t, std::uint32_t, std::int32_t) override {}
    void DrawInstanced(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) override {}
    void DrawIndexedInstanced(std::uint32_t, std::uint32_t, std::uint32_t, std::int32_t, std::uint32_t) override {}
    void Dispatch(std::uint32_t, std::uint32_t, std::uint32_t) override {}
    void Barrier() override {}
    void Finish() override {}
    void Present() override {}

private:
    std::uint32_t m_NextId = 1;
};
