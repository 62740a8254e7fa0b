// NullGraphicsDevice: a graphics device that draws nothing, so that a
// benchmark times the renderer's own work (lists, batching, instance rows)
// without a driver's. Buffers get ids and bytes of their size, so that Map
// hands out memory to write; draws are only counted. Everything else does
// nothing and makes nothing.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"

#include <map>
#include <vector>

class NullGraphicsDevice final : public Graphics::GraphicsDevice
{
public:
    // Draw calls of any kind so far.
    unsigned long long Draws = 0;
    // Instances drawn so far.
    unsigned long long Instances = 0;

    bool SupportsCompute() const override { return true; }
    std::string Describe() const override { return "null device"; }
    Graphics::BufferHandle CreateBuffer(const Graphics::BufferDesc& desc, const void*) override
    {
        m_Buffers[++m_NextId].resize(desc.size);
        return Graphics::BufferHandle{m_NextId};
    }
    void UpdateSubresource(Graphics::BufferHandle, const void*, std::uint32_t, std::uint32_t) override {}
    void* Map(Graphics::BufferHandle buffer, Graphics::MapMode) override
    {
        auto found = m_Buffers.find(buffer.id);
        return found == m_Buffers.end() || found->second.empty() ? nullptr : found->second.data();
    }
    void Unmap(Graphics::BufferHandle) override {}
    std::vector<std::uint8_t> ReadBuffer(Graphics::BufferHandle) override { return {}; }
    void DestroyBuffer(Graphics::BufferHandle buffer) override { m_Buffers.erase(buffer.id); }
    Graphics::TextureHandle CreateTexture2D(const Graphics::TextureDesc&, const void*) override
    {
        return Graphics::TextureHandle{++m_NextId};
    }
    void UpdateTexture2D(Graphics::TextureHandle, const void*) override {}
    void GenerateMips(Graphics::TextureHandle) override {}
    Graphics::TextureViewHandle CreateTextureView(Graphics::TextureHandle, Graphics::Format) override
    {
        return Graphics::TextureViewHandle{++m_NextId};
    }
    Graphics::TextureViewHandle DefaultView(Graphics::TextureHandle texture) const override
    {
        return Graphics::TextureViewHandle{texture.id};
    }
    void DestroyTextureView(Graphics::TextureViewHandle) override {}
    void DestroyTexture(Graphics::TextureHandle) override {}
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
    void BindTexture(std::uint32_t, Graphics::TextureViewHandle) override {}
    void BindSampler(std::uint32_t, Graphics::SamplerHandle) override {}
    void BindImage(std::uint32_t, Graphics::TextureHandle, Graphics::ImageAccess) override {}
    void Draw(std::uint32_t, std::uint32_t) override { Count(1); }
    void DrawIndexed(std::uint32_t, std::uint32_t, std::int32_t) override { Count(1); }
    void DrawInstanced(std::uint32_t, std::uint32_t instances, std::uint32_t, std::uint32_t) override
    {
        Count(instances);
    }
    void DrawIndexedInstanced(std::uint32_t, std::uint32_t instances, std::uint32_t, std::int32_t,
                              std::uint32_t) override
    {
        Count(instances);
    }
    void Dispatch(std::uint32_t, std::uint32_t, std::uint32_t) override {}
    void Barrier() override {}
    void Finish() override {}
    void Present() override {}

private:
    void Count(std::uint32_t instances)
    {
        ++Draws;
        Instances += instances;
    }

    std::uint32_t m_NextId = 0;
    std::map<std::uint32_t, std::vector<std::uint8_t>> m_Buffers;
};
