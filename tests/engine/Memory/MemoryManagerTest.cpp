#include "engine/Memory/MemoryManager.h"

#include "MemoryManagerTestSupport.h"
#include "platform/AddressSpace.h"
#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

using Engine::MemoryManager;
using namespace MemoryTest;

TEST(MemoryManagerTest, AllocateZeroTakesAClassZeroBlock)
{
    auto manager = MakeManager();
    void* block = manager->Allocate(0);
    ASSERT_NE(block, nullptr);
    const Engine::MemoryBlockInfo info = manager->Inspect(block);
    EXPECT_TRUE(info.owned);
    EXPECT_TRUE(info.inUse);
    EXPECT_EQ(info.sizeClass, 0);
    EXPECT_EQ(manager->Statistics().classes[0].allocations, 1u);
    manager->Free(block);
}

TEST(MemoryManagerTest, Allocate1024TakesClassSevenAnd1025TheGeneralPath)
{
    auto manager = MakeManager();
    EXPECT_EQ(MemoryManager::ClassFor(1024), 7);
    EXPECT_EQ(MemoryManager::ClassFor(1025), 8);
    void* fixed = manager->Allocate(1024);
    void* general = manager->Allocate(1025);
    EXPECT_EQ(manager->Inspect(fixed).sizeClass, 7);
    EXPECT_EQ(manager->Inspect(general).sizeClass, 8);
    EXPECT_GE(manager->Inspect(general).blockSize, 1025u + Engine::Memory::kHeaderSize);
    const Engine::MemoryStatistics statistics = manager->Statistics();
    EXPECT_EQ(statistics.classes[7].live, 1u);
    EXPECT_EQ(statistics.classes[8].live, 1u);
    manager->Free(fixed);
    manager->Free(general);
}

TEST(MemoryManagerTest, EveryClassServesTheSmallestPayloadThatFits)
{
    const int expected[] = {0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7};
    const std::size_t sizes[] = {1, 8, 9, 16, 17, 32, 33, 64, 65, 128, 129, 256, 257, 512, 513};
    for (std::size_t index = 0; index < std::size(sizes); ++index)
        EXPECT_EQ(MemoryManager::ClassFor(sizes[index]), expected[index]) << sizes[index];
}

TEST(MemoryManagerTest, RequestsAboveHalfAGeneralPageGoStraightToMallocAndBackByFree)
{
    auto manager = MakeManager();
    const std::size_t largest = manager->LargestGeneralRequest();
    // Twice the block (payload, header, rounding) must fit in the 1211230-byte general page.
    EXPECT_LE(2 * (largest + Engine::Memory::kHeaderSize), manager->PageSize(8));
    EXPECT_GT(2 * (largest + 1 + Engine::Memory::kHeaderSize), 1211230u - 32u);

    void* pooled = manager->Allocate(largest);
    EXPECT_TRUE(manager->Inspect(pooled).owned);
    void* large = manager->Allocate(largest + 1);
    ASSERT_NE(large, nullptr);
    EXPECT_FALSE(manager->Inspect(large).owned);
    std::memset(large, 0xAB, largest + 1);
    EXPECT_EQ(manager->Statistics().largeAllocations, 1u);
    manager->Free(large);
    EXPECT_EQ(manager->Statistics().foreignFrees, 1u);
    manager->Free(pooled);
}

TEST(MemoryManagerTest, FreeingTheSamePointerTwiceDoesNothing)
{
    auto manager = MakeManager();
    void* block = manager->Allocate(24);
    manager->Free(block);
    manager->Free(block);
    EXPECT_EQ(manager->Statistics().classes[2].frees, 1u);
    // Only one later allocation gets the block back.
    void* first = manager->Allocate(24);
    void* second = manager->Allocate(24);
    EXPECT_EQ(first, block);
    EXPECT_NE(second, block);
    manager->Free(first);
    manager->Free(second);

    void* general = manager->Allocate(5000);
    manager->Free(general);
    manager->Free(general);
    EXPECT_EQ(manager->Statistics().classes[8].frees, 1u);
}

TEST(MemoryManagerTest, ThirtyThreeFreesLeaveTheLastOffTheStackAndAScanFindsIt)
{
    auto manager = MakeManager(kSmallBudget);
    const std::uint32_t blocks = manager->BlocksPerPage(0);
    ASSERT_GT(blocks, 100u);
    std::vector<void*> taken;
    for (std::uint32_t index = 0; index < blocks; ++index)
        taken.push_back(manager->Allocate(8));
    // Blocks 10 to 41 fill the stack; block 5 is the 33rd and is only marked free.
    for (int index = 10; index < 42; ++index)
        manager->Free(taken[index]);
    manager->Free(taken[5]);
    const Engine::MemoryBlockInfo info = manager->Inspect(taken[5]);
    EXPECT_FALSE(info.inUse);
    EXPECT_FALSE(info.heldByThread);
    EXPECT_TRUE(manager->Inspect(taken[10]).heldByThread);

    // The stack gives its 32 back, newest first...
    for (int index = 41; index >= 10; --index)
        EXPECT_EQ(manager->Allocate(8), taken[index]);
    // ...then the scan, with the cursor at the page's last block, wraps to the page's start.
    EXPECT_EQ(manager->Allocate(8), taken[5]);
    EXPECT_EQ(manager->Statistics().classes[0].pages, 1u);
    for (void* block : taken)
        manager->Free(block);
}

TEST(MemoryManagerTest, NextFitScanGoesOnFromTheBlockItLastTook)
{
    auto manager = MakeManager(kSmallBudget);
    const std::uint32_t blocks = manager->BlocksPerPage(0);
    std::vector<void*> taken;
    for (std::uint32_t index = 0; index < blocks; ++index)
        taken.push_back(manager->Allocate(8));
    for (std::uint32_t index = 1; index < blocks; ++index)
        EXPECT_EQ(BlockIndex(*manager, taken[0], taken[index]), static_cast<std::ptrdiff_t>(index));
    for (int index = 100; index < 132; ++index)
        manager->Free(taken[index]);
    manager->Free(taken[50]);
    manager->Free(taken[20]);
    for (int index = 0; index < 32; ++index)
        manager->Allocate(8);
    // First the wrap from the last block to the page's start finds block 20; the next scan goes on
    // from there and finds 50, not the start again.
    EXPECT_EQ(manager->Allocate(8), taken[20]);
    EXPECT_EQ(manager->Allocate(8), taken[50]);
    // The page is full: a new page, and its first block.
    void* fresh = manager->Allocate(8);
    EXPECT_EQ(manager->Statistics().classes[0].pages, 2u);
    EXPECT_TRUE(manager->Inspect(fresh).firstOfPage);
}

TEST(MemoryManagerTest, ABlockFromTheStackIsTheOneFreedLast)
{
    auto manager = MakeManager();
    void* a = manager->Allocate(100);
    void* b = manager->Allocate(100);
    manager->Free(a);
    manager->Free(b);
    EXPECT_EQ(manager->Allocate(100), b);
    EXPECT_EQ(manager->Allocate(100), a);
}

TEST(MemoryManagerTest, HandOutCountStopsAt0xFFFFFF)
{
    auto manager = MakeManager();
    void* block = manager->Allocate(64);
    EXPECT_EQ(manager->Inspect(block).handOutCount, 1u);
    manager->Free(block);
    EXPECT_EQ(manager->Allocate(64), block);
    EXPECT_EQ(manager->Inspect(block).handOutCount, 2u);
    manager->Free(block);
    // Sixteen million rounds take too long here: the header is set three short of the limit.
    Engine::Memory::BlockHeader* header = Engine::Memory::BlockHeader::Of(block);
    header->Store(Engine::Memory::WithCount(header->Load(), Engine::Memory::kMaxHandOutCount - 3));
    std::uint32_t counts[5] = {};
    for (std::uint32_t& count : counts)
    {
        EXPECT_EQ(manager->Allocate(64), block);
        count = manager->Inspect(block).handOutCount;
        manager->Free(block);
    }
    EXPECT_EQ(counts[0], Engine::Memory::kMaxHandOutCount - 2);
    EXPECT_EQ(counts[1], Engine::Memory::kMaxHandOutCount - 1);
    EXPECT_EQ(counts[2], Engine::Memory::kMaxHandOutCount);
    EXPECT_EQ(counts[3], Engine::Memory::kMaxHandOutCount);
    EXPECT_EQ(counts[4], Engine::Memory::kMaxHandOutCount);
    EXPECT_EQ(manager->Inspect(block).sizeClass, 3);
}

TEST(MemoryManagerTest, PayloadsAreSixteenByteAligned)
{
    auto manager = MakeManager();
    std::vector<void*> blocks;
    for (std::size_t size = 0; size <= 3000; size += 7)
        blocks.push_back(manager->Allocate(size));
    blocks.push_back(manager->Allocate(manager->LargestGeneralRequest()));
    blocks.push_back(manager->Allocate(manager->LargestGeneralRequest() + 1));
    for (void* block : blocks)
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0u) << block;
    for (void* block : blocks)
        manager->Free(block);
}

TEST(MemoryManagerTest, StatisticsCountAllocationsFreesAndLiveBlocksPerClass)
{
    auto manager = MakeManager();
    std::vector<void*> blocks;
    for (int index = 0; index < 10; ++index)
        blocks.push_back(manager->Allocate(16));
    for (int index = 0; index < 3; ++index)
        blocks.push_back(manager->Allocate(2000));
    for (int index = 0; index < 4; ++index)
        manager->Free(blocks[index]);
    manager->Free(blocks[10]);
    const Engine::MemoryStatistics statistics = manager->Statistics();
    EXPECT_EQ(statistics.classes[1].allocations, 10u);
    EXPECT_EQ(statistics.classes[1].frees, 4u);
    EXPECT_EQ(statistics.classes[1].live, 6u);
    EXPECT_EQ(statistics.classes[8].allocations, 3u);
    EXPECT_EQ(statistics.classes[8].live, 2u);
    EXPECT_EQ(statistics.classes[1].pages, 1u);
    EXPECT_EQ(statistics.classes[1].pageSize, manager->PageSize(1));
    const auto inUse = manager->CountBlocksInUse();
    EXPECT_EQ(inUse[1], 6u);
    EXPECT_EQ(inUse[8], 2u);
    for (std::size_t index = 4; index < blocks.size(); ++index)
        manager->Free(blocks[index]);
}

TEST(MemoryManagerTest, PointersTheManagerDoesNotOwnGoToFree)
{
    auto manager = MakeManager();
    void* foreign = std::malloc(48);
    EXPECT_FALSE(manager->Inspect(foreign).owned);
    manager->Free(foreign);
    manager->Free(nullptr);
    EXPECT_EQ(manager->Statistics().foreignFrees, 1u);
    EXPECT_EQ(manager->Statistics().classes[2].frees, 0u);
}

TEST(MemoryManagerTest, APointerInsideABlockIsReportedAndNotFreed)
{
    auto manager = MakeManager();
    void* block = manager->Allocate(8);
    testing::internal::CaptureStdout();
    manager->Free(static_cast<unsigned char*>(block) + 16);
    const std::string shown = testing::internal::GetCapturedStdout();
    EXPECT_NE(shown.find("Bad free address"), std::string::npos);
    EXPECT_TRUE(manager->Inspect(block).inUse);
    manager->Free(block);
}

TEST(MemoryManagerTest, TheDebugSwitchMarksBlocksTakenWhileItIsOn)
{
    auto manager = MakeManager();
    void* plain = manager->Allocate(32);
    manager->SetDebug(true);
    void* marked = manager->Allocate(32);
    void* markedGeneral = manager->Allocate(4000);
    EXPECT_FALSE(manager->Inspect(plain).debugMark);
    EXPECT_TRUE(manager->Inspect(marked).debugMark);
    EXPECT_TRUE(manager->Inspect(markedGeneral).debugMark);
    EXPECT_LT(manager->Inspect(plain).serial, manager->Inspect(marked).serial);
}

namespace
{
int g_PagesGiven = 0;
bool FailingCommit(void*, std::size_t) { return false; }
// Backs the first page of every class, then no more.
bool OnePageCommit(void* address, std::size_t bytes)
{
    return g_PagesGiven++ < 9 && Platform::CommitAddressSpace(address, bytes);
}
MemoryManager::SystemMemory WithCommit(bool (*commit)(void*, std::size_t))
{
    return {Platform::ReserveAddressSpace, commit, Platform::ReleaseAddressSpace};
}
}

TEST(MemoryManagerTest, NoPageRaisesOutOfMemoryAndTheAllocationGivesNull)
{
    Platform::SetDialogPolicy(Platform::DialogPolicy::Retry);
    MemoryManager manager(Engine::Memory::kDefaultBudget, WithCommit(FailingCommit));
    testing::internal::CaptureStderr();
    EXPECT_EQ(manager.Allocate(16), nullptr);
    EXPECT_EQ(manager.Allocate(3000), nullptr);
    const std::string shown = testing::internal::GetCapturedStderr();
    Platform::SetDialogPolicy(Platform::DialogPolicy::FromEnvironment);
    EXPECT_NE(shown.find("[FATAL] Out of memory.  Sorry."), std::string::npos) << shown;
    EXPECT_NE(shown.find("Engine::MemoryManager::AllocatePage"), std::string::npos) << shown;
}

TEST(MemoryManagerTest, AFullClassWhoseNextPageFailsGivesNullAndTheOthersGoOn)
{
    Platform::SetDialogPolicy(Platform::DialogPolicy::Retry);
    g_PagesGiven = 0;
    MemoryManager manager(kSmallBudget, WithCommit(OnePageCommit));
    std::vector<void*> blocks;
    for (std::uint32_t index = 0; index < manager.BlocksPerPage(7); ++index)
        blocks.push_back(manager.Allocate(1000));
    testing::internal::CaptureStderr();
    EXPECT_EQ(manager.Allocate(1000), nullptr);
    const std::string shown = testing::internal::GetCapturedStderr();
    Platform::SetDialogPolicy(Platform::DialogPolicy::FromEnvironment);
    EXPECT_NE(shown.find("Out of memory.  Sorry."), std::string::npos);
    EXPECT_NE(manager.Allocate(8), nullptr);
    for (void* block : blocks)
        manager.Free(block);
}

TEST(MemoryManagerTest, ABlockNeverTakenHasNoHeaderYetAndFreeingItIsReported)
{
    auto manager = MakeManager();
    void* taken = manager->Allocate(8);
    void* next = static_cast<unsigned char*>(taken) + manager->BlockSize(0);
    EXPECT_FALSE(manager->Inspect(next).owned);
    testing::internal::CaptureStdout();
    manager->Free(next);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Bad free address"), std::string::npos);
    // The next scan writes its header and takes it.
    EXPECT_EQ(manager->Allocate(8), next);
    EXPECT_TRUE(manager->Inspect(next).inUse);
    manager->Free(taken);
    manager->Free(next);
}
