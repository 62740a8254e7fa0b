#include "utilities/lua/VirtualSystem.h"

#include "utilities/Meta/Registration.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/luabridge/Stack.h"

#include <lua.hpp>

META_REGISTER(VirtualSystem)
{
    DERIVE(System);
    DESCRIPTION("A space system written in Lua: its script's Initialize runs once, its Update every frame.");
    PROPERTY_NEW();
}

VirtualSystem::VirtualSystem(std::string path, LuaSystem* system) : m_Path(std::move(path)), m_System(system) {}

VirtualSystem::~VirtualSystem() = default;

Meta::Data* VirtualSystem::GetMeta() const
{
    return Meta::Get<VirtualSystem>();
}

void VirtualSystem::Initialize()
{
    LuaSystem& system = m_System ? *m_System : LuaSystem::Get();
    m_Script = std::make_unique<LuaScript>(
        m_Path,
        [this](lua_State* L) {
            luabridge::Stack<VirtualSystem*>::Push(L, this);
            lua_setfield(L, -2, "this");
        },
        &system);
    m_Script->m_Listener = this;
    const auto lock = system.LockMainState();
    m_Script->Run();
    m_Script->CacheFunction("Initialize");
    m_Script->CacheFunction("Update");
    const int initialize = m_Script->FindFunction("Initialize");
    if (initialize != -1)
        system.CallRef(initialize);
}

void VirtualSystem::Update(float dt)
{
    const int update = m_Script ? m_Script->FindFunction("Update") : -1;
    if (update == -1)
        return;
    LuaSystem& system = m_Script->GetSystem();
    const auto lock = system.LockMainState();
    system.CallRef(update, dt);
}

int VirtualSystem::GetProperty(lua_State* L, const std::string& name)
{
    if (!m_Script || !m_Script->PushGlobal(L, name))
        lua_pushnil(L);
    return 1;
}

int VirtualSystem::SetProperty(lua_State* L, const std::string& name)
{
    lua_pushboolean(L, m_Script && m_Script->SetGlobal(L, name));
    return 1;
}
