// BindingTable: the shipped names of keys and gamepad buttons. Keys get their
// names in a fixed order in which a later line overwrites an earlier one for the
// same key, so the mouse buttons end as the pad's triggers and the arrow keys as
// its directional pad. There is no binding file: the table is this code.
#pragma once

namespace Input
{
class KeyboardState;

// Names the keys of `state` as the game ships them (the state's other bindings stay).
void FillBindingTable(KeyboardState& state);
// Name of gamepad button `index` (0 to 13 buttons, 15 and 16 the triggers); "unbound" for any other.
const char* GamepadButtonName(int index);
// XInput mask of gamepad button `index` (0 to 13); 0 for any other.
unsigned GamepadButtonMask(int index);
}
