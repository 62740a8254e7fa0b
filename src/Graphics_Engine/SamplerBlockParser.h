// The handler of the `__SamplerDesc` block: each keyword other than a brace
// takes the next token as its value. `__SamplerDesc name` appends a sampler
// with the default values; every other field writes into the last sampler,
// names through their tables, numbers converted as atoi/atof do (text that is
// no number reads 0). `{` raises the depth and `}` lowers it, the opposite of
// the shader block.
#pragma once

#include "Graphics_Engine/ShaderPreprocessState.h"

#include <string>
#include <vector>

namespace Graphics
{
// Handles the tokens of one line of an open sampler block.
void ParseSamplerBlockLine(ShaderPreprocessState& state, const std::vector<std::string>& tokens);
}
