// InputManager: the keyboard and mouse state as the window reports it. Keys are
// Windows virtual-key codes; the mouse buttons arrive as the pseudo key codes
// 256 (left), 257 (right) and 258 (middle). The window drives it: it is no
// engine system of its own. For now it keeps the raw state only; named
// bindings, gamepads and the polling interface for scripts are not built yet.
#pragma once

#include <array>

class Window;

class InputManager
{
public:
    // Number of key codes: 256 keys and the three mouse buttons.
    static constexpr int kKeyCount = 259;
    // Pseudo key codes of the mouse buttons.
    static constexpr int kMouseLeft = 256;
    static constexpr int kMouseRight = 257;
    static constexpr int kMouseMiddle = 258;

    // The one input manager.
    static InputManager& Get();

    // Binds the input manager to the game window.
    void Initialize(Window* window) { m_Window = window; }
    // Starts a new frame of input: clears the per-frame flags.
    void Update();
    // A key or mouse button went down.
    void OnKeyDown(int code);
    // A key or mouse button went up.
    void OnKeyUp(int code);
    // The mouse is at (x, y) in pixels and (percentX, percentY) of the logical size.
    void SetMousePosition(int x, int y, float percentX, float percentY);
    // The truncated mouse position changed this frame.
    void SetMouseMoved() { m_MouseMoved = true; }
    // The wheel turned by `delta` (120 per notch).
    void OnMouseWheel(short delta) { m_Wheel += delta; }

    // True while the key is held.
    bool IsDown(int code) const { return code >= 0 && code < kKeyCount && m_Down[code]; }

    Window* m_Window = nullptr;
    std::array<bool, kKeyCount> m_Down{};
    int m_MouseX = 0;
    int m_MouseY = 0;
    float m_MousePercentX = 0.0f;
    float m_MousePercentY = 0.0f;
    bool m_MouseMoved = false;
    int m_Wheel = 0;
};
