// NativeWindow: the operating system's window under Engine::Window. It makes
// the window, pumps its events as WindowMessages, and reports the display
// scale. With SDL_VIDEODRIVER=offscreen the window exists without a display.
#pragma once

#include "platform/WindowMessage.h"

#include <string>
#include <vector>

namespace Platform
{
class NativeWindow
{
public:
    NativeWindow() = default;
    ~NativeWindow();
    NativeWindow(const NativeWindow&) = delete;
    NativeWindow& operator=(const NativeWindow&) = delete;

    // Display pixels per inch over 96, horizontally and vertically (1 if unknown).
    static void GetDisplayScale(float& horizontal, float& vertical);

    // Makes a hidden window with the given client size, centred on the primary
    // screen, with a minimum client size. False if no window could be made.
    bool Create(const std::string& title, int clientWidth, int clientHeight, int minWidth, int minHeight);
    // Loads a cursor image from a file and uses it over the window; false if it can't.
    bool SetCursorFromFile(const std::string& path);
    // Shows the window without stealing focus from another program, and raises it.
    void Show();
    // Appends every waiting message to `out`, in arrival order.
    void PumpMessages(std::vector<WindowMessage>& out);
    // Closes the window.
    void Destroy();
    // True between a successful Create and Destroy.
    bool IsCreated() const { return m_Window != nullptr; }

private:
    void* m_Window = nullptr;
    void* m_Cursor = nullptr;
};
}
