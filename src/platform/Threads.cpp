#include "platform/Threads.h"

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>

namespace Platform
{
namespace
{
// The alternate signal stack of one thread. What the thread had before (none, or a
// sanitizer's stack that its owner frees) is put back when the thread ends.
class SignalStack
{
public:
    SignalStack() = default;
    SignalStack(const SignalStack&) = delete;
    SignalStack& operator=(const SignalStack&) = delete;

    ~SignalStack()
    {
        if (!m_Memory)
            return;
        stack_t restore = m_Previous;
        if (m_Previous.ss_flags & SS_DISABLE)
        {
            restore = {};
            restore.ss_flags = SS_DISABLE;
        }
        sigaltstack(&restore, nullptr);
        delete[] m_Memory;
    }

    void Install()
    {
        if (m_Memory)
            return;
        m_Memory = new std::uint8_t[kSignalStackSize];
        stack_t stack = {};
        stack.ss_sp = m_Memory;
        stack.ss_size = kSignalStackSize;
        if (sigaltstack(&stack, &m_Previous) != 0)
        {
            delete[] m_Memory;
            m_Memory = nullptr;
        }
    }

private:
    std::uint8_t* m_Memory = nullptr;
    stack_t m_Previous = {};
};

thread_local SignalStack t_SignalStack;
}

void BeginEngineThread()
{
    t_SignalStack.Install();
}

std::size_t AlternateSignalStackSize()
{
    stack_t current = {};
    if (sigaltstack(nullptr, &current) != 0 || (current.ss_flags & SS_DISABLE))
        return 0;
    return current.ss_size;
}

bool IsMainThread()
{
    // On Linux the main thread's id is the process id.
    return syscall(SYS_gettid) == getpid();
}

void ExitNow(int code)
{
    std::fflush(nullptr);
    _exit(code);
}
}
