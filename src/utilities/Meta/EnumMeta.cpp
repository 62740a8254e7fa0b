#include "utilities/Meta/EnumMeta.h"

#include "engine/Log.h"
#include "utilities/Meta/NameHash.h"

namespace Meta
{
namespace
{
NameMap<std::vector<EnumMeta::Entry>>& Enums()
{
    static auto* enums = new NameMap<std::vector<EnumMeta::Entry>>();
    return *enums;
}
}

void EnumMeta::Register(const std::string& typeName, std::vector<Entry> values)
{
    Enums()[typeName] = std::move(values);
}

const std::vector<EnumMeta::Entry>* EnumMeta::GetValues(std::string_view typeName)
{
    auto found = Enums().find(typeName);
    return found == Enums().end() ? nullptr : &found->second;
}

int EnumMeta::GetEnum(std::string_view typeName, std::string_view name)
{
    const std::vector<Entry>* values = GetValues(typeName);
    if (!values)
    {
        FATAL_ERROR("Enum type can not be found!\nEnum Type: " + std::string(typeName));
        return 0;
    }
    for (const Entry& entry : *values)
        if (entry.first == name)
            return entry.second;
    FATAL_ERROR("Enum can not be found!\nEnum Type: " + std::string(typeName) + "\nName: " + std::string(name));
    return 0;
}

std::string EnumMeta::GetEnumName(std::string_view typeName, int value)
{
    const std::vector<Entry>* values = GetValues(typeName);
    if (!values)
    {
        FATAL_ERROR("Enum type can not be found!\nEnum Type: " + std::string(typeName));
        return "";
    }
    for (const Entry& entry : *values)
        if (entry.second == value)
            return entry.first;
    FATAL_ERROR("Enum can not be found!\nEnum Type: " + std::string(typeName) + "\nName: " + std::to_string(value));
    return "";
}
}
