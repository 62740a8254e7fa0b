#include "platform/gl/GlTestDevice.h"

#include "platform/gl/GlDevice.h"

#include <epoxy/gl.h>

#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

#include <dlfcn.h>
#include <link.h>

#include <cstring>

namespace
{
// Keeps Mesa's driver mapped to the end of the process. Unloaded at exit, its globals vanish and
// the blocks they point to look leaked to the leak checker; kept, they are reachable as they are.
int KeepDriverLoaded(dl_phdr_info* info, size_t, void*)
{
    if (info->dlpi_name != nullptr && std::strstr(info->dlpi_name, "_dri.so") != nullptr)
        dlopen(info->dlpi_name, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    return 0;
}
}

void GlDeviceFixture::SetUp()
{
    m_Window.RequestOpenGl(true);
    ASSERT_TRUE(m_Window.Create("Vorn device test", 64, 64, 1, 1));
    std::string error;
    ASSERT_TRUE(m_Context.Create(m_Window, error)) << error;
    dl_iterate_phdr(KeepDriverLoaded, nullptr);
    m_Device = Platform::CreateGlDevice(m_Context);
    ASSERT_NE(m_Device, nullptr);
}

void GlDeviceFixture::TearDown()
{
    m_Device.reset();
    m_Context.Destroy();
    m_Window.Destroy();
}

int GlDeviceFixture::SamplerParameter(Graphics::SamplerHandle sampler, unsigned parameter)
{
    GLint value = 0;
    glGetSamplerParameteriv(sampler.id, parameter, &value);
    return value;
}

float GlDeviceFixture::SamplerParameterFloat(Graphics::SamplerHandle sampler, unsigned parameter)
{
    GLfloat value = 0;
    glGetSamplerParameterfv(sampler.id, parameter, &value);
    return value;
}

int GlDeviceFixture::UniformOffset(Graphics::StageProgramHandle program, const std::string& name)
{
    const GLuint index = glGetProgramResourceIndex(program.id, GL_UNIFORM, name.c_str());
    if (index == GL_INVALID_INDEX)
        return -1;
    const GLenum property = GL_OFFSET;
    GLint offset = -1;
    glGetProgramResourceiv(program.id, GL_UNIFORM, index, 1, &property, 1, nullptr, &offset);
    return offset;
}

int GlDeviceFixture::TextureInternalFormat(Graphics::TextureHandle texture)
{
    GLint format = 0;
    glGetTextureLevelParameteriv(texture.id, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
    return format;
}

int GlDeviceFixture::TextureMipCount(Graphics::TextureHandle texture)
{
    GLint levels = 0;
    glGetTextureParameteriv(texture.id, GL_TEXTURE_IMMUTABLE_LEVELS, &levels);
    return levels;
}

std::array<int, 2> GlDeviceFixture::TextureLevelSize(Graphics::TextureHandle texture, int level)
{
    GLint width = 0;
    GLint height = 0;
    glGetTextureLevelParameteriv(texture.id, level, GL_TEXTURE_WIDTH, &width);
    glGetTextureLevelParameteriv(texture.id, level, GL_TEXTURE_HEIGHT, &height);
    return {width, height};
}

bool GlDeviceFixture::SavePng(const std::string& path, const std::vector<std::uint8_t>& rgba, int width, int height)
{
    return stbi_write_png(path.c_str(), width, height, 4, rgba.data(), width * 4) != 0;
}

namespace GlTest
{
using namespace Graphics;

Target MakeTarget(Graphics::GraphicsDevice& device)
{
    Target made;
    made.colour = device.CreateTexture2D({kSize, kSize, 1, Format::R8G8B8A8_UNORM,
                                          BindShaderResource | BindRenderTarget});
    made.depth = device.CreateTexture2D({kSize, kSize, 1, Format::R32_TYPELESS,
                                         BindShaderResource | BindDepthStencil});
    made.target = device.CreateRenderTarget({{made.colour}, made.depth});
    return made;
}

PipelineHandle MakePipeline(GraphicsDevice& device, const char* vertex, const char* pixel)
{
    const StageCompileResult vs = device.CompileStage(ShaderStage::Vertex, vertex);
    const StageCompileResult ps = device.CompileStage(ShaderStage::Pixel, pixel);
    EXPECT_TRUE(vs.program) << vs.log;
    EXPECT_TRUE(ps.program) << ps.log;
    PipelineDesc desc;
    desc.vertex = vs.program;
    desc.pixel = ps.program;
    std::string log;
    const PipelineHandle pipeline = device.CreatePipeline(desc, log);
    EXPECT_TRUE(pipeline) << log;
    return pipeline;
}

Rgba PixelAt(GraphicsDevice& device, RenderTargetHandle target, int x, int y)
{
    const std::vector<std::uint8_t> pixel = device.ReadPixels(target, 0, x, y, 1, 1);
    if (pixel.size() != 4)
        return {};
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}
}
