// The shader manager on a real OpenGL context (offscreen driver): the GLSL files of
// tests/data/Shaders are compiled, reflected, linked, applied, drawn and recompiled.
#include "Graphics_Engine/DeviceRenderStateApplier.h"
#include "Graphics_Engine/RenderStateBlock.h"
#include "Graphics_Engine/ShaderManager.h"
#include "engine/FileWatcher.h"
#include "platform/gl/GlTestDevice.h"

#include "support/ReportCapture.h"
#include "support/TempFolder.h"

#include <epoxy/gl.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>

using namespace Graphics;
using GlTest::kSize;
using GlTest::Rgba;

namespace
{
// Counts what Apply and Unbind ask for, and passes it on to the device.
class RecordingUploader final : public ProgramUploader
{
public:
    explicit RecordingUploader(ProgramUploader& device) : m_Device(device) {}
    void UploadConstantBuffer(int stage, unsigned index, const ConstantBuffer& buffer) override
    {
        ++Uploads;
        Uploaded.push_back(buffer.Name);
        m_Device.UploadConstantBuffer(stage, index, buffer);
    }
    void BindTextures(int stage, const std::vector<ResourceHandle>& slots) override
    {
        TextureBinds.push_back(slots);
        m_Device.BindTextures(stage, slots);
    }
    void BindUnordered(int stage, const std::vector<ResourceHandle>& slots) override
    {
        UnorderedBinds.push_back(slots);
        m_Device.BindUnordered(stage, slots);
    }
    int Uploads = 0;
    std::vector<std::string> Uploaded;
    std::vector<std::vector<ResourceHandle>> TextureBinds;
    std::vector<std::vector<ResourceHandle>> UnorderedBinds;

private:
    ProgramUploader& m_Device;
};

const std::string kTestData = VORN_TEST_DATA_DIR;
}

class ShaderManagerGlTest : public GlDeviceFixture
{
protected:
    void SetUp() override
    {
        GlDeviceFixture::SetUp();
        std::filesystem::copy(kTestData + "/Shaders", m_Folder.Path() + "Shaders",
                              std::filesystem::copy_options::recursive);
        m_Manager = std::make_unique<ShaderManager>(*m_Device, m_Table, m_Folder.Path() + "Shaders/");
        ReportCapture capture;
        m_Manager->LoadAll();
        m_LoadReports = capture.Text();
    }
    void TearDown() override
    {
        m_Manager.reset();
        GlDeviceFixture::TearDown();
    }

    ShaderProgram* TestProgram() { return m_Manager->GetProgram("TestVertex", "", "", "", "testpixel"); }

    // Draws a full-screen triangle with the program into a fresh target; gives the target.
    GlTest::Target Draw(ShaderProgram& program)
    {
        GlTest::Target target = GlTest::MakeTarget(*m_Device);
        const float vertices[] = {-1, -1, 0, 3, -1, 0, -1, 3, 0};
        BufferDesc desc;
        desc.size = sizeof(vertices);
        const BufferHandle buffer = m_Device->CreateBuffer(desc, vertices);
        DeviceRenderStateApplier applier(*m_Device);
        RenderStateBlock states;
        RasterizerDescription rasterizer;
        rasterizer.Cull = CullMode::None;
        DepthStencilDescription depth;
        depth.DepthEnable = false;
        states.CreateRasterizerState(applier, rasterizer);
        states.CreateDepthStencilState(applier, depth);
        states.CreateBlendState(applier, BlendDescription{});
        m_Device->BindRenderTarget(target.target);
        m_Device->SetViewport({0, 0, kSize, kSize, 0, 1});
        m_Device->ClearColor(0, {0, 0, 0, 1});
        states.Apply(applier);
        const float identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        program.SetVariable("m_World", identity);
        program.SetVariable("Scale", 1.0f);
        program.Bind();
        m_Device->BindVertexBuffer(0, buffer, 12, 0);
        program.Apply();
        m_Device->Draw(3, 0);
        m_Device->Finish();
        m_Device->DestroyBuffer(buffer);
        return target;
    }

    TempFolder m_Folder;
    VariableTable m_Table;
    std::unique_ptr<ShaderManager> m_Manager;
    std::string m_LoadReports;
};

TEST_F(ShaderManagerGlTest, LoadAllFilesEachShaderUnderItsStageAndLowerCaseStem)
{
    ASSERT_NE(m_Manager->Find(StageVertex, "testvertex"), nullptr);
    EXPECT_TRUE(m_Manager->Find(StageVertex, "TestVertex")->Compiled());
    ASSERT_NE(m_Manager->Find(StagePixel, "TESTPIXEL"), nullptr);
    EXPECT_EQ(m_Manager->Find(StagePixel, "testpixel")->Name(), "testpixel");
    EXPECT_EQ(m_Manager->Find(StageVertex, "testpixel"), nullptr);
    EXPECT_EQ(m_Manager->ComputeLighting(), m_Device->SupportsCompute());
}

TEST_F(ShaderManagerGlTest, CompilerLogReachesErrorsAsItStands)
{
    EXPECT_NE(m_LoadReports.find("Error Compiling "), std::string::npos) << m_LoadReports;
    EXPECT_NE(m_LoadReports.find("BrokenPixel.glsl\nErrors: "), std::string::npos) << m_LoadReports;
    EXPECT_NE(m_LoadReports.find("undeclaredThing"), std::string::npos) << m_LoadReports;
    Shader* broken = m_Manager->Find(StagePixel, "brokenpixel");
    ASSERT_NE(broken, nullptr);
    EXPECT_FALSE(broken->Compiled());
    EXPECT_FALSE(m_Manager->GetProgram("testvertex", "", "", "", "brokenpixel")->Loaded);
}

TEST_F(ShaderManagerGlTest, ProgramWithoutPixelStageOrWithUnknownNamesIsNotLoaded)
{
    EXPECT_FALSE(m_Manager->GetProgram("testvertex", "", "", "", "")->Loaded);
    EXPECT_FALSE(m_Manager->GetProgram("nosuch", "", "", "", "testpixel")->Loaded);
    ShaderProgram* program = m_Manager->GetProgram("nosuch", "", "", "", "testpixel");
    program->SetVariable("Scale", 2.0f);
    program->Apply();
    program->Unbind();
}

TEST_F(ShaderManagerGlTest, GetProgramMakesEachCombinationOnceWhateverTheCase)
{
    ShaderProgram* first = TestProgram();
    EXPECT_EQ(m_Manager->GetProgram("TESTVERTEX", "", "", "", "TestPixel"), first);
    EXPECT_TRUE(first->Loaded);
    EXPECT_TRUE(first->Forward);
    EXPECT_TRUE(first->Instanced);
    EXPECT_TRUE(first->InputLayout);
}

TEST_F(ShaderManagerGlTest, EachReflectedNameLandsAtTheOffsetTheDriverReports)
{
    for (const char* name : {"testvertex", "testpixel"})
    {
        const int stage = std::string(name) == "testvertex" ? StageVertex : StagePixel;
        const CompiledStage* compiled = m_Manager->Find(stage, name)->Stage();
        ASSERT_NE(compiled, nullptr);
        EXPECT_EQ(compiled->Reflection.ConstantBuffers.size(), 2u) << name;
        for (const auto& [variable, location] : compiled->Reflection.Variables)
            EXPECT_EQ(static_cast<int>(location.Offset), UniformOffset(compiled->Program, variable)) << variable;
    }
    const CompiledStage* vertex = m_Manager->Find(StageVertex, "testvertex")->Stage();
    EXPECT_EQ(vertex->Reflection.Variables.at("Scale").Size, 4u);
    EXPECT_EQ(vertex->Reflection.Variables.at("m_World").Size, 64u);
    ASSERT_EQ(vertex->InputFormat.size(), 2u);
    EXPECT_EQ(vertex->InputFormat[0].Semantic, "Position");
    EXPECT_EQ(vertex->InputFormat[0].Components, 2u);
    EXPECT_EQ(vertex->InputFormat[1].Offset, 8u);
}

TEST_F(ShaderManagerGlTest, SamplerStorageBlockAndImageTakeTheirSlots)
{
    const CompiledStage* pixel = m_Manager->Find(StagePixel, "testpixel")->Stage();
    ASSERT_NE(pixel, nullptr);
    EXPECT_EQ(pixel->Reflection.TextureSlotOf.count("DiffuseTexture"), 1u);
    EXPECT_EQ(pixel->Reflection.TextureSlotOf.count("Weights"), 1u);
    EXPECT_EQ(pixel->Reflection.UnorderedSlotOf.count("Marks"), 1u);
    const unsigned storage = pixel->Reflection.TextureSlotOf.at("Weights");
    EXPECT_TRUE(pixel->Objects.Points.TextureSlots[storage].Storage);
    EXPECT_EQ(pixel->Objects.Points.TextureSlots[storage].Unit, 3u);
    EXPECT_EQ(pixel->Objects.Points.UnorderedSlots[0], 1u);

    ASSERT_EQ(pixel->Reflection.Samplers.size(), 1u);
    ASSERT_NE(pixel->Reflection.Samplers[0].Description, nullptr);
    const SamplerHandle sampler = pixel->Objects.Samplers[0];
    ASSERT_TRUE(sampler);
    EXPECT_EQ(SamplerParameter(sampler, GL_TEXTURE_MIN_FILTER), GL_NEAREST_MIPMAP_NEAREST);
    EXPECT_EQ(SamplerParameter(sampler, GL_TEXTURE_MAG_FILTER), GL_NEAREST);
    EXPECT_EQ(SamplerParameter(sampler, GL_TEXTURE_WRAP_S), GL_REPEAT);
    EXPECT_EQ(SamplerParameter(sampler, GL_TEXTURE_WRAP_T), GL_MIRRORED_REPEAT);
    EXPECT_FLOAT_EQ(SamplerParameterFloat(sampler, GL_TEXTURE_MAX_LOD), 4.0f);
}

TEST_F(ShaderManagerGlTest, SharedVariableReadByTwoStagesHasOneEntryWithBothLocations)
{
    ShaderProgram* program = TestProgram();
    const auto& shared = program->Bindings.Constants().at("f4_GlobaAmbient");
    EXPECT_EQ(shared.Count, 2u);
    EXPECT_EQ(shared.Stage[0] + shared.Stage[1], StageVertex + StagePixel);
}

TEST_F(ShaderManagerGlTest, ApplyUploadsOnlyWhatChanged)
{
    ShaderProgram* program = TestProgram();
    ASSERT_TRUE(program->Loaded);
    program->Bind();
    RecordingUploader recorder(program->Uploader());
    program->Apply(recorder);
    EXPECT_EQ(recorder.Uploads, 4);

    recorder.Uploads = 0;
    program->Apply(recorder);
    EXPECT_EQ(recorder.Uploads, 0);

    m_Table.SetVariable("f4_GlobaAmbient", Math::Vector4D(0.5f, 0.25f, 0.125f, 1.0f));
    recorder.Uploaded.clear();
    program->Apply(recorder);
    EXPECT_EQ(recorder.Uploaded, (std::vector<std::string>{"Shared", "Shared"}));

    recorder.Uploaded.clear();
    const float tint[4] = {1, 1, 1, 1};
    program->SetVariable("Tint", tint);
    program->SetVariable("NotDeclaredAnywhere", 3.0f);
    program->Apply(recorder);
    EXPECT_EQ(recorder.Uploaded, (std::vector<std::string>{"Material"}));

    const CompiledStage* pixel = m_Manager->Find(StagePixel, "testpixel")->Stage();
    const unsigned shared = pixel->Reflection.ConstantBuffers[0].Name == "Shared" ? 0 : 1;
    const std::vector<std::uint8_t> bytes = m_Device->ReadBuffer(pixel->Objects.ConstantBuffers[shared]);
    float ambient[4] = {};
    std::memcpy(ambient, bytes.data() + pixel->Reflection.Variables.at("f4_GlobaAmbient").Offset, sizeof(ambient));
    EXPECT_FLOAT_EQ(ambient[1], 0.25f);
}

TEST_F(ShaderManagerGlTest, UnbindClearsTheSlotsTheProgramSet)
{
    ShaderProgram* program = TestProgram();
    program->SetTexture("DiffuseTexture", 7);
    program->SetUnordered("Marks", 9);
    RecordingUploader recorder(program->Uploader());
    program->Apply(recorder);
    program->Unbind(recorder);
    ASSERT_FALSE(recorder.TextureBinds.empty());
    for (ResourceHandle slot : recorder.TextureBinds.back())
        EXPECT_EQ(slot, 0u);
    ASSERT_FALSE(recorder.UnorderedBinds.empty());
    EXPECT_EQ(recorder.UnorderedBinds.back(), std::vector<ResourceHandle>{0});
    recorder.TextureBinds.clear();
    program->Apply(recorder);
    ASSERT_EQ(recorder.TextureBinds.size(), 1u);
}

TEST_F(ShaderManagerGlTest, ProgramDrawsWithItsIncludedColour)
{
    ShaderProgram* program = TestProgram();
    ASSERT_TRUE(program->Loaded);
    const GlTest::Target target = Draw(*program);
    EXPECT_EQ(GlTest::PixelAt(*m_Device, target.target, 10, 10), (Rgba{255, 0, 0, 255}));
}

TEST_F(ShaderManagerGlTest, EditOfIncludedFileRelinksTheProgramWithNewStageObjectsStillDrawing)
{
    ShaderProgram* program = TestProgram();
    ASSERT_TRUE(program->Loaded);
    FileWatcher::Get().Update(0.0f);
    const StageProgramHandle oldStage = m_Manager->Find(StagePixel, "testpixel")->Stage()->Program;
    const PipelineHandle oldPipeline = program->Pipeline;

    const std::string colour = m_Folder.Path() + "Shaders/Colour.glsl";
    std::ofstream(colour, std::ios::trunc) << "vec3 IncludedColour()\n{\n    return vec3(0.0, 1.0, 0.0);\n}\n";
    std::filesystem::last_write_time(colour, std::filesystem::file_time_type::clock::now() + std::chrono::seconds(2));
    FileWatcher::Get().Poll();
    FileWatcher::Get().Update(0.016f);

    Shader* pixel = m_Manager->Find(StagePixel, "testpixel");
    EXPECT_EQ(pixel->Generation(), 2u);
    EXPECT_NE(pixel->Stage()->Program, oldStage);
    EXPECT_TRUE(program->Loaded);
    EXPECT_NE(program->Pipeline, oldPipeline);
    EXPECT_EQ(program->Bindings.Constants().at("f4_GlobaAmbient").Count, 2u);

    const GlTest::Target target = Draw(*program);
    const std::vector<std::uint8_t> frame = m_Device->ReadPixels(target.target, 0, 0, 0, kSize, kSize);
    const std::filesystem::path picture = std::filesystem::current_path() / "ShaderRecompiledGreen.png";
    EXPECT_TRUE(SavePng(picture.string(), frame, kSize, kSize)) << picture;
    EXPECT_EQ(GlTest::PixelAt(*m_Device, target.target, 10, 10), (Rgba{0, 255, 0, 255}));
}

TEST_F(ShaderManagerGlTest, FailedRecompileKeepsTheOldStageDrawing)
{
    ShaderProgram* program = TestProgram();
    Shader* pixel = m_Manager->Find(StagePixel, "testpixel");
    const StageProgramHandle before = pixel->Stage()->Program;
    std::ofstream(m_Folder.Path() + "Shaders/Colour.glsl", std::ios::trunc) << "this is no GLSL\n";
    {
        ReportCapture capture;
        EXPECT_FALSE(m_Manager->Recompile(*pixel));
        EXPECT_TRUE(capture.Holds("Errors: "));
    }
    EXPECT_EQ(pixel->Stage()->Program, before);
    EXPECT_TRUE(program->Loaded);
    const GlTest::Target target = Draw(*program);
    EXPECT_EQ(GlTest::PixelAt(*m_Device, target.target, 10, 10), (Rgba{255, 0, 0, 255}));
}

TEST_F(ShaderManagerGlTest, ComputeProgramWritesItsImage)
{
    ShaderProgram* program = m_Manager->GetCompute("TestCompute");
    if (!m_Device->SupportsCompute())
    {
        EXPECT_FALSE(program->Loaded);
        return;
    }
    ASSERT_TRUE(program->Loaded);
    TextureDesc desc;
    desc.width = 4;
    desc.height = 4;
    desc.bindFlags = BindShaderResource | BindUnorderedAccess | BindRenderTarget;
    const TextureHandle texture = m_Device->CreateTexture2D(desc);
    RenderTargetDesc targetDesc;
    targetDesc.colours = {texture};
    const RenderTargetHandle target = m_Device->CreateRenderTarget(targetDesc);
    const float blue[4] = {0, 0, 1, 1};
    program->SetVariable("FillColour", blue);
    program->SetUnordered("Output", texture.id);
    program->Bind();
    program->Apply();
    m_Device->Dispatch(4, 4, 1);
    m_Device->Barrier();
    EXPECT_EQ(GlTest::PixelAt(*m_Device, target, 1, 1), (Rgba{0, 0, 255, 255}));
    program->Unbind();
    m_Device->DestroyRenderTarget(target);
    m_Device->DestroyTexture(texture);
}

TEST_F(ShaderManagerGlTest, ForwardOnAVertexStageAndInstancedOnAPixelStageHaveNoEffect)
{
    m_Folder.Write("Shaders/Vertex/FlagsVertex.glsl", R"(__ShaderDesc
{
    Type Vertex
    EntryPoint main
    Flag Forward
}
out gl_PerVertex { vec4 gl_Position; };
layout(location = 0) in vec3 Position;
void main() { gl_Position = vec4(Position, 1.0); }
)");
    m_Folder.Write("Shaders/Pixel/FlagsPixel.glsl", R"(__ShaderDesc
{
    Type Pixel
    EntryPoint main
    Flag Instanced
}
layout(location = 0) out vec4 Colour;
void main() { Colour = vec4(1.0); }
)");
    ShaderManager manager(*m_Device, m_Table, m_Folder.Path() + "Shaders/");
    {
        ReportCapture quiet;  // the broken test shader reports again
        manager.LoadAll();
    }
    ShaderProgram* flags = manager.GetProgram("flagsvertex", "", "", "", "flagspixel");
    ASSERT_NE(flags, nullptr);
    ASSERT_TRUE(flags->Loaded);
    EXPECT_FALSE(flags->Forward);
    EXPECT_FALSE(flags->Instanced);
    // The same flags on the stages they belong to take effect.
    ShaderProgram* test = manager.GetProgram("testvertex", "", "", "", "testpixel");
    ASSERT_NE(test, nullptr);
    EXPECT_TRUE(test->Instanced);
    EXPECT_TRUE(test->Forward);
}
