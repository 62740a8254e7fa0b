#include "platform/GamePads.h"

#include "input/PadState.h"

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
    Input::PadState reading;
    EXPECT_EQ(m_Pads.Connected(), 0);
    for (int slot = -1; slot <= Platform::GamePads::kSlots; ++slot)
        EXPECT_FALSE(m_Pads.ReadState(slot, reading)) << slot;
    EXPECT_FALSE(m_Pads.StartMotors(0, Input::PadMotors{100, 100}));
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
    Input::PadState reading;
    ASSERT_TRUE(m_Pads.ReadState(0, reading));
    EXPECT_EQ(reading.Gamepad.wButtons, Input::PadA | Input::PadDPadLeft | Input::PadStart | Input::PadRightShoulder);
    EXPECT_EQ(reading.Gamepad.bLeftTrigger, 255);
    // Half way along the virtual trigger's raw range is half pressed.
    EXPECT_NEAR(reading.Gamepad.bRightTrigger, 128, 1);
    EXPECT_EQ(reading.Gamepad.sThumbLX, 20000);
    // Pushed up: SDL says negative, XInput positive.
    EXPECT_EQ(reading.Gamepad.sThumbLY, 20000);
    EXPECT_EQ(reading.Gamepad.sThumbRY, 32767);
    EXPECT_EQ(reading.Gamepad.sThumbRX, 0);
}

TEST_F(GamePadsTest, PacketNumberGrowsOnlyWhenTheStateChanges)
{
    const int pad = Plug();
    m_Pads.Refresh();
    Input::PadState first, same, changed;
    ASSERT_TRUE(m_Pads.ReadState(0, first));
    EXPECT_EQ(first.Gamepad.bLeftTrigger, 0);
    EXPECT_EQ(first.Gamepad.bRightTrigger, 0);
    m_Pads.Refresh();
    ASSERT_TRUE(m_Pads.ReadState(0, same));
    EXPECT_EQ(same.dwPacketNumber, first.dwPacketNumber);
    Platform::GamePads::SetVirtualButton(pad, Platform::kVirtualB, true);
    m_Pads.Refresh();
    ASSERT_TRUE(m_Pads.ReadState(0, changed));
    EXPECT_EQ(changed.dwPacketNumber, first.dwPacketNumber + 1);
    EXPECT_EQ(changed.Gamepad.wButtons, Input::PadB);
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
    Input::PadState reading;
    ASSERT_TRUE(m_Pads.ReadState(1, reading));
    EXPECT_EQ(reading.Gamepad.wButtons, Input::PadY);

    Unplug(first);
    m_Pads.Refresh();
    EXPECT_EQ(m_Pads.Connected(), 1);
    EXPECT_FALSE(m_Pads.ReadState(0, reading));
    ASSERT_TRUE(m_Pads.ReadState(1, reading));
    EXPECT_EQ(reading.Gamepad.wButtons, Input::PadY);

    // The next pad takes the lowest free slot.
    const int third = Plug();
    Platform::GamePads::SetVirtualButton(third, Platform::kVirtualX, true);
    m_Pads.Refresh();
    ASSERT_TRUE(m_Pads.ReadState(0, reading));
    EXPECT_EQ(reading.Gamepad.wButtons, Input::PadX);
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
    Input::PadState reading;
    ASSERT_TRUE(m_Pads.ReadState(2, reading));
    EXPECT_EQ(reading.Gamepad.wButtons, Input::PadA);
}

TEST_F(GamePadsTest, RumbleOnAPadWithoutMotorsIsRefusedQuietly)
{
    Plug();
    m_Pads.Refresh();
    // A virtual pad has no motors: the call answers false and nothing else happens.
    EXPECT_FALSE(m_Pads.StartMotors(0, Input::PadMotors{24000, 28000}));
    Input::PadState reading;
    EXPECT_TRUE(m_Pads.ReadState(0, reading));
}
