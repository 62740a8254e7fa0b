#include "engine/CrashTest.h"

#include "engine/Log.h"
#include "platform/Threads.h"

#include <cctype>
#include <cstdint>
#include <latch>
#include <string>
#include <thread>

namespace Engine
{
namespace
{
bool NamesWay(const char* how, const std::string& way)
{
    std::string lowered = how ? how : "";
    for (char& c : lowered)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lowered == way;
}

[[gnu::noinline]] void CrashOnPurpose()
{
    volatile int* invalid = reinterpret_cast<volatile int*>(std::uintptr_t{16});
    *invalid = 1;
}

[[gnu::noinline]] void CrashOnPurposeOnThread(std::latch& together, std::uintptr_t address)
{
    Platform::BeginEngineThread();
    together.arrive_and_wait();
    volatile int* invalid = reinterpret_cast<volatile int*>(address);
    *invalid = 1;
}

// Goes deeper until the thread's stack runs out; the volatile frame keeps each call's stack in use.
[[gnu::noinline]] int OverflowTheStack(int depth)
{
    volatile char frame[4096];
    frame[0] = static_cast<char>(depth);
    if (depth >= 0)
        return OverflowTheStack(depth + 1) + frame[0];
    return frame[0];
}
}

void CrashOnPurpose(const char* how)
{
    LOG("Info", std::string("Crashing on purpose (--CrashTest") + (how ? std::string("=") + how : "") + ").");
    if (NamesWay(how, "twothreads"))
    {
        std::latch together(2);
        std::thread first(CrashOnPurposeOnThread, std::ref(together), std::uintptr_t{16});
        std::thread second(CrashOnPurposeOnThread, std::ref(together), std::uintptr_t{32});
        first.join();
        second.join();
    }
    else if (NamesWay(how, "threadstackoverflow"))
    {
        std::thread overflow([] {
            Platform::BeginEngineThread();
            OverflowTheStack(0);
        });
        overflow.join();
    }
    CrashOnPurpose();
}
}
