// Graphics::ProgramBindings: the names of a linked program and their links to
// the variable table. Linking merges the names of every stage in use (a name
// read by several stages has one entry with a location per stage) and binds
// each name the table holds. Apply, before every draw, compares each binding's
// version with the one it last read and copies only what moved into the
// stages' shadows, then uploads the dirty buffers and rebinds the dirty slot
// lists through the uploader; a value that did not change costs one
// comparison. Local variables and views are written straight to the names'
// locations; a name no stage declares is ignored.
#pragma once

#include "Graphics_Engine/ProgramUploader.h"
#include "Graphics_Engine/StageReflection.h"
#include "Graphics_Engine/VariableTable.h"

#include <array>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace Graphics
{
// The number of stages: vertex, geometry, hull, domain, pixel, compute.
inline constexpr int kStageCount = 6;

// Where one name lives in each stage that reads it.
template <typename T>
struct NameLocations
{
    // How many stages read the name.
    unsigned Count = 0;
    // The stage of each location.
    std::array<int, kStageCount> Stage{};
    // The place in that stage.
    std::array<T, kStageCount> Place{};
};

// A resource's place in a stage: its slot and whether it is an unordered slot.
struct ResourcePlace
{
    // The slot.
    unsigned Slot = 0;
    // True for an unordered (image) slot, false for a texture slot.
    bool Unordered = false;
};

class ProgramBindings
{
public:
    // Merges the names of the given stages (null for an absent one) and binds those found in `table`.
    // Every constant buffer and slot list starts dirty, so that the first Apply uploads them all.
    void Link(const std::array<StageReflection*, kStageCount>& stages, const VariableTable& table);
    // Copies the table's values that moved, then uploads what is dirty.
    void Apply(ProgramUploader& uploader);
    // Clears on the device every slot the program's stages use and marks them dirty, so that the next
    // Apply binds the held views again.
    void Unbind(ProgramUploader& uploader);
    // Writes a variable local to this program; ignored when no stage declares it.
    void SetVariable(const std::string& name, const void* bytes, std::size_t size);
    // Puts a view into the texture slots of that name; ignored when none has it.
    void SetTexture(const std::string& name, ResourceHandle view);
    // Puts a view into the unordered slots of that name; ignored when none has it.
    void SetUnordered(const std::string& name, ResourceHandle view);

    // The constant names and their locations.
    const std::unordered_map<std::string, NameLocations<ConstantLocation>>& Constants() const { return m_Constants; }
    // The resource names and their slots.
    const std::unordered_map<std::string, NameLocations<ResourcePlace>>& Resources() const { return m_Resources; }
    // The sampler names and their index in each stage's sampler list.
    const std::unordered_map<std::string, NameLocations<unsigned>>& Samplers() const { return m_Samplers; }
    // How many names are bound to the table.
    std::size_t BindingCount() const { return m_ConstantBindings.size() + m_ResourceBindings.size(); }

private:
    struct ConstantBinding
    {
        const ConstantVariable* Variable;
        std::uint64_t LastVersion;
        const NameLocations<ConstantLocation>* Locations;
    };
    struct ResourceBinding
    {
        const ResourceVariable* Variable;
        std::uint64_t LastVersion;
        const NameLocations<ResourcePlace>* Locations;
    };

    void CopyConstant(const NameLocations<ConstantLocation>& locations, const std::uint8_t* bytes, std::size_t size);
    void PlaceView(const NameLocations<ResourcePlace>& locations, ResourceHandle view, bool unordered, bool both);
    void Upload(ProgramUploader& uploader);

    std::array<StageReflection*, kStageCount> m_Stages{};
    std::vector<int> m_InUse;
    std::unordered_map<std::string, NameLocations<ConstantLocation>> m_Constants;
    std::unordered_map<std::string, NameLocations<ResourcePlace>> m_Resources;
    std::unordered_map<std::string, NameLocations<unsigned>> m_Samplers;
    std::vector<ConstantBinding> m_ConstantBindings;
    std::vector<ResourceBinding> m_ResourceBindings;
    bool m_AnyDirty = false;
};
}
