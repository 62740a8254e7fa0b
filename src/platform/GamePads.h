// GamePads: up to four game controllers through SDL's game controller
// interface, read into the input layer's pad records (XInput's layout), as its
// pad source: the input layer above works as it would on XInput. Pads take the first free of four
// slots in the order they connect; one that is unplugged frees its slot, and
// the next pad to connect takes the lowest free slot. SDL's controller
// database maps the common pads without any configuration.
//
// Refresh once a frame before reading: it notices pads plugged in and out and
// updates their state. ReadState gives a slot's state (false when the slot is
// empty); SetMotors starts the rumble motors, which run until set again. The
// window opens the pads at its start and installs them as the pads' source.
//
//   Platform::GamePads pads;
//   pads.Open();
//   pads.Refresh();
//   Input::PadState state;
//   if (pads.ReadState(0, state) && (state.Gamepad.wButtons & Input::PadA)) ...
//
// For tests, AttachVirtualPad makes a pad that exists only in the program,
// driven by SetVirtualButton and SetVirtualAxis, which SDL maps like any other.
#pragma once

#include <array>
#include <cstdint>

#include "input/PadSource.h"

struct _SDL_GameController;

namespace Platform
{
// Buttons of a virtual pad, as SetVirtualButton takes them (SDL's controller button numbers).
enum VirtualPadButton : int
{
    kVirtualA = 0, kVirtualB, kVirtualX, kVirtualY, kVirtualBack, kVirtualGuide, kVirtualStart,
    kVirtualLeftStick, kVirtualRightStick, kVirtualLeftShoulder, kVirtualRightShoulder,
    kVirtualDPadUp, kVirtualDPadDown, kVirtualDPadLeft, kVirtualDPadRight,
};
// Axes of a virtual pad, as SetVirtualAxis takes them (SDL's controller axis numbers; +y down). A
// virtual trigger's raw value runs from -32768 (at rest, as a new virtual pad starts) to 32767.
enum VirtualPadAxis : int
{
    kVirtualLeftX = 0, kVirtualLeftY, kVirtualRightX, kVirtualRightY, kVirtualLeftTrigger, kVirtualRightTrigger,
};

class GamePads : public Input::PadSource
{
public:
    // Number of pad slots.
    static constexpr int kSlots = 4;

    GamePads() = default;
    ~GamePads() override { Close(); }
    GamePads(const GamePads&) = delete;
    GamePads& operator=(const GamePads&) = delete;

    // Starts SDL's game controller subsystem; false (and no pads ever) when it cannot.
    bool Open();
    // Closes every pad and the subsystem.
    void Close();
    // Frees the slots of pads that were unplugged, fills free slots with new pads, updates their state.
    void Refresh() override;
    // The state of the pad in `slot`; false when the slot holds none.
    bool ReadState(int slot, Input::PadState& state) override;
    // Runs the pad's motors at these speeds until set again.
    void SetMotors(int slot, const Input::PadMotors& motors) override;
    // As SetMotors; false when the slot holds no pad or the pad has no motors.
    bool StartMotors(int slot, const Input::PadMotors& motors);
    // Pads in their slots.
    int Connected() const;

    // Plugs in a pad that exists only in this program (after Open); its id, or -1.
    static int AttachVirtualPad();
    // Unplugs a virtual pad.
    static bool DetachVirtualPad(int id);
    // Presses or releases a button of a virtual pad (SDL's controller button number).
    static bool SetVirtualButton(int id, int button, bool down);
    // Sets an axis of a virtual pad (SDL's controller axis number, -32768 to 32767).
    static bool SetVirtualAxis(int id, int axis, int16_t value);

private:
    struct Slot
    {
        _SDL_GameController* controller = nullptr;
        int32_t instance = -1;
        Input::PadState last;
    };
    std::array<Slot, kSlots> m_Slots{};
    bool m_Open = false;
};
}
