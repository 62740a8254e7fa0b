#include "utilities/lua/LuaScript.h"

#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/ScriptFile.h"

#include <lua.hpp>

namespace
{
// Address used as the key of the script's id in its environments; no script can name it.
const char kScriptIdKey = 0;
}

LuaScript::LuaScript(const std::string& path, SetupEnvironment setupEnvironment, LuaSystem* system)
    : m_SetupEnvironment(std::move(setupEnvironment)), m_System(system ? *system : LuaSystem::Get())
{
    m_Id = m_System.AddLiveScript(this);
    m_Index = m_System.LoadScript(path);
    m_System.GetScript(m_Index).AddListener(this, [this] { Reload(); });
}

LuaScript::~LuaScript()
{
    m_System.RemoveLiveScript(m_Id);
    ScriptFile& file = m_System.GetScript(m_Index);
    // Index 0 is "Global.lua", whose listener stays by design; it is muted, so a later change of the
    // file never reaches this object.
    if (m_Index > 0)
        file.RemoveListener(this);
    else
        file.MuteListener(this);
    lua_State* L = m_System.m_State;
    for (const Function& function : m_Functions)
        luaL_unref(L, LUA_REGISTRYINDEX, function.ref);
    ReleaseVariables();
}

void LuaScript::Run()
{
    lua_State* L = m_System.m_State;
    const int top = lua_gettop(L);
    // A file that never compiled has no chunk: its error was reported when it was loaded.
    if (!m_System.GetScript(m_Index).PushChunk())
        return;
    const int chunk = lua_gettop(L);

    lua_newtable(L);
    lua_newtable(L);
    lua_pushvalue(L, LUA_GLOBALSINDEX);
    lua_setfield(L, -2, "__index");
    lua_setmetatable(L, -2);
    lua_pushlightuserdata(L, const_cast<char*>(&kScriptIdKey));
    lua_pushnumber(L, static_cast<lua_Number>(m_Id));
    lua_rawset(L, -3);
    if (m_SetupEnvironment)
    {
        m_SetupEnvironment(L);
        lua_settop(L, chunk + 1);
    }
    lua_setfenv(L, chunk);

    m_System.ReportStatus(lua_pcall(L, 0, LUA_MULTRET, 0));
    lua_settop(L, top);
}

int LuaScript::CacheFunction(const std::string& name)
{
    lua_State* L = m_System.m_State;
    const int top = lua_gettop(L);
    int ref = -1;
    if (m_System.GetScript(m_Index).PushChunk())
    {
        lua_getfenv(L, -1);
        lua_remove(L, -2);
        lua_pushlstring(L, name.data(), name.size());
        lua_gettable(L, -2);
        lua_remove(L, -2);
        ref = luaL_ref(L, LUA_REGISTRYINDEX);
    }
    lua_settop(L, top);

    for (Function& function : m_Functions)
        if (function.name == name)
        {
            luaL_unref(L, LUA_REGISTRYINDEX, function.ref);
            function.ref = ref;
            return ref;
        }
    m_Functions.push_back({name, ref});
    return ref;
}

int LuaScript::CacheFunction(const std::string& name, lua_State* L, int environment)
{
    lua_State* main = m_System.m_State;
    if (!LuaSystem::SameUniverse(L, main))
        return -1;
    if (environment < 0 && environment > LUA_REGISTRYINDEX)
        environment = lua_gettop(L) + environment + 1;  // stays put while the name is pushed
    lua_pushlstring(L, name.data(), name.size());
    lua_gettable(L, environment);
    const int ref = luaL_ref(L, LUA_REGISTRYINDEX);
    for (Function& function : m_Functions)
        if (function.name == name)
        {
            luaL_unref(main, LUA_REGISTRYINDEX, function.ref);
            function.ref = ref;
            return ref;
        }
    m_Functions.push_back({name, ref});
    return ref;
}

LuaScript* LuaScript::FromCaller(lua_State* L, int level)
{
    lua_Debug frame;
    if (!lua_getstack(L, level, &frame) || !lua_getinfo(L, "f", &frame))
        return nullptr;
    if (lua_iscfunction(L, -1))
    {
        lua_pop(L, 1);
        return nullptr;
    }
    lua_getfenv(L, -1);
    lua_remove(L, -2);
    LuaScript* script = nullptr;
    if (lua_istable(L, -1))
    {
        lua_pushlightuserdata(L, const_cast<char*>(&kScriptIdKey));
        lua_rawget(L, -2);
        if (lua_type(L, -1) == LUA_TNUMBER)
        {
            LuaSystem* system = LuaSystem::FindOwner(L);
            if (system)
                script = system->FindScript(static_cast<std::uint64_t>(lua_tonumber(L, -1)));
        }
        lua_pop(L, 1);
    }
    if (!script)
        lua_pop(L, 1);
    return script;
}

int LuaScript::FindFunction(std::string_view name) const
{
    for (const Function& function : m_Functions)
        if (function.name == name)
            return function.ref;
    return -1;
}

bool LuaScript::SetVariable(lua_State* L, const std::string& name)
{
    lua_State* main = m_System.m_State;
    if (!LuaSystem::SameUniverse(L, main) || lua_gettop(L) < 3)
        return false;
    lua_pushvalue(L, 3);
    lua_xmove(L, main, 1);
    const int ref = luaL_ref(main, LUA_REGISTRYINDEX);
    for (Variable& variable : m_Variables)
        if (variable.name == name)
        {
            luaL_unref(main, LUA_REGISTRYINDEX, variable.ref);
            variable.ref = ref;
            return true;
        }
    m_Variables.push_back({name, ref});
    return true;
}

bool LuaScript::GetVariable(lua_State* L, std::string_view name) const
{
    lua_State* main = m_System.m_State;
    if (!LuaSystem::SameUniverse(L, main))
        return false;
    for (const Variable& variable : m_Variables)
        if (variable.name == name)
        {
            lua_rawgeti(main, LUA_REGISTRYINDEX, variable.ref);
            lua_xmove(main, L, 1);
            return true;
        }
    return false;
}

namespace
{
// Pushes on `main` the environment of the chunk of `file`; false (nothing pushed) when it has none.
bool PushChunkEnvironment(ScriptFile& file, lua_State* main)
{
    if (!file.PushChunk())
        return false;
    lua_getfenv(main, -1);
    lua_remove(main, -2);
    if (lua_istable(main, -1))
        return true;
    lua_pop(main, 1);
    return false;
}
}

bool LuaScript::PushGlobal(lua_State* L, const std::string& name) const
{
    lua_State* main = m_System.m_State;
    if (!LuaSystem::SameUniverse(L, main))
        return false;
    if (!PushChunkEnvironment(m_System.GetScript(m_Index), main))
    {
        lua_pushnil(L);
        return true;
    }
    lua_getfield(main, -1, name.c_str());
    lua_remove(main, -2);
    lua_xmove(main, L, 1);
    return true;
}

bool LuaScript::SetGlobal(lua_State* L, const std::string& name) const
{
    lua_State* main = m_System.m_State;
    const int value = lua_gettop(L);
    if (!LuaSystem::SameUniverse(L, main) || value < 1)
        return false;
    // L may be the main state itself: the environment goes on first, the value's copy after it.
    if (!PushChunkEnvironment(m_System.GetScript(m_Index), main))
        return false;
    lua_pushvalue(L, value);
    lua_xmove(L, main, 1);
    lua_setfield(main, -2, name.c_str());
    lua_pop(main, 1);
    return true;
}

void LuaScript::Reload()
{
    Run();
    ReleaseVariables();
    if (m_OnReload)
        m_OnReload();
}

void LuaScript::ReleaseVariables()
{
    for (const Variable& variable : m_Variables)
        luaL_unref(m_System.m_State, LUA_REGISTRYINDEX, variable.ref);
    m_Variables.clear();
}
