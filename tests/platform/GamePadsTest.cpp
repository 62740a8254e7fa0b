#include "platform/GamePads.h"

#include <gtest/gtest.h>

namespace
{
class GamePadsTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(m_Pads.Open()); }
    void TearDown() override
    {
        for (int id : m_Virtual)
            Platform::GamePads::DetachVirtualPad(id);
        m_Pads.Close();
    }
    int Plug()
    {
        const int id = Platform::GamePads::AttachVirtualPad();
        EXPECT_GE(id, 0);
        m_Virtual.push_back(id);
        return id;
    }
    void Unplug(int id)
    {
        EXPECT_TRUE(Platform::GamePads::DetachVirtualPad(id));
        std::erase(m_Virtual, id);
    }
    Platform::GamePads m_Pads;
    std::vector<int> m_Virtual;
};
}

TEST_F(GamePadsTest, NoPadMeansEveryReadFails)
{
    m_Pads.Refresh();
    Platform::PadReading reading;
    EXPECT_EQ(m_Pads.Connected(), 0);
    for (int slot = -1; slot <= Platform::GamePads::kSlots; ++slot)
        EXPECT_FALSE(m_Pads.Read(slot, reading)) << slot;
    EXPECT_FALSE(m_Pads.SetMotors(0, 100, 100));
}

TEST_F(GamePadsTest, ButtonsTriggersAndSticksArriveInTheXInputLayout)
{
    const int pad = Plug();
    m_Pads.Refresh();
    ASSERT_EQ(m_Pads.Connected(), 1);
    using namespace Platform;
    GamePads::SetVirtualButton(pad, kVirtualA, true);
    GamePads::SetVirtualButton(pad, kVirtualDPadLeft, true);
    GamePads::SetVirtualButton(pad, kVirtualStart, true);
    GamePads::SetVirtualButton(pad, kVirtualRightShoulder, true);
    GamePads::SetVirtualAxis(pad, kVirtualLeftTrigger, 32767);
    GamePads::SetVirtualAxis(pad, kVirtualRightTrigger, 0);
    GamePads::SetVirtualAxis(pad, kVirtualLeftX, 20000);
    GamePads::SetVirtualAxis(pad, kVirtualLeftY, -20000);
    GamePads::SetVirtualAxis(pad, kVirtualRightY, -32768);
    m_Pads.Refresh();
    PadReading reading;
    ASSERT_TRUE(m_Pads.Read(0, reading));
    EXPECT_EQ(reading.buttons, kPadButtonA | kPadDPadLeft | kPadStart | kPadRightShoulder);
    EXPECT_EQ(reading.leftTrigger, 255);
    // Half way along the virtual trigger's raw range is half pressed.
    EXPECT_NEAR(reading.rightTrigger, 128, 1);
    EXPECT_EQ(reading.thumbLX, 20000);
    // Pushed up: SDL says negative, XInput positive.
    EXPECT_EQ(reading.thumbLY, 20000);
    EXPECT_EQ(reading.thumbRY, 32767);
    EXPECT_EQ(reading.thumbRX, 0);
}

TEST_F(GamePadsTest, PacketNumberGrowsOnlyWhenTheStateChanges)
{
    const int pad = Plug();
    m_Pads.Refresh();
    Platform::PadReading first, same, changed;
    ASSERT_TRUE(m_Pads.Read(0, first));
    EXPECT_EQ(first.leftTrigger, 0);
    EXPECT_EQ(first.rightTrigger, 0);
    m_Pads.Refresh();
    ASSERT_TRUE(m_Pads.Read(0, same));
    EXPECT_EQ(same.packet, first.packet);
    Platform::GamePads::SetVirtualButton(pad, Platform::kVirtualB, true);
    m_Pads.Refresh();
    ASSERT_TRUE(m_Pads.Read(0, changed));
    EXPECT_EQ(changed.packet, first.packet + 1);
    EXPECT_EQ(changed.buttons, Platform::kPadButtonB);
}

TEST_F(GamePadsTest, PadsTakeSlotsInTheOrderTheyConnectAndAnUnpluggedOneFreesItsSlot)
{
    const int first = Plug();
    m_Pads.Refresh();
    const int second = Plug();
    m_Pads.Refresh();
    ASSERT_EQ(m_Pads.Connected(), 2);
    Platform::GamePads::SetVirtualButton(second, Platform::kVirtualY, true);
    m_Pads.Refresh();
    Platform::PadReading reading;
    ASSERT_TRUE(m_Pads.Read(1, reading));
    EXPECT_EQ(reading.buttons, Platform::kPadButtonY);

    Unplug(first);
    m_Pads.Refresh();
    EXPECT_EQ(m_Pads.Connected(), 1);
    EXPECT_FALSE(m_Pads.Read(0, reading));
    ASSERT_TRUE(m_Pads.Read(1, reading));
    EXPECT_EQ(reading.buttons, Platform::kPadButtonY);

    // The next pad takes the lowest free slot.
    const int third = Plug();
    Platform::GamePads::SetVirtualButton(third, Platform::kVirtualX, true);
    m_Pads.Refresh();
    ASSERT_TRUE(m_Pads.Read(0, reading));
    EXPECT_EQ(reading.buttons, Platform::kPadButtonX);
}

TEST_F(GamePadsTest, AFifthPadWaitsForAFreeSlot)
{
    std::vector<int> ids;
    for (int i = 0; i < 5; ++i)
        ids.push_back(Plug());
    m_Pads.Refresh();
    EXPECT_EQ(m_Pads.Connected(), 4);
    Platform::GamePads::SetVirtualButton(ids[4], Platform::kVirtualA, true);
    Unplug(ids[2]);
    m_Pads.Refresh();
    EXPECT_EQ(m_Pads.Connected(), 4);
    Platform::PadReading reading;
    ASSERT_TRUE(m_Pads.Read(2, reading));
    EXPECT_EQ(reading.buttons, Platform::kPadButtonA);
}

TEST_F(GamePadsTest, RumbleOnAPadWithoutMotorsIsRefusedQuietly)
{
    Plug();
    m_Pads.Refresh();
    // A virtual pad has no motors: the call answers false and nothing else happens.
    EXPECT_FALSE(m_Pads.SetMotors(0, 24000, 28000));
    Platform::PadReading reading;
    EXPECT_TRUE(m_Pads.Read(0, reading));
}
