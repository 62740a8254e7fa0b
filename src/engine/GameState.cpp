#include "engine/GameState.h"

#include "engine/Manager.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/EventBindLuaObject.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/luabridge/Stack.h"

#include <lua.hpp>

META_REGISTER(GameState)
{
    DESCRIPTION("A state of the game, written as a Lua file under LuaScripts/GameStates/.");
    MEMBER_FLAGS(ScriptName, false, true, "The state's name: its file name without extension.");
    HELP("Binds the state's handler to an engine event: (eventName [, handlerName]); eventName .. 'Event' by default.");
    type.AddMethod(Meta::ScriptVisible(new Meta::MethodD_crosscall<int, Self>("RegisterEvent", &Self::RegisterEvent)));
    HELP("The state's script.");
    METHOD(GetScript);
    PROPERTY_NEW();
    METHOD(GetName);
}

namespace
{
const char* const kEntryPoints[] = {"Load", "Initialize", "Update", "Uninitialize", "Unload"};
}

GameState::GameState(std::string name) : ScriptName(std::move(name)) {}

GameState::GameState(std::string name, const std::string& path, LuaSystem* system) : ScriptName(std::move(name))
{
    m_Script = std::make_unique<LuaScript>(
        path,
        [this](lua_State* L) {
            luabridge::Stack<GameState*>::Push(L, this);
            lua_setfield(L, -2, "this");
        },
        system);
    m_Script->m_Listener = this;
}

GameState::~GameState() = default;

void GameState::Call(const char* name, bool withDt, float dt)
{
    const int function = m_Script ? m_Script->FindFunction(name) : -1;
    if (function == -1)
        return;
    LuaSystem& system = m_Script->GetSystem();
    const auto lock = system.LockMainState();
    if (withDt)
        system.CallRef(function, dt);
    else
        system.CallRef(function);
}

void GameState::Load()
{
    m_Loaded = true;
    if (!m_Script)
        return;
    {
        const auto lock = m_Script->GetSystem().LockMainState();
        m_Script->Run();
        for (const char* entry : kEntryPoints)
            m_Script->CacheFunction(entry);
    }
    Call("Load");
}

void GameState::Initialize()
{
    Call("Initialize");
}

void GameState::Update(float dt)
{
    Call("Update", true, dt);
}

void GameState::Uninitialize()
{
    Call("Uninitialize");
}

void GameState::Unload()
{
    Call("Unload");
    Engine::Manager::Get().m_Events.UnregisterAll(this);
    for (unsigned i = 0; i < Engine::kSpaceCount; ++i)
        Engine::SpaceManager::Get().GetSpace(i)->m_Events.UnregisterAll(this);
    m_Loaded = false;
}

int GameState::RegisterEvent(lua_State* L)
{
    if (lua_type(L, 2) != LUA_TSTRING || (!lua_isnoneornil(L, 3) && lua_type(L, 3) != LUA_TSTRING))
        return luaL_error(L, "RegisterEvent expects (eventName [, handlerName])");
    if (!m_Script)
        return 0;
    const std::string name = lua_tostring(L, 2);
    const std::string handler = lua_isnoneornil(L, 3) ? name + "Event" : std::string(lua_tostring(L, 3));
    RegisterLuaScriptEvent(Engine::Manager::Get().m_Events, *m_Script, name, handler);
    return 0;
}

int GameState::GetProperty(lua_State* L, const std::string& name)
{
    if (!m_Script || !m_Script->PushGlobal(L, name))
        lua_pushnil(L);
    return 1;
}

int GameState::SetProperty(lua_State* L, const std::string& name)
{
    lua_pushboolean(L, m_Script && m_Script->SetGlobal(L, name));
    return 1;
}
