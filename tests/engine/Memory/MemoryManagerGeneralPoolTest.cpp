#include "engine/Memory/MemoryManager.h"

#include "MemoryManagerTestSupport.h"

#include <gtest/gtest.h>

using namespace MemoryTest;

namespace
{
// The block size (header included) the general pool gives a request of `size` bytes.
std::uint32_t NeedOf(std::size_t size)
{
    return static_cast<std::uint32_t>((size + Engine::Memory::kHeaderSize + 15) / 16 * 16);
}
}

TEST(MemoryManagerGeneralPoolTest, ABlockIsSplitBehindTheRequestAndTheRestStaysFree)
{
    auto manager = MakeManager();
    void* first = manager->Allocate(2000);
    EXPECT_EQ(manager->Inspect(first).blockSize, NeedOf(2000));
    EXPECT_TRUE(manager->Inspect(first).firstOfPage);
    EXPECT_FALSE(manager->Inspect(first).lastOfPage);
    void* second = manager->Allocate(3000);
    EXPECT_EQ(static_cast<unsigned char*>(second), static_cast<unsigned char*>(first) + NeedOf(2000));
    // The rest of the page is one free block behind the second, carrying the last-of-page mark.
    void* rest = static_cast<unsigned char*>(second) + NeedOf(3000);
    const Engine::MemoryBlockInfo info = manager->Inspect(rest);
    EXPECT_TRUE(info.owned);
    EXPECT_FALSE(info.inUse);
    EXPECT_TRUE(info.lastOfPage);
    EXPECT_EQ(info.blockSize, manager->PageSize(8) / 16 * 16 - NeedOf(2000) - NeedOf(3000));
}

TEST(MemoryManagerGeneralPoolTest, ARemainderOfExactly1024IsNotSplit)
{
    auto manager = MakeManager();
    void* a = manager->Allocate(5000);
    void* fence = manager->Allocate(2000);
    manager->Free(a);
    // A request whose block is 1024 bytes smaller than a's takes all of a.
    const std::size_t request = NeedOf(5000) - 1024 - Engine::Memory::kHeaderSize;
    void* again = manager->Allocate(request);
    ASSERT_EQ(again, a);
    EXPECT_EQ(manager->Inspect(again).blockSize, NeedOf(5000));
    manager->Free(again);
    // 1040 bytes left over are split off.
    void* smaller = manager->Allocate(request - 16);
    ASSERT_EQ(smaller, a);
    EXPECT_EQ(manager->Inspect(smaller).blockSize, NeedOf(5000) - 1040);
    manager->Free(smaller);
    manager->Free(fence);
}

TEST(MemoryManagerGeneralPoolTest, FreeNeighboursAreMergedWhenAScanPassesThem)
{
    auto manager = MakeManager();
    void* a = manager->Allocate(3000);
    void* b = manager->Allocate(4000);
    void* c = manager->Allocate(5000);
    void* fence = manager->Allocate(2000);
    manager->Free(a);
    manager->Free(b);
    manager->Free(c);
    // Only the three merged hold this much; first fit takes them from a's address.
    const std::size_t merged = NeedOf(3000) + NeedOf(4000) + NeedOf(5000);
    void* big = manager->Allocate(merged - Engine::Memory::kHeaderSize);
    EXPECT_EQ(big, a);
    EXPECT_EQ(manager->Inspect(big).blockSize, merged);
    EXPECT_TRUE(manager->Inspect(fence).inUse);
    manager->Free(big);
    manager->Free(fence);
}

TEST(MemoryManagerGeneralPoolTest, FirstFitTakesTheEarliestFreeBlockThatIsBigEnough)
{
    auto manager = MakeManager();
    void* small = manager->Allocate(2000);
    void* fence1 = manager->Allocate(1500);
    void* large = manager->Allocate(8000);
    void* fence2 = manager->Allocate(1500);
    manager->Free(small);
    manager->Free(large);
    EXPECT_EQ(manager->Allocate(6000), large);
    EXPECT_EQ(manager->Allocate(1800), small);
    manager->Free(fence1);
    manager->Free(fence2);
}

TEST(MemoryManagerGeneralPoolTest, AFullPageLeadsToANewPageInTheChain)
{
    auto manager = MakeManager();
    const std::size_t largest = manager->LargestGeneralRequest();
    void* a = manager->Allocate(largest);
    void* b = manager->Allocate(largest);
    void* c = manager->Allocate(largest);
    EXPECT_TRUE(manager->Inspect(a).owned);
    EXPECT_TRUE(manager->Inspect(c).owned);
    EXPECT_TRUE(manager->Inspect(c).firstOfPage);
    EXPECT_EQ(manager->Statistics().classes[8].pages, 2u);
    manager->Free(a);
    manager->Free(b);
    manager->Free(c);
}
