#include "Graphics_Engine/StageReflection.h"

#include <cstring>

namespace Graphics
{
unsigned StageReflection::AddConstantBuffer(const std::string& name, unsigned size)
{
    ConstantBuffer buffer;
    buffer.Name = name;
    buffer.Shadow.assign(size, 0);
    ConstantBuffers.push_back(std::move(buffer));
    return static_cast<unsigned>(ConstantBuffers.size() - 1);
}

bool StageReflection::AddVariable(unsigned buffer, const std::string& name, unsigned offset, unsigned size,
                                  const void* defaultValue)
{
    if (buffer >= ConstantBuffers.size())
        return false;
    std::vector<std::uint8_t>& shadow = ConstantBuffers[buffer].Shadow;
    if (offset > shadow.size() || size > shadow.size() - offset)
        return false;
    Variables[name] = ConstantLocation{buffer, offset, size};
    if (defaultValue && size)
        std::memcpy(shadow.data() + offset, defaultValue, size);
    return true;
}

unsigned StageReflection::AddTextureSlot(const std::string& name)
{
    TextureSlots.push_back(0);
    const unsigned slot = static_cast<unsigned>(TextureSlots.size() - 1);
    TextureSlotOf[name] = slot;
    return slot;
}

unsigned StageReflection::AddUnorderedSlot(const std::string& name)
{
    UnorderedSlots.push_back(0);
    const unsigned slot = static_cast<unsigned>(UnorderedSlots.size() - 1);
    UnorderedSlotOf[name] = slot;
    return slot;
}

void StageReflection::AddSampler(const std::string& name, const ShaderDescription& description)
{
    Samplers.push_back(StageSampler{name, description.FindSampler(name)});
}
}
