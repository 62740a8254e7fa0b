// A linked program's bindings with hand-filled reflection: names shared by
// stages are merged, Apply copies only what moved and uploads only dirty
// buffers and slot lists, local writes reach the shadows, undeclared names are
// ignored, and Unbind clears the slots on the device.

#include "Graphics_Engine/ProgramBindings.h"

#include "Graphics_Engine/InputLayout.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace
{
// Records what Apply and Unbind ask of the device.
class FakeUploader : public Graphics::ProgramUploader
{
public:
    void UploadConstantBuffer(int stage, unsigned index, const Graphics::ConstantBuffer& buffer) override
    {
        uploads.push_back({stage, index});
        lastShadow = buffer.Shadow;
    }
    void BindTextures(int stage, const std::vector<Graphics::ResourceHandle>& slots) override
    {
        textureBinds.push_back({stage, slots});
    }
    void BindUnordered(int stage, const std::vector<Graphics::ResourceHandle>& slots) override
    {
        unorderedBinds.push_back({stage, slots});
    }
    void Clear()
    {
        uploads.clear();
        textureBinds.clear();
        unorderedBinds.clear();
    }

    std::vector<std::pair<int, unsigned>> uploads;
    std::vector<std::uint8_t> lastShadow;
    std::vector<std::pair<int, std::vector<Graphics::ResourceHandle>>> textureBinds;
    std::vector<std::pair<int, std::vector<Graphics::ResourceHandle>>> unorderedBinds;
};

float FloatAt(const Graphics::StageReflection& stage, unsigned buffer, unsigned offset)
{
    float value;
    std::memcpy(&value, stage.ConstantBuffers[buffer].Shadow.data() + offset, sizeof(value));
    return value;
}

// A vertex stage with two blocks and a pixel stage sharing f_Time, a texture and an image.
struct TwoStageProgram
{
    TwoStageProgram()
    {
        vertex.AddConstantBuffer("PerFrame", 80);
        vertex.AddConstantBuffer("PerObject", 16);
        vertex.AddVariable(0, "m_ViewPerspective", 0, 64);
        vertex.AddVariable(0, "f_Time", 64, 4);
        const float tint[4] = {1, 0.5f, 0.25f, 1};
        vertex.AddVariable(1, "f4_Tint", 0, 16, tint);
        pixel.AddConstantBuffer("Shared", 16);
        pixel.AddVariable(0, "f_Time", 4, 4);
        pixel.AddTextureSlot("rt_Diffuse");
        pixel.AddUnorderedSlot("img_Out");
        bindings.Link({&vertex, nullptr, nullptr, nullptr, &pixel, nullptr}, table);
    }

    Graphics::VariableTable table;
    Graphics::StageReflection vertex;
    Graphics::StageReflection pixel;
    Graphics::ProgramBindings bindings;
    FakeUploader device;
};
}

TEST(ProgramBindingsTest, NameReadByTwoStagesHasOneEntryWithTwoLocations)
{
    TwoStageProgram program;
    const auto& constants = program.bindings.Constants();
    ASSERT_EQ(constants.count("f_Time"), 1u);
    const auto& time = constants.at("f_Time");
    EXPECT_EQ(time.Count, 2u);
    EXPECT_EQ(time.Stage[0], Graphics::StageVertex);
    EXPECT_EQ(time.Place[0].Offset, 64u);
    EXPECT_EQ(time.Stage[1], Graphics::StagePixel);
    EXPECT_EQ(time.Place[1].Offset, 4u);
    // f_Time, m_ViewPerspective and rt_Diffuse are the table's; f4_Tint and img_Out are local.
    EXPECT_EQ(program.bindings.BindingCount(), 3u);
}

TEST(ProgramBindingsTest, FirstApplyUploadsEverythingAndCopiesTheTable)
{
    TwoStageProgram program;
    program.table.Update(2.0f);
    program.bindings.Apply(program.device);
    EXPECT_EQ(program.device.uploads.size(), 3u);
    EXPECT_EQ(program.device.textureBinds.size(), 1u);
    EXPECT_FLOAT_EQ(FloatAt(program.vertex, 0, 64), 2.0f);
    EXPECT_FLOAT_EQ(FloatAt(program.pixel, 0, 4), 2.0f);
    // The reported default value reached the shadow.
    EXPECT_FLOAT_EQ(FloatAt(program.vertex, 1, 4), 0.5f);
}

TEST(ProgramBindingsTest, ApplyWithNothingChangedUploadsNothing)
{
    TwoStageProgram program;
    program.bindings.Apply(program.device);
    program.device.Clear();
    program.bindings.Apply(program.device);
    EXPECT_TRUE(program.device.uploads.empty());
    EXPECT_TRUE(program.device.textureBinds.empty());
    EXPECT_TRUE(program.device.unorderedBinds.empty());
}

TEST(ProgramBindingsTest, ApplyUploadsOnlyTheBuffersOfAChangedVariable)
{
    TwoStageProgram program;
    program.bindings.Apply(program.device);
    program.device.Clear();
    Graphics::CameraState camera;
    camera.View = Math::Matrix4::Translation(1, 0, 0);
    program.table.SetCamera(camera);
    program.table.SetVariable("m_ViewPerspective", camera.View);
    program.bindings.Apply(program.device);
    ASSERT_EQ(program.device.uploads.size(), 1u);
    EXPECT_EQ(program.device.uploads[0], std::make_pair(static_cast<int>(Graphics::StageVertex), 0u));
    EXPECT_FLOAT_EQ(FloatAt(program.vertex, 0, 12), 1.0f); // column 0, row 3: the translation
}

TEST(ProgramBindingsTest, ChangedResourceRebindsOnlyItsSlotList)
{
    TwoStageProgram program;
    program.bindings.Apply(program.device);
    program.device.Clear();
    program.table.SetResource("rt_Diffuse", 42);
    program.bindings.Apply(program.device);
    EXPECT_TRUE(program.device.uploads.empty());
    ASSERT_EQ(program.device.textureBinds.size(), 1u);
    EXPECT_EQ(program.device.textureBinds[0].second, std::vector<Graphics::ResourceHandle>{42});
}

TEST(ProgramBindingsTest, VariableTheProgramDoesNotDeclareIsSetWithoutEffect)
{
    TwoStageProgram program;
    program.bindings.Apply(program.device);
    program.device.Clear();
    const float value = 3.0f;
    program.bindings.SetVariable("f_Undeclared", &value, sizeof(value));
    program.bindings.SetTexture("t_Undeclared", 5);
    program.bindings.SetUnordered("u_Undeclared", 6);
    program.table.SetVariable("f_AlsoUndeclared", 1.0f);
    program.bindings.Apply(program.device);
    EXPECT_TRUE(program.device.uploads.empty());
    EXPECT_TRUE(program.device.textureBinds.empty());
}

TEST(ProgramBindingsTest, LocalVariableAndViewsAreWrittenStraightToTheirPlaces)
{
    TwoStageProgram program;
    program.bindings.Apply(program.device);
    program.device.Clear();
    const float tint[4] = {0, 0, 0, 0.5f};
    program.bindings.SetVariable("f4_Tint", tint, sizeof(tint));
    program.bindings.SetUnordered("img_Out", 9);
    program.bindings.SetUnordered("rt_Diffuse", 10); // a texture slot, not an image: no effect
    program.bindings.Apply(program.device);
    ASSERT_EQ(program.device.uploads.size(), 1u);
    EXPECT_FLOAT_EQ(FloatAt(program.vertex, 1, 12), 0.5f);
    ASSERT_EQ(program.device.unorderedBinds.size(), 1u);
    EXPECT_EQ(program.device.unorderedBinds[0].second, std::vector<Graphics::ResourceHandle>{9});
    EXPECT_TRUE(program.device.textureBinds.empty());
}

TEST(ProgramBindingsTest, UnbindClearsTheSlotsAndTheNextApplyRestoresThem)
{
    TwoStageProgram program;
    program.table.SetResource("rt_Diffuse", 42);
    program.bindings.Apply(program.device);
    program.device.Clear();
    program.bindings.Unbind(program.device);
    ASSERT_EQ(program.device.textureBinds.size(), 1u);
    EXPECT_EQ(program.device.textureBinds[0].second, std::vector<Graphics::ResourceHandle>{0});
    ASSERT_EQ(program.device.unorderedBinds.size(), 1u);
    program.device.Clear();
    program.bindings.Apply(program.device);
    ASSERT_EQ(program.device.textureBinds.size(), 1u);
    EXPECT_EQ(program.device.textureBinds[0].second, std::vector<Graphics::ResourceHandle>{42});
}

TEST(ProgramBindingsTest, RelinkingAfterARecompileBindsTheNewStage)
{
    TwoStageProgram program;
    program.bindings.Apply(program.device);
    Graphics::StageReflection recompiled;
    recompiled.AddConstantBuffer("Shared", 8);
    recompiled.AddVariable(0, "f_Time", 0, 4);
    program.table.Update(1.0f);
    program.bindings.Link({&program.vertex, nullptr, nullptr, nullptr, &recompiled, nullptr}, program.table);
    program.device.Clear();
    program.bindings.Apply(program.device);
    EXPECT_FLOAT_EQ(FloatAt(recompiled, 0, 0), 1.0f);
    EXPECT_EQ(program.device.uploads.size(), 3u);
}

TEST(StageReflectionTest, VariableOutsideItsBufferIsRefused)
{
    Graphics::StageReflection stage;
    stage.AddConstantBuffer("B", 16);
    EXPECT_FALSE(stage.AddVariable(0, "late", 12, 8));
    EXPECT_FALSE(stage.AddVariable(1, "nobuffer", 0, 4));
    EXPECT_TRUE(stage.AddVariable(0, "fits", 12, 4));
    EXPECT_EQ(stage.Variables.count("late"), 0u);
    EXPECT_EQ(stage.ConstantBuffers[0].Shadow, std::vector<std::uint8_t>(16, 0));
}

TEST(StageReflectionTest, SamplerUniformTakesTheFirstBlockOfItsName)
{
    Graphics::ShaderDescription description;
    description.Samplers.resize(2);
    description.Samplers[0].Name = "s";
    description.Samplers[0].AddressU = 1;
    description.Samplers[1].Name = "s";
    Graphics::StageReflection stage;
    stage.AddSampler("s", description);
    stage.AddSampler("unnamed", description);
    EXPECT_EQ(stage.Samplers[0].Description, &description.Samplers[0]);
    EXPECT_EQ(stage.Samplers[1].Description, nullptr);
}

TEST(InputLayoutTest, MaskGivesTheComponentCount)
{
    EXPECT_EQ(Graphics::ComponentsFromMask(1), 1u);
    EXPECT_EQ(Graphics::ComponentsFromMask(3), 2u);
    EXPECT_EQ(Graphics::ComponentsFromMask(7), 3u);
    EXPECT_EQ(Graphics::ComponentsFromMask(15), 4u);
    EXPECT_EQ(Graphics::ComponentsFromMask(2), 2u);
    EXPECT_EQ(Graphics::ComponentsFromMask(4), 3u);
}

TEST(InputLayoutTest, ElementsAreAppendedOneAfterAnother)
{
    std::vector<Graphics::InputElement> layout;
    Graphics::AddInputElement(layout, "POSITION", 0, 7, Graphics::InputComponentType::Float);
    Graphics::AddInputElement(layout, "BONES", 0, 15, Graphics::InputComponentType::Unsigned);
    Graphics::AddInputElement(layout, "SV_InstanceID", 0, 1, Graphics::InputComponentType::Unsigned);
    ASSERT_EQ(layout.size(), 3u);
    EXPECT_EQ(layout[1].Offset, 12u);
    EXPECT_EQ(layout[2].Offset, 28u);
    EXPECT_EQ(layout[2].Components, 1u);
    EXPECT_EQ(layout[1].Type, Graphics::InputComponentType::Unsigned);
}
