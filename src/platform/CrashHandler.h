// CrashHandler: the crash report. Once installed, a crash (SIGSEGV, SIGBUS,
// SIGFPE, SIGILL or SIGABRT) writes a text report, then the process ends with
// the signal's usual status. The report holds the signal, the faulting address,
// the crashing thread and a symbolised backtrace (function, file and line where
// debug information has them).
//
// The report is written by a writer thread, started at install and waiting
// until a crash wakes it: the crashing thread's own stack may be damaged, so it
// only records the backtrace addresses (on its alternate signal stack, see
// Threads.h) and waits for the writer. It waits at most kCrashReportWaitSeconds,
// so a writer that hangs (a lock the crashing thread held, say) cannot keep the
// process alive. One report is written per process: a thread that crashes while
// another's report is being written waits for that report, then ends the
// process with its own signal.
#pragma once

#include <functional>
#include <string>

namespace Platform
{
// Longest time in seconds a crashing thread waits for the report before the process ends anyway.
inline constexpr int kCrashReportWaitSeconds = 5;

// Installs the handlers and gives the calling thread its alternate signal stack. `reportPath`
// gives the path of a report at the time of a crash; `afterReport`, if given, runs on the writer
// thread with that path once the report is written (the log notes the crash and flushes there).
void InstallCrashHandler(std::function<std::string()> reportPath,
                         std::function<void(const std::string& reportPath)> afterReport = {});
}
