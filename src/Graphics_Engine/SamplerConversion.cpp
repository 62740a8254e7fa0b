#include "Graphics_Engine/SamplerConversion.h"

#include <algorithm>

namespace Graphics
{
namespace
{
AddressMode Address(int mode)
{
    return mode >= 1 && mode <= 5 ? static_cast<AddressMode>(mode) : AddressMode::Clamp;
}
}

SamplerDesc ToDeviceSampler(const SamplerDescription& description)
{
    SamplerDesc desc;
    desc.filter = description.Filter >= 0 ? static_cast<std::uint32_t>(description.Filter) : 0x15u;
    desc.addressU = Address(description.AddressU);
    desc.addressV = Address(description.AddressV);
    desc.addressW = Address(description.AddressW);
    desc.mipLodBias = description.MipLODBias;
    desc.maxAnisotropy = static_cast<std::uint32_t>(std::clamp(description.MaxAnisotropy, 1, 16));
    desc.comparison = description.ComparisonFunc >= 1 && description.ComparisonFunc <= 8
                          ? static_cast<ComparisonFunc>(description.ComparisonFunc)
                          : ComparisonFunc::Never;
    for (int i = 0; i < 4; ++i)
        desc.borderColor[i] = description.BorderColor[i];
    desc.minLod = description.MinLOD;
    desc.maxLod = description.MaxLOD;
    return desc;
}
}
