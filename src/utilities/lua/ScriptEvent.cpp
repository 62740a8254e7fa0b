#include "utilities/lua/ScriptEvent.h"

#include "utilities/Meta/Registration.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/luabridge/LuaBinding.h"

#include <lua.hpp>

// Bound after the classes of order 0, so that Event, its base, is there first.
META_REGISTER_ORDER(ScriptEvent, 1)
{
    DERIVE(Event);
    DESCRIPTION("An event made and sent by scripts, with fields the scripts choose.");
    PROPERTY(Name, GetName, SetName, "The name the event is sent under when none is given.");
    PROPERTY_NEW();
    luabridge::LuaBinding::Get().AddScriptConstructed("ScriptEvent", &ScriptEvent::ScriptConstruct);
}

ScriptEvent::ScriptEvent(const ScriptEvent& other) : Event(other), m_Name(other.m_Name)
{
    CopyFieldsFrom(other);
}

ScriptEvent& ScriptEvent::operator=(const ScriptEvent& other)
{
    if (this != &other)
    {
        ReleaseFields();
        m_Name = other.m_Name;
        CopyFieldsFrom(other);
    }
    return *this;
}

ScriptEvent::~ScriptEvent()
{
    ReleaseFields();
}

Meta::Data* ScriptEvent::GetMeta() const
{
    return Meta::Get<ScriptEvent>();
}

int ScriptEvent::GetProperty(lua_State* L, const std::string& name)
{
    if (m_Fields == LUA_NOREF || !SameState(L))
    {
        lua_pushnil(L);
        return 1;
    }
    lua_rawgeti(L, LUA_REGISTRYINDEX, m_Fields);
    lua_getfield(L, -1, name.c_str());
    lua_remove(L, -2);
    return 1;
}

int ScriptEvent::SetProperty(lua_State* L, const std::string& name)
{
    if (m_Fields != LUA_NOREF && !SameState(L))
        ReleaseFields();
    if (m_Fields == LUA_NOREF)
    {
        m_State = LuaStateHandle::Of(L);
        lua_newtable(L);
        m_Fields = luaL_ref(L, LUA_REGISTRYINDEX);
    }
    lua_rawgeti(L, LUA_REGISTRYINDEX, m_Fields);
    lua_pushvalue(L, -2);
    lua_setfield(L, -2, name.c_str());
    lua_pop(L, 1);
    return 0;
}

int ScriptEvent::ScriptConstruct(lua_State* L)
{
    lua_getglobal(L, "ScriptEvent");
    const bool ours = lua_rawequal(L, 1, -1) != 0;
    lua_pop(L, 1);
    const int arguments = lua_gettop(L) - 1;
    if (!ours || arguments > 1)
        return -1;
    if (arguments == 1 && lua_type(L, 2) != LUA_TSTRING)
        return -1;
    const std::string name = arguments == 1 ? lua_tostring(L, 2) : "";
    luabridge::UserdataValue<ScriptEvent>::Push(L, luabridge::detail::ClassKey<ScriptEvent>(), name);
    return 1;
}

void ScriptEvent::CopyFieldsFrom(const ScriptEvent& other)
{
    m_Fields = LUA_NOREF;
    if (other.m_Fields == LUA_NOREF || !other.m_State.IsOpen())
        return;
    lua_State* L = other.m_State.state;
    m_State = other.m_State;
    lua_newtable(L);
    lua_rawgeti(L, LUA_REGISTRYINDEX, other.m_Fields);
    lua_pushnil(L);
    while (lua_next(L, -2))
    {
        lua_pushvalue(L, -2);
        lua_insert(L, -2);
        lua_rawset(L, -5);
    }
    lua_pop(L, 1);
    m_Fields = luaL_ref(L, LUA_REGISTRYINDEX);
}

bool ScriptEvent::SameState(lua_State* L) const
{
    return m_State.IsOpen() && LuaSystem::SameUniverse(L, m_State.state);
}

void ScriptEvent::ReleaseFields()
{
    if (m_Fields != LUA_NOREF && m_State.IsOpen())
        luaL_unref(m_State.state, LUA_REGISTRYINDEX, m_Fields);
    m_Fields = LUA_NOREF;
}
