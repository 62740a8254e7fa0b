// The handler of the `__ShaderDesc` block: reads Type, EntryPoint and Flag
// from the tokens of one line into the description. `{` lowers the depth and
// `}` raises it, the opposite of the sampler block; only the return to 0
// matters. Words that are no keyword are passed over.
#pragma once

#include "Graphics_Engine/ShaderPreprocessState.h"

#include <string>
#include <vector>

namespace Graphics
{
// Handles the tokens of one line of an open shader block.
void ParseShaderBlockLine(ShaderPreprocessState& state, const std::vector<std::string>& tokens);
}
