#include "Graphics_Engine/ProgramBindings.h"

#include <algorithm>
#include <cstring>

namespace Graphics
{
namespace
{
template <typename Place>
void AddLocation(std::unordered_map<std::string, NameLocations<Place>>& map, const std::string& name, int stage,
                 const Place& place)
{
    NameLocations<Place>& locations = map[name];
    if (locations.Count >= static_cast<unsigned>(kStageCount))
        return;
    locations.Stage[locations.Count] = stage;
    locations.Place[locations.Count] = place;
    ++locations.Count;
}
}

void ProgramBindings::Link(const std::array<StageReflection*, kStageCount>& stages, const VariableTable& table)
{
    m_Stages = stages;
    m_InUse.clear();
    m_Constants.clear();
    m_Resources.clear();
    m_Samplers.clear();
    m_ConstantBindings.clear();
    m_ResourceBindings.clear();
    for (int stage = 0; stage < kStageCount; ++stage)
    {
        StageReflection* reflection = stages[stage];
        if (!reflection)
            continue;
        m_InUse.push_back(stage);
        for (const auto& [name, location] : reflection->Variables)
            AddLocation(m_Constants, name, stage, location);
        for (const auto& [name, slot] : reflection->TextureSlotOf)
            AddLocation(m_Resources, name, stage, ResourcePlace{slot, false});
        for (const auto& [name, slot] : reflection->UnorderedSlotOf)
            AddLocation(m_Resources, name, stage, ResourcePlace{slot, true});
        for (unsigned i = 0; i < reflection->Samplers.size(); ++i)
            AddLocation(m_Samplers, reflection->Samplers[i].Name, stage, i);
        for (ConstantBuffer& buffer : reflection->ConstantBuffers)
            buffer.Dirty = true;
        reflection->TexturesDirty = !reflection->TextureSlots.empty();
        reflection->UnorderedDirty = !reflection->UnorderedSlots.empty();
    }
    for (const auto& [name, locations] : m_Constants)
        if (const ConstantVariable* variable = table.FindConstant(name))
            m_ConstantBindings.push_back(ConstantBinding{variable, 0, &locations});
    for (const auto& [name, locations] : m_Resources)
        if (const ResourceVariable* variable = table.FindResource(name))
            m_ResourceBindings.push_back(ResourceBinding{variable, 0, &locations});
    m_AnyDirty = true;
}

void ProgramBindings::CopyConstant(const NameLocations<ConstantLocation>& locations, const std::uint8_t* bytes,
                                   std::size_t size)
{
    for (unsigned i = 0; i < locations.Count; ++i)
    {
        const ConstantLocation& place = locations.Place[i];
        ConstantBuffer& buffer = m_Stages[locations.Stage[i]]->ConstantBuffers[place.Buffer];
        const std::size_t count = std::min<std::size_t>(size, place.Size);
        if (count)
            std::memcpy(buffer.Shadow.data() + place.Offset, bytes, count);
        buffer.Dirty = true;
    }
    m_AnyDirty = true;
}

void ProgramBindings::PlaceView(const NameLocations<ResourcePlace>& locations, ResourceHandle view, bool unordered,
                                bool both)
{
    for (unsigned i = 0; i < locations.Count; ++i)
    {
        const ResourcePlace& place = locations.Place[i];
        if (!both && place.Unordered != unordered)
            continue;
        StageReflection& stage = *m_Stages[locations.Stage[i]];
        std::vector<ResourceHandle>& slots = place.Unordered ? stage.UnorderedSlots : stage.TextureSlots;
        if (slots[place.Slot] == view)
            continue;
        slots[place.Slot] = view;
        (place.Unordered ? stage.UnorderedDirty : stage.TexturesDirty) = true;
        m_AnyDirty = true;
    }
}

void ProgramBindings::Apply(ProgramUploader& uploader)
{
    for (ConstantBinding& binding : m_ConstantBindings)
    {
        if (binding.Variable->Version == binding.LastVersion)
            continue;
        binding.LastVersion = binding.Variable->Version;
        CopyConstant(*binding.Locations, binding.Variable->Data.data(), binding.Variable->Data.size());
    }
    for (ResourceBinding& binding : m_ResourceBindings)
    {
        if (binding.Variable->Version == binding.LastVersion)
            continue;
        binding.LastVersion = binding.Variable->Version;
        PlaceView(*binding.Locations, binding.Variable->View, false, true);
    }
    if (m_AnyDirty)
        Upload(uploader);
}

void ProgramBindings::Upload(ProgramUploader& uploader)
{
    m_AnyDirty = false;
    for (int stage : m_InUse)
    {
        StageReflection& reflection = *m_Stages[stage];
        for (unsigned i = 0; i < reflection.ConstantBuffers.size(); ++i)
        {
            ConstantBuffer& buffer = reflection.ConstantBuffers[i];
            if (!buffer.Dirty)
                continue;
            buffer.Dirty = false;
            uploader.UploadConstantBuffer(stage, i, buffer);
        }
        if (reflection.TexturesDirty)
        {
            reflection.TexturesDirty = false;
            uploader.BindTextures(stage, reflection.TextureSlots);
        }
        if (reflection.UnorderedDirty)
        {
            reflection.UnorderedDirty = false;
            uploader.BindUnordered(stage, reflection.UnorderedSlots);
        }
    }
}

void ProgramBindings::Unbind(ProgramUploader& uploader)
{
    for (int stage : m_InUse)
    {
        StageReflection& reflection = *m_Stages[stage];
        if (!reflection.TextureSlots.empty())
        {
            uploader.BindTextures(stage, std::vector<ResourceHandle>(reflection.TextureSlots.size(), 0));
            reflection.TexturesDirty = true;
        }
        if (!reflection.UnorderedSlots.empty())
        {
            uploader.BindUnordered(stage, std::vector<ResourceHandle>(reflection.UnorderedSlots.size(), 0));
            reflection.UnorderedDirty = true;
        }
        m_AnyDirty = true;
    }
}

void ProgramBindings::SetVariable(const std::string& name, const void* bytes, std::size_t size)
{
    const auto found = m_Constants.find(name);
    if (found == m_Constants.end())
        return;
    CopyConstant(found->second, static_cast<const std::uint8_t*>(bytes), size);
}

void ProgramBindings::SetTexture(const std::string& name, ResourceHandle view)
{
    const auto found = m_Resources.find(name);
    if (found != m_Resources.end())
        PlaceView(found->second, view, false, false);
}

void ProgramBindings::SetUnordered(const std::string& name, ResourceHandle view)
{
    const auto found = m_Resources.find(name);
    if (found != m_Resources.end())
        PlaceView(found->second, view, true, false);
}
}
