// Mesh without a GL context: its model, its eleven instance rows, picking, and
// how data and scripts reach it.
#include "Graphics_Engine/Components/Mesh.h"

#include "Components/Transform/Transform.h"
#include "Graphics_Engine/WorldMatrix.h"
#include "Graphics_Engine/Components/MeshResources.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "support/RecordingDevice.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "utilities/Meta/Data.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/luabridge/LuaTestState.h"

#include "engine/TestComponents.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <memory>

using namespace Graphics;

namespace
{
class MeshTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Models.Initialize(m_Folder.Path());
        SetMeshModels(&m_Models);
    }
    void TearDown() override { SetMeshModels(nullptr); }

    // Writes the mesh's instance for `world` and gives the rows it closed.
    std::vector<InstanceRow> RowsOf(Mesh& mesh, const Math::Matrix4& world)
    {
        InstanceBuffer buffer(m_Device);
        mesh.WriteInstance(world, nullptr, buffer);
        EXPECT_EQ(buffer.PendingInstances, 1u);
        return buffer.Pending;
    }

    TempFolder m_Folder;
    RecordingDevice m_Device;
    ModelManager m_Models{m_Device};
};

void ExpectRow(const InstanceRow& row, float x, float y, float z, float w)
{
    EXPECT_NEAR(row[0], x, 1e-5f);
    EXPECT_NEAR(row[1], y, 1e-5f);
    EXPECT_NEAR(row[2], z, 1e-5f);
    EXPECT_NEAR(row[3], w, 1e-5f);
}

// The quaternion of `degrees` about the y axis.
Math::Quaternion AboutY(float degrees)
{
    const float half = degrees * 3.14159265f / 360.0f;
    return Math::Quaternion(0.0f, std::sin(half), 0.0f, std::cos(half));
}
}

TEST_F(MeshTest, AnUnknownModelNameGivesTheCubeAndItsThirtySixElements)
{
    Mesh mesh;
    mesh.SetModel("NoSuchModel");
    EXPECT_EQ(mesh.GetModelName(), "NoSuchModel");
    ASSERT_NE(mesh.GetModel(), nullptr);
    EXPECT_EQ(mesh.GetModel(), m_Models.GetDefaultModel());
    EXPECT_EQ(mesh.GetModelId(), 0u);
    EXPECT_EQ(mesh.m_ElementCount, 36u);
    EXPECT_EQ(mesh.m_DrawMode, 0u);
    EXPECT_EQ(mesh.m_Topology, 4u);
}

TEST_F(MeshTest, AKnownModelGivesItsIdAndIndexCount)
{
    Mesh mesh;
    mesh.SetModel("Sphere");
    EXPECT_EQ(mesh.GetModelId(), m_Models.GetModel("sphere")->Id);
    EXPECT_EQ(mesh.m_ElementCount, 780u);
    EXPECT_EQ(mesh.GetVertices().size(), 145u);
    EXPECT_EQ(mesh.GetIndices().size(), 780u);
}

TEST_F(MeshTest, WithoutAModelManagerAMeshHasNoModelAndDrawsNothing)
{
    SetMeshModels(nullptr);
    Mesh mesh;
    mesh.SetModel("box");
    EXPECT_EQ(mesh.GetModel(), nullptr);
    EXPECT_EQ(mesh.GetModelId(), 0u);
    EXPECT_EQ(mesh.m_ElementCount, 0u);
    EXPECT_TRUE(mesh.GetVertices().empty());
    mesh.Bind(m_Device);
    EXPECT_TRUE(m_Device.vertexBinds.empty());
    float distance = 0.0f;
    EXPECT_FALSE(mesh.Pick(distance, false, Math::Point3D(), Math::Vector3D(0, 0, -1)));
}

TEST_F(MeshTest, BindSetsTheTopologyAndTheModelsBuffers)
{
    Mesh mesh;
    mesh.SetModel("box");
    mesh.Bind(m_Device);
    ASSERT_EQ(m_Device.topologies.size(), 1u);
    EXPECT_EQ(m_Device.topologies[0], PrimitiveTopology::TriangleList);
    ASSERT_EQ(m_Device.vertexBinds.size(), 1u);
    EXPECT_EQ(m_Device.vertexBinds[0].buffer, m_Models.GetDefaultModel()->VertexBuffer);
    ASSERT_EQ(m_Device.indexBinds.size(), 1u);
    EXPECT_EQ(m_Device.indexBinds[0].buffer, m_Models.GetDefaultModel()->IndexBuffer);
}

TEST_F(MeshTest, WriteInstanceWritesElevenRowsExactly)
{
    Mesh mesh;
    mesh.Rotation = AboutY(90.0f);
    mesh.Material.Diffuse = Math::Color(0.1f, 0.2f, 0.3f, 0.4f);
    mesh.Material.Specular = Math::Color(0.5f, 0.6f, 0.7f, 0.8f);
    mesh.Material.SpecularPower = 32.0f;
    mesh.Material.Ambient = 0.25f;
    mesh.Material.Emissive = 0.75f;
    mesh.Material.MaterialID = 3;
    mesh.Material.Glow = true;
    // Scale 2, 3, 4 and a move to (5, 6, 7).
    const Math::Matrix4 world(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 4, 0, 5, 6, 7, 1);
    const std::vector<InstanceRow> rows = RowsOf(mesh, world);
    ASSERT_EQ(rows.size(), 11u);
    // Rotation first: x goes to -z, z to x; then the object's scale and position.
    ExpectRow(rows[0], 0, 0, -4, 0);
    ExpectRow(rows[1], 0, 3, 0, 0);
    ExpectRow(rows[2], 2, 0, 0, 0);
    ExpectRow(rows[3], 5, 6, 7, 1);
    // The transposed inverse.
    ExpectRow(rows[4], 0, 0, -0.25f, 1.75f);
    ExpectRow(rows[5], 0, 1.0f / 3.0f, 0, -2);
    ExpectRow(rows[6], 0.5f, 0, 0, -2.5f);
    ExpectRow(rows[7], 0, 0, 0, 1);
    ExpectRow(rows[8], 0.1f, 0.2f, 0.3f, 0.4f);
    ExpectRow(rows[9], 0.5f, 0.6f, 0.7f, 32.0f);
    EXPECT_FLOAT_EQ(rows[10][0], 0.25f);
    EXPECT_FLOAT_EQ(rows[10][1], 0.75f);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(rows[10][2]), 1u);
    EXPECT_FLOAT_EQ(rows[10][3], 3.0f);
}

TEST_F(MeshTest, TheInverseTransposeRowsUndoTheWorldMatrix)
{
    Mesh mesh;
    mesh.Rotation = AboutY(30.0f);
    const Math::Matrix4 world = MakeWorldMatrix(Math::Point3D(1, 2, 3), Math::Vector3D(1, 2, 0.5f), AboutY(-70.0f));
    const std::vector<InstanceRow> rows = RowsOf(mesh, world);
    Math::Matrix4 written;
    Math::Matrix4 inverseTranspose;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
        {
            written.m[r][c] = rows[r][c];
            inverseTranspose.m[r][c] = rows[4 + r][c];
        }
    EXPECT_TRUE((written * inverseTranspose.Transposed()).NearlyEquals(Math::Matrix4(), 1e-5f));
}

TEST_F(MeshTest, GlowOffIsTheUnsignedZeroAndTheDefaultsAreTheMaterials)
{
    Mesh mesh;
    const std::vector<InstanceRow> rows = RowsOf(mesh, Math::Matrix4());
    ExpectRow(rows[8], 0.5f, 0.5f, 0.5f, 1.0f);
    ExpectRow(rows[9], 1.0f, 1.0f, 1.0f, 10.0f);
    EXPECT_FLOAT_EQ(rows[10][0], 0.2f);
    EXPECT_FLOAT_EQ(rows[10][1], 0.0f);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(rows[10][2]), 0u);
    EXPECT_FLOAT_EQ(rows[10][3], 0.0f);
}

TEST_F(MeshTest, PickThroughARotatedAndScaledMeshGivesTheWorldDistance)
{
    Transform transform;
    transform.m_Position = Math::Point3D(0, 0, -10);
    transform.m_Scale = Math::Vector3D(2, 2, 2);
    transform.m_Rotation = AboutY(20.0f);
    Mesh mesh;
    mesh.SetModel("box");
    mesh.Rotation = AboutY(25.0f);
    mesh.m_Transform = &transform;
    // A cube of side 2 turned 45 degrees about y shows its edge to the ray: sqrt(2) nearer than its centre.
    float distance = 0.0f;
    ASSERT_TRUE(mesh.Pick(distance, false, Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, -1)));
    EXPECT_NEAR(distance, 10.0f - std::sqrt(2.0f), 1e-4f);
    // Without the rotations the face is met at 9.
    transform.m_Rotation = Math::Quaternion();
    mesh.Rotation = Math::Quaternion();
    ASSERT_TRUE(mesh.Pick(distance, false, Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, -1)));
    EXPECT_NEAR(distance, 9.0f, 1e-4f);
    // A ray that passes beside it misses.
    EXPECT_FALSE(mesh.Pick(distance, false, Math::Point3D(3, 0, 0), Math::Vector3D(0, 0, -1)));
}

TEST_F(MeshTest, PickFollowsTheTransformsOffset)
{
    Transform transform;
    transform.m_Position = Math::Point3D(0, 0, -10);
    transform.m_Offset = Math::Vector3D(0, 0, 4);
    Mesh mesh;
    mesh.SetModel("box");
    mesh.m_Transform = &transform;
    float distance = 0.0f;
    ASSERT_TRUE(mesh.Pick(distance, false, Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, -1)));
    EXPECT_NEAR(distance, 5.5f, 1e-4f);
}

TEST_F(MeshTest, ArchetypeTextSetsTheModelByNameTheMaterialAndTheRotation)
{
    Mesh mesh;
    Util::Serializer text;
    text.OpenText("{\n  Model \"sphere\"\n  Rotation { 0 1 0 0 }\n  Material\n  {\n    Ambient 0.5\n"
                  "    MaterialID 2\n    Diffuse { 255 0 0 255 }\n    Glow true\n  }\n}\n");
    ASSERT_TRUE(text.ReadObject(Meta::Get<Mesh>(), &mesh));
    EXPECT_EQ(mesh.GetModelName(), "sphere");
    EXPECT_EQ(mesh.GetModel(), m_Models.GetModel("sphere"));
    EXPECT_EQ(mesh.Rotation, Math::Quaternion(0, 1, 0, 0));
    EXPECT_FLOAT_EQ(mesh.Material.Ambient, 0.5f);
    EXPECT_EQ(mesh.Material.MaterialID, 2u);
    EXPECT_EQ(mesh.Material.Diffuse, Math::Color(1, 0, 0, 1));
    EXPECT_TRUE(mesh.Material.Glow);
    EXPECT_FLOAT_EQ(mesh.Material.SpecularPower, 10.0f);
}

TEST_F(MeshTest, AMeshIsWrittenWithWhatDiffersAndItsModelByName)
{
    Mesh mesh;
    mesh.SetModel("crate");
    mesh.Material.Emissive = 1.0f;
    const Mesh reference;
    Util::Serializer out;
    out.OpenText("");
    out.Write("Mesh", &mesh, &reference, false, false);
    const std::string text = out.GetText();
    EXPECT_NE(text.find("Model \"crate\""), std::string::npos) << text;
    EXPECT_NE(text.find("Material"), std::string::npos) << text;
    EXPECT_NE(text.find("Emissive 1"), std::string::npos) << text;
    EXPECT_EQ(text.find("Rotation"), std::string::npos) << text;

    Mesh read;
    Util::Serializer in;
    in.OpenText(text.substr(text.find('{')));
    ASSERT_TRUE(in.ReadObject(Meta::Get<Mesh>(), &read));
    EXPECT_EQ(read.GetModelName(), "crate");
    EXPECT_FLOAT_EQ(read.Material.Emissive, 1.0f);
}

TEST_F(MeshTest, ACloneKeepsTheValuesAndBelongsToNoObject)
{
    Transform transform;
    Mesh mesh;
    mesh.SetModel("sphere");
    mesh.Material.Ambient = 0.9f;
    mesh.m_Transform = &transform;
    std::unique_ptr<Component> copy(mesh.Clone());
    auto* clone = static_cast<Mesh*>(copy.get());
    EXPECT_EQ(clone->GetModelName(), "sphere");
    EXPECT_EQ(clone->GetModel(), mesh.GetModel());
    EXPECT_EQ(clone->m_ElementCount, 780u);
    EXPECT_FLOAT_EQ(clone->Material.Ambient, 0.9f);
    EXPECT_EQ(clone->m_Transform, nullptr);
    EXPECT_EQ(clone->m_Owner, nullptr);
    EXPECT_EQ(clone->GetMeta(), Meta::Get<Mesh>());
}

TEST(MeshRegistrationTest, TheMeshFamilyIsRegisteredWithItsBases)
{
    const Meta::Data* mesh = Meta::FindData("Mesh");
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->m_Parent, Meta::FindData("BaseGraphicsComponent"));
    for (const char* name : {"TexturedMesh", "ConstructMesh", "CustomMesh", "WallMesh", "EditorMesh", "SkinnedMesh"})
    {
        const Meta::Data* type = Meta::FindData(name);
        ASSERT_NE(type, nullptr) << name;
        EXPECT_EQ(type->m_Parent, mesh) << name;
        std::unique_ptr<Component> made(static_cast<Component*>(type->New()));
        ASSERT_NE(made, nullptr) << name;
        EXPECT_EQ(made->GetMeta(), type) << name;
    }
    const Meta::Data* billboard = Meta::FindData("Billboard");
    ASSERT_NE(billboard, nullptr);
    EXPECT_EQ(billboard->m_Parent, Meta::FindData("BaseGraphicsComponent"));
    EXPECT_NE(mesh->FindProperty("Model"), nullptr);
    EXPECT_NE(mesh->FindMember("Material"), nullptr);
    EXPECT_NE(mesh->FindMember("Rotation"), nullptr);
}

TEST_F(MeshTest, AMeshOnAnObjectFindsItsTransformAndResolvesItsModelWhenItStarts)
{
    auto* archetype = new GameObject();
    archetype->AddComponentUninitialized("Transform");
    static_cast<Mesh*>(archetype->AddComponentUninitialized("Mesh"))->SetModel("sphere");
    SetMeshModels(nullptr);
    Engine::Space space{Engine::Level};
    const ArchetypeId id = Engine::ArchetypeManager::Get().Add(archetype);
    SetMeshModels(&m_Models);
    GameObject* object = space.CreateObject(id);
    auto* mesh = object->GetComponent<Mesh>();
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->m_Transform, object->GetComponent<Transform>());
    EXPECT_EQ(mesh->GetModel(), m_Models.GetModel("sphere"));
    EXPECT_EQ(mesh->m_ElementCount, 780u);
}

using MeshScriptTest = LuaTestState;

TEST_F(MeshScriptTest, ScriptsGetTheModelsVerticesAndIndicesAsTables)
{
    TempFolder folder;
    RecordingDevice device;
    ModelManager models(device);
    models.Initialize(folder.Path());
    SetMeshModels(&models);
    Mesh mesh;
    SetGlobal("mesh", &mesh);
    EXPECT_EQ(Run("mesh:SetModel('box')"), "");
    SetMeshModels(nullptr);
    EXPECT_EQ(Text("mesh:GetModelName()"), "box");
    EXPECT_EQ(Text("mesh.Model"), "box");
    EXPECT_DOUBLE_EQ(Number("#mesh:GetVertices()"), 24.0);
    EXPECT_DOUBLE_EQ(Number("#mesh:GetIndices()"), 36.0);
    EXPECT_DOUBLE_EQ(Number("mesh.Material.SpecularPower"), 10.0);
    lua_settop(L, 0);
}
