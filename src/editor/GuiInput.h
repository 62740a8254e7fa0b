// GuiInput: what the window hands to the in-game GUI: its display size, the
// mouse, and typed characters. The GUI copies it into its own input state at the
// start of its frame. The GUI itself (editor windows) is not built yet.
#pragma once

#include <cstdint>
#include <vector>

struct GuiInput
{
    // The one GUI input record.
    static GuiInput& Get();

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
};
