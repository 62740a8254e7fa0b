#include "engine/Window.h"

#include "editor/GuiInput.h"
#include "engine/GameStateManager.h"
#include "engine/Manager.h"
#include "engine/Options.h"
#include "input/InputManager.h"
#include "platform/KeyCodes.h"

#include <gtest/gtest.h>

#include <vector>

using Platform::WindowMessage;
using Platform::WindowMessageKind;

namespace
{
// Records the window events broadcast on the global table.
struct WindowEvents
{
    std::vector<WindowResize> resizes;
    std::vector<bool> focus;
    void OnResize(Event* event) { resizes.push_back(*static_cast<WindowResize*>(event)); }
    void OnFocus(Event* event) { focus.push_back(static_cast<WindowFocus*>(event)->m_Focused); }
};

class WindowTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Engine::EventManager& events = Engine::Manager::Get().m_Events;
        events.RegisterEvent(&m_Events, "WindowResize", &WindowEvents::OnResize);
        events.RegisterEvent(&m_Events, "WindowFocus", &WindowEvents::OnFocus);
        m_Window.m_Created = true;
    }
    void TearDown() override { Engine::Manager::Get().m_Events.UnregisterAll(&m_Events); }

    long Send(WindowMessageKind kind, WindowMessage message = {})
    {
        message.kind = kind;
        return m_Window.HandleMessage(message);
    }
    WindowMessage Size(int width, int height, int type = Platform::SizeRestored)
    {
        WindowMessage message;
        message.width = width;
        message.height = height;
        message.sizeType = type;
        return message;
    }

    Window m_Window;
    WindowEvents m_Events;
};
}

TEST_F(WindowTest, SizeStoresTheClientSizeAndBroadcastsAResize)
{
    Send(WindowMessageKind::Size, Size(1280, 720));
    EXPECT_EQ(m_Window.GetWidth(), 1280);
    EXPECT_EQ(m_Window.GetHeight(), 720);
    ASSERT_EQ(m_Events.resizes.size(), 1u);
    EXPECT_EQ(m_Events.resizes[0].m_Width, 1280u);
    EXPECT_EQ(m_Events.resizes[0].m_Mode, ScreenMode::Keep);
    EXPECT_EQ(GuiInput::Get().m_DisplayWidth, 1280);
}

TEST_F(WindowTest, ZeroSizeBecomesOne)
{
    Send(WindowMessageKind::Size, Size(0, 0));
    EXPECT_EQ(m_Window.GetWidth(), 1);
    EXPECT_EQ(m_Window.GetHeight(), 1);
}

TEST_F(WindowTest, MinimizingBroadcastsFocusLostEvenWithLostFocusDisabled)
{
    Engine::Options options;
    Window window;
    window.m_Created = true;
    Engine::Options::ParseCommandLine("Game --DisableLostFocus");
    EXPECT_FALSE(window.m_LostFocusEnabled);
    WindowMessage message = Size(0, 0, Platform::SizeMinimized);
    message.kind = WindowMessageKind::Size;
    window.HandleMessage(message);
    EXPECT_EQ(m_Events.focus, std::vector<bool>{false});
}

TEST_F(WindowTest, DraggingTheBorderSendsNoResizeUntilTheDragEnds)
{
    Send(WindowMessageKind::EnterSizeMove);
    Send(WindowMessageKind::Size, Size(1100, 600));
    Send(WindowMessageKind::Size, Size(1200, 650));
    EXPECT_TRUE(m_Events.resizes.empty());
    Send(WindowMessageKind::ExitSizeMove);
    ASSERT_EQ(m_Events.resizes.size(), 1u);
    EXPECT_EQ(m_Events.resizes[0].m_Width, 1200u);
    EXPECT_EQ(m_Events.resizes[0].m_Height, 650u);
    EXPECT_FALSE(m_Window.m_InSizeMove);
}

TEST_F(WindowTest, ActivationChangesFocusAndDropsMouseMovesWhileUnfocused)
{
    WindowMessage inactive;
    inactive.activation = Platform::Inactive;
    Send(WindowMessageKind::Activate, inactive);
    EXPECT_FALSE(m_Window.m_Focused);

    WindowMessage move;
    move.x = 300;
    move.y = 200;
    InputManager::Get().m_MouseX = 0;
    Send(WindowMessageKind::MouseMove, move);
    EXPECT_EQ(InputManager::Get().m_MouseX, 0);

    WindowMessage active;
    active.activation = Platform::ClickActive;
    Send(WindowMessageKind::Activate, active);
    EXPECT_TRUE(m_Window.m_Focused);
    EXPECT_EQ(m_Events.focus, (std::vector<bool>{false, true}));

    Send(WindowMessageKind::MouseMove, move);
    EXPECT_EQ(InputManager::Get().m_MouseX, 300);
    EXPECT_FLOAT_EQ(InputManager::Get().m_MousePercentX, 300.0f / 1024.0f * 100.0f);
    EXPECT_TRUE(InputManager::Get().m_MouseMoved);
}

TEST_F(WindowTest, ActivationFromAnotherWindowIsNotFocus)
{
    m_Window.m_Focused = false;
    WindowMessage active;
    active.activation = Platform::Active;
    active.otherWindowIsNull = false;
    Send(WindowMessageKind::Activate, active);
    EXPECT_FALSE(m_Window.m_Focused);
    EXPECT_TRUE(m_Events.focus.empty());
}

TEST_F(WindowTest, LostFocusDisabledIgnoresActivation)
{
    m_Window.m_LostFocusEnabled = false;
    WindowMessage inactive;
    Send(WindowMessageKind::Activate, inactive);
    EXPECT_TRUE(m_Window.m_Focused);
    EXPECT_TRUE(m_Events.focus.empty());
}

TEST_F(WindowTest, CloseAsksTheGameToQuit)
{
    GameStateManager::Get().SetNext(0);
    Send(WindowMessageKind::Close);
    EXPECT_EQ(GameStateManager::Get().GetNextStateId(), GameStateManager::Quit);
}

TEST_F(WindowTest, AltF4ClosesAndAltReturnTogglesTheScreenMode)
{
    WindowMessage altReturn;
    altReturn.key = Platform::VK_RETURN;
    altReturn.altHeld = true;
    Send(WindowMessageKind::SysKeyDown, altReturn);
    ASSERT_EQ(m_Events.resizes.size(), 1u);
    EXPECT_EQ(m_Events.resizes[0].m_Mode, ScreenMode::Toggle);

    GameStateManager::Get().SetNext(0);
    WindowMessage f4;
    f4.key = Platform::VK_F4;
    f4.altHeld = false;
    Send(WindowMessageKind::SysKeyDown, f4);
    EXPECT_EQ(GameStateManager::Get().GetNextStateId(), 0);
    f4.altHeld = true;
    Send(WindowMessageKind::SysKeyDown, f4);
    EXPECT_EQ(GameStateManager::Get().GetNextStateId(), GameStateManager::Quit);
}

TEST_F(WindowTest, KeysReachTheInputManagerAsTheirLowEightBits)
{
    WindowMessage key;
    key.key = 0x141;
    Send(WindowMessageKind::KeyDown, key);
    EXPECT_TRUE(InputManager::Get().IsDown(0x41));
    Send(WindowMessageKind::KeyUp, key);
    EXPECT_FALSE(InputManager::Get().IsDown(0x41));
}

TEST_F(WindowTest, MouseButtonsArePseudoKeysAndGuiButtons)
{
    WindowMessage right;
    right.button = Platform::RightButton;
    Send(WindowMessageKind::MouseButtonDown, right);
    EXPECT_TRUE(InputManager::Get().IsDown(257));
    EXPECT_TRUE(GuiInput::Get().m_MouseDown[1]);
    Send(WindowMessageKind::MouseButtonUp, right);
    EXPECT_FALSE(InputManager::Get().IsDown(257));
    EXPECT_FALSE(GuiInput::Get().m_MouseDown[1]);

    WindowMessage middle;
    middle.button = Platform::MiddleButton;
    Send(WindowMessageKind::MouseButtonDown, middle);
    EXPECT_TRUE(InputManager::Get().IsDown(258));
}

TEST_F(WindowTest, WheelGivesTheGuiOneStepBySignAndReturnsOne)
{
    GuiInput::Get().m_MouseWheel = 0.0f;
    InputManager::Get().m_Wheel = 0;
    WindowMessage wheel;
    wheel.wheelDelta = -240;
    EXPECT_EQ(Send(WindowMessageKind::MouseWheel, wheel), 1);
    EXPECT_EQ(GuiInput::Get().m_MouseWheel, -1.0f);
    EXPECT_EQ(InputManager::Get().m_Wheel, -240);
}

TEST_F(WindowTest, CharactersReachTheGui)
{
    GuiInput::Get().m_Characters.clear();
    WindowMessage character;
    character.character = 'q';
    Send(WindowMessageKind::Char, character);
    character.character = 0;
    Send(WindowMessageKind::Char, character);
    EXPECT_EQ(GuiInput::Get().m_Characters, std::vector<std::uint16_t>{'q'});
}

TEST_F(WindowTest, MenuCharClosesTheMenuAndMinimumSizeIsAnswered)
{
    EXPECT_EQ(Send(WindowMessageKind::MenuChar), 0x10000);
    EXPECT_EQ(Send(WindowMessageKind::Message549), 0);
    WindowMessage minMax;
    Send(WindowMessageKind::GetMinMaxInfo, minMax);
    minMax.kind = WindowMessageKind::GetMinMaxInfo;
    m_Window.HandleMessage(minMax);
    EXPECT_EQ(minMax.minWidth, 1024);
    EXPECT_EQ(minMax.minHeight, 576);
}

TEST_F(WindowTest, LogicalSizeDividesByTheDisplayScale)
{
    m_Window.m_HorizontalScale = 1.5f;
    m_Window.m_VerticalScale = 2.0f;
    Send(WindowMessageKind::Size, Size(1536, 1152));
    EXPECT_EQ(m_Window.GetLogicalWidth(), 1024);
    EXPECT_EQ(m_Window.GetLogicalHeight(), 576);
}
