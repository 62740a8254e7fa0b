// Graphics::SamplerDescription: one sampler of a shader file's sampler block,
// as plain values the device turns into a sampler object. Filter is the
// D3D11_FILTER number (min/mag/mip point or linear, +0x80 comparison, +0x100
// minimum and +0x180 maximum reduction, 0x55-style anisotropic); address modes
// are 1 Wrap, 2 Mirror, 3 Clamp, 4 Border, 5 Once; comparison functions 1 Never
// to 8 Always. Name is the sampler uniform of the source that it applies to.
#pragma once

#include <limits>
#include <string>

namespace Graphics
{
struct SamplerDescription
{
    // The sampler uniform this sampler applies to.
    std::string Name;
    // The D3D11_FILTER number; MIN_MAG_MIP_LINEAR by default.
    int Filter = 0x15;
    // Address mode along u; Clamp by default.
    int AddressU = 3;
    // Address mode along v; Clamp by default.
    int AddressV = 3;
    // Address mode along w; Clamp by default.
    int AddressW = 3;
    // Added to the computed level of detail.
    float MipLODBias = 0.0f;
    // Largest anisotropy used by anisotropic filters.
    int MaxAnisotropy = 1;
    // Comparison function of comparison filters; Never by default.
    int ComparisonFunc = 1;
    // Colour of the Border address mode, red, green, blue, alpha.
    float BorderColor[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    // Lowest level of detail; the whole float range by default.
    float MinLOD = -std::numeric_limits<float>::max();
    // Highest level of detail; the whole float range by default.
    float MaxLOD = std::numeric_limits<float>::max();
};
}
