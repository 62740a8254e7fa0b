// System: the base of every engine system (listed by Engine::Manager, updated
// once a frame in a fixed order) and every space system (owned by one
// Engine::Space, updated in that space's update). A system's type name is its
// name in the frame timers and the key under which a space files it.
#pragma once

namespace Meta
{
class Data;
}

namespace Engine
{
class Space;
}

class System
{
public:
    // Advances the system by one frame of dt seconds.
    virtual void Update(float dt) = 0;
    // Called once, after every system exists.
    virtual void Initialize() {}
    virtual ~System() = default;
    // The registry record of the concrete type.
    virtual Meta::Data* GetMeta() const = 0;

    // The owning space of a space system; null for an engine system.
    Engine::Space* m_Space = nullptr;
};
