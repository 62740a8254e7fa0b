// The graphics engine on a real OpenGL context (offscreen driver) with the game's shaders: start-up,
// a frame of the empty scene on both lighting paths, saving a frame, and resizing.
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/PipeLines/RenderPipeline.h"
#include "Graphics_Engine/Projection.h"
#include "Graphics_Engine/VariableTable.h"
#include "engine/Window.h"
#include "platform/ImageDecoder.h"
#include "platform/NativeWindow.h"

#include "support/Scoped.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace Graphics;

namespace
{
const std::string kData = std::string(VORN_DATA_DIR) + "/";

class GraphicsEngineGlTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_Engine.Fullscreen = false;
        m_Engine.Resolution = 0;
    }
    // Makes the window the engine draws on (a window made for GL is only made where a context follows).
    void MakeWindow()
    {
        m_Window.RequestOpenGl(true);
        ASSERT_TRUE(m_Window.Create("Vorn graphics engine test", 320, 180, 1, 1));
    }
    void TearDown() override
    {
        m_Engine.ShutdownDevice();
        m_Window.Destroy();
    }
    void Start()
    {
        MakeWindow();
        m_Engine.InitializeOn(m_Window, 1.0f, 1.0f, kData);
    }
    // A pixel of the lighting target.
    std::vector<std::uint8_t> LitPixel(int x, int y)
    {
        RenderPipeline& pipeline = *m_Engine.Pipeline();
        return m_Engine.Device()->ReadPixels(pipeline.m_Lighting.m_TargetViews.at(0), 0, x, y, 1, 1);
    }

    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
    Platform::NativeWindow m_Window;
    GraphicsEngine m_Engine;
};

// The global ambient (0.1 by default) as an 8-bit channel.
constexpr int kAmbient = 26;
}

TEST_F(GraphicsEngineGlTest, StartMakesTheTargetsAtTheSelectedResolutionWithTheProjection)
{
    Start();
    ASSERT_NE(m_Engine.Device(), nullptr);
    EXPECT_TRUE(m_Engine.Initialized);
    EXPECT_EQ(m_Engine.GetWidth(), 1024);
    EXPECT_EQ(m_Engine.GetHeight(), 576);
    EXPECT_EQ(m_Engine.GetClientWidth(), 320);
    RenderPipeline& pipeline = *m_Engine.Pipeline();
    for (const RenderTarget* target : {&pipeline.m_Normal, &pipeline.m_Diffuse, &pipeline.m_Specular,
                                       &pipeline.m_Material, &pipeline.m_Lighting, &pipeline.m_Depth,
                                       &pipeline.Final().m_Second, &pipeline.Final().m_Third})
    {
        EXPECT_TRUE(target->m_Texture);
        EXPECT_EQ(target->m_Width, 1024);
        EXPECT_EQ(target->m_Height, 576);
    }
    EXPECT_EQ(pipeline.m_Normal.m_Format, Format::R10G10B10A2_UNORM);
    EXPECT_EQ(pipeline.m_Diffuse.m_Format, Format::R8G8B8A8_UNORM);
    EXPECT_EQ(pipeline.m_Lighting.m_BindFlags, unsigned(BindShaderResource | BindRenderTarget | BindUnorderedAccess));
    EXPECT_TRUE(pipeline.m_Lighting.m_UnorderedView);
    EXPECT_EQ(pipeline.m_Depth.m_Format, Format::R32_TYPELESS);
    EXPECT_EQ(pipeline.Final().m_Second.m_Format, Format::B8G8R8A8_UNORM);
    EXPECT_TRUE(pipeline.m_BackBuffer.IsWindow());
    EXPECT_EQ(m_Engine.Variables().FindResource("rt_Normal")->View, pipeline.m_Normal.m_ShaderView.id);
    EXPECT_EQ(m_Engine.Variables().FindResource("rt_Depth")->View, pipeline.m_Depth.m_ShaderView.id);
    EXPECT_TRUE(m_Engine.Variables().m_Perspective.NearlyEquals(MakeProjection(45.0f, 1024, 576)));
    EXPECT_EQ(m_Engine.ComputeLighting, m_Engine.Device()->SupportsCompute());
}

TEST_F(GraphicsEngineGlTest, EmptyFrameShowsTheGlobalAmbientOnTheComputePath)
{
    Start();
    ASSERT_TRUE(m_Engine.ComputeLighting);
    TempFolder folder;
    m_Engine.RequestScreenshot(1, folder.Path() + "frame.png");
    m_Engine.Update(0.016f);
    const std::vector<std::uint8_t> lit = LitPixel(500, 300);
    ASSERT_EQ(lit.size(), 4u);
    EXPECT_NEAR(lit[0], kAmbient, 1);
    m_Engine.Update(0.016f);
    const Platform::DecodedImage shot = Platform::DecodeImageFile(folder.Path() + "frame.png");
    ASSERT_TRUE(shot.Valid()) << shot.error;
    EXPECT_EQ(shot.width, 320);
    EXPECT_EQ(shot.height, 180);
    for (int channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(shot.pixels[(90 * 320 + 160) * 4 + channel], kAmbient, 1) << channel;
}

TEST_F(GraphicsEngineGlTest, EmptyFrameIsTheSameWithTheLightVolumePass)
{
    MakeWindow();
    GraphicsEngine engine;
    engine.m_NoComputeLighting = true;
    engine.Fullscreen = false;
    engine.Resolution = 0;
    engine.InitializeOn(m_Window, 1.0f, 1.0f, kData);
    ASSERT_FALSE(engine.ComputeLighting);
    ASSERT_EQ(engine.Pipeline()->Effects().size(), 1u);
    TempFolder folder;
    engine.RequestScreenshot(0, folder.Path() + "frame.png");
    engine.Update(0.016f);
    // One effect that ran one pass wrote the third member of the ring.
    EXPECT_EQ(engine.Pipeline()->LastUpscaled(), 2u);
    const Platform::DecodedImage shot = Platform::DecodeImageFile(folder.Path() + "frame.png");
    ASSERT_TRUE(shot.Valid()) << shot.error;
    EXPECT_NEAR(shot.pixels[(90 * 320 + 160) * 4], kAmbient, 1);
    engine.ShutdownDevice();
}

TEST_F(GraphicsEngineGlTest, SizeMessageRecreatesTheTargetsAndTheNextFrameDrawsAtTheNewSize)
{
    m_Engine.UseWindowSize = true;
    Start();
    EXPECT_EQ(m_Engine.GetWidth(), 320);
    const TextureHandle before = m_Engine.Pipeline()->m_Lighting.m_Texture;
    WindowResize resize(400, 300, ScreenMode::Keep);
    m_Engine.OnWindowResize(&resize);
    RenderPipeline& pipeline = *m_Engine.Pipeline();
    EXPECT_EQ(m_Engine.GetWidth(), 400);
    EXPECT_EQ(m_Engine.GetHeight(), 300);
    EXPECT_EQ(pipeline.m_Lighting.m_Width, 400);
    EXPECT_EQ(pipeline.m_Depth.m_Height, 300);
    EXPECT_EQ(pipeline.Final().m_Third.m_Width, 400);
    EXPECT_EQ(pipeline.m_RenderViewport.width, 400.0f);
    EXPECT_EQ(pipeline.m_WindowViewport.height, 300.0f);
    EXPECT_NE(pipeline.m_Lighting.m_Texture, TextureHandle{}) << "made again";
    (void)before;
    EXPECT_TRUE(m_Engine.Variables().m_Perspective.NearlyEquals(MakeProjection(45.0f, 400, 300)));
    m_Engine.Update(0.016f);
    // The far corner of the new size was lit.
    const std::vector<std::uint8_t> corner = LitPixel(399, 299);
    ASSERT_EQ(corner.size(), 4u);
    EXPECT_NEAR(corner[0], kAmbient, 1);
}

TEST_F(GraphicsEngineGlTest, WindowEventsBeforeStartAreIgnored)
{
    WindowResize resize(400, 300, ScreenMode::Keep);
    m_Engine.OnWindowResize(&resize);
    EXPECT_FALSE(m_Engine.Initialized);
    EXPECT_EQ(m_Engine.Pipeline(), nullptr);
}

TEST_F(GraphicsEngineGlTest, ResolutionPropertyIsClampedAndScriptInterfaceAnswers)
{
    m_Engine.SetResolution(42);
    EXPECT_EQ(m_Engine.GetResolution(), 8u);
    EXPECT_EQ(m_Engine.GetResolutionCount(), 9u);
    EXPECT_EQ(m_Engine.GetResolutionString(4), "1366 X 786");
}
