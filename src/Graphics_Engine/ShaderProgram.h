// Graphics::ShaderProgram: shader stages combined into one device pipeline,
// with the vertex input format of its vertex stage and the bindings that link
// the names its stages declare to the variable table. Bind makes it current
// (pipeline, input format, then every stage's buffers, samplers and views);
// Apply, before each draw, copies what moved in the table and uploads only
// what changed; Unbind clears the texture and image units it set, so that a
// target read as a texture can be drawn into again. A program whose vertex or
// pixel stage is missing, or whose stages failed, is not Loaded and is not
// drawn. Link runs again whenever one of its stages was recompiled.
#pragma once

#include "Graphics_Engine/DeviceProgramUploader.h"
#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/ProgramBindings.h"
#include "Graphics_Engine/Shader.h"
#include "Graphics_Engine/VariableTable.h"

#include <array>
#include <memory>
#include <string>
#include <type_traits>

namespace Graphics
{
class ShaderProgram
{
public:
    // A program numbered `id` of the given stages (null for an absent one), vertex to compute.
    ShaderProgram(GraphicsDevice& device, const VariableTable& table, unsigned id,
                  const std::array<Shader*, kStageCount>& stages);
    // Releases the pipeline.
    ~ShaderProgram();
    ShaderProgram(const ShaderProgram&) = delete;
    ShaderProgram& operator=(const ShaderProgram&) = delete;

    // Makes the pipeline from the stages' current programs and links the names; sets Loaded.
    bool Link();
    // True when `shader` is one of its stages.
    bool Uses(const Shader* shader) const;

    // Binds the pipeline, the input format and everything the stages hold.
    void Bind();
    // Copies what moved in the variable table and uploads what changed, through the device.
    void Apply();
    // The same, through `uploader` (a recording wrapper, say).
    void Apply(ProgramUploader& uploader);
    // Clears the texture and image units the program set.
    void Unbind();
    // The same, through `uploader`.
    void Unbind(ProgramUploader& uploader);

    // Writes a variable local to this program; ignored when no stage declares it.
    void SetVariable(const std::string& name, const void* bytes, std::size_t size);
    // Writes a plain value local to this program (a float, an array of floats, ...) as its bytes stand.
    template <typename T>
    void SetVariable(const std::string& name, const T& value)
    {
        static_assert(std::is_trivially_copyable_v<T>, "write classes through their bytes");
        SetVariable(name, &value, sizeof(T));
    }
    // Puts a texture view (or storage buffer) into the slots of that name.
    void SetTexture(const std::string& name, ResourceHandle view);
    // Puts an image into the unordered slots of that name.
    void SetUnordered(const std::string& name, ResourceHandle view);

    // The uploader that carries Apply and Unbind out on the device.
    DeviceProgramUploader& Uploader() { return *m_Uploader; }

    // The program's number, from the manager's counter.
    unsigned Id = 0;
    // True when the program can draw (or dispatch).
    bool Loaded = false;
    // The pixel stage asked for the forward pass.
    bool Forward = false;
    // The vertex stage reads the instance stream.
    bool Instanced = false;
    // The stages, vertex, geometry, hull, domain, pixel, compute; null for absent ones.
    std::array<Shader*, kStageCount> Stages{};
    // The device pipeline.
    PipelineHandle Pipeline;
    // The vertex input format, shared with the vertex stage.
    InputLayoutHandle InputLayout;
    // The names of the stages and their links to the variable table.
    ProgramBindings Bindings;

private:
    GraphicsDevice& m_Device;
    const VariableTable& m_Table;
    std::array<StageReflection*, kStageCount> m_Reflections{};
    std::unique_ptr<DeviceProgramUploader> m_Uploader;
};
}
