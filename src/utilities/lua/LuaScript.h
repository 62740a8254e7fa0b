// LuaScript: one execution of a Lua file in a private environment. The file's
// compiled chunk is shared (see ScriptFile); each LuaScript runs it with a table
// of its own as the environment, whose metatable's __index is _G, so the
// script's top-level globals land in its own table while reads fall through to
// the shared globals.
//
// Functions called often are cached by name once (CacheFunction) and called
// through their registry reference (LuaSystem::CallRef). When the file changes
// on disk the script runs the new chunk again, forgets the variables set from
// native code and calls its reload callback, where the owner re-caches what it
// needs:
//
//   LuaScript script(Util::GetDataDirectory() + "LuaScripts/DebugScript.lua");
//   script.m_OnReload = [&script] { script.CacheFunction("DebugUpdate"); };
//   script.Run();
//   script.CacheFunction("DebugUpdate");
//
// Run caches nothing by itself, and CacheFunction reads the environment of the
// chunk's latest run, so cache right after Run.
//
// Every environment a script makes carries the script's id under a key scripts
// can't name, so a native function called from a script's own function finds
// that script (FromCaller): `space:RegisterEvent("Hit")` binds the calling
// script's HitEvent this way.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

struct lua_State;
class LuaSystem;

class LuaScript
{
public:
    // Fills a new environment (on top of the state's stack) before the chunk runs.
    using SetupEnvironment = std::function<void(lua_State*)>;

    // A function cached by name.
    struct Function
    {
        // Name in the script's environment.
        std::string name;
        // Registry reference; -1 when the environment held nil.
        int ref = -1;
    };

    // A variable set from native code.
    struct Variable
    {
        // Name of the variable.
        std::string name;
        // Registry reference of the value.
        int ref = -1;
    };

    // A script on the file at `path` (a full path), loaded through `system`; doesn't run it yet.
    explicit LuaScript(const std::string& path, SetupEnvironment setupEnvironment = {},
                       LuaSystem* system = nullptr);
    // Stops listening to the file (except at index 0) and releases the cached references.
    virtual ~LuaScript();
    LuaScript(const LuaScript&) = delete;
    LuaScript& operator=(const LuaScript&) = delete;

    // Runs the chunk in a fresh private environment; an error is reported and the program goes on.
    void Run();
    // Looks `name` up in the environment of the chunk's latest run and keeps a reference to it;
    // gives the reference, -1 when it is nil.
    int CacheFunction(const std::string& name);
    // Looks `name` up in the environment table at `environment` of L (the main state or a thread of
    // it) and caches it as CacheFunction does; gives the reference, -1 when it is nil.
    int CacheFunction(const std::string& name, lua_State* L, int environment);
    // The cached reference of `name`; -1 when it was not cached or was nil.
    int FindFunction(std::string_view name) const;
    // Sets variable `name` to the value at stack index 3 of `L`, which is moved to the main state;
    // false (and nothing set) when `L` belongs to another Lua universe or has no value there.
    bool SetVariable(lua_State* L, const std::string& name);
    // Pushes variable `name` on `L`; pushes nothing and gives false when it is not set.
    bool GetVariable(lua_State* L, std::string_view name) const;
    // Pushes on L (the main state or a thread of it) the global `name` of the environment of the
    // chunk's latest run: nil when unset or when the script never ran; false for another universe.
    bool PushGlobal(lua_State* L, const std::string& name) const;
    // Sets the global `name` of that environment to the value on top of L, which stays; false when
    // the script never ran or L belongs to another universe.
    bool SetGlobal(lua_State* L, const std::string& name) const;
    // Runs the chunk again, forgets the variables, calls m_OnReload; the file's listener.
    void Reload();

    // The script whose environment the Lua function at call level `level` of L runs in (1: the caller
    // of the running C function), pushing that environment; null, with nothing pushed, when the
    // function is native or its environment belongs to no living script.
    static LuaScript* FromCaller(lua_State* L, int level = 1);
    // The system that runs this script.
    LuaSystem& GetSystem() const { return m_System; }
    // The id that names this script in its environments and in LuaSystem::FindScript.
    std::uint64_t GetId() const { return m_Id; }
    // Who listens for the events this script registers for: the owner when set, else the script.
    void* GetListener() { return m_Listener ? m_Listener : this; }

    // Functions cached by name.
    std::vector<Function> m_Functions;
    // Variables set from native code; emptied on each reload.
    std::vector<Variable> m_Variables;
    // May be empty; fills the environment before the chunk runs.
    SetupEnvironment m_SetupEnvironment;
    // Index of the file in LuaSystem::m_Scripts.
    int m_Index = -1;
    // May be empty; called after a reload has re-run the chunk.
    std::function<void()> m_OnReload;
    // The object that owns the script (a component, a state); null for none. Event binds the script
    // makes are filed under it, so that the owner's UnregisterAll removes them.
    void* m_Listener = nullptr;

private:
    void ReleaseVariables();

    LuaSystem& m_System;
    // Unique for the life of the system; never reused.
    std::uint64_t m_Id = 0;
};
