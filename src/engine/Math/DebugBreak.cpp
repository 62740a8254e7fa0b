#include "engine/Math/DebugBreak.h"

#include <csignal>
#include <fstream>
#include <string>

namespace Math
{
bool IsDebuggerAttached()
{
    std::ifstream status("/proc/self/status");
    const std::string key = "TracerPid:";
    std::string line;
    while (std::getline(status, line))
    {
        if (line.compare(0, key.size(), key) != 0)
            continue;
        const std::size_t digit = line.find_first_not_of(" \t", key.size());
        return digit != std::string::npos && line.compare(digit, std::string::npos, "0") != 0;
    }
    return false;
}

void BreakIfDebuggerAttached()
{
    if (IsDebuggerAttached())
        std::raise(SIGTRAP);
}
}
