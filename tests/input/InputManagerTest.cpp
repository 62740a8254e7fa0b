#include "input/InputManager.h"

#include "engine/GenericEvents.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "input/InputTestSupport.h"
#include "platform/Cursor.h"

#include <cmath>

namespace
{
constexpr int kW = 87;
constexpr int kA = 65;
constexpr int kD = 68;
constexpr int kSpace = 32;

const std::vector<std::string> kKeyEvents = {"InputRawKeyDown",     "InputRawKeyUp",       "InputMoveUpTriggered",
                                             "InputMoveUpPressed",  "InputMoveUpReleased", "InputUpdatePlayerVectors",
                                             "InputGamepadRightTriggerTriggered", "InputMouseLeftTriggered"};

using InputManagerTest = InputTest;
}

TEST_F(InputManagerTest, KeyDownSendsRawThenTriggeredAndHoldsTheBinding)
{
    EventLog log(kKeyEvents);
    Manager().OnKeyDown(kW);
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputRawKeyDown", "InputMoveUpTriggered"}));
    EXPECT_EQ(log.m_Events[0].raw, kW);
    EXPECT_EQ(log.m_Events[0].playerIndex, 4);
    EXPECT_TRUE(Keys().IsDown(kW));
    EXPECT_EQ(Keys().m_Held, (std::set<std::string>{"InputMoveUp"}));
    EXPECT_TRUE(GuiInput::Get().m_KeysDown[kW]);
}

TEST_F(InputManagerTest, KeyUpSendsRawThenReleasedAndDropsTheBinding)
{
    Manager().OnKeyDown(kW);
    EventLog log(kKeyEvents);
    Manager().OnKeyUp(kW);
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputRawKeyUp", "InputMoveUpReleased"}));
    EXPECT_FALSE(Keys().IsDown(kW));
    EXPECT_TRUE(Keys().m_Held.empty());
}

TEST_F(InputManagerTest, ARepeatedKeyDownTriggersAgainButKeyTriggeredDoesNot)
{
    EventLog log(kKeyEvents);
    Manager().Update(0.016f);
    Manager().OnKeyDown(kW);
    EXPECT_TRUE(Keys().IsTriggered(kW));
    Manager().Update(0.016f);
    Manager().OnKeyDown(kW);
    EXPECT_EQ(log.Count("InputMoveUpTriggered"), 2);
    EXPECT_FALSE(Keys().IsTriggered(kW));
    EXPECT_TRUE(Keys().IsDown(kW));
}

TEST_F(InputManagerTest, EachFrameSendsTheKeyboardVectorsThenPressedForEveryHeldBinding)
{
    Manager().OnKeyDown(kW);
    Manager().OnKeyDown(kD);
    EventLog log({"InputUpdatePlayerVectors", "InputMoveUpPressed", "InputMoveRightPressed"});
    Manager().Update(0.016f);
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputUpdatePlayerVectors", "InputMoveRightPressed",
                                                     "InputMoveUpPressed"}));
    const LoggedEvent& vectors = log.m_Events[0];
    EXPECT_EQ(vectors.playerIndex, 4);
    EXPECT_NEAR(vectors.move.x, std::sqrt(0.5f), 1e-6f);
    EXPECT_NEAR(vectors.move.y, std::sqrt(0.5f), 1e-6f);
    EXPECT_EQ(vectors.aim.x, 0.0f);
    EXPECT_EQ(vectors.aim.y, 0.0f);
}

TEST_F(InputManagerTest, OppositeMoveKeysCancelToAZeroVector)
{
    Manager().OnKeyDown(kA);
    Manager().OnKeyDown(kD);
    EventLog log({"InputUpdatePlayerVectors"});
    Manager().Update(0.016f);
    ASSERT_EQ(log.m_Events.size(), 1u);
    EXPECT_EQ(log.m_Events[0].move.x, 0.0f);
    EXPECT_EQ(log.m_Events[0].move.y, 0.0f);
}

TEST_F(InputManagerTest, TheFrameStepClearsScrollAndMovedAndKeepsLastFramesKeys)
{
    Manager().OnKeyDown(kW);
    Manager().OnMouseWheel(120);
    Manager().OnMouseMove(5, 6, 100, 100);
    Manager().Update(0.016f);
    EXPECT_EQ(Keys().m_Scroll, 0);
    EXPECT_FALSE(Keys().m_MouseMoved);
    EXPECT_EQ(Keys().m_Previous[kW], 1);
    EXPECT_FALSE(Keys().IsTriggered(kW));
}

TEST_F(InputManagerTest, ALeftClickOnAGuiWindowSendsOnlyTheRawEvent)
{
    GuiInput::Get().m_WantCaptureMouse = true;
    EventLog log(kKeyEvents);
    Manager().OnKeyDown(Input::Mouse_Left);
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputRawKeyDown"}));
    EXPECT_FALSE(Keys().IsDown(Input::Mouse_Left));
    EXPECT_TRUE(Keys().m_Held.empty());
}

TEST_F(InputManagerTest, KeysStillReachTheGameWhileTheGuiWantsTheMouse)
{
    GuiInput::Get().m_WantCaptureMouse = true;
    EventLog log(kKeyEvents);
    Manager().OnKeyDown(kW);
    EXPECT_EQ(log.Count("InputMoveUpTriggered"), 1);
}

TEST_F(InputManagerTest, TheLeftMouseButtonIsTheRightTrigger)
{
    EventLog log(kKeyEvents);
    Manager().OnKeyDown(Input::Mouse_Left);
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputRawKeyDown", "InputGamepadRightTriggerTriggered"}));
}

TEST_F(InputManagerTest, TwoKeysWithOneBindingAreHeldOnceAndEitherReleaseDropsIt)
{
    Keys().m_Bindings[kSpace] = "InputMoveUp";
    Manager().OnKeyDown(kW);
    Manager().OnKeyDown(kSpace);
    EXPECT_EQ(Keys().m_Held.size(), 1u);
    EventLog log({"InputMoveUpPressed"});
    Manager().Update(0.016f);
    EXPECT_EQ(log.Count("InputMoveUpPressed"), 1);
    Manager().OnKeyUp(kSpace);
    EXPECT_TRUE(Keys().m_Held.empty());
    EXPECT_TRUE(Keys().IsDown(kW));
}

TEST_F(InputManagerTest, UnboundKeysSendOnlyRawEvents)
{
    EventLog log({"InputRawKeyDown", "unboundTriggered"});
    Manager().OnKeyDown('Q');
    EXPECT_EQ(log.Names(), (std::vector<std::string>{"InputRawKeyDown"}));
    EXPECT_TRUE(Keys().IsDown('Q'));
    EXPECT_TRUE(Keys().m_Held.empty());
}

TEST_F(InputManagerTest, KeyCodesOutOfRangeChangeNoStateAndDoNotCrash)
{
    EventLog log(kKeyEvents);
    Manager().OnKeyDown(259);
    Manager().OnKeyDown(-5);
    Manager().OnKeyUp(100000);
    EXPECT_EQ(log.Count("InputRawKeyDown"), 2);
    EXPECT_FALSE(Keys().AnyDown());
}

TEST_F(InputManagerTest, DisabledInputIgnoresKeysAndSendsNoFrameEvents)
{
    Manager().m_InputEnabled = false;
    EventLog log(kKeyEvents);
    Manager().OnKeyDown(kW);
    Manager().Update(0.016f);
    EXPECT_TRUE(log.m_Events.empty());
    EXPECT_FALSE(Keys().IsDown(kW));
}

TEST_F(InputManagerTest, LosingFocusClearsKeyStatesButKeepsTheHeldBindings)
{
    Manager().OnKeyDown(kW);
    Manager().Update(0.016f);
    EventLog log({"InputMoveUpPressed", "InputUpdatePlayerVectors"});
    Manager().Update(0.016f, false);
    EXPECT_TRUE(log.m_Events.empty());
    EXPECT_FALSE(Keys().IsDown(kW));
    EXPECT_EQ(Keys().m_Previous[kW], 0);
    EXPECT_EQ(Keys().m_Held, (std::set<std::string>{"InputMoveUp"}));
    Manager().Update(0.016f, true);
    EXPECT_EQ(log.Count("InputMoveUpPressed"), 1);
}

TEST_F(InputManagerTest, MouseMoveStoresPixelsAndPercentAndMarksAMove)
{
    Manager().OnMouseMove(256, 144, 1024, 576);
    EXPECT_EQ(Keys().m_MousePosition.x, 256.0f);
    EXPECT_EQ(Keys().m_MousePosition.y, 144.0f);
    EXPECT_FLOAT_EQ(Keys().m_MousePercent.x, 25.0f);
    EXPECT_FLOAT_EQ(Keys().m_MousePercent.y, 25.0f);
    EXPECT_TRUE(Keys().m_MouseMoved);
    EXPECT_EQ(GuiInput::Get().m_MouseX, 256.0f);
    Manager().Update(0.016f);
    Manager().OnMouseMove(256, 144, 1024, 576);
    EXPECT_FALSE(Keys().m_MouseMoved);
}

TEST_F(InputManagerTest, TheWheelStoresItsValueAndGivesTheGuiOneStepBySign)
{
    GuiInput::Get().m_MouseWheel = 0.0f;
    Manager().OnMouseWheel(240);
    EXPECT_EQ(Keys().m_Scroll, 240);
    EXPECT_EQ(GuiInput::Get().m_MouseWheel, 1.0f);
    Manager().OnMouseWheel(-120);
    EXPECT_EQ(Keys().m_Scroll, -120);
    EXPECT_EQ(GuiInput::Get().m_MouseWheel, 0.0f);
}

TEST_F(InputManagerTest, TheGuiControlAndShiftFlagsFollowKeys17And16)
{
    Manager().OnKeyDown(17);
    Manager().Update(0.016f);
    EXPECT_TRUE(GuiInput::Get().m_KeyCtrl);
    EXPECT_FALSE(GuiInput::Get().m_KeyShift);
    Manager().OnKeyUp(17);
    Manager().OnKeyDown(16);
    Manager().Update(0.016f);
    EXPECT_FALSE(GuiInput::Get().m_KeyCtrl);
    EXPECT_TRUE(GuiInput::Get().m_KeyShift);
}

TEST_F(InputManagerTest, StartingSetsTheGuiKeyMap)
{
    const auto& map = GuiInput::Get().m_KeyMap;
    EXPECT_EQ(map[static_cast<int>(GuiKey::Tab)], 9);
    EXPECT_EQ(map[static_cast<int>(GuiKey::LeftArrow)], 37);
    EXPECT_EQ(map[static_cast<int>(GuiKey::Home)], 36);
    EXPECT_EQ(map[static_cast<int>(GuiKey::Delete)], 46);
    EXPECT_EQ(map[static_cast<int>(GuiKey::Z)], 'Z');
}

TEST_F(InputManagerTest, TheCursorCallReachesThePlatformOnlyWhenTheValueChanges)
{
    const int start = Platform::GetCursorCount();
    Manager().SetMouseVisible(true);
    EXPECT_EQ(Platform::GetCursorCount(), start);
    Manager().SetMouseVisible(false);
    Manager().SetMouseVisible(false);
    EXPECT_EQ(Platform::GetCursorCount(), start - 1);
    Manager().SetForceMouseVisible(true);
    EXPECT_EQ(Platform::GetCursorCount(), start);
    Manager().SetForceMouseVisible(false);
    Manager().SetMouseVisible(true);
    EXPECT_EQ(Platform::GetCursorCount(), start);
}

TEST_F(InputManagerTest, RumbleStrengthsSetTheMotorsOfTheAddressedPads)
{
    FakePadSource pads;
    Gamepad::SetSource(&pads);
    Manager().GamepadRumble(1.0f, 1, 2);
    ASSERT_EQ(pads.motorCalls.size(), 1u);
    EXPECT_EQ(pads.motorCalls[0].pad, 2);
    EXPECT_EQ(pads.motorCalls[0].motors.wLeftMotorSpeed, 4000);
    EXPECT_EQ(pads.motorCalls[0].motors.wRightMotorSpeed, 12000);
    EXPECT_EQ(Gamepad::Get(2).m_RumbleTime, 1.0f);

    pads.motorCalls.clear();
    Manager().GamepadRumble(0.5f, 3, -1);
    ASSERT_EQ(pads.motorCalls.size(), 4u);
    EXPECT_EQ(pads.motorCalls[3].motors.wLeftMotorSpeed, 24000);
    EXPECT_EQ(pads.motorCalls[3].motors.wRightMotorSpeed, 28000);

    pads.motorCalls.clear();
    Manager().GamepadRumble(0.5f, 2, 4);
    EXPECT_TRUE(pads.motorCalls.empty());

    Manager().GamepadRumble(0.5f, 7, 0);
    ASSERT_EQ(pads.motorCalls.size(), 1u);
    EXPECT_EQ(pads.motorCalls[0].motors.wLeftMotorSpeed, 0);
    EXPECT_EQ(pads.motorCalls[0].motors.wRightMotorSpeed, 0);
}

TEST_F(InputManagerTest, RumbleDuringAPauseIsDroppedAndTheStoredMotorsResumeAfter)
{
    FakePadSource pads;
    Gamepad::SetSource(&pads);
    Manager().GamepadRumble(2.0f, 2, 0);
    Engine::Space* level = Engine::SpaceManager::Get().GetSpace(Engine::Level);
    ASSERT_NE(level, nullptr);
    GenericEvent::Pause pause(true);
    level->m_Events.Dispatch("Pause", &pause);
    EXPECT_TRUE(Gamepad::Get(0).m_Paused);
    EXPECT_EQ(pads.motorCalls.back().motors.wLeftMotorSpeed, 0);

    pads.motorCalls.clear();
    Manager().GamepadRumble(1.0f, 3, 0);
    EXPECT_EQ(Gamepad::Get(0).m_RumbleTime, 2.0f);
    EXPECT_EQ(Gamepad::Get(0).m_Motors.wLeftMotorSpeed, 12000);
    EXPECT_TRUE(pads.motorCalls.empty());

    GenericEvent::Pause resume(false);
    level->m_Events.Dispatch("Pause", &resume);
    EXPECT_FALSE(Gamepad::Get(0).m_Paused);
    ASSERT_EQ(pads.motorCalls.size(), 4u);  // one call for each pad
    const auto last = pads.motorCalls[0];
    EXPECT_EQ(last.pad, 0);
    EXPECT_EQ(last.motors.wLeftMotorSpeed, 12000);
    EXPECT_EQ(last.motors.wRightMotorSpeed, 16000);
}
