#include "engine/Memory/MemoryManager.h"

#include "engine/Log.h"
#include "platform/AddressSpace.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <new>

namespace Engine
{
using Memory::BlockHeader;
using Memory::kGeneralClass;
using Memory::kFixedClassCount;
using Memory::kClassCount;
using Memory::kHeaderSize;
using Memory::kAlignment;
using Memory::CountOfState;
using Memory::ClassOfState;
using Memory::WithCount;

namespace
{
// True on a thread that is reporting; its allocations meanwhile go to malloc.
thread_local bool t_Reporting = false;

constexpr std::size_t RoundUp(std::size_t value, std::size_t alignment)
{
    return (value + alignment - 1) / alignment * alignment;
}

// Lemire's divisibility test: n % d == 0 for 32-bit n, with magic = UINT64_MAX / d + 1.
bool IsMultiple(std::uint64_t n, std::uint64_t magic) { return n * magic <= magic - 1; }
}

MemoryManager::SystemMemory MemoryManager::DefaultSystem()
{
    return {Platform::ReserveAddressSpace, Platform::CommitAddressSpace, Platform::ReleaseAddressSpace};
}

MemoryManager& MemoryManager::Global()
{
    alignas(MemoryManager) static unsigned char storage[sizeof(MemoryManager)];
    static MemoryManager* manager = new (storage) MemoryManager();
    return *manager;
}

MemoryManager::MemoryManager(std::uint32_t budget, SystemMemory system) : m_System(system)
{
    m_PageSize = Memory::ComputePageSizes(budget, kHeaderSize, kAlignment);
    for (int index = 0; index < kFixedClassCount; ++index)
    {
        m_BlockSize[index] = static_cast<std::uint32_t>(Memory::BlockSizeOf(index, kHeaderSize, kAlignment));
        m_PageArea[index] = m_PageSize[index];
    }
    m_PageArea[kGeneralClass] = m_PageSize[kGeneralClass] / kAlignment * kAlignment;
    // A request is served by the general pool while twice its block fits in a page.
    const std::size_t half = m_PageSize[kGeneralClass] / 2;
    m_LargestGeneral = half >= kHeaderSize + kAlignment ? (half / kAlignment * kAlignment) - kHeaderSize : 0;

    // One slot holds the largest page and its next-page word, in whole system pages; a smaller
    // reservation is tried while the full one cannot be had.
    std::size_t largest = 0;
    for (int index = 0; index < kClassCount; ++index)
        largest = std::max<std::size_t>(largest, m_PageArea[index] + sizeof(void*));
    m_SlotShift = std::max(16, static_cast<int>(std::bit_width(largest - 1)));
    for (int slots = kMaxPages; slots >= 1 && !m_Base; slots /= 2)
        if ((m_Base = static_cast<unsigned char*>(m_System.reserve(std::size_t(slots) << m_SlotShift))))
            m_SlotCount = slots;

    // A class whose first page cannot be had tries again, and reports, at its first allocation.
    std::lock_guard<std::mutex> lock(m_Lock);
    for (int index = 0; index < kClassCount; ++index)
        if (m_PageArea[index] >= kHeaderSize + kAlignment)
            AllocatePage(index);
}

MemoryManager::~MemoryManager()
{
    if (m_Base)
        m_System.release(m_Base, std::size_t(m_SlotCount) << m_SlotShift);
}

int MemoryManager::ClassFor(std::size_t size)
{
    if (size > 1024)
        return kGeneralClass;
    return std::bit_width(std::max<std::size_t>(size, 8) - 1) - 3;
}

std::atomic_ref<unsigned char*> MemoryManager::NextPageWord(unsigned char* page, int sizeClass) const
{
    return std::atomic_ref<unsigned char*>(*reinterpret_cast<unsigned char**>(page + m_PageArea[sizeClass]));
}

void* MemoryManager::Allocate(std::size_t size)
{
    // The common path: a block from the thread's own stack, no lock.
    const int slot = Memory::t_ThreadSlot;
    if (size <= 1024 && slot >= 0) [[likely]]
    {
        const int sizeClass = ClassFor(size);
        ThreadCache& cache = m_Caches[slot];
        if (BlockHeader* header = cache.Pop(sizeClass)) [[likely]]
        {
            Take(header, header->Load(std::memory_order_relaxed), &cache);
            return header->Payload();
        }
    }
    return AllocateSlow(size);
}

void* MemoryManager::AllocateSlow(std::size_t size)
{
    if (t_Reporting) [[unlikely]]
        return std::malloc(size != 0 ? size : 1);
    const int slot = Memory::CurrentThreadSlot();
    if (size <= 1024)
        return AllocateFixed(ClassFor(size), slot);
    if (size <= m_LargestGeneral)
        return AllocateGeneral(size, slot);
    return AllocateLarge(size);
}

void* MemoryManager::AllocateFixed(int sizeClass, int slot)
{
    ThreadCache* cache = CacheFor(slot);
    if (cache)
        if (BlockHeader* header = cache->Pop(sizeClass))
        {
            Take(header, header->Load(std::memory_order_relaxed), cache);
            return header->Payload();
        }
    BlockHeader* header;
    {
        std::lock_guard<std::mutex> lock(m_Lock);
        header = ScanFixed(sizeClass);
        if (header)
        {
            Take(header, header->Load(std::memory_order_relaxed), cache);
            CountAllocation(sizeClass, cache);
        }
    }
    if (!header)
    {
        ReportOutOfMemory();
        return nullptr;
    }
    return header->Payload();
}

void* MemoryManager::AllocateGeneral(std::size_t size, int slot)
{
    const std::size_t need = RoundUp(size + kHeaderSize, kAlignment);
    BlockHeader* header;
    {
        std::lock_guard<std::mutex> lock(m_Lock);
        header = FirstFitGeneral(need);
        if (header)
        {
            std::uint64_t state = header->Load(std::memory_order_relaxed);
            const std::size_t remainder = CountOfState(state) - need;
            if (remainder > 1024)
            {
                auto* rest = reinterpret_cast<BlockHeader*>(reinterpret_cast<unsigned char*>(header) + need);
                rest->serial = 0;
                rest->reserved = 0;
                rest->Store(WithCount((std::uint64_t{kGeneralClass} << Memory::kClassShift) | (state & Memory::kLastOfPage),
                                      static_cast<std::uint32_t>(remainder)),
                            std::memory_order_relaxed);
                state = WithCount(state & ~Memory::kLastOfPage, static_cast<std::uint32_t>(need));
            }
            header->serial = NextSerial(CacheFor(slot));
            header->Store(state | Memory::kInUse | m_DebugMark.load(std::memory_order_relaxed),
                          std::memory_order_release);
            CountAllocation(kGeneralClass, CacheFor(slot));
        }
    }
    if (!header)
    {
        ReportOutOfMemory();
        return nullptr;
    }
    return header->Payload();
}

void* MemoryManager::AllocateLarge(std::size_t size)
{
    m_LargeAllocations.fetch_add(1, std::memory_order_relaxed);
    return std::malloc(size);
}

inline void MemoryManager::Take(BlockHeader* header, std::uint64_t state, ThreadCache* cache)
{
    std::uint32_t count = CountOfState(state);
    count += count < Memory::kMaxHandOutCount;
    const std::uint64_t taken = (state & 0x7E) | Memory::kInUse | (std::uint64_t{count} << Memory::kCountShift) |
                                m_DebugMark.load(std::memory_order_relaxed);
    header->serial = NextSerial(cache);
    header->Store(taken, std::memory_order_relaxed);
}

inline std::uint32_t MemoryManager::NextSerial(ThreadCache* cache)
{
    if (!cache)
        return m_Serial.fetch_add(1, std::memory_order_relaxed);
    std::uint32_t serial = cache->nextSerial;
    if (serial == cache->serialEnd) [[unlikely]]
    {
        constexpr std::uint32_t kBatch = 256;
        serial = m_Serial.fetch_add(kBatch, std::memory_order_relaxed);
        cache->serialEnd = serial + kBatch;
    }
    cache->nextSerial = serial + 1;
    return serial;
}

inline void MemoryManager::CountAllocation(int sizeClass, ThreadCache* cache)
{
    if (cache)
        cache->allocations[sizeClass].store(cache->allocations[sizeClass].load(std::memory_order_relaxed) + 1,
                                            std::memory_order_relaxed);
    else
        m_SharedAllocations[sizeClass].fetch_add(1, std::memory_order_relaxed);
}

inline void MemoryManager::CountFree(int sizeClass, ThreadCache* cache)
{
    if (cache)
        cache->frees[sizeClass].store(cache->frees[sizeClass].load(std::memory_order_relaxed) + 1,
                                      std::memory_order_relaxed);
    else
        m_SharedFrees[sizeClass].fetch_add(1, std::memory_order_relaxed);
}

BlockHeader* MemoryManager::TakeFresh(PageRecord* page)
{
    unsigned char* at = page->fresh;
    if (at >= page->end)
        return nullptr;
    const std::uint32_t stride = m_BlockSize[page->sizeClass];
    auto* header = reinterpret_cast<BlockHeader*>(at);
    header->serial = 0;
    header->reserved = 0;
    std::uint64_t state = std::uint64_t(page->sizeClass) << Memory::kClassShift;
    if (at == page->begin)
        state |= Memory::kFirstOfPage;
    if (at + stride >= page->end)
        state |= Memory::kLastOfPage;
    header->Store(state, std::memory_order_relaxed);
    std::atomic_ref<unsigned char*>(page->fresh).store(at + stride, std::memory_order_release);
    return header;
}

BlockHeader* MemoryManager::ScanFixed(int sizeClass)
{
    const std::uint32_t stride = m_BlockSize[sizeClass];
    auto isFree = [](BlockHeader* header) {
        return (header->Load() & (Memory::kInUse | Memory::kHeldByThread)) == 0;
    };
    auto takeAt = [&](BlockHeader* header, PageRecord* page) {
        m_Cursor[sizeClass] = header;
        m_CursorPage[sizeClass] = page;
        return header;
    };
    PageRecord* cursorPage = m_CursorPage[sizeClass];
    if (cursorPage)
    {
        unsigned char* cursor = reinterpret_cast<unsigned char*>(m_Cursor[sizeClass]);
        // From the cursor to the end of its page (the fresh blocks lie at its end), then from the
        // page's start up to the cursor.
        for (unsigned char* at = cursor; at < cursorPage->fresh; at += stride)
            if (isFree(reinterpret_cast<BlockHeader*>(at)))
                return takeAt(reinterpret_cast<BlockHeader*>(at), cursorPage);
        if (BlockHeader* fresh = TakeFresh(cursorPage))
            return takeAt(fresh, cursorPage);
        for (unsigned char* at = cursorPage->begin; at < cursor && at < cursorPage->fresh; at += stride)
            if (isFree(reinterpret_cast<BlockHeader*>(at)))
                return takeAt(reinterpret_cast<BlockHeader*>(at), cursorPage);
    }
    // Every other page of the chain, in order.
    const int records = m_PageRecords.load(std::memory_order_relaxed);
    for (int index = 0; index < records; ++index)
    {
        PageRecord* page = &m_Pages[index];
        if (page->sizeClass != sizeClass || page == cursorPage)
            continue;
        for (unsigned char* at = page->begin; at < page->fresh; at += stride)
            if (isFree(reinterpret_cast<BlockHeader*>(at)))
                return takeAt(reinterpret_cast<BlockHeader*>(at), page);
        if (BlockHeader* fresh = TakeFresh(page))
            return takeAt(fresh, page);
    }
    if (!AllocatePage(sizeClass))
        return nullptr;
    PageRecord* page = &m_Pages[m_PageRecords.load(std::memory_order_relaxed) - 1];
    return takeAt(TakeFresh(page), page);
}

BlockHeader* MemoryManager::FirstFitGeneral(std::size_t need)
{
    unsigned char* page = m_FirstPage[kGeneralClass];
    for (;;)
    {
        if (!page)
        {
            page = AllocatePage(kGeneralClass);
            if (!page)
                return nullptr;
        }
        unsigned char* at = page;
        for (;;)
        {
            auto* header = reinterpret_cast<BlockHeader*>(at);
            std::uint64_t state = header->Load();
            std::uint32_t size = CountOfState(state);
            if ((state & Memory::kInUse) == 0)
            {
                // Merge the free blocks behind this one in the same page.
                while ((state & Memory::kLastOfPage) == 0)
                {
                    auto* next = reinterpret_cast<BlockHeader*>(at + size);
                    const std::uint64_t nextState = next->Load();
                    if (nextState & Memory::kInUse)
                        break;
                    size += CountOfState(nextState);
                    state = WithCount(state | (nextState & Memory::kLastOfPage), size);
                }
                header->Store(state, std::memory_order_relaxed);
                if (size >= need)
                    return header;
            }
            if (state & Memory::kLastOfPage)
                break;
            at += size;
        }
        page = NextPageWord(page, kGeneralClass).load(std::memory_order_relaxed);
    }
}

unsigned char* MemoryManager::AllocatePage(int sizeClass)
{
    const int record = m_PageRecords.load(std::memory_order_relaxed);
    if (record >= m_SlotCount)
        return nullptr;
    const std::uint32_t area = m_PageArea[sizeClass];
    unsigned char* page = m_Base + (std::size_t(record) << m_SlotShift);
    if (!m_System.commit(page, area + sizeof(void*)))
        return nullptr;
    NextPageWord(page, sizeClass).store(nullptr, std::memory_order_relaxed);

    const std::uint64_t classBits = std::uint64_t(sizeClass) << Memory::kClassShift;
    if (sizeClass == kGeneralClass)
    {
        auto* header = reinterpret_cast<BlockHeader*>(page);
        header->serial = 0;
        header->reserved = 0;
        header->Store(WithCount(classBits | Memory::kFirstOfPage | Memory::kLastOfPage, area), std::memory_order_relaxed);
    }

    PageRecord& entry = m_Pages[record];
    entry.begin = page;
    entry.end = page + area;
    entry.fresh = sizeClass == kGeneralClass ? entry.end : page;
    entry.sizeClass = sizeClass;
    entry.strideMagic = sizeClass == kGeneralClass ? 0 : UINT64_MAX / m_BlockSize[sizeClass] + 1;
    m_PageRecords.store(record + 1, std::memory_order_release);

    if (m_LastPage[sizeClass])
        NextPageWord(m_LastPage[sizeClass], sizeClass).store(page, std::memory_order_release);
    else
        m_FirstPage[sizeClass] = page;
    m_LastPage[sizeClass] = page;
    ++m_PageCount[sizeClass];
    if (sizeClass != kGeneralClass && !m_CursorPage[sizeClass])
    {
        m_Cursor[sizeClass] = reinterpret_cast<BlockHeader*>(page);
        m_CursorPage[sizeClass] = &entry;
    }
    return page;
}

inline bool MemoryManager::AtBlock(const PageRecord& page, std::uintptr_t address)
{
    // A page starts its slot, so an address of the slot is never before the page's start; the
    // general pool's untouched mark is the page's end.
    const std::uintptr_t begin = reinterpret_cast<std::uintptr_t>(page.begin);
    return address < reinterpret_cast<std::uintptr_t>(FreshOf(page)) &&
           (page.sizeClass == kGeneralClass || IsMultiple(address - begin, page.strideMagic));
}

void MemoryManager::Free(void* pointer)
{
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(pointer) - kHeaderSize;
    const PageRecord* page = SlotPage(address);
    const int slot = Memory::t_ThreadSlot;
    // The common path: a block of a fixed class, in use, onto the thread's own stack with room,
    // no lock. Everything else (and a thread without its number yet) goes the slow way.
    if (page && slot >= 0 && page->sizeClass != kGeneralClass && AtBlock(*page, address)) [[likely]]
    {
        auto* header = reinterpret_cast<BlockHeader*>(address);
        const std::uint64_t state = header->Load(std::memory_order_relaxed);
        ThreadCache& cache = m_Caches[slot];
        const int sizeClass = page->sizeClass;
        if ((state & Memory::kInUse) && !cache.Full(sizeClass)) [[likely]]
        {
            header->Store((state & ~Memory::kInUse) | Memory::kHeldByThread);
            cache.Push(sizeClass, header);
            return;
        }
    }
    FreeSlow(pointer, page);
}

void MemoryManager::FreeSlow(void* pointer, const PageRecord* page)
{
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(pointer) - kHeaderSize;
    if (!InReservation(address))
    {
        if (pointer)
        {
            m_ForeignFrees.fetch_add(1, std::memory_order_relaxed);
            std::free(pointer);
        }
        return;
    }
    // In the reservation, a pointer must be at a block of a page.
    if (!page || !AtBlock(*page, address))
    {
        LOG("ERROR", "Bad free address");
        return;
    }
    auto* header = BlockHeader::Of(pointer);
    if (page->sizeClass != kGeneralClass)
    {
        FreeFixed(header, page->sizeClass);
        return;
    }
    std::lock_guard<std::mutex> lock(m_Lock);
    const std::uint64_t state = header->Load(std::memory_order_relaxed);
    if ((state & Memory::kInUse) == 0)
        return;
    header->Store(state & ~Memory::kInUse);
    CountFree(kGeneralClass, CacheFor(Memory::CurrentThreadSlot()));
}

void MemoryManager::FreeFixed(BlockHeader* header, int sizeClass)
{
    const std::uint64_t state = header->Load(std::memory_order_relaxed);
    if ((state & Memory::kInUse) == 0)
        return;
    // A reporting thread's number is negative for the while, so it uses no stack.
    ThreadCache* cache = CacheFor(Memory::CurrentThreadSlot());
    if (cache && !cache->Full(sizeClass))
    {
        header->Store((state & ~Memory::kInUse) | Memory::kHeldByThread);
        cache->Push(sizeClass, header);
        return;
    }
    // A full stack: the block is only marked free, and a later scan finds it.
    header->Store(state & ~Memory::kInUse);
    CountFree(sizeClass, cache);
}

void MemoryManager::ReportOutOfMemory()
{
    if (t_Reporting)
        return;
    // Meanwhile the thread's allocations go to malloc and its frees skip its stacks.
    t_Reporting = true;
    const int slot = Memory::t_ThreadSlot;
    Memory::t_ThreadSlot = -3;
    FATAL_ERROR_IN("Engine::MemoryManager::AllocatePage", "Out of memory.  Sorry.");
    Memory::t_ThreadSlot = slot;
    t_Reporting = false;
}

MemoryStatistics MemoryManager::Statistics() const
{
    MemoryStatistics result;
    for (int index = 0; index < kClassCount; ++index)
    {
        MemoryClassStatistics& entry = result.classes[index];
        entry.allocations = m_SharedAllocations[index].load(std::memory_order_relaxed);
        entry.frees = m_SharedFrees[index].load(std::memory_order_relaxed);
        for (const ThreadCache& cache : m_Caches)
        {
            entry.allocations += cache.allocations[index].load(std::memory_order_relaxed);
            entry.frees += cache.frees[index].load(std::memory_order_relaxed);
            if (index < kFixedClassCount)
            {
                entry.allocations += cache.pops[index].load(std::memory_order_relaxed);
                entry.frees += cache.pushes[index].load(std::memory_order_relaxed);
            }
        }
        entry.live = entry.allocations >= entry.frees ? entry.allocations - entry.frees : 0;
        entry.pageSize = m_PageSize[index];
        entry.blockSize = m_BlockSize[index];
    }
    {
        std::lock_guard<std::mutex> lock(m_Lock);
        for (int index = 0; index < kClassCount; ++index)
            result.classes[index].pages = m_PageCount[index];
    }
    result.largeAllocations = m_LargeAllocations.load(std::memory_order_relaxed);
    result.foreignFrees = m_ForeignFrees.load(std::memory_order_relaxed);
    return result;
}

std::array<std::uint64_t, kClassCount> MemoryManager::CountBlocksInUse() const
{
    std::array<std::uint64_t, kClassCount> counts{};
    std::lock_guard<std::mutex> lock(m_Lock);
    const int records = m_PageRecords.load(std::memory_order_acquire);
    for (int index = 0; index < records; ++index)
    {
        const PageRecord& page = m_Pages[index];
        for (unsigned char* at = page.begin; at < page.fresh;)
        {
            const std::uint64_t state = reinterpret_cast<BlockHeader*>(at)->Load();
            if (state & Memory::kInUse)
                ++counts[page.sizeClass];
            if (page.sizeClass == kGeneralClass)
            {
                if (CountOfState(state) == 0)
                    break;
                at += CountOfState(state);
            }
            else
            {
                at += m_BlockSize[page.sizeClass];
            }
        }
    }
    return counts;
}

MemoryBlockInfo MemoryManager::Inspect(void* pointer) const
{
    MemoryBlockInfo info;
    if (!pointer)
        return info;
    auto* address = static_cast<unsigned char*>(pointer) - kHeaderSize;
    const PageRecord* page = SlotPage(reinterpret_cast<std::uintptr_t>(address));
    if (!page || !AtBlock(*page, reinterpret_cast<std::uintptr_t>(address)))
        return info;
    const auto* header = reinterpret_cast<const BlockHeader*>(address);
    const std::uint64_t state = header->Load();
    info.owned = true;
    info.inUse = (state & Memory::kInUse) != 0;
    info.heldByThread = (state & Memory::kHeldByThread) != 0;
    info.sizeClass = ClassOfState(state);
    if (info.sizeClass == kGeneralClass)
        info.blockSize = CountOfState(state);
    else
        info.handOutCount = CountOfState(state);
    info.serial = header->serial;
    info.firstOfPage = (state & Memory::kFirstOfPage) != 0;
    info.lastOfPage = (state & Memory::kLastOfPage) != 0;
    info.debugMark = (state & Memory::kDebugMark) != 0;
    return info;
}
}
