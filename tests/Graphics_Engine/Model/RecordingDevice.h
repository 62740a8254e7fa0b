// RecordingDevice: a graphics device without hardware for the model, mesh and
// batching tests. It keeps the bytes of every buffer it makes (so ReadBuffer
// gives them back, and Map hands out a dynamic buffer's bytes to write),
// records what was created, bound, mapped, drawn and destroyed, and can be
// told to refuse buffers of one kind. Everything else does nothing and makes
// nothing.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"

#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <vector>

class RecordingDevice final : public Graphics::GraphicsDevice
{
public:
    // One buffer as made.
    struct Buffer
    {
        Graphics::BufferDesc desc;
        std::vector<std::uint8_t> bytes;
    };
    // One BindVertexBuffer call.
    struct VertexBind
    {
        std::uint32_t slot;
        Graphics::BufferHandle buffer;
        std::uint32_t stride;
        std::uint32_t offset;
    };
    // One BindIndexBuffer call.
    struct IndexBind
    {
        Graphics::BufferHandle buffer;
        bool indices32;
    };

    // Buffers alive, by id.
    std::map<std::uint32_t, Buffer> buffers;
    // Buffers made so far, destroyed ones included.
    int buffersMade = 0;
    // Buffers destroyed so far.
    int buffersDestroyed = 0;
    // Vertex buffer binds, in order.
    std::vector<VertexBind> vertexBinds;
    // Index buffer binds, in order.
    std::vector<IndexBind> indexBinds;
    // One draw call of any of the four kinds.
    struct DrawCall
    {
        // "Draw", "DrawIndexed", "DrawInstanced" or "DrawIndexedInstanced".
        std::string kind;
        // Vertices or indices.
        std::uint32_t count;
        // Instances; 1 for the calls without instances.
        std::uint32_t instances;
    };
    // One Map call.
    struct MapCall
    {
        Graphics::BufferHandle buffer;
        Graphics::MapMode mode;
    };

    // Map calls, in order.
    std::vector<MapCall> maps;
    // Draw calls, in order.
    std::vector<DrawCall> draws;
    // SetPrimitiveTopology calls, in order.
    std::vector<Graphics::PrimitiveTopology> topologies;
    // A kind of buffer to refuse (an empty handle), or none.
    std::optional<Graphics::BufferKind> refuse;

    bool SupportsCompute() const override { return false; }
    std::string Describe() const override { return "recording device"; }

    Graphics::BufferHandle CreateBuffer(const Graphics::BufferDesc& desc, const void* initialData) override
    {
        if (refuse && *refuse == desc.kind)
            return {};
        Buffer buffer{desc, std::vector<std::uint8_t>(desc.size)};
        if (initialData)
            std::memcpy(buffer.bytes.data(), initialData, desc.size);
        buffers[m_NextId] = std::move(buffer);
        ++buffersMade;
        return {m_NextId++};
    }
    void UpdateSubresource(Graphics::BufferHandle, const void*, std::uint32_t, std::uint32_t) override {}
    void* Map(Graphics::BufferHandle buffer, Graphics::MapMode mode) override
    {
        maps.push_back({buffer, mode});
        const auto found = buffers.find(buffer.id);
        if (found == buffers.end() || found->second.desc.usage != Graphics::BufferUsage::Dynamic)
            return nullptr;
        return found->second.bytes.data();
    }
    void Unmap(Graphics::BufferHandle) override {}
    std::vector<std::uint8_t> ReadBuffer(Graphics::BufferHandle buffer) override
    {
        const auto found = buffers.find(buffer.id);
        return found == buffers.end() ? std::vector<std::uint8_t>() : found->second.bytes;
    }
    void DestroyBuffer(Graphics::BufferHandle buffer) override { buffersDestroyed += int(buffers.erase(buffer.id)); }

    Graphics::TextureHandle CreateTexture2D(const Graphics::TextureDesc&, const void*) override { return {}; }
    void UpdateTexture2D(Graphics::TextureHandle, const void*) override {}
    void GenerateMips(Graphics::TextureHandle) override {}
    Graphics::TextureViewHandle CreateTextureView(Graphics::TextureHandle, Graphics::Format) override { return {}; }
    Graphics::TextureViewHandle DefaultView(Graphics::TextureHandle) const override { return {}; }
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
    Graphics::DepthStencilStateHandle CreateDepthStencilState(const Graphics::DepthStencilDesc&) override { return {}; }
    void SetBlendState(Graphics::BlendStateHandle, const std::array<float, 4>&, std::uint32_t) override {}
    void SetRasterizerState(Graphics::RasterizerStateHandle) override {}
    void SetDepthStencilState(Graphics::DepthStencilStateHandle, std::uint32_t) override {}
    void SetPrimitiveTopology(Graphics::PrimitiveTopology topology) override { topologies.push_back(topology); }

    Graphics::StageCompileResult CompileStage(Graphics::ShaderStage, const std::string&) override { return {}; }
    void DestroyStageProgram(Graphics::StageProgramHandle) override {}
    Graphics::ProgramReflection Reflect(Graphics::StageProgramHandle) override { return {}; }
    Graphics::PipelineHandle CreatePipeline(const Graphics::PipelineDesc&, std::string&) override { return {}; }
    void DestroyPipeline(Graphics::PipelineHandle) override {}
    void BindPipeline(Graphics::PipelineHandle) override {}

    Graphics::InputLayoutHandle CreateInputLayout(const std::vector<Graphics::InputElementDesc>&) override { return {}; }
    void DestroyInputLayout(Graphics::InputLayoutHandle) override {}
    void BindInputLayout(Graphics::InputLayoutHandle) override {}
    void BindVertexBuffer(std::uint32_t slot, Graphics::BufferHandle buffer, std::uint32_t stride,
                          std::uint32_t offset) override
    {
        vertexBinds.push_back({slot, buffer, stride, offset});
    }
    void BindIndexBuffer(Graphics::BufferHandle buffer, bool indices32) override
    {
        indexBinds.push_back({buffer, indices32});
    }

    void BindUniformBuffer(std::uint32_t, Graphics::BufferHandle, std::uint32_t, std::uint32_t) override {}
    void BindStorageBuffer(std::uint32_t, Graphics::BufferHandle) override {}
    void BindTexture(std::uint32_t, Graphics::TextureViewHandle) override {}
    void BindSampler(std::uint32_t, Graphics::SamplerHandle) override {}
    void BindImage(std::uint32_t, Graphics::TextureHandle, Graphics::ImageAccess) override {}

    void Draw(std::uint32_t count, std::uint32_t) override { draws.push_back({"Draw", count, 1}); }
    void DrawIndexed(std::uint32_t count, std::uint32_t, std::int32_t) override
    {
        draws.push_back({"DrawIndexed", count, 1});
    }
    void DrawInstanced(std::uint32_t count, std::uint32_t instances, std::uint32_t, std::uint32_t) override
    {
        draws.push_back({"DrawInstanced", count, instances});
    }
    void DrawIndexedInstanced(std::uint32_t count, std::uint32_t instances, std::uint32_t, std::int32_t,
                              std::uint32_t) override
    {
        draws.push_back({"DrawIndexedInstanced", count, instances});
    }
    void Dispatch(std::uint32_t, std::uint32_t, std::uint32_t) override {}
    void Barrier() override {}
    void Finish() override {}
    void Present() override {}

private:
    std::uint32_t m_NextId = 1;
};
