// The shader file preprocessor: reads a GLSL shader file line by line, hands
// the lines of its `__ShaderDesc` and `__SamplerDesc` blocks to their handlers
// and copies every other line unchanged for the compiler. A block starts at
// its keyword and ends on the line where its braces balance again; the lines
// it took are replaced by a "#line N" directive, so that the compiler's
// messages give the file's own line numbers. Comments hide description words;
// comment text in ordinary lines reaches the compiler as it stands.
//
// Errors are reported ("Error Preprocessing: file(line)message") and the scan
// goes on; the result is then unusable and Preprocess answers false.
#pragma once

#include "Graphics_Engine/ShaderDescription.h"

#include <string>

namespace Graphics
{
// Preprocesses `source`, named `name` in messages, into `description`; true when the file had no
// error and names both its Type and its EntryPoint.
bool PreprocessShader(const std::string& source, const std::string& name, ShaderDescription& description);
}
