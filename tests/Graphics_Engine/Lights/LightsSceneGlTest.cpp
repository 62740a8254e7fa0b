// Lights drawn end to end on a real OpenGL context (offscreen driver) with the game's shaders: a
// flat white floor seen from above at an angle, lit by one light, through the compute pass and
// through the light volumes; the pictures are compared with the shading formula and with each other.
#include "Components/Camera/Camera/Camera.h"
#include "Components/Light/Light.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/PipeLines/RenderPipeline.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "Graphics_Engine/VariableTable.h"
#include "platform/ImageDecoder.h"
#include "platform/NativeWindow.h"

#include "support/Scoped.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <vector>

using namespace Graphics;

namespace
{
const std::string kData = std::string(VORN_DATA_DIR) + "/";
constexpr int kWidth = 200;
constexpr int kHeight = 120;
// The floor's top face.
constexpr float kFloorTop = -0.95f;
// The global ambient, and so the floor's colour where no light reaches (white floor, no own ambient).
constexpr float kGlobalAmbient = 0.1f;

// One RGB8 picture, top row first.
struct Picture
{
    std::vector<std::uint8_t> rgba;
    int width = 0;
    int height = 0;
    // Channel c of pixel (x, y).
    int At(int x, int y, int c) const { return rgba[(static_cast<std::size_t>(y) * width + x) * 4 + c]; }
};

// Where the brightest pixel of a picture lies.
struct Brightest
{
    int x = 0;
    int y = 0;
    int sum = -1;
};

Brightest FindBrightest(const Picture& picture)
{
    Brightest best;
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
        {
            const int sum = picture.At(x, y, 0) + picture.At(x, y, 1) + picture.At(x, y, 2);
            if (sum > best.sum)
                best = {x, y, sum};
        }
    return best;
}

// The largest difference of any channel of any pixel between two pictures of one size.
int LargestDifference(const Picture& a, const Picture& b)
{
    int largest = 0;
    std::size_t where = 0;
    for (std::size_t i = 0; i < a.rgba.size() && i < b.rgba.size(); ++i)
        if (i % 4 != 3)
        {
            const int difference = std::abs(static_cast<int>(a.rgba[i]) - static_cast<int>(b.rgba[i]));
            if (difference > largest)
            {
                largest = difference;
                where = i / 4;
            }
        }
    if (largest > 2 && a.width > 0)
        std::fprintf(stderr, "Largest difference %d at pixel (%zu, %zu)\n", largest, where % a.width, where / a.width);
    return largest;
}

// A channel value as the lit picture stores it.
int Channel(float value)
{
    return static_cast<int>(std::lround(std::clamp(value, 0.0f, 1.0f) * 255.0f));
}

// One scene on its own window and engine: the floor, the camera, one light set up by the caller.
class LightScene
{
public:
    explicit LightScene(bool computeLighting)
    {
        m_Engine.Fullscreen = false;
        m_Engine.UseWindowSize = true;
        m_Engine.m_NoComputeLighting = !computeLighting;
        m_Window.RequestOpenGl(true);
        m_Ready = m_Window.Create("Vorn light test", kWidth, kHeight, 1, 1);
        if (!m_Ready)
            return;
        m_Engine.InitializeOn(m_Window, 1.0f, 1.0f, kData);
        m_Ready = m_Engine.Device() != nullptr;
        m_Engine.AttachSpace(m_Graphics);
        m_Graphics.GetQuadTree()->BuildGrid(Math::Point3D(-20.0f, -5.0f, -20.0f), Math::Vector3D(5.0f, 10.0f, 5.0f),
                                             8, 8);
        m_Graphics.SetGlobalAmbient(Math::Color(kGlobalAmbient, kGlobalAmbient, kGlobalAmbient, 1.0f));
        // A white floor without ambient, emissive or specular of its own.
        m_FloorTransform.m_Position = Math::Point3D(0.0f, -1.0f, 0.0f);
        m_FloorTransform.m_Scale = Math::Vector3D(30.0f, 0.1f, 30.0f);
        m_Floor.SetModel("box");
        m_Floor.Material.Diffuse = Math::Color(1.0f, 1.0f, 1.0f, 1.0f);
        m_Floor.Material.Specular = Math::Color(0.0f, 0.0f, 0.0f, 0.0f);
        m_Floor.Material.Ambient = 0.0f;
        m_Graphics.AddGraphicsComponent(1, &m_Floor, &m_FloorTransform);
        // The camera stands above and behind the origin, looking down at it.
        m_CameraTransform.m_Position = Math::Point3D(0.0f, 7.0f, 8.0f);
        m_Camera.m_Transform = &m_CameraTransform;
        m_Camera.ViewVector = Math::Vector3D(0.0f, -8.0f, -8.0f);
        m_Graphics.SetCamera(&m_Camera);
        m_Graphics.AddLight(&m_Light, &m_LightTransform);
    }
    ~LightScene()
    {
        m_Graphics.RemoveLight(&m_Light);
        m_Graphics.SetCamera(nullptr);
        m_Graphics.SetRenderLists(nullptr);
        m_Graphics.SetLightManager(nullptr);
        m_Engine.ShutdownDevice();
        m_Window.Destroy();
    }
    LightScene(const LightScene&) = delete;
    LightScene& operator=(const LightScene&) = delete;

    // Draws one frame and reads the picture it showed.
    Picture Frame()
    {
        m_Graphics.Update(0.016f);
        m_Engine.Update(0.016f);
        RenderPipeline& pipeline = *m_Engine.Pipeline();
        RenderTarget* ring[3] = {&pipeline.m_Lighting, &pipeline.Final().m_Second, &pipeline.Final().m_Third};
        const RenderTarget& shown = *ring[pipeline.LastUpscaled() % 3];
        Picture picture;
        picture.width = shown.m_Width;
        picture.height = shown.m_Height;
        picture.rgba = m_Engine.Device()->ReadPixels(shown.m_TargetViews.at(0), 0, 0, 0, shown.m_Width, shown.m_Height);
        return picture;
    }

    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
    Platform::NativeWindow m_Window;
    GraphicsEngine m_Engine;
    GraphicsSpace m_Graphics;
    Transform m_FloorTransform;
    Mesh m_Floor;
    Transform m_CameraTransform;
    Camera m_Camera;
    Transform m_LightTransform;
    Light m_Light;
    bool m_Ready = false;
};

// A point light of a known colour 1.5 above the floor, in front of the origin.
void PointLight(LightScene& scene)
{
    scene.m_LightTransform.m_Position = Math::Point3D(1.0f, 0.0f, 1.0f);
    scene.m_Light.Offset = Math::Vector3D(0.0f, 0.55f, 0.0f);
    scene.m_Light.LightType = LightType::Point;
    scene.m_Light.Diffuse = Math::Color(0.8f, 0.4f, 0.2f, 1.0f);
    scene.m_Light.Range = 6.0f;
    scene.m_Light.Attenuation = Math::Vector3D(1.0f, 0.0f, 0.1f);
}

// A wide blue point light whose range holds the camera.
void PointLightAroundTheCamera(LightScene& scene)
{
    scene.m_LightTransform.m_Position = Math::Point3D(0.0f, 5.0f, 5.0f);
    scene.m_Light.LightType = LightType::Point;
    scene.m_Light.Diffuse = Math::Color(0.1f, 0.3f, 0.9f, 1.0f);
    scene.m_Light.Range = 20.0f;
    scene.m_Light.Attenuation = Math::Vector3D(0.5f, 0.1f, 0.0f);
}

// A white directional light slanting down and away from the camera.
void DirectionalLight(LightScene& scene)
{
    scene.m_Light.LightType = LightType::Direction;
    scene.m_Light.Diffuse = Math::Color(0.5f, 0.6f, 0.7f, 1.0f);
    scene.m_Light.Ambient = Math::Color(0.05f, 0.05f, 0.05f, 1.0f);
    scene.m_Light.Direction = Math::Vector3D(0.3f, -1.0f, -0.4f);
}

// A green spot light 3 above the origin, pointing straight down with a 20 to 35 degree cone.
void SpotLight(LightScene& scene)
{
    scene.m_LightTransform.m_Position = Math::Point3D(0.0f, 2.05f, 0.0f);
    scene.m_Light.LightType = LightType::Spot;
    scene.m_Light.Diffuse = Math::Color(0.2f, 0.9f, 0.3f, 1.0f);
    scene.m_Light.Range = 10.0f;
    scene.m_Light.Direction = Math::Vector3D(0.0f, -1.0f, 0.0f);
    scene.m_Light.SpotPrams = Math::Vector3D(0.349f, 0.611f, 2.0f);
    scene.m_Light.Attenuation = Math::Vector3D(1.0f, 0.0f, 0.0f);
}

// The picture of one frame of the scene set up by `setup`, on either path.
Picture Render(bool computeLighting, const std::function<void(LightScene&)>& setup)
{
    LightScene scene(computeLighting);
    EXPECT_TRUE(scene.m_Ready);
    if (!scene.m_Ready)
        return {};
    EXPECT_EQ(scene.m_Engine.ComputeLighting, computeLighting);
    setup(scene);
    return scene.Frame();
}
}

TEST(LightsSceneGlTest, PointLightsBrightestPixelLiesUnderItAndHasItsColour)
{
    LightScene scene(true);
    ASSERT_TRUE(scene.m_Ready);
    PointLight(scene);
    const Picture picture = scene.Frame();
    ASSERT_EQ(picture.width, kWidth);
    const Brightest brightest = FindBrightest(picture);
    const Math::Point2D under = scene.m_Engine.Point3DTo2D(Math::Point3D(1.0f, kFloorTop, 1.0f));
    EXPECT_NEAR(brightest.x, under.x, 3.0);
    EXPECT_NEAR(brightest.y, under.y, 3.0);
    // Straight below, 1.5 away: ambient plus the light's colour times 1 / (1 + 0.1 * 1.5^2).
    const float reach = 1.0f / (1.0f + 0.1f * 1.5f * 1.5f);
    EXPECT_NEAR(picture.At(brightest.x, brightest.y, 0), Channel(kGlobalAmbient + 0.8f * reach), 4);
    EXPECT_NEAR(picture.At(brightest.x, brightest.y, 1), Channel(kGlobalAmbient + 0.4f * reach), 4);
    EXPECT_NEAR(picture.At(brightest.x, brightest.y, 2), Channel(kGlobalAmbient + 0.2f * reach), 4);
}

TEST(LightsSceneGlTest, SavedPngOfAPointLightOverAWhiteFloorIsBrightestUnderItInItsColour)
{
    for (const bool compute : {true, false})
    {
        SCOPED_TRACE(compute ? "compute pass" : "light volumes");
        LightScene scene(compute);
        ASSERT_TRUE(scene.m_Ready);
        PointLight(scene);
        TempFolder folder;
        const std::string path = folder.Path() + "frame.png";
        scene.m_Engine.RequestScreenshot(0, path);
        scene.Frame();
        const Platform::DecodedImage image = Platform::DecodeImageFile(path);
        ASSERT_TRUE(image.Valid()) << image.error;
        ASSERT_EQ(image.width, kWidth);
        ASSERT_EQ(image.height, kHeight);
        Picture picture;
        picture.width = image.width;
        picture.height = image.height;
        picture.rgba = image.pixels;
        const Brightest brightest = FindBrightest(picture);
        const Math::Point2D under = scene.m_Engine.Point3DTo2D(Math::Point3D(1.0f, kFloorTop, 1.0f));
        EXPECT_NEAR(brightest.x, under.x, 3.0);
        EXPECT_NEAR(brightest.y, under.y, 3.0);
        const float reach = 1.0f / (1.0f + 0.1f * 1.5f * 1.5f);
        EXPECT_NEAR(picture.At(brightest.x, brightest.y, 0), Channel(kGlobalAmbient + 0.8f * reach), 4);
        EXPECT_NEAR(picture.At(brightest.x, brightest.y, 1), Channel(kGlobalAmbient + 0.4f * reach), 4);
        EXPECT_NEAR(picture.At(brightest.x, brightest.y, 2), Channel(kGlobalAmbient + 0.2f * reach), 4);
    }
}

TEST(LightsSceneGlTest, PointLightGivesTheSamePictureThroughTheLightVolumes)
{
    const Picture compute = Render(true, PointLight);
    const Picture volumes = Render(false, PointLight);
    ASSERT_EQ(compute.rgba.size(), volumes.rgba.size());
    EXPECT_LE(LargestDifference(compute, volumes), 2);
    const Brightest a = FindBrightest(compute);
    const Brightest b = FindBrightest(volumes);
    EXPECT_NEAR(a.x, b.x, 1);
    EXPECT_NEAR(a.y, b.y, 1);
}

TEST(LightsSceneGlTest, PointLightHoldingTheCameraGivesTheSamePictureThroughItsInsideVolume)
{
    const Picture compute = Render(true, PointLightAroundTheCamera);
    const Picture volumes = Render(false, PointLightAroundTheCamera);
    ASSERT_EQ(compute.rgba.size(), volumes.rgba.size());
    EXPECT_LE(LargestDifference(compute, volumes), 2);
    // The whole floor is lit, so every pixel is brighter than the ambient.
    EXPECT_GT(compute.At(kWidth / 2, kHeight - 1, 2), Channel(kGlobalAmbient) + 20);
    EXPECT_GT(compute.At(kWidth / 2, 0, 2), Channel(kGlobalAmbient) + 20);
}

TEST(LightsSceneGlTest, LightSwitchedToNoneLeavesTheFloorAtTheAmbient)
{
    for (bool compute : {true, false})
    {
        LightScene scene(compute);
        ASSERT_TRUE(scene.m_Ready);
        PointLight(scene);
        scene.Frame();
        scene.m_Light.LightType = LightType::None;
        const Picture picture = scene.Frame();
        const int ambient = Channel(kGlobalAmbient);
        for (int y = 0; y < picture.height; y += 7)
            for (int x = 0; x < picture.width; x += 7)
                for (int c = 0; c < 3; ++c)
                    ASSERT_NEAR(picture.At(x, y, c), ambient, 1) << x << ", " << y << (compute ? " compute" : " volumes");
    }
}

TEST(LightsSceneGlTest, DirectionalLightGivesTheSamePictureOnBothPaths)
{
    const Picture compute = Render(true, DirectionalLight);
    const Picture volumes = Render(false, DirectionalLight);
    ASSERT_EQ(compute.rgba.size(), volumes.rgba.size());
    EXPECT_LE(LargestDifference(compute, volumes), 2);
    // The floor faces up; the light comes down at (0.3, -1, -0.4): N.L = 1 / |(0.3, -1, -0.4)|.
    const float lambert = 1.0f / std::sqrt(0.09f + 1.0f + 0.16f);
    EXPECT_NEAR(compute.At(kWidth / 2, kHeight / 2, 0), Channel(kGlobalAmbient + 0.05f + 0.5f * lambert), 3);
    EXPECT_NEAR(compute.At(kWidth / 2, kHeight / 2, 2), Channel(kGlobalAmbient + 0.05f + 0.7f * lambert), 3);
}

TEST(LightsSceneGlTest, SpotLightGivesTheSamePictureOnBothPaths)
{
    LightScene scene(true);
    ASSERT_TRUE(scene.m_Ready);
    SpotLight(scene);
    const Picture compute = scene.Frame();
    const Picture volumes = Render(false, SpotLight);
    ASSERT_EQ(compute.rgba.size(), volumes.rgba.size());
    EXPECT_LE(LargestDifference(compute, volumes), 2);
    // Under the spot: its whole colour; far outside the cone: the ambient alone.
    const Math::Point2D centre = scene.m_Engine.Point3DTo2D(Math::Point3D(0.0f, kFloorTop, 0.0f));
    const Math::Point2D outside = scene.m_Engine.Point3DTo2D(Math::Point3D(4.0f, kFloorTop, 0.0f));
    const int cx = static_cast<int>(centre.x);
    const int cy = static_cast<int>(centre.y);
    EXPECT_NEAR(compute.At(cx, cy, 1), Channel(kGlobalAmbient + 0.9f), 3);
    EXPECT_NEAR(compute.At(cx, cy, 0), Channel(kGlobalAmbient + 0.2f), 3);
    EXPECT_NEAR(compute.At(static_cast<int>(outside.x), static_cast<int>(outside.y), 1), Channel(kGlobalAmbient), 1);
}

TEST(LightsSceneGlTest, ResizeMakesTheLightListAgainWithOnePartialTileMorePerAxis)
{
    LightScene scene(true);
    ASSERT_TRUE(scene.m_Ready);
    LightManager& lights = scene.m_Engine.Lights();
    ASSERT_TRUE(lights.GetLightList());
    EXPECT_EQ(lights.ListWidth(), 13u);   // 200 / 16 = 12.5
    EXPECT_EQ(lights.ListHeight(), 8u);   // 120 / 16 = 7.5
    EXPECT_EQ(lights.ListDepth(), 1025u);
    scene.m_Engine.Resize(321, 160);
    EXPECT_EQ(lights.ListWidth(), 21u);
    EXPECT_EQ(lights.ListHeight(), 10u);
    ASSERT_TRUE(lights.GetLightList());
    const ResourceVariable* published = scene.m_Engine.Variables().FindResource("t3D_LightList");
    ASSERT_NE(published, nullptr);
    EXPECT_EQ(published->View, lights.GetLightListView().id);
    PointLight(scene);
    const Picture picture = scene.Frame();
    EXPECT_EQ(picture.width, 321);
    EXPECT_GT(FindBrightest(picture).sum, 3 * Channel(kGlobalAmbient) + 100);
}

TEST(LightsSceneGlTest, WithoutComputeLightingThereIsNoLightBufferOrList)
{
    LightScene scene(false);
    ASSERT_TRUE(scene.m_Ready);
    EXPECT_FALSE(scene.m_Engine.Lights().GetLightBuffer());
    EXPECT_FALSE(scene.m_Engine.Lights().GetLightList());
    EXPECT_EQ(scene.m_Engine.Lights().m_Records.size(), 1u);
}

TEST(LightsSceneGlTest, TheTileListHoldsEachTilesCountInSliceZeroAndItsLightsAfter)
{
    LightScene scene(true);
    ASSERT_TRUE(scene.m_Ready);
    PointLight(scene);
    // A second light that is off: the uploaded index of the first stays 0, the count 1.
    Light off;
    scene.m_Graphics.AddLight(&off, nullptr);
    scene.Frame();
    LightManager& lights = scene.m_Engine.Lights();
    const std::vector<std::uint8_t> texels = scene.m_Engine.Device()->ReadTexture3D(lights.GetLightList());
    const std::uint32_t width = lights.ListWidth();
    const std::uint32_t height = lights.ListHeight();
    ASSERT_EQ(texels.size(), static_cast<std::size_t>(width) * height * 1025 * 2);
    const auto at = [&](std::uint32_t x, std::uint32_t y, std::uint32_t z) {
        std::uint16_t value = 0;
        std::memcpy(&value, &texels[((static_cast<std::size_t>(z) * height + y) * width + x) * 2], 2);
        return value;
    };
    const Math::Point2D under = scene.m_Engine.Point3DTo2D(Math::Point3D(1.0f, kFloorTop, 1.0f));
    const auto tileX = static_cast<std::uint32_t>(under.x) / 16;
    const auto tileY = static_cast<std::uint32_t>(under.y) / 16;
    EXPECT_EQ(at(tileX, tileY, 0), 1u);
    EXPECT_EQ(at(tileX, tileY, 1), 0u);
    // The far corner of the floor is out of the light's range.
    EXPECT_EQ(at(0, 0, 0), 0u);
    scene.m_Graphics.RemoveLight(&off);
}

namespace
{
// The picture of a grey tile lying on the floor under the point light, drawn by the deferred pass
// or, see-through with alpha 1, by the forward pass ("ForwardPixel").
Picture TileUnderThePointLight(bool forward)
{
    LightScene scene(true);
    if (!scene.m_Ready)
        return {};
    PointLight(scene);
    Transform tileTransform;
    tileTransform.m_Position = Math::Point3D(1.0f, kFloorTop + 0.01f, 1.0f);
    tileTransform.m_Scale = Math::Vector3D(2.0f, 0.02f, 2.0f);
    Mesh tile;
    tile.SetModel("box");
    tile.Material.Diffuse = Math::Color(0.6f, 0.6f, 0.6f, 1.0f);
    tile.Material.Specular = Math::Color(0.0f, 0.0f, 0.0f, 0.0f);
    if (forward)
        tile.m_ShaderComponent.SetStage(4, "ForwardPixel");
    scene.m_Graphics.AddGraphicsComponent(2, &tile, &tileTransform);
    const Picture picture = scene.Frame();
    scene.m_Graphics.RemoveGraphicsComponent(2);
    return picture;
}
}

TEST(LightsSceneGlTest, ForwardPassLightsASeeThroughMeshFromItsTilesLightsAsTheDeferredPassWould)
{
    const Picture deferred = TileUnderThePointLight(false);
    const Picture forward = TileUnderThePointLight(true);
    ASSERT_EQ(deferred.width, kWidth);
    ASSERT_EQ(forward.width, kWidth);
    // The forward tile was drawn over the floor and lit by the point light: brighter than ambient alone.
    const Brightest brightest = FindBrightest(forward);
    const float reach = 1.0f / (1.0f + 0.1f * 1.5f * 1.5f);
    EXPECT_NEAR(forward.At(brightest.x, brightest.y, 0), Channel(0.6f * (kGlobalAmbient + 0.2f) + 0.6f * 0.8f * reach), 6);
    for (int channel = 0; channel < 3; ++channel)
        EXPECT_NEAR(forward.At(brightest.x, brightest.y, channel), deferred.At(brightest.x, brightest.y, channel), 3)
            << channel;
}
