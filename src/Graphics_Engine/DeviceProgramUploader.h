// Graphics::DeviceProgramUploader: a program's Apply and Unbind carried out on
// the graphics device. A constant buffer's shadow goes into its stage's device
// buffer; texture slots bind texture views (sampler uniforms) or storage
// buffers (storage blocks), unordered slots bind images for reading and
// writing, each at the binding point reflection found. A slot holding 0 clears
// its unit; a sampler uniform no sampler block names reads with the
// texture's own parameters (no sampler object). BindAll binds everything a
// program's stages hold, as drawing with the program needs after another
// program was bound.
#pragma once

#include "Graphics_Engine/GraphicsDevice.h"
#include "Graphics_Engine/ProgramBindings.h"
#include "Graphics_Engine/ProgramUploader.h"
#include "Graphics_Engine/StageBindingPoints.h"

#include <array>

namespace Graphics
{
class DeviceProgramUploader final : public ProgramUploader
{
public:
    // Uploads and binds through `device`, for the stages given (null for an absent one).
    DeviceProgramUploader(GraphicsDevice& device, const std::array<const StageDeviceObjects*, kStageCount>& stages);

    void UploadConstantBuffer(int stage, unsigned index, const ConstantBuffer& buffer) override;
    void BindTextures(int stage, const std::vector<ResourceHandle>& slots) override;
    void BindUnordered(int stage, const std::vector<ResourceHandle>& slots) override;

    // Binds the constant buffers, samplers and slots of every stage in `reflections`.
    void BindAll(const std::array<StageReflection*, kStageCount>& reflections);

private:
    GraphicsDevice& m_Device;
    std::array<const StageDeviceObjects*, kStageCount> m_Stages;
};
}
