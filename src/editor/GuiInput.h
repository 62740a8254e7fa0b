// GuiInput: what the window and the input layer hand to the in-game GUI: its
// display size, the mouse, keys held, the control and shift flags, typed
// characters, and the key map that tells the GUI which key codes are its
// editing keys. The GUI copies it into its own input state at the start of its
// frame and answers whether it wants the mouse, which keeps clicks on its
// windows from the game. The GUI itself (editor windows) is not built yet.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

// The GUI's editing keys, in the order of its key map.
enum class GuiKey : int
{
    Tab,
    LeftArrow,
    RightArrow,
    UpArrow,
    DownArrow,
    Home,
    End,
    Delete,
    Backspace,
    Enter,
    Escape,
    A,
    C,
    V,
    X,
    Y,
    Z,
    Count
};

struct GuiInput
{
    // The one GUI input record.
    static GuiInput& Get();

    // Sets the key map to the engine's key codes: Tab 9, the arrows, Home, End, Delete, Backspace,
    // Enter, Escape, and the letters A, C, V, X, Y, Z.
    void SetKeyMap();

    // Logical display size in pixels.
    int m_DisplayWidth = 0;
    int m_DisplayHeight = 0;
    // Mouse position in logical pixels.
    float m_MouseX = 0.0f;
    float m_MouseY = 0.0f;
    // Left and right mouse buttons held.
    bool m_MouseDown[2] = {false, false};
    // Wheel steps this frame: +1 or -1 each.
    float m_MouseWheel = 0.0f;
    // Characters typed this frame (UTF-16 units).
    std::vector<std::uint16_t> m_Characters;
    // Keys held, by key code modulo 256.
    std::array<bool, 256> m_KeysDown{};
    // Control and shift held.
    bool m_KeyCtrl = false;
    bool m_KeyShift = false;
    // Set by the GUI while the mouse is over one of its windows: mouse buttons then don't reach the game.
    bool m_WantCaptureMouse = false;
    // Key code of each editing key; -1 where none is set.
    std::array<int, static_cast<int>(GuiKey::Count)> m_KeyMap = [] {
        std::array<int, static_cast<int>(GuiKey::Count)> map;
        map.fill(-1);
        return map;
    }();
};
