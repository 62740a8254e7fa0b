#include "Graphics_Engine/SamplerBlockParser.h"

#include "Graphics_Engine/ShaderKeywords.h"

#include <climits>
#include <cstdlib>

namespace Graphics
{
namespace
{
bool IsBrace(const std::string& token)
{
    return token == "{" || token == "}";
}

int ToInt(const std::string& text)
{
    const long value = std::strtol(text.c_str(), nullptr, 10);
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return static_cast<int>(value);
}

float ToFloat(const std::string& text)
{
    return std::strtof(text.c_str(), nullptr);
}

// Writes a name from `table` into `field`, or reports it with `typeWords`.
void SetNamed(ShaderPreprocessState& state, const KeywordMap& table, const std::string& value, int& field)
{
    const int number = FindKeyword(table, value);
    if (number != kNoKeyword)
        field = number;
    else
        PREPROCESS_ERROR(state, value + " is not a D3D11_TEXTURE_ADDRESS_MODE type");
}
}

void ParseSamplerBlockLine(ShaderPreprocessState& state, const std::vector<std::string>& tokens)
{
    for (std::size_t i = 0; i < tokens.size(); ++i)
    {
        const int keyword = FindKeyword(SamplerKeywords(), tokens[i]);
        if (keyword == kNoKeyword)
            continue;
        if (keyword == SamplerKeyOpenBrace || keyword == SamplerKeyCloseBrace)
        {
            state.Depth += keyword == SamplerKeyOpenBrace ? 1 : -1;
            state.BraceSeen = true;
            continue;
        }
        if (i + 1 >= tokens.size() || IsBrace(tokens[i + 1]))
        {
            PREPROCESS_ERROR(state, "Missing data for " + tokens[i]);
            continue;
        }
        const std::string& value = tokens[++i];
        std::vector<SamplerDescription>& samplers = state.Result.Samplers;
        if (keyword == SamplerKeyOpener)
        {
            samplers.emplace_back();
            samplers.back().Name = value;
            continue;
        }
        if (samplers.empty())
            continue;
        SamplerDescription& sampler = samplers.back();
        switch (keyword)
        {
        case SamplerKeyFilter:
        {
            const int filter = FindKeyword(Filters(), value);
            if (filter != kNoKeyword)
                sampler.Filter = filter;
            else
                PREPROCESS_ERROR(state, value + " is not a D3D11_FILTER type");
            break;
        }
        case SamplerKeyAddressU:
            SetNamed(state, AddressModes(), value, sampler.AddressU);
            break;
        case SamplerKeyAddressV:
            SetNamed(state, AddressModes(), value, sampler.AddressV);
            break;
        case SamplerKeyAddressW:
            SetNamed(state, AddressModes(), value, sampler.AddressW);
            break;
        case SamplerKeyComparisonFunc:
            SetNamed(state, ComparisonFunctions(), value, sampler.ComparisonFunc);
            break;
        case SamplerKeyMipLODBias:
            sampler.MipLODBias = ToFloat(value);
            break;
        case SamplerKeyMaxAnisotropy:
            sampler.MaxAnisotropy = ToInt(value);
            break;
        case SamplerKeyMinLOD:
            sampler.MinLOD = ToFloat(value);
            break;
        case SamplerKeyMaxLOD:
            sampler.MaxLOD = ToFloat(value);
            break;
        default:
            if (keyword >= SamplerKeyBorderColor0 && keyword <= SamplerKeyBorderColor3)
                sampler.BorderColor[keyword - SamplerKeyBorderColor0] = ToFloat(value);
            break;
        }
    }
}
}
