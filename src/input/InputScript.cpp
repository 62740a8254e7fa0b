// The script face of the input layer: InputManager's static functions, in the
// order scripts have always listed them, the input-enabled flag, and Gamepad's
// count of connected pads.
#include "input/Gamepad.h"
#include "input/InputManager.h"
#include "input/KeyboardState.h"
#include "utilities/Meta/Registration.h"

using Input::KeyboardState;

META_REGISTER(InputManager)
{
    DESCRIPTION("Keyboard, mouse and gamepad state for scripts; key codes 256 to 258 are the mouse buttons.");
    PROPERTY_STATIC(InputEnabled, +[] { return InputManager::Get().m_InputEnabled; },
                    +[](bool enabled) { InputManager::Get().m_InputEnabled = enabled; },
                    "While false, keys and buttons do nothing and no input events are sent.");
    HELP("True when the key is down now and was up last frame; false for a code out of range.");
    METHOD_AS("KeyTriggered", +[](int code) { return KeyboardState::Get().IsTriggered(code); });
    HELP("True while the key is down; false for a code out of range.");
    METHOD_AS("KeyDown", +[](int code) { return KeyboardState::Get().IsDown(code); });
    HELP("True when the key is up now and was down last frame; false for a code out of range.");
    METHOD_AS("KeyReleased", +[](int code) { return KeyboardState::Get().IsReleased(code); });
    HELP("Rumbles a pad for a time in seconds at strength 0 to 3; a pad index below 0 rumbles all four.");
    METHOD_AS("GamepadRumble",
              +[](float seconds, int strength, int index) { InputManager::Get().GamepadRumble(seconds, strength, index); });
    HELP("Shows or hides the cursor.");
    METHOD_AS("SetMouseVisible", +[](bool visible) { InputManager::Get().SetMouseVisible(visible); });
    HELP("Whether scripts asked for the cursor to show.");
    METHOD_AS("GetMouseVisible", +[] { return KeyboardState::Get().m_MouseVisible; });
    HELP("True when the wheel turned away from the user this frame.");
    METHOD_AS("MouseScrollUp", +[] { return KeyboardState::Get().m_Scroll >= 1; });
    HELP("True when the wheel turned towards the user this frame.");
    METHOD_AS("MouseScrollDown", +[] { return KeyboardState::Get().m_Scroll < 0; });
    HELP("The wheel's turn this frame, 120 per notch.");
    METHOD_AS("MouseScroll", +[] { return KeyboardState::Get().m_Scroll; });
    HELP("Forces the cursor to show, whatever SetMouseVisible asked.");
    METHOD_AS("SetForceMouseVisible", +[](bool visible) { InputManager::Get().SetForceMouseVisible(visible); });
    HELP("Whether the cursor is forced to show.");
    METHOD_AS("GetForceMouseVisible", +[] { return KeyboardState::Get().m_ForceMouseVisible; });
    HELP("True while any key or mouse button is down.");
    METHOD_AS("AnyKeyboardPress", +[] { return KeyboardState::Get().AnyDown(); });
    HELP("True while any button or trigger of any gamepad is down.");
    METHOD_AS("AnyGamepadPress", +[] { return Gamepad::AnyPressed(); });
    HELP("The mouse position in client pixels.");
    METHOD_AS("GetRawMousePosition", +[] { return KeyboardState::Get().m_MousePosition; });
}

META_REGISTER(Gamepad)
{
    DESCRIPTION("One of the four gamepads.");
    HELP("Number of gamepads connected now.");
    METHOD_AS("GetControllersConnected", +[] { return Gamepad::GetControllersConnected(); });
}
