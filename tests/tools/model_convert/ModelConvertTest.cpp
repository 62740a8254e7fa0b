// The converter program end to end: models converted from the sources under
// tools/model_sources/ and from files written by the tests, read back with
// the engine's kbm and kba readers and compared with what the Open Asset
// Import Library reports of the same file.
#include "model_convert/AssimpImport.h"
#include "model_convert/AssimpMath.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"

#include <gtest/gtest.h>

#include <bitset>
#include <cmath>
#include <map>
#include <set>

namespace
{
using ToolTest::ReadModel;
using ToolTest::RunTool;
using ToolTest::Source;

constexpr const char* kConvert = VORN_MODEL_CONVERT_PATH;
const std::string kCrawler = VORN_MODEL_SOURCES_DIR "/embercrawler.gltf";

float Dot(const float a[3], const float b[3])
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

float Length(const float a[3])
{
    return std::sqrt(Dot(a, a));
}

// The triangle's geometric normal (not normalised) from its counter-clockwise corners.
void FaceNormal(const Graphics::ModelFile& model, std::size_t triangle, float out[3])
{
    const float* a = model.Vertices[model.Indices[triangle]].position;
    const float* b = model.Vertices[model.Indices[triangle + 1]].position;
    const float* c = model.Vertices[model.Indices[triangle + 2]].position;
    const float e1[3] = {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
    const float e2[3] = {c[0] - a[0], c[1] - a[1], c[2] - a[2]};
    out[0] = e1[1] * e2[2] - e1[2] * e2[1];
    out[1] = e1[2] * e2[0] - e1[0] * e2[2];
    out[2] = e1[0] * e2[1] - e1[1] * e2[0];
}

// Every triangle winds counter-clockwise seen from the side its vertex normals face.
void ExpectFacesWindWithTheirNormals(const Graphics::ModelFile& model)
{
    for (std::size_t t = 0; t + 2 < model.Indices.size(); t += 3)
    {
        float normal[3];
        FaceNormal(model, t, normal);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_GT(Dot(normal, model.Vertices[model.Indices[t + k]].normal), 0.0f) << "triangle " << t / 3;
    }
}

// Normals and tangents of unit length, tangents perpendicular to the normals.
void ExpectUnitFrames(const Graphics::ModelFile& model)
{
    for (const Graphics::Vertex& vertex : model.Vertices)
    {
        EXPECT_NEAR(Length(vertex.normal), 1.0f, 1e-4f);
        EXPECT_NEAR(Length(vertex.tangent), 1.0f, 1e-4f);
        EXPECT_NEAR(Dot(vertex.normal, vertex.tangent), 0.0f, 1e-4f);
    }
}

const Graphics::ModelFileBone* FindBone(const Graphics::ModelFile& model, const std::string& name)
{
    for (const Graphics::ModelFileBone& bone : model.Bones)
        if (bone.Name == name)
            return &bone;
    return nullptr;
}

class ModelConvertTest : public ::testing::Test
{
protected:
    // Converts the ember crawler into the temporary folder and reads it back.
    Graphics::ModelFile ConvertCrawler()
    {
        const ToolTest::ToolRun run = RunTool(kConvert, Source("embercrawler.gltf") + " \"" + m_Folder.Path() + "crawler.kbm\"");
        EXPECT_EQ(run.ExitCode, 0) << run.Output;
        Graphics::ModelFile model;
        ReadModel(m_Folder.Path() + "crawler.kbm", model);
        return model;
    }

    TempFolder m_Folder;
};
}

TEST_F(ModelConvertTest, SkinnedGltfConvertsToTheVertexCountTheImporterReports)
{
    Assimp::Importer importer;
    std::string error;
    const aiScene* scene = ModelTools::ImportScene(importer, kCrawler, error);
    ASSERT_NE(scene, nullptr) << error;
    std::size_t vertices = 0, indices = 0;
    for (unsigned m = 0; m < scene->mNumMeshes; ++m)
    {
        vertices += scene->mMeshes[m]->mNumVertices;
        indices += 3 * scene->mMeshes[m]->mNumFaces;
    }

    const Graphics::ModelFile model = ConvertCrawler();
    EXPECT_EQ(model.Type, Graphics::ModelType::Skinned);
    EXPECT_EQ(model.Vertices.size(), vertices);
    EXPECT_EQ(model.Indices.size(), indices);
    // Three boxes of 24 corners: nothing of the source is joined away or lost.
    EXPECT_EQ(model.Vertices.size(), 72u);
    EXPECT_EQ(model.Indices.size(), 108u);
}

TEST_F(ModelConvertTest, SkinnedGltfKeepsBoneParentsAndOffsetMatrices)
{
    Assimp::Importer importer;
    std::string error;
    const aiScene* scene = ModelTools::ImportScene(importer, kCrawler, error);
    ASSERT_NE(scene, nullptr) << error;
    const Graphics::ModelFile model = ConvertCrawler();

    ASSERT_EQ(model.Bones.size(), 3u);
    EXPECT_EQ(model.Bones[0].Name, "Body");
    EXPECT_EQ(model.Bones[0].ParentIndex, -1);
    for (std::size_t i = 1; i < model.Bones.size(); ++i)
        EXPECT_EQ(model.Bones[model.Bones[i].ParentIndex].Name, "Body") << model.Bones[i].Name;
    EXPECT_TRUE(model.GlobalTransform.NearlyEquals(Math::Matrix4::Identity()));

    const aiMesh& mesh = *scene->mMeshes[0];
    ASSERT_EQ(mesh.mNumBones, 3u);
    for (unsigned b = 0; b < mesh.mNumBones; ++b)
    {
        const aiBone& source = *mesh.mBones[b];
        const Graphics::ModelFileBone* bone = FindBone(model, source.mName.C_Str());
        ASSERT_NE(bone, nullptr) << source.mName.C_Str();
        EXPECT_TRUE(bone->OffsetMatrix.NearlyEquals(ModelTools::ToEngine(source.mOffsetMatrix), 1e-5f))
            << source.mName.C_Str();
        // The parent is the node's parent in the scene.
        const aiNode* node = scene->mRootNode->FindNode(source.mName);
        ASSERT_NE(node, nullptr);
        if (bone->ParentIndex >= 0)
        {
            EXPECT_EQ(model.Bones[bone->ParentIndex].Name, node->mParent->mName.C_Str());
        }
    }
    // The offset moves model space into the bone's space: the head's rest position is its origin.
    const Graphics::ModelFileBone* head = FindBone(model, "Head");
    ASSERT_NE(head, nullptr);
    EXPECT_NEAR(head->OffsetMatrix.m[3][1], -0.1f, 1e-5f);
    EXPECT_NEAR(head->OffsetMatrix.m[3][2], -0.2f, 1e-5f);
}

TEST_F(ModelConvertTest, SkinnedGltfKeepsBothClipsWithKeysAtTheSameTimes)
{
    Assimp::Importer importer;
    std::string error;
    const aiScene* scene = ModelTools::ImportScene(importer, kCrawler, error);
    ASSERT_NE(scene, nullptr) << error;
    const Graphics::ModelFile model = ConvertCrawler();

    ASSERT_EQ(scene->mNumAnimations, 2u);
    ASSERT_EQ(model.Animations.size(), 2u);
    for (unsigned a = 0; a < scene->mNumAnimations; ++a)
    {
        const aiAnimation& source = *scene->mAnimations[a];
        const Graphics::Animation& animation = model.Animations[a];
        EXPECT_EQ(animation.Name, source.mName.C_Str());
        ASSERT_EQ(animation.Tracks.size(), source.mNumChannels);
        const double tps = source.mTicksPerSecond > 0 ? source.mTicksPerSecond : 25.0;
        for (unsigned c = 0; c < source.mNumChannels; ++c)
        {
            const aiNodeAnim& channel = *source.mChannels[c];
            const Graphics::AnimationTrack& track = animation.Tracks[c];
            EXPECT_EQ(model.Bones.at(track.BoneIndex).Name, channel.mNodeName.C_Str());
            // Every key time of the channel, with the parts keyed at it.
            std::map<double, std::bitset<3>> expected;
            for (unsigned k = 0; k < channel.mNumPositionKeys; ++k)
                expected[channel.mPositionKeys[k].mTime / tps].set(Graphics::kKeyPosition);
            for (unsigned k = 0; k < channel.mNumScalingKeys; ++k)
                expected[channel.mScalingKeys[k].mTime / tps].set(Graphics::kKeyScale);
            for (unsigned k = 0; k < channel.mNumRotationKeys; ++k)
                expected[channel.mRotationKeys[k].mTime / tps].set(Graphics::kKeyRotation);
            ASSERT_EQ(track.Keys.size(), expected.size()) << animation.Name << " " << channel.mNodeName.C_Str();
            std::size_t k = 0;
            for (const auto& [time, sets] : expected)
            {
                EXPECT_NEAR(track.Keys[k].Time, time, 1e-5) << animation.Name << " key " << k;
                EXPECT_EQ(track.Keys[k].Sets, sets) << animation.Name << " key " << k;
                ++k;
            }
        }
    }

    // The source's own times: the crawl sways the head at every quarter second.
    const Graphics::Animation& crawl = model.Animations[0];
    EXPECT_EQ(crawl.Name, "Crawl");
    const Graphics::ModelFileBone& headBone = *FindBone(model, "Head");
    bool headTrack = false;
    for (const Graphics::AnimationTrack& track : crawl.Tracks)
        if (&model.Bones[track.BoneIndex] == &headBone)
        {
            headTrack = true;
            std::vector<float> rotationTimes;
            for (const Graphics::KeyFrame& key : track.Keys)
                if (key.Sets[Graphics::kKeyRotation])
                    rotationTimes.push_back(key.Time);
            ASSERT_EQ(rotationTimes.size(), 5u);
            for (std::size_t i = 0; i < 5; ++i)
                EXPECT_NEAR(rotationTimes[i], 0.25f * static_cast<float>(i), 1e-5f);
            // The key at 0.25 s turns the head 15 degrees about +Y.
            for (const Graphics::KeyFrame& key : track.Keys)
                if (std::fabs(key.Time - 0.25f) < 1e-5f)
                {
                    EXPECT_NEAR(key.Rotation.y, std::sin(7.5f * 3.14159265f / 180.0f), 1e-5f);
                    EXPECT_NEAR(key.Rotation.w, std::cos(7.5f * 3.14159265f / 180.0f), 1e-5f);
                }
        }
    EXPECT_TRUE(headTrack);
}

TEST_F(ModelConvertTest, SkinnedVerticesCarryFourBonesWhoseWeightsAddUpToOne)
{
    const Graphics::ModelFile model = ConvertCrawler();
    ASSERT_FALSE(model.Vertices.empty());
    std::size_t shared = 0;
    for (const Graphics::Vertex& vertex : model.Vertices)
    {
        const float fourth = 1.0f - vertex.skin.weights[0] - vertex.skin.weights[1] - vertex.skin.weights[2];
        EXPECT_GE(fourth, -1e-5f);
        EXPECT_GT(vertex.skin.weights[0], 0.0f);
        for (std::uint32_t index : vertex.skin.boneIndices)
            EXPECT_LT(index, model.Bones.size());
        if (std::fabs(vertex.skin.weights[0] - 0.75f) < 1e-5f)
        {
            // A face that leans on its neighbour: its own bone first, then the body at a quarter.
            EXPECT_NEAR(vertex.skin.weights[1], 0.25f, 1e-5f);
            EXPECT_EQ(model.Bones[vertex.skin.boneIndices[1]].Name, "Body");
            ++shared;
        }
        else
        {
            EXPECT_NEAR(vertex.skin.weights[0], 1.0f, 1e-5f);
        }
    }
    // The tail's front face and the head's back face.
    EXPECT_EQ(shared, 8u);
}

TEST_F(ModelConvertTest, SkinnedGltfWithoutTangentsGetsThem)
{
    const Graphics::ModelFile model = ConvertCrawler();
    ExpectUnitFrames(model);
    ExpectFacesWindWithTheirNormals(model);
}

TEST_F(ModelConvertTest, AnimationsOnlyWritesAKbaWhoseTracksNameTheirBones)
{
    const std::string out = m_Folder.Path() + "crawler.kba";
    const ToolTest::ToolRun run = RunTool(kConvert, "--animations-only " + Source("embercrawler.gltf") + " \"" + out + "\"");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    const std::vector<std::uint8_t> bytes = ToolTest::ReadBytes(out);
    std::vector<Graphics::Animation> animations;
    std::string error;
    ASSERT_TRUE(Graphics::ReadKba(bytes.data(), bytes.size(), animations, error)) << error;
    ASSERT_EQ(animations.size(), 2u);
    EXPECT_EQ(animations[1].Name, "Lunge");
    std::set<std::string> names;
    for (const Graphics::AnimationTrack& track : animations[1].Tracks)
        names.insert(track.BoneName);
    EXPECT_EQ(names, (std::set<std::string>{"Body", "Head"}));
}

TEST_F(ModelConvertTest, ObjCubeConvertsTo24VerticesAnd36Indices)
{
    const ToolTest::ToolRun run = RunTool(kConvert, Source("cube.obj") + " \"" + m_Folder.Path() + "cube.kbm\"");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    Graphics::ModelFile model;
    ASSERT_TRUE(ReadModel(m_Folder.Path() + "cube.kbm", model));
    EXPECT_EQ(model.Type, Graphics::ModelType::Static);
    EXPECT_EQ(model.Vertices.size(), 24u);
    EXPECT_EQ(model.Indices.size(), 36u);
    ExpectFacesWindWithTheirNormals(model);
    // The OBJ has no tangents: they are made, along increasing u.
    ExpectUnitFrames(model);
    for (const Graphics::Vertex& vertex : model.Vertices)
        if (vertex.normal[2] > 0.5f)
        {
            EXPECT_NEAR(vertex.tangent[0], 1.0f, 1e-4f);
        }
    // Texture coordinates start at the top left: the front face's top edge has v = 0.
    for (const Graphics::Vertex& vertex : model.Vertices)
        if (vertex.normal[2] > 0.5f)
        {
            EXPECT_NEAR(vertex.uv[1], vertex.position[1] > 0.0f ? 0.0f : 1.0f, 1e-5f);
        }
}

TEST_F(ModelConvertTest, ObjWithoutNormalsOrTextureCoordinatesGetsNormalsAndTangents)
{
    const std::string source = m_Folder.Write("triangle.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    const ToolTest::ToolRun run = RunTool(kConvert, "\"" + source + "\" \"" + m_Folder.Path() + "triangle.kbm\"");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    Graphics::ModelFile model;
    ASSERT_TRUE(ReadModel(m_Folder.Path() + "triangle.kbm", model));
    ASSERT_EQ(model.Vertices.size(), 3u);
    for (const Graphics::Vertex& vertex : model.Vertices)
        EXPECT_NEAR(vertex.normal[2], 1.0f, 1e-5f);
    ExpectUnitFrames(model);
}

namespace
{
std::string Base64(const std::uint8_t* bytes, std::size_t size)
{
    static const char* digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < size; i += 3)
    {
        const std::uint32_t group = (std::uint32_t(bytes[i]) << 16) | (i + 1 < size ? bytes[i + 1] << 8 : 0) |
                                    (i + 2 < size ? bytes[i + 2] : 0);
        text += digits[(group >> 18) & 63];
        text += digits[(group >> 12) & 63];
        text += i + 1 < size ? digits[(group >> 6) & 63] : '=';
        text += i + 2 < size ? digits[group & 63] : '=';
    }
    return text;
}

// A glTF with one triangle (counter-clockwise facing +Z) under a node of the given transform text.
std::string TriangleGltf(const std::string& nodeTransform)
{
    const float positions[9] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    const std::string data = Base64(reinterpret_cast<const std::uint8_t*>(positions), sizeof positions);
    return R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
"nodes":[{"name":"Placed","mesh":0,)" + nodeTransform + R"(}],
"meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],
"accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]}],
"bufferViews":[{"buffer":0,"byteLength":36}],
"buffers":[{"byteLength":36,"uri":"data:application/octet-stream;base64,)" + data + R"("}]})";
}
}

TEST_F(ModelConvertTest, StaticMeshesAreMovedByTheirNodes)
{
    const std::string source = m_Folder.Write("placed.gltf", TriangleGltf(R"("translation":[0,0,5])"));
    const ToolTest::ToolRun run = RunTool(kConvert, "\"" + source + "\" \"" + m_Folder.Path() + "placed.kbm\"");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    Graphics::ModelFile model;
    ASSERT_TRUE(ReadModel(m_Folder.Path() + "placed.kbm", model));
    ASSERT_EQ(model.Vertices.size(), 3u);
    for (const Graphics::Vertex& vertex : model.Vertices)
        EXPECT_NEAR(vertex.position[2], 5.0f, 1e-5f);
}

TEST_F(ModelConvertTest, AMirroringNodeKeepsFacesCounterClockwiseOutward)
{
    const std::string source = m_Folder.Write("mirrored.gltf", TriangleGltf(R"("scale":[-1,1,1])"));
    const ToolTest::ToolRun run = RunTool(kConvert, "\"" + source + "\" \"" + m_Folder.Path() + "mirrored.kbm\"");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    Graphics::ModelFile model;
    ASSERT_TRUE(ReadModel(m_Folder.Path() + "mirrored.kbm", model));
    ASSERT_EQ(model.Indices.size(), 3u);
    ExpectFacesWindWithTheirNormals(model);
    float normal[3];
    FaceNormal(model, 0, normal);
    EXPECT_GT(normal[2], 0.0f);
}

TEST_F(ModelConvertTest, GarbageBytesGiveAMessageNamingTheFileAndANonZeroExit)
{
    std::string garbage;
    for (int i = 0; i < 4096; ++i)
        garbage += static_cast<char>((i * 7919 + 13) % 251);
    const std::string source = m_Folder.Write("garbage.glb", garbage);
    const ToolTest::ToolRun run = RunTool(kConvert, "\"" + source + "\" \"" + m_Folder.Path() + "garbage.kbm\"");
    EXPECT_EQ(run.ExitCode, 1) << run.Output;
    EXPECT_NE(run.Output.find("cannot convert"), std::string::npos) << run.Output;
    EXPECT_NE(run.Output.find("garbage.glb"), std::string::npos) << run.Output;
    EXPECT_FALSE(std::filesystem::exists(m_Folder.Path() + "garbage.kbm"));
}

TEST_F(ModelConvertTest, GarbageWithAKnownExtensionGivesAMessageAndANonZeroExit)
{
    const std::string source = m_Folder.Write("garbage.obj", "this is no model\n\x01\x02\x03 at all\n");
    const ToolTest::ToolRun run = RunTool(kConvert, "\"" + source + "\" \"" + m_Folder.Path() + "garbage.kbm\"");
    EXPECT_EQ(run.ExitCode, 1) << run.Output;
    EXPECT_NE(run.Output.find("garbage.obj"), std::string::npos) << run.Output;
}

TEST_F(ModelConvertTest, MissingFileGivesAMessageNamingItAndANonZeroExit)
{
    const ToolTest::ToolRun run = RunTool(kConvert, "\"" + m_Folder.Path() + "nothing.gltf\" \"" + m_Folder.Path() + "out.kbm\"");
    EXPECT_EQ(run.ExitCode, 1) << run.Output;
    EXPECT_NE(run.Output.find("nothing.gltf"), std::string::npos) << run.Output;
}

TEST_F(ModelConvertTest, UnknownOptionPrintsTheUsage)
{
    const ToolTest::ToolRun run = RunTool(kConvert, "--sideways " + Source("cube.obj") + " out.kbm");
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_NE(run.Output.find("unknown option \"--sideways\""), std::string::npos) << run.Output;
    EXPECT_NE(run.Output.find("usage: vorn_model_convert"), std::string::npos) << run.Output;
}
