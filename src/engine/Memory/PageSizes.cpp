#include "engine/Memory/PageSizes.h"

namespace Engine::Memory
{
std::array<std::uint32_t, kClassCount> ComputePageSizes(std::uint32_t budget, std::size_t headerSize,
                                                        std::size_t alignment)
{
    std::uint64_t weightSum = 0;
    for (std::uint32_t weight : kWeights)
        weightSum += weight;

    std::array<std::uint32_t, kClassCount> sizes{};
    std::int64_t remainder = budget;
    for (int index = 0; index < kFixedClassCount; ++index)
    {
        const std::uint64_t share = std::uint64_t{kWeights[index]} * budget / weightSum;
        const std::uint64_t block = BlockSizeOf(index, headerSize, alignment);
        std::uint64_t count = (share + block - 1) / block;
        if (count < 1)
            count = 1;
        std::uint64_t size = count * block;
        // Overshooting the share by half a block or less: one block fewer (never none).
        if (size > share && size - share <= block / 2)
            size = count > 1 ? (count - 1) * block : block;
        sizes[index] = static_cast<std::uint32_t>(size);
        remainder -= static_cast<std::int64_t>(share);
    }
    sizes[kGeneralClass] = remainder > 0 ? static_cast<std::uint32_t>(remainder) : 0;
    return sizes;
}
}
