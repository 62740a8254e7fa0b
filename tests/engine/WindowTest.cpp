#include "engine/Window.h"

#include "editor/GuiInput.h"
#include "engine/Files.h"
#include "engine/GameStateManager.h"
#include "engine/Manager.h"
#include "engine/Options.h"
#include "input/InputManager.h"
#include "input/KeyboardState.h"
#include "platform/KeyCodes.h"
#include "support/ReportCapture.h"
#include "support/Scoped.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
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

// A window that opens for real, on the offscreen driver, with a display of the test's making.
class OpenedWindowTest : public testing::Test
{
protected:
    void TearDown() override
    {
        m_Window.DestroyNativeWindow();
        InputManager::Get().Initialize(nullptr);
        Util::SetDataDirectory(m_DataDirectory);
    }
    // The display answers only once video runs, as a real one does.
    void GiveDisplayScale(float horizontal, float vertical)
    {
        m_Window.SetDisplayScaleQuery([this, horizontal, vertical] {
            return m_Window.IsVideoStarted() ? Platform::DisplayScale{horizontal, vertical} : Platform::DisplayScale{};
        });
    }

    ScopedEnvironment m_Driver{"SDL_VIDEODRIVER", "offscreen"};
    const std::string m_DataDirectory = Util::GetDataDirectory();
    Window m_Window;
};

std::string ShippedCursor()
{
    return (std::filesystem::path(VORN_TEST_DATA_DIR) / ".." / ".." / "Data" / "Emberfallow_Cursor.cur").string();
}
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
    Input::KeyboardState::Get().m_MousePosition = Math::Point2D(0.0f, 0.0f);
    Send(WindowMessageKind::MouseMove, move);
    EXPECT_EQ(Input::KeyboardState::Get().m_MousePosition.x, 0.0f);

    WindowMessage active;
    active.activation = Platform::ClickActive;
    Send(WindowMessageKind::Activate, active);
    EXPECT_TRUE(m_Window.m_Focused);
    EXPECT_EQ(m_Events.focus, (std::vector<bool>{false, true}));

    Send(WindowMessageKind::MouseMove, move);
    EXPECT_EQ(Input::KeyboardState::Get().m_MousePosition.x, 300.0f);
    EXPECT_FLOAT_EQ(Input::KeyboardState::Get().m_MousePercent.x, 300.0f / 1024.0f * 100.0f);
    EXPECT_TRUE(Input::KeyboardState::Get().m_MouseMoved);
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
    EXPECT_TRUE(Input::KeyboardState::Get().IsDown(0x41));
    Send(WindowMessageKind::KeyUp, key);
    EXPECT_FALSE(Input::KeyboardState::Get().IsDown(0x41));
}

TEST_F(WindowTest, MouseButtonsArePseudoKeysAndGuiButtons)
{
    WindowMessage right;
    right.button = Platform::RightButton;
    Send(WindowMessageKind::MouseButtonDown, right);
    EXPECT_TRUE(Input::KeyboardState::Get().IsDown(257));
    EXPECT_TRUE(GuiInput::Get().m_MouseDown[1]);
    Send(WindowMessageKind::MouseButtonUp, right);
    EXPECT_FALSE(Input::KeyboardState::Get().IsDown(257));
    EXPECT_FALSE(GuiInput::Get().m_MouseDown[1]);

    WindowMessage middle;
    middle.button = Platform::MiddleButton;
    Send(WindowMessageKind::MouseButtonDown, middle);
    EXPECT_TRUE(Input::KeyboardState::Get().IsDown(258));
}

TEST_F(WindowTest, WheelGivesTheGuiOneStepBySignAndReturnsOne)
{
    GuiInput::Get().m_MouseWheel = 0.0f;
    Input::KeyboardState::Get().m_Scroll = 0;
    WindowMessage wheel;
    wheel.wheelDelta = -240;
    EXPECT_EQ(Send(WindowMessageKind::MouseWheel, wheel), 1);
    EXPECT_EQ(GuiInput::Get().m_MouseWheel, -1.0f);
    EXPECT_EQ(Input::KeyboardState::Get().m_Scroll, -240);
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

TEST_F(WindowTest, MousePercentIsZeroOverAZeroSizeClientArea)
{
    m_Window.m_Created = false;  // before creation a zero size is kept as it is
    Send(WindowMessageKind::Size, Size(0, 0));
    ASSERT_EQ(m_Window.GetLogicalWidth(), 0);
    WindowMessage move;
    move.x = 10;
    move.y = 20;
    Send(WindowMessageKind::MouseMove, move);
    EXPECT_EQ(Input::KeyboardState::Get().m_MousePosition.x, 10.0f);
    EXPECT_EQ(Input::KeyboardState::Get().m_MousePercent.x, 0.0f);
    EXPECT_EQ(Input::KeyboardState::Get().m_MousePercent.y, 0.0f);
}

TEST_F(WindowTest, MousePercentIsZeroWhenTheScaleLeavesNoLogicalSize)
{
    Send(WindowMessageKind::Size, Size(3, 3));
    m_Window.m_HorizontalScale = 8.0f;
    m_Window.m_VerticalScale = 0.0f;  // no scale at all counts as 1
    EXPECT_EQ(m_Window.GetLogicalWidth(), 0);
    EXPECT_EQ(m_Window.GetLogicalHeight(), 3);
    WindowMessage move;
    move.x = 2;
    move.y = 1;
    Send(WindowMessageKind::MouseMove, move);
    EXPECT_EQ(Input::KeyboardState::Get().m_MousePercent.x, 0.0f);
    EXPECT_TRUE(std::isfinite(Input::KeyboardState::Get().m_MousePercent.y));
}

TEST_F(WindowTest, MousePercentIsOfTheLogicalSize)
{
    m_Window.m_HorizontalScale = 2.0f;
    m_Window.m_VerticalScale = 2.0f;
    Send(WindowMessageKind::Size, Size(1024, 576));
    WindowMessage move;
    move.x = 256;
    move.y = 72;
    Send(WindowMessageKind::MouseMove, move);
    EXPECT_FLOAT_EQ(Input::KeyboardState::Get().m_MousePercent.x, 50.0f);
    EXPECT_FLOAT_EQ(Input::KeyboardState::Get().m_MousePercent.y, 25.0f);
}

TEST_F(OpenedWindowTest, InitializeReadsTheDisplayScaleOnceVideoRuns)
{
    GiveDisplayScale(1.5f, 2.0f);
    m_Window.Initialize();
    EXPECT_TRUE(m_Window.IsVideoStarted());
    EXPECT_FLOAT_EQ(m_Window.m_HorizontalScale, 1.5f);
    EXPECT_FLOAT_EQ(m_Window.m_VerticalScale, 2.0f);
}

TEST_F(OpenedWindowTest, WindowOpensAtTheLogicalSizeOfItsDisplay)
{
    // 48 pixels per inch: the 1024 x 576 pixels the game asks for are 2048 x 1152 logical.
    GiveDisplayScale(0.5f, 0.5f);
    m_Window.Initialize();
    EXPECT_EQ(m_Window.GetWidth(), 2048);
    EXPECT_EQ(m_Window.GetHeight(), 1152);
    EXPECT_EQ(GuiInput::Get().m_DisplayWidth, m_Window.GetLogicalWidth());
    EXPECT_EQ(GuiInput::Get().m_DisplayHeight, m_Window.GetLogicalHeight());
}

TEST_F(OpenedWindowTest, MousePercentFollowsTheDisplayScale)
{
    // 192 pixels per inch: the window keeps its smallest size, 1024 x 576, which is 512 x 288 logical.
    GiveDisplayScale(2.0f, 2.0f);
    m_Window.Initialize();
    ASSERT_EQ(m_Window.GetWidth(), 1024);
    ASSERT_EQ(m_Window.GetLogicalWidth(), 512);
    WindowMessage move;
    move.kind = WindowMessageKind::MouseMove;
    move.x = 256;
    move.y = 144;
    m_Window.HandleMessage(move);
    EXPECT_FLOAT_EQ(Input::KeyboardState::Get().m_MousePercent.x, 50.0f);
    EXPECT_FLOAT_EQ(Input::KeyboardState::Get().m_MousePercent.y, 50.0f);
}

TEST_F(OpenedWindowTest, ADisplayScaleThatIsNoNumberOrOutOfRangeIsNotTaken)
{
    GiveDisplayScale(std::numeric_limits<float>::quiet_NaN(), -1.0f);
    m_Window.Initialize();
    EXPECT_FLOAT_EQ(m_Window.m_HorizontalScale, 1.0f);
    EXPECT_FLOAT_EQ(m_Window.m_VerticalScale, 1.0f);
    m_Window.DestroyNativeWindow();

    GiveDisplayScale(100.0f, 0.01f);
    m_Window.Initialize();
    EXPECT_FLOAT_EQ(m_Window.m_HorizontalScale, Window::kMaxScale);
    EXPECT_FLOAT_EQ(m_Window.m_VerticalScale, Window::kMinScale);
}

TEST_F(OpenedWindowTest, CursorComesFromTheDataDirectory)
{
    TempFolder data;
    std::filesystem::copy_file(ShippedCursor(), data.Path() + "Emberfallow_Cursor.cur");
    Util::SetDataDirectory(data.Path());
    EXPECT_EQ(Window::GetCursorPath(), data.Path() + "Emberfallow_Cursor.cur");
    ReportCapture reports;
    m_Window.Initialize();
    EXPECT_TRUE(m_Window.LoadCursor());
    EXPECT_FALSE(reports.Holds("not used"));
}

TEST_F(OpenedWindowTest, MissingCursorIsLoggedAndTheSystemArrowStays)
{
    TempFolder data;
    Util::SetDataDirectory(data.Path());
    ReportCapture reports;
    m_Window.Initialize();
    EXPECT_FALSE(m_Window.LoadCursor());
    EXPECT_TRUE(reports.Holds("[WARNING]"));
    EXPECT_TRUE(reports.Holds("Cursor \"" + data.Path() + "Emberfallow_Cursor.cur\" not used: the file cannot be opened"));
}

TEST_F(OpenedWindowTest, BrokenCursorIsLoggedAndTheSystemArrowStays)
{
    TempFolder data;
    data.Write("Emberfallow_Cursor.cur", std::string("\0\0\1\0\1\0junk", 10));
    Util::SetDataDirectory(data.Path());
    ReportCapture reports;
    m_Window.Initialize();
    EXPECT_TRUE(m_Window.IsVideoStarted());
    EXPECT_FALSE(m_Window.LoadCursor());
    EXPECT_TRUE(reports.Holds("not a cursor"));
}

TEST_F(WindowTest, AFrameWithoutFocusClearsTheKeysThatWereDown)
{
    InputManager::Get().Initialize(nullptr);
    WindowMessage key;
    key.key = 'W';
    Send(WindowMessageKind::KeyDown, key);
    WindowMessage inactive;
    inactive.activation = Platform::Inactive;
    Send(WindowMessageKind::Activate, inactive);
    m_Window.Update(0.016f);
    EXPECT_FALSE(Input::KeyboardState::Get().IsDown('W'));
    EXPECT_EQ(Input::KeyboardState::Get().m_Held.count("InputMoveUp"), 1u);
    m_Window.m_Focused = true;
    InputManager::Get().Initialize(nullptr);
}

TEST_F(WindowTest, WithLostFocusDisabledKeysStayDownAcrossDeactivation)
{
    InputManager::Get().Initialize(nullptr);
    m_Window.m_LostFocusEnabled = false;
    WindowMessage key;
    key.key = 'W';
    Send(WindowMessageKind::KeyDown, key);
    Send(WindowMessageKind::Activate, WindowMessage{});
    m_Window.Update(0.016f);
    EXPECT_TRUE(Input::KeyboardState::Get().IsDown('W'));
    InputManager::Get().Initialize(nullptr);
}

TEST_F(WindowTest, AClickOverAGuiWindowSendsTheRawEventButLeavesTheGameUntouched)
{
    InputManager::Get().Initialize(nullptr);
    struct Heard
    {
        int raw = 0;
        int triggered = 0;
        void OnRaw(Event*) { ++raw; }
        void OnTriggered(Event*) { ++triggered; }
    } heard;
    Engine::EventManager& events = Engine::Manager::Get().m_Events;
    events.RegisterEvent(&heard, "InputRawKeyDown", &Heard::OnRaw);
    events.RegisterEvent(&heard, "InputGamepadRightTriggerTriggered", &Heard::OnTriggered);
    GuiInput::Get().m_WantCaptureMouse = true;
    WindowMessage left;
    left.button = Platform::LeftButton;
    Send(WindowMessageKind::MouseButtonDown, left);
    GuiInput::Get().m_WantCaptureMouse = false;
    events.UnregisterAll(&heard);
    EXPECT_EQ(heard.raw, 1);
    EXPECT_EQ(heard.triggered, 0);
    EXPECT_FALSE(Input::KeyboardState::Get().IsDown(Input::Mouse_Left));
    EXPECT_TRUE(GuiInput::Get().m_MouseDown[0]);
    Send(WindowMessageKind::MouseButtonUp, left);
}
