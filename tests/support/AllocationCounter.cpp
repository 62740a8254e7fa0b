// The test program's global operator new and delete: malloc and free, with a
// per-thread count of allocations.
#include "support/AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace
{
thread_local std::size_t t_Allocations = 0;

void* Allocate(std::size_t size)
{
    ++t_Allocations;
    if (void* block = std::malloc(size ? size : 1))
        return block;
    throw std::bad_alloc();
}

void* AllocateAligned(std::size_t size, std::align_val_t alignment)
{
    ++t_Allocations;
    const auto align = static_cast<std::size_t>(alignment);
    // aligned_alloc needs a size that is a multiple of the alignment.
    if (void* block = std::aligned_alloc(align, (size + align - 1) / align * align))
        return block;
    throw std::bad_alloc();
}
}

std::size_t AllocationsOnThisThread()
{
    return t_Allocations;
}

void* operator new(std::size_t size)
{
    return Allocate(size);
}
void* operator new[](std::size_t size)
{
    return Allocate(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    ++t_Allocations;
    return std::malloc(size ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    ++t_Allocations;
    return std::malloc(size ? size : 1);
}
void* operator new(std::size_t size, std::align_val_t alignment)
{
    return AllocateAligned(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment)
{
    return AllocateAligned(size, alignment);
}
void operator delete(void* block) noexcept
{
    std::free(block);
}
void operator delete[](void* block) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::align_val_t) noexcept
{
    std::free(block);
}
void operator delete[](void* block, std::align_val_t) noexcept
{
    std::free(block);
}
void operator delete(void* block, std::size_t, std::align_val_t) noexcept
{
    std::free(block);
}
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept
{
    std::free(block);
}
