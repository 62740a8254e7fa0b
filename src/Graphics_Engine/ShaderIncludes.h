// Expansion of `#include "name"` (and `#include <name>`, served alike) in a
// preprocessed GLSL source: the engine reads the named file from the folder it
// is given and puts its text in place of the directive, files included by it
// too, and records every file read, so that a change of one of them can
// recompile the shaders that used it. Each included text is framed by
// "#line 1 K" and, after it, "#line N P" back in the including text, K being
// the place of the file in Included (from 1; 0 is the shader itself), so that
// compiler messages read "K:line". A file already on the way down (an include
// cycle) or past 32 levels is not read again; a file that cannot be read is an
// error.
#pragma once

#include <string>
#include <vector>

namespace Graphics
{
struct ExpandedShaderSource
{
    // The source with every include expanded.
    std::string Text;
    // The paths of every file read, in the order first read, without repeats.
    std::vector<std::string> Included;
    // False when an include could not be read or was not understood.
    bool Ok = true;
};

// Expands the includes of `source` (named `name` in messages) from `folder` (ending in '/'); a
// backslash in a requested name stands for '/'.
ExpandedShaderSource ExpandShaderIncludes(const std::string& source, const std::string& name,
                                          const std::string& folder);

// The text handed to the compiler: "#version 450 core" and "#line 1" in front of the source,
// unless the source's first line already is a `#version` line, which is then kept as it stands.
std::string WithVersionLine(const std::string& source);
}
