#include "input/Gamepad.h"

#include "engine/EventManager.h"
#include "input/BindingTable.h"
#include "input/InputEvents.h"
#include "input/PadSource.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

using Input::GamepadButtonMask;
using Input::GamepadButtonName;

std::array<Gamepad, Gamepad::kCount> Gamepad::s_Pads = [] {
    std::array<Gamepad, Gamepad::kCount> pads;
    for (int i = 0; i < Gamepad::kCount; ++i)
        pads[static_cast<std::size_t>(i)].m_Index = i;
    return pads;
}();
int Gamepad::s_Connected = 0;
Input::PadSource* Gamepad::s_Source = nullptr;

namespace
{
// Button indices that carry events, and those of the triggers.
constexpr int kButtonCount = 14;
constexpr int kLeftTriggerIndex = 15;
constexpr int kRightTriggerIndex = 16;

// Left and right motor speeds by rumble strength.
constexpr Input::PadMotors kRumbleStrengths[] = {{0, 0}, {4000, 12000}, {12000, 16000}, {24000, 28000}};

// Sends name + "Triggered", "Pressed" or "Released" for one control by its state now and before.
void SendControl(Engine::EventManager& events, const char* name, bool now, bool before, Event* event)
{
    const std::string base = name;
    if (now && !before)
        events.Dispatch(base + "Triggered", event);
    if (now)
        events.Dispatch(base + "Pressed", event);
    else if (before)
        events.Dispatch(base + "Released", event);
}
}

Gamepad& Gamepad::Get(int index)
{
    return s_Pads[static_cast<std::size_t>(std::clamp(index, 0, kCount - 1))];
}

void Gamepad::ResetAll()
{
    for (int i = 0; i < kCount; ++i)
    {
        s_Pads[i] = Gamepad();
        s_Pads[i].m_Index = i;
    }
    s_Connected = 0;
}

bool Gamepad::AnyPressed()
{
    return std::any_of(s_Pads.begin(), s_Pads.end(), [](const Gamepad& pad) { return pad.AnyButtonDown(); });
}

Math::Vector2D Gamepad::StickVector(int x, int y)
{
    const float fx = static_cast<float>(x);
    const float fy = static_cast<float>(y);
    float length = std::sqrt(fx * fx + fy * fy);
    if (length == 0.0f)
        return Math::Vector2D(0.0f, 0.0f);
    const Math::Vector2D unit(fx / length, fy / length);
    if (length < kStickDeadZone)
        length = 0.0f;
    const float scale = length / kStickRange;
    return Math::Vector2D(unit.x * scale, unit.y * scale);
}

bool Gamepad::TriggerDown(int value)
{
    float amount = static_cast<float>(value);
    if (amount < kTriggerFloor)
        amount = 0.0f;
    return amount / kTriggerRange > kTriggerThreshold;
}

void Gamepad::Step(float dt, Engine::EventManager& events)
{
    if (!m_Connected && m_ReconnectTime > 0.0f)
    {
        m_ReconnectTime -= dt;
        return;
    }
    m_PreviousState = m_State;
    m_State = Input::PadState();
    if (s_Source == nullptr || !s_Source->ReadState(m_Index, m_State))
    {
        m_State = Input::PadState();
        if (m_Connected)
            Disconnect(events);
        m_ReconnectTime = kReconnectSeconds;
        m_Connected = 0;
        return;
    }
    if (!m_Connected)
    {
        m_Connected = 1;
        std::printf("controller %d connected!\n", m_Index);
        std::fflush(stdout);
        ++s_Connected;
    }

    m_LeftTriggerWasDown = m_LeftTriggerDown;
    m_RightTriggerWasDown = m_RightTriggerDown;
    m_LeftTriggerDown = TriggerDown(m_State.Gamepad.bLeftTrigger);
    m_RightTriggerDown = TriggerDown(m_State.Gamepad.bRightTrigger);

    if (!m_Paused && m_RumbleTime > 0.0f)
    {
        m_RumbleTime -= dt;
        if (m_RumbleTime <= 0.0f)
        {
            m_Motors = Input::PadMotors();
            m_RumbleTime = 0.0f;
            SendMotors(m_Motors);
        }
    }
    SendEvents(events);
}

void Gamepad::Disconnect(Engine::EventManager& events)
{
    std::printf("controller %d disconnected!\n", m_Index);
    std::fflush(stdout);
    GamePadDisconnect disconnect(m_Index);
    events.Dispatch("GamePadDisconnect", &disconnect);
    --s_Connected;
    const unsigned held = m_PreviousState.Gamepad.wButtons;
    for (int i = 0; i < kButtonCount; ++i)
        if ((held & GamepadButtonMask(i)) != 0)
            events.Dispatch(std::string(GamepadButtonName(i)) + "Released", &disconnect);
    if (m_LeftTriggerWasDown)
        events.Dispatch(std::string(GamepadButtonName(kLeftTriggerIndex)) + "Released", &disconnect);
    if (m_RightTriggerWasDown)
        events.Dispatch(std::string(GamepadButtonName(kRightTriggerIndex)) + "Released", &disconnect);
    // A pad that comes back starts with its triggers up.
    m_LeftTriggerDown = m_LeftTriggerWasDown = false;
    m_RightTriggerDown = m_RightTriggerWasDown = false;
}

void Gamepad::SendEvents(Engine::EventManager& events)
{
    const Input::PadControls& now = m_State.Gamepad;
    BoundInput bound;
    bound.PlayerIndex = m_Index;
    bound.Move = StickVector(now.sThumbLX, now.sThumbLY);
    bound.Aim = StickVector(now.sThumbRX, now.sThumbRY);
    bound.State = &m_State;
    const unsigned before = m_PreviousState.Gamepad.wButtons;
    for (int i = 0; i < kButtonCount; ++i)
    {
        const unsigned mask = GamepadButtonMask(i);
        SendControl(events, GamepadButtonName(i), (now.wButtons & mask) != 0, (before & mask) != 0, &bound);
    }
    SendControl(events, GamepadButtonName(kLeftTriggerIndex), m_LeftTriggerDown, m_LeftTriggerWasDown, &bound);
    SendControl(events, GamepadButtonName(kRightTriggerIndex), m_RightTriggerDown, m_RightTriggerWasDown, &bound);
    events.Dispatch("InputUpdatePlayerVectors", &bound);
}

void Gamepad::Rumble(float seconds, int strength)
{
    if (m_Paused)
        return;
    m_Motors = strength >= 0 && strength <= 3 ? kRumbleStrengths[strength] : Input::PadMotors();
    m_RumbleTime = seconds;
    SendMotors(m_Motors);
}

void Gamepad::SetPaused(bool paused)
{
    SendMotors(paused ? Input::PadMotors() : m_Motors);
    m_Paused = paused;
}

void Gamepad::ClearButtons()
{
    m_State.Gamepad.wButtons = 0;
    m_PreviousState.Gamepad.wButtons = 0;
}

bool Gamepad::AnyButtonDown() const
{
    return m_State.Gamepad.wButtons != 0 || m_LeftTriggerDown || m_RightTriggerDown;
}

void Gamepad::SendMotors(const Input::PadMotors& motors) const
{
    if (s_Source != nullptr)
        s_Source->SetMotors(m_Index, motors);
}
