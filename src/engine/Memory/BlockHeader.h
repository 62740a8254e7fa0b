// The header in front of every block the memory manager hands out.
//
// Sixteen bytes, so that payloads keep the 16-byte alignment the platform's
// operator new promises: a 32-bit serial (the allocation that last took the
// block), 32 bits unused, and a 64-bit state word. The state's low 32 bits are
// the classic flag word: bit 0 in use, bits 1 to 4 the class, bit 5 first block
// of its page, bit 6 last block of its page, bit 7 the debug mark, bits 8 to 31
// the hand-out count (fixed classes, stopping at 0xFFFFFF) or the block's size,
// header included (general pool). Bit 32 marks a free block held in a thread's
// free stack, which a scan must not take. The state is read and written as one
// atomic word, so a block changes hands between threads in a single step.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace Engine::Memory
{
// Bytes of header in front of each payload.
inline constexpr std::size_t kHeaderSize = 16;
// Alignment of every payload and block.
inline constexpr std::size_t kAlignment = 16;

// State bit: the block is handed out.
inline constexpr std::uint64_t kInUse = 1;
// State bits 1 to 4: the size class.
inline constexpr int kClassShift = 1;
// State bit: first block of its page.
inline constexpr std::uint64_t kFirstOfPage = 1u << 5;
// State bit: last block of its page.
inline constexpr std::uint64_t kLastOfPage = 1u << 6;
// State bit: the debug mark, set on blocks taken while the manager's debug byte is on.
inline constexpr std::uint64_t kDebugMark = 1u << 7;
// State bits 8 to 31: hand-out count or block size.
inline constexpr int kCountShift = 8;
// Largest hand-out count; the count stops there.
inline constexpr std::uint32_t kMaxHandOutCount = 0xFFFFFF;
// State bit: a free block held in a thread's free stack.
inline constexpr std::uint64_t kHeldByThread = std::uint64_t{1} << 32;

// One block header.
struct BlockHeader
{
    // Serial number of the allocation that last took this block.
    std::uint32_t serial;
    // Unused; keeps the state word aligned.
    std::uint32_t reserved;
    // The flag word described above.
    std::uint64_t state;

    // Reads the state word.
    std::uint64_t Load(std::memory_order order = std::memory_order_acquire) const
    {
        return std::atomic_ref<const std::uint64_t>(state).load(order);
    }
    // Writes the state word.
    void Store(std::uint64_t value, std::memory_order order = std::memory_order_release)
    {
        std::atomic_ref<std::uint64_t>(state).store(value, order);
    }
    // The payload behind this header.
    void* Payload() { return reinterpret_cast<unsigned char*>(this) + kHeaderSize; }
    // The header in front of `payload`.
    static BlockHeader* Of(void* payload)
    {
        return reinterpret_cast<BlockHeader*>(static_cast<unsigned char*>(payload) - kHeaderSize);
    }
};
static_assert(sizeof(BlockHeader) == kHeaderSize);

// The class field of a state word.
constexpr int ClassOfState(std::uint64_t state) { return static_cast<int>((state >> kClassShift) & 0xF); }
// The count or size field of a state word.
constexpr std::uint32_t CountOfState(std::uint64_t state)
{
    return static_cast<std::uint32_t>((state >> kCountShift) & 0xFFFFFF);
}
// A state word with `state`'s flags and `count` in the count or size field.
constexpr std::uint64_t WithCount(std::uint64_t state, std::uint32_t count)
{
    return (state & ~(std::uint64_t{0xFFFFFF} << kCountShift)) | (std::uint64_t{count & 0xFFFFFF} << kCountShift);
}
}
