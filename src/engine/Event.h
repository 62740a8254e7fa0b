// Event: the base of everything that travels through an Engine::EventManager.
// An event is a small object handed synchronously to every listener of its
// name; the name of an event is the name of its registered type.
//
// Scripts hear events too: CallLua calls a function cached in a script with the
// event as its one argument, pushed to Lua as its own class, so a handler reads
// the fields of the concrete event.
#pragma once

#include <string_view>

namespace Meta
{
class Data;
}
class LuaScript;
struct lua_State;

class Event
{
public:
    virtual ~Event() = default;
    // Calls the function `functionName` cached in `script` with this event as its one argument;
    // nothing when the script has no such function. A Lua error is reported and the caller goes on.
    virtual void CallLua(LuaScript& script, std::string_view functionName);
    // Makes a registry reference in L to this event as a Lua value of its concrete class; the
    // caller releases it. Pushes nothing.
    virtual int ToLua(lua_State* L);
    // The registry record of the concrete type, whose name is the event's name.
    virtual Meta::Data* GetMeta() const = 0;
};
