#include "Graphics_Engine/Model/ByteStream.h"
#include "Graphics_Engine/Model/ModelFile.h"

#include "support/AllocationCounter.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace Graphics;

namespace
{
Vertex MakeVertex(float seed)
{
    Vertex v;
    for (int i = 0; i < 3; ++i)
    {
        v.position[i] = seed + i;
        v.normal[i] = seed * 2 + i;
        v.tangent[i] = seed * 3 + i;
    }
    v.uv[0] = seed / 10;
    v.uv[1] = seed / 20;
    v.skin.boneIndices[0] = 1;
    v.skin.boneIndices[1] = 0;
    v.skin.weights[0] = 0.75f;
    v.skin.weights[1] = 0.25f;
    return v;
}

KeyFrame MakeKey(float time, unsigned mask)
{
    KeyFrame key;
    key.Time = time;
    key.Sets = std::bitset<3>(mask);
    key.Position = Math::Point3D(time, 2 * time, 3 * time);
    key.Scale = Math::Vector3D(1 + time, 1, 1);
    key.Rotation = Math::Quaternion(0, 0.6f, 0, 0.8f);
    return key;
}

ModelFile MakeSkinnedFile()
{
    ModelFile file;
    file.Version = 2;
    file.Type = ModelType::Skinned;
    file.Vertices = {MakeVertex(1), MakeVertex(2), MakeVertex(3)};
    file.Indices = {0, 1, 2};
    file.GlobalTransform = Math::Matrix4::Translation(1, 2, 3);
    file.Bones = {{"Root", -1, Math::Matrix4()}, {"Arm", 0, Math::Matrix4::Translation(0, -1, 0)}};
    Animation walk;
    walk.Name = "Walk";
    walk.Tracks.push_back({1, "", {MakeKey(0, 7), MakeKey(0.5f, 1), MakeKey(1, 4)}});
    walk.Tracks.push_back({0, "", {MakeKey(0, 2)}});
    file.Animations = {walk, Animation{"Idle", {}}};
    return file;
}

// A kbm version 1 file by hand: header, counts, 44-byte vertices, indices.
std::vector<std::uint8_t> Version1Bytes()
{
    ByteWriter out;
    const std::uint8_t header[4] = {'K', 'B', 'M', 1};
    out.Write(header, 4);
    out.U32(3);
    out.U32(3);
    for (int v = 0; v < 3; ++v)
        for (int f = 0; f < 11; ++f)
            out.F32(float(v * 100 + f));
    for (std::uint32_t i : {2u, 1u, 0u})
        out.U32(i);
    return out.bytes;
}

// A skinned model whose global transform is given, with no bones or animations.
std::vector<std::uint8_t> SkinnedWithGlobalTransform(const float values[16])
{
    ByteWriter out;
    const std::uint8_t header[4] = {'K', 'B', 'M', 2};
    out.Write(header, 4);
    out.U32(1);
    out.U32(0);
    out.U32(0);
    for (int i = 0; i < 16; ++i)
        out.F32(values[i]);
    out.U32(0);
    out.U32(0);
    return out.bytes;
}

bool SameVertex(const Vertex& a, const Vertex& b)
{
    return std::memcmp(&a, &b, sizeof(Vertex)) == 0;
}
}

TEST(ModelFile, SkinnedModelReadsBackAsWritten)
{
    const ModelFile original = MakeSkinnedFile();
    const std::vector<std::uint8_t> bytes = WriteKbm(original);
    ModelFile read;
    std::string error;
    ASSERT_TRUE(ReadKbm(bytes.data(), bytes.size(), read, error)) << error;
    EXPECT_EQ(read.Version, 2);
    EXPECT_EQ(read.Type, ModelType::Skinned);
    ASSERT_EQ(read.Vertices.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_TRUE(SameVertex(read.Vertices[i], original.Vertices[i]));
    EXPECT_EQ(read.Indices, original.Indices);
    EXPECT_TRUE(read.GlobalTransform.NearlyEquals(original.GlobalTransform, 0));
    ASSERT_EQ(read.Bones.size(), 2u);
    EXPECT_EQ(read.Bones[1].Name, "Arm");
    EXPECT_EQ(read.Bones[1].ParentIndex, 0);
    EXPECT_TRUE(read.Bones[1].OffsetMatrix.NearlyEquals(original.Bones[1].OffsetMatrix, 0));
    ASSERT_EQ(read.Animations.size(), 2u);
    EXPECT_EQ(read.Animations[1].Name, "Idle");
    const AnimationTrack& track = read.Animations[0].Tracks[0];
    EXPECT_EQ(track.BoneIndex, 1u);
    ASSERT_EQ(track.Keys.size(), 3u);
    EXPECT_EQ(track.Keys[1].Time, 0.5f);
    EXPECT_EQ(track.Keys[1].Sets.to_ulong(), 1u);
    EXPECT_EQ(track.Keys[1].Position.y, 1.0f);
    EXPECT_EQ(track.Keys[2].Rotation.y, 0.6f);
    EXPECT_EQ(track.Keys[2].Rotation.w, 0.8f);
}

TEST(ModelFile, StaticModelOfLaterVersionReadsLikeVersionTwo)
{
    ModelFile original;
    original.Version = 7;
    original.Vertices = {MakeVertex(4), MakeVertex(5)};
    original.Indices = {0, 1, 1};
    const std::vector<std::uint8_t> bytes = WriteKbm(original);
    EXPECT_EQ(bytes.size(), 4u + 12u + 2 * 72u + 3 * 4u);
    ModelFile read;
    std::string error;
    ASSERT_TRUE(ReadKbm(bytes.data(), bytes.size(), read, error)) << error;
    EXPECT_EQ(read.Version, 7);
    EXPECT_EQ(read.Type, ModelType::Static);
    EXPECT_TRUE(SameVertex(read.Vertices[1], original.Vertices[1]));
    EXPECT_TRUE(read.Bones.empty());
}

TEST(ModelFile, VersionOneCarriesNoTypeAndNoSkeleton)
{
    const std::vector<std::uint8_t> bytes = Version1Bytes();
    ModelFile read;
    std::string error;
    ASSERT_TRUE(ReadKbm(bytes.data(), bytes.size(), read, error)) << error;
    EXPECT_EQ(read.Version, 1);
    EXPECT_EQ(read.Type, ModelType::Static);
    ASSERT_EQ(read.Vertices.size(), 3u);
    EXPECT_EQ(read.Vertices[1].position[0], 100.0f);
    EXPECT_EQ(read.Vertices[1].uv[1], 110.0f);
    // The skinning bytes a version 1 file lacks stay zero.
    EXPECT_EQ(read.Vertices[1].skin.boneIndices[0], 0u);
    EXPECT_EQ(read.Vertices[1].skin.weights[2], 0.0f);
    EXPECT_EQ(read.Indices, (std::vector<std::uint32_t>{2, 1, 0}));
    EXPECT_TRUE(read.Bones.empty());
    EXPECT_TRUE(read.Animations.empty());
}

TEST(ModelFile, VersionOneWritesFortyFourByteVertices)
{
    ModelFile file;
    file.Version = 1;
    file.Vertices = {MakeVertex(1)};
    const std::vector<std::uint8_t> bytes = WriteKbm(file);
    EXPECT_EQ(bytes.size(), 4u + 8u + 44u);
}

TEST(ModelFile, KeyWithEmptyMaskCarriesOnlyItsTime)
{
    ModelFile file = MakeSkinnedFile();
    file.Animations = {Animation{"Empty", {{0, "", {MakeKey(2.5f, 0)}}}}};
    const std::vector<std::uint8_t> bytes = WriteKbm(file);
    ModelFile read;
    std::string error;
    ASSERT_TRUE(ReadKbm(bytes.data(), bytes.size(), read, error)) << error;
    const KeyFrame& key = read.Animations[0].Tracks[0].Keys[0];
    EXPECT_EQ(key.Time, 2.5f);
    EXPECT_TRUE(key.Sets.none());
    EXPECT_EQ(key.Position.x, 0.0f);
    EXPECT_EQ(key.Scale.x, 1.0f);
    EXPECT_EQ(key.Scale.y, 1.0f);
    EXPECT_EQ(key.Rotation.w, 1.0f);
    // The key took exactly the mask and the time: nothing follows in the file.
    EXPECT_EQ(bytes.size() % 4, 0u);
}

TEST(ModelFile, KeyMaskBitsAboveTheThirdAreIgnored)
{
    ModelFile file = MakeSkinnedFile();
    file.Animations.clear();
    std::vector<std::uint8_t> bytes = WriteKbm(file);
    // Append one animation by hand whose key mask is 0xFFFFFFF9: position only, among the low three.
    bytes.resize(bytes.size() - 4);
    ByteWriter tail;
    tail.U32(1);
    tail.String("Odd");
    tail.U32(1);
    tail.U32(0);
    tail.U32(1);
    tail.U32(0xFFFFFFF9u);
    tail.F32(1.0f);
    for (float v : {4.0f, 5.0f, 6.0f})
        tail.F32(v);
    bytes.insert(bytes.end(), tail.bytes.begin(), tail.bytes.end());
    ModelFile read;
    std::string error;
    ASSERT_TRUE(ReadKbm(bytes.data(), bytes.size(), read, error)) << error;
    const KeyFrame& key = read.Animations[0].Tracks[0].Keys[0];
    EXPECT_EQ(key.Sets.to_ulong(), 1u);
    EXPECT_EQ(key.Position.z, 6.0f);
}

TEST(ModelFile, MatrixValuesBelowOneThousandthReadAsZero)
{
    float values[16] = {};
    values[0] = 0.0005f;
    values[1] = -0.0009f;
    values[2] = 0.001f;
    values[3] = -0.001f;
    values[4] = 0.5f;
    const std::vector<std::uint8_t> bytes = SkinnedWithGlobalTransform(values);
    ModelFile read;
    std::string error;
    ASSERT_TRUE(ReadKbm(bytes.data(), bytes.size(), read, error)) << error;
    EXPECT_EQ(read.GlobalTransform.m[0][0], 0.0f);
    EXPECT_EQ(read.GlobalTransform.m[0][1], 0.0f);
    EXPECT_EQ(read.GlobalTransform.m[0][2], 0.001f);
    EXPECT_EQ(read.GlobalTransform.m[0][3], -0.001f);
    EXPECT_EQ(read.GlobalTransform.m[1][0], 0.5f);
}

TEST(ModelFile, BoneMatrixValuesBelowOneThousandthReadAsZero)
{
    ModelFile file = MakeSkinnedFile();
    file.Bones[1].OffsetMatrix.m[2][1] = 0.0009f;
    file.Bones[1].OffsetMatrix.m[3][0] = -0.0005f;
    const std::vector<std::uint8_t> bytes = WriteKbm(file);
    ModelFile read;
    std::string error;
    ASSERT_TRUE(ReadKbm(bytes.data(), bytes.size(), read, error)) << error;
    EXPECT_EQ(read.Bones[1].OffsetMatrix.m[2][1], 0.0f);
    EXPECT_EQ(read.Bones[1].OffsetMatrix.m[3][0], 0.0f);
    EXPECT_EQ(read.Bones[1].OffsetMatrix.m[3][1], -1.0f);
}

TEST(ModelFile, WrongMagicLeavesNoGeometry)
{
    std::vector<std::uint8_t> bytes = WriteKbm(MakeSkinnedFile());
    bytes[0] = 'X';
    ModelFile read;
    read.Vertices.resize(5);
    std::string error;
    EXPECT_FALSE(ReadKbm(bytes.data(), bytes.size(), read, error));
    EXPECT_FALSE(error.empty());
    EXPECT_TRUE(read.Vertices.empty());
    EXPECT_TRUE(read.Indices.empty());
}

TEST(ModelFile, EveryCutOfAFileIsAFailedReadWithNoGeometry)
{
    const std::vector<std::uint8_t> bytes = WriteKbm(MakeSkinnedFile());
    for (std::size_t size = 0; size < bytes.size(); ++size)
    {
        const std::vector<std::uint8_t> cut(bytes.begin(), bytes.begin() + size);
        ModelFile read;
        std::string error;
        EXPECT_FALSE(ReadKbm(cut.data(), cut.size(), read, error)) << "cut at " << size;
        EXPECT_TRUE(read.Vertices.empty() && read.Bones.empty() && read.Animations.empty()) << size;
    }
}

TEST(ModelFile, BoneWhoseParentStandsLaterIsAFailedRead)
{
    ModelFile file = MakeSkinnedFile();
    file.Bones[0].ParentIndex = 1;
    const std::vector<std::uint8_t> bytes = WriteKbm(file);
    ModelFile read;
    std::string error;
    EXPECT_FALSE(ReadKbm(bytes.data(), bytes.size(), read, error));
    EXPECT_NE(error.find("Root"), std::string::npos);
}

TEST(ModelFile, IndexPastTheLastVertexIsAFailedRead)
{
    ModelFile file;
    file.Vertices = {MakeVertex(1)};
    file.Indices = {0, 1, 0};
    const std::vector<std::uint8_t> bytes = WriteKbm(file);
    ModelFile read;
    std::string error;
    EXPECT_FALSE(ReadKbm(bytes.data(), bytes.size(), read, error));
}

TEST(ModelFile, TrackOfAMissingBoneIsAFailedRead)
{
    ModelFile file = MakeSkinnedFile();
    file.Animations[0].Tracks[0].BoneIndex = 2;
    const std::vector<std::uint8_t> bytes = WriteKbm(file);
    ModelFile read;
    std::string error;
    EXPECT_FALSE(ReadKbm(bytes.data(), bytes.size(), read, error));
}

TEST(ModelFile, HugeVertexCountFailsWithoutAllocatingForIt)
{
    ByteWriter out;
    const std::uint8_t header[4] = {'K', 'B', 'M', 2};
    out.Write(header, 4);
    out.U32(0);
    out.U32(0xFFFFFFFFu);
    out.U32(0xFFFFFFFFu);
    ModelFile read;
    std::string error;
    const AllocationCount before;
    EXPECT_FALSE(ReadKbm(out.bytes.data(), out.bytes.size(), read, error));
    // The message may allocate; a vector of four billion vertices would throw or take gigabytes.
    EXPECT_LE(before.Since(), 4u);
}

TEST(ModelFile, HugeKeyCountFailsWithoutAllocatingForIt)
{
    ByteWriter out;
    out.U32(1);
    out.String("Run");
    out.U32(1);
    out.String("Hip");
    out.U32(0xFFFFFFFFu);
    std::vector<Animation> animations;
    std::string error;
    const AllocationCount before;
    EXPECT_FALSE(ReadKba(out.bytes.data(), out.bytes.size(), animations, error));
    EXPECT_LE(before.Since(), 8u);
    EXPECT_TRUE(animations.empty());
}

TEST(ModelFile, AnimationSetReadsBackWithBoneNames)
{
    std::vector<Animation> original(2);
    original[0].Name = "Swing";
    original[0].Tracks.push_back({0, "Hand", {MakeKey(0, 4), MakeKey(0.25f, 5)}});
    original[0].Tracks.push_back({0, "Elbow", {}});
    original[1].Name = "Rest";
    const std::vector<std::uint8_t> bytes = WriteKba(original);
    std::vector<Animation> read;
    std::string error;
    ASSERT_TRUE(ReadKba(bytes.data(), bytes.size(), read, error)) << error;
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[0].Name, "Swing");
    ASSERT_EQ(read[0].Tracks.size(), 2u);
    EXPECT_EQ(read[0].Tracks[0].BoneName, "Hand");
    EXPECT_EQ(read[0].Tracks[1].BoneName, "Elbow");
    ASSERT_EQ(read[0].Tracks[0].Keys.size(), 2u);
    EXPECT_EQ(read[0].Tracks[0].Keys[1].Time, 0.25f);
    EXPECT_EQ(read[0].Tracks[0].Keys[1].Sets.to_ulong(), 5u);
    EXPECT_EQ(read[0].Tracks[0].Keys[1].Position.y, 0.5f);
    EXPECT_EQ(read[0].Tracks[0].Keys[1].Scale.x, 1.0f);
    EXPECT_EQ(read[1].Name, "Rest");
}

TEST(ModelFile, CutAnimationSetIsAFailedRead)
{
    std::vector<Animation> original(1);
    original[0].Name = "Swing";
    original[0].Tracks.push_back({0, "Hand", {MakeKey(0, 7)}});
    const std::vector<std::uint8_t> bytes = WriteKba(original);
    for (std::size_t size = 0; size < bytes.size(); ++size)
    {
        std::vector<Animation> read;
        std::string error;
        EXPECT_FALSE(ReadKba(bytes.data(), size, read, error)) << size;
        EXPECT_TRUE(read.empty());
    }
}
