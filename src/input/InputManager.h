// InputManager: turns the window's key and mouse messages and the gamepads'
// readings into polled state (the KeyboardState and the Gamepad records) and
// named events on the engine's global event table. The window drives it: it is
// no engine system of its own. The window starts it once the window exists
// (reset keyboard state, the shipped binding table, fresh pads, the GUI's key
// map, the pause listener), calls Update at the start of each of its frames,
// and hands it every key, mouse-button, mouse-move and wheel message.
//
// Events, each a BoundInput: "InputRawKeyDown"/"InputRawKeyUp" for every key
// message; binding + "Triggered" on a key down (repeats too), binding +
// "Released" on a key up, binding + "Pressed" each frame for each binding held;
// "InputUpdatePlayerVectors" each frame for the keyboard (player 4) and each
// connected pad. Scripts reach it through the static functions registered in
// InputScript.cpp.
#pragma once

class Event;
class Window;

namespace Input
{
class PadSource;
}

class InputManager
{
public:
    // The one input manager.
    static InputManager& Get();
    InputManager(const InputManager&) = delete;
    InputManager& operator=(const InputManager&) = delete;

    // Starts input for `window`: the keyboard state reset with the shipped bindings, the four pads
    // made afresh, the GUI's key map set, and the first space's pause events heard.
    void Initialize(Window* window);
    // One input frame. With `focused` and input enabled: the keyboard's frame step, the pads' step
    // and the GUI's control and shift flags. Otherwise every key state and pad button is cleared.
    void Update(float dt, bool focused = true);
    // A key or mouse button went down (key code 0 to 258).
    void OnKeyDown(int code);
    // A key or mouse button went up.
    void OnKeyUp(int code);
    // The mouse is at (x, y) client pixels over a render size of width by height.
    void OnMouseMove(int x, int y, int renderWidth, int renderHeight);
    // The wheel turned by `delta` (120 per notch).
    void OnMouseWheel(int delta);
    // Runs pad `index`'s motors (all four for an index below 0, none for 4 or more).
    void GamepadRumble(float seconds, int strength, int index);
    // A space's pause changed: holds the pads' motors off or gives them back.
    void OnPause(Event* event);
    // Shows or hides the cursor for scripts; the platform hears only changes.
    void SetMouseVisible(bool visible);
    // Forces the cursor on (or stops forcing it); the platform hears only changes.
    void SetForceMouseVisible(bool visible);

    // The game window, or null before start.
    Window* m_Window = nullptr;
    // While false, key messages do nothing and each frame clears the key states.
    bool m_InputEnabled = true;

private:
    InputManager() = default;
    void KeyboardStep();
    void SendKey(int code, bool down);
};
