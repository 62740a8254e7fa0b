#include "engine/Window.h"

#include "editor/GuiInput.h"
#include "engine/Files.h"
#include "engine/GameStateManager.h"
#include "engine/Manager.h"
#include "engine/Options.h"
#include "input/InputManager.h"
#include "input/InputRecorder.h"
#include "platform/KeyCodes.h"
#include "utilities/Meta/Registration.h"

using Platform::WindowMessage;
using Platform::WindowMessageKind;

META_REGISTER_ENUM(ScreenMode, {{"Keep", 0}, {"Toggle", 3}});

META_REGISTER(WindowResize)
{
    DERIVE(Event);
    DESCRIPTION("Sent when the window's size or screen mode changes.");
    MEMBER(m_Width, "Client width in pixels.");
    MEMBER(m_Height, "Client height in pixels.");
    MEMBER(m_Mode, "How the screen mode changes.");
}

META_REGISTER(WindowFocus)
{
    DERIVE(Event);
    DESCRIPTION("Sent when the window gains or loses focus.");
    MEMBER(m_Focused, "Whether the window has focus now.");
}

META_REGISTER(Window)
{
    DERIVE(System);
    DESCRIPTION("The game's window.");
    METHOD(GetWidth);
    METHOD(GetHeight);
}

Meta::Data* WindowResize::GetMeta() const
{
    return Meta::Get<WindowResize>();
}

Meta::Data* WindowFocus::GetMeta() const
{
    return Meta::Get<WindowFocus>();
}

Window::Window() = default;

Window& Window::Get()
{
    static Window* window = new Window();
    return *window;
}

Meta::Data* Window::GetMeta() const
{
    return Meta::Get<Window>();
}

void Window::Initialize()
{
    Platform::NativeWindow::GetDisplayScale(m_HorizontalScale, m_VerticalScale);
    WindowMessage minMax;
    minMax.kind = WindowMessageKind::GetMinMaxInfo;
    HandleMessage(minMax);
    // The native window's client area is exactly the size asked for, so there is no border to make up.
    m_Native.Create(m_Title, GetLogicalWidth(), GetLogicalHeight(), minMax.minWidth, minMax.minHeight);
    m_Native.SetCursorFromFile(Util::GetDataDirectory() + "Emberfallow_Cursor.cur");
    m_BorderX = 0;
    m_BorderY = 0;
    InputManager::Get().Initialize(this);
    m_Created = true;
}

void Window::Update(float)
{
    InputRecorder& recorder = InputRecorder::Get();
    if (recorder.IsPlayback())
        recorder.Step();
    InputManager::Get().Update();
    GuiInput::Get().m_MouseWheel = 0.0f;
    GuiInput::Get().m_Characters.clear();
    m_Messages.clear();
    m_Native.PumpMessages(m_Messages);
    for (WindowMessage& message : m_Messages)
        HandleMessage(message);
    if (!recorder.IsNotRecording())
        recorder.AdvanceFrame();
}

void Window::Show()
{
    m_Native.Show();
}

void Window::Close()
{
    GameStateManager::Get().SetNext(GameStateManager::Quit);
}

void Window::UpdateGuiDisplaySize()
{
    GuiInput::Get().m_DisplayWidth = GetLogicalWidth();
    GuiInput::Get().m_DisplayHeight = GetLogicalHeight();
}

long Window::HandleMessage(WindowMessage& message)
{
    InputRecorder& recorder = InputRecorder::Get();
    InputManager& input = InputManager::Get();
    GuiInput& gui = GuiInput::Get();
    Engine::Manager& manager = Engine::Manager::Get();

    // While a replay plays back, real keyboard and mouse input is swallowed.
    if (recorder.IsPlayback())
    {
        switch (message.kind)
        {
        case WindowMessageKind::KeyDown:
        case WindowMessageKind::KeyUp:
        case WindowMessageKind::Char:
        case WindowMessageKind::MouseMove:
        case WindowMessageKind::MouseButtonDown:
        case WindowMessageKind::MouseButtonUp:
        case WindowMessageKind::MouseWheel:
            return 0;
        default:
            break;
        }
    }

    switch (message.kind)
    {
    case WindowMessageKind::Destroy:
        return 0;
    case WindowMessageKind::Close:
        Close();
        return 0;
    case WindowMessageKind::Move:
    case WindowMessageKind::Paint:
        // The whole frame is drawn every frame; nothing to invalidate or paint here.
        return 0;
    case WindowMessageKind::Size:
    {
        m_Width = message.width;
        m_Height = message.height;
        if (m_Created)
        {
            if (m_Width == 0)
                m_Width = 1;
            if (m_Height == 0)
                m_Height = 1;
            const bool minimized = message.sizeType == Platform::SizeMinimized;
            if (minimized)
            {
                WindowFocus lost(false);
                manager.BroadcastEvent(&lost);
            }
            if (!m_InSizeMove)
            {
                if (!minimized)
                    UpdateGuiDisplaySize();
                WindowResize resize(static_cast<unsigned>(m_Width), static_cast<unsigned>(m_Height), ScreenMode::Keep);
                manager.BroadcastEvent(&resize);
            }
        }
        return 0;
    }
    case WindowMessageKind::Activate:
        if (m_LostFocusEnabled)
        {
            if (message.activation == Platform::Inactive)
            {
                WindowFocus lost(false);
                manager.BroadcastEvent(&lost);
                m_Focused = false;
            }
            else if (message.otherWindowIsNull &&
                     (message.activation == Platform::Active || message.activation == Platform::ClickActive))
            {
                WindowFocus gained(true);
                manager.BroadcastEvent(&gained);
                m_Focused = true;
            }
        }
        return 0;
    case WindowMessageKind::GetMinMaxInfo:
        message.minWidth = kMinWidth;
        message.minHeight = kMinHeight;
        return 0;
    case WindowMessageKind::KeyDown:
        recorder.NoteMessage(message);
        input.OnKeyDown(message.key & 0xFF);
        return 0;
    case WindowMessageKind::KeyUp:
        recorder.NoteMessage(message);
        input.OnKeyUp(message.key & 0xFF);
        return 0;
    case WindowMessageKind::Char:
        recorder.NoteMessage(message);
        if (message.character >= 1 && message.character <= 65535)
            gui.m_Characters.push_back(static_cast<std::uint16_t>(message.character));
        return 0;
    case WindowMessageKind::SysKeyDown:
        if (message.key == Platform::VK_RETURN)
        {
            WindowResize toggle(static_cast<unsigned>(m_Width), static_cast<unsigned>(m_Height), ScreenMode::Toggle);
            manager.BroadcastEvent(&toggle);
            Show();
        }
        else if (message.key == Platform::VK_F4 && message.altHeld)
        {
            Close();
        }
        return 0;
    case WindowMessageKind::MenuChar:
        // Closes the menu, so that Alt+Return doesn't beep.
        return 0x10000;
    case WindowMessageKind::MouseMove:
    {
        if (!m_Focused)
            return 0;
        recorder.NoteMessage(message);
        const bool moved = message.x != input.m_MouseX || message.y != input.m_MouseY;
        const float percentX = static_cast<float>(message.x) / static_cast<float>(GetLogicalWidth()) * 100.0f;
        const float percentY = static_cast<float>(message.y) / static_cast<float>(GetLogicalHeight()) * 100.0f;
        input.SetMousePosition(message.x, message.y, percentX, percentY);
        gui.m_MouseX = static_cast<float>(message.x);
        gui.m_MouseY = static_cast<float>(message.y);
        if (moved)
            input.SetMouseMoved();
        return 0;
    }
    case WindowMessageKind::MouseButtonDown:
    case WindowMessageKind::MouseButtonUp:
    {
        recorder.NoteMessage(message);
        const bool down = message.kind == WindowMessageKind::MouseButtonDown;
        const int code = InputManager::kMouseLeft + message.button;
        if (down)
            input.OnKeyDown(code);
        else
            input.OnKeyUp(code);
        if (message.button == Platform::LeftButton || message.button == Platform::RightButton)
            gui.m_MouseDown[message.button] = down;
        return 0;
    }
    case WindowMessageKind::MouseWheel:
        recorder.NoteMessage(message);
        gui.m_MouseWheel += message.wheelDelta > 0 ? 1.0f : -1.0f;
        input.OnMouseWheel(static_cast<short>(message.wheelDelta));
        return 1;
    case WindowMessageKind::Message549:
        return 0;
    case WindowMessageKind::EnterSizeMove:
        m_InSizeMove = true;
        return 0;
    case WindowMessageKind::ExitSizeMove:
    {
        m_InSizeMove = false;
        WindowResize resize(static_cast<unsigned>(m_Width), static_cast<unsigned>(m_Height), ScreenMode::Keep);
        manager.BroadcastEvent(&resize);
        UpdateGuiDisplaySize();
        return 0;
    }
    case WindowMessageKind::Other:
        break;
    }
    return 0;
}
