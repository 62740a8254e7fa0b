// The engine's own everyday events: the per-frame logic update of a space, a
// space's pause and hide changes, and the end of a frame.
#pragma once

#include "engine/Event.h"
#include "utilities/Meta/Data.h"

namespace GenericEvent
{
// Sent by each space once a frame on its own table, before its space systems run.
class LogicUpdate : public Event
{
public:
    LogicUpdate() = default;
    LogicUpdate(float dt, float elapsed) : Dt(dt), Elapsed(elapsed) {}
    Meta::Data* GetMeta() const override { return Meta::Get<LogicUpdate>(); }

    // Frame time in seconds.
    float Dt = 0.0f;
    // Seconds run so far.
    float Elapsed = 0.0f;
};

// Sent by a space whose pause state changes.
class Pause : public Event
{
public:
    explicit Pause(bool paused = false) : m_Paused(paused) {}
    Meta::Data* GetMeta() const override { return Meta::Get<Pause>(); }

    // The new pause state.
    bool m_Paused;
};

// Sent by a space whose hide state changes.
class Hide : public Event
{
public:
    explicit Hide(bool hidden = false) : m_Hidden(hidden) {}
    Meta::Data* GetMeta() const override { return Meta::Get<Hide>(); }

    // The new hide state.
    bool m_Hidden;
};

// Sent on the global table when a frame ends.
class EndOfFrame : public Event
{
public:
    Meta::Data* GetMeta() const override { return Meta::Get<EndOfFrame>(); }
};
}
