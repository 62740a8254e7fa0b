// Log and error reports: the one way every part of the engine reports.
//
// Warnings and notes go to the log, "GameLog.log" in the application data
// folder, and never stop the program. Errors that a developer must fix raise the
// Abort/Retry/Ignore dialog through the ERROR_IF / FATAL_ERROR macros below;
// choosing Ignore silences that one site for the rest of the run.
//
//   LOG("WARNING", "Model not found: " + name);
//   FATAL_ERROR(name + " is not a component!");
#pragma once

#include <deque>
#include <fstream>
#include <mutex>
#include <string>

namespace Engine
{
// Builds "[category] text\nFunction: f\nfile\nLine: n\n", leaving out what is empty.
std::string FormatMessage(const std::string& category, const std::string& text, const char* function,
                          const char* file, int line);

// Shows the error dialog; returns 2 if the developer chose Ignore, 1 otherwise.
// Abort ends the program (exit code 0 when a person chose it, kAbortExitCode when
// the headless policy did).
int ShowError(const std::string& message, bool fatal, const char* function, const char* file, int line);

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

    // Opens the log file anew (truncating it); m_Open says whether it worked.
    void Open(const std::string& path);
    // Closes the log file; later entries go to the other outputs only.
    void Close();
    // True while the log file is open.
    bool IsOpen() const { return m_Open; }
    // Path of the log file given to Open.
    const std::string& GetPath() const { return m_Path; }
    // Sends text to the file and, with echo, to debug output and standard output.
    void Write(const std::string& text);
    // Writes a formatted entry; never stops the program.
    void Entry(const std::string& category, const std::string& message, const char* function, const char* file,
               int line);
    // Makes a new error-site flag, initially true, and lists it.
    bool* NewSite();
    // Sets every listed site flag back to true.
    void ResetSites();

    // Also send log text to debug output and standard output.
    bool m_Echo = true;

private:
    Log() = default;

    std::deque<bool> m_Sites;
    std::ofstream m_File;
    std::string m_Path;
    bool m_Open = false;
    std::mutex m_Mutex;
};
}

#define VORN_FUNCTION ::Engine::QualifiedFunctionName(__PRETTY_FUNCTION__).c_str()

// Writes an entry with a category to the log.
#define LOG(category, message) ::Engine::Log::Get().Entry((category), (message), VORN_FUNCTION, __FILE__, __LINE__)

// Raises the error dialog for this site, naming `function`, unless Ignore silenced it.
#define VORN_REPORT_ERROR_IN(fatal, function, message)                                                 \
    do                                                                                                 \
    {                                                                                                  \
        static bool* vornSite = ::Engine::Log::Get().NewSite();                                        \
        if (*vornSite && ::Engine::ShowError((message), (fatal), (function), __FILE__, __LINE__) == 2) \
            *vornSite = false;                                                                         \
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
