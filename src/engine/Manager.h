// Engine::Manager: the list of engine systems and the run loop.
//
// Start-up adds the engine systems in their fixed order; Run() then loops over
// game states, and within a state runs frames: each frame clamps the frame time,
// calls the debug script's DebugUpdate when it defines one, and calls Update(dt)
// of every engine system in list order, each timed under its type name. The
// debug script, "LuaScripts/DebugScript.lua" in the data directory, is watched:
// an edit takes effect in the next frame. The manager also owns the global event
// table.
#pragma once

#include "engine/EventManager.h"

#include <string>
#include <string_view>
#include <vector>

class Event;
class LuaScript;
class ScriptEvent;
struct lua_State;
class System;

namespace Engine
{
class Manager
{
public:
    // The one manager, made on first use.
    static Manager& Get();

    // Appends an engine system to the update order; the manager doesn't own it.
    void AddSystem(System* system);
    // Calls Initialize on every system in list order.
    void Initialize();
    // Runs the debug script, then game states and their frames until the game quits.
    void Run();
    // Runs one frame: the debug script's DebugUpdate, then every system's Update with the clamped
    // frame time.
    void RunFrame();
    // Ends the run loop.
    void EndGame() { m_Running = false; }
    // Ends the run after this many more frames (0 = no limit), through the normal Quit path.
    void SetFrameLimit(unsigned frames) { m_FrameLimit = frames; }
    // Frames run since start.
    unsigned GetFrameCount() const { return m_FrameCount; }
    // Path of the debug script, from the data directory.
    static constexpr const char* kDebugScript = "LuaScripts/DebugScript.lua";

    // Sends an event by its type name on the global table, then on every space that isn't paused.
    void BroadcastEvent(Event* event);
    // The same with an explicit name.
    void BroadcastEvent(std::string_view name, Event* event);
    // Script form manager:BroadcastEvent(name, event); a nil event sends nothing.
    void ScriptBroadcastEvent(const std::string& name, ScriptEvent* event);
    // Script forms manager:RegisterEvent(name [, functionName]), for the calling script, and
    // manager:RegisterEvent(object, name [, functionName]), on the global table.
    int RegisterEvent(lua_State* L);

    // Engine systems in update order; not owned.
    std::vector<System*> m_Systems;
    // The run loop ends when false.
    bool m_Running = true;
    // The global event table.
    EventManager m_Events;
    // The debug script while Run runs (null otherwise); RunFrame calls its DebugUpdate.
    LuaScript* m_DebugScript = nullptr;

private:
    Manager() = default;

    unsigned m_FrameLimit = 0;
    unsigned m_FrameCount = 0;
};
}
