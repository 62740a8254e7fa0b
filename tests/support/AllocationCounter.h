// Counts the allocations this thread makes through the global operator new, so
// that a test can show that an operation allocates nothing:
//
//   const AllocationCount before;
//   Meta::FindData("Vector3D");
//   EXPECT_EQ(before.Since(), 0u);
//
// The test program replaces the global operator new and delete (see the .cpp);
// they still go through malloc and free, so the sanitizers see every block.
#pragma once

#include <cstddef>

// Allocations made by this thread since the program started.
std::size_t AllocationsOnThisThread();

// The count at construction, and how many allocations were made since.
class AllocationCount
{
public:
    AllocationCount() : m_Start(AllocationsOnThisThread()) {}
    // Allocations made by this thread since construction.
    std::size_t Since() const { return AllocationsOnThisThread() - m_Start; }

private:
    std::size_t m_Start;
};
