#include "Graphics_Engine/StageReflector.h"

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
        for (const ReflectedBlockMember& member : block.members)
            allFit = stage.AddVariable(buffer, ReflectedName(member.name), member.offset, member.size) && allFit;
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
