// GlTranslate: the Direct3D 11 numbers of the device descriptors turned into
// OpenGL enums. Formats give their internal, pixel and type enums; a
// D3D11_FILTER number splits into min and mag filters, comparison,
// reduction (minimum or maximum) and anisotropy; address modes, comparison
// functions, blend factors and operations, stencil operations and topologies
// map one to one. Plain functions with no context needed; unknown numbers give
// a safe default.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"

#include <cstdint>

namespace Platform::Gl
{
// How a format is stored and uploaded.
struct FormatInfo
{
    // Internal format for storage; 0 for an unknown format.
    std::uint32_t internalFormat = 0;
    // Pixel format and type of uploads.
    std::uint32_t pixelFormat = 0;
    std::uint32_t pixelType = 0;
    // Bytes per texel.
    std::uint32_t bytesPerTexel = 0;
    // A depth format.
    bool depth = false;
};

// The storage of a texture format.
FormatInfo TextureFormat(Graphics::Format format);

// A vertex element format: component count, component type and whether it is an integer.
struct VertexFormatInfo
{
    std::int32_t components = 0;
    std::uint32_t type = 0;
    bool integer = false;
    std::uint32_t bytes = 0;
};
VertexFormatInfo VertexFormat(Graphics::Format format);

// What a D3D11_FILTER number means on a GL sampler.
struct FilterInfo
{
    std::int32_t minFilter = 0;
    std::int32_t magFilter = 0;
    // Compare against the reference (0x80).
    bool comparison = false;
    // 0 none, 1 minimum (0x100), 2 maximum (0x180).
    int reduction = 0;
    // Anisotropic filtering (0x40 with all three linear).
    bool anisotropic = false;
};
FilterInfo DecomposeFilter(std::uint32_t filter);

std::int32_t AddressMode(Graphics::AddressMode mode);
std::uint32_t ComparisonFunc(Graphics::ComparisonFunc func);
std::uint32_t BlendFactor(Graphics::Blend blend);
std::uint32_t BlendOperation(Graphics::BlendOp op);
std::uint32_t StencilOperation(Graphics::StencilOp op);
// The GL primitive mode of a topology; patch lists give GL_PATCHES.
std::uint32_t PrimitiveMode(Graphics::PrimitiveTopology topology);
// Control points of a patch-list topology; 0 for others.
int PatchControlPoints(Graphics::PrimitiveTopology topology);
}
