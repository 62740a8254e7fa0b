// Gamepad: the four pad records, one for each player slot 0 to 3. Each frame a
// pad copies its reading to the previous one and reads again through the
// installed PadSource. A missing pad is asked again only every 4 seconds; a pad
// that goes missing releases the buttons it held and sends GamePadDisconnect.
// A present pad digitises its triggers, runs down its rumble time, and sends
// its buttons' "Triggered", "Pressed" and "Released" events and
// "InputUpdatePlayerVectors" with its sticks, each with a radial dead zone.
// Rumble is held off while the game is paused and resumes after.
#pragma once

#include "engine/Math/Vector2D.h"
#include "input/PadState.h"

#include <array>

namespace Engine
{
class EventManager;
}

namespace Input
{
class PadSource;
}

class Gamepad
{
public:
    // Number of pad records.
    static constexpr int kCount = 4;
    // Seconds between two reads of a missing pad.
    static constexpr float kReconnectSeconds = 4.0f;
    // Stick length below which a stick reads as centred.
    static constexpr float kStickDeadZone = 12000.0f;
    // Full stick length.
    static constexpr float kStickRange = 32767.0f;
    // Trigger values below this read as 0.
    static constexpr float kTriggerFloor = 10.0f;
    // Trigger values are divided by this.
    static constexpr float kTriggerRange = 245.0f;
    // A trigger is down above this fraction.
    static constexpr float kTriggerThreshold = 0.7f;

    // The pad record of slot `index` (0 to 3; others are clamped).
    static Gamepad& Get(int index);
    // Makes the four records afresh: disconnected, nothing held, no rumble; the count goes to 0.
    static void ResetAll();
    // Number of pads connected now.
    static int GetControllersConnected() { return s_Connected; }
    // Where pads are read from; null (the start) reads every pad as missing. Not owned.
    static void SetSource(Input::PadSource* source) { s_Source = source; }
    // The installed source, or null.
    static Input::PadSource* GetSource() { return s_Source; }
    // True when any button or trigger of any pad is down.
    static bool AnyPressed();

    // The pad's move or aim vector from raw stick axes: length 0 inside the dead zone,
    // otherwise the stick's length over the full range.
    static Math::Vector2D StickVector(int x, int y);
    // True when a trigger value counts as down.
    static bool TriggerDown(int value);

    // One frame of this pad: read, connect or disconnect, triggers, rumble time, events on `events`.
    void Step(float dt, Engine::EventManager& events);
    // Runs the motors at `strength` (0 to 3) for `seconds`; nothing while paused.
    void Rumble(float seconds, int strength);
    // Holds the motors off while `paused`; the stored speeds come back after.
    void SetPaused(bool paused);
    // Clears the button masks of this frame's and last frame's readings.
    void ClearButtons();
    // True when a button or trigger is down now.
    bool AnyButtonDown() const;

    // Slot 0 to 3.
    int m_Index = 0;
    // 1 while the pad answers.
    int m_Connected = 0;
    // Seconds until the motors stop.
    float m_RumbleTime = 0.0f;
    // Seconds until a missing pad is read again.
    float m_ReconnectTime = 0.0f;
    // Digitised triggers, this frame and last.
    bool m_LeftTriggerDown = false;
    bool m_LeftTriggerWasDown = false;
    bool m_RightTriggerDown = false;
    bool m_RightTriggerWasDown = false;
    // This frame's reading.
    Input::PadState m_State;
    // Last frame's reading.
    Input::PadState m_PreviousState;
    // Motor speeds set by the last rumble.
    Input::PadMotors m_Motors;
    // Set while a pause holds the motors off.
    bool m_Paused = false;

private:
    void Disconnect(Engine::EventManager& events);
    void SendEvents(Engine::EventManager& events);
    void SendMotors(const Input::PadMotors& motors) const;

    static std::array<Gamepad, kCount> s_Pads;
    static int s_Connected;
    static Input::PadSource* s_Source;
};
