#include "Graphics_Engine/Model/Model.h"

#include "Graphics_Engine/Model/BuiltInModels.h"
#include "Graphics_Engine/Model/ModelFile.h"
#include "support/RecordingDevice.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>

using namespace Graphics;

namespace
{
Vertex At(float x, float y, float z)
{
    Vertex vertex;
    vertex.position[0] = x;
    vertex.position[1] = y;
    vertex.position[2] = z;
    return vertex;
}

// Two triangles facing +z: one at z = 1, one at z = 3, both covering the origin's line of sight.
std::unique_ptr<Model> TwoPlanes()
{
    auto model = std::make_unique<Model>();
    model->SetGeometry({At(-1, -1, 1), At(1, -1, 1), At(0, 1, 1), At(-1, -1, 3), At(1, -1, 3), At(0, 1, 3)},
                      {3, 4, 5, 0, 1, 2});
    return model;
}
}

TEST(ModelTest, BuffersHoldTheVerticesAndIndicesAsImmutableBuffers)
{
    RecordingDevice device;
    const ModelGeometry cube = MakeCube();
    Model model;
    model.SetGeometry(cube.vertices, cube.indices);
    model.CreateBuffers(device);
    ASSERT_TRUE(model.VertexBuffer);
    ASSERT_TRUE(model.IndexBuffer);
    const auto& vertexBuffer = device.buffers.at(model.VertexBuffer.id);
    EXPECT_EQ(vertexBuffer.desc.kind, BufferKind::Vertex);
    EXPECT_EQ(vertexBuffer.desc.usage, BufferUsage::Default);
    ASSERT_EQ(vertexBuffer.bytes.size(), 24u * 72u);
    EXPECT_EQ(std::memcmp(vertexBuffer.bytes.data(), cube.vertices.data(), vertexBuffer.bytes.size()), 0);
    const auto& indexBuffer = device.buffers.at(model.IndexBuffer.id);
    EXPECT_EQ(indexBuffer.desc.kind, BufferKind::Index);
    EXPECT_EQ(indexBuffer.desc.usage, BufferUsage::Default);
    ASSERT_EQ(indexBuffer.bytes.size(), 36u * 4u);
    EXPECT_EQ(std::memcmp(indexBuffer.bytes.data(), cube.indices.data(), indexBuffer.bytes.size()), 0);
}

TEST(ModelTest, BindSetsSlotZeroWithA72ByteStrideAnd32BitIndices)
{
    RecordingDevice device;
    const ModelGeometry cube = MakeCube();
    Model model;
    model.SetGeometry(cube.vertices, cube.indices);
    model.CreateBuffers(device);
    model.Bind(device);
    ASSERT_EQ(device.vertexBinds.size(), 1u);
    EXPECT_EQ(device.vertexBinds[0].slot, 0u);
    EXPECT_EQ(device.vertexBinds[0].buffer, model.VertexBuffer);
    EXPECT_EQ(device.vertexBinds[0].stride, 72u);
    EXPECT_EQ(device.vertexBinds[0].offset, 0u);
    ASSERT_EQ(device.indexBinds.size(), 1u);
    EXPECT_EQ(device.indexBinds[0].buffer, model.IndexBuffer);
    EXPECT_TRUE(device.indexBinds[0].indices32);
}

TEST(ModelTest, BindWithoutIndicesLeavesTheIndexBufferAlone)
{
    RecordingDevice device;
    Model model;
    model.SetGeometry({At(0, 0, 0), At(1, 0, 0), At(0, 1, 0)}, {});
    model.CreateBuffers(device);
    EXPECT_TRUE(model.VertexBuffer);
    EXPECT_FALSE(model.IndexBuffer);
    model.Bind(device);
    EXPECT_EQ(device.vertexBinds.size(), 1u);
    EXPECT_TRUE(device.indexBinds.empty());
}

TEST(ModelTest, AModelWithNoGeometryMakesNoBuffersAndReportsNothing)
{
    RecordingDevice device;
    ReportCapture capture;
    Model model;
    model.CreateBuffers(device);
    EXPECT_FALSE(model.VertexBuffer);
    EXPECT_FALSE(model.IndexBuffer);
    EXPECT_EQ(device.buffersMade, 0);
    EXPECT_EQ(capture.Text(), "");
}

TEST(ModelTest, ARefusedVertexBufferIsReportedFromCreateVertexBuffer)
{
    RecordingDevice device;
    device.refuseBuffers = BufferKind::Vertex;
    ReportCapture capture;
    Model model;
    model.SetGeometry(MakeCube().vertices, MakeCube().indices);
    model.CreateBuffers(device);
    EXPECT_FALSE(model.VertexBuffer);
    EXPECT_TRUE(model.IndexBuffer);
    const std::string text = capture.Text();
    EXPECT_NE(text.find("Failed To Create Vertex Buffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Function: Graphics::Model::CreateVertexBuffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Graphics_Engine/Model/Model"), std::string::npos) << text;
}

TEST(ModelTest, ARefusedIndexBufferIsReportedFromCreateIndexBuffer)
{
    RecordingDevice device;
    device.refuseBuffers = BufferKind::Index;
    ReportCapture capture;
    Model model;
    model.SetGeometry(MakeCube().vertices, MakeCube().indices);
    model.CreateBuffers(device);
    EXPECT_TRUE(model.VertexBuffer);
    EXPECT_FALSE(model.IndexBuffer);
    const std::string text = capture.Text();
    EXPECT_NE(text.find("Failed To Create Index Buffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Function: Graphics::Model::CreateIndexBuffer"), std::string::npos) << text;
    EXPECT_NE(text.find("Graphics_Engine/Model/Model"), std::string::npos) << text;
}

TEST(ModelTest, TheModelDestroysItsBuffers)
{
    RecordingDevice device;
    {
        Model model;
        model.SetGeometry(MakeCube().vertices, MakeCube().indices);
        model.CreateBuffers(device);
        model.CreateBuffers(device);
        EXPECT_EQ(device.buffersMade, 4);
        EXPECT_EQ(device.buffers.size(), 2u);
    }
    EXPECT_TRUE(device.buffers.empty());
    EXPECT_EQ(device.buffersDestroyed, 4);
}

TEST(ModelTest, ThePickingRayThatMissesLeavesTheLargestFiniteFloat)
{
    const auto model = TwoPlanes();
    float distance = 0.0f;
    EXPECT_FALSE(model->Intersect(Math::Point3D(5, 5, 0), Math::Vector3D(0, 0, 1), distance));
    EXPECT_EQ(distance, std::numeric_limits<float>::max());
}

TEST(ModelTest, IntersectWithoutIndicesIsFalseAtTheLargestFiniteFloat)
{
    Model model;
    model.SetGeometry({At(-1, -1, 1), At(1, -1, 1), At(0, 1, 1)}, {});
    float distance = 0.0f;
    EXPECT_FALSE(model.Intersect(Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, 1), distance));
    EXPECT_EQ(distance, std::numeric_limits<float>::max());
}

TEST(ModelTest, IntersectTakesTheNearestTriangleWhateverTheirOrder)
{
    const auto model = TwoPlanes();
    float distance = 0.0f;
    EXPECT_TRUE(model->Intersect(Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, 1), distance));
    EXPECT_FLOAT_EQ(distance, 1.0f);
}

TEST(ModelTest, IntersectHitsBackFaces)
{
    // From beyond both planes looking back along -z: the rays meet the triangles' back sides.
    const auto model = TwoPlanes();
    float distance = 0.0f;
    EXPECT_TRUE(model->Intersect(Math::Point3D(0, 0, 5), Math::Vector3D(0, 0, -1), distance));
    EXPECT_FLOAT_EQ(distance, 2.0f);
}

TEST(ModelTest, IntersectCountsTrianglesBehindTheOrigin)
{
    // Negative distances are not excluded: the smallest one wins.
    const auto model = TwoPlanes();
    float distance = 0.0f;
    EXPECT_TRUE(model->Intersect(Math::Point3D(0, 0, 5), Math::Vector3D(0, 0, 1), distance));
    EXPECT_FLOAT_EQ(distance, -4.0f);
}

TEST(ModelTest, IntersectScalesDistancesByTheDirectionsLength)
{
    const auto model = TwoPlanes();
    float distance = 0.0f;
    EXPECT_TRUE(model->Intersect(Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, 2), distance));
    EXPECT_FLOAT_EQ(distance, 0.5f);
}

TEST(ModelTest, IntersectAcceptsTheTrianglesEdges)
{
    Model model;
    model.SetGeometry({At(0, 0, 1), At(1, 0, 1), At(0, 1, 1)}, {0, 1, 2});
    float distance = 0.0f;
    // u + v = 1 exactly on the long edge, u = 0 on a short one.
    EXPECT_TRUE(model.Intersect(Math::Point3D(0.5f, 0.5f, 0), Math::Vector3D(0, 0, 1), distance));
    EXPECT_TRUE(model.Intersect(Math::Point3D(0, 0.5f, 0), Math::Vector3D(0, 0, 1), distance));
    EXPECT_FALSE(model.Intersect(Math::Point3D(0.6f, 0.6f, 0), Math::Vector3D(0, 0, 1), distance));
}

TEST(ModelTest, ARayInATrianglesPlaneMissesItWithoutFailing)
{
    Model model;
    model.SetGeometry({At(0, 0, 1), At(1, 0, 1), At(0, 1, 1)}, {0, 1, 2});
    float distance = 0.0f;
    EXPECT_FALSE(model.Intersect(Math::Point3D(-1, 0.2f, 1), Math::Vector3D(1, 0, 0), distance));
    EXPECT_EQ(distance, std::numeric_limits<float>::max());
}

TEST(ModelTest, IntersectSkipsTrianglesNamingMissingVertices)
{
    Model model;
    model.SetGeometry({At(-1, -1, 1), At(1, -1, 1), At(0, 1, 1)}, {0, 1, 7, 0, 1, 2, 0});
    float distance = 0.0f;
    EXPECT_TRUE(model.Intersect(Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, 1), distance));
    EXPECT_FLOAT_EQ(distance, 1.0f);
}

TEST(ModelTest, GetVerticesAndGetIndicesGiveTheArrays)
{
    const ModelGeometry cube = MakeCube();
    Model model;
    model.SetGeometry(cube.vertices, cube.indices);
    EXPECT_EQ(model.GetVertices().size(), 24u);
    EXPECT_EQ(model.GetIndices(), cube.indices);
    EXPECT_EQ(model.GetVertices()[5].position[1], cube.vertices[5].position[1]);
}

TEST(ModelTest, AFileGivesItsSkeletonWithParentsAndChildrenLinked)
{
    ModelFile file;
    file.Type = ModelType::Skinned;
    file.Vertices = {At(0, 0, 0), At(1, 0, 0), At(0, 1, 0)};
    file.Indices = {0, 1, 2};
    file.Bones = {{"Root", -1, Math::Matrix4()},
                  {"Spine", 0, Math::Matrix4::Translation(0, -1, 0)},
                  {"ArmL", 1, Math::Matrix4::Translation(-1, -2, 0)},
                  {"ArmR", 1, Math::Matrix4::Translation(1, -2, 0)}};
    file.Animations = {Animation{"Wave", {{2, "", {}}}}};
    file.GlobalTransform = Math::Matrix4::Translation(0, 0, 5);
    Model model;
    model.SetFromFile(std::move(file));
    ASSERT_EQ(model.Bones.size(), 4u);
    EXPECT_EQ(model.Bones[0].Parent, nullptr);
    EXPECT_EQ(model.Bones[1].Parent, &model.Bones[0]);
    EXPECT_EQ(model.Bones[2].Parent, &model.Bones[1]);
    EXPECT_EQ(model.Bones[3].Parent, &model.Bones[1]);
    EXPECT_EQ(model.Bones[1].Children, (std::vector<Bone*>{&model.Bones[2], &model.Bones[3]}));
    EXPECT_EQ(model.Bones[0].Children, (std::vector<Bone*>{&model.Bones[1]}));
    EXPECT_EQ(model.Bones[3].Name, "ArmR");
    EXPECT_TRUE(model.Bones[2].OffsetMatrix.NearlyEquals(Math::Matrix4::Translation(-1, -2, 0)));
    EXPECT_EQ(model.Animations.size(), 1u);
    EXPECT_TRUE(model.GlobalTransform.NearlyEquals(Math::Matrix4::Translation(0, 0, 5)));
    EXPECT_EQ(model.Vertices.size(), 3u);
}
