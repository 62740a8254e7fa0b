// The shared variable table: every frame variable is there from the start,
// each write moves the version by one, the per-frame update combines the
// matrices, and matrices are stored for GLSL's column-major reading.

#include "Graphics_Engine/VariableTable.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(VariableTableTest, EveryFrameVariableIsRegisteredFromTheStart)
{
    Graphics::VariableTable table;
    for (const char* name : {"m_Perspective", "m_View", "m_ViewPerspective", "m_InverseViewPerspective",
                             "m_OriginViewPerspective", "f3_CameraPos", "f3_CameraView", "f4_GlobaAmbient", "f_Time",
                             "f_Rand", "ui2_ScreenSize"})
        EXPECT_NE(table.FindConstant(name), nullptr) << name;
    for (const char* name :
         {"rt_Depth", "rt_Normal", "rt_Diffuse", "rt_Specular", "rt_Material", "sb_lights", "t3D_LightList"})
        EXPECT_NE(table.FindResource(name), nullptr) << name;
    EXPECT_EQ(table.FindConstant("m_View")->Data.size(), 64u);
    EXPECT_EQ(table.FindConstant("f3_CameraPos")->Data.size(), 12u);
    EXPECT_EQ(table.FindConstant("ui2_ScreenSize")->Data.size(), 8u);
}

TEST(VariableTableTest, GlobalAmbientKeepsItsDefault)
{
    Graphics::VariableTable table;
    float ambient[4];
    std::memcpy(ambient, table.FindConstant("f4_GlobaAmbient")->Data.data(), sizeof(ambient));
    EXPECT_FLOAT_EQ(ambient[0], 0.1f);
    EXPECT_FLOAT_EQ(ambient[1], 0.1f);
    EXPECT_FLOAT_EQ(ambient[2], 0.1f);
    EXPECT_FLOAT_EQ(ambient[3], 0.0f);
}

TEST(VariableTableTest, EveryWriteMovesTheVersionByOne)
{
    Graphics::VariableTable table;
    table.SetVariable("f_Custom", 1.0f);
    const std::uint64_t first = table.FindConstant("f_Custom")->Version;
    table.SetVariable("f_Custom", 1.0f);
    table.SetVariable("f_Custom", 2.0f);
    EXPECT_EQ(table.FindConstant("f_Custom")->Version, first + 2);
    const std::uint64_t view = table.FindResource("rt_Depth")->Version;
    table.SetResource("rt_Depth", 7);
    EXPECT_EQ(table.FindResource("rt_Depth")->Version, view + 1);
    EXPECT_EQ(table.FindResource("rt_Depth")->View, 7u);
}

TEST(VariableTableTest, SettingANameWithAnotherSizeReportsAndStillWrites)
{
    Graphics::VariableTable table;
    ReportCapture capture;
    table.SetVariable("f_Time", Math::Vector4D(1, 2, 3, 4));
    EXPECT_TRUE(capture.Holds("Loading variable with different data type then before."));
    EXPECT_EQ(table.FindConstant("f_Time")->Data.size(), 16u);
}

TEST(VariableTableTest, MatricesAreStoredColumnAfterColumn)
{
    Graphics::VariableTable table;
    const Math::Matrix4 move = Math::Matrix4::Translation(5, 6, 7);
    table.SetVariable("m_Model", move);
    float stored[16];
    std::memcpy(stored, table.FindConstant("m_Model")->Data.data(), sizeof(stored));
    // The translation, the engine's last row, is the last column: floats 3, 7 and 11.
    EXPECT_FLOAT_EQ(stored[3], 5);
    EXPECT_FLOAT_EQ(stored[7], 6);
    EXPECT_FLOAT_EQ(stored[11], 7);
    EXPECT_TRUE(table.ReadMatrix("m_Model").NearlyEquals(move));
}

TEST(VariableTableTest, SetCameraWritesViewPositionAndDirection)
{
    Graphics::VariableTable table;
    Graphics::CameraState camera;
    camera.View = Math::Matrix4::Translation(0, 0, 10);
    camera.Position = Math::Vector3D(1, 2, 3);
    camera.ViewDirection = Math::Vector3D(0, -1, 0);
    const std::uint64_t version = table.FindConstant("m_View")->Version;
    table.SetCamera(camera);
    EXPECT_EQ(table.FindConstant("m_View")->Version, version + 1);
    EXPECT_TRUE(table.ReadMatrix("m_View").NearlyEquals(camera.View));
    float position[3];
    std::memcpy(position, table.FindConstant("f3_CameraPos")->Data.data(), sizeof(position));
    EXPECT_FLOAT_EQ(position[2], 3);
    float direction[3];
    std::memcpy(direction, table.FindConstant("f3_CameraView")->Data.data(), sizeof(direction));
    EXPECT_FLOAT_EQ(direction[1], -1);
}

TEST(VariableTableTest, ResizeWritesPerspectiveAndScreenSize)
{
    Graphics::VariableTable table;
    const Math::Matrix4 perspective(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 1, 1, 0, 0, -0.1f, 0);
    table.Resize(1280, 720, perspective);
    EXPECT_TRUE(table.ReadMatrix("m_Perspective").NearlyEquals(perspective));
    unsigned size[2];
    std::memcpy(size, table.FindConstant("ui2_ScreenSize")->Data.data(), sizeof(size));
    EXPECT_EQ(size[0], 1280u);
    EXPECT_EQ(size[1], 720u);
}

TEST(VariableTableTest, UpdateCombinesTheMatricesEachFrame)
{
    Graphics::VariableTable table;
    const Math::Matrix4 perspective(2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 1, 1, 0, 0, -0.1f, 0);
    table.Resize(800, 600, perspective);
    Graphics::CameraState camera;
    camera.View = Math::Matrix4::Translation(1, 2, 3);
    table.SetCamera(camera);
    const std::uint64_t version = table.FindConstant("m_ViewPerspective")->Version;
    table.Update(0.5f);
    EXPECT_EQ(table.FindConstant("m_ViewPerspective")->Version, version + 1);
    const Math::Matrix4 viewPerspective = camera.View * perspective;
    EXPECT_TRUE(table.ReadMatrix("m_ViewPerspective").NearlyEquals(viewPerspective));
    EXPECT_TRUE(table.ReadMatrix("m_InverseViewPerspective").NearlyEquals(viewPerspective.Inverse(), 1e-4f));
    // The origin matrix drops the camera's translation.
    EXPECT_TRUE(table.ReadMatrix("m_OriginViewPerspective").NearlyEquals(perspective));
}

TEST(VariableTableTest, TimeGrowsByDtAndRandStaysInTheUnitRange)
{
    Graphics::VariableTable table;
    table.Update(0.25f);
    table.Update(0.5f);
    EXPECT_FLOAT_EQ(table.ReadFloat("f_Time"), 0.75f);
    for (int frame = 0; frame < 1000; ++frame)
    {
        table.Update(0.0f);
        const float rand = table.ReadFloat("f_Rand");
        EXPECT_GE(rand, 0.0f);
        EXPECT_LT(rand, 1.0f);
    }
}
