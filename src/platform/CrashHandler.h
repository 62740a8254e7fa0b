// CrashHandler: the crash report. Once installed, a crash (SIGSEGV, SIGBUS,
// SIGFPE, SIGILL or SIGABRT) writes a text report, then the process ends with
// the signal's usual status. The report holds the signal, the faulting address,
// the crashing thread and a symbolised backtrace (function, file and line where
// debug information has them).
//
// The report is written by a writer thread, started at install and waiting
// until a crash wakes it: the crashing thread's own stack may be damaged, so it
// only records the backtrace addresses (on an alternate signal stack) and
// waits for the writer.
#pragma once

#include <functional>
#include <string>

namespace Platform
{
// Installs the handlers; `reportPath` gives the path of a report at the time of a crash.
void InstallCrashHandler(std::function<std::string()> reportPath);
}
