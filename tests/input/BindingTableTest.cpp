#include "input/BindingTable.h"

#include "input/KeyboardState.h"

#include <gtest/gtest.h>

using Input::KeyboardState;

namespace
{
// A keyboard state reset and filled as the window's start does it.
KeyboardState& FilledState()
{
    KeyboardState& state = KeyboardState::Get();
    state.Reset();
    Input::FillBindingTable(state);
    return state;
}
}

TEST(BindingTableTest, LaterLinesWinSoTheMouseButtonsAreTheTriggersAndTheArrowsTheDPad)
{
    const KeyboardState& state = FilledState();
    EXPECT_EQ(state.m_Bindings[Input::Mouse_Left], "InputGamepadRightTrigger");
    EXPECT_EQ(state.m_Bindings[Input::Mouse_Right], "InputGamepadLeftTrigger");
    EXPECT_EQ(state.m_Bindings[Input::Mouse_Middle], "InputMouseMiddle");
    EXPECT_EQ(state.m_Bindings[38], "InputGamepadDPadUp");
    EXPECT_EQ(state.m_Bindings[40], "InputGamepadDPadDown");
    EXPECT_EQ(state.m_Bindings[37], "InputGamepadDPadLeft");
    EXPECT_EQ(state.m_Bindings[39], "InputGamepadDPadRight");
}

TEST(BindingTableTest, TheShippedKeysCarryTheirNames)
{
    const KeyboardState& state = FilledState();
    EXPECT_EQ(state.m_Bindings[32], "InputGamepadButtonA");
    EXPECT_EQ(state.m_Bindings['W'], "InputMoveUp");
    EXPECT_EQ(state.m_Bindings['A'], "InputMoveLeft");
    EXPECT_EQ(state.m_Bindings['S'], "InputMoveDown");
    EXPECT_EQ(state.m_Bindings['D'], "InputMoveRight");
    EXPECT_EQ(state.m_Bindings[27], "InputEscape");
    EXPECT_EQ(state.m_Bindings[13], "InputEnter");
    EXPECT_EQ(state.m_Bindings['R'], "InputR");
    EXPECT_EQ(state.m_Bindings['E'], "InputE");
}

TEST(BindingTableTest, EveryOtherKeyIsUnboundAndNoKeyCarriesTheAimNames)
{
    const KeyboardState& state = FilledState();
    EXPECT_EQ(state.m_Bindings['Q'], "unbound");
    EXPECT_EQ(state.m_Bindings[0], "unbound");
    EXPECT_EQ(state.FindBinding("InputArrowUp"), -1);
    EXPECT_EQ(state.FindBinding("InputMouseLeft"), -1);
    EXPECT_EQ(state.FindBinding("InputMoveUp"), 'W');
    int bound = 0;
    for (const std::string& binding : state.m_Bindings)
        bound += binding != "unbound" ? 1 : 0;
    EXPECT_EQ(bound, 16);
}

TEST(BindingTableTest, ButtonMasksAndNamesFollowXInput)
{
    EXPECT_EQ(Input::GamepadButtonMask(0), 1u);
    EXPECT_EQ(Input::GamepadButtonMask(9), 512u);
    EXPECT_EQ(Input::GamepadButtonMask(10), 4096u);
    EXPECT_EQ(Input::GamepadButtonMask(13), 32768u);
    EXPECT_EQ(Input::GamepadButtonMask(14), 0u);
    EXPECT_STREQ(Input::GamepadButtonName(4), "InputGamepadConfirm");
    EXPECT_STREQ(Input::GamepadButtonName(10), "InputGamepadButtonA");
    EXPECT_STREQ(Input::GamepadButtonName(14), "unbound");
    EXPECT_STREQ(Input::GamepadButtonName(15), "InputGamepadLeftTrigger");
    EXPECT_STREQ(Input::GamepadButtonName(16), "InputGamepadRightTrigger");
    EXPECT_STREQ(Input::GamepadButtonName(17), "unbound");
    EXPECT_STREQ(Input::GamepadButtonName(-1), "unbound");
}
