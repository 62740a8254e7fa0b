// Graphics::StageBindingPoints: where each entry of a stage's reflection is
// bound on the device. OpenGL gives every uniform block, sampler, storage
// block and image a binding point of its own (set in the source with
// `layout(binding = N)`), shared by all stages of a pipeline; these lists run
// beside the lists of StageReflection, entry for entry, so that the program
// can bind what its Apply uploads.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"

#include <vector>

namespace Graphics
{
// The device place of one texture slot.
struct TextureSlotBinding
{
    // The texture unit (a sampler uniform) or storage binding point (a storage block).
    unsigned Unit = 0;
    // True for a storage block, false for a sampler uniform.
    bool Storage = false;
};

struct StageBindingPoints
{
    // The binding point of each constant buffer.
    std::vector<unsigned> ConstantBuffers;
    // The unit of each texture slot.
    std::vector<TextureSlotBinding> TextureSlots;
    // The image unit of each unordered slot.
    std::vector<unsigned> UnorderedSlots;
    // The texture unit of each sampler uniform.
    std::vector<unsigned> SamplerUnits;
};

// The device objects of one compiled stage that a program binds and uploads to.
struct StageDeviceObjects
{
    // Where each entry is bound.
    StageBindingPoints Points;
    // The device buffer of each constant buffer.
    std::vector<BufferHandle> ConstantBuffers;
    // The sampler object of each sampler uniform; empty when no sampler block names it.
    std::vector<SamplerHandle> Samplers;
};
}
