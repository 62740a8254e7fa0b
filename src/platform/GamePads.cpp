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
    Input::PadButtonMask mask;
};
constexpr ButtonMask kButtons[] = {
    {SDL_CONTROLLER_BUTTON_DPAD_UP, Input::PadDPadUp},
    {SDL_CONTROLLER_BUTTON_DPAD_DOWN, Input::PadDPadDown},
    {SDL_CONTROLLER_BUTTON_DPAD_LEFT, Input::PadDPadLeft},
    {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, Input::PadDPadRight},
    {SDL_CONTROLLER_BUTTON_START, Input::PadStart},
    {SDL_CONTROLLER_BUTTON_BACK, Input::PadBack},
    {SDL_CONTROLLER_BUTTON_LEFTSTICK, Input::PadLeftThumb},
    {SDL_CONTROLLER_BUTTON_RIGHTSTICK, Input::PadRightThumb},
    {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, Input::PadLeftShoulder},
    {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, Input::PadRightShoulder},
    {SDL_CONTROLLER_BUTTON_A, Input::PadA},
    {SDL_CONTROLLER_BUTTON_B, Input::PadB},
    {SDL_CONTROLLER_BUTTON_X, Input::PadX},
    {SDL_CONTROLLER_BUTTON_Y, Input::PadY},
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

bool SameControls(const Input::PadControls& a, const Input::PadControls& b)
{
    return a.wButtons == b.wButtons && a.bLeftTrigger == b.bLeftTrigger && a.bRightTrigger == b.bRightTrigger &&
           a.sThumbLX == b.sThumbLX && a.sThumbLY == b.sThumbLY && a.sThumbRX == b.sThumbRX && a.sThumbRY == b.sThumbRY;
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

bool GamePads::ReadState(int slot, Input::PadState& state)
{
    if (slot < 0 || slot >= kSlots || !m_Slots[slot].controller)
        return false;
    Slot& pad = m_Slots[slot];
    SDL_GameController* controller = pad.controller;
    Input::PadControls now;
    for (const ButtonMask& entry : kButtons)
        if (SDL_GameControllerGetButton(controller, entry.button))
            now.wButtons |= entry.mask;
    now.bLeftTrigger = TriggerByte(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERLEFT));
    now.bRightTrigger = TriggerByte(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERRIGHT));
    now.sThumbLX = SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_LEFTX);
    now.sThumbLY = Upwards(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_LEFTY));
    now.sThumbRX = SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_RIGHTX);
    now.sThumbRY = Upwards(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_RIGHTY));
    if (!SameControls(now, pad.last.Gamepad))
        ++pad.last.dwPacketNumber;
    pad.last.Gamepad = now;
    state = pad.last;
    return true;
}

void GamePads::SetMotors(int slot, const Input::PadMotors& motors)
{
    StartMotors(slot, motors);
}

bool GamePads::StartMotors(int slot, const Input::PadMotors& motors)
{
    if (slot < 0 || slot >= kSlots || !m_Slots[slot].controller)
        return false;
    // XInput's motors run until set again; SDL's rumble needs a length, so it is given the longest.
    return SDL_GameControllerRumble(m_Slots[slot].controller, motors.wLeftMotorSpeed, motors.wRightMotorSpeed,
                                    SDL_MAX_UINT32) == 0;
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
