// One frame of the pipeline on the recording device, call by call: the clears, the geometry stage into
// the G-buffer, the light pass, the forward stage into the lighting and material targets, and the final
// stage's upscale into the window last; once with compute lighting and once with the light-volume pass.
// The stages' hooks write marker lines into the device's log where the meshes would be drawn.
#include "Graphics_Engine/DeviceRenderStateApplier.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "Graphics_Engine/PipeLines/FrameContext.h"
#include "Graphics_Engine/PipeLines/RenderPipeline.h"
#include "Graphics_Engine/PipeLines/ShaderSource.h"
#include "Graphics_Engine/Shader.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "Graphics_Engine/VariableTable.h"

#include "support/RecordingDevice.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace Graphics;

namespace
{
// Programs made on the recording device from empty stages of the names asked for, each linked and so
// drawn. The light pass's "rwt_Output" and the full-screen passes' "rt_Texture" are declared, so that
// the images and textures they bind show in the log.
class RecordedShaders final : public ShaderSource
{
public:
    RecordedShaders(RecordingDevice& device, VariableTable& table) : m_Device(device), m_Table(table) {}

    ShaderProgram* GetProgram(const std::string& vertex, const std::string& geometry, const std::string& hull,
                              const std::string& domain, const std::string& pixel) override
    {
        return ProgramOf({Stage(vertex, "Vertex"), Stage(geometry, "Geometry"), Stage(hull, "Hull"),
                          Stage(domain, "Domain"), Stage(pixel, "Pixel"), nullptr});
    }
    ShaderProgram* GetCompute(const std::string& name) override
    {
        return ProgramOf({nullptr, nullptr, nullptr, nullptr, nullptr, Stage(name, "Compute")});
    }

private:
    Shader* Stage(const std::string& name, const std::string& type)
    {
        if (name.empty())
            return nullptr;
        std::unique_ptr<Shader>& shader = m_Stages[name];
        if (!shader)
        {
            m_Device.reflection = {};
            if (name == "LightCompute")
                m_Device.reflection.images.push_back({"rwt_Output", 0, 1, {}});
            if (name == "UpScale" || name == "PostLighting")
                m_Device.reflection.samplers.push_back({"rt_Texture", 0, 1, {}});
            shader = std::make_unique<Shader>(m_Device, name + ".glsl", name, "");
            EXPECT_TRUE(shader->CompileSource("__ShaderDesc { Type " + type + " EntryPoint main }\nvoid main() {}\n"))
                << name;
            m_Device.reflection = {};
        }
        return shader.get();
    }
    // The program of these stages, made and linked at the first request.
    ShaderProgram* ProgramOf(const std::array<Shader*, kStageCount>& stages)
    {
        std::unique_ptr<ShaderProgram>& program = m_Programs[stages];
        if (!program)
        {
            program = std::make_unique<ShaderProgram>(m_Device, m_Table, unsigned(m_Programs.size()), stages);
            EXPECT_TRUE(program->Link());
        }
        return program.get();
    }

    RecordingDevice& m_Device;
    VariableTable& m_Table;
    std::map<std::string, std::unique_ptr<Shader>> m_Stages;
    std::map<std::array<Shader*, kStageCount>, std::unique_ptr<ShaderProgram>> m_Programs;
};

class RenderPipelineFrameTest : public testing::Test
{
protected:
    // Builds the pipeline, makes its targets at 1024 x 576 in a 1280 x 720 window and runs one frame.
    void RunFrame(bool computeLighting)
    {
        m_Models.Initialize(m_Data.Path());
        m_Pipeline.Build(m_Shaders, m_States, {computeLighting, false});
        ASSERT_TRUE(m_Pipeline.CreateTargets(1024, 576, 1280, 720, m_Table));
        m_Pipeline.Geometry().m_DrawDeferred = [this](FrameContext&) { m_Device.log.push_back("geometry hook"); };
        m_Pipeline.Forward().m_DrawForward = [this](FrameContext&, const ForwardStage&) {
            m_Device.log.push_back("forward hook");
        };
        m_Device.log.clear();
        FrameContext frame{m_Device, m_States, m_Table, m_Models.GetModel("FullScreenQuad"), computeLighting};
        m_Pipeline.Run(frame);
    }
    // The log line binding the device target that draws into these targets (and depth, when given).
    std::string Bind(const std::vector<const RenderTarget*>& colours, const RenderTarget* depth = nullptr) const
    {
        std::vector<TextureHandle> textures;
        for (const RenderTarget* colour : colours)
            textures.push_back(colour->m_Texture);
        const std::uint32_t id = m_Device.TargetOf(textures, depth ? depth->m_Texture : TextureHandle{});
        EXPECT_NE(id, 0u) << "no device target draws into those targets";
        return "BindRenderTarget " + std::to_string(id);
    }
    // The log line binding the program that pairs these stages.
    std::string BindProgram(const std::string& vertex, const std::string& pixel)
    {
        return "BindPipeline " + std::to_string(m_Shaders.GetProgram(vertex, "", "", "", pixel)->Pipeline.id);
    }
    // Binding the four G-buffer targets with depth.
    std::string GBuffer() const
    {
        const RenderPipeline& p = m_Pipeline;
        return Bind({&p.m_Normal, &p.m_Diffuse, &p.m_Specular, &p.m_Material}, &p.m_Depth);
    }
    // Binding the lighting target and rt_Material with depth.
    std::string LightingAndMaterial() const
    {
        return Bind({&m_Pipeline.m_Lighting, &m_Pipeline.m_Material}, &m_Pipeline.m_Depth);
    }
    // Binding the lighting target alone.
    std::string Lighting() const { return Bind({&m_Pipeline.m_Lighting}); }
    // The id of a target's shader view, as the log writes it.
    static std::string ViewOf(const RenderTarget& target) { return std::to_string(target.m_ShaderView.id); }

    static constexpr const char* kWindow = "BindRenderTarget 0";
    static constexpr const char* kRenderViewport = "SetViewport 0 0 1024 576";
    static constexpr const char* kWindowViewport = "SetViewport 0 0 1280 720";

    TempFolder m_Data;
    RecordingDevice m_Device;
    VariableTable m_Table;
    ModelManager m_Models{m_Device};
    RecordedShaders m_Shaders{m_Device, m_Table};
    DeviceRenderStateApplier m_States{m_Device};
    RenderPipeline m_Pipeline{&m_Device};
};
}

TEST_F(RenderPipelineFrameTest, ComputeLightingFrameClearsDrawsGeometryDispatchesLightingDrawsForwardThenUpscales)
{
    RunFrame(true);
    const std::string lighting = std::to_string(m_Pipeline.m_Lighting.m_Texture.id);
    const std::string lightCompute =
        "BindPipeline " + std::to_string(m_Shaders.GetCompute("LightCompute")->Pipeline.id);
    const std::vector<std::string> expected{
        // 1. The four G-buffer targets and depth are cleared; the lighting target is left to the compute pass.
        GBuffer(), "ClearColor 0", "ClearColor 1", "ClearColor 2", "ClearColor 3", "ClearDepth 1",
        // 2. and 3. The G-buffer with depth over the render viewport while the deferred lists draw.
        GBuffer(), kRenderViewport, "geometry hook",
        // 4. Nothing bound; "LightCompute" (its output image unit bound to the lighting target when the program
        //    binds and again when it applies) writes the lighting target in 16 x 16 tiles, its writes are made
        //    visible and the image unit is cleared.
        kWindow, lightCompute, "BindImage 0 " + lighting, "BindImage 0 " + lighting, "Dispatch 64 36 1", "Barrier",
        "BindImage 0 0",
        // 5. to 8. The lighting target and rt_Material with depth while the forward records draw.
        LightingAndMaterial(), kRenderViewport, "forward hook",
        // 9. The lighting target, no effects, then the upscale (its texture unit bound empty, then to the
        //    lighting target's view, cleared after the draw) into the window, last.
        Lighting(), kWindowViewport, kWindow, BindProgram("baseLightVertex", "UpScale"), "BindTexture 0 0",
        "BindTexture 0 " + ViewOf(m_Pipeline.m_Lighting), "DrawIndexed 6", "BindTexture 0 0"};
    EXPECT_EQ(m_Device.log, expected);
    EXPECT_EQ(m_Pipeline.LastUpscaled(), 0u);
}

TEST_F(RenderPipelineFrameTest, LightVolumeFrameClearsLightingTargetBindsTheLightPassAndPostLightsBeforeUpscale)
{
    RunFrame(false);
    const std::string third = Bind({&m_Pipeline.Final().m_Third});
    const std::vector<std::string> expected{
        // 1. The four G-buffer targets and depth, then the lighting target, are cleared.
        GBuffer(), "ClearColor 0", "ClearColor 1", "ClearColor 2", "ClearColor 3", "ClearDepth 1",
        Lighting(), "ClearColor 0",
        // 2. and 3. The G-buffer with depth over the render viewport while the deferred lists draw.
        GBuffer(), kRenderViewport, "geometry hook",
        // 4. The light pass into the lighting target: its program is bound, and with no light records it
        //    draws no volume (the ambient comes with "PostLighting").
        kWindow, Lighting(), kRenderViewport, BindProgram("baseLightVertex", "baseLightPixel"),
        // 5. to 8. The lighting target and rt_Material with depth while the forward records draw.
        LightingAndMaterial(), kRenderViewport, "forward hook",
        // 9. The lighting target; "PostLighting" reads it into the ring's third target (one pass writes the
        //    scratch member), which is upscaled into the window last.
        Lighting(), third, BindProgram("PostProcessVertex", "PostLighting"), "BindTexture 0 0",
        "BindTexture 0 " + ViewOf(m_Pipeline.m_Lighting), "DrawIndexed 6", "BindTexture 0 0",
        kWindowViewport, kWindow, BindProgram("baseLightVertex", "UpScale"), "BindTexture 0 0",
        "BindTexture 0 " + ViewOf(m_Pipeline.Final().m_Third), "DrawIndexed 6", "BindTexture 0 0"};
    EXPECT_EQ(m_Device.log, expected);
    EXPECT_EQ(m_Pipeline.LastUpscaled(), 2u);
}
