#include "utilities/lua/components/LuaComponent.h"

#include "engine/GameObject.h"
#include "engine/Log.h"
#include "engine/Manager.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/LuaScript.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/components/LuaProperty.h"
#include "utilities/lua/components/ScriptComponentType.h"
#include "utilities/lua/lanes/Lanes.h"
#include "utilities/lua/luabridge/Stack.h"

#include <lua.hpp>

#include <mutex>

META_REGISTER(LuaComponent)
{
    DERIVE(Component);
    DESCRIPTION("A component written in Lua: one type per script under LuaScripts/Components/.");
    PROPERTY_GET(ScriptName, GetName, "The script's name, which is the component type's name.");
    PROPERTY_NEW();
}

namespace
{
// "RegisterFunction" of a component's environment: caches the named function on the component
// whose script is being loaded.
int RegisterFunction(lua_State* L)
{
    const char* name = luaL_checkstring(L, 1);
    LuaComponent* component = LuaSystem::Of(L).m_CurrentComponent;
    if (component && component->GetScript())
        component->GetScript()->CacheFunction(name);
    return 0;
}
}

LuaComponent::~LuaComponent()
{
    // Its script's binds on the global table name this component; none may outlive it.
    Engine::Manager::Get().m_Events.UnregisterAll(this);
}

LuaSystem& LuaComponent::System() const
{
    return m_System ? *m_System : LuaSystem::Get();
}

void LuaComponent::Initialize()
{
    if (m_FilePath.empty())
        return;
    m_Script = std::make_unique<LuaScript>(m_FilePath, [this](lua_State* L) { SetupEnvironment(L); }, &System());
    m_Script->m_Listener = this;
    m_Script->m_OnReload = [this] { OnScriptLoaded(true); };
    OnScriptLoaded(false);
}

void LuaComponent::SetupEnvironment(lua_State* L)
{
    const int environment = lua_gettop(L);
    luabridge::Stack<GameObject*>::Push(L, m_Owner);
    lua_setfield(L, environment, "owner");
    luabridge::Stack<LuaComponent*>::Push(L, this);
    lua_setfield(L, environment, "this");
    lua_pushcfunction(L, &RegisterFunction);
    lua_setfield(L, environment, "RegisterFunction");
}

void LuaComponent::OnScriptLoaded(bool alreadyRun)
{
    LuaSystem& system = System();
    const auto lock = system.LockMainState();
    LuaComponent* previous = system.m_CurrentComponent;
    system.m_CurrentComponent = this;
    if (alreadyRun)
    {
        // The reloaded script registers its events again in its Initialize.
        if (Engine::Space* space = GetSpace())
            space->m_Events.UnregisterAll(this);
        Engine::Manager::Get().m_Events.UnregisterAll(this);
    }
    else
        m_Script->Run();
    for (const char* entry : {"Initialize", "PostInitialize", "Destroy", "DisplayToEditor"})
        m_Script->CacheFunction(entry);
    CallEntryPoint("Initialize");
    if (m_Owner && m_Owner->m_Initialized)
        CallEntryPoint("PostInitialize");
    system.m_CurrentComponent = previous;
}

void LuaComponent::CallEntryPoint(std::string_view name)
{
    if (!m_Script)
        return;
    const int function = m_Script->FindFunction(name);
    if (function == -1)
        return;
    LuaSystem& system = System();
    const auto lock = system.LockMainState();
    system.CallRef(function);
}

void LuaComponent::LateInitialize()
{
    CallEntryPoint("PostInitialize");
}

void LuaComponent::Uninitialize()
{
    CallEntryPoint("Destroy");
    // A script may listen on the global table too (input, for one); those binds go with it.
    Engine::Manager::Get().m_Events.UnregisterAll(this);
}

Component* LuaComponent::Clone() const
{
    auto* clone = new LuaComponent();
    clone->m_FilePath = m_FilePath;
    clone->m_ScriptName = m_ScriptName;
    clone->m_TypeId = m_TypeId;
    clone->m_Values = m_Values;
    clone->m_VariableInfo = m_VariableInfo;
    clone->m_System = m_System;
    return clone;
}

Meta::Data* LuaComponent::GetMeta() const
{
    return Meta::Get<LuaComponent>();
}

Meta::Any* LuaComponent::FindVariable(std::string_view name)
{
    const ScriptVariable* variable = m_VariableInfo ? m_VariableInfo->Find(name) : nullptr;
    return variable && variable->index < m_Values.size() ? &m_Values[variable->index] : nullptr;
}

const Meta::Any* LuaComponent::FindVariable(std::string_view name) const
{
    return const_cast<LuaComponent*>(this)->FindVariable(name);
}

const LuaProperty* LuaComponent::FindVariableProperty(std::string_view name) const
{
    const ScriptVariable* variable = m_VariableInfo ? m_VariableInfo->Find(name) : nullptr;
    return variable ? variable->property : nullptr;
}

Meta::Any& LuaComponent::GetAny(const std::string& name)
{
    if (Meta::Any* value = FindVariable(name))
        return *value;
    FATAL_ERROR(m_ScriptName + " does not have a variable named: " + name);
    static Meta::Any placeholder;
    placeholder = Meta::Any();
    return placeholder;
}

int LuaComponent::CallFunction(lua_State* L, const std::string& name)
{
    const int function = m_Script ? m_Script->FindFunction(name) : -1;
    if (function == -1)
        return 0;
    LuaSystem& system = System();
    const auto lock = system.LockMainState();
    const int top = lua_gettop(L);
    lua_rawgeti(L, LUA_REGISTRYINDEX, function);
    for (int argument = 2; argument <= top; ++argument)
        lua_pushvalue(L, argument);
    const int status = lua_pcall(L, top > 0 ? top - 1 : 0, LUA_MULTRET, 0);
    if (status != 0)
    {
        system.ReportStatus(status);
        lua_settop(L, top);
        return 0;
    }
    return lua_gettop(L) - top;
}

const ScriptVariable* LuaComponent::FindScriptVariable(std::string_view name) const
{
    const ScriptVariable* variable = m_VariableInfo ? m_VariableInfo->Find(name) : nullptr;
    return variable && variable->index < m_Values.size() ? variable : nullptr;
}

int LuaComponent::GetProperty(lua_State* L, const std::string& name)
{
    const ScriptVariable* variable = FindScriptVariable(name);
    if (!variable)
    {
        lua_pushnil(L);
        return 1;
    }
    Meta::Any& value = m_Values[variable->index];
    LuaSystem& system = System();
    lua_State* main = system.m_State;
    // The main thread runs Lua under the system's lock already (a frame holds it).
    if (LuaSystem::SameUniverse(L, main))
    {
        variable->property->Push(L, value);
        return 1;
    }
    const auto lock = system.LockMainState();
    variable->property->Push(main, value);
    if (luaG_inter_move(get_universe(L), main, L, 1) != 0)
    {
        lua_pop(main, 1);
        lua_pushnil(L);
    }
    return 1;
}

int LuaComponent::SetProperty(lua_State* L, const std::string& name)
{
    const ScriptVariable* variable = FindScriptVariable(name);
    if (!variable)
    {
        lua_pushboolean(L, 0);
        return 1;
    }
    Meta::Any& value = m_Values[variable->index];
    LuaSystem& system = System();
    lua_State* main = system.m_State;
    bool stored = false;
    if (LuaSystem::SameUniverse(L, main))
        stored = variable->property->Take(L, -1, value);
    else
    {
        // Another universe (a lane): the value crosses into the main state under the lock, as a copy;
        // the caller's stack keeps its own.
        const auto lock = system.LockMainState();
        lua_pushvalue(L, -1);
        if (luaG_inter_move(get_universe(L), L, main, 1) == 0)
        {
            stored = variable->property->Take(main, -1, value);
            lua_pop(main, 1);
        }
        else
            lua_pop(L, 1);
    }
    if (!stored)
        return luaL_error(L, "%s.%s takes a value of type %s", m_ScriptName.c_str(), name.c_str(),
                          variable->property->m_Type->GetName().c_str());
    return 0;
}

bool LuaComponent::CompareValues(const LuaProperty& property, Meta::Any& a, Meta::Any& b) const
{
    LuaSystem& system = System();
    const auto lock = system.LockMainState();
    lua_State* L = system.m_State;
    const int top = lua_gettop(L);
    const int left = property.ToLua(L, a);
    const int right = property.ToLua(L, b);
    lua_getglobal(L, "CompareProperties");
    bool equal = false;
    if (lua_isfunction(L, -1))
    {
        lua_rawgeti(L, LUA_REGISTRYINDEX, left);
        lua_rawgeti(L, LUA_REGISTRYINDEX, right);
        const int status = lua_pcall(L, 2, 1, 0);
        if (status == 0)
            equal = lua_toboolean(L, -1) != 0;
        else
            system.ReportStatus(status);
    }
    else
    {
        // No global script: Lua's own equality.
        lua_pop(L, 1);
        lua_rawgeti(L, LUA_REGISTRYINDEX, left);
        lua_rawgeti(L, LUA_REGISTRYINDEX, right);
        equal = lua_equal(L, -1, -2) != 0;
    }
    lua_settop(L, top);
    luaL_unref(L, LUA_REGISTRYINDEX, left);
    luaL_unref(L, LUA_REGISTRYINDEX, right);
    return equal;
}

bool LuaComponent::VariableEquals(const LuaComponent& other, unsigned hash) const
{
    const ScriptVariable* mine = m_VariableInfo ? m_VariableInfo->Find(hash) : nullptr;
    const ScriptVariable* theirs = other.m_VariableInfo ? other.m_VariableInfo->Find(hash) : nullptr;
    if (!mine && !theirs)
        return true;
    if (!mine || !theirs || mine->property != theirs->property || mine->index >= m_Values.size() ||
        theirs->index >= other.m_Values.size())
        return false;
    return CompareValues(*mine->property, const_cast<Meta::Any&>(m_Values[mine->index]),
                         const_cast<Meta::Any&>(other.m_Values[theirs->index]));
}

bool LuaComponent::Compare(const Component* other) const
{
    const auto* script = dynamic_cast<const LuaComponent*>(other);
    if (!script || script->m_TypeId != m_TypeId || !m_VariableInfo)
        return script && script->m_TypeId == m_TypeId;
    for (unsigned hash : m_VariableInfo->order)
        if (!VariableEquals(*script, hash))
            return false;
    return true;
}

void LuaComponent::Write(Util::Serializer& serializer, const std::string& name, const Component* other, bool force,
                         bool forceEmpty) const
{
    const auto* reference = dynamic_cast<const LuaComponent*>(other);
    if (!reference)
        reference = System().FindComponentPrototype(m_ScriptName);
    std::vector<unsigned> differing;
    if (m_VariableInfo)
        for (unsigned hash : m_VariableInfo->order)
            if (!reference || !VariableEquals(*reference, hash))
                differing.push_back(hash);
    if (!force && !forceEmpty && differing.empty())
        return;
    serializer.WriteIndent();
    serializer.m_Stream << name << " \n";
    serializer.WriteIndent();
    serializer.m_Stream << "{\n";
    ++serializer.m_Depth;
    for (unsigned hash : differing)
    {
        const ScriptVariable* variable = m_VariableInfo->Find(hash);
        variable->property->Serialize(serializer, m_VariableInfo->names.at(hash), m_Values[variable->index]);
    }
    --serializer.m_Depth;
    serializer.WriteIndent();
    serializer.m_Stream << "}\n";
}
