// Window: the game's window as an engine system. Initialize starts video, reads
// the scale of the display the window opens on, opens the window at the logical
// size and puts the data directory's cursor over it. Its Update steps the input
// recorder, starts the input frame and pumps the window's messages; its window
// procedure (HandleMessage) turns each message into input, GUI input and the
// WindowResize / WindowFocus events. The procedure works on plain messages, so
// it runs the same with or without a real window.
#pragma once

#include "engine/Event.h"
#include "engine/Options.h"
#include "engine/System.h"
#include "platform/GamePads.h"
#include "platform/NativeWindow.h"
#include "platform/WindowMessage.h"

#include <functional>
#include <string>
#include <vector>

// How a WindowResize changes the screen mode.
enum class ScreenMode : unsigned
{
    Keep = 0,        // a plain size change
    Fullscreen = 1,  // go full screen
    Windowed = 2,    // go windowed
    Toggle = 3       // switch between windowed and full screen
};

// Sent when the window's size or screen mode changes.
class WindowResize : public Event
{
public:
    WindowResize() = default;
    WindowResize(unsigned width, unsigned height, ScreenMode mode) : m_Width(width), m_Height(height), m_Mode(mode) {}
    Meta::Data* GetMeta() const override;

    unsigned m_Width = 0;
    unsigned m_Height = 0;
    ScreenMode m_Mode = ScreenMode::Keep;
};

// Sent when the window gains or loses focus, or is minimized.
class WindowFocus : public Event
{
public:
    explicit WindowFocus(bool focused = false) : m_Focused(focused) {}
    Meta::Data* GetMeta() const override;

    bool m_Focused;
};

class Window : public System
{
public:
    // The one window; registers the option "DisableLostFocus".
    static Window& Get();
    Window();
    // Takes its pads back from the input layer.
    ~Window() override;

    // Where Initialize reads the display scale, once video runs.
    using DisplayScaleQuery = std::function<Platform::DisplayScale()>;

    // Starts video, reads the display scale, makes the native window at the
    // logical size, puts the cursor over it, binds input to it and opens the
    // game pads as the input layer's pad source.
    void Initialize() override;
    // Replay step, input step, then every waiting message.
    void Update(float dt) override;
    Meta::Data* GetMeta() const override;

    // Shows the window and brings it to the front.
    void Show();
    // The platform window, for the renderer's context and screen modes.
    Platform::NativeWindow& GetNativeWindow() { return m_Native; }
    // Closes the game pads and the native window at shutdown.
    void DestroyNativeWindow();
    // True while the window holds the video system (from the start of Initialize).
    bool IsVideoStarted() const { return m_Native.IsVideoStarted(); }
    // Replaces the display's own scale query; tests give the window a display of their own.
    void SetDisplayScaleQuery(DisplayScaleQuery query) { m_DisplayScaleQuery = std::move(query); }
    // The cursor file: "Emberfallow_Cursor.cur" in the data directory.
    static std::string GetCursorPath();
    // Reads the cursor file and puts it over the window; true if the file held a
    // cursor. A missing or broken file is logged and the system arrow stays.
    bool LoadCursor();
    // The window procedure: handles one message and returns its result.
    long HandleMessage(Platform::WindowMessage& message);

    // Client width in pixels.
    int GetWidth() const { return m_Width; }
    // Client height in pixels.
    int GetHeight() const { return m_Height; }
    // Width without display scale, cut to an integer.
    int GetLogicalWidth() const;
    // Height without display scale, cut to an integer.
    int GetLogicalHeight() const;

    // Cleared by --DisableLostFocus: activation messages are then ignored.
    bool m_LostFocusEnabled = true;
    // Icon resource id.
    int m_Icon = 101;
    // Mouse movement is dropped while false.
    bool m_Focused = true;
    // Window title.
    std::string m_Title;
    // Client size in pixels.
    int m_Width = 1024;
    int m_Height = 576;
    // Display pixels per inch over 96.
    float m_HorizontalScale = 1.0f;
    float m_VerticalScale = 1.0f;
    // Set at the end of Initialize.
    bool m_Created = false;
    // True while the user drags the window border.
    bool m_InSizeMove = false;
    // Outer size minus client size.
    int m_BorderX = 0;
    int m_BorderY = 0;

    // Smallest client size the window may take.
    static constexpr int kMinWidth = 1024;
    static constexpr int kMinHeight = 576;
    // Display scales outside this range are taken as wrong reports and clamped.
    static constexpr float kMinScale = 0.5f;
    static constexpr float kMaxScale = 4.0f;

private:
    void Close();
    void UpdateGuiDisplaySize();
    void SetDisplayScale(Platform::DisplayScale scale);

    Platform::NativeWindow m_Native;
    // The game pads, opened at Initialize.
    Platform::GamePads m_Pads;
    DisplayScaleQuery m_DisplayScaleQuery;
    std::vector<Platform::WindowMessage> m_Messages;
    // Option "DisableLostFocus", removed again with this window.
    Engine::OwnedOption m_LostFocusOption{"DisableLostFocus", [this](const char*) { m_LostFocusEnabled = false; }};
};
