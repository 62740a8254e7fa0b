// InputEvents: the events the input layer sends by name on the global table.
// BoundInput carries every binding event ("...Triggered", "...Pressed",
// "...Released", "InputUpdatePlayerVectors", the raw key events): which player
// (0 to 3 a pad, 4 keyboard and mouse), the move and aim vectors, the raw key
// code, and for pad events the pad's reading. GamePadDisconnect names the pad
// that went missing.
#pragma once

#include "engine/Event.h"
#include "engine/Math/Vector2D.h"
#include "input/PadState.h"

// The player index that keyboard and mouse events carry.
inline constexpr int kKeyboardPlayer = 4;

class BoundInput : public Event
{
public:
    Meta::Data* GetMeta() const override;

    // Gamepad index, or 4 for keyboard and mouse.
    int PlayerIndex = kKeyboardPlayer;
    // Left stick, or the keys bound to the four move names.
    Math::Vector2D Move;
    // Right stick, or the keys bound to the four arrow names.
    Math::Vector2D Aim;
    // Key code of a raw key event.
    int Raw = 0;
    // The pad's reading for pad events; null otherwise.
    const Input::PadState* State = nullptr;
};

class GamePadDisconnect : public Event
{
public:
    explicit GamePadDisconnect(int index = 0) : m_ControllerIndex(index) {}
    Meta::Data* GetMeta() const override;

    // Index of the pad that went missing.
    int m_ControllerIndex;
};
