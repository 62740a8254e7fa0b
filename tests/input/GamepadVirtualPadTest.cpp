// The whole controller path, headless: a virtual pad that the platform layer
// plugs in, read through SDL's game controller interface, stepped by the input
// layer and heard as named events on the global table.
#include "InputTestSupport.h"

#include "platform/GamePads.h"

namespace
{
class GamepadVirtualPadTest : public InputTest
{
protected:
    void SetUp() override
    {
        InputTest::SetUp();
        ASSERT_TRUE(m_Pads.Open());
        Gamepad::SetSource(&m_Pads);
    }
    void TearDown() override
    {
        Gamepad::SetSource(nullptr);
        if (m_Pad >= 0)
            Platform::GamePads::DetachVirtualPad(m_Pad);
        m_Pads.Close();
        InputTest::TearDown();
    }
    void Frame() { InputManager::Get().Update(1.0f / 60.0f, true); }

    Platform::GamePads m_Pads;
    int m_Pad = -1;
};
}

TEST_F(GamepadVirtualPadTest, PluggedPadConnectsAndItsButtonsAndStickReachListenersAsPlayerZero)
{
    EventLog log({"InputGamepadButtonATriggered", "InputGamepadButtonAPressed", "InputGamepadButtonAReleased",
                  "InputUpdatePlayerVectors", "GamePadDisconnect"});
    m_Pad = Platform::GamePads::AttachVirtualPad();
    ASSERT_GE(m_Pad, 0);
    testing::internal::CaptureStdout();
    Frame();
    EXPECT_NE(testing::internal::GetCapturedStdout().find("controller 0 connected!"), std::string::npos);
    EXPECT_EQ(Gamepad::GetControllersConnected(), 1);

    Platform::GamePads::SetVirtualButton(m_Pad, Platform::kVirtualA, true);
    // Pushed fully right and up (SDL's y grows downwards).
    Platform::GamePads::SetVirtualAxis(m_Pad, Platform::kVirtualLeftX, 32767);
    Platform::GamePads::SetVirtualAxis(m_Pad, Platform::kVirtualLeftY, 0);
    log.Clear();
    Frame();
    EXPECT_EQ(log.Count("InputGamepadButtonATriggered"), 1);
    EXPECT_EQ(log.Count("InputGamepadButtonAPressed"), 1);
    bool padVectors = false;
    for (const LoggedEvent& event : log.m_Events)
        if (event.name == "InputUpdatePlayerVectors" && event.playerIndex == 0)
        {
            padVectors = true;
            EXPECT_NEAR(event.move.x, 1.0f, 1e-3f);
            EXPECT_NEAR(event.move.y, 0.0f, 1e-3f);
        }
    EXPECT_TRUE(padVectors);

    Platform::GamePads::SetVirtualButton(m_Pad, Platform::kVirtualA, false);
    log.Clear();
    Frame();
    EXPECT_EQ(log.Count("InputGamepadButtonAReleased"), 1);
    EXPECT_EQ(log.Count("InputGamepadButtonATriggered"), 0);
}

TEST_F(GamepadVirtualPadTest, UnpluggedPadWithAHeldReleasesItAndDisconnects)
{
    EventLog log({"InputGamepadButtonAReleased", "GamePadDisconnect"});
    m_Pad = Platform::GamePads::AttachVirtualPad();
    ASSERT_GE(m_Pad, 0);
    testing::internal::CaptureStdout();
    Frame();
    Platform::GamePads::SetVirtualButton(m_Pad, Platform::kVirtualA, true);
    Frame();
    ASSERT_TRUE(Platform::GamePads::DetachVirtualPad(m_Pad));
    m_Pad = -1;
    Frame();
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_NE(printed.find("controller 0 disconnected!"), std::string::npos) << printed;
    EXPECT_EQ(log.Count("InputGamepadButtonAReleased"), 1);
    EXPECT_EQ(log.Count("GamePadDisconnect"), 1);
    EXPECT_EQ(Gamepad::GetControllersConnected(), 0);
}
