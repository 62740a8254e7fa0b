#include "input/InputEvents.h"

#include "input/KeyboardState.h"
#include "utilities/Meta/Registration.h"

// The mouse buttons' key codes, as scripts name them: MouseButtonID.Mouse_Left.
static const Meta::Registrar mouseButtonIdRegistrar([] {
    Meta::RegisterEnum<Input::MouseButtonID>(
        "MouseButtonID", "Input",
        std::vector<Meta::EnumMeta::Entry>{{"Mouse_Left", 256}, {"Mouse_Right", 257}, {"Mouse_Middle", 258}});
});

META_REGISTER(BoundInput)
{
    DERIVE(Event);
    DESCRIPTION("A key, mouse button or gamepad binding, with the player's move and aim vectors.");
    MEMBER(PlayerIndex, "Gamepad index, or 4 for keyboard and mouse.");
    MEMBER(Move, "Left stick, or the keys bound to InputMoveUp, Down, Left and Right.");
    MEMBER(Aim, "Right stick, or the keys bound to InputArrowUp, Down, Left and Right.");
    MEMBER(Raw, "Key code of a raw key event.");
}

META_REGISTER(GamePadDisconnect)
{
    DERIVE(Event);
    DESCRIPTION("Sent when a gamepad goes missing.");
    MEMBER(m_ControllerIndex, "Index of the pad, 0 to 3.");
}

Meta::Data* BoundInput::GetMeta() const
{
    return Meta::Get<BoundInput>();
}

Meta::Data* GamePadDisconnect::GetMeta() const
{
    return Meta::Get<GamePadDisconnect>();
}
