#include "engine/Log.h"

#include "platform/Dialog.h"

#include <cstdlib>
#include <iostream>

namespace Engine
{
std::string FormatMessage(const std::string& category, const std::string& text, const char* function,
                          const char* file, int line)
{
    std::string out;
    if (!category.empty())
        out += "[" + category + "] ";
    out += text;
    if (function && *function)
        out += std::string("\nFunction: ") + function;
    if (file && *file)
        out += std::string("\n") + file;
    if (line != 0)
        out += "\nLine: " + std::to_string(line);
    out += "\n";
    return out;
}

std::string QualifiedFunctionName(const char* prettyFunction)
{
    std::string name = prettyFunction ? prettyFunction : "";
    // Drop template argument notes, then the parameter list.
    std::size_t with = name.find(" [with ");
    if (with != std::string::npos)
        name.erase(with);
    int depth = 0;
    for (std::size_t i = name.size(); i-- > 0;)
    {
        if (name[i] == ')')
            ++depth;
        else if (name[i] == '(' && --depth == 0)
        {
            name.erase(i);
            break;
        }
    }
    // Drop the return type: the last space outside template brackets.
    depth = 0;
    for (std::size_t i = name.size(); i-- > 0;)
    {
        if (name[i] == '>')
            ++depth;
        else if (name[i] == '<')
            --depth;
        else if (name[i] == ' ' && depth == 0)
        {
            name.erase(0, i + 1);
            break;
        }
    }
    return name;
}

int ShowError(const std::string& message, bool fatal, const char* function, const char* file, int line)
{
    const std::string category = fatal ? "FATAL" : "ERROR";
    Log& log = Log::Get();
    log.Write(FormatMessage(category, message, function, file, line));

    Platform::DialogResult result =
        Platform::AskAbortRetryIgnore(category, FormatMessage("", message, function, file, line));
    switch (result.answer)
    {
    case Platform::DialogAnswer::Abort:
        log.Close();
        std::exit(result.byPolicy ? kAbortExitCode : 0);
    case Platform::DialogAnswer::Retry:
        Platform::BreakIntoDebugger();
        return 1;
    case Platform::DialogAnswer::Ignore:
        return 2;
    }
    return 1;
}

Log& Log::Get()
{
    static Log* log = new Log();  // lives until the process ends: sites may report at any time
    return *log;
}

void Log::Open(const std::string& path)
{
    std::lock_guard lock(m_Mutex);
    if (m_File.is_open())
        m_File.close();
    m_Path = path;
    m_File.open(path, std::ios::out | std::ios::trunc);
    m_Open = m_File.is_open();
}

void Log::Close()
{
    std::lock_guard lock(m_Mutex);
    if (m_File.is_open())
        m_File.close();
    m_Open = false;
}

void Log::Write(const std::string& text)
{
    std::lock_guard lock(m_Mutex);
    if (m_Open)
    {
        m_File << text;
        m_File.flush();
    }
    // Standard output is also what a debugger shows here, so it serves as both.
    if (m_Echo)
        std::cout << text << std::flush;
}

void Log::Entry(const std::string& category, const std::string& message, const char* function, const char* file,
                int line)
{
    Write(FormatMessage(category, message, function, file, line));
}

bool* Log::NewSite()
{
    std::lock_guard lock(m_Mutex);
    m_Sites.push_back(true);
    return &m_Sites.back();
}

void Log::ResetSites()
{
    std::lock_guard lock(m_Mutex);
    for (bool& site : m_Sites)
        site = true;
}
}
