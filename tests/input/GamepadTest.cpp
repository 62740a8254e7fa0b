#include "input/Gamepad.h"

#include "input/InputTestSupport.h"
#include "utilities/lua/LuaTestSupport.h"

#include <cmath>

namespace
{
class GamepadTest : public InputTest
{
protected:
    void SetUp() override
    {
        InputTest::SetUp();
        Gamepad::SetSource(&m_Pads);
    }
    void Frame(float dt = 0.016f) { Manager().Update(dt); }
    Input::PadControls& Pad(int index) { return m_Pads.states[index].Gamepad; }

    FakePadSource m_Pads;
};

const std::vector<std::string> kPadEvents = {
    "GamePadDisconnect",           "InputUpdatePlayerVectors",      "InputGamepadButtonATriggered",
    "InputGamepadButtonAPressed",  "InputGamepadButtonAReleased",   "InputGamepadLeftTriggerTriggered",
    "InputGamepadLeftTriggerReleased", "InputGamepadDPadDownTriggered", "InputGamepadButtonYTriggered"};
}

TEST_F(GamepadTest, WithoutASourceEveryPadStaysDisconnectedAndNothingIsPrinted)
{
    Gamepad::SetSource(nullptr);
    EventLog log(kPadEvents);
    StdoutCapture out;
    for (int i = 0; i < 10; ++i)
        Frame();
    EXPECT_EQ(out.Text(), "");
    EXPECT_EQ(Gamepad::GetControllersConnected(), 0);
    EXPECT_EQ(log.Count("InputUpdatePlayerVectors"), 10);  // the keyboard's only
    EXPECT_EQ(log.Count("GamePadDisconnect"), 0);
}

TEST_F(GamepadTest, APadThatAnswersConnectsPrintsAndCounts)
{
    m_Pads.connected[1] = true;
    StdoutCapture out;
    Frame();
    EXPECT_EQ(out.Text(), "controller 1 connected!\n");
    EXPECT_EQ(Gamepad::GetControllersConnected(), 1);
    EXPECT_EQ(Gamepad::Get(1).m_Connected, 1);
    EXPECT_EQ(Gamepad::Get(0).m_Connected, 0);
}

TEST_F(GamepadTest, AMissingPadIsPolledOnlyEveryFourSeconds)
{
    Frame(1.0f);
    EXPECT_EQ(m_Pads.reads[0], 1);
    EXPECT_EQ(Gamepad::Get(0).m_ReconnectTime, 4.0f);
    for (int i = 0; i < 4; ++i)
        Frame(1.0f);
    EXPECT_EQ(m_Pads.reads[0], 1);
    Frame(1.0f);
    EXPECT_EQ(m_Pads.reads[0], 2);
}

TEST_F(GamepadTest, AKeyboardKeyAndAPadBothSendPlayerVectorsEachWithItsIndex)
{
    m_Pads.connected[0] = true;
    Pad(0).sThumbLX = 20000;
    Manager().OnKeyDown('W');
    EventLog log({"InputUpdatePlayerVectors"});
    Frame();
    ASSERT_EQ(log.m_Events.size(), 2u);
    EXPECT_EQ(log.m_Events[0].playerIndex, 4);
    EXPECT_EQ(log.m_Events[0].move.y, 1.0f);
    EXPECT_EQ(log.m_Events[1].playerIndex, 0);
    EXPECT_NEAR(log.m_Events[1].move.x, 20000.0f / 32767.0f, 1e-6f);
    EXPECT_EQ(log.m_Events[1].move.y, 0.0f);
}

TEST_F(GamepadTest, AStickInsideTheDeadZoneReadsZeroAndAtItsEdgeAbout0Point366)
{
    const Math::Vector2D inside = Gamepad::StickVector(11999, 0);
    EXPECT_EQ(inside.x, 0.0f);
    EXPECT_EQ(inside.y, 0.0f);
    const Math::Vector2D edge = Gamepad::StickVector(0, -12000);
    EXPECT_EQ(edge.x, 0.0f);
    EXPECT_NEAR(edge.y, -0.366, 0.001);
    const Math::Vector2D diagonal = Gamepad::StickVector(9000, 9000);  // length 12728: outside
    EXPECT_NEAR(diagonal.x, diagonal.y, 1e-6f);
    EXPECT_NEAR(std::sqrt(diagonal.x * diagonal.x + diagonal.y * diagonal.y), 12727.922f / 32767.0f, 1e-5f);
    const Math::Vector2D centred = Gamepad::StickVector(0, 0);
    EXPECT_EQ(centred.x, 0.0f);
}

TEST_F(GamepadTest, TheRightStickIsTheAimVector)
{
    m_Pads.connected[2] = true;
    Pad(2).sThumbRY = 32767;
    Pad(2).sThumbLX = 5000;
    EventLog log({"InputUpdatePlayerVectors"});
    Frame();
    ASSERT_EQ(log.m_Events.size(), 2u);
    EXPECT_EQ(log.m_Events[1].playerIndex, 2);
    EXPECT_FLOAT_EQ(log.m_Events[1].aim.y, 1.0f);
    EXPECT_EQ(log.m_Events[1].move.x, 0.0f);
}

TEST_F(GamepadTest, ATriggerAt180IsDownAndAt171IsNot)
{
    EXPECT_TRUE(Gamepad::TriggerDown(180));
    EXPECT_FALSE(Gamepad::TriggerDown(171));
    EXPECT_FALSE(Gamepad::TriggerDown(9));
    m_Pads.connected[0] = true;
    EventLog log(kPadEvents);
    Pad(0).bLeftTrigger = 171;
    Frame();
    EXPECT_EQ(log.Count("InputGamepadLeftTriggerTriggered"), 0);
    Pad(0).bLeftTrigger = 180;
    Frame();
    EXPECT_EQ(log.Count("InputGamepadLeftTriggerTriggered"), 1);
    EXPECT_TRUE(Gamepad::Get(0).m_LeftTriggerDown);
    Pad(0).bLeftTrigger = 0;
    Frame();
    EXPECT_EQ(log.Count("InputGamepadLeftTriggerReleased"), 1);
}

TEST_F(GamepadTest, AButtonTriggersAndIsPressedInItsFirstFrameThenPressedThenReleased)
{
    m_Pads.connected[0] = true;
    EventLog log(kPadEvents);
    Frame();
    log.Clear();
    Pad(0).wButtons = Input::PadA;
    Frame();
    // The keyboard's vectors come first, then the pad's events.
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputUpdatePlayerVectors", "InputGamepadButtonATriggered",
                                                     "InputGamepadButtonAPressed", "InputUpdatePlayerVectors"}));
    log.Clear();
    Frame();
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputUpdatePlayerVectors", "InputGamepadButtonAPressed",
                                                     "InputUpdatePlayerVectors"}));
    log.Clear();
    Pad(0).wButtons = 0;
    Frame();
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputUpdatePlayerVectors", "InputGamepadButtonAReleased",
                                                     "InputUpdatePlayerVectors"}));
}

TEST_F(GamepadTest, ButtonsAreSentInIndexOrder)
{
    m_Pads.connected[0] = true;
    EventLog log(kPadEvents);
    Pad(0).wButtons = Input::PadY | Input::PadDPadDown;
    Frame();
    const std::vector<std::string> names = log.Names();
    const auto down = std::find(names.begin(), names.end(), "InputGamepadDPadDownTriggered");
    const auto y = std::find(names.begin(), names.end(), "InputGamepadButtonYTriggered");
    ASSERT_NE(down, names.end());
    ASSERT_NE(y, names.end());
    EXPECT_LT(down, y);
}

TEST_F(GamepadTest, ADisconnectWithAHeldReleasesItOnceWithTheDisconnectAndPollsAgainAfterFourSeconds)
{
    m_Pads.connected[3] = true;
    Pad(3).wButtons = Input::PadA;
    Frame();
    Frame();
    EventLog log(kPadEvents);
    m_Pads.connected[3] = false;
    StdoutCapture out;
    Frame(1.0f);
    EXPECT_EQ(out.Text(), "controller 3 disconnected!\n");
    EXPECT_EQ(log.Count("InputGamepadButtonAReleased"), 1);
    EXPECT_EQ(log.Count("GamePadDisconnect"), 1);
    for (const LoggedEvent& event : log.m_Events)
    {
        if (event.name == "InputGamepadButtonAReleased" || event.name == "GamePadDisconnect")
        {
            EXPECT_EQ(event.disconnectedPad, 3);
        }
    }
    EXPECT_EQ(Gamepad::GetControllersConnected(), 0);
    EXPECT_EQ(Gamepad::Get(3).m_Connected, 0);

    const int reads = m_Pads.reads[3];
    log.Clear();
    for (int i = 0; i < 4; ++i)
        Frame(1.0f);
    EXPECT_EQ(m_Pads.reads[3], reads);
    EXPECT_EQ(log.Count("InputGamepadButtonAReleased"), 0);
    m_Pads.connected[3] = true;
    Frame(1.0f);
    EXPECT_EQ(m_Pads.reads[3], reads + 1);
    EXPECT_EQ(Gamepad::GetControllersConnected(), 1);
}

TEST_F(GamepadTest, RumbleRunsDownAndStopsTheMotorsWhenItsTimeIsUp)
{
    m_Pads.connected[0] = true;
    Frame();
    Manager().GamepadRumble(0.05f, 2, 0);
    m_Pads.motorCalls.clear();
    Frame(0.03f);
    EXPECT_TRUE(m_Pads.motorCalls.empty());
    EXPECT_NEAR(Gamepad::Get(0).m_RumbleTime, 0.02f, 1e-6f);
    Frame(0.03f);
    ASSERT_EQ(m_Pads.motorCalls.size(), 1u);
    EXPECT_EQ(m_Pads.motorCalls[0].motors.wLeftMotorSpeed, 0);
    EXPECT_EQ(m_Pads.motorCalls[0].motors.wRightMotorSpeed, 0);
    EXPECT_EQ(Gamepad::Get(0).m_RumbleTime, 0.0f);
}

TEST_F(GamepadTest, RumbleTimeStandsStillWhilePaused)
{
    m_Pads.connected[0] = true;
    Frame();
    Manager().GamepadRumble(0.05f, 1, 0);
    Gamepad::Get(0).SetPaused(true);
    Frame(1.0f);
    EXPECT_EQ(Gamepad::Get(0).m_RumbleTime, 0.05f);
}

TEST_F(GamepadTest, LosingFocusClearsThePadsButtonMasks)
{
    m_Pads.connected[0] = true;
    Pad(0).wButtons = Input::PadB;
    Frame();
    Frame();
    Manager().Update(0.016f, false);
    EXPECT_EQ(Gamepad::Get(0).m_State.Gamepad.wButtons, 0);
    EXPECT_EQ(Gamepad::Get(0).m_PreviousState.Gamepad.wButtons, 0);
    EXPECT_FALSE(Gamepad::AnyPressed());
}

TEST_F(GamepadTest, AnyButtonOfAnyPadCountsAsAGamepadPress)
{
    EXPECT_FALSE(Gamepad::AnyPressed());
    m_Pads.connected[2] = true;
    Pad(2).wButtons = Input::PadBack;
    Frame();
    EXPECT_TRUE(Gamepad::AnyPressed());
}
