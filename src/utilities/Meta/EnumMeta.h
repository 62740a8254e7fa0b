// Meta::EnumMeta: the named values of every registered enumeration, by the
// enumeration's type name, in the order they were registered. Look-ups take
// string views and allocate nothing unless they report an error.
//
//   META_REGISTER_ENUM(LightType, {{"Point", 0}, {"Spot", 1}});
//   int spot = Meta::EnumMeta::GetEnum("LightType", "Spot");
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Meta
{
class EnumMeta
{
public:
    // One named value.
    using Entry = std::pair<std::string, int>;

    // Records the values of an enumeration type.
    static void Register(const std::string& typeName, std::vector<Entry> values);
    // The value named `name`; reports an unknown type or name and gives 0.
    static int GetEnum(std::string_view typeName, std::string_view name);
    // The name of `value`; reports an unknown type or value and gives "".
    static std::string GetEnumName(std::string_view typeName, int value);
    // Every value of a type in order, or null for an unknown type.
    static const std::vector<Entry>* GetValues(std::string_view typeName);
};
}
