#include "platform/GamePads.h"

#include <SDL2/SDL.h>

#include <algorithm>

namespace Platform
{
namespace
{
// SDL's controller buttons and the XInput masks they become.
struct ButtonMask
{
    SDL_GameControllerButton button;
    uint16_t mask;
};
constexpr ButtonMask kButtons[] = {
    {SDL_CONTROLLER_BUTTON_DPAD_UP, kPadDPadUp},
    {SDL_CONTROLLER_BUTTON_DPAD_DOWN, kPadDPadDown},
    {SDL_CONTROLLER_BUTTON_DPAD_LEFT, kPadDPadLeft},
    {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, kPadDPadRight},
    {SDL_CONTROLLER_BUTTON_START, kPadStart},
    {SDL_CONTROLLER_BUTTON_BACK, kPadBack},
    {SDL_CONTROLLER_BUTTON_LEFTSTICK, kPadLeftThumb},
    {SDL_CONTROLLER_BUTTON_RIGHTSTICK, kPadRightThumb},
    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, kPadLeftShoulder},
    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, kPadRightShoulder},
    {SDL_CONTROLLER_BUTTON_A, kPadButtonA},
    {SDL_CONTROLLER_BUTTON_B, kPadButtonB},
    {SDL_CONTROLLER_BUTTON_X, kPadButtonX},
    {SDL_CONTROLLER_BUTTON_Y, kPadButtonY},
};

// A trigger axis (0 to 32767) as XInput's byte, rounded.
uint8_t TriggerByte(int16_t value)
{
    const int clamped = std::clamp<int>(value, 0, 32767);
    return static_cast<uint8_t>((clamped * 255 + 16383) / 32767);
}

// SDL's vertical axes grow downwards, XInput's upwards.
int16_t Upwards(int16_t value)
{
    return static_cast<int16_t>(std::min(32767, -static_cast<int>(value)));
}

bool SameState(const PadReading& a, const PadReading& b)
{
    return a.buttons == b.buttons && a.leftTrigger == b.leftTrigger && a.rightTrigger == b.rightTrigger &&
           a.thumbLX == b.thumbLX && a.thumbLY == b.thumbLY && a.thumbRX == b.thumbRX && a.thumbRY == b.thumbRY;
}

// The device index of the joystick with this instance id, or -1.
int DeviceOf(SDL_JoystickID instance)
{
    for (int device = 0; device < SDL_NumJoysticks(); ++device)
        if (SDL_JoystickGetDeviceInstanceID(device) == instance)
            return device;
    return -1;
}
}

bool GamePads::Open()
{
    if (!m_Open)
        m_Open = SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
    return m_Open;
}

void GamePads::Close()
{
    for (Slot& slot : m_Slots)
    {
        if (slot.controller)
            SDL_GameControllerClose(slot.controller);
        slot = Slot();
    }
    if (m_Open)
        SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
    m_Open = false;
}

void GamePads::Refresh()
{
    if (!m_Open)
        return;
    SDL_GameControllerUpdate();
    for (Slot& slot : m_Slots)
        if (slot.controller && !SDL_GameControllerGetAttached(slot.controller))
        {
            SDL_GameControllerClose(slot.controller);
            slot = Slot();
        }
    for (int device = 0; device < SDL_NumJoysticks(); ++device)
    {
        if (!SDL_IsGameController(device))
            continue;
        const SDL_JoystickID instance = SDL_JoystickGetDeviceInstanceID(device);
        const bool taken = std::any_of(m_Slots.begin(), m_Slots.end(),
                                       [instance](const Slot& slot) { return slot.instance == instance; });
        auto free = std::find_if(m_Slots.begin(), m_Slots.end(), [](const Slot& slot) { return !slot.controller; });
        if (taken || free == m_Slots.end())
            continue;
        if (SDL_GameController* controller = SDL_GameControllerOpen(device))
        {
            free->controller = controller;
            free->instance = instance;
        }
    }
}

bool GamePads::Read(int slot, PadReading& reading)
{
    if (slot < 0 || slot >= kSlots || !m_Slots[slot].controller)
        return false;
    Slot& pad = m_Slots[slot];
    SDL_GameController* controller = pad.controller;
    PadReading now;
    for (const ButtonMask& entry : kButtons)
        if (SDL_GameControllerGetButton(controller, entry.button))
            now.buttons |= entry.mask;
    now.leftTrigger = TriggerByte(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERLEFT));
    now.rightTrigger = TriggerByte(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERRIGHT));
    now.thumbLX = SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_LEFTX);
    now.thumbLY = Upwards(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_LEFTY));
    now.thumbRX = SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_RIGHTX);
    now.thumbRY = Upwards(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_RIGHTY));
    now.packet = SameState(now, pad.last) ? pad.last.packet : pad.last.packet + 1;
    pad.last = now;
    reading = now;
    return true;
}

bool GamePads::SetMotors(int slot, uint16_t left, uint16_t right)
{
    if (slot < 0 || slot >= kSlots || !m_Slots[slot].controller)
        return false;
    // XInput's motors run until set again; SDL's rumble needs a length, so it is given the longest.
    return SDL_GameControllerRumble(m_Slots[slot].controller, left, right, SDL_MAX_UINT32) == 0;
}

int GamePads::Connected() const
{
    return static_cast<int>(std::count_if(m_Slots.begin(), m_Slots.end(),
                                          [](const Slot& slot) { return slot.controller != nullptr; }));
}

int GamePads::AttachVirtualPad()
{
    const int device =
        SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX, SDL_CONTROLLER_BUTTON_MAX, 0);
    if (device < 0)
        return -1;
    // Held open so that its inputs can be set; closed when it is detached.
    SDL_Joystick* joystick = SDL_JoystickOpen(device);
    if (!joystick)
        return -1;
    // A virtual trigger spans the whole raw range, which SDL halves: at rest it is at the bottom.
    SDL_JoystickSetVirtualAxis(joystick, SDL_CONTROLLER_AXIS_TRIGGERLEFT, -32768);
    SDL_JoystickSetVirtualAxis(joystick, SDL_CONTROLLER_AXIS_TRIGGERRIGHT, -32768);
    return SDL_JoystickInstanceID(joystick);
}

bool GamePads::DetachVirtualPad(int id)
{
    SDL_Joystick* joystick = SDL_JoystickFromInstanceID(id);
    const int device = DeviceOf(id);
    if (!joystick || device < 0)
        return false;
    const bool detached = SDL_JoystickDetachVirtual(device) == 0;
    SDL_JoystickClose(joystick);
    return detached;
}

bool GamePads::SetVirtualButton(int id, int button, bool down)
{
    SDL_Joystick* joystick = SDL_JoystickFromInstanceID(id);
    return joystick && SDL_JoystickSetVirtualButton(joystick, button, down ? 1 : 0) == 0;
}

bool GamePads::SetVirtualAxis(int id, int axis, int16_t value)
{
    SDL_Joystick* joystick = SDL_JoystickFromInstanceID(id);
    return joystick && SDL_JoystickSetVirtualAxis(joystick, axis, value) == 0;
}
}
