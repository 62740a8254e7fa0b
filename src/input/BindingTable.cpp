#include "input/BindingTable.h"

#include "input/KeyboardState.h"

#include <utility>

namespace Input
{
namespace
{
// Key code and name, in the order they are given; later lines win.
constexpr std::pair<int, const char*> kKeyBindings[] = {
    {Mouse_Left, "InputMouseLeft"},
    {Mouse_Right, "InputMouseRight"},
    {32, "InputGamepadButtonA"},
    {87, "InputMoveUp"},
    {65, "InputMoveLeft"},
    {68, "InputMoveRight"},
    {83, "InputMoveDown"},
    {Mouse_Right, "InputGamepadLeftTrigger"},
    {Mouse_Left, "InputGamepadRightTrigger"},
    {Mouse_Middle, "InputMouseMiddle"},
    {27, "InputEscape"},
    {13, "InputEnter"},
    {38, "InputUp"},
    {40, "InputDown"},
    {37, "InputLeft"},
    {39, "InputRight"},
    {38, "InputGamepadDPadUp"},
    {40, "InputGamepadDPadDown"},
    {37, "InputGamepadDPadLeft"},
    {39, "InputGamepadDPadRight"},
    {82, "InputR"},
    {69, "InputE"},
};

// Button names by index; index 14 has none.
constexpr const char* kButtonNames[] = {
    "InputGamepadDPadUp",       "InputGamepadDPadDown",      "InputGamepadDPadLeft", "InputGamepadDPadRight",
    "InputGamepadConfirm",      "InputGamepadBack",          "InputGamepadLThumb",   "InputGamepadRThumb",
    "InputGamepadLeftShoulder", "InputGamepadRightShoulder", "InputGamepadButtonA",  "InputGamepadButtonB",
    "InputGamepadButtonX",      "InputGamepadButtonY",       kUnbound,               "InputGamepadLeftTrigger",
    "InputGamepadRightTrigger"};
}

void FillBindingTable(KeyboardState& state)
{
    for (const auto& [code, name] : kKeyBindings)
        state.m_Bindings[code] = name;
}

const char* GamepadButtonName(int index)
{
    if (index < 0 || index >= static_cast<int>(std::size(kButtonNames)))
        return kUnbound;
    return kButtonNames[index];
}

unsigned GamepadButtonMask(int index)
{
    // The first ten buttons are the low ten bits; A, B, X and Y are bits 12 to 15.
    if (index >= 0 && index <= 9)
        return 1u << index;
    if (index >= 10 && index <= 13)
        return 1u << (index + 2);
    return 0;
}
}
