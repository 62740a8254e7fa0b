// ScriptEvent: the event scripts make and send. It carries a name (the name it
// is sent under when none is given) and any fields a script sets on it: the
// fields live in a Lua table of the event's own, made on the first write, so
// `e.Damage = 5` on one side reads back as `e.Damage` on every handler.
//
// Scripts make one with the callable class table: `ScriptEvent()` or
// `ScriptEvent("Hit")`. A copy gets a table of its own with the same fields.
//
//   local e = ScriptEvent("Hit")
//   e.Damage = 5
//   space:BroadcastEvent("Hit", e)
#pragma once

#include "engine/Event.h"
#include "utilities/lua/LuaStateHandle.h"

#include <string>

struct lua_State;

class ScriptEvent : public Event
{
public:
    ScriptEvent() = default;
    // An event named `name`.
    explicit ScriptEvent(std::string name) : m_Name(std::move(name)) {}
    // A copy with the same name and a table of its own holding the same fields.
    ScriptEvent(const ScriptEvent& other);
    ScriptEvent& operator=(const ScriptEvent& other);
    // Releases the field table while its state is open.
    ~ScriptEvent() override;

    Meta::Data* GetMeta() const override;

    // The name the event is sent under when no other is given.
    const std::string& GetName() const { return m_Name; }
    void SetName(const std::string& name) { m_Name = name; }

    // Pushes the field `name` (nil when unset); returns 1.
    int GetProperty(lua_State* L, const std::string& name);
    // Sets the field `name` to the value on top of L.
    int SetProperty(lua_State* L, const std::string& name);

    // The Lua candidate of the callable `ScriptEvent` table: `ScriptEvent()` or `ScriptEvent(name)`;
    // -1 for any other table or arguments.
    static int ScriptConstruct(lua_State* L);

private:
    // Copies the fields of `other` into a new table of this event's own.
    void CopyFieldsFrom(const ScriptEvent& other);
    // Releases the field table.
    void ReleaseFields();
    // True when `L` shares the registry that holds the field table, and it is open.
    bool SameState(lua_State* L) const;

    // The event's name.
    std::string m_Name;
    // The state whose registry holds the field table.
    LuaStateHandle m_State;
    // Registry reference of the field table; LUA_NOREF until a field is set.
    int m_Fields = -2;  // LUA_NOREF
};
