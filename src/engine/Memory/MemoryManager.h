// Engine::MemoryManager: the allocator behind the game's operator new and delete.
//
// A segregated-fit allocator: eight classes of fixed-size blocks (payloads of
// 8, 16, 32 ... 1024 bytes) and a general pool of variable-size blocks, each
// carved from pages whose sizes split a 50 MiB budget by fixed weights (see
// PageSizes.h). Pages are never given back while the manager lives.
//
// Pages come from one range of address space reserved when the manager is
// made, cut into equal slots of a power of two bytes, one page a slot in the
// order pages are made. The page that holds an address is thus found with a
// subtraction and a shift, and an address outside the slots in use is known
// not to be the manager's with one comparison.
//
// Fixed classes: a freed block goes on its thread's free stack (32 entries a
// class) and the next allocation of that class on that thread takes it back
// without a lock. With the stack empty, a next-fit scan under the manager's lock
// walks the class's pages from the block it last took; at the end of the chain
// a new page is made. A freed block that finds its stack full is only marked
// free, and a later scan finds it.
// General pool: first fit with coalescing of neighbouring free blocks and
// splitting of remainders above 1024 bytes, under the lock. Requests too big
// for half a general page go to malloc and come back through free, as does any
// pointer the manager does not own (memory from malloc, or allocated before the
// manager existed). Freeing a block twice does nothing.
//
// The game's manager (Global()) is made on first use and never destroyed; tests
// and benchmarks make private instances, which give their pages back when
// destroyed. When a page cannot be had, the fatal dialog "Out of memory.  Sorry."
// is raised and the allocation gives null.
#pragma once

#include "engine/Memory/BlockHeader.h"
#include "engine/Memory/PageSizes.h"
#include "engine/Memory/ThreadSlot.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

namespace Engine
{
// Counts of one size class.
struct MemoryClassStatistics
{
    // Blocks handed out so far.
    std::uint64_t allocations = 0;
    // Blocks freed so far.
    std::uint64_t frees = 0;
    // Blocks in use now: allocations - frees.
    std::uint64_t live = 0;
    // Pages of the class.
    std::uint32_t pages = 0;
    // Bytes of one page.
    std::uint32_t pageSize = 0;
    // Bytes of one block, header included (fixed classes; 0 for the general pool).
    std::uint32_t blockSize = 0;
};

// The manager's counts, as a debug display shows them.
struct MemoryStatistics
{
    // Classes 0 to 7 and the general pool (8).
    std::array<MemoryClassStatistics, Memory::kClassCount> classes{};
    // Requests that went straight to malloc.
    std::uint64_t largeAllocations = 0;
    // Pointers the manager did not own that went to free.
    std::uint64_t foreignFrees = 0;
};

// What a block's header says.
struct MemoryBlockInfo
{
    // True when the pointer is the payload of a block of the manager.
    bool owned = false;
    // The block is handed out.
    bool inUse = false;
    // The block waits in a thread's free stack.
    bool heldByThread = false;
    // Size class, 0 to 8.
    int sizeClass = 0;
    // Times handed out (fixed classes).
    std::uint32_t handOutCount = 0;
    // Block size with header (general pool).
    std::uint32_t blockSize = 0;
    // Serial of the allocation that last took it.
    std::uint32_t serial = 0;
    // First and last block of its page.
    bool firstOfPage = false, lastOfPage = false;
    // The debug mark.
    bool debugMark = false;
};

class MemoryManager
{
public:
    // Where pages come from: a reservation of address space, backed piece by piece.
    struct SystemMemory
    {
        // Reserves bytes of address space, or gives null.
        void* (*reserve)(std::size_t);
        // Backs bytes of a reservation with memory; false when the system has none.
        bool (*commit)(void*, std::size_t);
        // Gives back a whole reservation.
        void (*release)(void*, std::size_t);
    };

    // A manager over `budget` bytes of pages; makes the first page of every class.
    explicit MemoryManager(std::uint32_t budget = Memory::kDefaultBudget, SystemMemory system = DefaultSystem());
    // Gives every page back (private instances only; the global one is never destroyed).
    ~MemoryManager();
    MemoryManager(const MemoryManager&) = delete;
    MemoryManager& operator=(const MemoryManager&) = delete;

    // The game's manager, made on first use and never destroyed.
    static MemoryManager& Global();
    // The platform's address space calls.
    static SystemMemory DefaultSystem();

    // A 16-byte aligned block of at least `size` bytes, or null when memory ran out.
    void* Allocate(std::size_t size);
    // Gives back a block; null, a block already free and pointers the manager does not own are
    // handled (the last go to free).
    void Free(void* pointer);

    // The size class that serves `size` bytes: 0 to 7, or 8 for the general path.
    static int ClassFor(std::size_t size);
    // The largest request the general pool serves; larger ones go to malloc.
    std::size_t LargestGeneralRequest() const { return m_LargestGeneral; }
    // Bytes of a page of class `index`.
    std::uint32_t PageSize(int index) const { return m_PageSize[index]; }
    // Bytes of a block of fixed class `index`, header included.
    std::uint32_t BlockSize(int index) const { return m_BlockSize[index]; }
    // Most pages the manager can make: the slots of its reservation.
    int PageLimit() const { return m_SlotCount; }
    // Bytes of address space from one page's start to the next one's.
    std::size_t SlotSize() const { return std::size_t{1} << m_SlotShift; }
    // Blocks in one page of fixed class `index`.
    std::uint32_t BlocksPerPage(int index) const { return m_BlockSize[index] ? m_PageSize[index] / m_BlockSize[index] : 0; }
    // Turns the debug mark of newly taken blocks on or off.
    void SetDebug(bool on) { m_DebugMark.store(on ? Memory::kDebugMark : 0, std::memory_order_relaxed); }

    // The counts of every class.
    MemoryStatistics Statistics() const;
    // Walks every page and counts the blocks marked in use, per class (for checks and tools).
    std::array<std::uint64_t, Memory::kClassCount> CountBlocksInUse() const;
    // What the header of `pointer`'s block says; owned is false for pointers the manager does not own.
    MemoryBlockInfo Inspect(void* pointer) const;

private:
    // One page: its blocks, the next-page word behind them.
    struct PageRecord
    {
        unsigned char* begin;
        unsigned char* end;
        // Fixed classes: the first block whose header is not written yet; it and those behind it
        // are free. Headers are written as blocks are first taken, so a new page costs no writes.
        unsigned char* fresh;
        int sizeClass;
        // Reciprocal for the test "a whole number of blocks from the start".
        std::uint64_t strideMagic;
    };
    static constexpr int kStackDepth = 32;
    // A thread's free stacks and counts, written only by the thread holding its number. A stack's
    // pushes and pops are also the thread's frees and allocations of its class that went through
    // the stack, so the common paths count by moving the stack; its depth is their difference.
    // A whole number of system pages, so that a thread's number finds its cache with a shift.
    struct alignas(4096) ThreadCache
    {
        // Blocks put on each class's stack so far, and taken off it.
        std::atomic<std::uint64_t> pushes[Memory::kFixedClassCount];
        std::atomic<std::uint64_t> pops[Memory::kFixedClassCount];
        // Each class's stack, bottom first.
        Memory::BlockHeader* blocks[Memory::kFixedClassCount][kStackDepth];
        // Allocations and frees that did not go through a stack.
        std::atomic<std::uint64_t> allocations[Memory::kClassCount];
        std::atomic<std::uint64_t> frees[Memory::kClassCount];
        // The thread's next serial and the end of its batch.
        std::uint32_t nextSerial;
        std::uint32_t serialEnd;

        // The block of `sizeClass` freed last, taken off its stack, or null when the stack is empty.
        Memory::BlockHeader* Pop(int sizeClass)
        {
            const std::uint64_t popped = pops[sizeClass].load(std::memory_order_relaxed);
            const std::uint64_t depth = pushes[sizeClass].load(std::memory_order_relaxed) - popped;
            if (depth == 0)
                return nullptr;
            pops[sizeClass].store(popped + 1, std::memory_order_relaxed);
            return blocks[sizeClass][depth - 1];
        }
        // True when the stack of `sizeClass` holds kStackDepth blocks.
        bool Full(int sizeClass) const
        {
            return pushes[sizeClass].load(std::memory_order_relaxed) - pops[sizeClass].load(std::memory_order_relaxed) >=
                   kStackDepth;
        }
        // Puts a block on the stack of `sizeClass`, which is not full.
        void Push(int sizeClass, Memory::BlockHeader* header)
        {
            const std::uint64_t pushed = pushes[sizeClass].load(std::memory_order_relaxed);
            blocks[sizeClass][pushed - pops[sizeClass].load(std::memory_order_relaxed)] = header;
            pushes[sizeClass].store(pushed + 1, std::memory_order_relaxed);
        }
    };
    // Slots reserved when the reservation can be had; fewer are tried when it cannot.
    static constexpr int kMaxPages = 1024;

    // Everything but a block from the thread's own stack.
    [[gnu::noinline]] void* AllocateSlow(std::size_t size);
    void* AllocateFixed(int sizeClass, int slot);
    // Frees of the general pool, foreign pointers, bad addresses, double frees, full stacks and
    // threads without a number.
    [[gnu::noinline]] void FreeSlow(void* pointer, const PageRecord* page);
    // A fixed-class free off the common path.
    void FreeFixed(Memory::BlockHeader* header, int sizeClass);
    void* AllocateGeneral(std::size_t size, int slot);
    void* AllocateLarge(std::size_t size);
    // Scan of a fixed class under the lock; null when no page could be had.
    Memory::BlockHeader* ScanFixed(int sizeClass);
    // First fit in the general pool under the lock; null when no page could be had.
    Memory::BlockHeader* FirstFitGeneral(std::size_t need);
    // Writes the header of a page's first fresh block and gives it, or null when the page has none.
    Memory::BlockHeader* TakeFresh(PageRecord* page);
    // The first block of `page` not yet handed out since the page was made.
    static unsigned char* FreshOf(const PageRecord& page)
    {
        return std::atomic_ref<unsigned char* const>(page.fresh).load(std::memory_order_relaxed);
    }
    // Makes a page of `sizeClass` under the lock and links it; null when the system gives none.
    unsigned char* AllocatePage(int sizeClass);
    // Marks a block taken: in use, serial, hand-out count.
    void Take(Memory::BlockHeader* header, std::uint64_t state, ThreadCache* cache);
    std::uint32_t NextSerial(ThreadCache* cache);
    void CountAllocation(int sizeClass, ThreadCache* cache);
    void CountFree(int sizeClass, ThreadCache* cache);
    // True when `address` lies at a block of `page` that has been taken at least once: before the
    // untouched blocks and, in a fixed class, a whole number of blocks from the page's start.
    static bool AtBlock(const PageRecord& page, std::uintptr_t address);
    // The page whose slot holds `address`, or null when the address lies in no slot in use.
    const PageRecord* SlotPage(std::uintptr_t address) const
    {
        const std::uintptr_t index = (address - reinterpret_cast<std::uintptr_t>(m_Base)) >> m_SlotShift;
        return index < static_cast<std::uintptr_t>(m_PageRecords.load(std::memory_order_acquire)) ? &m_Pages[index]
                                                                                                   : nullptr;
    }
    // True when `address` lies in the manager's reservation.
    bool InReservation(std::uintptr_t address) const
    {
        return address - reinterpret_cast<std::uintptr_t>(m_Base) <
               (std::uintptr_t{static_cast<unsigned>(m_SlotCount)} << m_SlotShift);
    }
    // Reports that no page could be had, outside the lock.
    void ReportOutOfMemory();
    // The next-page word of a page.
    std::atomic_ref<unsigned char*> NextPageWord(unsigned char* page, int sizeClass) const;
    ThreadCache* CacheFor(int slot) { return slot >= 0 ? &m_Caches[slot] : nullptr; }

    SystemMemory m_System;
    // The reservation: m_SlotCount slots of 2^m_SlotShift bytes from m_Base.
    unsigned char* m_Base = nullptr;
    int m_SlotShift = 0;
    int m_SlotCount = 0;
    // The debug mark while the debug switch is on, else 0: or-ed into the state of each block taken.
    std::atomic<std::uint64_t> m_DebugMark{0};
    std::array<std::uint32_t, Memory::kClassCount> m_PageSize{};
    std::array<std::uint32_t, Memory::kClassCount> m_BlockSize{};
    // Bytes of blocks in a page (the page size rounded down to the alignment for the general pool).
    std::array<std::uint32_t, Memory::kClassCount> m_PageArea{};
    std::size_t m_LargestGeneral = 0;

    mutable std::mutex m_Lock;
    std::array<unsigned char*, Memory::kClassCount> m_FirstPage{};
    std::array<unsigned char*, Memory::kClassCount> m_LastPage{};
    std::array<Memory::BlockHeader*, Memory::kClassCount> m_Cursor{};
    std::array<PageRecord*, Memory::kClassCount> m_CursorPage{};
    std::array<std::uint32_t, Memory::kClassCount> m_PageCount{};
    PageRecord m_Pages[kMaxPages];
    // Pages made so far; page i lies in slot i.
    std::atomic<int> m_PageRecords{0};

    std::atomic<std::uint32_t> m_Serial{1};
    // Counts of threads without a number.
    std::atomic<std::uint64_t> m_SharedAllocations[Memory::kClassCount]{};
    std::atomic<std::uint64_t> m_SharedFrees[Memory::kClassCount]{};
    std::atomic<std::uint64_t> m_LargeAllocations{0};
    std::atomic<std::uint64_t> m_ForeignFrees{0};
    ThreadCache m_Caches[Memory::kThreadSlots]{};
};
}
