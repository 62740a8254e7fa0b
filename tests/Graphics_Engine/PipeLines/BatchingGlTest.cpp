// The instance stream on a real OpenGL context (offscreen driver): meshes drawn
// through the batching and the instance buffer by a small program that reads
// its rows with the shared include Data/Shaders/Instancing.glsl.
#include "Graphics_Engine/PipeLines/Batching.h"

#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/Components/MeshResources.h"
#include "Graphics_Engine/Components/TexturedMesh.h"
#include "Graphics_Engine/Material/Texture/TextureManager.h"
#include "Graphics_Engine/Model/BuiltInModels.h"
#include "Graphics_Engine/Model/ModelManager.h"
#include "Graphics_Engine/PipeLines/InstanceBuffer/InstanceBuffer.h"
#include "Graphics_Engine/Shader.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "platform/gl/GlTestDevice.h"

#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

using namespace Graphics;
using namespace GlTest;

namespace
{
const std::string kShaderFolder = std::string(VORN_DATA_DIR) + "/Shaders/";

// Places each instance's cube by its world matrix in a picture 8 units across (x and y from -4 to 4)
// and colours it with its diffuse row.
const char* kVertex = R"(
__ShaderDesc { Type Vertex EntryPoint main Flag Instanced }
#include "Instancing.glsl"
out gl_PerVertex { vec4 gl_Position; };
layout(location = 0) in vec3 a_Position;
layout(location = 1) in vec3 a_Normal;
layout(location = 2) in vec3 a_Tangent;
layout(location = 3) in vec2 a_UV;
layout(location = 0) out vec4 v_Colour;
layout(location = 1) out vec2 v_UV;
layout(location = 2) out vec3 v_Normal;
layout(location = 3) out vec3 v_Tangent;
void main()
{
    vec4 world = vec4(a_Position, 1.0) * InstanceWorld();
    gl_Position = vec4(world.x / 4.0, world.y / 4.0, 0.5, 1.0);
    v_Colour = InstanceDiffuse();
    v_UV = a_UV;
    v_Normal = a_Normal * mat3(InstanceInverseTranspose());
    v_Tangent = a_Tangent;
}
)";

const char* kColourPixel = R"(
__ShaderDesc { Type Pixel EntryPoint main }
layout(location = 0) in vec4 v_Colour;
layout(location = 0) out vec4 o_Colour;
void main() { o_Colour = v_Colour; }
)";

const char* kTexturedPixel = R"(
__ShaderDesc { Type Pixel EntryPoint main }
layout(binding = 0) uniform sampler2D t_DiffuseTexture;
layout(location = 0) in vec4 v_Colour;
layout(location = 1) in vec2 v_UV;
layout(location = 0) out vec4 o_Colour;
void main() { o_Colour = texture(t_DiffuseTexture, v_UV) * v_Colour; }
)";

bool Near(const Rgba& pixel, const Rgba& expected)
{
    for (int i = 0; i < 4; ++i)
        if (std::abs(int(pixel[i]) - int(expected[i])) > 2)
            return false;
    return true;
}

// The pixel at the centre of a unit cube placed at (x, y).
Rgba CubeCentre(GraphicsDevice& device, const Target& target, float x, float y)
{
    return PixelAt(device, target.target, int((x / 4.0f + 1.0f) * 32.0f), int((1.0f - y / 4.0f) * 32.0f));
}

class BatchingGlTest : public GlDeviceFixture
{
protected:
    void SetUp() override
    {
        GlDeviceFixture::SetUp();
        m_Models = std::make_unique<ModelManager>(*m_Device);
        m_Models->Initialize(m_Data.Path());
        const ModelGeometry cube = MakeCube();
        m_Models->CreateModel("crate", cube.vertices, cube.indices);
        m_Textures = std::make_unique<TextureManager>(*m_Device);
        m_Textures->InitTextureManager(std::string(VORN_DATA_DIR) + "/");
        SetMeshModels(m_Models.get());
        SetMeshTextures(m_Textures.get());
        m_Vertex = std::make_unique<Shader>(*m_Device, kShaderFolder + "TestInstanced.glsl", "testinstanced",
                                            kShaderFolder);
        m_Colour = std::make_unique<Shader>(*m_Device, kShaderFolder + "TestColour.glsl", "testcolour", kShaderFolder);
        m_Textured =
            std::make_unique<Shader>(*m_Device, kShaderFolder + "TestTextured.glsl", "testtextured", kShaderFolder);
        ASSERT_TRUE(m_Vertex->CompileSource(kVertex));
        ASSERT_TRUE(m_Colour->CompileSource(kColourPixel));
        ASSERT_TRUE(m_Textured->CompileSource(kTexturedPixel));
        m_ColourProgram = std::make_unique<ShaderProgram>(
            *m_Device, m_Table, 1, std::array<Shader*, kStageCount>{m_Vertex.get(), nullptr, nullptr, nullptr, m_Colour.get(), nullptr});
        m_TexturedProgram = std::make_unique<ShaderProgram>(
            *m_Device, m_Table, 2, std::array<Shader*, kStageCount>{m_Vertex.get(), nullptr, nullptr, nullptr, m_Textured.get(), nullptr});
        ASSERT_TRUE(m_ColourProgram->Link());
        ASSERT_TRUE(m_TexturedProgram->Link());
        m_Instances = std::make_unique<InstanceBuffer>(*m_Device);
        m_Instances->BuildBuffer();
        ASSERT_TRUE(m_Instances->Buffer);
    }
    void TearDown() override
    {
        SetMeshModels(nullptr);
        SetMeshTextures(nullptr);
        m_Instances.reset();
        m_ColourProgram.reset();
        m_TexturedProgram.reset();
        m_Vertex.reset();
        m_Colour.reset();
        m_Textured.reset();
        m_Textures.reset();
        m_Models.reset();
        GlDeviceFixture::TearDown();
    }

    // A fresh target, bound, cleared to black, with culling and depth off.
    Target BeginPicture()
    {
        const Target target = MakeTarget(*m_Device);
        RasterizerDesc rasterizer;
        rasterizer.cullMode = CullMode::None;
        DepthStencilDesc depth;
        depth.depthEnable = false;
        m_Device->BindRenderTarget(target.target);
        m_Device->SetViewport({0, 0, kSize, kSize, 0, 1});
        m_Device->ClearColor(0, {0, 0, 0, 1});
        m_Device->SetRasterizerState(m_Device->CreateRasterizerState(rasterizer));
        m_Device->SetDepthStencilState(m_Device->CreateDepthStencilState(depth), 0);
        return target;
    }
    // A mesh of `model` drawn by `program`, resolved already.
    template <class T = Mesh>
    std::unique_ptr<T> MakeMesh(const std::string& model, ShaderProgram& program, const Math::Color& colour)
    {
        auto mesh = std::make_unique<T>();
        mesh->SetModel(model);
        mesh->Material.Diffuse = colour;
        mesh->m_ShaderComponent.m_Shader = &program;
        mesh->m_ShaderComponent.m_Dirty = false;
        return mesh;
    }

    TempFolder m_Data;
    VariableTable m_Table;
    std::unique_ptr<ModelManager> m_Models;
    std::unique_ptr<TextureManager> m_Textures;
    std::unique_ptr<Shader> m_Vertex;
    std::unique_ptr<Shader> m_Colour;
    std::unique_ptr<Shader> m_Textured;
    std::unique_ptr<ShaderProgram> m_ColourProgram;
    std::unique_ptr<ShaderProgram> m_TexturedProgram;
    std::unique_ptr<InstanceBuffer> m_Instances;
};
}

TEST_F(BatchingGlTest, TheInstancingIncludeCompilesIntoAnInstancedVertexStage)
{
    EXPECT_TRUE(m_ColourProgram->Loaded);
    EXPECT_TRUE(m_ColourProgram->Instanced);
    ASSERT_NE(m_Vertex->Stage(), nullptr);
    ASSERT_EQ(m_Vertex->Stage()->Included.size(), 1u);
    EXPECT_NE(m_Vertex->Stage()->Included[0].find("Instancing.glsl"), std::string::npos);
}

TEST_F(BatchingGlTest, InstancedAndOneByOneCubesShowTheirMaterialColours)
{
    const Target target = BeginPicture();
    // 95 crates in one key: the first 90 go out in one draw, the rest after a discard. Only the first
    // and the last stand in the picture.
    auto red = MakeMesh("crate", *m_ColourProgram, Math::Color(1, 0, 0, 1));
    auto hidden = MakeMesh("crate", *m_ColourProgram, Math::Color(1, 1, 1, 1));
    auto green = MakeMesh("crate", *m_ColourProgram, Math::Color(0, 1, 0, 1));
    std::vector<DrawRecord> crates = {{Math::Matrix4::Translation(-3, 2, 0), red.get()}};
    for (int i = 0; i < 93; ++i)
        crates.push_back({Math::Matrix4::Translation(100, 100, 0), hidden.get()});
    crates.push_back({Math::Matrix4::Translation(-1, 2, 0), green.get()});
    ASSERT_NE(red->GetModelId(), 0u);
    DrawDeferredKey(crates, nullptr, *m_Device, *m_Instances);

    // Two cubes of the built-in model, drawn one by one behind what the crates left in the buffer.
    auto blue = MakeMesh("box", *m_ColourProgram, Math::Color(0, 0, 1, 1));
    auto yellow = MakeMesh("box", *m_ColourProgram, Math::Color(1, 1, 0, 1));
    ASSERT_EQ(blue->GetModelId(), 0u);
    DrawDeferredKey({{Math::Matrix4::Translation(1, 2, 0), blue.get()}, {Math::Matrix4::Translation(3, 2, 0), yellow.get()}},
                    nullptr, *m_Device, *m_Instances);
    m_Device->Finish();

    EXPECT_EQ(m_Instances->Cursor, 5u * 11u + 2u * 11u);
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, -3, 2), {255, 0, 0, 255}));
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, -1, 2), {0, 255, 0, 255}));
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, 1, 2), {0, 0, 255, 255}));
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, 3, 2), {255, 255, 0, 255}));
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, 0, -2), {0, 0, 0, 255}));
    // A cube is one unit wide: 8 pixels of 64.
    EXPECT_TRUE(Near(PixelAt(*m_Device, target.target, 8 + 5, 16), {0, 0, 0, 255}));
}

TEST_F(BatchingGlTest, ScaleAndLocalRotationReachThePicture)
{
    const Target target = BeginPicture();
    auto wide = MakeMesh("crate", *m_ColourProgram, Math::Color(0, 1, 1, 1));
    // A quarter turn about z makes the cube's local y scale of 3 the picture's width.
    wide->Rotation = Math::Quaternion(0, 0, 0.70710678f, 0.70710678f);
    const Math::Matrix4 world(1, 0, 0, 0, 0, 3, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
    const Math::Matrix4 second = Math::Matrix4::Translation(0, -3, 0);
    DrawDeferredKey({{world, wide.get()}, {second, wide.get()}}, nullptr, *m_Device, *m_Instances);
    m_Device->Finish();
    // Rotation first: the unit cube turns (no change of shape), then y is scaled by 3: tall, not wide.
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, 0, 1.2f), {0, 255, 255, 255}));
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, 1.0f, 0), {0, 0, 0, 255}));
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, 0, -3), {0, 255, 255, 255}));
}

TEST_F(BatchingGlTest, ATexturedMeshDrawsWithItsMaterialsTexture)
{
    const Target target = BeginPicture();
    auto white = MakeMesh<TexturedMesh>("box", *m_TexturedProgram, Math::Color(0, 1, 0, 1));
    white->Material.DiffuseTexture = "White.png";
    auto missing = MakeMesh<TexturedMesh>("box", *m_TexturedProgram, Math::Color(1, 1, 1, 1));
    missing->Material.DiffuseTexture = "no such texture";
    DrawDeferredKey({{Math::Matrix4::Translation(-2, 0, 0), white.get()}, {Math::Matrix4::Translation(2, 0, 0), missing.get()}},
                    nullptr, *m_Device, *m_Instances);
    m_Device->Finish();
    EXPECT_TRUE(Near(CubeCentre(*m_Device, target, -2, 0), {0, 255, 0, 255}));
    const Rgba shown = CubeCentre(*m_Device, target, 2, 0);
    EXPECT_FALSE(Near(shown, {255, 255, 255, 255}));
    EXPECT_FALSE(Near(shown, {0, 255, 0, 255}));
}
