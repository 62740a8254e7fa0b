#include "Graphics_Engine/Model/BuiltInModels.h"
#include "Graphics_Engine/Model/ModelManager.h"

#include "platform/gl/GlTestDevice.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

using namespace Graphics;
using namespace GlTest;

namespace
{
// Positions seen from a camera at `u_Eye` (uniform block 0) looking down -z, through the engine's right-handed
// projection with a 90 degree field of view (near 0.1, far 1000); the normal becomes the colour.
const char* kNormalVertex = R"(#version 450
out gl_PerVertex { vec4 gl_Position; };
layout(location = 0) in vec3 a_Position;
layout(location = 1) in vec3 a_Normal;
layout(location = 0) out vec3 v_Normal;
layout(std140, binding = 0) uniform Camera { vec4 u_Eye; };
void main()
{
    const float near = 0.1, far = 1000.0;
    vec3 p = a_Position - u_Eye.xyz;
    gl_Position = vec4(p.x, p.y, p.z * far / (near - far) + near * far / (near - far), -p.z);
    v_Normal = a_Normal;
}
)";

const char* kNormalPixel = R"(#version 450
layout(location = 0) in vec3 v_Normal;
layout(location = 0) out vec4 o_Color;
void main() { o_Color = vec4(v_Normal * 0.5 + 0.5, 1.0); }
)";

template <class T>
bool SameBytes(const std::vector<std::uint8_t>& bytes, const std::vector<T>& values)
{
    return bytes.size() == values.size() * sizeof(T) && std::memcmp(bytes.data(), values.data(), bytes.size()) == 0;
}

bool Near(const Rgba& pixel, const Rgba& expected)
{
    for (int i = 0; i < 4; ++i)
        if (std::abs(int(pixel[i]) - int(expected[i])) > 2)
            return false;
    return true;
}

class ModelGlTest : public GlDeviceFixture
{
protected:
    // Draws `model` seen from `eye` into a fresh target with back faces culled, front faces
    // counter-clockwise; gives the target.
    Target Draw(const Model& model, float eyeZ)
    {
        const Target target = MakeTarget(*m_Device);
        const StageCompileResult vs = m_Device->CompileStage(ShaderStage::Vertex, kNormalVertex);
        const StageCompileResult ps = m_Device->CompileStage(ShaderStage::Pixel, kNormalPixel);
        EXPECT_TRUE(vs.program) << vs.log;
        PipelineDesc desc;
        desc.vertex = vs.program;
        desc.pixel = ps.program;
        std::string log;
        const PipelineHandle pipeline = m_Device->CreatePipeline(desc, log);
        EXPECT_TRUE(pipeline) << log;
        const float eye[4] = {0.0f, 0.0f, eyeZ, 0.0f};
        m_Eye = m_Device->CreateBuffer({sizeof(eye), BufferKind::Uniform}, eye);
        m_Device->BindUniformBuffer(0, m_Eye);
        const InputLayoutHandle layout = m_Device->CreateInputLayout(
            {{0, Format::R32G32B32_FLOAT, 0, 0, false}, {1, Format::R32G32B32_FLOAT, 0, 12, false}});
        EXPECT_TRUE(layout);
        RasterizerDesc rasterizer;
        rasterizer.cullMode = CullMode::Back;
        rasterizer.frontCounterClockwise = true;
        m_Device->BindRenderTarget(target.target);
        m_Device->SetViewport({0, 0, kSize, kSize, 0, 1});
        m_Device->ClearColor(0, {0, 0, 0, 1});
        m_Device->ClearDepth(1.0f);
        m_Device->BindPipeline(pipeline);
        m_Device->BindInputLayout(layout);
        m_Device->SetRasterizerState(m_Device->CreateRasterizerState(rasterizer));
        m_Device->SetDepthStencilState(m_Device->CreateDepthStencilState({}), 0);
        m_Device->SetPrimitiveTopology(PrimitiveTopology::TriangleList);
        model.Bind(*m_Device);
        m_Device->DrawIndexed(static_cast<std::uint32_t>(model.Indices.size()), 0, 0);
        m_Device->Finish();
        return target;
    }

    BufferHandle m_Eye;
};
}

TEST_F(ModelGlTest, TheBuiltInModelsBuffersHoldTheirGeometryOnTheDevice)
{
    TempFolder data;
    ModelManager models(*m_Device);
    models.Initialize(data.Path());
    const ModelGeometry cube = MakeCube();
    const Model* box = models.GetModel("box");
    EXPECT_TRUE(SameBytes(m_Device->ReadBuffer(box->VertexBuffer), cube.vertices));
    EXPECT_TRUE(SameBytes(m_Device->ReadBuffer(box->IndexBuffer), cube.indices));
    const ModelGeometry sphere = MakeSphere();
    EXPECT_TRUE(SameBytes(m_Device->ReadBuffer(models.GetModel("sphere")->VertexBuffer), sphere.vertices));
    EXPECT_TRUE(SameBytes(m_Device->ReadBuffer(models.GetModel("sphere")->IndexBuffer), sphere.indices));
    const ModelGeometry quad = MakeFullScreenQuad();
    EXPECT_TRUE(SameBytes(m_Device->ReadBuffer(models.GetModel("FullScreenQuad")->VertexBuffer), quad.vertices));
    EXPECT_TRUE(SameBytes(m_Device->ReadBuffer(models.GetModel("FullScreenQuad")->IndexBuffer), quad.indices));
    const ModelGeometry skybox = MakeSkybox();
    EXPECT_TRUE(SameBytes(m_Device->ReadBuffer(models.GetModel("skybox")->IndexBuffer), skybox.indices));
}

TEST_F(ModelGlTest, TheCubeDrawnThroughBindShowsItsFrontFaceWithBackFacesCulled)
{
    TempFolder data;
    ModelManager models(*m_Device);
    models.Initialize(data.Path());
    // From z = 2.5 the +z face (normal colour 128, 128, 255) covers the middle of the picture.
    const Target target = Draw(*models.GetModel("box"), 2.5f);
    EXPECT_TRUE(Near(PixelAt(*m_Device, target.target, 32, 32), {128, 128, 255, 255}))
        << int(PixelAt(*m_Device, target.target, 32, 32)[2]);
    EXPECT_EQ(PixelAt(*m_Device, target.target, 2, 2), (Rgba{0, 0, 0, 255}));
}

TEST_F(ModelGlTest, TheSkyboxSeenFromInsideShowsTheFaceAheadWithBackFacesCulled)
{
    TempFolder data;
    ModelManager models(*m_Device);
    models.Initialize(data.Path());
    // From the centre looking down -z: the -z face, whose inward normal is +z.
    const Target target = Draw(*models.GetModel("skybox"), 0.0f);
    EXPECT_TRUE(Near(PixelAt(*m_Device, target.target, 32, 32), {128, 128, 255, 255}));
}
