#include "Graphics_Engine/Model/ModelManager.h"

#include "Graphics_Engine/Model/ByteStream.h"
#include "Graphics_Engine/Model/ModelFile.h"
#include "support/RecordingDevice.h"

#include "support/ReportCapture.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using namespace Graphics;

namespace
{
Vertex At(float x, float y, float z)
{
    Vertex vertex;
    vertex.position[0] = x;
    vertex.position[1] = y;
    vertex.position[2] = z;
    vertex.normal[2] = 1.0f;
    return vertex;
}

std::string AsText(const std::vector<std::uint8_t>& bytes)
{
    return std::string(bytes.begin(), bytes.end());
}

// A static kbm of `triangles` triangles in a row.
std::string StaticKbm(int triangles, std::uint8_t version = 2)
{
    ModelFile file;
    file.Version = version;
    for (int t = 0; t < triangles; ++t)
    {
        const auto base = static_cast<std::uint32_t>(file.Vertices.size());
        file.Vertices.insert(file.Vertices.end(), {At(float(t), 0, 0), At(t + 1.0f, 0, 0), At(float(t), 1, 0)});
        file.Indices.insert(file.Indices.end(), {base, base + 1, base + 2});
    }
    return AsText(WriteKbm(file));
}

std::string SkinnedKbm()
{
    ModelFile file;
    file.Type = ModelType::Skinned;
    file.Vertices = {At(0, 0, 0), At(1, 0, 0), At(0, 1, 0)};
    file.Indices = {0, 1, 2};
    file.Bones = {{"Hips", -1, Math::Matrix4()}, {"Head", 0, Math::Matrix4::Translation(0, -1, 0)}};
    KeyFrame key;
    key.Sets = std::bitset<3>(1);
    file.Animations = {Animation{"Nod", {{1, "", {key}}}}};
    return AsText(WriteKbm(file));
}

std::string WalkKba()
{
    KeyFrame key;
    key.Time = 0.5f;
    key.Sets = std::bitset<3>(4);
    return AsText(WriteKba({Animation{"Walk", {{0, "Hips", {key}}}}, Animation{"Run", {}}}));
}

class ModelManagerTest : public testing::Test
{
protected:
    RecordingDevice m_Device;
    TempFolder m_Data;
};
}

TEST_F(ModelManagerTest, TheCubeIsUnderDefaultAndBoxAsOneModelOf24VerticesAnd36Indices)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    Model* cube = models.GetModel("default");
    ASSERT_NE(cube, nullptr);
    EXPECT_EQ(models.GetModel("box"), cube);
    EXPECT_EQ(models.GetDefaultModel(), cube);
    EXPECT_EQ(cube->Vertices.size(), 24u);
    EXPECT_EQ(cube->Indices.size(), 36u);
    EXPECT_TRUE(cube->VertexBuffer);
    EXPECT_TRUE(cube->IndexBuffer);
}

TEST_F(ModelManagerTest, BuiltInIdsCountFromZeroInTheirOrder)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    EXPECT_EQ(models.GetModel("default")->Id, 0u);
    EXPECT_EQ(models.GetModel("FullScreenQuad")->Id, 1u);
    EXPECT_EQ(models.GetModel("lightsphere")->Id, 2u);
    EXPECT_EQ(models.GetModel("sphere"), models.GetModel("lightsphere"));
    EXPECT_EQ(models.GetModel("skybox")->Id, 3u);
    EXPECT_EQ(models.ModelCount(), 4u);
    EXPECT_EQ(models.GetModel("sphere")->Vertices.size(), 145u);
    EXPECT_EQ(models.GetModel("FullScreenQuad")->Indices.size(), 6u);
}

TEST_F(ModelManagerTest, ANameInAnyLetterCaseFindsItsModel)
{
    m_Data.Write("Models/Crate.KBM", StaticKbm(2));
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    EXPECT_EQ(models.GetModel("BOX"), models.GetModel("default"));
    EXPECT_EQ(models.GetModel("fullscreenquad"), models.GetModel("FullScreenQuad"));
    EXPECT_EQ(models.GetModel("LightSphere"), models.GetModel("lightsphere"));
    Model* crate = models.GetModel("crate");
    EXPECT_NE(crate, models.GetDefaultModel());
    EXPECT_EQ(models.GetModel("CRATE"), crate);
    EXPECT_EQ(models.GetModel("cRaTe"), crate);
    EXPECT_EQ(crate->Vertices.size(), 6u);
}

TEST_F(ModelManagerTest, GetModelOfAnEmptyNameGivesTheDefaultModel)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    EXPECT_EQ(models.GetModel(""), models.GetDefaultModel());
}

TEST_F(ModelManagerTest, AnUnknownNameIsEnteredWithTheDefaultModel)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    EXPECT_FALSE(models.HasModel("Barrel"));
    EXPECT_EQ(models.GetModel("Barrel"), models.GetDefaultModel());
    EXPECT_TRUE(models.HasModel("barrel"));
    EXPECT_EQ(models.ModelCount(), 4u);
}

TEST_F(ModelManagerTest, AVersion1FileCarriesNoTypeAndNoSkeleton)
{
    m_Data.Write("Models/old.kbm", StaticKbm(1, 1));
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    const Model* old = models.GetModel("old");
    ASSERT_NE(old, models.GetDefaultModel());
    ASSERT_EQ(old->Vertices.size(), 3u);
    EXPECT_EQ(old->Vertices[1].position[0], 1.0f);
    EXPECT_EQ(old->Vertices[1].skin.weights[0], 0.0f);
    EXPECT_TRUE(old->Bones.empty());
    EXPECT_TRUE(old->Animations.empty());
    EXPECT_TRUE(old->GlobalTransform.NearlyEquals(Math::Matrix4(), 0.0f));
    EXPECT_TRUE(old->VertexBuffer);
}

TEST_F(ModelManagerTest, ASkinnedFileGivesItsBonesAndAnimations)
{
    m_Data.Write("Models/Walker.kbm", SkinnedKbm());
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    const Model* walker = models.GetModel("walker");
    ASSERT_EQ(walker->Bones.size(), 2u);
    EXPECT_EQ(walker->Bones[1].Parent, &walker->Bones[0]);
    EXPECT_EQ(walker->Bones[0].Children.size(), 1u);
    EXPECT_EQ(walker->Bones[1].Name, "Head");
    ASSERT_EQ(walker->Animations.size(), 1u);
    EXPECT_EQ(walker->Animations[0].Name, "Nod");
}

TEST_F(ModelManagerTest, AKbmThatFailsToReadIsStoredWithNoGeometryUnderItsName)
{
    m_Data.Write("Models/Broken.kbm", "KBX\x02 not a model");
    m_Data.Write("Models/Short.kbm", StaticKbm(3).substr(0, 40));
    ReportCapture capture;
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    const int builtInBuffers = 8;
    for (const char* name : {"broken", "short"})
    {
        const Model* model = models.GetModel(name);
        EXPECT_NE(model, models.GetDefaultModel()) << name;
        EXPECT_TRUE(model->Vertices.empty()) << name;
        EXPECT_TRUE(model->Indices.empty()) << name;
        EXPECT_FALSE(model->VertexBuffer) << name;
        EXPECT_FALSE(model->IndexBuffer) << name;
    }
    EXPECT_EQ(m_Device.buffersMade, builtInBuffers);
    const std::string text = capture.Text();
    EXPECT_NE(text.find("[WARNING]"), std::string::npos) << text;
    EXPECT_NE(text.find("Broken.kbm\" could not be read: the file does not start with \"KBM\""), std::string::npos)
        << text;
    EXPECT_NE(text.find("Short.kbm\" could not be read"), std::string::npos) << text;
}

TEST_F(ModelManagerTest, AKbaSetIsFoundByItsStemInAnyLetterCase)
{
    m_Data.Write("Models/Walk.KBA", WalkKba());
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    const std::vector<Animation>* set = models.GetAnimationSet("walk");
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(models.GetAnimationSet("WALK"), set);
    ASSERT_EQ(set->size(), 2u);
    EXPECT_EQ((*set)[0].Name, "Walk");
    ASSERT_EQ((*set)[0].Tracks.size(), 1u);
    EXPECT_EQ((*set)[0].Tracks[0].BoneName, "Hips");
    EXPECT_FLOAT_EQ((*set)[0].Tracks[0].Keys[0].Time, 0.5f);
    EXPECT_EQ(models.GetAnimationSet("run"), nullptr);
    EXPECT_FALSE(models.HasModel("walk"));
}

TEST_F(ModelManagerTest, ABrokenKbaIsLoggedAndLeavesNoSet)
{
    m_Data.Write("Models/Limp.kba", "\x05");
    ReportCapture capture;
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    EXPECT_EQ(models.GetAnimationSet("limp"), nullptr);
    EXPECT_TRUE(capture.Holds("Limp.kba\" could not be read"));
}

TEST_F(ModelManagerTest, InitializeReadsTheFolderInNameOrderAfterTheBuiltIns)
{
    m_Data.Write("Models/a_Rock.kbm", StaticKbm(1));
    m_Data.Write("Models/b_Tree.Kbm", StaticKbm(2));
    m_Data.Write("Models/c_Notes.txt", "not a model");
    m_Data.Write("Models/d_Sets.kba", WalkKba());
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    EXPECT_EQ(models.GetModel("A_ROCK")->Id, 4u);
    EXPECT_EQ(models.GetModel("b_tree")->Id, 5u);
    EXPECT_EQ(models.ModelCount(), 6u);
    EXPECT_FALSE(models.HasModel("c_notes"));
    EXPECT_NE(models.GetAnimationSet("D_Sets"), nullptr);
}

TEST_F(ModelManagerTest, ADataFolderWithoutModelsGivesTheBuiltInsAndNoReport)
{
    ReportCapture capture;
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path() + "nowhere");
    EXPECT_EQ(models.ModelCount(), 4u);
    EXPECT_EQ(capture.Text(), "");
}

TEST_F(ModelManagerTest, RemoveModelOfAnUnknownNameReportsTheMapKeyAndGoesOn)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    ReportCapture capture;
    models.RemoveModel("NoSuchModel");
    EXPECT_TRUE(capture.Holds("invalid map<K, T> key"));
    EXPECT_EQ(models.ModelCount(), 4u);
    EXPECT_EQ(models.GetModel("box"), models.GetDefaultModel());
}

TEST_F(ModelManagerTest, RemoveModelDestroysTheModelAndItsBuffers)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    models.CreateModel("Wall", {At(0, 0, 0), At(1, 0, 0), At(0, 1, 0)}, {0, 1, 2});
    EXPECT_EQ(m_Device.buffers.size(), 10u);
    models.RemoveModel("WALL");
    EXPECT_EQ(m_Device.buffers.size(), 8u);
    EXPECT_EQ(models.ModelCount(), 4u);
    EXPECT_FALSE(models.HasModel("wall"));
}

TEST_F(ModelManagerTest, RemovingOneNameOfASharedModelKeepsItForTheOthers)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    Model* sphere = models.GetModel("sphere");
    models.RemoveModel("sphere");
    EXPECT_FALSE(models.HasModel("sphere"));
    EXPECT_EQ(models.GetModel("lightsphere"), sphere);
    EXPECT_EQ(sphere->Vertices.size(), 145u);
    models.RemoveModel("box");
    EXPECT_EQ(models.GetModel("default"), models.GetDefaultModel());
    EXPECT_EQ(models.ModelCount(), 4u);
}

TEST_F(ModelManagerTest, CreateModelCopiesTheArraysMakesBuffersAndEntersIt)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    std::vector<Vertex> vertices = {At(0, 0, 0), At(1, 0, 0), At(0, 1, 0)};
    std::vector<std::uint32_t> indices = {0, 1, 2};
    Model* made = models.CreateModel("Room_3_Floor", vertices, indices);
    vertices[0].position[0] = 9.0f;
    indices.clear();
    EXPECT_EQ(models.GetModel("room_3_floor"), made);
    EXPECT_EQ(made->Id, 4u);
    EXPECT_EQ(made->Vertices[0].position[0], 0.0f);
    EXPECT_EQ(made->Indices.size(), 3u);
    EXPECT_TRUE(made->VertexBuffer);
    EXPECT_TRUE(made->IndexBuffer);
}

TEST_F(ModelManagerTest, ReloadModelRereadsTheFileIntoTheSameModel)
{
    const std::string path = m_Data.Write("Models/Crate.kbm", StaticKbm(1));
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    Model* crate = models.GetModel("crate");
    const unsigned id = crate->Id;
    const BufferHandle oldBuffer = crate->VertexBuffer;
    m_Data.Write("Models/Crate.kbm", StaticKbm(4));
    EXPECT_EQ(models.ReloadModel(path), crate);
    EXPECT_EQ(models.GetModel("CRATE"), crate);
    EXPECT_EQ(crate->Id, id);
    EXPECT_EQ(crate->Vertices.size(), 12u);
    EXPECT_TRUE(crate->VertexBuffer);
    EXPECT_EQ(m_Device.buffers.count(oldBuffer.id), 0u);
    EXPECT_EQ(m_Device.ReadBuffer(crate->VertexBuffer).size(), 12u * 72u);
}

TEST_F(ModelManagerTest, ReloadModelOfANameThatResolvedToTheDefaultEntersANewModel)
{
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    EXPECT_EQ(models.GetModel("Barrel"), models.GetDefaultModel());
    const std::string path = m_Data.Write("Models/Barrel.kbm", StaticKbm(2));
    Model* barrel = models.ReloadModel(path);
    EXPECT_NE(barrel, models.GetDefaultModel());
    EXPECT_EQ(models.GetModel("barrel"), barrel);
    EXPECT_EQ(barrel->Vertices.size(), 6u);
    EXPECT_EQ(models.GetDefaultModel()->Vertices.size(), 24u);
}

TEST_F(ModelManagerTest, AReloadThatFailsKeepsTheOldGeometryAndWarns)
{
    const std::string path = m_Data.Write("Models/Crate.kbm", StaticKbm(1));
    ModelManager models(m_Device);
    models.Initialize(m_Data.Path());
    Model* crate = models.GetModel("crate");
    m_Data.Write("Models/Crate.kbm", "KB");
    ReportCapture capture;
    EXPECT_EQ(models.ReloadModel(path), crate);
    EXPECT_EQ(crate->Vertices.size(), 3u);
    EXPECT_TRUE(crate->VertexBuffer);
    EXPECT_TRUE(capture.Holds("Crate.kbm\" could not be read"));
}

TEST_F(ModelManagerTest, GetModelBeforeInitializeGivesNullAndEntersNothing)
{
    ModelManager models(m_Device);
    EXPECT_EQ(models.GetModel("crate"), nullptr);
    EXPECT_FALSE(models.HasModel("crate"));
    models.Initialize(m_Data.Path());
    EXPECT_EQ(models.GetModel("crate"), models.GetDefaultModel());
}
