// PadState: one reading of a gamepad, laid out as XInput's XINPUT_STATE
// (a packet number and the pad: a button bitmask, two trigger bytes and four
// stick axes), and the speeds of its two motors as XINPUT_VIBRATION. Whatever
// reads a real pad fills these records, so the pads' logic never sees a platform.
#pragma once

#include <cstdint>

namespace Input
{
// XInput's button mask values.
enum PadButtonMask : std::uint16_t
{
    PadDPadUp = 0x0001,
    PadDPadDown = 0x0002,
    PadDPadLeft = 0x0004,
    PadDPadRight = 0x0008,
    PadStart = 0x0010,
    PadBack = 0x0020,
    PadLeftThumb = 0x0040,
    PadRightThumb = 0x0080,
    PadLeftShoulder = 0x0100,
    PadRightShoulder = 0x0200,
    PadA = 0x1000,
    PadB = 0x2000,
    PadX = 0x4000,
    PadY = 0x8000
};

// The pad's controls, as XINPUT_GAMEPAD.
struct PadControls
{
    // Buttons held, as PadButtonMask bits.
    std::uint16_t wButtons = 0;
    // Trigger travel, 0 to 255.
    std::uint8_t bLeftTrigger = 0;
    std::uint8_t bRightTrigger = 0;
    // Stick axes, -32768 to 32767, up and right positive.
    std::int16_t sThumbLX = 0;
    std::int16_t sThumbLY = 0;
    std::int16_t sThumbRX = 0;
    std::int16_t sThumbRY = 0;
};

// One reading of a pad, as XINPUT_STATE.
struct PadState
{
    // Changes whenever the pad's controls change.
    std::uint32_t dwPacketNumber = 0;
    // The controls.
    PadControls Gamepad;
};

// Motor speeds, as XINPUT_VIBRATION: 0 to 65535 each.
struct PadMotors
{
    std::uint16_t wLeftMotorSpeed = 0;
    std::uint16_t wRightMotorSpeed = 0;
};
}
