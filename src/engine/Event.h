// Event: the base of everything that travels through an Engine::EventManager.
// An event is a small object handed synchronously to every listener of its
// name; the name of an event is the name of its registered type.
#pragma once

namespace Meta
{
class Data;
}

class Event
{
public:
    virtual ~Event() = default;
    // The registry record of the concrete type, whose name is the event's name.
    virtual Meta::Data* GetMeta() const = 0;
};
