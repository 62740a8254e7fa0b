// Graphics::ProgramUploader: what a program's Apply and Unbind ask of the
// device. The device implements it; tests implement it with a fake that
// records the calls.
#pragma once

#include "Graphics_Engine/ResourceHandle.h"
#include "Graphics_Engine/StageReflection.h"

#include <vector>

namespace Graphics
{
class ProgramUploader
{
public:
    virtual ~ProgramUploader() = default;
    // Uploads the shadow of constant buffer `index` of stage `stage`.
    virtual void UploadConstantBuffer(int stage, unsigned index, const ConstantBuffer& buffer) = 0;
    // Binds the texture slots of stage `stage` (0 clears a slot).
    virtual void BindTextures(int stage, const std::vector<ResourceHandle>& slots) = 0;
    // Binds the unordered slots of stage `stage` (0 clears a slot).
    virtual void BindUnordered(int stage, const std::vector<ResourceHandle>& slots) = 0;
};
}
