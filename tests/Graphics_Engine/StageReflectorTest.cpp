#include "Graphics_Engine/ReflectedInputLayout.h"
#include "Graphics_Engine/SamplerConversion.h"
#include "Graphics_Engine/StageReflector.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Graphics;

namespace
{
ProgramReflection HandMade()
{
    ProgramReflection reflection;
    ReflectedBlock frame{"Frame", 0, 80, {}};
    frame.members.push_back({"m_View", 0, 64, 1, 0, 16, false, {ScalarKind::Float, 4, 4, "mat4"}});
    frame.members.push_back({"Weights[0]", 64, 16, 4, 4, 0, false, {ScalarKind::Float, 1, 1, "float"}});
    frame.members.push_back({"Outside", 78, 4, 1, 0, 0, false, {ScalarKind::Float, 1, 1, "float"}});
    reflection.uniformBlocks.push_back(frame);
    reflection.samplers.push_back({"Diffuse", 2, 1, {ScalarKind::Opaque, 0, 0, "sampler2D"}});
    reflection.storageBlocks.push_back({"Lights", 5, 32, {}});
    reflection.images.push_back({"Output", 1, 1, {ScalarKind::Opaque, 0, 0, "image2D"}});
    reflection.inputs.push_back({"Normal", 1, {ScalarKind::Float, 3, 1, "vec3"}});
    reflection.inputs.push_back({"gl_VertexID", -1, {ScalarKind::Int, 1, 1, "int"}});
    reflection.inputs.push_back({"Position", 0, {ScalarKind::Float, 2, 1, "vec2"}});
    reflection.inputs.push_back({"Bone", 2, {ScalarKind::Int, 1, 1, "int"}});
    return reflection;
}
}

TEST(StageReflector, BlocksBecomeConstantBuffersWithMembersAtTheirOffsets)
{
    ShaderDescription description;
    StageReflection stage;
    StageBindingPoints points;
    EXPECT_FALSE(ReflectStage(HandMade(), description, stage, points));
    ASSERT_EQ(stage.ConstantBuffers.size(), 1u);
    EXPECT_EQ(stage.ConstantBuffers[0].Shadow.size(), 80u);
    EXPECT_EQ(stage.Variables.at("m_View").Offset, 0u);
    EXPECT_EQ(stage.Variables.at("Weights").Offset, 64u);
    EXPECT_EQ(stage.Variables.at("Weights").Size, 16u);
    EXPECT_EQ(stage.Variables.count("Outside"), 0u);
    EXPECT_EQ(points.ConstantBuffers, std::vector<unsigned>{0});
}

TEST(StageReflector, SamplersStorageBlocksAndImagesTakeSlotsWithTheirBindings)
{
    ShaderDescription description;
    description.Samplers.resize(2);
    description.Samplers[0].Name = "Diffuse";
    description.Samplers[0].Filter = 0;
    description.Samplers[1].Name = "Diffuse";
    description.Samplers[1].Filter = 0x15;
    StageReflection stage;
    StageBindingPoints points;
    ReflectStage(HandMade(), description, stage, points);
    ASSERT_EQ(stage.TextureSlots.size(), 2u);
    EXPECT_EQ(points.TextureSlots[stage.TextureSlotOf.at("Diffuse")].Unit, 2u);
    EXPECT_FALSE(points.TextureSlots[stage.TextureSlotOf.at("Diffuse")].Storage);
    EXPECT_TRUE(points.TextureSlots[stage.TextureSlotOf.at("Lights")].Storage);
    EXPECT_EQ(points.TextureSlots[stage.TextureSlotOf.at("Lights")].Unit, 5u);
    EXPECT_EQ(points.UnorderedSlots, std::vector<unsigned>{1});
    ASSERT_EQ(stage.Samplers.size(), 1u);
    EXPECT_EQ(stage.Samplers[0].Description, &description.Samplers[0]);
    EXPECT_EQ(points.SamplerUnits, std::vector<unsigned>{2});
}

TEST(StageReflector, ArrayNamesLoseTheirFirstIndex)
{
    EXPECT_EQ(ReflectedName("Weights[0]"), "Weights");
    EXPECT_EQ(ReflectedName("Light.Colour"), "Light.Colour");
    EXPECT_EQ(ReflectedName("[0]"), "[0]");
}

TEST(ReflectedInputLayout, InputsInLocationOrderByTheMaskRulesWithoutBuiltIns)
{
    const ProgramReflection reflection = HandMade();
    const std::vector<InputElement> layout = InputLayoutOf(reflection);
    ASSERT_EQ(layout.size(), 3u);
    EXPECT_EQ(layout[0].Semantic, "Position");
    EXPECT_EQ(layout[0].Components, 2u);
    EXPECT_EQ(layout[1].Offset, 8u);
    EXPECT_EQ(layout[1].Components, 3u);
    EXPECT_EQ(layout[2].Offset, 20u);
    EXPECT_EQ(layout[2].Type, InputComponentType::Signed);
    const std::vector<InputElementDesc> elements = DeviceInputElements(reflection, layout);
    ASSERT_EQ(elements.size(), 3u);
    EXPECT_EQ(elements[1].location, 1u);
    EXPECT_EQ(elements[1].format, Format::R32G32B32_FLOAT);
    EXPECT_EQ(elements[2].format, Format::R32_SINT);
    EXPECT_EQ(elements[2].offset, 20u);
}

TEST(SamplerConversion, AbsentLodLimitsLeaveTheWholeFloatRange)
{
    const SamplerDesc desc = ToDeviceSampler(SamplerDescription{});
    EXPECT_EQ(desc.minLod, -std::numeric_limits<float>::max());
    EXPECT_EQ(desc.maxLod, std::numeric_limits<float>::max());
    EXPECT_EQ(desc.filter, 0x15u);
    EXPECT_EQ(desc.addressU, AddressMode::Clamp);
}

TEST(SamplerConversion, FieldsCarryOverAndOutOfRangeNumbersFallBack)
{
    SamplerDescription description;
    description.Filter = 0x80;
    description.AddressU = 1;
    description.AddressV = 5;
    description.AddressW = 9;
    description.ComparisonFunc = 4;
    description.MaxAnisotropy = 40;
    description.BorderColor[2] = 0.5f;
    const SamplerDesc desc = ToDeviceSampler(description);
    EXPECT_EQ(desc.filter, 0x80u);
    EXPECT_EQ(desc.addressU, AddressMode::Wrap);
    EXPECT_EQ(desc.addressV, AddressMode::MirrorOnce);
    EXPECT_EQ(desc.addressW, AddressMode::Clamp);
    EXPECT_EQ(desc.comparison, ComparisonFunc::LessEqual);
    EXPECT_EQ(desc.maxAnisotropy, 16u);
    EXPECT_EQ(desc.borderColor[2], 0.5f);
}
