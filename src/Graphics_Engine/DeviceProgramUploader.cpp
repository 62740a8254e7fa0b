#include "Graphics_Engine/DeviceProgramUploader.h"

namespace Graphics
{
DeviceProgramUploader::DeviceProgramUploader(GraphicsDevice& device,
                                             const std::array<const StageDeviceObjects*, kStageCount>& stages)
    : m_Device(device), m_Stages(stages)
{
}

void DeviceProgramUploader::UploadConstantBuffer(int stage, unsigned index, const ConstantBuffer& buffer)
{
    if (stage < 0 || stage >= kStageCount || !m_Stages[stage])
        return;
    const StageDeviceObjects& objects = *m_Stages[stage];
    if (index >= objects.ConstantBuffers.size() || buffer.Shadow.empty())
        return;
    m_Device.UpdateSubresource(objects.ConstantBuffers[index], buffer.Shadow.data(), 0,
                               static_cast<std::uint32_t>(buffer.Shadow.size()));
}

void DeviceProgramUploader::BindTextures(int stage, const std::vector<ResourceHandle>& slots)
{
    if (stage < 0 || stage >= kStageCount || !m_Stages[stage])
        return;
    const std::vector<TextureSlotBinding>& places = m_Stages[stage]->Points.TextureSlots;
    for (std::size_t i = 0; i < slots.size() && i < places.size(); ++i)
    {
        const auto id = static_cast<std::uint32_t>(slots[i]);
        if (places[i].Storage)
            m_Device.BindStorageBuffer(places[i].Unit, BufferHandle{id});
        else
            m_Device.BindTexture(places[i].Unit, TextureViewHandle{id});
    }
}

void DeviceProgramUploader::BindUnordered(int stage, const std::vector<ResourceHandle>& slots)
{
    if (stage < 0 || stage >= kStageCount || !m_Stages[stage])
        return;
    const std::vector<unsigned>& units = m_Stages[stage]->Points.UnorderedSlots;
    for (std::size_t i = 0; i < slots.size() && i < units.size(); ++i)
        m_Device.BindImage(units[i], TextureHandle{static_cast<std::uint32_t>(slots[i])}, ImageAccess::ReadWrite);
}

void DeviceProgramUploader::BindAll(const std::array<StageReflection*, kStageCount>& reflections)
{
    for (int stage = 0; stage < kStageCount; ++stage)
    {
        const StageDeviceObjects* objects = m_Stages[stage];
        if (!objects || !reflections[stage])
            continue;
        for (std::size_t i = 0; i < objects->ConstantBuffers.size() && i < objects->Points.ConstantBuffers.size(); ++i)
            m_Device.BindUniformBuffer(objects->Points.ConstantBuffers[i], objects->ConstantBuffers[i]);
        for (std::size_t i = 0; i < objects->Samplers.size() && i < objects->Points.SamplerUnits.size(); ++i)
            m_Device.BindSampler(objects->Points.SamplerUnits[i], objects->Samplers[i]);
        BindTextures(stage, reflections[stage]->TextureSlots);
        BindUnordered(stage, reflections[stage]->UnorderedSlots);
    }
}
}
