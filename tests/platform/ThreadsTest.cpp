#include "platform/Threads.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstddef>
#include <thread>

TEST(PlatformThreadsTest, EngineThreadGetsAnAlternateSignalStackOfItsOwn)
{
    std::size_t size = 0;
    std::thread thread([&size] {
        Platform::BeginEngineThread();
        Platform::BeginEngineThread();  // a second call keeps the first stack
        size = Platform::AlternateSignalStackSize();
    });
    thread.join();
    EXPECT_EQ(size, Platform::kSignalStackSize);
}

TEST(PlatformThreadsTest, OnlyTheFirstThreadIsTheMainThread)
{
    EXPECT_TRUE(Platform::IsMainThread());
    bool workerIsMain = true;
    std::thread thread([&workerIsMain] { workerIsMain = Platform::IsMainThread(); });
    thread.join();
    EXPECT_FALSE(workerIsMain);
}

namespace
{
// An object destroyed at exit; if it is, the exit code says so.
struct DestroyedAtExit
{
    ~DestroyedAtExit() { _exit(99); }
};
}

TEST(PlatformThreadsDeathTest, ExitNowDestroysNoStaticObjects)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static DestroyedAtExit object;
            Platform::ExitNow(3);
        },
        ::testing::ExitedWithCode(3), "");
}
