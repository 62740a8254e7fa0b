#include "engine/Window.h"

#include "editor/GuiInput.h"
#include "engine/CursorFile.h"
#include "engine/Files.h"
#include "engine/GameStateManager.h"
#include "engine/Log.h"
#include "engine/Manager.h"
#include "engine/Options.h"
#include "input/Gamepad.h"
#include "input/InputManager.h"
#include "input/InputRecorder.h"
#include "input/KeyboardState.h"
#include "platform/KeyCodes.h"
#include "utilities/Meta/Registration.h"

#include <algorithm>
#include <cmath>

using Platform::WindowMessage;
using Platform::WindowMessageKind;

namespace
{
// Pixels over scale, cut to an integer; a scale that is no number above zero counts as 1.
int Unscaled(int pixels, float scale)
{
    if (!(scale > 0.0f))
        return pixels;
    const double logical = static_cast<double>(pixels) / static_cast<double>(scale);
    return static_cast<int>(std::clamp(logical, -2147483648.0, 2147483647.0));
}

// A reported scale as the window uses it: 1 when unknown, kept within the window's range.
float SaneScale(float scale)
{
    if (!std::isfinite(scale) || !(scale > 0.0f))
        return 1.0f;
    return std::clamp(scale, Window::kMinScale, Window::kMaxScale);
}
}

META_REGISTER_ENUM(ScreenMode, {{"Keep", 0}, {"Fullscreen", 1}, {"Windowed", 2}, {"Toggle", 3}});

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

Window::~Window()
{
    if (Gamepad::GetSource() == &m_Pads)
        Gamepad::SetSource(nullptr);
}

void Window::DestroyNativeWindow()
{
    if (Gamepad::GetSource() == &m_Pads)
        Gamepad::SetSource(nullptr);
    m_Pads.Close();
    m_Native.Destroy();
}

Window& Window::Get()
{
    static Window* window = new Window();
    return *window;
}

Meta::Data* Window::GetMeta() const
{
    return Meta::Get<Window>();
}

int Window::GetLogicalWidth() const
{
    return Unscaled(m_Width, m_HorizontalScale);
}

int Window::GetLogicalHeight() const
{
    return Unscaled(m_Height, m_VerticalScale);
}

void Window::SetDisplayScale(Platform::DisplayScale scale)
{
    m_HorizontalScale = SaneScale(scale.horizontal);
    m_VerticalScale = SaneScale(scale.vertical);
}

void Window::Initialize()
{
    // The display answers only once video runs, so video starts first.
    m_Native.StartVideo();
    SetDisplayScale(m_DisplayScaleQuery ? m_DisplayScaleQuery() : m_Native.GetDisplayScale());
    WindowMessage minMax;
    minMax.kind = WindowMessageKind::GetMinMaxInfo;
    HandleMessage(minMax);
    // The renderer draws on the window with OpenGL.
    m_Native.RequestOpenGl(true);
    // The native window's client area is exactly the size asked for, so there is no border to make up.
    if (m_Native.Create(m_Title, GetLogicalWidth(), GetLogicalHeight(), minMax.minWidth, minMax.minHeight))
    {
        // A new window's first size message: the client size it was given.
        WindowMessage size;
        size.kind = WindowMessageKind::Size;
        m_Native.GetClientSize(size.width, size.height);
        HandleMessage(size);
    }
    LoadCursor();
    m_BorderX = 0;
    m_BorderY = 0;
    InputManager::Get().Initialize(this);
    if (m_Pads.Open())
        Gamepad::SetSource(&m_Pads);
    m_Created = true;
    UpdateGuiDisplaySize();
}

std::string Window::GetCursorPath()
{
    return Util::GetDataDirectory() + "Emberfallow_Cursor.cur";
}

bool Window::LoadCursor()
{
    const std::string path = GetCursorPath();
    Engine::CursorImage image;
    std::string error;
    if (!Engine::ReadCursorFile(path, image, error))
    {
        LOG("WARNING", "Cursor \"" + path + "\" not used: " + error + ". The system arrow stays.");
        return false;
    }
    if (!m_Native.SetCursorImage(image.pixels.data(), image.width, image.height, image.hotspotX, image.hotspotY,
                                 error))
        LOG("Info", "Cursor \"" + path + "\" cannot be shown here (" + error + "); the system arrow stays.");
    return true;
}

void Window::Update(float dt)
{
    InputRecorder& recorder = InputRecorder::Get();
    if (recorder.IsPlayback())
        recorder.Step();
    GuiInput::Get().m_MouseWheel = 0.0f;
    GuiInput::Get().m_Characters.clear();
    InputManager::Get().Update(dt, m_Focused);
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
        input.OnMouseMove(message.x, message.y, GetLogicalWidth(), GetLogicalHeight());
        return 0;
    }
    case WindowMessageKind::MouseButtonDown:
    case WindowMessageKind::MouseButtonUp:
    {
        recorder.NoteMessage(message);
        const bool down = message.kind == WindowMessageKind::MouseButtonDown;
        const int code = Input::Mouse_Left + message.button;
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
