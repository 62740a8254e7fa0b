// The graphics engine drawing a space's meshes on a real OpenGL context (offscreen driver) with the
// game's shaders: the visible lists, the batching through the instance buffer, the textured pixel
// stage, both lighting paths, and a frame after the window's size changed.
#include "Components/Camera/Camera/Camera.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/Components/TexturedMesh.h"
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/PipeLines/RenderPipeline.h"
#include "Graphics_Engine/RenderLists.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/Window.h"
#include "platform/NativeWindow.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

using namespace Graphics;

namespace
{
const std::string kData = std::string(VORN_DATA_DIR) + "/";

// The lit colour of a surface under the ambient-only lighting: diffuse times (global ambient plus
// the material's ambient) plus diffuse times emissive, as an 8-bit channel.
int Lit(float diffuse, float globalAmbient, float ambient, float emissive = 0.0f)
{
    const float value = std::fmin(1.0f, diffuse * (globalAmbient + ambient) + diffuse * emissive);
    return static_cast<int>(std::lround(value * 255.0f));
}

class GraphicsEngineSceneGlTest : public testing::Test
{
protected:
    void Start(bool computeLighting = true)
    {
        m_Engine.Fullscreen = false;
        m_Engine.UseWindowSize = true;
        m_Engine.m_NoComputeLighting = !computeLighting;
        m_Window.RequestOpenGl(true);
        ASSERT_TRUE(m_Window.Create("Vorn scene test", 320, 180, 1, 1));
        m_Engine.InitializeOn(m_Window, 1.0f, 1.0f, kData);
        ASSERT_NE(m_Engine.Device(), nullptr);
        m_Engine.AttachSpace(m_Graphics);
        m_Graphics.GetQuadTree()->BuildGrid(Math::Point3D(-20.0f, -5.0f, -20.0f), Math::Vector3D(5.0f, 10.0f, 5.0f),
                                             8, 8);
        m_Graphics.SetGlobalAmbient(Math::Color(0.3f, 0.3f, 0.3f, 1.0f));
        // The camera stands 10 units in front of the origin, looking at it.
        m_CameraTransform.m_Position = Math::Point3D(0.0f, 0.0f, 10.0f);
        m_Camera.m_Transform = &m_CameraTransform;
        m_Camera.ViewVector = Math::Vector3D(0.0f, 0.0f, -1.0f);
        m_Graphics.SetCamera(&m_Camera);
    }
    void TearDown() override
    {
        m_Graphics.SetCamera(nullptr);
        m_Graphics.SetRenderLists(nullptr);
        m_Engine.ShutdownDevice();
        m_Window.Destroy();
    }

    // A mesh of `model` at `position`, uniformly scaled, in `colour`; TexturedMesh when `texture` is given.
    Mesh& AddMesh(const std::string& model, const Math::Point3D& position, float scale, const Math::Color& colour,
                  const std::string& texture = "")
    {
        auto transform = std::make_unique<Transform>();
        transform->m_Position = position;
        transform->m_Scale = Math::Vector3D(scale, scale, scale);
        std::unique_ptr<Mesh> mesh = texture.empty() ? std::make_unique<Mesh>() : std::make_unique<TexturedMesh>();
        mesh->SetModel(model);
        mesh->Material.Diffuse = colour;
        mesh->Material.DiffuseTexture = texture;
        m_Graphics.AddGraphicsComponent(static_cast<GameObjectId>(m_Meshes.size() + 1), mesh.get(), transform.get());
        m_Transforms.push_back(std::move(transform));
        m_Meshes.push_back(std::move(mesh));
        return *m_Meshes.back();
    }

    // One frame: the space's step, then the engine's.
    void Frame()
    {
        m_Graphics.Update(0.016f);
        m_Engine.Update(0.016f);
    }

    // The ring's target the last frame showed: the lighting target, or where the post-effects left it.
    RenderTarget& Shown()
    {
        RenderPipeline& pipeline = *m_Engine.Pipeline();
        RenderTarget* ring[3] = {&pipeline.m_Lighting, &pipeline.Final().m_Second, &pipeline.Final().m_Third};
        return *ring[pipeline.LastUpscaled() % 3];
    }

    // A pixel of the lit picture (render size, top row first).
    std::vector<int> LitPixel(int x, int y)
    {
        const std::vector<std::uint8_t> bytes =
            m_Engine.Device()->ReadPixels(Shown().m_TargetViews.at(0), 0, x, y, 1, 1);
        return bytes.size() == 4 ? std::vector<int>{bytes[0], bytes[1], bytes[2]} : std::vector<int>{};
    }

    // The lit picture's pixel under a world point.
    std::vector<int> LitPixelAt(const Math::Point3D& point)
    {
        const Math::Point2D at = m_Engine.Point3DTo2D(point);
        return LitPixel(static_cast<int>(at.x), static_cast<int>(at.y));
    }

    static void ExpectColour(const std::vector<int>& pixel, int r, int g, int b, int tolerance = 2)
    {
        ASSERT_EQ(pixel.size(), 3u);
        EXPECT_NEAR(pixel[0], r, tolerance);
        EXPECT_NEAR(pixel[1], g, tolerance);
        EXPECT_NEAR(pixel[2], b, tolerance);
    }

    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
    Platform::NativeWindow m_Window;
    GraphicsEngine m_Engine;
    GraphicsSpace m_Graphics;
    Transform m_CameraTransform;
    Camera m_Camera;
    std::vector<std::unique_ptr<Transform>> m_Transforms;
    std::vector<std::unique_ptr<Mesh>> m_Meshes;
};
}

TEST_F(GraphicsEngineSceneGlTest, CubeInFrontOfTheCameraShowsItsLitMaterialColourAndTheRestTheAmbient)
{
    Start();
    AddMesh("box", Math::Point3D(0, 0, 0), 2.0f, Math::Color(1.0f, 0.5f, 0.25f, 1.0f));
    Frame();
    ExpectColour(LitPixel(160, 90), Lit(1.0f, 0.3f, 0.2f), Lit(0.5f, 0.3f, 0.2f), Lit(0.25f, 0.3f, 0.2f));
    ExpectColour(LitPixel(5, 5), 77, 77, 77);
}

TEST_F(GraphicsEngineSceneGlTest, InstancesOfOneModelEachKeepTheirOwnColourAndPlace)
{
    Start();
    const std::vector<Math::Color> colours = {Math::Color(1, 0, 0, 1), Math::Color(0, 1, 0, 1),
                                              Math::Color(0, 0, 1, 1)};
    for (int i = 0; i < 3; ++i)
        AddMesh("sphere", Math::Point3D(-3.0f + 3.0f * i, 0, 0), 1.5f, colours[static_cast<std::size_t>(i)]);
    Frame();
    // One key: the three spheres were drawn as instances of one model and one program.
    ASSERT_EQ(m_Engine.Lists().m_Deferred.size(), 1u);
    EXPECT_EQ(m_Engine.Lists().m_Deferred.begin()->second.size(), 3u);
    const int full = Lit(1.0f, 0.3f, 0.2f);
    ExpectColour(LitPixelAt(Math::Point3D(-3, 0, 0)), full, 0, 0);
    ExpectColour(LitPixelAt(Math::Point3D(0, 0, 0)), 0, full, 0);
    ExpectColour(LitPixelAt(Math::Point3D(3, 0, 0)), 0, 0, full);
}

TEST_F(GraphicsEngineSceneGlTest, ManyInstancesPastOneBatchAreAllDrawn)
{
    Start();
    // 150 spheres of eleven rows each take more than the 1000 rows of one batch.
    for (int row = 0; row < 10; ++row)
        for (int column = 0; column < 15; ++column)
            AddMesh("sphere", Math::Point3D(-5.6f + 0.8f * column, -3.6f + 0.8f * row, 0.0f), 0.5f,
                    Math::Color(1, 1, 1, 1));
    Frame();
    const int full = Lit(1.0f, 0.3f, 0.2f);
    for (const Math::Point3D& point :
         {Math::Point3D(-5.6f, -3.6f, 0), Math::Point3D(5.6f, 3.6f, 0), Math::Point3D(0.0f, 0.4f, 0)})
        ExpectColour(LitPixelAt(point), full, full, full);
}

TEST_F(GraphicsEngineSceneGlTest, TexturedMeshMultipliesItsTextureByItsColour)
{
    Start();
    AddMesh("box", Math::Point3D(0, 0, 0), 2.0f, Math::Color(0.2f, 0.8f, 0.6f, 1.0f), "white.png");
    Frame();
    ExpectColour(LitPixel(160, 90), Lit(0.2f, 0.3f, 0.2f), Lit(0.8f, 0.3f, 0.2f), Lit(0.6f, 0.3f, 0.2f), 3);
}

TEST_F(GraphicsEngineSceneGlTest, LightVolumePassGivesTheSamePictureAsTheComputePass)
{
    Start(false);
    ASSERT_FALSE(m_Engine.ComputeLighting);
    AddMesh("box", Math::Point3D(0, 0, 0), 2.0f, Math::Color(1.0f, 0.5f, 0.25f, 1.0f));
    Frame();
    ExpectColour(LitPixel(160, 90), Lit(1.0f, 0.3f, 0.2f), Lit(0.5f, 0.3f, 0.2f), Lit(0.25f, 0.3f, 0.2f));
    ExpectColour(LitPixel(5, 5), 77, 77, 77);
}

TEST_F(GraphicsEngineSceneGlTest, FrameAfterTheSizeMessageDrawsTheSceneAtTheNewSize)
{
    Start();
    AddMesh("box", Math::Point3D(0, 0, 0), 2.0f, Math::Color(1.0f, 0.5f, 0.25f, 1.0f));
    Frame();
    WindowResize resize(400, 300, ScreenMode::Keep);
    m_Engine.OnWindowResize(&resize);
    EXPECT_FLOAT_EQ(m_Graphics.m_Screen.ClientWidth, 400.0f) << "the space picks with the new size";
    Frame();
    ExpectColour(LitPixel(200, 150), Lit(1.0f, 0.3f, 0.2f), Lit(0.5f, 0.3f, 0.2f), Lit(0.25f, 0.3f, 0.2f));
    ExpectColour(LitPixel(395, 295), 77, 77, 77);
    // The cube keeps its size on screen relative to the height: 2 units at distance 9 under 45 degrees.
    const Math::Point2D edge = m_Engine.Point3DTo2D(Math::Point3D(0, 1, 1));
    ExpectColour(LitPixel(200, static_cast<int>(edge.y) + 3), Lit(1.0f, 0.3f, 0.2f), Lit(0.5f, 0.3f, 0.2f),
                 Lit(0.25f, 0.3f, 0.2f));
    ExpectColour(LitPixel(200, static_cast<int>(edge.y) - 3), 77, 77, 77);
}

TEST_F(GraphicsEngineSceneGlTest, MouseRayAndScreenPointAgree)
{
    Start();
    Frame();
    // The middle of the window looks straight down the camera's view.
    const Math::Vector3D ahead = m_Engine.GetMouseVec(Math::Vector2D(50.0f, 50.0f));
    EXPECT_NEAR(ahead.x, 0.0f, 1e-4f);
    EXPECT_NEAR(ahead.z, -1.0f, 1e-4f);
    // A point of the ground plane maps to a window point whose mouse ray meets the ground there.
    m_CameraTransform.m_Position = Math::Point3D(0.0f, 10.0f, 10.0f);
    m_Camera.ViewVector = Math::Vector3D(0.0f, -1.0f, -1.0f);
    Frame();
    const Math::Point2D at = m_Engine.Point3DTo2D(Math::Point3D(2.0f, 0.0f, -1.0f));
    const Math::Point3D ground = m_Engine.GetMousePos(Math::Vector2D(at.x / 3.2f, at.y / 1.8f));
    EXPECT_NEAR(ground.x, 2.0f, 1e-3f);
    EXPECT_NEAR(ground.y, 0.0f, 1e-3f);
    EXPECT_NEAR(ground.z, -1.0f, 1e-3f);
}
