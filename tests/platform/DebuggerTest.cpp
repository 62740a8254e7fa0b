#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

TEST(DebuggerTest, IsDebuggerAttachedSeesATracer)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    // A child that asks to be traced by this process sees a tracer; exit code 2
    // means tracing is not permitted here.
    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0)
    {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) == -1)
            _exit(2);
        _exit(Platform::IsDebuggerAttached() ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 2)
        GTEST_SKIP() << "ptrace is not permitted";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}
