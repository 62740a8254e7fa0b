#include "platform/gl/GlDevice.h"

#include "platform/gl/GlContext.h"
#include "platform/gl/GlTranslate.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace Platform
{
using namespace Graphics;

namespace
{
void Refuse(const char* what)
{
    std::fprintf(stderr, "GraphicsDevice: %s\n", what);
}

// Forgets errors of earlier calls, so that the next glGetError speaks of the next call only.
void ForgetErrors()
{
    while (glGetError() != GL_NO_ERROR)
    {
    }
}

std::uint32_t FullMipCount(std::uint32_t width, std::uint32_t height)
{
    std::uint32_t levels = 1;
    for (std::uint32_t size = std::max(width, height); size > 1; size /= 2)
        ++levels;
    return levels;
}
}

bool ContextHasCompute(int version, bool hasComputeExtension)
{
    return version >= 43 || hasComputeExtension;
}

std::unique_ptr<GraphicsDevice> CreateGlDevice(GlContext& context)
{
    if (!context.IsCreated())
        return nullptr;
    return std::make_unique<GlDevice>(context);
}

GlDevice::GlDevice(GlContext& context) : m_Context(context)
{
    m_Context.MakeCurrent();
    m_SupportsCompute = ContextHasCompute(context.Version(), epoxy_has_gl_extension("GL_ARB_compute_shader"));
    m_HasAnisotropy = context.Version() >= 46 || epoxy_has_gl_extension("GL_ARB_texture_filter_anisotropic") ||
                      epoxy_has_gl_extension("GL_EXT_texture_filter_anisotropic");
    m_HasMinMaxReduction = epoxy_has_gl_extension("GL_ARB_texture_filter_minmax");
    glCreateVertexArrays(1, &m_EmptyLayout);
    glBindVertexArray(m_EmptyLayout);
    m_BoundLayout = m_EmptyLayout;
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glEnable(GL_FRAMEBUFFER_SRGB);
    glEnable(GL_TEXTURE_CUBE_MAP_SEAMLESS);
    m_PrimitiveMode = GL_TRIANGLES;
    m_IndexType = GL_UNSIGNED_SHORT;
    SetRasterizerState({});
    SetDepthStencilState({}, 0);
    SetBlendState({}, {0, 0, 0, 0}, 0xFFFFFFFF);
}

GlDevice::~GlDevice()
{
    m_Context.MakeCurrent();
    glBindVertexArray(0);
    glBindProgramPipeline(0);
    glBindFramebuffer(GL_FRAMEBUFFER, 0);
    for (auto& [name, record] : m_Buffers)
        glDeleteBuffers(1, &name);
    for (auto& [name, owner] : m_ViewOwners)
        glDeleteTextures(1, &name);
    for (auto& [name, record] : m_Textures)
        glDeleteTextures(1, &name);
    for (auto& [name, record] : m_Targets)
        glDeleteFramebuffers(1, &name);
    for (auto& [name, stage] : m_StagePrograms)
        glDeleteProgram(name);
    for (auto& [name, record] : m_Layouts)
        glDeleteVertexArrays(1, &name);
    if (!m_Samplers.empty())
        glDeleteSamplers(static_cast<GLsizei>(m_Samplers.size()), m_Samplers.data());
    if (!m_Pipelines.empty())
        glDeleteProgramPipelines(static_cast<GLsizei>(m_Pipelines.size()), m_Pipelines.data());
    glDeleteVertexArrays(1, &m_EmptyLayout);
}

std::string GlDevice::Describe() const
{
    const auto* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    const auto* version = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    return std::string(renderer != nullptr ? renderer : "?") + ", OpenGL " + (version != nullptr ? version : "?");
}

BufferHandle GlDevice::CreateBuffer(const BufferDesc& desc, const void* initialData)
{
    if (desc.size == 0)
    {
        Refuse("a buffer of 0 bytes cannot be made");
        return {};
    }
    ForgetErrors();
    GLuint name = 0;
    glCreateBuffers(1, &name);
    const GLenum usage = desc.usage == BufferUsage::Dynamic ? GL_DYNAMIC_DRAW : GL_STATIC_DRAW;
    glNamedBufferData(name, desc.size, initialData, usage);
    if (glGetError() != GL_NO_ERROR)
    {
        Refuse("the driver refused the buffer");
        glDeleteBuffers(1, &name);
        return {};
    }
    m_Buffers[name] = BufferRecord{desc, false};
    return BufferHandle{name};
}

void GlDevice::UpdateSubresource(BufferHandle buffer, const void* data, std::uint32_t offset, std::uint32_t size)
{
    auto found = m_Buffers.find(buffer.id);
    if (found == m_Buffers.end() || data == nullptr)
        return;
    const BufferRecord& record = found->second;
    if (record.mapped || offset > record.desc.size || size > record.desc.size - offset)
    {
        Refuse("a buffer write out of range or into a mapped buffer was refused");
        return;
    }
    glNamedBufferSubData(buffer.id, offset, size, data);
}

void* GlDevice::Map(BufferHandle buffer, MapMode mode)
{
    auto found = m_Buffers.find(buffer.id);
    if (found == m_Buffers.end())
        return nullptr;
    BufferRecord& record = found->second;
    if (record.desc.usage != BufferUsage::Dynamic || record.mapped)
    {
        Refuse("only a dynamic buffer that is not mapped already can be mapped");
        return nullptr;
    }
    GLbitfield access = GL_MAP_WRITE_BIT;
    access |= mode == MapMode::WriteDiscard ? GL_MAP_INVALIDATE_BUFFER_BIT : GL_MAP_UNSYNCHRONIZED_BIT;
    void* memory = glMapNamedBufferRange(buffer.id, 0, record.desc.size, access);
    record.mapped = memory != nullptr;
    return memory;
}

void GlDevice::Unmap(BufferHandle buffer)
{
    auto found = m_Buffers.find(buffer.id);
    if (found == m_Buffers.end() || !found->second.mapped)
        return;
    glUnmapNamedBuffer(buffer.id);
    found->second.mapped = false;
}

std::vector<std::uint8_t> GlDevice::ReadBuffer(BufferHandle buffer)
{
    auto found = m_Buffers.find(buffer.id);
    if (found == m_Buffers.end() || found->second.mapped)
        return {};
    std::vector<std::uint8_t> bytes(found->second.desc.size);
    glGetNamedBufferSubData(buffer.id, 0, static_cast<GLsizeiptr>(bytes.size()), bytes.data());
    return bytes;
}

void GlDevice::DestroyBuffer(BufferHandle buffer)
{
    auto found = m_Buffers.find(buffer.id);
    if (found == m_Buffers.end())
        return;
    glDeleteBuffers(1, &buffer.id);
    m_Buffers.erase(found);
}

TextureHandle GlDevice::CreateTexture2D(const TextureDesc& desc, const void* initialData)
{
    const Gl::FormatInfo format = Gl::TextureFormat(desc.format);
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (format.internalFormat == 0 || desc.width == 0 || desc.height == 0 ||
        desc.width > static_cast<std::uint32_t>(largest) || desc.height > static_cast<std::uint32_t>(largest))
    {
        Refuse("a texture of an unknown format or size cannot be made");
        return {};
    }
    const std::uint32_t fullChain = FullMipCount(desc.width, desc.height);
    const std::uint32_t levels = desc.mipLevels == 0 ? fullChain : std::min(desc.mipLevels, fullChain);
    GLuint name = 0;
    glCreateTextures(GL_TEXTURE_2D, 1, &name);
    glTextureStorage2D(name, static_cast<GLsizei>(levels), format.internalFormat, static_cast<GLsizei>(desc.width),
                       static_cast<GLsizei>(desc.height));
    if (format.depth)
        glTextureParameteri(name, GL_TEXTURE_COMPARE_MODE, GL_NONE);
    TextureRecord record;
    record.desc = desc;
    record.levels = levels;
    m_Textures[name] = record;
    if (initialData != nullptr)
        UpdateTexture2D(TextureHandle{name}, initialData);
    return TextureHandle{name};
}

TextureHandle GlDevice::CreateTexture3D(const TextureDesc& desc, std::uint32_t depth)
{
    const Gl::FormatInfo format = Gl::TextureFormat(desc.format);
    GLint largest = 0;
    glGetIntegerv(GL_MAX_3D_TEXTURE_SIZE, &largest);
    const auto limit = static_cast<std::uint32_t>(largest);
    if (format.internalFormat == 0 || format.depth || desc.width == 0 || desc.height == 0 || depth == 0 ||
        desc.width > limit || desc.height > limit || depth > limit)
    {
        Refuse("a 3D texture of an unknown format or size cannot be made");
        return {};
    }
    ForgetErrors();
    GLuint name = 0;
    glCreateTextures(GL_TEXTURE_3D, 1, &name);
    glTextureStorage3D(name, 1, format.internalFormat, static_cast<GLsizei>(desc.width),
                       static_cast<GLsizei>(desc.height), static_cast<GLsizei>(depth));
    if (glGetError() != GL_NO_ERROR)
    {
        Refuse("the driver refused the 3D texture");
        glDeleteTextures(1, &name);
        return {};
    }
    TextureRecord record;
    record.desc = desc;
    record.desc.mipLevels = 1;
    record.levels = 1;
    record.depth = depth;
    m_Textures[name] = record;
    return TextureHandle{name};
}

std::vector<std::uint8_t> GlDevice::ReadTexture3D(TextureHandle texture)
{
    auto found = m_Textures.find(texture.id);
    if (found == m_Textures.end() || found->second.depth == 0)
        return {};
    const TextureDesc& desc = found->second.desc;
    const Gl::FormatInfo format = Gl::TextureFormat(desc.format);
    std::vector<std::uint8_t> texels(static_cast<std::size_t>(desc.width) * desc.height * found->second.depth *
                                     format.bytesPerTexel);
    glMemoryBarrier(GL_TEXTURE_UPDATE_BARRIER_BIT);
    glGetTextureImage(texture.id, 0, format.pixelFormat, format.pixelType, static_cast<GLsizei>(texels.size()),
                      texels.data());
    return texels;
}

void GlDevice::UpdateTexture2D(TextureHandle texture, const void* data)
{
    auto found = m_Textures.find(texture.id);
    if (found == m_Textures.end() || data == nullptr || found->second.depth != 0)
        return;
    const TextureDesc& desc = found->second.desc;
    const Gl::FormatInfo format = Gl::TextureFormat(desc.format);
    glTextureSubImage2D(texture.id, 0, 0, 0, static_cast<GLsizei>(desc.width), static_cast<GLsizei>(desc.height),
                        format.pixelFormat, format.pixelType, data);
}

void GlDevice::GenerateMips(TextureHandle texture)
{
    if (m_Textures.count(texture.id) != 0)
        glGenerateTextureMipmap(texture.id);
}

TextureViewHandle GlDevice::CreateTextureView(TextureHandle texture, Format format)
{
    auto found = m_Textures.find(texture.id);
    const Gl::FormatInfo info = Gl::TextureFormat(format);
    if (found == m_Textures.end() || info.internalFormat == 0 || found->second.depth != 0)
        return {};
    GLuint name = 0;
    glGenTextures(1, &name);
    ForgetErrors();
    glTextureView(name, GL_TEXTURE_2D, texture.id, info.internalFormat, 0, found->second.levels, 0, 1);
    if (glGetError() != GL_NO_ERROR)
    {
        Refuse("a texture view of an incompatible format was refused");
        glDeleteTextures(1, &name);
        return {};
    }
    found->second.views.push_back(name);
    m_ViewOwners[name] = texture.id;
    return TextureViewHandle{name};
}

TextureViewHandle GlDevice::DefaultView(TextureHandle texture) const
{
    return m_Textures.count(texture.id) != 0 ? TextureViewHandle{texture.id} : TextureViewHandle{};
}

void GlDevice::DestroyTextureView(TextureViewHandle view)
{
    auto owner = m_ViewOwners.find(view.id);
    if (owner == m_ViewOwners.end())
        return;
    auto texture = m_Textures.find(owner->second);
    if (texture != m_Textures.end())
        std::erase(texture->second.views, view.id);
    glDeleteTextures(1, &view.id);
    m_ViewOwners.erase(owner);
}

void GlDevice::DestroyTexture(TextureHandle texture)
{
    auto found = m_Textures.find(texture.id);
    if (found == m_Textures.end())
        return;
    for (std::uint32_t view : std::vector<std::uint32_t>(found->second.views))
        DestroyTextureView(TextureViewHandle{view});
    glDeleteTextures(1, &texture.id);
    m_Textures.erase(texture.id);
}

RenderTargetHandle GlDevice::CreateRenderTarget(const RenderTargetDesc& desc)
{
    if (desc.colours.size() > 8)
    {
        Refuse("a render target has at most 8 colour targets");
        return {};
    }
    TargetRecord record;
    GLuint name = 0;
    glCreateFramebuffers(1, &name);
    std::vector<GLenum> drawBuffers;
    for (std::size_t i = 0; i < desc.colours.size(); ++i)
    {
        auto texture = m_Textures.find(desc.colours[i].id);
        if (texture == m_Textures.end())
            continue;
        glNamedFramebufferTexture(name, GL_COLOR_ATTACHMENT0 + static_cast<GLenum>(i), texture->first, 0);
        drawBuffers.resize(i + 1, GL_NONE);
        drawBuffers[i] = GL_COLOR_ATTACHMENT0 + static_cast<GLenum>(i);
        record.width = static_cast<int>(texture->second.desc.width);
        record.height = static_cast<int>(texture->second.desc.height);
    }
    if (auto depth = m_Textures.find(desc.depth.id); depth != m_Textures.end())
    {
        glNamedFramebufferTexture(name, GL_DEPTH_ATTACHMENT, depth->first, 0);
        record.width = static_cast<int>(depth->second.desc.width);
        record.height = static_cast<int>(depth->second.desc.height);
    }
    if (drawBuffers.empty())
        glNamedFramebufferDrawBuffer(name, GL_NONE);
    else
        glNamedFramebufferDrawBuffers(name, static_cast<GLsizei>(drawBuffers.size()), drawBuffers.data());
    record.colourCount = static_cast<std::uint32_t>(drawBuffers.size());
    if (glCheckNamedFramebufferStatus(name, GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
    {
        Refuse("the render target is incomplete");
        glDeleteFramebuffers(1, &name);
        return {};
    }
    m_Targets[name] = record;
    return RenderTargetHandle{name};
}

void GlDevice::DestroyRenderTarget(RenderTargetHandle target)
{
    auto found = m_Targets.find(target.id);
    if (found == m_Targets.end())
        return;
    if (m_BoundTarget == target.id)
        BindRenderTarget({});
    glDeleteFramebuffers(1, &target.id);
    m_Targets.erase(found);
}

void GlDevice::BindRenderTarget(RenderTargetHandle target)
{
    const std::uint32_t name = m_Targets.count(target.id) != 0 ? target.id : 0;
    glBindFramebuffer(GL_FRAMEBUFFER, name);
    // The window's picture is R8G8B8A8_UNORM, as a swap chain's: it stores what is written, even where
    // the driver made it sRGB-capable. sRGB targets encode on write.
    if (name == 0)
        glDisable(GL_FRAMEBUFFER_SRGB);
    else
        glEnable(GL_FRAMEBUFFER_SRGB);
    m_BoundTarget = name;
}

void GlDevice::ClearColor(std::uint32_t index, const std::array<float, 4>& color)
{
    // A clear writes every channel of the whole target, whatever the masks and scissor say.
    glColorMaski(index, GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDisable(GL_SCISSOR_TEST);
    glClearNamedFramebufferfv(m_BoundTarget, GL_COLOR, static_cast<GLint>(index), color.data());
    ApplyWriteMasks();
    if (m_CurrentRasterizer.scissorEnable)
        glEnable(GL_SCISSOR_TEST);
}

void GlDevice::ClearDepth(float depth)
{
    glDepthMask(GL_TRUE);
    glDisable(GL_SCISSOR_TEST);
    glClearNamedFramebufferfv(m_BoundTarget, GL_DEPTH, 0, &depth);
    glDepthMask(m_CurrentDepthStencil.depthWrite ? GL_TRUE : GL_FALSE);
    if (m_CurrentRasterizer.scissorEnable)
        glEnable(GL_SCISSOR_TEST);
}

void GlDevice::SetViewport(const Viewport& viewport)
{
    glViewportIndexedf(0, viewport.x, viewport.y, viewport.width, viewport.height);
    glDepthRangeIndexed(0, viewport.minDepth, viewport.maxDepth);
}

void GlDevice::SetScissor(int x, int y, int width, int height)
{
    glScissorIndexed(0, x, y, std::max(width, 0), std::max(height, 0));
}

std::vector<std::uint8_t> GlDevice::ReadPixels(RenderTargetHandle target, std::uint32_t index, int x, int y,
                                               int width, int height)
{
    if (width <= 0 || height <= 0 || x < 0 || y < 0)
        return {};
    auto found = m_Targets.find(target.id);
    if (target && (found == m_Targets.end() || index >= found->second.colourCount ||
                   x + width > found->second.width || y + height > found->second.height))
    {
        Refuse("pixels outside the render target cannot be read");
        return {};
    }
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    if (target)
    {
        // Row 0 of a target's memory is its top row.
        glNamedFramebufferReadBuffer(target.id, GL_COLOR_ATTACHMENT0 + index);
        glBindFramebuffer(GL_READ_FRAMEBUFFER, target.id);
        glReadPixels(x, y, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    }
    else
    {
        // The window counts rows from the bottom: read there and turn the rows over.
        int windowWidth = 0;
        int windowHeight = 0;
        m_Context.DrawableSize(windowWidth, windowHeight);
        if (x + width > windowWidth || y + height > windowHeight)
        {
            Refuse("pixels outside the window cannot be read");
            return {};
        }
        glBindFramebuffer(GL_READ_FRAMEBUFFER, 0);
        glReadPixels(x, windowHeight - y - height, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
        const std::size_t row = static_cast<std::size_t>(width) * 4;
        for (int top = 0, bottom = height - 1; top < bottom; ++top, --bottom)
            std::swap_ranges(pixels.begin() + top * row, pixels.begin() + (top + 1) * row,
                             pixels.begin() + bottom * row);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, m_BoundTarget);
    return pixels;
}

SamplerHandle GlDevice::CreateSampler(const SamplerDesc& desc)
{
    GLuint name = 0;
    glCreateSamplers(1, &name);
    const Gl::FilterInfo filter = Gl::DecomposeFilter(desc.filter);
    glSamplerParameteri(name, GL_TEXTURE_MIN_FILTER, filter.minFilter);
    glSamplerParameteri(name, GL_TEXTURE_MAG_FILTER, filter.magFilter);
    glSamplerParameteri(name, GL_TEXTURE_WRAP_S, Gl::AddressMode(desc.addressU));
    glSamplerParameteri(name, GL_TEXTURE_WRAP_T, Gl::AddressMode(desc.addressV));
    glSamplerParameteri(name, GL_TEXTURE_WRAP_R, Gl::AddressMode(desc.addressW));
    glSamplerParameterf(name, GL_TEXTURE_LOD_BIAS, desc.mipLodBias);
    glSamplerParameterf(name, GL_TEXTURE_MIN_LOD, desc.minLod);
    glSamplerParameterf(name, GL_TEXTURE_MAX_LOD, desc.maxLod);
    glSamplerParameterfv(name, GL_TEXTURE_BORDER_COLOR, desc.borderColor.data());
    glSamplerParameteri(name, GL_TEXTURE_COMPARE_MODE, filter.comparison ? GL_COMPARE_REF_TO_TEXTURE : GL_NONE);
    glSamplerParameteri(name, GL_TEXTURE_COMPARE_FUNC, static_cast<GLint>(Gl::ComparisonFunc(desc.comparison)));
    if (m_HasAnisotropy)
    {
        const float anisotropy = filter.anisotropic ? static_cast<float>(std::clamp(desc.maxAnisotropy, 1u, 16u)) : 1.0f;
        glSamplerParameterf(name, GL_TEXTURE_MAX_ANISOTROPY_EXT, anisotropy);
    }
    // Minimum and maximum filters need the driver's reduction modes; without them they filter plainly.
    if (m_HasMinMaxReduction && filter.reduction != 0)
        glSamplerParameteri(name, GL_TEXTURE_REDUCTION_MODE_ARB, filter.reduction == 1 ? GL_MIN : GL_MAX);
    m_Samplers.push_back(name);
    return SamplerHandle{name};
}

void GlDevice::DestroySampler(SamplerHandle sampler)
{
    auto found = std::find(m_Samplers.begin(), m_Samplers.end(), sampler.id);
    if (found == m_Samplers.end())
        return;
    glDeleteSamplers(1, &sampler.id);
    m_Samplers.erase(found);
}
}
