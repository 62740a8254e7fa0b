#include "Graphics_Engine/ShaderManager.h"

#include "engine/Files.h"

#include <algorithm>
#include <cctype>

namespace Graphics
{
namespace
{
std::string Lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string Stem(const std::string& path)
{
    std::string name = Util::GetFileName(path);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos)
        name.erase(dot);
    return name;
}
}

ShaderManager::ShaderManager(GraphicsDevice& device, const VariableTable& table, std::string shaderFolder)
    : m_Device(device), m_Table(table), m_Folder(std::move(shaderFolder))
{
    if (m_Folder.empty())
        m_Folder = Util::GetDataDirectory() + "Shaders/";
    if (m_Folder.back() != '/')
        m_Folder += '/';
}

ShaderManager::~ShaderManager()
{
    m_Programs.clear();
    m_ComputePrograms.clear();
}

void ShaderManager::LoadAll()
{
    std::vector<std::string> folders;
    Util::ListFolders(m_Folder, folders);
    for (const std::string& folder : folders)
    {
        std::vector<std::string> files;
        Util::ListFiles(folder, files, true);
        for (const std::string& file : files)
            if (Lower(Util::GetExtension(file)) == ".glsl" || Lower(Util::GetExtension(file)) == "glsl")
                Add(file);
    }
}

void ShaderManager::Add(const std::string& path)
{
    auto shader = std::make_unique<Shader>(m_Device, path, Lower(Stem(path)), m_Folder);
    shader->Compile();
    shader->Watch([this](Shader& changed) { Recompile(changed); });
    const int stage = shader->DeclaredStage();
    if (stage < 0 || stage >= kStageCount)
    {
        m_Failed.push_back(std::move(shader));
        return;
    }
    m_Index[stage][shader->Name()] = m_Shaders[stage].size();
    m_Shaders[stage].push_back(std::move(shader));
}

std::size_t ShaderManager::IndexOf(int stage, const std::string& name) const
{
    const auto found = m_Index[stage].find(Lower(name));
    return found == m_Index[stage].end() ? m_Shaders[stage].size() : found->second;
}

Shader* ShaderManager::Find(int stage, const std::string& name) const
{
    if (stage < 0 || stage >= kStageCount)
        return nullptr;
    const std::size_t index = IndexOf(stage, name);
    return index < m_Shaders[stage].size() ? m_Shaders[stage][index].get() : nullptr;
}

ShaderProgram* ShaderManager::GetProgram(const std::string& vertex, const std::string& geometry,
                                         const std::string& hull, const std::string& domain,
                                         const std::string& pixel)
{
    const std::string* names[5] = {&vertex, &geometry, &hull, &domain, &pixel};
    ProgramKey key{};
    std::array<Shader*, kStageCount> stages{};
    for (int stage = 0; stage < 5; ++stage)
    {
        key[stage] = IndexOf(stage, *names[stage]);
        stages[stage] = key[stage] < m_Shaders[stage].size() ? m_Shaders[stage][key[stage]].get() : nullptr;
    }
    auto found = m_Programs.find(key);
    if (found != m_Programs.end())
        return found->second.get();
    auto program = std::make_unique<ShaderProgram>(m_Device, m_Table, m_NextProgramId++, stages);
    program->Link();
    return m_Programs.emplace(key, std::move(program)).first->second.get();
}

ShaderProgram* ShaderManager::GetCompute(const std::string& name)
{
    const std::size_t index = IndexOf(StageCompute, name);
    auto found = m_ComputePrograms.find(index);
    if (found != m_ComputePrograms.end())
        return found->second.get();
    std::array<Shader*, kStageCount> stages{};
    if (index < m_Shaders[StageCompute].size())
        stages[StageCompute] = m_Shaders[StageCompute][index].get();
    auto program = std::make_unique<ShaderProgram>(m_Device, m_Table, m_NextProgramId++, stages);
    program->Link();
    return m_ComputePrograms.emplace(index, std::move(program)).first->second.get();
}

void ShaderManager::Recompile(const std::string& name)
{
    const std::string lower = Lower(name);
    for (auto& list : m_Shaders)
        for (auto& shader : list)
            if (shader->Name() == lower)
                Recompile(*shader);
}

bool ShaderManager::Recompile(Shader& shader)
{
    if (!shader.Compile())
        return false;
    for (auto& [key, program] : m_Programs)
        if (program->Uses(&shader))
            program->Link();
    for (auto& [index, program] : m_ComputePrograms)
        if (program->Uses(&shader))
            program->Link();
    return true;
}

std::vector<ShaderProgram*> ShaderManager::Programs() const
{
    std::vector<ShaderProgram*> programs;
    for (const auto& [key, program] : m_Programs)
        programs.push_back(program.get());
    for (const auto& [index, program] : m_ComputePrograms)
        programs.push_back(program.get());
    return programs;
}
}
