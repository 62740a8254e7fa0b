// The state the shader file preprocessor shares with its two block handlers:
// the file's name, the current line (from 1), the brace depth of the open
// block, whether the file had an error, and the description being filled.
// PREPROCESS_ERROR reports "Error Preprocessing: <file>(<line>)<message>"
// through the engine's error report, each use its own report site.
#pragma once

#include "Graphics_Engine/ShaderDescription.h"
#include "engine/Log.h"

#include <string>

namespace Graphics
{
struct ShaderPreprocessState
{
    // The file's name, as messages give it.
    std::string Name;
    // True once any error was reported; the description is then unusable.
    bool HadError = false;
    // The line being read, counted from 1.
    unsigned Line = 0;
    // The brace depth of the open block; the handlers count in opposite directions.
    int Depth = 0;
    // True once the open block has met a brace, so that a return to depth 0 ends it.
    bool BraceSeen = false;
    // The description being filled.
    ShaderDescription Result;

    // The full text of a preprocessing error at the current line.
    std::string ErrorText(const std::string& message) const
    {
        return "Error Preprocessing: " + Name + "(" + std::to_string(Line) + ")" + message;
    }
};
}

// Reports a preprocessing error of `state` and marks the file as failed.
#define PREPROCESS_ERROR(state, message)              \
    do                                                \
    {                                                 \
        (state).HadError = true;                      \
        ERROR_REPORT((state).ErrorText(message));     \
    } while (false)
