// NativeWindow: the operating system's window under Engine::Window. It starts
// the video system (so that the display can be asked for its scale before the
// window exists), makes the window, pumps its events as WindowMessages and puts
// a cursor image over it. With SDL_VIDEODRIVER=offscreen the window exists
// without a display; that driver knows no display scale and shows no cursors.
#pragma once

#include "platform/WindowMessage.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Platform
{
// Display pixels per inch over 96, horizontally and vertically.
struct DisplayScale
{
    float horizontal = 1.0f;
    float vertical = 1.0f;
};

// A rectangle of the desktop, in window coordinates.
struct DisplayRect
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// True when the video driver shows nothing (SDL_VIDEODRIVER=offscreen or dummy).
bool IsHeadlessVideo();

class NativeWindow
{
public:
    NativeWindow() = default;
    ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    // Starts the video system, held until Destroy; true if it runs. Create starts it too.
    bool StartVideo();
    // True while this window holds the video system.
    bool IsVideoStarted() const { return m_VideoStarted; }
    // The scale of the display the window opens on (the primary one) or is on; 1 where unknown.
    DisplayScale GetDisplayScale() const;

    // Makes a hidden window with the given client size, centred on the primary
    // screen, with a minimum client size. False if no window could be made.
    bool Create(const std::string& title, int clientWidth, int clientHeight, int minWidth, int minHeight);
    // The client size in window coordinates; 0 x 0 without a window.
    void GetClientSize(int& width, int& height) const;
    // Puts an RGBA image (top row first) over the window as its cursor, the
    // hotspot pointing. False, with the reason in `error`, if the system refuses.
    bool SetCursorImage(const std::uint8_t* rgba, int width, int height, int hotspotX, int hotspotY,
                        std::string& error);
    // Shows the window without stealing focus from another program, and raises it.
    void Show();
    // Appends every waiting message to `out`, in arrival order.
    void PumpMessages(std::vector<WindowMessage>& out);
    // Closes the window.
    void Destroy();
    // True between a successful Create and Destroy.
    bool IsCreated() const { return m_Window != nullptr; }
    // Makes the next Create's window ready for an OpenGL context (GlContext).
    void RequestOpenGl(bool openGl) { m_OpenGl = openGl; }
    // The bounds of the display the window is on (the primary display without a window); 0 x 0
    // when video does not run.
    DisplayRect GetMonitorRect() const;
    // Takes the border away and lays the window over `rect` (full screen as a pop-up window).
    void SetPopup(const DisplayRect& rect);
    // Gives the window its border back with the given client size, centred on its display.
    void SetWindowed(int clientWidth, int clientHeight);
    // Outer size minus client size (the border), 0 x 0 where the system does not tell.
    void GetFrameExtra(int& width, int& height) const;
    // Minimizes the window without taking focus.
    void Minimize();
    // Restores a minimized window.
    void Restore();
    // The SDL window, for the other platform classes; null without a window.
    void* GetNativeHandle() const { return m_Window; }

private:
    void* m_Window = nullptr;
    void* m_Cursor = nullptr;
    bool m_VideoStarted = false;
    bool m_OpenGl = false;
};
}
