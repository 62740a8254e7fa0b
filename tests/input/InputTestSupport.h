// Test helpers for the input layer: a log of the named events that reach the
// global table, a fake pad source whose pads the test sets by hand, and a
// fixture that starts input afresh (shipped bindings, pads disconnected, no pad
// source) and puts everything back afterwards.
#pragma once

#include "editor/GuiInput.h"
#include "engine/Manager.h"
#include "input/Gamepad.h"
#include "input/InputEvents.h"
#include "input/InputManager.h"
#include "input/KeyboardState.h"
#include "input/PadSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

// One event as it reached the global table.
struct LoggedEvent
{
    std::string name;
    int playerIndex = -1;
    Math::Vector2D move;
    Math::Vector2D aim;
    int raw = -1;
    // m_ControllerIndex when the event was a GamePadDisconnect, otherwise -1.
    int disconnectedPad = -1;
};

// Listens on the global table for the given names and keeps what arrives, in order.
class EventLog
{
public:
    explicit EventLog(std::vector<std::string> names)
    {
        for (std::string& name : names)
        {
            m_Listeners.push_back(std::make_unique<Listener>(Listener{this, name}));
            Engine::Manager::Get().m_Events.RegisterEvent(m_Listeners.back().get(), name, &Listener::On);
        }
    }
    ~EventLog()
    {
        for (auto& listener : m_Listeners)
            Engine::Manager::Get().m_Events.UnregisterAll(listener.get());
    }
    EventLog(const EventLog&) = delete;
    EventLog& operator=(const EventLog&) = delete;

    // Names in arrival order.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const LoggedEvent& event : m_Events)
            names.push_back(event.name);
        return names;
    }
    // How many events of `name` arrived.
    int Count(const std::string& name) const
    {
        return static_cast<int>(std::count_if(m_Events.begin(), m_Events.end(),
                                              [&](const LoggedEvent& event) { return event.name == name; }));
    }
    void Clear() { m_Events.clear(); }

    std::vector<LoggedEvent> m_Events;

private:
    struct Listener
    {
        EventLog* log;
        std::string name;
        void On(Event* event)
        {
            LoggedEvent logged;
            logged.name = name;
            if (auto* bound = dynamic_cast<BoundInput*>(event))
            {
                logged.playerIndex = bound->PlayerIndex;
                logged.move = bound->Move;
                logged.aim = bound->Aim;
                logged.raw = bound->Raw;
            }
            if (auto* disconnect = dynamic_cast<GamePadDisconnect*>(event))
                logged.disconnectedPad = disconnect->m_ControllerIndex;
            log->m_Events.push_back(logged);
        }
    };
    std::vector<std::unique_ptr<Listener>> m_Listeners;
};

// Pads the test plugs in and moves by hand; it keeps every motor call.
class FakePadSource : public Input::PadSource
{
public:
    bool ReadState(int pad, Input::PadState& state) override
    {
        ++reads[pad];
        if (!connected[pad])
            return false;
        state = states[pad];
        return true;
    }
    void SetMotors(int pad, const Input::PadMotors& motors) override { motorCalls.push_back({pad, motors}); }

    std::array<bool, 4> connected{};
    std::array<Input::PadState, 4> states{};
    std::array<int, 4> reads{};
    struct MotorCall
    {
        int pad;
        Input::PadMotors motors;
    };
    std::vector<MotorCall> motorCalls;
};

// Starts input afresh, as the window starts it: shipped bindings, pads disconnected, no pad source.
inline void RestartInput()
{
    Gamepad::SetSource(nullptr);
    InputManager::Get().m_InputEnabled = true;
    InputManager::Get().Initialize(nullptr);
    GuiInput::Get().m_WantCaptureMouse = false;
    GuiInput::Get().m_KeysDown.fill(false);
}

// Input started afresh for each test and put back after it.
class InputTest : public ::testing::Test
{
protected:
    void SetUp() override { RestartInput(); }
    void TearDown() override { RestartInput(); }
    static InputManager& Manager() { return InputManager::Get(); }
    static Input::KeyboardState& Keys() { return Input::KeyboardState::Get(); }
};
