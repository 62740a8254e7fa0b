// RecordingDevice: a graphics device without hardware, for every test that
// draws, makes buffers or textures, or runs the pipeline without a GL context.
// Every object it makes gets a fresh id from one counter shared by all kinds
// (buffers, textures, views, render targets, samplers, states, stage
// programs, pipelines, input layouts), so an id names one object. It keeps the
// bytes of every buffer (ReadBuffer gives them back, Map hands out a dynamic
// buffer's bytes), the description of every texture and render target, and
// records binds, maps, draws, topologies, mip generation and destruction. The
// calls that make up a frame are also written, in order, as short lines into
// `log` ("BindRenderTarget 12", "ClearColor 2", "Dispatch 64 36 1"), so a test
// can check a frame's order. It can be told to refuse buffers of one kind or
// every texture. Everything else does nothing.
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

    // Buffers alive, by id.
    std::map<std::uint32_t, Buffer> buffers;
    // Buffers made so far, destroyed ones included.
    int buffersMade = 0;
    // Buffers destroyed so far.
    int buffersDestroyed = 0;
    // A kind of buffer to refuse (an empty handle), or none.
    std::optional<Graphics::BufferKind> refuseBuffers;
    // Vertex buffer binds, in order.
    std::vector<VertexBind> vertexBinds;
    // Index buffer binds, in order.
    std::vector<IndexBind> indexBinds;
    // Map calls, in order.
    std::vector<MapCall> maps;
    // Draw calls, in order.
    std::vector<DrawCall> draws;
    // SetPrimitiveTopology calls, in order.
    std::vector<Graphics::PrimitiveTopology> topologies;

    // When set, CreateTexture2D refuses every texture.
    bool refuseTextures = false;
    // The description of every texture made, by id, destroyed ones included.
    std::map<std::uint32_t, Graphics::TextureDesc> texturesMade;
    // Ids given to GenerateMips, in order.
    std::vector<std::uint32_t> mipsGenerated;
    // Ids given to DestroyTexture, in order.
    std::vector<std::uint32_t> texturesDestroyed;
    // Render targets alive, by id, with the textures they draw into.
    std::map<std::uint32_t, Graphics::RenderTargetDesc> renderTargets;

    // What Reflect answers for every stage program (set it before compiling a stage that must declare names).
    Graphics::ProgramReflection reflection;
    // What SupportsCompute answers.
    bool supportsCompute = false;

    // The frame's calls in order, one short line each: "BindRenderTarget id" (0: the window),
    // "ClearColor index", "ClearDepth value", "SetViewport x y width height", "BindPipeline id",
    // "BindTexture unit view", "BindImage unit texture", "Draw count", "DrawIndexed count",
    // "DrawInstanced count instances", "DrawIndexedInstanced count instances", "Dispatch x y z", "Barrier".
    // Tests may add marker lines of their own.
    std::vector<std::string> log;

    // The id of the live render target drawing into exactly these colour textures and this depth, or 0.
    std::uint32_t TargetOf(const std::vector<Graphics::TextureHandle>& colours,
                           Graphics::TextureHandle depth = {}) const
    {
        for (const auto& [id, desc] : renderTargets)
            if (desc.colours == colours && desc.depth == depth)
                return id;
        return 0;
    }

    bool SupportsCompute() const override { return supportsCompute; }
    std::string Describe() const override { return "recording device"; }

    Graphics::BufferHandle CreateBuffer(const Graphics::BufferDesc& desc, const void* initialData) override
    {
        if (refuseBuffers && *refuseBuffers == desc.kind)
            return {};
        Buffer buffer{desc, std::vector<std::uint8_t>(desc.size)};
        if (initialData)
            std::memcpy(buffer.bytes.data(), initialData, desc.size);
        const std::uint32_t id = NextId();
        buffers[id] = std::move(buffer);
        ++buffersMade;
        return {id};
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

    Graphics::TextureHandle CreateTexture2D(const Graphics::TextureDesc& desc, const void*) override
    {
        if (refuseTextures)
            return {};
        const Graphics::TextureHandle made{NextId()};
        texturesMade[made.id] = desc;
        return made;
    }
    void UpdateTexture2D(Graphics::TextureHandle, const void*) override {}
    void GenerateMips(Graphics::TextureHandle texture) override { mipsGenerated.push_back(texture.id); }
    Graphics::TextureViewHandle CreateTextureView(Graphics::TextureHandle texture, Graphics::Format) override
    {
        return texture ? Graphics::TextureViewHandle{NextId()} : Graphics::TextureViewHandle{};
    }
    // A texture's own view shares the texture's id.
    Graphics::TextureViewHandle DefaultView(Graphics::TextureHandle texture) const override
    {
        return Graphics::TextureViewHandle{texture.id};
    }
    void DestroyTextureView(Graphics::TextureViewHandle) override {}
    void DestroyTexture(Graphics::TextureHandle texture) override { texturesDestroyed.push_back(texture.id); }

    Graphics::RenderTargetHandle CreateRenderTarget(const Graphics::RenderTargetDesc& desc) override
    {
        const std::uint32_t id = NextId();
        renderTargets[id] = desc;
        return {id};
    }
    void DestroyRenderTarget(Graphics::RenderTargetHandle target) override { renderTargets.erase(target.id); }
    void BindRenderTarget(Graphics::RenderTargetHandle target) override { Log("BindRenderTarget", target.id); }
    void ClearColor(std::uint32_t index, const std::array<float, 4>&) override { Log("ClearColor", index); }
    void ClearDepth(float depth) override { log.push_back("ClearDepth " + Number(depth)); }
    void SetViewport(const Graphics::Viewport& viewport) override
    {
        log.push_back("SetViewport " + Number(viewport.x) + " " + Number(viewport.y) + " " + Number(viewport.width) +
                      " " + Number(viewport.height));
    }
    void SetScissor(int, int, int, int) override {}
    std::vector<std::uint8_t> ReadPixels(Graphics::RenderTargetHandle, std::uint32_t, int, int, int, int) override
    {
        return {};
    }

    Graphics::SamplerHandle CreateSampler(const Graphics::SamplerDesc&) override { return {NextId()}; }
    void DestroySampler(Graphics::SamplerHandle) override {}
    Graphics::BlendStateHandle CreateBlendState(const Graphics::BlendDesc&) override { return {NextId()}; }
    Graphics::RasterizerStateHandle CreateRasterizerState(const Graphics::RasterizerDesc&) override
    {
        return {NextId()};
    }
    Graphics::DepthStencilStateHandle CreateDepthStencilState(const Graphics::DepthStencilDesc&) override
    {
        return {NextId()};
    }
    void SetBlendState(Graphics::BlendStateHandle, const std::array<float, 4>&, std::uint32_t) override {}
    void SetRasterizerState(Graphics::RasterizerStateHandle) override {}
    void SetDepthStencilState(Graphics::DepthStencilStateHandle, std::uint32_t) override {}
    void SetPrimitiveTopology(Graphics::PrimitiveTopology topology) override { topologies.push_back(topology); }

    Graphics::StageCompileResult CompileStage(Graphics::ShaderStage, const std::string&) override
    {
        return {Graphics::StageProgramHandle{NextId()}, {}};
    }
    void DestroyStageProgram(Graphics::StageProgramHandle) override {}
    Graphics::ProgramReflection Reflect(Graphics::StageProgramHandle) override { return reflection; }
    Graphics::PipelineHandle CreatePipeline(const Graphics::PipelineDesc&, std::string&) override { return {NextId()}; }
    void DestroyPipeline(Graphics::PipelineHandle) override {}
    void BindPipeline(Graphics::PipelineHandle pipeline) override { Log("BindPipeline", pipeline.id); }

    Graphics::InputLayoutHandle CreateInputLayout(const std::vector<Graphics::InputElementDesc>&) override
    {
        return {NextId()};
    }
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
    void BindTexture(std::uint32_t unit, Graphics::TextureViewHandle view) override
    {
        Log("BindTexture", unit, view.id);
    }
    void BindSampler(std::uint32_t, Graphics::SamplerHandle) override {}
    void BindImage(std::uint32_t unit, Graphics::TextureHandle texture, Graphics::ImageAccess) override
    {
        Log("BindImage", unit, texture.id);
    }

    void Draw(std::uint32_t count, std::uint32_t) override
    {
        draws.push_back({"Draw", count, 1});
        Log("Draw", count);
    }
    void DrawIndexed(std::uint32_t count, std::uint32_t, std::int32_t) override
    {
        draws.push_back({"DrawIndexed", count, 1});
        Log("DrawIndexed", count);
    }
    void DrawInstanced(std::uint32_t count, std::uint32_t instances, std::uint32_t, std::uint32_t) override
    {
        draws.push_back({"DrawInstanced", count, instances});
        Log("DrawInstanced", count, instances);
    }
    void DrawIndexedInstanced(std::uint32_t count, std::uint32_t instances, std::uint32_t, std::int32_t,
                              std::uint32_t) override
    {
        draws.push_back({"DrawIndexedInstanced", count, instances});
        Log("DrawIndexedInstanced", count, instances);
    }
    void Dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z) override { Log("Dispatch", x, y, z); }
    void Barrier() override { log.emplace_back("Barrier"); }
    void Finish() override {}
    void Present() override {}

private:
    std::uint32_t NextId() { return m_NextId++; }
    // A float as the log writes it: whole numbers without a fraction.
    static std::string Number(float value)
    {
        const auto whole = static_cast<long long>(value);
        return static_cast<float>(whole) == value ? std::to_string(whole) : std::to_string(value);
    }
    // Writes "call a b c" with the numbers given.
    template <typename... Numbers>
    void Log(const char* call, Numbers... numbers)
    {
        std::string line = call;
        ((line += ' ', line += std::to_string(numbers)), ...);
        log.push_back(std::move(line));
    }

    std::uint32_t m_NextId = 1;
};
