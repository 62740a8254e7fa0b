// KeyboardState: the keyboard and mouse as the input layer sees them, one
// record made on first use. Each of the 259 key codes (0 to 255 the virtual-key
// codes, 256 to 258 the left, right and middle mouse buttons) has a state this
// frame and last frame, and a binding name ("unbound" until the binding table
// names it). The names of the bindings now held down are kept once each, in
// name order. The record also holds this frame's wheel turn, whether the mouse
// moved, the cursor's visibility flags and the mouse position in pixels and in
// percent of the render size. It only stores: InputManager decides when it changes.
#pragma once

#include "engine/Math/Point2D.h"

#include <array>
#include <cstdint>
#include <set>
#include <string>

namespace Input
{
// The pseudo key codes of the mouse buttons.
enum MouseButtonID : int
{
    Mouse_Left = 256,
    Mouse_Right = 257,
    Mouse_Middle = 258
};

// Number of key codes: 256 keys and the three mouse buttons.
inline constexpr int kKeyCount = 259;
// The binding name of a key that carries none.
inline constexpr const char* kUnbound = "unbound";

class KeyboardState
{
public:
    // The one keyboard state.
    static KeyboardState& Get();

    // All key states zero, every binding "unbound", no held bindings, the mouse visible and at zero.
    void Reset();
    // True for a code with a state (0 to 258).
    static bool IsKeyCode(int code) { return code >= 0 && code < kKeyCount; }
    // Down now; false for a code out of range.
    bool IsDown(int code) const { return IsKeyCode(code) && m_Current[code] != 0; }
    // Down now and up last frame; false for a code out of range.
    bool IsTriggered(int code) const { return IsKeyCode(code) && m_Current[code] != 0 && m_Previous[code] == 0; }
    // Up now and down last frame; false for a code out of range.
    bool IsReleased(int code) const { return IsKeyCode(code) && m_Current[code] == 0 && m_Previous[code] != 0; }
    // True when any key or mouse button is down.
    bool AnyDown() const;
    // Copies every current state into the previous one.
    void CopyToPrevious() { m_Previous = m_Current; }
    // Clears the current and previous state of every key; the held bindings stay.
    void ClearKeys();
    // The first key code that carries `binding`, or -1 when none does.
    int FindBinding(const std::string& binding) const;

    // Current state of each key code: 1 while down.
    std::array<std::uint8_t, kKeyCount> m_Current{};
    // State of each key code last frame.
    std::array<std::uint8_t, kKeyCount> m_Previous{};
    // Binding name of each key code.
    std::array<std::string, kKeyCount> m_Bindings;
    // Binding names held down now, each once.
    std::set<std::string> m_Held;
    // Wheel turn of this frame (120 per notch, negative towards the user).
    int m_Scroll = 0;
    // Set when the mouse's whole-pixel position changed this frame.
    bool m_MouseMoved = false;
    // Whether scripts asked for the cursor to show.
    bool m_MouseVisible = true;
    // Whether scripts force the cursor to show.
    bool m_ForceMouseVisible = false;
    // Mouse position in client pixels.
    Math::Point2D m_MousePosition;
    // Mouse position in percent of the render size, 0 to 100.
    Math::Point2D m_MousePercent;

private:
    KeyboardState() { Reset(); }
};
}
