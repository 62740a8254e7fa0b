// Runs a shell command line for a test and gives back what it printed (standard
// output and, where the line sends it there, standard error) and its exit code.
// The runners of the game (HeadlessGame.h) and of the tools (tools/ToolRun.h)
// build their command lines and hand them here.
#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>

// Runs `command` through the shell; `exitCode` gets its exit code, or -1 when it did not exit
// normally (or could not start). Gives everything it printed on standard output.
inline std::string RunShellCommand(const std::string& command, int& exitCode)
{
    exitCode = -1;
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return output;
    char buffer[4096];
    while (std::fgets(buffer, sizeof buffer, pipe))
        output += buffer;
    const int status = pclose(pipe);
    exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return output;
}
