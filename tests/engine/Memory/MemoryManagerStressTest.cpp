#include "engine/Memory/MemoryManager.h"

#include "MemoryManagerTestSupport.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

using namespace MemoryTest;

namespace
{
struct Live
{
    unsigned char* memory;
    std::size_t size;
    unsigned char mark;
};

bool Intact(const Live& block)
{
    for (std::size_t index = 0; index < block.size; ++index)
        if (block.memory[index] != static_cast<unsigned char>(block.mark + index))
            return false;
    return true;
}

void Fill(const Live& block)
{
    for (std::size_t index = 0; index < block.size; ++index)
        block.memory[index] = static_cast<unsigned char>(block.mark + index);
}
}

TEST(MemoryManagerStressTest, ThreadsAllocateAndFreeRandomSizesWithoutCorruption)
{
    auto manager = MakeManager();
    constexpr int kThreads = 4;
    const auto duration = std::chrono::milliseconds(1500);
    std::atomic<int> corrupted{0};
    std::atomic<std::uint64_t> operations{0};
    // Blocks handed from one thread to another, to be freed there.
    std::mutex exchangeLock;
    std::vector<Live> exchange;
    std::vector<std::vector<Live>> kept(kThreads);

    auto work = [&](int thread) {
        std::mt19937 random(1234u + static_cast<unsigned>(thread));
        std::vector<Live>& live = kept[thread];
        const auto end = std::chrono::steady_clock::now() + duration;
        std::uint64_t count = 0;
        auto release = [&](const Live& block) {
            if (!Intact(block))
                corrupted.fetch_add(1);
            manager->Free(block.memory);
        };
        while ((count & 255) != 0 || std::chrono::steady_clock::now() < end)
        {
            ++count;
            const unsigned pick = random() % 1000;
            std::size_t size;
            if (pick < 850)
                size = random() % 257;
            else if (pick < 990)
                size = 257 + random() % 8000;
            else if (pick < 998)
                size = 8000 + random() % 100000;
            else
                size = manager->LargestGeneralRequest() + random() % 1000;
            Live block{static_cast<unsigned char*>(manager->Allocate(size)), size,
                       static_cast<unsigned char>(random())};
            if (!block.memory || reinterpret_cast<std::uintptr_t>(block.memory) % 16 != 0)
            {
                corrupted.fetch_add(1);
                continue;
            }
            Fill(block);
            live.push_back(block);
            if (random() % 16 == 0)
            {
                std::lock_guard<std::mutex> lock(exchangeLock);
                exchange.push_back(live.back());
                live.pop_back();
            }
            if (live.size() > 200 || (random() % 3 == 0 && !live.empty()))
            {
                const std::size_t victim = random() % live.size();
                release(live[victim]);
                live[victim] = live.back();
                live.pop_back();
            }
            if (random() % 32 == 0)
            {
                std::lock_guard<std::mutex> lock(exchangeLock);
                if (!exchange.empty())
                {
                    release(exchange.back());
                    exchange.pop_back();
                }
            }
        }
        operations.fetch_add(count);
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread)
        threads.emplace_back(work, thread);
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(corrupted.load(), 0);
    EXPECT_GT(operations.load(), 1000u);
    for (const Live& block : exchange)
        kept[0].push_back(block);

    // The counts agree with the headers: live blocks per class are those marked in use.
    std::uint64_t stillLive[Engine::Memory::kClassCount] = {};
    for (const auto& blocks : kept)
        for (const Live& block : blocks)
        {
            EXPECT_TRUE(Intact(block));
            const Engine::MemoryBlockInfo info = manager->Inspect(block.memory);
            if (info.owned)
                ++stillLive[info.sizeClass];
        }
    Engine::MemoryStatistics statistics = manager->Statistics();
    auto inUse = manager->CountBlocksInUse();
    for (int index = 0; index < Engine::Memory::kClassCount; ++index)
    {
        EXPECT_EQ(statistics.classes[index].live, inUse[index]) << index;
        EXPECT_EQ(statistics.classes[index].live, stillLive[index]) << index;
        EXPECT_EQ(statistics.classes[index].allocations - statistics.classes[index].frees,
                  statistics.classes[index].live) << index;
    }
    EXPECT_GT(statistics.largeAllocations, 0u);

    for (const auto& blocks : kept)
        for (const Live& block : blocks)
            manager->Free(block.memory);
    statistics = manager->Statistics();
    inUse = manager->CountBlocksInUse();
    for (int index = 0; index < Engine::Memory::kClassCount; ++index)
    {
        EXPECT_EQ(statistics.classes[index].live, 0u) << index;
        EXPECT_EQ(inUse[index], 0u) << index;
    }
    EXPECT_EQ(statistics.largeAllocations, statistics.foreignFrees);
}
