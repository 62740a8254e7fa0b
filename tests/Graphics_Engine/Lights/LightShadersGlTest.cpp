// The light shaders of the data folder on a real OpenGL context: they compile, the record the
// engine writes (Graphics::s_Light) lies in sb_lights and in the volume pass's uniform block at
// exactly the offsets the driver gives each field, and the engine's names reach them.
#include "Graphics_Engine/Lights/LightRecord.h"
#include "Graphics_Engine/ShaderManager.h"
#include "Graphics_Engine/ShaderProgram.h"

#include "platform/gl/GlTestDevice.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>

using namespace Graphics;

namespace
{
const std::string kShaders = std::string(VORN_DATA_DIR) + "/Shaders/";

// The engine's offset of every field of the record, by the shaders' field name.
const std::map<std::string, std::size_t> kRecordOffsets = {
    {"Ambient", offsetof(s_Light, Ambient)},         {"Diffuse", offsetof(s_Light, Diffuse)},
    {"Specular", offsetof(s_Light, Specular)},       {"Position", offsetof(s_Light, Position)},
    {"Range", offsetof(s_Light, Range)},             {"Direction", offsetof(s_Light, Direction)},
    {"Padding0", offsetof(s_Light, Padding0)},       {"SpotPrams", offsetof(s_Light, SpotPrams)},
    {"Padding1", offsetof(s_Light, Padding1)},       {"Attenuation", offsetof(s_Light, Attenuation)},
    {"LightType", offsetof(s_Light, LightType)},
};

class LightShadersGlTest : public GlDeviceFixture
{
protected:
    void SetUp() override
    {
        GlDeviceFixture::SetUp();
        m_Manager = std::make_unique<ShaderManager>(*m_Device, m_Table, kShaders);
        ReportCapture capture;
        m_Manager->LoadAll();
        m_LoadReports = capture.Text();
    }
    void TearDown() override
    {
        m_Manager.reset();
        GlDeviceFixture::TearDown();
    }

    // What the driver reports of a stage of the data folder.
    ProgramReflection Reflect(int stage, const std::string& name)
    {
        Shader* shader = m_Manager->Find(stage, name);
        if (shader == nullptr || shader->Stage() == nullptr)
            return {};
        return m_Device->Reflect(shader->Stage()->Program);
    }

    VariableTable m_Table;
    std::unique_ptr<ShaderManager> m_Manager;
    std::string m_LoadReports;
};
}

TEST_F(LightShadersGlTest, BothLightPathsCompileAndLink)
{
    EXPECT_EQ(m_LoadReports.find("Error Compiling"), std::string::npos) << m_LoadReports;
    ShaderProgram* compute = m_Manager->GetCompute("LightCompute");
    ASSERT_NE(compute, nullptr);
    EXPECT_TRUE(compute->Loaded);
    ShaderProgram* volumes = m_Manager->GetProgram("baseLightVertex", "", "", "", "baseLightPixel");
    ASSERT_NE(volumes, nullptr);
    EXPECT_TRUE(volumes->Loaded);
    ShaderProgram* post = m_Manager->GetProgram("PostProcessVertex", "", "", "", "PostLighting");
    ASSERT_NE(post, nullptr);
    EXPECT_TRUE(post->Loaded);
}

TEST_F(LightShadersGlTest, EveryRecordFieldLiesInTheStorageBlockAtTheEnginesOffset)
{
    const ProgramReflection reflection = Reflect(StageCompute, "lightcompute");
    const ReflectedBlock* lights = nullptr;
    for (const ReflectedBlock& block : reflection.storageBlocks)
        if (block.name == "sb_lights")
            lights = &block;
    ASSERT_NE(lights, nullptr);
    std::map<std::string, const ReflectedBlockMember*> fields;
    for (const ReflectedBlockMember& member : lights->members)
        fields[member.name] = &member;
    for (const auto& [field, offset] : kRecordOffsets)
    {
        const auto found = fields.find("Lights[0]." + field);
        ASSERT_NE(found, fields.end()) << field;
        EXPECT_EQ(found->second->offset, offset) << field;
        EXPECT_EQ(found->second->topLevelArrayStride, sizeof(s_Light)) << field;
    }
}

TEST_F(LightShadersGlTest, EveryRecordFieldLiesInTheVolumePassBlockAtTheEnginesOffset)
{
    const ProgramReflection reflection = Reflect(StagePixel, "baselightpixel");
    const ReflectedBlock* record = nullptr;
    for (const ReflectedBlock& block : reflection.uniformBlocks)
        for (const ReflectedBlockMember& member : block.members)
            if (member.name.find("s_Light.") != std::string::npos)
                record = &block;
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->size, sizeof(s_Light));
    std::map<std::string, std::uint32_t> offsets;
    for (const ReflectedBlockMember& member : record->members)
        offsets[member.name.substr(member.name.find("s_Light."))] = member.offset;
    for (const auto& [field, offset] : kRecordOffsets)
    {
        if (field.rfind("Padding", 0) == 0 && offsets.count("s_Light." + field) == 0)
            continue;
        ASSERT_EQ(offsets.count("s_Light." + field), 1u) << field;
        EXPECT_EQ(offsets["s_Light." + field], offset) << field;
    }
}

TEST_F(LightShadersGlTest, TheEnginesNamesReachTheLightPrograms)
{
    ShaderProgram* compute = m_Manager->GetCompute("LightCompute");
    ASSERT_NE(compute, nullptr);
    const auto& resources = compute->Bindings.Resources();
    EXPECT_EQ(resources.count("sb_lights"), 1u);
    EXPECT_EQ(resources.count("rwt_LightList"), 1u);
    EXPECT_EQ(resources.count("rwt_Output"), 1u);
    EXPECT_EQ(compute->Bindings.Constants().count("i_lightCount"), 1u);
    ShaderProgram* volumes = m_Manager->GetProgram("baseLightVertex", "", "", "", "baseLightPixel");
    ASSERT_NE(volumes, nullptr);
    EXPECT_EQ(volumes->Bindings.Constants().count("s_Light"), 1u);
    EXPECT_EQ(volumes->Bindings.Constants().count("m_WorldViewPerspective"), 1u);
}
