#include "Graphics_Engine/Shader.h"

#include "Graphics_Engine/ReflectedInputLayout.h"
#include "Graphics_Engine/SamplerConversion.h"
#include "Graphics_Engine/ShaderIncludes.h"
#include "Graphics_Engine/ShaderPreprocessor.h"
#include "Graphics_Engine/StageReflector.h"
#include "engine/FileWatcher.h"
#include "engine/Log.h"

#include <fstream>
#include <iterator>

namespace Graphics
{
namespace
{
bool ReadWholeFile(const std::string& path, std::string& text)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    text.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    return true;
}
}

Shader::Shader(GraphicsDevice& device, std::string path, std::string name, std::string includeFolder)
    : m_Device(device), m_Path(std::move(path)), m_Name(std::move(name)), m_IncludeFolder(std::move(includeFolder))
{
}

Shader::~Shader()
{
    if (m_OnChange)
        FileWatcher::Get().Remove(this);
    if (m_Stage)
        Release(*m_Stage);
}

bool Shader::Compile()
{
    std::string text;
    if (!ReadWholeFile(m_Path, text))
    {
        ERROR_REPORT("Error Compiling " + m_Path + "\nErrors: the file cannot be read");
        return false;
    }
    m_Loaded = false;
    std::unique_ptr<CompiledStage> stage = Build(text);
    if (!stage)
        return false;
    if (m_Stage)
        Release(*m_Stage);
    m_Stage = std::move(stage);
    ++m_Generation;
    WatchFiles();
    return true;
}

bool Shader::CompileSource(const std::string& text)
{
    std::unique_ptr<CompiledStage> stage = Build(text);
    if (!stage)
        return false;
    if (m_Stage)
        Release(*m_Stage);
    m_Stage = std::move(stage);
    m_Loaded = true;
    ++m_Generation;
    WatchFiles();
    return true;
}

std::unique_ptr<CompiledStage> Shader::Build(const std::string& text)
{
    auto stage = std::make_unique<CompiledStage>();
    ShaderDescription& description = stage->Description;
    const bool preprocessed = PreprocessShader(text, m_Path, description);
    m_DeclaredStage = description.Stage;
    if (!preprocessed)
        return nullptr;
    if (description.Stage == StageNone)
    {
        ERROR_REPORT("ShaderType None returned from Preprocess");
        return nullptr;
    }
    if (description.Stage < StageVertex || description.Stage > StageCompute)
    {
        ERROR_REPORT("Unknown ShaderType returned from Preprocess");
        return nullptr;
    }

    const ExpandedShaderSource expanded = ExpandShaderIncludes(description.Source, m_Path, m_IncludeFolder);
    if (!expanded.Ok)
        return nullptr;
    stage->Included = expanded.Included;

    const auto deviceStage = static_cast<ShaderStage>(description.Stage);
    StageCompileResult compiled = m_Device.CompileStage(deviceStage, WithVersionLine(expanded.Text));
    if (!compiled.program)
    {
        if (compiled.log.empty())
            ERROR_REPORT("Failed to create shader.");
        else
            ERROR_REPORT("Error Compiling " + m_Path + "\nErrors: " + compiled.log);
        return nullptr;
    }
    stage->Program = compiled.program;

    for (const SamplerDescription& sampler : description.Samplers)
        stage->BlockSamplers.push_back(m_Device.CreateSampler(ToDeviceSampler(sampler)));

    const ProgramReflection reflection = m_Device.Reflect(stage->Program);
    if (!ReflectStage(reflection, description, stage->Reflection, stage->Objects.Points))
        ERROR_REPORT("Error Reflecting " + m_Path + "\nError Code: a member lies outside its uniform block");
    for (const ConstantBuffer& buffer : stage->Reflection.ConstantBuffers)
    {
        BufferDesc desc;
        desc.size = static_cast<std::uint32_t>(buffer.Shadow.size());
        desc.kind = BufferKind::Uniform;
        desc.usage = BufferUsage::Default;
        stage->Objects.ConstantBuffers.push_back(m_Device.CreateBuffer(desc, buffer.Shadow.data()));
    }
    for (const StageSampler& sampler : stage->Reflection.Samplers)
    {
        SamplerHandle handle;
        if (sampler.Description)
            handle = stage->BlockSamplers[static_cast<std::size_t>(sampler.Description - description.Samplers.data())];
        stage->Objects.Samplers.push_back(handle);
    }

    if (description.Stage == StageVertex)
    {
        stage->InputFormat = InputLayoutOf(reflection);
        stage->InputLayout = m_Device.CreateInputLayout(DeviceInputElements(reflection, stage->InputFormat));
        if (!stage->InputLayout)
        {
            ERROR_REPORT("Failed To Create the Input Layout");
            Release(*stage);
            return nullptr;
        }
    }
    return stage;
}

void Shader::Release(CompiledStage& stage)
{
    m_Device.DestroyStageProgram(stage.Program);
    for (BufferHandle buffer : stage.Objects.ConstantBuffers)
        m_Device.DestroyBuffer(buffer);
    for (SamplerHandle sampler : stage.BlockSamplers)
        m_Device.DestroySampler(sampler);
    m_Device.DestroyInputLayout(stage.InputLayout);
    stage = CompiledStage{};
}

void Shader::Watch(std::function<void(Shader&)> onChange)
{
    m_OnChange = std::move(onChange);
    WatchFiles();
}

void Shader::WatchFiles()
{
    if (!m_OnChange)
        return;
    FileWatcher& watcher = FileWatcher::Get();
    watcher.Remove(this);
    std::vector<std::string> files;
    if (!m_Loaded)
        files.push_back(m_Path);
    if (m_Stage)
        files.insert(files.end(), m_Stage->Included.begin(), m_Stage->Included.end());
    for (const std::string& file : files)
        watcher.Add(file, false, this, [this](const std::string&) { m_OnChange(*this); });
}
}
