// Graphics::ShaderManager: every shader of the game and the programs made of
// them. LoadAll compiles each `.glsl` file of the subfolders of the shader
// folder ("Shaders/" under the data directory) and files it under its stage
// and its lower-case file stem; includes resolve from the shader folder
// itself. GetProgram combines five stages by name (empty for an absent
// stage; names in any case) into a program made once and kept; GetCompute
// does the same for a compute shader. When the file watcher reports a change
// of a shader's file or of a file it included, between frames, the shader is
// recompiled and, on success, every program that uses it is linked again
// with the new stage objects; a failed recompile keeps the old ones drawing.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/Shader.h"
#include "Graphics_Engine/ShaderProgram.h"
#include "Graphics_Engine/VariableTable.h"

#include <array>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace Graphics
{
class ShaderManager
{
public:
    // A manager drawing on `device` and `table`, with its shaders in `shaderFolder` (ending in '/');
    // empty for "Shaders/" under the data directory.
    ShaderManager(GraphicsDevice& device, const VariableTable& table, std::string shaderFolder = {});
    ~ShaderManager();
    ShaderManager(const ShaderManager&) = delete;
    ShaderManager& operator=(const ShaderManager&) = delete;

    // Compiles every shader file of the folder's subfolders and watches them.
    void LoadAll();
    // The program of these stages, made on first request; null only without a vertex or pixel name
    // known to the manager (such a program is made, not Loaded).
    ShaderProgram* GetProgram(const std::string& vertex, const std::string& geometry, const std::string& hull,
                              const std::string& domain, const std::string& pixel);
    // The program of a compute shader, made on first request.
    ShaderProgram* GetCompute(const std::string& name);
    // Recompiles the shaders of that name (any stage) and relinks the programs using them.
    void Recompile(const std::string& name);
    // Recompiles one shader and relinks the programs using it; false when the compile failed.
    bool Recompile(Shader& shader);

    // The shader of a stage by name, or null.
    Shader* Find(int stage, const std::string& name) const;
    // True when compute shaders can run (the device's answer, until the graphics engine keeps it).
    bool ComputeLighting() const { return m_Device.SupportsCompute(); }
    // The shader folder, ending in '/'.
    const std::string& Folder() const { return m_Folder; }
    // Every program made so far.
    std::vector<ShaderProgram*> Programs() const;

private:
    using ProgramKey = std::array<std::size_t, 5>;
    std::size_t IndexOf(int stage, const std::string& name) const;
    void Add(const std::string& path);

    GraphicsDevice& m_Device;
    const VariableTable& m_Table;
    std::string m_Folder;
    unsigned m_NextProgramId = 0;
    std::array<std::vector<std::unique_ptr<Shader>>, kStageCount> m_Shaders;
    std::array<std::unordered_map<std::string, std::size_t>, kStageCount> m_Index;
    std::map<ProgramKey, std::unique_ptr<ShaderProgram>> m_Programs;
    std::map<std::size_t, std::unique_ptr<ShaderProgram>> m_ComputePrograms;
    std::vector<std::unique_ptr<Shader>> m_Failed;
};
}
