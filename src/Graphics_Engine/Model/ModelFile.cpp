#include "Graphics_Engine/Model/ModelFile.h"

#include "Graphics_Engine/Model/ByteStream.h"

#include <bit>
#include <cmath>

static_assert(std::endian::native == std::endian::little, "the model formats are read by copying little-endian bytes");

namespace Graphics
{
namespace
{
// The smallest bytes each record can take, to bound counts before allocating.
constexpr std::uint64_t kMinBoneBytes = 4 + 4 + 64;
constexpr std::uint64_t kMinAnimationBytes = 4 + 4;
constexpr std::uint64_t kMinTrackBytes = 4 + 4;
constexpr std::uint64_t kMinKeyBytes = 4 + 4;

Math::Matrix4 ReadSnappedMatrix(ByteReader& in)
{
    Math::Matrix4 matrix;
    for (auto& row : matrix.m)
        for (float& value : row)
        {
            value = in.F32();
            if (std::fabs(value) < kMatrixSnap)
                value = 0.0f;
        }
    return matrix;
}

void WriteMatrix(ByteWriter& out, const Math::Matrix4& matrix)
{
    for (const auto& row : matrix.m)
        for (float value : row)
            out.F32(value);
}

KeyFrame ReadKey(ByteReader& in)
{
    KeyFrame key;
    const std::uint32_t mask = in.U32();
    key.Time = in.F32();
    // Only the three lowest bits mean anything; higher ones are never asked for.
    key.Sets = std::bitset<3>(mask & 7u);
    // Each value is read in its own statement: arguments of one call have no order.
    float v[4] = {};
    if (key.Sets[kKeyPosition])
    {
        for (int i = 0; i < 3; ++i)
            v[i] = in.F32();
        key.Position = Math::Point3D(v[0], v[1], v[2]);
    }
    if (key.Sets[kKeyScale])
    {
        for (int i = 0; i < 3; ++i)
            v[i] = in.F32();
        key.Scale = Math::Vector3D(v[0], v[1], v[2]);
    }
    if (key.Sets[kKeyRotation])
    {
        for (float& value : v)
            value = in.F32();
        key.Rotation = Math::Quaternion(v[0], v[1], v[2], v[3]);
    }
    return key;
}

void WriteKey(ByteWriter& out, const KeyFrame& key)
{
    out.U32(static_cast<std::uint32_t>(key.Sets.to_ulong()));
    out.F32(key.Time);
    if (key.Sets[kKeyPosition])
        for (float v : {key.Position.x, key.Position.y, key.Position.z})
            out.F32(v);
    if (key.Sets[kKeyScale])
        for (float v : {key.Scale.x, key.Scale.y, key.Scale.z})
            out.F32(v);
    if (key.Sets[kKeyRotation])
        for (float v : {key.Rotation.x, key.Rotation.y, key.Rotation.z, key.Rotation.w})
            out.F32(v);
}

std::vector<KeyFrame> ReadKeys(ByteReader& in)
{
    std::vector<KeyFrame> keys;
    const std::uint32_t count = in.U32();
    if (!in.CanRead(count, kMinKeyBytes))
        return keys;
    keys.reserve(count);
    for (std::uint32_t i = 0; i < count && in.Ok(); ++i)
        keys.push_back(ReadKey(in));
    return keys;
}

void WriteKeys(ByteWriter& out, const std::vector<KeyFrame>& keys)
{
    out.U32(static_cast<std::uint32_t>(keys.size()));
    for (const KeyFrame& key : keys)
        WriteKey(out, key);
}

// Animations of either format: a kbm track names its bone by index, a kba track by name.
std::vector<Animation> ReadAnimations(ByteReader& in, bool tracksByName)
{
    std::vector<Animation> animations;
    const std::uint32_t count = in.U32();
    if (!in.CanRead(count, kMinAnimationBytes))
        return animations;
    animations.reserve(count);
    for (std::uint32_t a = 0; a < count && in.Ok(); ++a)
    {
        Animation& animation = animations.emplace_back();
        animation.Name = in.String();
        const std::uint32_t trackCount = in.U32();
        if (!in.CanRead(trackCount, kMinTrackBytes))
            break;
        animation.Tracks.reserve(trackCount);
        for (std::uint32_t t = 0; t < trackCount && in.Ok(); ++t)
        {
            AnimationTrack& track = animation.Tracks.emplace_back();
            if (tracksByName)
                track.BoneName = in.String();
            else
                track.BoneIndex = in.U32();
            track.Keys = ReadKeys(in);
        }
    }
    return animations;
}

void WriteAnimations(ByteWriter& out, const std::vector<Animation>& animations, bool tracksByName)
{
    out.U32(static_cast<std::uint32_t>(animations.size()));
    for (const Animation& animation : animations)
    {
        out.String(animation.Name);
        out.U32(static_cast<std::uint32_t>(animation.Tracks.size()));
        for (const AnimationTrack& track : animation.Tracks)
        {
            if (tracksByName)
                out.String(track.BoneName);
            else
                out.U32(track.BoneIndex);
            WriteKeys(out, track.Keys);
        }
    }
}

bool ReadSkeleton(ByteReader& in, ModelFile& file, std::string& error)
{
    file.GlobalTransform = ReadSnappedMatrix(in);
    const std::uint32_t boneCount = in.U32();
    if (!in.CanRead(boneCount, kMinBoneBytes))
    {
        error = "the bones run past the end of the file";
        return false;
    }
    file.Bones.reserve(boneCount);
    for (std::uint32_t i = 0; i < boneCount && in.Ok(); ++i)
    {
        ModelFileBone& bone = file.Bones.emplace_back();
        bone.Name = in.String();
        bone.ParentIndex = in.I32();
        bone.OffsetMatrix = ReadSnappedMatrix(in);
        if (in.Ok() && (bone.ParentIndex < -1 || bone.ParentIndex >= static_cast<std::int32_t>(i)))
        {
            error = "bone \"" + bone.Name + "\" has a parent that does not stand before it";
            return false;
        }
    }
    file.Animations = ReadAnimations(in, false);
    for (const Animation& animation : file.Animations)
        for (const AnimationTrack& track : animation.Tracks)
            if (track.BoneIndex >= file.Bones.size())
            {
                error = "animation \"" + animation.Name + "\" moves a bone that does not exist";
                return false;
            }
    return true;
}

bool ReadKbmBody(ByteReader& in, ModelFile& file, std::string& error)
{
    std::uint8_t magic[4] = {};
    if (!in.Read(magic, 4) || magic[0] != 'K' || magic[1] != 'B' || magic[2] != 'M')
    {
        error = "the file does not start with \"KBM\"";
        return false;
    }
    file.Version = magic[3];
    if (file.Version < 1)
    {
        error = "version 0 is not a kbm version";
        return false;
    }
    const std::uint32_t type = file.Version >= 2 ? in.U32() : 0;
    if (type > 1)
    {
        error = "type " + std::to_string(type) + " is neither static (0) nor skinned (1)";
        return false;
    }
    file.Type = static_cast<ModelType>(type);

    const std::uint32_t vertexCount = in.U32();
    const std::uint32_t indexCount = in.U32();
    const std::uint32_t vertexBytes = file.Version == 1 ? kVersion1VertexBytes : kVertexStride;
    if (!in.CanRead(vertexCount, vertexBytes) ||
        !in.CanRead(std::uint64_t(vertexCount) * vertexBytes + std::uint64_t(indexCount) * 4, 1))
    {
        error = "the vertices and indices run past the end of the file";
        return false;
    }
    file.Vertices.resize(vertexCount);
    for (Vertex& vertex : file.Vertices)
        in.Read(&vertex, vertexBytes);
    file.Indices.resize(indexCount);
    in.Read(file.Indices.data(), std::size_t(indexCount) * 4);
    for (std::uint32_t index : file.Indices)
        if (index >= vertexCount)
        {
            error = "index " + std::to_string(index) + " is past the last vertex";
            return false;
        }

    if (file.Type == ModelType::Skinned && !ReadSkeleton(in, file, error))
        return false;
    if (!in.Ok())
    {
        error = "the file ends too early";
        return false;
    }
    return true;
}
}

bool ReadKbm(const std::uint8_t* data, std::size_t size, ModelFile& file, std::string& error)
{
    file = ModelFile{};
    ByteReader in(data, size);
    if (ReadKbmBody(in, file, error))
        return true;
    // A failed read leaves nothing behind.
    const std::uint8_t version = file.Version;
    file = ModelFile{};
    file.Version = version;
    return false;
}

std::vector<std::uint8_t> WriteKbm(const ModelFile& file)
{
    ByteWriter out;
    const std::uint8_t header[4] = {'K', 'B', 'M', file.Version};
    out.Write(header, 4);
    if (file.Version >= 2)
        out.U32(static_cast<std::uint32_t>(file.Type));
    out.U32(static_cast<std::uint32_t>(file.Vertices.size()));
    out.U32(static_cast<std::uint32_t>(file.Indices.size()));
    const std::uint32_t vertexBytes = file.Version == 1 ? kVersion1VertexBytes : kVertexStride;
    for (const Vertex& vertex : file.Vertices)
        out.Write(&vertex, vertexBytes);
    out.Write(file.Indices.data(), file.Indices.size() * 4);
    if (file.Version < 2 || file.Type != ModelType::Skinned)
        return std::move(out.bytes);

    WriteMatrix(out, file.GlobalTransform);
    out.U32(static_cast<std::uint32_t>(file.Bones.size()));
    for (const ModelFileBone& bone : file.Bones)
    {
        out.String(bone.Name);
        out.I32(bone.ParentIndex);
        WriteMatrix(out, bone.OffsetMatrix);
    }
    WriteAnimations(out, file.Animations, false);
    return std::move(out.bytes);
}

bool ReadKba(const std::uint8_t* data, std::size_t size, std::vector<Animation>& animations, std::string& error)
{
    ByteReader in(data, size);
    animations = ReadAnimations(in, true);
    if (in.Ok())
        return true;
    animations.clear();
    error = "the file ends too early";
    return false;
}

std::vector<std::uint8_t> WriteKba(const std::vector<Animation>& animations)
{
    ByteWriter out;
    WriteAnimations(out, animations, true);
    return std::move(out.bytes);
}
}
