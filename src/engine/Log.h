// Log and error reports: the one way every part of the engine reports.
//
// Warnings and notes go to the log, "GameLog.log" in the application data
// folder, and never stop the program. Errors that a developer must fix raise the
// Abort/Retry/Ignore dialog through the ERROR_IF / FATAL_ERROR macros below;
// choosing Ignore silences that one site for the rest of the run.
//
// Entries are buffered: the file is flushed on a FATAL or ERROR entry, when it
// closes, when the process exits and when it crashes, not after every entry.
// Any thread may report. Only the main thread shows the dialog; a report from
// another thread is logged and answered as if nobody could answer (see
// Platform::AskAbortRetryIgnore). Reports are taken one at a time, so an
// Ignore given at a site silences it for every thread.
//
//   LOG("WARNING", "Model not found: " + name);
//   FATAL_ERROR(name + " is not a component!");
#pragma once

#include <atomic>
#include <deque>
#include <fstream>
#include <mutex>
#include <string>

namespace Engine
{
// Builds "[category] text\nFunction: f\nfile\nLine: n\n", leaving out what is empty.
std::string FormatMessage(const std::string& category, const std::string& text, const char* function,
                          const char* file, int line);

// Logs the error and shows the error dialog, whose text carries the category as the log does
// ("[FATAL] ..."); returns 2 if the developer chose Ignore, 1 otherwise. Abort flushes the log and
// ends the program at once, without destroying objects that running threads may use (exit code 0
// when a person chose it, kAbortExitCode when the headless policy did).
int ShowError(const std::string& message, bool fatal, const char* function, const char* file, int line);
// Reports an error at an error site unless Ignore silenced the site; Ignore clears the site's flag.
void ReportAtSite(std::atomic<bool>& site, const std::string& message, bool fatal, const char* function,
                  const char* file, int line);

// Exit code of a run ended by the headless dialog policy's Abort.
inline constexpr int kAbortExitCode = 3;

// Cuts "void Engine::Space::Update(float)" down to "Engine::Space::Update".
std::string QualifiedFunctionName(const char* prettyFunction);

// The log: one per process, reached through Get().
class Log
{
public:
    // The one log object.
    static Log& Get();

    // Opens the log file anew (truncating it); m_Open says whether it worked. The first open also
    // arranges a flush when the process exits.
    void Open(const std::string& path);
    // Closes the log file; later entries go to the other outputs only.
    void Close();
    // True while the log file is open.
    bool IsOpen() const { return m_Open; }
    // Path of the log file given to Open.
    const std::string& GetPath() const { return m_Path; }
    // Sends text to the file and, with echo, to debug output and standard output; with `flush`, both
    // are flushed at once.
    void Write(const std::string& text, bool flush = false);
    // Writes a formatted entry, flushed when the category is FATAL or ERROR; never stops the program.
    void Entry(const std::string& category, const std::string& message, const char* function, const char* file,
               int line);
    // Flushes the file and standard output.
    void Flush();
    // For the crash path: writes `text` to the file and flushes it, unless the log stays busy for
    // about a second (the crashing thread may have held it); true if it was written.
    bool WriteAfterCrash(const std::string& text);
    // Makes a new error-site flag, initially true, and lists it.
    std::atomic<bool>* NewSite();
    // Sets every listed site flag back to true.
    void ResetSites();

    // Also send log text to debug output and standard output.
    bool m_Echo = true;

private:
    Log() = default;

    std::deque<std::atomic<bool>> m_Sites;
    std::ofstream m_File;
    std::string m_Path;
    bool m_Open = false;
    bool m_FlushAtExit = false;
    std::timed_mutex m_Mutex;
};
}

#define VORN_FUNCTION ::Engine::QualifiedFunctionName(__PRETTY_FUNCTION__).c_str()

// Writes an entry with a category to the log.
#define LOG(category, message) ::Engine::Log::Get().Entry((category), (message), VORN_FUNCTION, __FILE__, __LINE__)

// Raises the error dialog for this site, naming `function`, unless Ignore silenced it.
#define VORN_REPORT_ERROR_IN(fatal, function, message)                                          \
    do                                                                                          \
    {                                                                                           \
        static std::atomic<bool>* vornSite = ::Engine::Log::Get().NewSite();                    \
        if (vornSite->load())                                                                   \
            ::Engine::ReportAtSite(*vornSite, (message), (fatal), (function), __FILE__, __LINE__); \
    } while (false)
// Raises the error dialog for this site unless Ignore silenced it.
#define VORN_REPORT_ERROR(fatal, message) VORN_REPORT_ERROR_IN(fatal, VORN_FUNCTION, message)

// An error the developer must fix; the program goes on if they choose so.
#define FATAL_ERROR(message) VORN_REPORT_ERROR(true, message)
// A fatal error reported as raised in `function`, for helpers that report on behalf of a caller.
#define FATAL_ERROR_IN(function, message) VORN_REPORT_ERROR_IN(true, function, message)
// A lesser error; the program goes on if they choose so.
#define ERROR_REPORT(message) VORN_REPORT_ERROR(false, message)
// Raises a fatal error with `message` when `condition` holds.
#define FATAL_ERROR_IF(condition, message) \
    do                                     \
    {                                      \
        if (condition)                     \
            FATAL_ERROR(message);          \
    } while (false)
