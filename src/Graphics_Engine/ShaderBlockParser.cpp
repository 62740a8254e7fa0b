#include "Graphics_Engine/ShaderBlockParser.h"

#include "Graphics_Engine/ShaderKeywords.h"

namespace Graphics
{
namespace
{
bool IsBrace(const std::string& token)
{
    return token == "{" || token == "}";
}

// The value after tokens[i], or null when the line ends there or a brace follows.
const std::string* ValueAfter(const std::vector<std::string>& tokens, std::size_t i)
{
    if (i + 1 >= tokens.size() || IsBrace(tokens[i + 1]))
        return nullptr;
    return &tokens[i + 1];
}
}

void ParseShaderBlockLine(ShaderPreprocessState& state, const std::vector<std::string>& tokens)
{
    for (std::size_t i = 0; i < tokens.size(); ++i)
    {
        switch (FindKeyword(ShaderKeywords(), tokens[i]))
        {
        case KeyOpenBrace:
            --state.Depth;
            state.BraceSeen = true;
            break;
        case KeyCloseBrace:
            ++state.Depth;
            state.BraceSeen = true;
            break;
        case KeyType:
        {
            const std::string* value = ValueAfter(tokens, i);
            if (!value)
            {
                PREPROCESS_ERROR(state, "Missing Shader Type");
                break;
            }
            ++i;
            const int stage = FindKeyword(ShaderKeywords(), *value) - KeyFirstStage;
            if (stage >= StageVertex && stage <= StageCompute)
                state.Result.Stage = stage;
            else
                PREPROCESS_ERROR(state, "Unknown Shader Type: " + *value);
            break;
        }
        case KeyEntryPoint:
        {
            const std::string* value = ValueAfter(tokens, i);
            if (!value)
            {
                PREPROCESS_ERROR(state, "Missing Function name for EntryPoint");
                break;
            }
            ++i;
            state.Result.EntryPoint = *value;
            break;
        }
        case KeyFlag:
        {
            const std::string* value = ValueAfter(tokens, i);
            if (!value)
            {
                PREPROCESS_ERROR(state, "Missing Flag to set");
                break;
            }
            ++i;
            const int bit = FindKeyword(ShaderFlags(), *value);
            if (bit >= 0)
                state.Result.Flags |= 1u << bit;
            else
                PREPROCESS_ERROR(state, "\"" + *value + "\" is not a known flag");
            break;
        }
        default:
            break;
        }
    }
}
}
