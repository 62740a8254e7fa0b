// Billboard and TexturedMesh without a GL context: how they draw and the rows they write.
#include "Graphics_Engine/Components/Billboard.h"
#include "Graphics_Engine/Components/TexturedMesh.h"

#include "support/RecordingDevice.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"

#include <gtest/gtest.h>

#include <bit>

using namespace Graphics;

TEST(BillboardTest, ABillboardDrawsOnePointByItself)
{
    Billboard billboard;
    EXPECT_EQ(billboard.GetModelId(), 0u);
    EXPECT_EQ(billboard.m_DrawMode, 1u);
    EXPECT_EQ(billboard.m_ElementCount, 1u);
    RecordingDevice device;
    billboard.Bind(device);
    ASSERT_EQ(device.topologies.size(), 1u);
    EXPECT_EQ(device.topologies[0], PrimitiveTopology::PointList);
    EXPECT_TRUE(device.vertexBinds.empty());
}

TEST(BillboardTest, ABillboardWritesItsMatrixAndTheThreeMaterialRows)
{
    Billboard billboard;
    billboard.Material.Diffuse = Math::Color(1, 0, 0, 1);
    billboard.Material.Glow = true;
    billboard.Material.MaterialID = 2;
    RecordingDevice device;
    InstanceBuffer buffer(device);
    billboard.WriteInstance(Math::Matrix4::Translation(1, 2, 3), nullptr, buffer);
    ASSERT_EQ(buffer.PendingInstances, 1u);
    ASSERT_EQ(buffer.Pending.size(), 7u);
    EXPECT_EQ(buffer.Pending[3], (InstanceRow{1, 2, 3, 1}));
    EXPECT_EQ(buffer.Pending[4], (InstanceRow{1, 0, 0, 1}));
    EXPECT_EQ(buffer.Pending[5], (InstanceRow{1, 1, 1, 10}));
    EXPECT_FLOAT_EQ(buffer.Pending[6][0], 0.2f);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(buffer.Pending[6][2]), 1u);
    EXPECT_FLOAT_EQ(buffer.Pending[6][3], 2.0f);
}

TEST(TexturedMeshTest, ATexturedMeshWritesTheElevenRowsOfAMesh)
{
    TexturedMesh textured;
    textured.Material.Diffuse = Math::Color(0, 0, 1, 1);
    RecordingDevice device;
    InstanceBuffer buffer(device);
    textured.WriteInstance(Math::Matrix4(), nullptr, buffer);
    ASSERT_EQ(buffer.Pending.size(), 11u);
    EXPECT_EQ(buffer.Pending[0], (InstanceRow{1, 0, 0, 0}));
    EXPECT_EQ(buffer.Pending[8], (InstanceRow{0, 0, 1, 1}));
}

TEST(TexturedMeshTest, ATexturedMeshDrawsWithTheTexturedPixelStage)
{
    TexturedMesh textured;
    EXPECT_EQ(textured.m_ShaderComponent.Vertex, "BaseVertex");
    EXPECT_EQ(textured.m_ShaderComponent.Pixel, "TexturedPixel");
    EXPECT_TRUE(textured.m_ShaderComponent.m_Dirty);
}
