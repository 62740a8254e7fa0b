// WindowMessage: one notification from the operating system's window, in the
// message kinds of the engine's window procedure. The platform window turns its
// native events into these; Engine::Window decides what each one does. Key
// codes are Windows virtual-key codes (see KeyCodes.h).
#pragma once

#include <cstdint>

namespace Platform
{
// The kinds of window message, named after the Win32 messages they stand for.
enum class WindowMessageKind
{
    Destroy,        // WM_DESTROY
    Close,          // WM_CLOSE
    Move,           // WM_MOVE
    Size,           // WM_SIZE: width, height, sizeType
    Activate,       // WM_ACTIVATE: activation, otherWindowIsNull
    Paint,          // WM_PAINT
    GetMinMaxInfo,  // WM_GETMINMAXINFO: answered in minWidth, minHeight
    KeyDown,        // WM_KEYDOWN: key
    KeyUp,          // WM_KEYUP: key
    Char,           // WM_CHAR: character (one UTF-16 unit)
    SysKeyDown,     // WM_SYSKEYDOWN: key, altHeld
    MenuChar,       // WM_MENUCHAR
    MouseMove,      // WM_MOUSEMOVE: x, y in client pixels
    MouseButtonDown,// WM_xBUTTONDOWN: button
    MouseButtonUp,  // WM_xBUTTONUP: button
    MouseWheel,     // WM_MOUSEWHEEL: wheelDelta (120 per notch)
    Message549,     // message 549 (WM_DEVICECHANGE-range notification)
    EnterSizeMove,  // WM_ENTERSIZEMOVE
    ExitSizeMove,   // WM_EXITSIZEMOVE
    Other           // anything else: default handling
};

// WM_SIZE's size types.
enum SizeType : int
{
    SizeRestored = 0,
    SizeMinimized = 1,
    SizeMaximized = 2
};

// WM_ACTIVATE's activation kinds.
enum ActivationKind : int
{
    Inactive = 0,
    Active = 1,
    ClickActive = 2
};

// Mouse buttons as the window procedure numbers them.
enum MouseButton : int
{
    LeftButton = 0,
    RightButton = 1,
    MiddleButton = 2
};

// One window message with the fields its kind uses.
struct WindowMessage
{
    WindowMessageKind kind = WindowMessageKind::Other;
    int width = 0;
    int height = 0;
    int sizeType = SizeRestored;
    int activation = Inactive;
    bool otherWindowIsNull = true;
    int key = 0;
    bool altHeld = false;
    std::uint32_t character = 0;
    int x = 0;
    int y = 0;
    int button = LeftButton;
    int wheelDelta = 0;
    // Filled by the handler of GetMinMaxInfo.
    int minWidth = 0;
    int minHeight = 0;
};
}
