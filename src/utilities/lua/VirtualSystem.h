// VirtualSystem: a space system written in Lua. Its script runs once when the
// system initializes, in a private environment where "this" is the system; the
// script's "Initialize" is then called with no argument, and its "Update" every
// frame with the frame time in seconds. Other scripts read and write the
// script's globals through the system (`system.Queue`), by the dynamic-property
// hooks.
//
//   space->AddSystem(new VirtualSystem(data + "LuaScripts/Systems/Actions.lua"), key);
#pragma once

#include "engine/System.h"

#include <memory>
#include <string>

class LuaScript;
class LuaSystem;
struct lua_State;

class VirtualSystem : public System
{
public:
    // A system running the script at `path` (already joined to the data directory), through
    // `system` (the program's Lua system when null).
    explicit VirtualSystem(std::string path, LuaSystem* system = nullptr);
    ~VirtualSystem() override;

    // Calls the script's "Update" with dt.
    void Update(float dt) override;
    // Runs the script, caches "Initialize" and "Update", calls "Initialize".
    void Initialize() override;
    Meta::Data* GetMeta() const override;

    // Dynamic-property reading hook: the global `name` of the script's environment.
    int GetProperty(lua_State* L, const std::string& name);
    // Dynamic-property writing hook: sets the global `name` of the script's environment.
    int SetProperty(lua_State* L, const std::string& name);
    // The script; null before Initialize.
    LuaScript* GetScript() const { return m_Script.get(); }

    // Full path of the script.
    std::string m_Path;

private:
    std::unique_ptr<LuaScript> m_Script;
    LuaSystem* m_System = nullptr;
};
