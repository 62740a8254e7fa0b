// Helpers of the tools' tests: running a built tool program and reading the
// model files it wrote back through the engine's readers.
#pragma once

#include "Graphics_Engine/Model/ModelFile.h"
#include "support/ShellCommand.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace ToolTest
{
struct ToolRun
{
    // The exit code; -1 when the program did not exit normally.
    int ExitCode = -1;
    // Standard output and standard error together.
    std::string Output;
};

// Runs `program` with `arguments` (already quoted as the shell needs).
inline ToolRun RunTool(const std::string& program, const std::string& arguments)
{
    const std::string command = "\"" + program + "\" " + arguments + " 2>&1";
    ToolRun run;
    run.Output = RunShellCommand(command, run.ExitCode);
    return run;
}

inline std::vector<std::uint8_t> ReadBytes(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Reads a kbm file; false (and a test failure naming the reason) when it does not read.
inline bool ReadModel(const std::string& path, Graphics::ModelFile& model)
{
    const std::vector<std::uint8_t> bytes = ReadBytes(path);
    std::string error;
    const bool ok = Graphics::ReadKbm(bytes.data(), bytes.size(), model, error);
    if (!ok)
        ADD_FAILURE() << path << ": " << error;
    return ok;
}

// The quoted path of a source under tools/model_sources/.
inline std::string Source(const std::string& name)
{
    return "\"" VORN_MODEL_SOURCES_DIR "/" + name + "\"";
}
}
