#include "Graphics_Engine/Components/ShaderComponent.h"

#include "Graphics_Engine/ShaderManager.h"
#include "support/RecordingDevice.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

using Graphics::ShaderComponent;

TEST(ShaderComponentTest, StartsWithTheBaseShadersAndDirty)
{
    const ShaderComponent shader;
    EXPECT_EQ(shader.Vertex, "BaseVertex");
    EXPECT_EQ(shader.Pixel, "BasePixel");
    EXPECT_TRUE(shader.Geometry.empty() && shader.Hull.empty() && shader.Domain.empty());
    EXPECT_TRUE(shader.m_Dirty);
}

TEST(ShaderComponentTest, SettingAStageToANewNameMarksItDirtyAndTheSameNameDoesNot)
{
    ShaderComponent shader;
    shader.m_Dirty = false;
    shader.SetStage(4, "BasePixel");
    EXPECT_FALSE(shader.m_Dirty);
    shader.SetStage(1, "lineGeo");
    EXPECT_TRUE(shader.m_Dirty);
    EXPECT_EQ(shader.Geometry, "lineGeo");
    shader.m_Dirty = false;
    shader.SetStage(7, "Nothing");
    EXPECT_FALSE(shader.m_Dirty);
}

TEST(ShaderComponentTest, ResolvingCountsOnlyWhenDirty)
{
    RecordingDevice device;
    Graphics::VariableTable table;
    TempFolder folder;
    Graphics::ShaderManager manager(device, table, folder.Path());
    ShaderComponent shader;
    // No shader of those names is known: the program is made but does not draw.
    Graphics::ShaderProgram* const first = shader.Resolve(manager);
    ASSERT_NE(first, nullptr);
    EXPECT_FALSE(first->Loaded);
    EXPECT_FALSE(shader.m_Dirty);
    EXPECT_EQ(shader.m_ChangeCount, 1u);
    EXPECT_EQ(shader.Resolve(manager), first);
    EXPECT_EQ(shader.m_ChangeCount, 1u);
    shader.SetStage(0, "OtherVertex");
    shader.Resolve(manager);
    EXPECT_EQ(shader.m_Shader, manager.GetProgram("OtherVertex", "", "", "", "BasePixel"));
    EXPECT_EQ(shader.m_ChangeCount, 2u);
}
