// Clock: the high-resolution counter and the sleep that the frame cap and the
// frame timers use. Counter values are ticks; GetPerformanceFrequency() says how
// many ticks make a second.
#pragma once

#include <cstdint>

namespace Platform
{
// Current value of the high-resolution counter, in ticks.
std::uint64_t GetPerformanceCounter();
// Ticks per second of the high-resolution counter.
std::uint64_t GetPerformanceFrequency();
// Blocks the calling thread for the given number of milliseconds.
void Sleep(unsigned milliseconds);
}
