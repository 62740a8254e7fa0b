// Helpers shared by the memory manager's tests: a small budget whose pages
// hold few blocks, so that scans reach the ends of pages quickly.
#pragma once

#include "engine/Memory/MemoryManager.h"

#include <cstdint>
#include <memory>

namespace MemoryTest
{
// A budget whose class 0 page holds 608 blocks and which has no general pool worth the name.
inline constexpr std::uint32_t kSmallBudget = 77568;

// A private manager over the full budget.
inline std::unique_ptr<Engine::MemoryManager> MakeManager(std::uint32_t budget = Engine::Memory::kDefaultBudget)
{
    return std::make_unique<Engine::MemoryManager>(budget);
}

// The block index of `pointer` in its class 0 page, counted from `first`.
inline std::ptrdiff_t BlockIndex(const Engine::MemoryManager& manager, void* first, void* pointer)
{
    return (static_cast<unsigned char*>(pointer) - static_cast<unsigned char*>(first)) / manager.BlockSize(0);
}
}
