// Graphics::StageReflection: what reflection found in one compiled stage, in
// the form the program's Apply works on. Uniform blocks are the constant
// buffers, each with a zero-filled shadow copy in main memory and a dirty flag;
// their variables are addressed by name as {buffer, offset, size}. Sampler
// uniforms and storage blocks take texture slots, images unordered slots; each
// sampler uniform is matched with the first sampler block of its name.
// The device's reflection fills it; tests fill it by hand.
#pragma once

#include "Graphics_Engine/ResourceHandle.h"
#include "Graphics_Engine/ShaderDescription.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace Graphics
{
// Where a variable lives in a stage's constant buffers.
struct ConstantLocation
{
    // The constant buffer's index in the stage.
    unsigned Buffer = 0;
    // The byte offset in the buffer.
    unsigned Offset = 0;
    // The byte size.
    unsigned Size = 0;
};

// A constant buffer: a uniform block and its main-memory shadow.
struct ConstantBuffer
{
    // The block's name.
    std::string Name;
    // The shadow copy, as many bytes as the block; zero filled at first.
    std::vector<std::uint8_t> Shadow;
    // True when the shadow changed since the last upload.
    bool Dirty = false;
};

// A sampler uniform and the sampler block that describes it (null when no block names it).
struct StageSampler
{
    // The sampler uniform's name.
    std::string Name;
    // Its sampler block, or null.
    const SamplerDescription* Description = nullptr;
};

struct StageReflection
{
    // Adds a constant buffer of `size` bytes; gives its index.
    unsigned AddConstantBuffer(const std::string& name, unsigned size);
    // Adds a variable of buffer `buffer`, with a default value copied to the shadow when given;
    // false (and nothing added) when the buffer does not exist or the bytes fall outside it.
    bool AddVariable(unsigned buffer, const std::string& name, unsigned offset, unsigned size,
                     const void* defaultValue = nullptr);
    // Adds a texture slot (sampler uniform or storage block); gives its slot.
    unsigned AddTextureSlot(const std::string& name);
    // Adds an unordered slot (image); gives its slot.
    unsigned AddUnorderedSlot(const std::string& name);
    // Adds a sampler uniform, matched with the first sampler of its name in `description`.
    void AddSampler(const std::string& name, const ShaderDescription& description);

    // The constant buffers.
    std::vector<ConstantBuffer> ConstantBuffers;
    // Every variable of the constant buffers by name.
    std::unordered_map<std::string, ConstantLocation> Variables;
    // The views held in the texture slots.
    std::vector<ResourceHandle> TextureSlots;
    // The texture slot of each name.
    std::unordered_map<std::string, unsigned> TextureSlotOf;
    // True when a texture slot changed since the last bind.
    bool TexturesDirty = false;
    // The views held in the unordered slots.
    std::vector<ResourceHandle> UnorderedSlots;
    // The unordered slot of each name.
    std::unordered_map<std::string, unsigned> UnorderedSlotOf;
    // True when an unordered slot changed since the last bind.
    bool UnorderedDirty = false;
    // The sampler uniforms, in the order found.
    std::vector<StageSampler> Samplers;
};
}
