// GameState: one state of the game (the title screen, the run, the pause
// screen), written as a Lua file under "LuaScripts/GameStates/" and named after
// it. The state's script runs in a private environment where "this" is the
// state; the run loop calls its entry points, each with no argument but Update:
//
//   function Load() end              -- entered after another state
//   function Initialize() end        -- starts, also at a restart
//   function Update(dt) end          -- each frame, dt in seconds
//   function Uninitialize() end      -- ends, also at a restart
//   function Unload() end            -- left for another state
//
// A state hears engine events with this:RegisterEvent("Name" [, "Handler"]),
// calling its Handler(event) (NameEvent by default); a space binds one with
// space:RegisterEvent(this, "Name" [, "Handler"]). Every bind of the state goes
// at Unload. Native code may derive from GameState and override the entry
// points (tests do).
#pragma once

#include <memory>
#include <string>

class LuaScript;
class LuaSystem;
struct lua_State;

class GameState
{
public:
    // A state named `name` with no script.
    explicit GameState(std::string name);
    // A state named `name` on the script at `path` (a full path) run by `system` (the program's
    // when null); the script does not run yet.
    GameState(std::string name, const std::string& path, LuaSystem* system);
    virtual ~GameState();
    GameState(const GameState&) = delete;
    GameState& operator=(const GameState&) = delete;

    // Runs the script in a fresh environment, caches the five entry points, calls "Load".
    virtual void Load();
    // Calls "Initialize".
    virtual void Initialize();
    // Calls "Update" with dt.
    virtual void Update(float dt);
    // Calls "Uninitialize".
    virtual void Uninitialize();
    // Calls "Unload", then releases every event bind of the state.
    virtual void Unload();

    // The state's name.
    const std::string& GetName() const { return ScriptName; }
    // The state's script; null for a state without one.
    LuaScript* GetScript() const { return m_Script.get(); }
    // Script form this:RegisterEvent(eventName [, handlerName]): binds the state's handler
    // (eventName .. "Event" by default) to the event on the global table.
    int RegisterEvent(lua_State* L);
    // Dynamic-property reading hook: the global `name` of the state's environment.
    int GetProperty(lua_State* L, const std::string& name);
    // Dynamic-property writing hook: sets the global `name` of the state's environment.
    int SetProperty(lua_State* L, const std::string& name);

    // True between Load and Unload.
    bool m_Loaded = false;
    // The state's id in the manager.
    int m_Id = -1;
    // File name without extension.
    std::string ScriptName;

private:
    // Calls the cached entry point `name`, with dt when `withDt`.
    void Call(const char* name, bool withDt = false, float dt = 0.0f);

    std::unique_ptr<LuaScript> m_Script;
};
