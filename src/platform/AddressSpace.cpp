#include "platform/AddressSpace.h"

#include <sys/mman.h>

namespace Platform
{
void* ReserveAddressSpace(std::size_t bytes)
{
    void* address = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    return address == MAP_FAILED ? nullptr : address;
}

bool CommitAddressSpace(void* address, std::size_t bytes)
{
    return mprotect(address, bytes, PROT_READ | PROT_WRITE) == 0;
}

void ReleaseAddressSpace(void* address, std::size_t bytes) { munmap(address, bytes); }
}
