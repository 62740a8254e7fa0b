// The game's global operator new and delete, every form of them, served by
// Engine::MemoryManager::Global(). Linked into the game only (not into the
// sanitizer, ThreadSanitizer or fuzzing builds, which keep the system allocator
// so that their checks see every allocation).
//
// VORN_MEMORY_MANAGER=0 in the environment makes them forward to malloc and free
// instead, for comparing runs with and without the manager. Alignments above
// 16 bytes are served by posix_memalign; their deletes reach free through the
// manager, which hands every pointer it does not own to free.
#include "engine/Memory/MemoryManager.h"

#include <cstdlib>
#include <new>

namespace
{
// True when VORN_MEMORY_MANAGER=0 asks for malloc and free.
bool ForwardToMalloc()
{
    static const bool forward = [] {
        const char* value = std::getenv("VORN_MEMORY_MANAGER");
        return value && value[0] == '0';
    }();
    return forward;
}

void* AllocateOrNull(std::size_t size) noexcept
{
    if (ForwardToMalloc())
        return std::malloc(size != 0 ? size : 1);
    return Engine::MemoryManager::Global().Allocate(size);
}

void* AllocateAlignedOrNull(std::size_t size, std::align_val_t alignment) noexcept
{
    const auto align = static_cast<std::size_t>(alignment);
    if (align <= Engine::Memory::kAlignment)
        return AllocateOrNull(size);
    void* memory = nullptr;
    if (posix_memalign(&memory, align < sizeof(void*) ? sizeof(void*) : align, size != 0 ? size : 1) != 0)
        return nullptr;
    return memory;
}

void Release(void* pointer) noexcept
{
    if (ForwardToMalloc())
        std::free(pointer);
    else if (pointer)
        Engine::MemoryManager::Global().Free(pointer);
}

void* AllocateOrThrow(std::size_t size)
{
    void* memory = AllocateOrNull(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void* AllocateAlignedOrThrow(std::size_t size, std::align_val_t alignment)
{
    void* memory = AllocateAlignedOrNull(size, alignment);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}
}

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNull(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return AllocateOrNull(size); }
void* operator new(std::size_t size, std::align_val_t alignment) { return AllocateAlignedOrThrow(size, alignment); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return AllocateAlignedOrThrow(size, alignment); }
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return AllocateAlignedOrNull(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept
{
    return AllocateAlignedOrNull(size, alignment);
}

void operator delete(void* pointer) noexcept { Release(pointer); }
void operator delete[](void* pointer) noexcept { Release(pointer); }
void operator delete(void* pointer, std::size_t) noexcept { Release(pointer); }
void operator delete[](void* pointer, std::size_t) noexcept { Release(pointer); }
void operator delete(void* pointer, const std::nothrow_t&) noexcept { Release(pointer); }
void operator delete[](void* pointer, const std::nothrow_t&) noexcept { Release(pointer); }
void operator delete(void* pointer, std::align_val_t) noexcept { Release(pointer); }
void operator delete[](void* pointer, std::align_val_t) noexcept { Release(pointer); }
void operator delete(void* pointer, std::size_t, std::align_val_t) noexcept { Release(pointer); }
void operator delete[](void* pointer, std::size_t, std::align_val_t) noexcept { Release(pointer); }
void operator delete(void* pointer, std::align_val_t, const std::nothrow_t&) noexcept { Release(pointer); }
void operator delete[](void* pointer, std::align_val_t, const std::nothrow_t&) noexcept { Release(pointer); }
