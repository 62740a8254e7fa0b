// Graphics::Vertex: the one vertex layout of every model, 72 bytes: position,
// normal, tangent, texture coordinates, then 28 bytes of skinning data. Static
// models leave the skinning bytes zero. Skinned models fill them as four bone
// indices (unsigned 32-bit, into the model's bone list) followed by three
// weights (32-bit floats); the fourth weight is one minus the sum of the three,
// so the four always add up to one. The skinned vertex shader reads them as
// an R32G32B32A32_UINT element at byte 44 and an R32G32B32_FLOAT element at
// byte 60.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Graphics
{
// Which bones move a vertex of a skinned model, and how much.
struct SkinData
{
    // Indices into the model's bones; unused ones are 0 with a weight of 0.
    std::uint32_t boneIndices[4] = {0, 0, 0, 0};
    // Weights of the first three bones; the fourth's is 1 minus their sum.
    float weights[3] = {0.0f, 0.0f, 0.0f};
};

struct Vertex
{
    float position[3] = {0.0f, 0.0f, 0.0f};
    float normal[3] = {0.0f, 0.0f, 0.0f};
    float tangent[3] = {0.0f, 0.0f, 0.0f};
    // Texture coordinates u, v.
    float uv[2] = {0.0f, 0.0f};
    // Zero for static models.
    SkinData skin;
};

// Bytes of a vertex in a vertex buffer and in a kbm file of version 2 and later.
inline constexpr std::uint32_t kVertexStride = 72;
// Bytes of a vertex in a kbm file of version 1: everything before the skinning data.
inline constexpr std::uint32_t kVersion1VertexBytes = 44;

static_assert(sizeof(SkinData) == 28);
static_assert(sizeof(Vertex) == kVertexStride);
static_assert(offsetof(Vertex, skin) == kVersion1VertexBytes);
}
