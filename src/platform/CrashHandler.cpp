#include "platform/CrashHandler.h"

#include "platform/Threads.h"

#include <cxxabi.h>
#include <elfutils/libdwfl.h>
#include <execinfo.h>
#include <semaphore.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <thread>

namespace Platform
{
namespace
{
constexpr int kSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr int kMaxFrames = 64;

// What the crashing thread hands the writer.
struct Crash
{
    int signal = 0;
    const void* address = nullptr;
    long thread = 0;
    void* frames[kMaxFrames] = {};
    int frameCount = 0;
};

Crash g_Crash;
// Set by the first crashing thread: the one whose crash is reported.
std::atomic<bool> g_Crashing = false;
// Set by the writer once the report (and what follows it) is done.
std::atomic<bool> g_ReportDone = false;
// The writer thread's id: a crash of the writer itself cannot wait for the report.
std::atomic<long> g_WriterThread = 0;
sem_t g_Request;
std::function<std::string()>* g_ReportPath = nullptr;
std::function<void(const std::string&)>* g_AfterReport = nullptr;

const char* SignalName(int signal)
{
    switch (signal)
    {
    case SIGSEGV: return "SIGSEGV (invalid memory access)";
    case SIGBUS: return "SIGBUS (bus error)";
    case SIGFPE: return "SIGFPE (arithmetic error)";
    case SIGILL: return "SIGILL (illegal instruction)";
    case SIGABRT: return "SIGABRT (abort)";
    default: return "unknown signal";
    }
}

std::string Demangled(const char* name)
{
    int status = 0;
    char* readable = abi::__cxa_demangle(name, nullptr, nullptr, &status);
    std::string result = status == 0 && readable ? readable : name;
    std::free(readable);
    return result;
}

// One backtrace line: address, function, and source line where known.
std::string DescribeFrame(Dwfl* dwfl, int index, void* frame)
{
    // Return addresses point behind the call; look up the call itself.
    const Dwarf_Addr address = reinterpret_cast<Dwarf_Addr>(frame) - (index > 0 ? 1 : 0);
    char head[64];
    std::snprintf(head, sizeof(head), "  #%-2d %p ", index, frame);
    std::string line = head;
    Dwfl_Module* module = dwfl ? dwfl_addrmodule(dwfl, address) : nullptr;
    const char* name = module ? dwfl_module_addrname(module, address) : nullptr;
    line += name ? Demangled(name) : "??";
    if (Dwfl_Line* source = module ? dwfl_module_getsrc(module, address) : nullptr)
    {
        int lineNumber = 0;
        if (const char* file = dwfl_lineinfo(source, nullptr, &lineNumber, nullptr, nullptr, nullptr))
            line += std::string(" at ") + file + ":" + std::to_string(lineNumber);
    }
    else if (module)
    {
        const char* moduleName = dwfl_module_info(module, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                                  nullptr);
        if (moduleName)
            line += std::string(" in ") + moduleName;
    }
    return line + "\n";
}

void WriteReport()
{
    const std::string path = (*g_ReportPath)();
    std::ofstream report(path, std::ios::trunc);
    char address[32];
    std::snprintf(address, sizeof(address), "%p", g_Crash.address);
    report << "Crash report\n"
           << "Signal: " << g_Crash.signal << " " << SignalName(g_Crash.signal) << "\n"
           << "Address: " << address << "\n"
           << "Thread: " << g_Crash.thread << "\n"
           << "Backtrace:\n";

    static char* debugInfoPath = nullptr;
    const Dwfl_Callbacks callbacks = {dwfl_linux_proc_find_elf, dwfl_standard_find_debuginfo, nullptr,
                                      &debugInfoPath};
    Dwfl* dwfl = dwfl_begin(&callbacks);
    if (dwfl && (dwfl_linux_proc_report(dwfl, getpid()) != 0 || dwfl_report_end(dwfl, nullptr, nullptr) != 0))
    {
        dwfl_end(dwfl);
        dwfl = nullptr;
    }
    for (int i = 0; i < g_Crash.frameCount; ++i)
        report << DescribeFrame(dwfl, i, g_Crash.frames[i]);
    if (dwfl)
        dwfl_end(dwfl);
    // The last line: a report without it was cut short.
    report << "End of report\n";
    report.close();
    std::fprintf(stderr, "Crash report written to %s\n", path.c_str());
    if (g_AfterReport && *g_AfterReport)
        (*g_AfterReport)(path);
}

void WriterThread()
{
    BeginEngineThread();
    g_WriterThread = static_cast<long>(syscall(SYS_gettid));
    while (sem_wait(&g_Request) != 0)
    {
    }
    WriteReport();
    g_ReportDone = true;
}

long long MonotonicNanoseconds()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec;
}

// Waits until the report is done, for at most kCrashReportWaitSeconds; only calls that are safe in a
// signal handler.
void WaitForReport()
{
    const long long deadline = MonotonicNanoseconds() + kCrashReportWaitSeconds * 1000000000LL;
    const timespec pause = {0, 5 * 1000 * 1000};
    while (!g_ReportDone.load() && MonotonicNanoseconds() < deadline)
        nanosleep(&pause, nullptr);
}

void OnCrash(int signal, siginfo_t* info, void*)
{
    const long thread = static_cast<long>(syscall(SYS_gettid));
    if (thread != g_WriterThread.load())
    {
        if (!g_Crashing.exchange(true))
        {
            g_Crash.signal = signal;
            g_Crash.address = info ? info->si_addr : nullptr;
            g_Crash.thread = thread;
            g_Crash.frameCount = backtrace(g_Crash.frames, kMaxFrames);
            sem_post(&g_Request);
        }
        // The first crashing thread waits for its report; any other waits for that same report,
        // so that its own end does not take the process down before the report is written.
        WaitForReport();
    }
    // The default action ends the process with the signal's usual status once this handler returns.
    struct sigaction fallback = {};
    fallback.sa_handler = SIG_DFL;
    sigemptyset(&fallback.sa_mask);
    sigaction(signal, &fallback, nullptr);
    raise(signal);
}
}

void InstallCrashHandler(std::function<std::string()> reportPath,
                         std::function<void(const std::string& reportPath)> afterReport)
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    // Never freed: a crash may come at any time until the process ends.
    g_ReportPath = new std::function<std::string()>(std::move(reportPath));
    g_AfterReport = new std::function<void(const std::string&)>(std::move(afterReport));
    sem_init(&g_Request, 0, 0);
    // The first backtrace loads the unwinder, which must not happen inside a handler.
    void* warmUp[1];
    backtrace(warmUp, 1);
    std::thread(WriterThread).detach();
    BeginEngineThread();

    struct sigaction action = {};
    action.sa_sigaction = OnCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (int signal : kSignals)
        sigaction(signal, &action, nullptr);
}
}
