// The device's sampler description of a shader file's sampler block: the
// D3D11_FILTER number, address modes, level-of-detail range, bias,
// anisotropy, comparison function and border colour carry over as they are;
// numbers outside their enumerations fall back to the block's defaults.
#pragma once

#include "Graphics_Engine/DeviceTypes.h"
#include "Graphics_Engine/SamplerDescription.h"

namespace Graphics
{
// The device sampler that `description` asks for.
SamplerDesc ToDeviceSampler(const SamplerDescription& description);
}
