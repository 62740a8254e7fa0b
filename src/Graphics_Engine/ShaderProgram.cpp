#include "Graphics_Engine/ShaderProgram.h"

#include "engine/Log.h"

namespace Graphics
{
ShaderProgram::ShaderProgram(GraphicsDevice& device, const VariableTable& table, unsigned id,
                             const std::array<Shader*, kStageCount>& stages)
    : Id(id), Stages(stages), m_Device(device), m_Table(table)
{
    m_Uploader = std::make_unique<DeviceProgramUploader>(device, std::array<const StageDeviceObjects*, kStageCount>{});
}

ShaderProgram::~ShaderProgram()
{
    m_Device.DestroyPipeline(Pipeline);
}

bool ShaderProgram::Link()
{
    Loaded = false;
    m_Device.DestroyPipeline(Pipeline);
    Pipeline = {};
    InputLayout = {};
    m_Reflections = {};
    Bindings.Link(m_Reflections, m_Table);
    std::array<const StageDeviceObjects*, kStageCount> objects{};
    m_Uploader = std::make_unique<DeviceProgramUploader>(m_Device, objects);

    const bool compute = Stages[StageCompute] != nullptr;
    if (!compute && (!Stages[StageVertex] || !Stages[StagePixel]))
        return false;
    PipelineDesc desc;
    StageProgramHandle* places[kStageCount] = {&desc.vertex, &desc.geometry, &desc.hull,
                                               &desc.domain, &desc.pixel,    &desc.compute};
    for (int stage = 0; stage < kStageCount; ++stage)
    {
        Shader* shader = Stages[stage];
        if (!shader)
            continue;
        CompiledStage* compiled = shader->Stage();
        if (!compiled || compiled->Description.Stage != stage)
            return false;
        *places[stage] = compiled->Program;
        m_Reflections[stage] = &compiled->Reflection;
        objects[stage] = &compiled->Objects;
    }

    std::string log;
    Pipeline = m_Device.CreatePipeline(desc, log);
    if (!Pipeline)
    {
        std::string names;
        for (Shader* shader : Stages)
            if (shader)
                names += (names.empty() ? "" : ", ") + shader->Path();
        ERROR_REPORT("Error Compiling " + names + "\nErrors: " + log);
        m_Reflections = {};
        return false;
    }
    if (Stages[StageVertex])
    {
        InputLayout = Stages[StageVertex]->Stage()->InputLayout;
        Instanced = (Stages[StageVertex]->Stage()->Description.Flags & FlagInstanced) != 0;
    }
    if (Stages[StagePixel])
        Forward = (Stages[StagePixel]->Stage()->Description.Flags & FlagForward) != 0;
    m_Uploader = std::make_unique<DeviceProgramUploader>(m_Device, objects);
    Bindings.Link(m_Reflections, m_Table);
    Loaded = true;
    return true;
}

bool ShaderProgram::Uses(const Shader* shader) const
{
    for (const Shader* stage : Stages)
        if (stage && stage == shader)
            return true;
    return false;
}

void ShaderProgram::Bind()
{
    if (!Loaded)
        return;
    m_Device.BindPipeline(Pipeline);
    m_Device.BindInputLayout(InputLayout);
    m_Uploader->BindAll(m_Reflections);
}

void ShaderProgram::Apply()
{
    Apply(*m_Uploader);
}

void ShaderProgram::Apply(ProgramUploader& uploader)
{
    if (Loaded)
        Bindings.Apply(uploader);
}

void ShaderProgram::Unbind()
{
    Unbind(*m_Uploader);
}

void ShaderProgram::Unbind(ProgramUploader& uploader)
{
    if (Loaded)
        Bindings.Unbind(uploader);
}

void ShaderProgram::SetVariable(const std::string& name, const void* bytes, std::size_t size)
{
    Bindings.SetVariable(name, bytes, size);
}

void ShaderProgram::SetTexture(const std::string& name, ResourceHandle view)
{
    Bindings.SetTexture(name, view);
}

void ShaderProgram::SetUnordered(const std::string& name, ResourceHandle view)
{
    Bindings.SetUnordered(name, view);
}
}
