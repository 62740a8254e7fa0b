#include "utilities/lua/ScriptFile.h"

#include "engine/FileWatcher.h"
#include "utilities/lua/LuaSystem.h"

#include <lua.hpp>

#include <algorithm>

ScriptFile::ScriptFile(LuaSystem& system, std::string filePath) : path(std::move(filePath)), m_System(system)
{
    FileWatcher::Get().Add(path, true, this, [this](const std::string&) { Compile(); });
}

ScriptFile::~ScriptFile()
{
    FileWatcher::Get().Remove(this);
    if (ref != -1)
        luaL_unref(m_System.m_State, LUA_REGISTRYINDEX, ref);
}

void ScriptFile::Compile()
{
    lua_State* L = m_System.m_State;
    const int top = lua_gettop(L);
    const int status = luaL_loadfile(L, path.c_str());
    if (status != 0)
    {
        m_System.ReportStatus(status);
        lua_settop(L, top);
        return;
    }
    if (ref != -1)
        luaL_unref(L, LUA_REGISTRYINDEX, ref);
    ref = luaL_ref(L, LUA_REGISTRYINDEX);

    // A listener may add or remove listeners (a script made or destroyed while it runs): walk a copy,
    // and skip those that were removed meanwhile.
    const std::vector<Listener> calling = listeners;
    for (const Listener& listener : calling)
    {
        auto standing = std::find_if(listeners.begin(), listeners.end(),
                                     [&](const Listener& other) { return other.key == listener.key; });
        if (standing == listeners.end())
            continue;
        // An empty callback is a programming fault: calling it throws std::bad_function_call.
        const Callback callback = standing->callback;
        callback();
    }
}

bool ScriptFile::AddListener(const void* key, Callback callback)
{
    if (HasListener(key))
        return false;
    listeners.push_back({key, std::move(callback)});
    return true;
}

void ScriptFile::RemoveListener(const void* key)
{
    std::erase_if(listeners, [key](const Listener& listener) { return listener.key == key; });
}

void ScriptFile::MuteListener(const void* key)
{
    for (Listener& listener : listeners)
        if (listener.key == key)
            listener.callback = [] {};
}

bool ScriptFile::HasListener(const void* key) const
{
    return std::any_of(listeners.begin(), listeners.end(),
                       [key](const Listener& listener) { return listener.key == key; });
}

bool ScriptFile::PushChunk() const
{
    if (ref == -1)
        return false;
    lua_rawgeti(m_System.m_State, LUA_REGISTRYINDEX, ref);
    return true;
}
