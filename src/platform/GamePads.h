// GamePads: up to four game controllers through SDL's game controller
// interface, read in the layout of an XInput pad state, so that the input
// layer above works as it would on XInput. Pads take the first free of four
// slots in the order they connect; one that is unplugged frees its slot, and
// the next pad to connect takes the lowest free slot. SDL's controller
// database maps the common pads without any configuration.
//
// Refresh once a frame before reading: it notices pads plugged in and out and
// updates their state. Read gives a slot's state (false when the slot is
// empty); SetMotors starts the rumble motors, which run until set again.
//
//   Platform::GamePads pads;
//   pads.Open();
//   pads.Refresh();
//   Platform::PadReading reading;
//   if (pads.Read(0, reading) && (reading.buttons & Platform::kPadButtonA)) ...
//
// For tests, AttachVirtualPad makes a pad that exists only in the program,
// driven by SetVirtualButton and SetVirtualAxis, which SDL maps like any other.
#pragma once

#include <array>
#include <cstdint>

struct _SDL_GameController;

namespace Platform
{
// XInput's button masks, as the pad state carries them.
inline constexpr uint16_t kPadDPadUp = 0x0001;
inline constexpr uint16_t kPadDPadDown = 0x0002;
inline constexpr uint16_t kPadDPadLeft = 0x0004;
inline constexpr uint16_t kPadDPadRight = 0x0008;
inline constexpr uint16_t kPadStart = 0x0010;
inline constexpr uint16_t kPadBack = 0x0020;
inline constexpr uint16_t kPadLeftThumb = 0x0040;
inline constexpr uint16_t kPadRightThumb = 0x0080;
inline constexpr uint16_t kPadLeftShoulder = 0x0100;
inline constexpr uint16_t kPadRightShoulder = 0x0200;
inline constexpr uint16_t kPadButtonA = 0x1000;
inline constexpr uint16_t kPadButtonB = 0x2000;
inline constexpr uint16_t kPadButtonX = 0x4000;
inline constexpr uint16_t kPadButtonY = 0x8000;

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

// One pad's state in XInput's layout: sticks from -32768 to 32767 with +y up, triggers 0 to 255.
struct PadReading
{
    // Grows by one whenever the state changes.
    uint32_t packet = 0;
    // The buttons held, as the kPad masks.
    uint16_t buttons = 0;
    // Left trigger, 0 to 255.
    uint8_t leftTrigger = 0;
    // Right trigger, 0 to 255.
    uint8_t rightTrigger = 0;
    // Left stick.
    int16_t thumbLX = 0, thumbLY = 0;
    // Right stick.
    int16_t thumbRX = 0, thumbRY = 0;
};

class GamePads
{
public:
    // Number of pad slots.
    static constexpr int kSlots = 4;

    GamePads() = default;
    ~GamePads() { Close(); }
    GamePads(const GamePads&) = delete;
    GamePads& operator=(const GamePads&) = delete;

    // Starts SDL's game controller subsystem; false (and no pads ever) when it cannot.
    bool Open();
    // Closes every pad and the subsystem.
    void Close();
    // Frees the slots of pads that were unplugged, fills free slots with new pads, updates their state.
    void Refresh();
    // The state of the pad in `slot`; false when the slot holds none.
    bool Read(int slot, PadReading& reading);
    // Runs the pad's motors at these speeds (0 to 65535) until set again; false when it has none.
    bool SetMotors(int slot, uint16_t left, uint16_t right);
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
        PadReading last;
    };
    std::array<Slot, kSlots> m_Slots{};
    bool m_Open = false;
};
}
