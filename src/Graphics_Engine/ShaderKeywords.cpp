#include "Graphics_Engine/ShaderKeywords.h"

namespace Graphics
{
int FindKeyword(const KeywordMap& map, const std::string& word)
{
    const auto found = map.find(word);
    return found == map.end() ? kNoKeyword : found->second;
}

const KeywordMap& ShaderKeywords()
{
    static const KeywordMap map = {{"}", -1},      {"{", -2},       {"Type", 0},   {"EntryPoint", 1},
                                   {"Vertex", 2},  {"Geometry", 3}, {"Hull", 4},   {"Domain", 5},
                                   {"Pixel", 6},   {"Compute", 7},  {"Flag", 8}};
    return map;
}

const KeywordMap& ShaderFlags()
{
    static const KeywordMap map = {{"Forward", 0}, {"Instanced", 1}};
    return map;
}

const KeywordMap& SamplerKeywords()
{
    static const KeywordMap map = {
        {"__SamplerDesc", -3},  {"}", -2},  {"{", -1},  {"Filter", 0},  {"AddressU", 1},
        {"AddressV", 2},        {"AddressW", 3},        {"MipLODBias", 4},  {"MaxAnisotropy", 5},
        {"ComparisonFunc", 6},  {"BorderColor[0]", 7},  {"BorderColor[1]", 8},  {"BorderColor[2]", 9},
        {"BorderColor[3]", 10}, {"MinLOD", 11},         {"MaxLOD", 12}};
    return map;
}

const KeywordMap& AddressModes()
{
    static const KeywordMap map = {{"Wrap", 1}, {"Mirror", 2}, {"Clamp", 3}, {"Border", 4}, {"Once", 5}};
    return map;
}

const KeywordMap& ComparisonFunctions()
{
    static const KeywordMap map = {{"Never", 1},   {"Less", 2},      {"Equal", 3},         {"Less_Equal", 4},
                                   {"Greater", 5}, {"Not_Equal", 6}, {"Greater_Equal", 7}, {"Always", 8}};
    return map;
}

const KeywordMap& Filters()
{
    static const KeywordMap map = []
    {
        const std::pair<const char*, int> base[] = {
            {"MIN_MAG_MIP_POINT", 0x00},          {"MIN_MAG_POINT_MIP_LINEAR", 0x01},
            {"MIN_POINT_MAG_LINEAR_MIP_POINT", 0x04}, {"MIN_POINT_MAG_MIP_LINEAR", 0x05},
            {"MIN_LINEAR_MAG_MIP_POINT", 0x10},   {"MIN_LINEAR_MAG_POINT_MIP_LINEAR", 0x11},
            {"MIN_MAG_LINEAR_MIP_POINT", 0x14},   {"MIN_MAG_MIP_LINEAR", 0x15}};
        KeywordMap filters;
        const std::pair<const char*, int> prefixes[] = {
            {"", 0x00}, {"COMPARISON_", 0x80}, {"MINIMUM_", 0x100}, {"MAXIMUM_", 0x180}};
        for (const auto& [prefix, offset] : prefixes)
        {
            for (const auto& [name, value] : base)
                filters[std::string(prefix) + name] = value + offset;
            // The plain key keeps its trailing blank: no token can match it.
            filters[std::string(prefix) + (offset == 0 ? "ANISOTROPIC " : "ANISOTROPIC")] = 0x55 + offset;
        }
        return filters;
    }();
    return map;
}
}
