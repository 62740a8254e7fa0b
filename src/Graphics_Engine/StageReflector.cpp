#include "Graphics_Engine/StageReflector.h"

#include <algorithm>
#include <map>
#include <utility>

namespace Graphics
{
std::string ReflectedName(const std::string& glslName)
{
    const std::string suffix = "[0]";
    if (glslName.size() > suffix.size() &&
        glslName.compare(glslName.size() - suffix.size(), suffix.size(), suffix) == 0)
        return glslName.substr(0, glslName.size() - suffix.size());
    return glslName;
}

bool ReflectStage(const ProgramReflection& reflection, const ShaderDescription& description, StageReflection& stage,
                  StageBindingPoints& points)
{
    bool allFit = true;
    for (const ReflectedBlock& block : reflection.uniformBlocks)
    {
        const unsigned buffer = stage.AddConstantBuffer(block.name, block.size);
        points.ConstantBuffers.push_back(block.binding);
        // A struct held in a block ("Light.Range") is also written whole, by its own name ("Light").
        std::map<std::string, std::pair<unsigned, unsigned>> structs;
        for (const ReflectedBlockMember& member : block.members)
        {
            // Members of a block with an instance name come as "Block.member"; they are known as "member".
            const std::string prefix = block.name + ".";
            const std::string name =
                member.name.compare(0, prefix.size(), prefix) == 0 ? member.name.substr(prefix.size()) : member.name;
            allFit = stage.AddVariable(buffer, ReflectedName(name), member.offset, member.size) && allFit;
            const std::size_t dot = name.find('.');
            if (dot == std::string::npos || name.find('[') < dot)
                continue;
            auto [entry, added] = structs.try_emplace(name.substr(0, dot), member.offset, member.offset + member.size);
            if (!added)
                entry->second = {std::min(entry->second.first, member.offset),
                                 std::max(entry->second.second, member.offset + member.size)};
        }
        for (const auto& [name, extent] : structs)
            allFit = stage.AddVariable(buffer, name, extent.first, extent.second - extent.first) && allFit;
    }
    for (const ReflectedResource& sampler : reflection.samplers)
    {
        const std::string name = ReflectedName(sampler.name);
        stage.AddTextureSlot(name);
        points.TextureSlots.push_back(TextureSlotBinding{sampler.binding, false});
        stage.AddSampler(name, description);
        points.SamplerUnits.push_back(sampler.binding);
    }
    for (const ReflectedBlock& block : reflection.storageBlocks)
    {
        stage.AddTextureSlot(block.name);
        points.TextureSlots.push_back(TextureSlotBinding{block.binding, true});
    }
    for (const ReflectedResource& image : reflection.images)
    {
        stage.AddUnorderedSlot(ReflectedName(image.name));
        points.UnorderedSlots.push_back(image.binding);
    }
    return allFit;
}
}
