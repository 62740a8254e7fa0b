#include "utilities/Meta/EnumMeta.h"

#include "engine/Log.h"

#include <unordered_map>

namespace Meta
{
namespace
{
std::unordered_map<std::string, std::vector<EnumMeta::Entry>>& Enums()
{
    static auto* enums = new std::unordered_map<std::string, std::vector<EnumMeta::Entry>>();
    return *enums;
}
}

void EnumMeta::Register(const std::string& typeName, std::vector<Entry> values)
{
    Enums()[typeName] = std::move(values);
}

const std::vector<EnumMeta::Entry>* EnumMeta::GetValues(const std::string& typeName)
{
    auto found = Enums().find(typeName);
    return found == Enums().end() ? nullptr : &found->second;
}

int EnumMeta::GetEnum(const std::string& typeName, const std::string& name)
{
    const std::vector<Entry>* values = GetValues(typeName);
    if (!values)
    {
        FATAL_ERROR("Enum type can not be found!\nEnum Type: " + typeName);
        return 0;
    }
    for (const Entry& entry : *values)
        if (entry.first == name)
            return entry.second;
    FATAL_ERROR("Enum can not be found!\nEnum Type: " + typeName + "\nName: " + name);
    return 0;
}

std::string EnumMeta::GetEnumName(const std::string& typeName, int value)
{
    const std::vector<Entry>* values = GetValues(typeName);
    if (!values)
    {
        FATAL_ERROR("Enum type can not be found!\nEnum Type: " + typeName);
        return "";
    }
    for (const Entry& entry : *values)
        if (entry.second == value)
            return entry.first;
    FATAL_ERROR("Enum can not be found!\nEnum Type: " + typeName + "\nName: " + std::to_string(value));
    return "";
}
}
