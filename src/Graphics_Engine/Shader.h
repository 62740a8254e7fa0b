// Graphics::Shader: one compiled stage of a shader file. Compile reads the
// file (or takes the text it was given), preprocesses it, expands its
// includes from the shader folder, puts the `#version` line first, compiles
// it through the device and reflects it into name tables, with a device
// buffer per constant buffer, a sampler object per sampler block and, for a
// vertex stage, the vertex input format. A compile that fails keeps what an
// earlier compile made, so a broken edit leaves the old stage drawing.
//
// A shader watches its own file and every file it included; when one changes,
// the function given with Watch runs (the manager recompiles and relinks).
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/InputLayout.h"
#include "Graphics_Engine/ShaderDescription.h"
#include "Graphics_Engine/StageBindingPoints.h"
#include "Graphics_Engine/StageReflection.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Graphics
{
// What one successful compile made.
struct CompiledStage
{
    // The description blocks and the source the compiler saw.
    ShaderDescription Description;
    // The device's stage program.
    StageProgramHandle Program;
    // The name tables.
    StageReflection Reflection;
    // Device buffers, samplers and binding points.
    StageDeviceObjects Objects;
    // The sampler object of each sampler block, in file order.
    std::vector<SamplerHandle> BlockSamplers;
    // The vertex input format (vertex stage only).
    std::vector<InputElement> InputFormat;
    // The device's vertex input format (vertex stage only).
    InputLayoutHandle InputLayout;
    // Every file the includes read.
    std::vector<std::string> Included;
};

class Shader
{
public:
    // A shader of the file at `path`, known as `name`, whose includes resolve from `includeFolder`.
    Shader(GraphicsDevice& device, std::string path, std::string name, std::string includeFolder);
    // Releases the device objects and the watches.
    ~Shader();
    Shader(const Shader&) = delete;
    Shader& operator=(const Shader&) = delete;

    // Reads the file and compiles it; false (with the reason reported) when it failed.
    bool Compile();
    // Compiles `text` instead of the file; the shader is then Loaded.
    bool CompileSource(const std::string& text);
    // Watches the file and its includes, calling `onChange` on the main thread when one changes.
    void Watch(std::function<void(Shader&)> onChange);

    // True once a compile succeeded.
    bool Compiled() const { return m_Stage != nullptr; }
    // True when the source was given as text rather than read from the file.
    bool Loaded() const { return m_Loaded; }
    // The file's path.
    const std::string& Path() const { return m_Path; }
    // The name it is filed under (the lower-case stem).
    const std::string& Name() const { return m_Name; }
    // The last successful compile, or null.
    CompiledStage* Stage() const { return m_Stage.get(); }
    // The stage number of the last successful compile (StageNone before).
    int StageNumber() const { return m_Stage ? m_Stage->Description.Stage : StageNone; }
    // The stage the file's description named at the last attempt, compiled or not (StageNone when none).
    int DeclaredStage() const { return m_DeclaredStage; }
    // How many compiles have succeeded; a new stage program each time.
    unsigned Generation() const { return m_Generation; }

private:
    std::unique_ptr<CompiledStage> Build(const std::string& text);
    void Release(CompiledStage& stage);
    void WatchFiles();

    GraphicsDevice& m_Device;
    std::string m_Path;
    std::string m_Name;
    std::string m_IncludeFolder;
    bool m_Loaded = false;
    unsigned m_Generation = 0;
    int m_DeclaredStage = StageNone;
    std::unique_ptr<CompiledStage> m_Stage;
    std::function<void(Shader&)> m_OnChange;
};
}
