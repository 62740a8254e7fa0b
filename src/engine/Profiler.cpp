#include "engine/Profiler.h"

#include "engine/Log.h"
#include "platform/Clock.h"

#include <cstdio>
#include <fstream>

namespace
{
// One line of the report.
std::string Line(const std::string& file, const std::string& function, std::uint64_t exclusive,
                 std::uint64_t inclusive, std::uint64_t calls, double runTicks)
{
    const double toMilliseconds = 1000.0 / static_cast<double>(Platform::GetPerformanceFrequency());
    const double count = calls > 0 ? static_cast<double>(calls) : 1.0;
    const double totalExclusive = static_cast<double>(exclusive) * toMilliseconds;
    const double totalInclusive = static_cast<double>(inclusive) * toMilliseconds;
    const double exclusiveShare = runTicks > 0 ? static_cast<double>(exclusive) / runTicks * 100.0 : 0.0;
    const double inclusiveShare = runTicks > 0 ? static_cast<double>(inclusive) / runTicks * 100.0 : 0.0;
    char numbers[256];
    std::snprintf(numbers, sizeof(numbers), "%.6f;%.3f;%.6f;%.6f;%.3f;%.6f;%llu", totalExclusive / count,
                  exclusiveShare, totalExclusive, totalInclusive / count, inclusiveShare, totalInclusive,
                  static_cast<unsigned long long>(calls));
    return (file.empty() ? std::string("No filename") : file) + ";" + function + ";" + numbers + "\n";
}
}

Profiler& Profiler::Get()
{
    static Profiler* profiler = new Profiler();
    return *profiler;
}

void Profiler::SetEnabled(bool enabled)
{
    if (enabled && m_StartTime == 0)
        m_StartTime = Platform::GetPerformanceCounter();
    m_Enabled = enabled;
}

void Profiler::Push(std::uint64_t& exclusive, std::uint64_t& inclusive, std::uint64_t& calls)
{
    if (m_Count < kStackCapacity)
    {
        StackEntry& entry = m_Stack[m_Count];
        entry.m_Exclusive = &exclusive;
        entry.m_Inclusive = &inclusive;
        entry.m_Calls = &calls;
        entry.m_Children = 0;
        entry.m_Start = Platform::GetPerformanceCounter();
    }
    ++m_Count;
}

void Profiler::Enter(const void* key, const char* file, const char* function)
{
    auto [found, added] = m_Native.try_emplace(key);
    FunctionInfo& info = found->second;
    if (added)
    {
        info.m_File = file;
        info.m_Function = Engine::QualifiedFunctionName(function);
    }
    Push(info.m_Exclusive, info.m_Inclusive, info.m_Calls);
}

namespace
{
// 64-bit FNV-1a over the parts of a script function's key.
std::uint64_t ScriptKey(std::string_view file, int line, std::string_view function)
{
    std::uint64_t hash = 0xCBF29CE484222325ull;
    auto mix = [&hash](std::string_view text) {
        for (char c : text)
        {
            hash ^= static_cast<unsigned char>(c);
            hash *= 0x100000001B3ull;
        }
        hash ^= 0xFF;
        hash *= 0x100000001B3ull;
    };
    mix(file);
    mix(std::string_view(reinterpret_cast<const char*>(&line), sizeof(line)));
    mix(function);
    return hash;
}
}

void Profiler::EnterScript(std::string_view file, int line, std::string_view function)
{
    auto [found, added] = m_Script.try_emplace(ScriptKey(file, line, function));
    LuaFunctionInfo& info = found->second;
    if (added)
    {
        info.m_File = std::string(file);
        info.m_Line = line;
        info.m_Function = std::string(function);
    }
    Push(info.m_Exclusive, info.m_Inclusive, info.m_Calls);
}

void Profiler::Leave()
{
    if (m_Count == 0)
        return;
    --m_Count;
    if (m_Count >= kStackCapacity)
        return;
    const StackEntry& entry = m_Stack[m_Count];
    const std::uint64_t inclusive = Platform::GetPerformanceCounter() - entry.m_Start;
    *entry.m_Inclusive += inclusive;
    *entry.m_Exclusive += inclusive > entry.m_Children ? inclusive - entry.m_Children : 0;
    ++*entry.m_Calls;
    if (m_Count > 0)
        m_Stack[m_Count - 1].m_Children += inclusive;
}

std::string Profiler::Report() const
{
    const double runTicks = static_cast<double>(Platform::GetPerformanceCounter() - m_StartTime);
    std::string report = "sep=;\nFile;Function;Average Exclusive Time;Exclusive Percentage;Total Exclusive Time;"
                         "Average Inclusive Time;Inclusive Percentage;Total Inclusive Time;Times Called\n";
    for (const auto& [key, info] : m_Native)
        report += Line(info.m_File, info.m_Function, info.m_Exclusive, info.m_Inclusive, info.m_Calls, runTicks);
    for (const auto& [key, info] : m_Script)
        report += Line(info.m_File.empty() ? "" : "Lua: " + info.m_File + " Line: " + std::to_string(info.m_Line),
                       info.m_Function, info.m_Exclusive, info.m_Inclusive, info.m_Calls, runTicks);
    return report;
}

bool Profiler::WriteReport(const std::string& path) const
{
    std::ofstream file(path, std::ios::trunc);
    if (!file)
        return false;
    file << Report();
    return static_cast<bool>(file);
}

void Profiler::Clear()
{
    m_Native.clear();
    m_Script.clear();
    m_Count = 0;
    m_StartTime = 0;
    m_Enabled = false;
}
