#include "Graphics_Engine/ShaderPreprocessor.h"

#include "Graphics_Engine/SamplerBlockParser.h"
#include "Graphics_Engine/ShaderBlockParser.h"
#include "Graphics_Engine/ShaderPreprocessState.h"
#include "Graphics_Engine/ShaderTokens.h"

#include <vector>

namespace Graphics
{
namespace
{
enum class Block
{
    None,
    Shader,
    Sampler,
};

Block OpenerOf(const std::string& token)
{
    if (token == "__ShaderDesc")
        return Block::Shader;
    if (token == "__SamplerDesc")
        return Block::Sampler;
    return Block::None;
}

void Handle(Block block, ShaderPreprocessState& state, const std::vector<std::string>& tokens)
{
    if (block == Block::Shader)
        ParseShaderBlockLine(state, tokens);
    else
        ParseSamplerBlockLine(state, tokens);
}
}

bool PreprocessShader(const std::string& source, const std::string& name, ShaderDescription& description)
{
    ShaderPreprocessState state;
    state.Name = name;
    std::string& output = state.Result.Source;
    Block open = Block::None;
    bool inComment = false;
    std::size_t position = 0;
    while (position < source.size())
    {
        std::size_t end = source.find('\n', position);
        if (end == std::string::npos)
            end = source.size();
        const std::string line = source.substr(position, end - position);
        position = end + 1;
        ++state.Line;
        if (line.empty())
        {
            output += '\n';
            continue;
        }
        const std::vector<std::string> kept = KeepTokensOutsideComments(SplitShaderTokens(line), inComment);
        if (open == Block::None)
        {
            for (const std::string& token : kept)
            {
                open = OpenerOf(token);
                if (open != Block::None)
                    break;
            }
            if (open == Block::None)
            {
                output += line;
                output += '\n';
                continue;
            }
            state.Depth = 0;
            state.BraceSeen = false;
        }
        Handle(open, state, kept);
        if (state.BraceSeen && state.Depth == 0)
        {
            open = Block::None;
            if (position < source.size())
                output += "#line " + std::to_string(state.Line + 1) + "\n";
        }
    }
    if (state.Result.Stage == StageNone)
        PREPROCESS_ERROR(state, "Missing Shader Type in Description.");
    if (state.Result.EntryPoint.empty())
        PREPROCESS_ERROR(state, "Missing EntryPoint in Description.");
    description = std::move(state.Result);
    return !state.HadError;
}
}
