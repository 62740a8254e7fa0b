#include "input/KeyboardState.h"

#include <gtest/gtest.h>

using Input::KeyboardState;

TEST(KeyboardStateTest, ResetClearsEveryKeyUnbindsAllAndShowsTheMouse)
{
    KeyboardState& state = KeyboardState::Get();
    state.m_Current[5] = 1;
    state.m_Bindings[5] = "Something";
    state.m_Held.insert("Something");
    state.m_MouseVisible = false;
    state.m_MousePosition = Math::Point2D(3.0f, 4.0f);
    state.Reset();
    EXPECT_FALSE(state.AnyDown());
    EXPECT_EQ(state.m_Bindings[5], "unbound");
    EXPECT_EQ(state.m_Bindings[258], "unbound");
    EXPECT_TRUE(state.m_Held.empty());
    EXPECT_TRUE(state.m_MouseVisible);
    EXPECT_FALSE(state.m_ForceMouseVisible);
    EXPECT_EQ(state.m_MousePosition.x, 0.0f);
}

TEST(KeyboardStateTest, QueriesCompareThisFrameWithTheLastAndRefuseCodesOutOfRange)
{
    KeyboardState& state = KeyboardState::Get();
    state.Reset();
    state.m_Current[65] = 1;
    EXPECT_TRUE(state.IsTriggered(65));
    EXPECT_TRUE(state.IsDown(65));
    state.CopyToPrevious();
    EXPECT_FALSE(state.IsTriggered(65));
    state.m_Current[65] = 0;
    EXPECT_TRUE(state.IsReleased(65));
    for (int code : {-1, 259, 260, 100000})
    {
        EXPECT_FALSE(state.IsDown(code));
        EXPECT_FALSE(state.IsTriggered(code));
        EXPECT_FALSE(state.IsReleased(code));
    }
    state.Reset();
}

TEST(KeyboardStateTest, ClearKeysKeepsTheHeldBindings)
{
    KeyboardState& state = KeyboardState::Get();
    state.Reset();
    state.m_Current[87] = 1;
    state.m_Previous[87] = 1;
    state.m_Held.insert("InputMoveUp");
    state.ClearKeys();
    EXPECT_FALSE(state.AnyDown());
    EXPECT_EQ(state.m_Previous[87], 0);
    EXPECT_EQ(state.m_Held.size(), 1u);
    state.Reset();
}
