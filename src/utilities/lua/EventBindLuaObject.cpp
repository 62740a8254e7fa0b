#include "utilities/lua/EventBindLuaObject.h"

#include "engine/Event.h"
#include "engine/GameState.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/luabridge/Stack.h"

#include <lua.hpp>

#include <cstdio>

LuaEventHandler::LuaEventHandler(lua_State* L, int index, std::string name)
    : state(LuaStateHandle::Of(L)), system(LuaSystem::FindOwner(L)), function(std::move(name))
{
    lua_pushvalue(L, index);
    object = luaL_ref(L, LUA_REGISTRYINDEX);
}

LuaEventHandler::LuaEventHandler(LuaScript& owner, std::string name)
    : state(LuaStateHandle::Of(owner.GetSystem().m_State)), system(&owner.GetSystem()), script(owner.GetId()),
      function(std::move(name))
{
}

LuaEventHandler::~LuaEventHandler()
{
    if (object != LUA_NOREF && object != LUA_REFNIL && state.IsOpen())
        luaL_unref(state.state, LUA_REGISTRYINDEX, object);
}

void LuaEventHandler::Call(Event* event) const
{
    if (!state.IsOpen())
        return;
    if (script != 0)
    {
        LuaScript* owner = system ? system->FindScript(script) : nullptr;
        if (owner && event)
            event->CallLua(*owner, function);
        return;
    }
    lua_State* L = state.state;
    const int top = lua_gettop(L);
    lua_rawgeti(L, LUA_REGISTRYINDEX, object);
    if (lua_istable(L, -1) || lua_isuserdata(L, -1))
    {
        lua_getfield(L, top + 1, function.c_str());
        if (lua_isfunction(L, -1))
        {
            lua_pushvalue(L, top + 1);
            luabridge::Stack<Event*>::Push(L, event);
            const int status = lua_pcall(L, 2, 0, 0);
            if (status != 0)
            {
                if (system)
                    system->ReportStatus(status);
                else
                {
                    const char* message = lua_tostring(L, -1);
                    std::printf("Lua Error: %s\n", message ? message : "(error object is not a string)");
                    std::fflush(stdout);
                }
            }
        }
    }
    lua_settop(L, top);
}

EventBindLuaObject::EventBindLuaObject(lua_State* L, int index, std::string function)
    : m_Handler(std::make_shared<LuaEventHandler>(L, index, std::move(function)))
{
}

EventBindLuaObject::EventBindLuaObject(LuaScript& script, std::string function)
    : m_Handler(std::make_shared<LuaEventHandler>(script, std::move(function)))
{
}

void EventBindLuaObject::Invoke(Event* event)
{
    // The handler may remove this bind: keep what the call needs alive on the stack.
    const std::shared_ptr<LuaEventHandler> handler = m_Handler;
    handler->Call(event);
}

void EventBindLuaObject::Queue(Event* event)
{
    if (m_Handler->system)
        m_Handler->system->QueueEvent(m_Handler, event);
}

void RegisterLuaEvent(Engine::EventManager& table, lua_State* L, int index, const std::string& name,
                      const std::string& function)
{
    const void* listener = lua_topointer(L, index);
    if (!listener)
    {
        std::printf("Lua Error: RegisterEvent needs a table or object to call, for event '%s'\n", name.c_str());
        std::fflush(stdout);
        return;
    }
    table.AddBind(Engine::HashName(name), listener, new EventBindLuaObject(L, index, function));
}

void RegisterLuaScriptEvent(Engine::EventManager& table, LuaScript& script, lua_State* L, int environment,
                            const std::string& name, const std::string& function)
{
    // Looked up once, now: a handler defined after the registration stays unknown to this bind.
    script.CacheFunction(function, L, environment);
    table.AddBind(Engine::HashName(name), script.GetListener(), new EventBindLuaObject(script, function));
}

void RegisterLuaScriptEvent(Engine::EventManager& table, LuaScript& script, const std::string& name,
                            const std::string& function)
{
    script.CacheFunction(function);
    table.AddBind(Engine::HashName(name), script.GetListener(), new EventBindLuaObject(script, function));
}

int RegisterLuaEventFromScript(Engine::EventManager& table, lua_State* L)
{
    const char* forms = "RegisterEvent expects (eventName [, functionName]) or (object, eventName [, functionName])";
    const int type = lua_type(L, 2);
    if (type == LUA_TSTRING)
    {
        if (!lua_isnoneornil(L, 3) && lua_type(L, 3) != LUA_TSTRING)
            return luaL_error(L, "%s", forms);
        const std::string name = lua_tostring(L, 2);
        const std::string function = lua_isnoneornil(L, 3) ? name + "Event" : std::string(lua_tostring(L, 3));
        LuaScript* script = LuaScript::FromCaller(L);
        if (!script)
            return luaL_error(L, "RegisterEvent(\"%s\") must be called from a script's own function", name.c_str());
        RegisterLuaScriptEvent(table, *script, L, lua_gettop(L), name, function);
        return 0;
    }
    const bool objectFits = type == LUA_TTABLE || type == LUA_TUSERDATA;
    const bool functionFits = lua_isnoneornil(L, 4) || lua_type(L, 4) == LUA_TSTRING;
    if (!objectFits || lua_type(L, 3) != LUA_TSTRING || !functionFits)
        return luaL_error(L, "%s", forms);
    const std::string name = lua_tostring(L, 3);
    const std::string function = lua_isnoneornil(L, 4) ? name + "Event" : std::string(lua_tostring(L, 4));
    // A game state hears through its script's own function, as its own RegisterEvent binds it.
    if (luabridge::Stack<GameState*>::Is(L, 2))
    {
        GameState* state = luabridge::Stack<GameState*>::Get(L, 2);
        if (state && state->GetScript())
            RegisterLuaScriptEvent(table, *state->GetScript(), name, function);
        return 0;
    }
    RegisterLuaEvent(table, L, 2, name, function);
    return 0;
}
