// The page sizes of the memory manager's size classes, computed from fixed
// weights over a total budget.
//
// Each of the eight fixed classes gets the share weight x budget / 303 of the
// budget (truncated), rounded to a whole number of its blocks: the smallest
// count of blocks covering the share, one fewer when that overshoots the share
// by no more than half a block. The general pool gets what the shares of the
// fixed classes leave. The block size of a class depends on its header and
// alignment, so it is a parameter: with a header of 8 bytes and no rounding the
// computation gives the classic table (13150448 bytes for the 8-byte class,
// 1211230 for the general pool); the manager uses its own 16-byte header.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace Engine::Memory
{
// Number of size classes: eight fixed ones and the general pool.
inline constexpr int kClassCount = 9;
// Number of fixed size classes (payloads 8 to 1024 bytes).
inline constexpr int kFixedClassCount = 8;
// Index of the general pool.
inline constexpr int kGeneralClass = 8;
// The budget the pages are carved from: 50 MiB.
inline constexpr std::uint32_t kDefaultBudget = 52428800;
// The weights of the classes 0 to 8; they add up to 303.
inline constexpr std::array<std::uint32_t, kClassCount> kWeights = {76, 133, 4, 58, 3, 8, 7, 7, 7};

// Payload of fixed class `index`: 8 << index bytes.
constexpr std::size_t ClassPayload(int index) { return std::size_t{8} << index; }

// Size of one block of fixed class `index`: payload plus header, rounded up to `alignment`.
constexpr std::size_t BlockSizeOf(int index, std::size_t headerSize, std::size_t alignment)
{
    const std::size_t raw = ClassPayload(index) + headerSize;
    return (raw + alignment - 1) / alignment * alignment;
}

// The page size of every class for `budget` bytes, with blocks of payload + headerSize rounded up
// to `alignment`.
std::array<std::uint32_t, kClassCount> ComputePageSizes(std::uint32_t budget, std::size_t headerSize,
                                                        std::size_t alignment);
}
