// EventBindLuaObject: the bind through which a script hears an event. It holds
// either a script (a LuaScript, by id) and the name of a function cached in it,
// called as Event::CallLua does: name(event); or a script object (a table,
// usually) as a registry reference and the name of its method, called as
// object[name](object, event). Either way the call is protected and the event
// is pushed as its own class, so a handler reads the fields of the concrete
// event. An error in a handler is printed as "Lua Error: ..." and the dispatch
// goes on to the next listener. A bind whose script was destroyed does nothing.
//
// From scripts, on a space or the manager:
//
//   space:RegisterEvent("Hit")                 -- this script's HitEvent(event)
//   space:RegisterEvent("Hit", "OnHit")        -- this script's OnHit(event)
//   space:RegisterEvent(enemy, "Hit")          -- enemy:HitEvent(event)
//   space:RegisterEvent(state, "Hit")          -- a game state's HitEvent(event)
//
// A script's function is looked up once, when it registers: define the handler
// before the RegisterEvent call.
//
// Queue, the one route from other threads, posts the delivery to the Lua
// system's queue; the system delivers it on the main thread in its next
// Update. The sender keeps the event alive until then.
//
//   RegisterLuaEvent(space.m_Events, L, 2, "Hit", "OnHit");   // object at index 2
#pragma once

#include "engine/EventManager.h"
#include "utilities/lua/LuaStateHandle.h"

#include <cstdint>
#include <memory>
#include <string>

class Event;
class LuaScript;
class LuaSystem;
struct lua_State;

// A script, or a script object, and the name of its handler function, released with the last holder.
struct LuaEventHandler
{
    // Takes a reference to the value at `index` of L.
    LuaEventHandler(lua_State* L, int index, std::string function);
    // The function `function` cached in `script`.
    LuaEventHandler(LuaScript& script, std::string function);
    // Releases the reference while the state is open.
    ~LuaEventHandler();
    LuaEventHandler(const LuaEventHandler&) = delete;
    LuaEventHandler& operator=(const LuaEventHandler&) = delete;

    // Calls the handler with `event`; reports an error and leaves the stack as it was.
    void Call(Event* event) const;

    // The state whose registry holds the object.
    LuaStateHandle state;
    // The Lua system of that state; null for a state of no system.
    LuaSystem* system = nullptr;
    // Registry reference of the object; LUA_NOREF for a script's handler.
    int object = -2;
    // Id of the script whose function hears; 0 for an object's handler.
    std::uint64_t script = 0;
    // Name of the handler function on the object.
    std::string function;
};

class EventBindLuaObject final : public Engine::EventManager::EventBind
{
public:
    // Binds the object at `index` of L and its function `function`.
    EventBindLuaObject(lua_State* L, int index, std::string function);
    // Binds the function `function` cached in `script`.
    EventBindLuaObject(LuaScript& script, std::string function);
    // Calls the handler now. Touches nothing of the bind after the call: the handler may remove it.
    void Invoke(Event* event) override;
    // Posts the delivery to the Lua system, for its next Update on the main thread.
    void Queue(Event* event) override;

private:
    // Shared with deliveries still queued.
    std::shared_ptr<LuaEventHandler> m_Handler;
};

// Binds the object at `index` of L to the event `name` of `table`, calling its function `function`.
// The listener is the object itself: a second registration of the same object adds a second bind.
void RegisterLuaEvent(Engine::EventManager& table, lua_State* L, int index, const std::string& name,
                      const std::string& function);

// Binds `script`'s function `function` to the event `name` of `table`, caching the function from
// the environment at `environment` of L. The listener is the script's (its owner when it has one).
void RegisterLuaScriptEvent(Engine::EventManager& table, LuaScript& script, lua_State* L, int environment,
                            const std::string& name, const std::string& function);

// The same, caching the function from the environment of the script's latest run.
void RegisterLuaScriptEvent(Engine::EventManager& table, LuaScript& script, const std::string& name,
                            const std::string& function);

// The script forms owner:RegisterEvent(name [, functionName]), for the calling script, and
// owner:RegisterEvent(object, name [, functionName]), on `table`, read from L's stack (the owner at
// 1). The function name defaults to name .. "Event". Wrong arguments raise a Lua error that says the
// forms; returns 0 results.
int RegisterLuaEventFromScript(Engine::EventManager& table, lua_State* L);
