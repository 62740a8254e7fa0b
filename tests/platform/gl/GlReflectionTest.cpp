#include "platform/gl/GlReflection.h"

#include "platform/gl/GlTestDevice.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Graphics;

namespace
{
// A std140 block whose layout is known by hand, a second block, a sampler, a
// storage block and an image, read by a pixel stage.
const char* kReflectedPixel = R"(#version 450
layout(std140, binding = 3) uniform Frame
{
    float f_Time;
    vec3 f3_CameraPos;
    mat4 m_View;
    vec2 f2_Size;
    float f_Weights[3];
};
layout(std140, binding = 5) uniform Material
{
    vec4 f4_Color;
};
layout(binding = 2) uniform sampler2D t_Diffuse;
layout(std430, binding = 4) readonly buffer Lights { vec4 lights[]; };
layout(binding = 1, rgba8) uniform readonly image2D u_Mask;
layout(location = 0) in vec2 v_Uv;
layout(location = 0) out vec4 o_Color;
void main()
{
    vec4 colour = texture(t_Diffuse, v_Uv) * f4_Color + lights[0] + imageLoad(u_Mask, ivec2(0));
    o_Color = colour * f_Time + vec4(f3_CameraPos, 1) * m_View + vec4(f2_Size, f_Weights[0], f_Weights[2]);
}
)";

const char* kInputsVertex = R"(#version 450
out gl_PerVertex { vec4 gl_Position; };
layout(location = 0) in vec3 a_Position;
layout(location = 2) in vec2 a_Uv;
layout(location = 3) in uvec4 a_Bones;
void main() { gl_Position = vec4(a_Position + vec3(a_Uv, float(a_Bones.x)), 1.0); }
)";

template <typename List>
const auto* FindByName(const List& list, const std::string& name)
{
    auto found = std::find_if(list.begin(), list.end(), [&](const auto& item) { return item.name == name; });
    return found == list.end() ? nullptr : &*found;
}
}

TEST_F(GlDeviceFixture, UniformBlockMembersLandAtTheOffsetsTheDriverReports)
{
    const StageCompileResult ps = m_Device->CompileStage(ShaderStage::Pixel, kReflectedPixel);
    ASSERT_TRUE(ps.program) << ps.log;
    const ProgramReflection reflection = m_Device->Reflect(ps.program);
    ASSERT_EQ(reflection.uniformBlocks.size(), 2u);
    const ReflectedBlock* frame = FindByName(reflection.uniformBlocks, "Frame");
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->binding, 3u);
    EXPECT_EQ(frame->size, 160u);
    ASSERT_EQ(frame->members.size(), 5u);
    for (const ReflectedBlockMember& member : frame->members)
        EXPECT_EQ(static_cast<int>(member.offset), UniformOffset(ps.program, member.name)) << member.name;

    // std140 by hand: float 0, vec3 16, mat4 32 (stride 16), vec2 96, float[3] 112 (stride 16).
    const struct
    {
        const char* name;
        std::uint32_t offset;
        std::uint32_t size;
    } expected[] = {{"f_Time", 0, 4},   {"f3_CameraPos", 16, 12}, {"m_View", 32, 64},
                    {"f2_Size", 96, 8}, {"f_Weights[0]", 112, 36}};
    for (const auto& want : expected)
    {
        const ReflectedBlockMember* member = FindByName(frame->members, want.name);
        ASSERT_NE(member, nullptr) << want.name;
        EXPECT_EQ(member->offset, want.offset) << want.name;
        EXPECT_EQ(member->size, want.size) << want.name;
    }
    EXPECT_EQ(FindByName(frame->members, "m_View")->type.name, "mat4");
    EXPECT_EQ(FindByName(frame->members, "m_View")->matrixStride, 16u);
    EXPECT_EQ(FindByName(frame->members, "f_Weights[0]")->arraySize, 3u);

    const ReflectedBlock* material = FindByName(reflection.uniformBlocks, "Material");
    ASSERT_NE(material, nullptr);
    EXPECT_EQ(material->binding, 5u);
    EXPECT_EQ(material->size, 16u);
}

TEST_F(GlDeviceFixture, SamplersStorageBlocksAndImagesAreReflectedWithTheirBindings)
{
    const StageCompileResult ps = m_Device->CompileStage(ShaderStage::Pixel, kReflectedPixel);
    ASSERT_TRUE(ps.program) << ps.log;
    const ProgramReflection reflection = m_Device->Reflect(ps.program);
    ASSERT_EQ(reflection.samplers.size(), 1u);
    EXPECT_EQ(reflection.samplers[0].name, "t_Diffuse");
    EXPECT_EQ(reflection.samplers[0].binding, 2u);
    EXPECT_EQ(reflection.samplers[0].type.name, "sampler2D");
    ASSERT_EQ(reflection.storageBlocks.size(), 1u);
    EXPECT_EQ(reflection.storageBlocks[0].name, "Lights");
    EXPECT_EQ(reflection.storageBlocks[0].binding, 4u);
    ASSERT_EQ(reflection.images.size(), 1u);
    EXPECT_EQ(reflection.images[0].name, "u_Mask");
    EXPECT_EQ(reflection.images[0].binding, 1u);
    EXPECT_EQ(reflection.images[0].type.name, "image2D");
}

TEST_F(GlDeviceFixture, ProgramInputsGiveTheirLocationsAndTypes)
{
    const StageCompileResult vs = m_Device->CompileStage(ShaderStage::Vertex, kInputsVertex);
    ASSERT_TRUE(vs.program) << vs.log;
    const ProgramReflection reflection = m_Device->Reflect(vs.program);
    ASSERT_EQ(reflection.inputs.size(), 3u);
    const ReflectedInput* position = FindByName(reflection.inputs, "a_Position");
    const ReflectedInput* uv = FindByName(reflection.inputs, "a_Uv");
    const ReflectedInput* bones = FindByName(reflection.inputs, "a_Bones");
    ASSERT_NE(position, nullptr);
    ASSERT_NE(uv, nullptr);
    ASSERT_NE(bones, nullptr);
    EXPECT_EQ(position->location, 0);
    EXPECT_EQ(position->type.rows, 3u);
    EXPECT_EQ(position->type.scalar, ScalarKind::Float);
    EXPECT_EQ(uv->location, 2);
    EXPECT_EQ(bones->location, 3);
    EXPECT_EQ(bones->type.scalar, ScalarKind::UInt);
    EXPECT_EQ(bones->type.rows, 4u);
}

TEST(GlReflection, TypeEnumsDescribeTheirShape)
{
    EXPECT_EQ(Platform::Gl::DescribeType(0x8B5C).name, "mat4");  // GL_FLOAT_MAT4
    EXPECT_EQ(Platform::Gl::DescribeType(0x8B5C).columns, 4u);
    EXPECT_EQ(Platform::Gl::DescribeType(0x1406).rows, 1u);  // GL_FLOAT
    EXPECT_EQ(Platform::Gl::DescribeType(0xDEAD).name, "unknown");
}
