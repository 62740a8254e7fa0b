// Small numbers for threads, so that per-thread data can live in plain arrays.
//
// A thread that asks gets the lowest free number below kThreadSlots and keeps
// it until it exits; the number is then free for the next thread, which
// inherits whatever was left in the arrays at that index. A thread that finds
// every number taken, or asks again after its exit handlers ran, gets -1 and
// must take the slow path. Nothing here allocates through operator new.
#pragma once

namespace Engine::Memory
{
// Number of thread numbers handed out at once.
inline constexpr int kThreadSlots = 64;

// The calling thread's number; -1 before its first request, -2 once it has none for good, -3
// while it reports an error from inside the memory manager.
inline thread_local int t_ThreadSlot = -1;

// Gives the calling thread a number (or -2 when none is free) and stores it in t_ThreadSlot.
int AcquireThreadSlot();

// The calling thread's number, 0 to kThreadSlots - 1, or a negative value when it has none.
inline int CurrentThreadSlot()
{
    const int slot = t_ThreadSlot;
    return slot != -1 ? slot : AcquireThreadSlot();
}
}
