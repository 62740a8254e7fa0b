// AddressSpace: ranges of virtual addresses reserved up front and backed by
// memory piece by piece.
//
// A reservation costs no memory: it only keeps the operating system from
// placing anything else in the range, so an address can be known to lie in it
// with one comparison. Commit makes part of it readable and writable (its pages
// are zero and take memory only once touched); Release unmaps the whole range.
// The memory manager takes its pages this way. Nothing here allocates through
// operator new, so it may be called while the global allocator is being made.
#pragma once

#include <cstddef>

namespace Platform
{
// Reserves `bytes` of address space, aligned to the system page; null when none is left.
void* ReserveAddressSpace(std::size_t bytes);

// Makes `bytes` from `address` (inside a reservation, page-aligned) readable and writable; false
// when the system has no memory for them.
bool CommitAddressSpace(void* address, std::size_t bytes);

// Gives back a whole reservation made by ReserveAddressSpace, committed parts included.
void ReleaseAddressSpace(void* address, std::size_t bytes);
}
