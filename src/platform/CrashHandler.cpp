#include "platform/CrashHandler.h"

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
std::atomic<bool> g_Crashing = false;
sem_t g_Request;
sem_t g_Written;
std::function<std::string()>* g_ReportPath = nullptr;

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
    report.flush();
    std::fprintf(stderr, "Crash report written to %s\n", path.c_str());
}

void WriterThread()
{
    while (sem_wait(&g_Request) != 0)
    {
    }
    WriteReport();
    sem_post(&g_Written);
}

void OnCrash(int signal, siginfo_t* info, void*)
{
    if (!g_Crashing.exchange(true))
    {
        g_Crash.signal = signal;
        g_Crash.address = info ? info->si_addr : nullptr;
        g_Crash.thread = static_cast<long>(syscall(SYS_gettid));
        g_Crash.frameCount = backtrace(g_Crash.frames, kMaxFrames);
        sem_post(&g_Request);
        while (sem_wait(&g_Written) != 0)
        {
        }
    }
    // The default action ends the process with the signal's usual status once this handler returns.
    struct sigaction fallback = {};
    fallback.sa_handler = SIG_DFL;
    sigemptyset(&fallback.sa_mask);
    sigaction(signal, &fallback, nullptr);
    raise(signal);
}
}

void InstallCrashHandler(std::function<std::string()> reportPath)
{
    static bool installed = false;
    if (installed)
        return;
    installed = true;
    g_ReportPath = new std::function<std::string()>(std::move(reportPath));
    sem_init(&g_Request, 0, 0);
    sem_init(&g_Written, 0, 0);
    // The first backtrace loads the unwinder, which must not happen inside a handler.
    void* warmUp[1];
    backtrace(warmUp, 1);
    std::thread(WriterThread).detach();

    static std::uint8_t* alternateStack = new std::uint8_t[1 << 16];
    stack_t stack = {};
    stack.ss_sp = alternateStack;
    stack.ss_size = 1 << 16;
    sigaltstack(&stack, nullptr);

    struct sigaction action = {};
    action.sa_sigaction = OnCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (int signal : kSignals)
        sigaction(signal, &action, nullptr);
}
}
