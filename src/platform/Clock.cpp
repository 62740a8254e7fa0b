#include "platform/Clock.h"

#include <SDL.h>

namespace Platform
{
std::uint64_t GetPerformanceCounter()
{
    return SDL_GetPerformanceCounter();
}

std::uint64_t GetPerformanceFrequency()
{
    return SDL_GetPerformanceFrequency();
}

void Sleep(unsigned milliseconds)
{
    SDL_Delay(milliseconds);
}
}
