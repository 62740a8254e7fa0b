// Replaces the global allocation functions of the benchmark program with ones
// that count every allocation, so that a benchmark can report how many heap
// allocations the code under measurement makes. Memory comes from malloc and
// goes back to free.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace
{
std::atomic<std::uint64_t> g_Allocations{0};

void* Allocate(std::size_t size) noexcept
{
    g_Allocations.fetch_add(1, std::memory_order_relaxed);
    return std::malloc(size != 0 ? size : 1);
}

void* AllocateAligned(std::size_t size, std::align_val_t alignment) noexcept
{
    g_Allocations.fetch_add(1, std::memory_order_relaxed);
    std::size_t align = static_cast<std::size_t>(alignment);
    if (align < sizeof(void*))
        align = sizeof(void*);
    void* memory = nullptr;
    if (posix_memalign(&memory, align, size != 0 ? size : 1) != 0)
        return nullptr;
    return memory;
}

// The throwing forms retry through the new-handler, as the standard ones do.
void* AllocateOrThrow(std::size_t size)
{
    for (;;)
    {
        if (void* memory = Allocate(size))
            return memory;
        std::new_handler handler = std::get_new_handler();
        if (!handler)
            throw std::bad_alloc();
        handler();
    }
}

void* AllocateAlignedOrThrow(std::size_t size, std::align_val_t alignment)
{
    for (;;)
    {
        if (void* memory = AllocateAligned(size, alignment))
            return memory;
        std::new_handler handler = std::get_new_handler();
        if (!handler)
            throw std::bad_alloc();
        handler();
    }
}
}

// Number of allocations made through the global operator new since the program started.
std::uint64_t BenchAllocationCount()
{
    return g_Allocations.load(std::memory_order_relaxed);
}

void* operator new(std::size_t size)
{
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return AllocateAlignedOrThrow(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return AllocateAlignedOrThrow(size, alignment);
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return AllocateAligned(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return AllocateAligned(size, alignment);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
