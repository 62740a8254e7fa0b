// The two binary model formats, read and written as plain data. A kbm file is
// one model: the magic "KBM" and a version byte, for version 2 and later a
// type (0 static, 1 skinned), the vertices and 32-bit indices, and for skinned
// models the global transform, the bones (name, parent index, offset matrix)
// and the animations (tracks of key frames by bone index). Version 1 files
// carry 44-byte vertices and no type. A kba file is an animation set with no
// header: animations whose tracks name their bones.
//
// Every count is checked against the bytes that remain before anything is
// allocated, so a damaged or hostile file costs at most a small multiple of
// its own size. A file that ends early, a bone whose parent does not stand
// before it, an index past the last vertex or a track of a bone that does not
// exist is a failed read. Matrix values below 0.001 in magnitude are read as 0.
//
//   Graphics::ModelFile file;
//   std::string error;
//   if (!Graphics::ReadKbm(bytes.data(), bytes.size(), file, error)) ...
//   std::vector<std::uint8_t> out = Graphics::WriteKbm(file);
#pragma once

#include "Graphics_Engine/Model/Animation.h"
#include "Graphics_Engine/Model/Vertex.h"
#include "engine/Math/Matrix4.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Graphics
{
// What a model file holds besides its geometry.
enum class ModelType : std::uint32_t
{
    Static = 0,
    Skinned = 1,
};

// A bone as the file stores it.
struct ModelFileBone
{
    std::string Name;
    // Index of the parent bone, which stands earlier in the list; -1 for a root.
    std::int32_t ParentIndex = -1;
    // From model space into the bone's space, in its rest pose.
    Math::Matrix4 OffsetMatrix;
};

// The contents of a kbm file.
struct ModelFile
{
    // The version byte: 1, or 2 and later.
    std::uint8_t Version = 2;
    ModelType Type = ModelType::Static;
    std::vector<Vertex> Vertices;
    std::vector<std::uint32_t> Indices;
    // Skinned models only, as are the bones and animations.
    Math::Matrix4 GlobalTransform;
    std::vector<ModelFileBone> Bones;
    std::vector<Animation> Animations;
};

// Values of a matrix smaller than this in magnitude are read as 0.
inline constexpr float kMatrixSnap = 0.001f;

// Reads a kbm file's bytes; false with a reason in `error` when they are not one.
bool ReadKbm(const std::uint8_t* data, std::size_t size, ModelFile& file, std::string& error);
// The bytes of a kbm file. Version 1 writes 44-byte vertices and nothing past the indices.
std::vector<std::uint8_t> WriteKbm(const ModelFile& file);

// Reads a kba file's bytes; false with a reason in `error` when they are not one.
bool ReadKba(const std::uint8_t* data, std::size_t size, std::vector<Animation>& animations, std::string& error);
// The bytes of a kba file: each track is written under its BoneName.
std::vector<std::uint8_t> WriteKba(const std::vector<Animation>& animations);
}
