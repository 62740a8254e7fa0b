// Graphics::ShaderDescription: what the preprocessor read from a shader file's
// description blocks (stage, entry point, flags, samplers) and the source that
// is left for the compiler, with "#line" directives keeping file line numbers.
#pragma once

#include "Graphics_Engine/SamplerDescription.h"

#include <string>
#include <vector>

namespace Graphics
{
// Stage numbers of a description (the device names the same stages as ShaderStage).
enum ShaderStageNumber : int
{
    StageNone = -1,
    StageVertex = 0,
    StageGeometry = 1,
    StageHull = 2,
    StageDomain = 3,
    StagePixel = 4,
    StageCompute = 5,
};

// Flag bits of a description.
enum ShaderFlag : unsigned
{
    FlagForward = 1u << 0,
    FlagInstanced = 1u << 1,
};

struct ShaderDescription
{
    // The stage, StageNone until a Type is read.
    int Stage = StageNone;
    // The entry function's name.
    std::string EntryPoint;
    // Every sampler block, in file order.
    std::vector<SamplerDescription> Samplers;
    // The flag bits (FlagForward, FlagInstanced).
    unsigned Flags = 0;
    // The source without its description blocks.
    std::string Source;

    // The first sampler of that name, or null.
    const SamplerDescription* FindSampler(const std::string& name) const
    {
        for (const SamplerDescription& sampler : Samplers)
            if (sampler.Name == name)
                return &sampler;
        return nullptr;
    }
};
}
