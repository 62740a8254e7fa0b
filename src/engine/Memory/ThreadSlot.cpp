#include "engine/Memory/ThreadSlot.h"

#include <atomic>

namespace Engine::Memory
{
namespace
{
std::atomic<bool> g_SlotTaken[kThreadSlots];

// Gives the thread's number back when the thread exits; later requests get none.
struct SlotRelease
{
    ~SlotRelease()
    {
        if (t_ThreadSlot >= 0)
            g_SlotTaken[t_ThreadSlot].store(false, std::memory_order_release);
        t_ThreadSlot = -2;
    }
    // Touching the object makes the thread register its destructor.
    void Arm() { armed = true; }
    volatile bool armed = false;
};
thread_local SlotRelease t_SlotRelease;
}

int AcquireThreadSlot()
{
    for (int slot = 0; slot < kThreadSlots; ++slot)
    {
        bool taken = false;
        if (!g_SlotTaken[slot].load(std::memory_order_relaxed) &&
            g_SlotTaken[slot].compare_exchange_strong(taken, true, std::memory_order_acquire))
        {
            t_ThreadSlot = slot;
            t_SlotRelease.Arm();
            return slot;
        }
    }
    t_ThreadSlot = -2;
    return -2;
}
}
