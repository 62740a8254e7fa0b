#include "platform/AddressSpace.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

TEST(AddressSpaceTest, ACommittedPartOfAReservationIsZeroAndWritable)
{
    constexpr std::size_t kReserved = std::size_t{1} << 30;
    auto* base = static_cast<unsigned char*>(Platform::ReserveAddressSpace(kReserved));
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(base) % 4096, 0u);
    unsigned char* middle = base + (kReserved / 2);
    ASSERT_TRUE(Platform::CommitAddressSpace(middle, 10000));
    EXPECT_EQ(middle[0], 0);
    EXPECT_EQ(middle[9999], 0);
    std::memset(middle, 0x5A, 10000);
    EXPECT_EQ(middle[5000], 0x5A);
    Platform::ReleaseAddressSpace(base, kReserved);
}

TEST(AddressSpaceTest, AReservationLargerThanTheAddressSpaceGivesNull)
{
    EXPECT_EQ(Platform::ReserveAddressSpace(std::size_t{1} << 62), nullptr);
}
