// The manager's pages lie in one reservation of address space, a page a slot:
// a block is found in whichever page holds it, addresses of the reservation
// outside every page are never read, and a smaller reservation (or none) is
// lived with.
#include "engine/Memory/MemoryManager.h"

#include "MemoryManagerTestSupport.h"
#include "platform/AddressSpace.h"
#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

using Engine::MemoryManager;
using namespace MemoryTest;

namespace
{
std::size_t g_ReserveLimit = 0;
void* LimitedReserve(std::size_t bytes)
{
    return bytes <= g_ReserveLimit ? Platform::ReserveAddressSpace(bytes) : nullptr;
}
void* NoReserve(std::size_t) { return nullptr; }

// Frees `pointer` and gives what the manager printed meanwhile.
std::string FreeAndCapture(MemoryManager& manager, void* pointer)
{
    testing::internal::CaptureStdout();
    manager.Free(pointer);
    return testing::internal::GetCapturedStdout();
}
}

TEST(MemoryManagerReservationTest, BlocksOfEveryPageOfAClassAreFoundAndFreed)
{
    auto manager = MakeManager(kSmallBudget);
    const std::uint32_t perPage = manager->BlocksPerPage(0);
    std::vector<void*> blocks;
    for (std::uint32_t index = 0; index < perPage * 3 + 5; ++index)
        blocks.push_back(manager->Allocate(8));
    EXPECT_EQ(manager->Statistics().classes[0].pages, 4u);
    // The last page's blocks lie a whole slot behind the first page's.
    EXPECT_GE(static_cast<unsigned char*>(blocks.back()) - static_cast<unsigned char*>(blocks.front()),
              static_cast<std::ptrdiff_t>(manager->SlotSize()));
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block)
        manager->Free(*block);
    const Engine::MemoryStatistics statistics = manager->Statistics();
    EXPECT_EQ(statistics.classes[0].live, 0u);
    EXPECT_EQ(statistics.classes[0].frees, blocks.size());
    EXPECT_EQ(statistics.foreignFrees, 0u);
    EXPECT_EQ(manager->CountBlocksInUse()[0], 0u);
    EXPECT_FALSE(manager->Inspect(blocks.back()).inUse);
}

TEST(MemoryManagerReservationTest, AnAddressOfTheReservationInNoPageIsReportedAndNeverRead)
{
    auto manager = MakeManager(kSmallBudget);
    auto* first = static_cast<unsigned char*>(manager->Allocate(8));
    // Behind the class's page, in the rest of its slot; and in a slot no page was made in yet,
    // whose memory cannot even be read.
    unsigned char* behindPage = first + manager->PageSize(0) + 64;
    unsigned char* unusedSlot = first + manager->SlotSize() * (manager->PageLimit() - 1);
    EXPECT_NE(FreeAndCapture(*manager, behindPage).find("Bad free address"), std::string::npos);
    EXPECT_NE(FreeAndCapture(*manager, unusedSlot).find("Bad free address"), std::string::npos);
    EXPECT_FALSE(manager->Inspect(unusedSlot).owned);
    EXPECT_EQ(manager->Statistics().foreignFrees, 0u);
    manager->Free(first);
}

TEST(MemoryManagerReservationTest, ASmallerReservationIsTakenWhenTheFullOneCannotBeHad)
{
    MemoryManager probe;
    g_ReserveLimit = probe.SlotSize() * 16;
    MemoryManager manager(Engine::Memory::kDefaultBudget,
                          {LimitedReserve, Platform::CommitAddressSpace, Platform::ReleaseAddressSpace});
    EXPECT_EQ(manager.PageLimit(), 16);
    void* small = manager.Allocate(100);
    void* general = manager.Allocate(5000);
    EXPECT_TRUE(manager.Inspect(small).inUse);
    EXPECT_TRUE(manager.Inspect(general).inUse);
    manager.Free(small);
    manager.Free(general);
    EXPECT_EQ(manager.CountBlocksInUse()[Engine::Memory::kGeneralClass], 0u);
}

TEST(MemoryManagerReservationTest, WithNoReservationAllocationsReportOutOfMemoryAndForeignFreesStillWork)
{
    Platform::SetDialogPolicy(Platform::DialogPolicy::Retry);
    MemoryManager manager(Engine::Memory::kDefaultBudget,
                          {NoReserve, Platform::CommitAddressSpace, Platform::ReleaseAddressSpace});
    testing::internal::CaptureStderr();
    EXPECT_EQ(manager.Allocate(16), nullptr);
    const std::string shown = testing::internal::GetCapturedStderr();
    Platform::SetDialogPolicy(Platform::DialogPolicy::FromEnvironment);
    EXPECT_EQ(manager.PageLimit(), 0);
    EXPECT_NE(shown.find("Out of memory.  Sorry."), std::string::npos);
    manager.Free(std::malloc(32));
    EXPECT_EQ(manager.Statistics().foreignFrees, 1u);
}
