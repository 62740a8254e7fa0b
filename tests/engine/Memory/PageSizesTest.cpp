#include "engine/Memory/PageSizes.h"

#include "engine/Memory/BlockHeader.h"

#include <gtest/gtest.h>

using namespace Engine::Memory;

TEST(PageSizesTest, EightByteHeadersGiveTheClassicTable)
{
    const auto sizes = ComputePageSizes(kDefaultBudget, 8, 8);
    const std::array<std::uint32_t, kClassCount> expected = {13150448, 23013288, 692160,  10035936, 518976,
                                                             1384416,  1211600,  1210536, 1211230};
    EXPECT_EQ(sizes, expected);
    const std::array<std::uint32_t, kFixedClassCount> blocks = {821903, 958887, 17304, 139388, 3816, 5244, 2330, 1173};
    for (int index = 0; index < kFixedClassCount; ++index)
    {
        EXPECT_EQ(sizes[index] % BlockSizeOf(index, 8, 8), 0u) << index;
        EXPECT_EQ(sizes[index] / BlockSizeOf(index, 8, 8), blocks[index]) << index;
    }
}

TEST(PageSizesTest, SixteenByteHeadersGiveWholeAlignedBlocksWithinTheBudget)
{
    const auto sizes = ComputePageSizes(kDefaultBudget, kHeaderSize, kAlignment);
    const std::array<std::uint32_t, kClassCount> expected = {13150432, 23013280, 692160,  10035920, 518976,
                                                             1384480,  1210704,  1210560, 1211230};
    EXPECT_EQ(sizes, expected);
    std::uint64_t total = 0;
    for (int index = 0; index < kFixedClassCount; ++index)
    {
        EXPECT_EQ(BlockSizeOf(index, kHeaderSize, kAlignment) % kAlignment, 0u) << index;
        EXPECT_EQ(sizes[index] % BlockSizeOf(index, kHeaderSize, kAlignment), 0u) << index;
        total += sizes[index];
    }
    // The general pool's share does not depend on the block sizes.
    EXPECT_EQ(sizes[kGeneralClass], 1211230u);
    EXPECT_LE(total + sizes[kGeneralClass], kDefaultBudget + 8 * 1040u);
}

TEST(PageSizesTest, ATinyBudgetStillGivesEveryFixedClassOneBlock)
{
    const auto sizes = ComputePageSizes(10, kHeaderSize, kAlignment);
    for (int index = 0; index < kFixedClassCount; ++index)
        EXPECT_EQ(sizes[index], BlockSizeOf(index, kHeaderSize, kAlignment)) << index;
    // Shares of 2, 4, 0, 1, 0, 0, 0 and 0 bytes leave 3 for the general pool.
    EXPECT_EQ(sizes[kGeneralClass], 3u);
}
