// Threads: what every thread the engine starts does first, which thread is the
// main one, and leaving the process at once.
//
// A crash is reported from a signal handler that runs on an alternate signal
// stack, so that a thread that overflowed its own stack can still hand its
// backtrace to the crash report. Every thread needs such a stack of its own:
// a thread the engine starts calls BeginEngineThread() before anything else.
//
//   std::thread([this] { Platform::BeginEngineThread(); Run(); });
#pragma once

#include <cstddef>

namespace Platform
{
// Size of the alternate signal stack that BeginEngineThread gives a thread.
inline constexpr std::size_t kSignalStackSize = 64 * 1024;

// Gives the calling thread its alternate signal stack, freed when the thread ends; a second call does nothing.
void BeginEngineThread();
// Size of the calling thread's alternate signal stack, 0 when it has none.
std::size_t AlternateSignalStackSize();
// True on the process's main thread, the one that runs the game loop and may show dialogs.
bool IsMainThread();
// Flushes the C streams and ends the process with `code` at once: no static destructors and no
// exit handlers run, so threads still running never see objects destroyed under them.
[[noreturn]] void ExitNow(int code);
}
