#include "platform/gl/GlDevice.h"

#include "platform/gl/GlContext.h"
#include "platform/gl/GlReflection.h"
#include "platform/gl/GlTranslate.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>

namespace Platform
{
using namespace Graphics;

namespace
{
GLenum StageEnum(ShaderStage stage)
{
    switch (stage)
    {
    case ShaderStage::Vertex:
        return GL_VERTEX_SHADER;
    case ShaderStage::Geometry:
        return GL_GEOMETRY_SHADER;
    case ShaderStage::Hull:
        return GL_TESS_CONTROL_SHADER;
    case ShaderStage::Domain:
        return GL_TESS_EVALUATION_SHADER;
    case ShaderStage::Pixel:
        return GL_FRAGMENT_SHADER;
    case ShaderStage::Compute:
        return GL_COMPUTE_SHADER;
    }
    return GL_VERTEX_SHADER;
}

GLbitfield StageBit(ShaderStage stage)
{
    switch (stage)
    {
    case ShaderStage::Vertex:
        return GL_VERTEX_SHADER_BIT;
    case ShaderStage::Geometry:
        return GL_GEOMETRY_SHADER_BIT;
    case ShaderStage::Hull:
        return GL_TESS_CONTROL_SHADER_BIT;
    case ShaderStage::Domain:
        return GL_TESS_EVALUATION_SHADER_BIT;
    case ShaderStage::Pixel:
        return GL_FRAGMENT_SHADER_BIT;
    case ShaderStage::Compute:
        return GL_COMPUTE_SHADER_BIT;
    }
    return 0;
}

std::string ProgramLog(GLuint program)
{
    GLint length = 0;
    glGetProgramiv(program, GL_INFO_LOG_LENGTH, &length);
    if (length <= 1)
        return {};
    std::string log(static_cast<std::size_t>(length), '\0');
    glGetProgramInfoLog(program, length, nullptr, log.data());
    log.resize(static_cast<std::size_t>(length - 1));
    return log;
}

std::string PipelineLog(GLuint pipeline)
{
    GLint length = 0;
    glGetProgramPipelineiv(pipeline, GL_INFO_LOG_LENGTH, &length);
    if (length <= 1)
        return {};
    std::string log(static_cast<std::size_t>(length), '\0');
    glGetProgramPipelineInfoLog(pipeline, length, nullptr, log.data());
    log.resize(static_cast<std::size_t>(length - 1));
    return log;
}

void Toggle(GLenum capability, bool on)
{
    if (on)
        glEnable(capability);
    else
        glDisable(capability);
}
}

BlendStateHandle GlDevice::CreateBlendState(const BlendDesc& desc)
{
    m_BlendStates.push_back(desc);
    return BlendStateHandle{static_cast<std::uint32_t>(m_BlendStates.size())};
}

RasterizerStateHandle GlDevice::CreateRasterizerState(const RasterizerDesc& desc)
{
    m_RasterizerStates.push_back(desc);
    return RasterizerStateHandle{static_cast<std::uint32_t>(m_RasterizerStates.size())};
}

DepthStencilStateHandle GlDevice::CreateDepthStencilState(const DepthStencilDesc& desc)
{
    m_DepthStencilStates.push_back(desc);
    return DepthStencilStateHandle{static_cast<std::uint32_t>(m_DepthStencilStates.size())};
}

void GlDevice::ApplyWriteMasks()
{
    for (GLuint i = 0; i < 8; ++i)
    {
        const RenderTargetBlendDesc& target =
            m_CurrentBlend.independentBlend ? m_CurrentBlend.renderTargets[i] : m_CurrentBlend.renderTargets[0];
        glColorMaski(i, (target.writeMask & 1) != 0, (target.writeMask & 2) != 0, (target.writeMask & 4) != 0,
                     (target.writeMask & 8) != 0);
    }
}

void GlDevice::SetBlendState(BlendStateHandle state, const std::array<float, 4>& blendFactor,
                             std::uint32_t sampleMask)
{
    // An empty handle is the default state, as on the other device.
    m_CurrentBlend = state.id >= 1 && state.id <= m_BlendStates.size() ? m_BlendStates[state.id - 1] : BlendDesc{};
    for (GLuint i = 0; i < 8; ++i)
    {
        const RenderTargetBlendDesc& target =
            m_CurrentBlend.independentBlend ? m_CurrentBlend.renderTargets[i] : m_CurrentBlend.renderTargets[0];
        if (target.blendEnable)
            glEnablei(GL_BLEND, i);
        else
            glDisablei(GL_BLEND, i);
        glBlendFuncSeparatei(i, Gl::BlendFactor(target.srcBlend), Gl::BlendFactor(target.destBlend),
                             Gl::BlendFactor(target.srcBlendAlpha), Gl::BlendFactor(target.destBlendAlpha));
        glBlendEquationSeparatei(i, Gl::BlendOperation(target.blendOp), Gl::BlendOperation(target.blendOpAlpha));
    }
    ApplyWriteMasks();
    Toggle(GL_SAMPLE_ALPHA_TO_COVERAGE, m_CurrentBlend.alphaToCoverage);
    glBlendColor(blendFactor[0], blendFactor[1], blendFactor[2], blendFactor[3]);
    Toggle(GL_SAMPLE_MASK, sampleMask != 0xFFFFFFFF);
    glSampleMaski(0, sampleMask);
}

void GlDevice::SetRasterizerState(RasterizerStateHandle state)
{
    m_CurrentRasterizer = state.id >= 1 && state.id <= m_RasterizerStates.size()
                              ? m_RasterizerStates[state.id - 1]
                              : RasterizerDesc{};
    const RasterizerDesc& desc = m_CurrentRasterizer;
    glPolygonMode(GL_FRONT_AND_BACK, desc.fillMode == FillMode::Wireframe ? GL_LINE : GL_FILL);
    Toggle(GL_CULL_FACE, desc.cullMode != CullMode::None);
    glCullFace(desc.cullMode == CullMode::Front ? GL_FRONT : GL_BACK);
    // GL's facing test makes up for the upper-left clip origin itself, so clockwise here is
    // clockwise on the screen, as Direct3D counts it.
    glFrontFace(desc.frontCounterClockwise ? GL_CCW : GL_CW);
    const bool offset = desc.depthBias != 0 || desc.slopeScaledDepthBias != 0.0f;
    Toggle(GL_POLYGON_OFFSET_FILL, offset);
    Toggle(GL_POLYGON_OFFSET_LINE, offset);
    glPolygonOffset(desc.slopeScaledDepthBias, static_cast<float>(desc.depthBias));
    Toggle(GL_DEPTH_CLAMP, !desc.depthClipEnable);
    Toggle(GL_SCISSOR_TEST, desc.scissorEnable);
    Toggle(GL_MULTISAMPLE, desc.multisampleEnable);
    Toggle(GL_LINE_SMOOTH, desc.antialiasedLineEnable);
}

void GlDevice::SetDepthStencilState(DepthStencilStateHandle state, std::uint32_t stencilRef)
{
    m_CurrentDepthStencil = state.id >= 1 && state.id <= m_DepthStencilStates.size()
                                ? m_DepthStencilStates[state.id - 1]
                                : DepthStencilDesc{};
    const DepthStencilDesc& desc = m_CurrentDepthStencil;
    Toggle(GL_DEPTH_TEST, desc.depthEnable);
    glDepthMask(desc.depthWrite ? GL_TRUE : GL_FALSE);
    glDepthFunc(Gl::ComparisonFunc(desc.depthFunc));
    Toggle(GL_STENCIL_TEST, desc.stencilEnable);
    const auto face = [&](GLenum side, const StencilFaceDesc& ops) {
        glStencilFuncSeparate(side, Gl::ComparisonFunc(ops.func), static_cast<GLint>(stencilRef),
                              desc.stencilReadMask);
        glStencilOpSeparate(side, Gl::StencilOperation(ops.failOp), Gl::StencilOperation(ops.depthFailOp),
                            Gl::StencilOperation(ops.passOp));
    };
    face(GL_FRONT, desc.frontFace);
    face(GL_BACK, desc.backFace);
    glStencilMask(desc.stencilWriteMask);
}

void GlDevice::SetPrimitiveTopology(PrimitiveTopology topology)
{
    m_PrimitiveMode = Gl::PrimitiveMode(topology);
    if (const int points = Gl::PatchControlPoints(topology); points > 0)
        glPatchParameteri(GL_PATCH_VERTICES, points);
}

StageCompileResult GlDevice::CompileStage(ShaderStage stage, const std::string& source)
{
    StageCompileResult result;
    if (stage == ShaderStage::Compute && !m_SupportsCompute)
    {
        result.log = "compute shaders are not available on this device";
        return result;
    }
    const char* text = source.c_str();
    const GLuint program = glCreateShaderProgramv(StageEnum(stage), 1, &text);
    if (program == 0)
    {
        result.log = "the driver could not make a program for the stage";
        return result;
    }
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    result.log = ProgramLog(program);
    if (linked != GL_TRUE)
    {
        if (result.log.empty())
            result.log = "the stage did not compile";
        glDeleteProgram(program);
        return result;
    }
    m_StagePrograms[program] = stage;
    result.program = StageProgramHandle{program};
    return result;
}

void GlDevice::DestroyStageProgram(StageProgramHandle program)
{
    if (m_StagePrograms.erase(program.id) != 0)
        glDeleteProgram(program.id);
}

ProgramReflection GlDevice::Reflect(StageProgramHandle program)
{
    if (m_StagePrograms.count(program.id) == 0)
        return {};
    return Gl::ReflectProgram(program.id);
}

PipelineHandle GlDevice::CreatePipeline(const PipelineDesc& desc, std::string& log)
{
    log.clear();
    const StageProgramHandle stages[] = {desc.vertex, desc.geometry, desc.hull, desc.domain, desc.pixel, desc.compute};
    const ShaderStage kinds[] = {ShaderStage::Vertex, ShaderStage::Geometry, ShaderStage::Hull,
                                 ShaderStage::Domain, ShaderStage::Pixel,    ShaderStage::Compute};
    bool any = false;
    for (int i = 0; i < 6; ++i)
    {
        if (!stages[i])
            continue;
        auto found = m_StagePrograms.find(stages[i].id);
        if (found == m_StagePrograms.end() || found->second != kinds[i])
        {
            log = "a stage program is missing or of another stage";
            return {};
        }
        any = true;
    }
    if (!any)
    {
        log = "a pipeline needs at least one stage";
        return {};
    }
    GLuint pipeline = 0;
    glCreateProgramPipelines(1, &pipeline);
    for (int i = 0; i < 6; ++i)
    {
        if (stages[i])
            glUseProgramStages(pipeline, StageBit(kinds[i]), stages[i].id);
    }
    glValidateProgramPipeline(pipeline);
    GLint valid = GL_FALSE;
    glGetProgramPipelineiv(pipeline, GL_VALIDATE_STATUS, &valid);
    log = PipelineLog(pipeline);
    if (valid != GL_TRUE)
    {
        if (log.empty())
            log = "the stages do not fit together";
        glDeleteProgramPipelines(1, &pipeline);
        return {};
    }
    m_Pipelines.push_back(pipeline);
    return PipelineHandle{pipeline};
}

void GlDevice::DestroyPipeline(PipelineHandle pipeline)
{
    auto found = std::find(m_Pipelines.begin(), m_Pipelines.end(), pipeline.id);
    if (found == m_Pipelines.end())
        return;
    glDeleteProgramPipelines(1, &pipeline.id);
    m_Pipelines.erase(found);
}

void GlDevice::BindPipeline(PipelineHandle pipeline)
{
    glUseProgram(0);
    const bool known = std::find(m_Pipelines.begin(), m_Pipelines.end(), pipeline.id) != m_Pipelines.end();
    glBindProgramPipeline(known ? pipeline.id : 0);
}

InputLayoutHandle GlDevice::CreateInputLayout(const std::vector<InputElementDesc>& elements)
{
    GLuint vao = 0;
    glCreateVertexArrays(1, &vao);
    std::uint32_t nextOffset[16] = {};
    for (const InputElementDesc& element : elements)
    {
        const Gl::VertexFormatInfo format = Gl::VertexFormat(element.format);
        if (format.components == 0 || element.slot >= 16 || element.location >= 16)
        {
            std::fprintf(stderr, "GraphicsDevice: an input element of an unknown format or slot was refused\n");
            glDeleteVertexArrays(1, &vao);
            return {};
        }
        const std::uint32_t offset = element.offset == kAppendAligned ? nextOffset[element.slot] : element.offset;
        nextOffset[element.slot] = offset + format.bytes;
        glEnableVertexArrayAttrib(vao, element.location);
        if (format.integer)
            glVertexArrayAttribIFormat(vao, element.location, format.components, format.type, offset);
        else
            glVertexArrayAttribFormat(vao, element.location, format.components, format.type,
                                      format.type == GL_UNSIGNED_BYTE ? GL_TRUE : GL_FALSE, offset);
        glVertexArrayAttribBinding(vao, element.location, element.slot);
        glVertexArrayBindingDivisor(vao, element.slot, element.perInstance ? 1 : 0);
    }
    m_Layouts[vao] = LayoutRecord{elements};
    return InputLayoutHandle{vao};
}

void GlDevice::DestroyInputLayout(InputLayoutHandle layout)
{
    if (m_Layouts.erase(layout.id) == 0)
        return;
    if (m_BoundLayout == layout.id)
        BindInputLayout({});
    glDeleteVertexArrays(1, &layout.id);
}

void GlDevice::BindInputLayout(InputLayoutHandle layout)
{
    m_BoundLayout = m_Layouts.count(layout.id) != 0 ? layout.id : m_EmptyLayout;
    glBindVertexArray(m_BoundLayout);
}

void GlDevice::BindVertexBuffer(std::uint32_t slot, BufferHandle buffer, std::uint32_t stride, std::uint32_t offset)
{
    if (slot >= 16)
        return;
    const GLuint name = m_Buffers.count(buffer.id) != 0 ? buffer.id : 0;
    glVertexArrayVertexBuffer(m_BoundLayout, slot, name, offset, static_cast<GLsizei>(stride));
}

void GlDevice::BindIndexBuffer(BufferHandle buffer, bool indices32)
{
    const GLuint name = m_Buffers.count(buffer.id) != 0 ? buffer.id : 0;
    glVertexArrayElementBuffer(m_BoundLayout, name);
    m_IndexType = indices32 ? GL_UNSIGNED_INT : GL_UNSIGNED_SHORT;
    m_IndexSize = indices32 ? 4 : 2;
}

void GlDevice::BindUniformBuffer(std::uint32_t binding, BufferHandle buffer, std::uint32_t offset, std::uint32_t size)
{
    auto found = m_Buffers.find(buffer.id);
    if (found == m_Buffers.end())
    {
        glBindBufferBase(GL_UNIFORM_BUFFER, binding, 0);
        return;
    }
    const std::uint32_t whole = found->second.desc.size;
    if (offset >= whole)
        return;
    const std::uint32_t length = size == 0 ? whole - offset : std::min(size, whole - offset);
    glBindBufferRange(GL_UNIFORM_BUFFER, binding, buffer.id, offset, length);
}

void GlDevice::BindStorageBuffer(std::uint32_t binding, BufferHandle buffer)
{
    const GLuint name = m_Buffers.count(buffer.id) != 0 ? buffer.id : 0;
    glBindBufferBase(GL_SHADER_STORAGE_BUFFER, binding, name);
}

void GlDevice::BindTexture(std::uint32_t unit, TextureViewHandle view)
{
    const bool known = m_Textures.count(view.id) != 0 || m_ViewOwners.count(view.id) != 0;
    glBindTextureUnit(unit, known ? view.id : 0);
}

void GlDevice::BindSampler(std::uint32_t unit, SamplerHandle sampler)
{
    const bool known = std::find(m_Samplers.begin(), m_Samplers.end(), sampler.id) != m_Samplers.end();
    glBindSampler(unit, known ? sampler.id : 0);
}

void GlDevice::BindImage(std::uint32_t unit, TextureHandle texture, ImageAccess access)
{
    auto found = m_Textures.find(texture.id);
    if (found == m_Textures.end())
    {
        glBindImageTexture(unit, 0, 0, GL_FALSE, 0, GL_READ_ONLY, GL_RGBA8);
        return;
    }
    const GLenum mode = access == ImageAccess::ReadOnly    ? GL_READ_ONLY
                        : access == ImageAccess::WriteOnly ? GL_WRITE_ONLY
                                                           : GL_READ_WRITE;
    // A 3D texture is bound whole (every slice), a 2D one as its single layer.
    const GLboolean layered = found->second.depth != 0 ? GL_TRUE : GL_FALSE;
    glBindImageTexture(unit, texture.id, 0, layered, 0, mode,
                       Gl::TextureFormat(found->second.desc.format).internalFormat);
}

void GlDevice::Draw(std::uint32_t vertexCount, std::uint32_t startVertex)
{
    glDrawArrays(m_PrimitiveMode, static_cast<GLint>(startVertex), static_cast<GLsizei>(vertexCount));
}

void GlDevice::DrawIndexed(std::uint32_t indexCount, std::uint32_t startIndex, std::int32_t baseVertex)
{
    const auto offset = static_cast<std::uintptr_t>(startIndex) * m_IndexSize;
    glDrawElementsBaseVertex(m_PrimitiveMode, static_cast<GLsizei>(indexCount), m_IndexType,
                             reinterpret_cast<const void*>(offset), baseVertex);
}

void GlDevice::DrawInstanced(std::uint32_t vertexCount, std::uint32_t instanceCount, std::uint32_t startVertex,
                             std::uint32_t startInstance)
{
    glDrawArraysInstancedBaseInstance(m_PrimitiveMode, static_cast<GLint>(startVertex),
                                      static_cast<GLsizei>(vertexCount), static_cast<GLsizei>(instanceCount),
                                      startInstance);
}

void GlDevice::DrawIndexedInstanced(std::uint32_t indexCount, std::uint32_t instanceCount, std::uint32_t startIndex,
                                    std::int32_t baseVertex, std::uint32_t startInstance)
{
    const auto offset = static_cast<std::uintptr_t>(startIndex) * m_IndexSize;
    glDrawElementsInstancedBaseVertexBaseInstance(m_PrimitiveMode, static_cast<GLsizei>(indexCount), m_IndexType,
                                                  reinterpret_cast<const void*>(offset),
                                                  static_cast<GLsizei>(instanceCount), baseVertex, startInstance);
}

void GlDevice::Dispatch(std::uint32_t x, std::uint32_t y, std::uint32_t z)
{
    if (m_SupportsCompute)
        glDispatchCompute(x, y, z);
}

void GlDevice::Barrier()
{
    glMemoryBarrier(GL_ALL_BARRIER_BITS);
}

void GlDevice::Finish()
{
    glFinish();
}

void GlDevice::Present()
{
    m_Context.Swap();
}
}
