#include "engine/Log.h"

#include "platform/Dialog.h"
#include "platform/Threads.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace Engine
{
namespace
{
// Reports are taken one at a time: a site's flag is tested and cleared under this lock.
std::recursive_mutex g_ReportMutex;

bool FlushesAtOnce(const std::string& category)
{
    return category == "FATAL" || category == "ERROR";
}
}

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
    std::lock_guard lock(g_ReportMutex);
    const std::string category = fatal ? "FATAL" : "ERROR";
    const std::string text = FormatMessage(category, message, function, file, line);
    Log& log = Log::Get();
    log.Write(text, true);

    const Platform::DialogResult result = Platform::AskAbortRetryIgnore(category, text);
    switch (result.answer)
    {
    case Platform::DialogAnswer::Abort:
        // Leave at once: other threads (the file watcher, the crash writer) still run, and
        // destroying the engine's objects under them would turn an abort into a crash.
        log.Close();
        Platform::ExitNow(result.byPolicy ? kAbortExitCode : 0);
    case Platform::DialogAnswer::Retry:
        Platform::BreakIntoDebugger();
        return 1;
    case Platform::DialogAnswer::Ignore:
        return 2;
    }
    return 1;
}

void ReportAtSite(std::atomic<bool>& site, const std::string& message, bool fatal, const char* function,
                  const char* file, int line)
{
    std::lock_guard lock(g_ReportMutex);
    // Another thread's report may have silenced the site while this one waited.
    if (site.load() && ShowError(message, fatal, function, file, line) == 2)
        site.store(false);
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
    if (!m_FlushAtExit)
    {
        m_FlushAtExit = true;
        std::atexit([] { Log::Get().Flush(); });
    }
}

void Log::Close()
{
    std::lock_guard lock(m_Mutex);
    if (m_File.is_open())
        m_File.close();
    m_Open = false;
    std::cout.flush();
}

void Log::Write(const std::string& text, bool flush)
{
    std::lock_guard lock(m_Mutex);
    if (m_Open)
    {
        m_File << text;
        if (flush)
            m_File.flush();
    }
    // Standard output is also what a debugger shows here, so it serves as both.
    if (m_Echo)
    {
        std::cout << text;
        if (flush)
            std::cout.flush();
    }
}

void Log::Entry(const std::string& category, const std::string& message, const char* function, const char* file,
                int line)
{
    Write(FormatMessage(category, message, function, file, line), FlushesAtOnce(category));
}

void Log::Flush()
{
    std::lock_guard lock(m_Mutex);
    if (m_Open)
        m_File.flush();
    std::cout.flush();
}

bool Log::WriteAfterCrash(const std::string& text)
{
    std::unique_lock lock(m_Mutex, std::defer_lock);
    if (!lock.try_lock_for(std::chrono::seconds(1)))
        return false;
    if (m_Open)
    {
        m_File << text;
        m_File.flush();
    }
    // Standard output only if nobody holds it: the crashed thread may have been writing to it.
    if (ftrylockfile(stdout) == 0)
    {
        if (m_Echo)
            std::fputs(text.c_str(), stdout);
        std::fflush(stdout);
        funlockfile(stdout);
    }
    return true;
}

std::atomic<bool>* Log::NewSite()
{
    std::lock_guard lock(m_Mutex);
    return &m_Sites.emplace_back(true);
}

void Log::ResetSites()
{
    std::lock_guard lock(m_Mutex);
    for (std::atomic<bool>& site : m_Sites)
        site = true;
}
}
