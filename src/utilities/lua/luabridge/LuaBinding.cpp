#include "utilities/lua/luabridge/LuaBinding.h"

#include "utilities/Meta/Data.h"

#include <unordered_set>

namespace luabridge
{
LuaBinding& LuaBinding::Get()
{
    // Made on first use: registrations run during static initialisation, in any order.
    static auto* binding = new LuaBinding();
    return *binding;
}

void LuaBinding::BeginClass(std::shared_ptr<ClassBinder> binder)
{
    m_Constructors.clear();
    m_Binder = std::move(binder);
}

void LuaBinding::AddConstructor(std::shared_ptr<ConstructorBinder> constructor)
{
    m_Constructors.push_back(std::move(constructor));
}

LuaBinding::Record LuaBinding::Current(Meta::Data* data) const
{
    return Record{data, m_Namespace, m_Binder, m_Constructors};
}

void LuaBinding::Restore(const Record& record)
{
    m_Namespace = record.nameSpace;
    m_Binder = record.binder;
    m_Constructors = record.constructors;
}

void LuaBinding::RegisterClass(Meta::Data* data, unsigned order)
{
    if (!data || !m_Binder)
        return;
    if (!m_State || order > m_CurrentOrder)
    {
        m_Pending[order].push_back(Current(data));
        m_Constructors.clear();
        return;
    }
    if (m_Binder->m_NeedsBase)
    {
        const Meta::Data* parent = data->m_Parent;
        auto found = m_ClassesByParent.find(parent);
        if (found == m_ClassesByParent.end())
        {
            m_ClassesByParent[parent] = ParentEntry{false, {Current(data)}};
            m_Constructors.clear();
            return;
        }
        if (!found->second.bound)
        {
            found->second.waiting.push_back(Current(data));
            m_Constructors.clear();
            return;
        }
    }
    BindNow(data);
}

void LuaBinding::BindNow(Meta::Data* data)
{
    {
        detail::Namespace scope(m_State);
        for (const std::string& name : m_Namespace)
            scope.Enter(name);
        m_Binder->Bind(scope, *data, m_Constructors);
    }
    m_Constructors.clear();
    ParentEntry& entry = m_ClassesByParent[data];
    entry.bound = true;
    std::vector<Record> waiting = std::move(entry.waiting);
    entry.waiting.clear();
    for (const Record& record : waiting)
    {
        Restore(record);
        BindNow(record.data);
    }
}

void LuaBinding::AddScriptConstructed(const std::string& name, lua_CFunction candidate)
{
    m_ScriptConstructed.insert(name);
    for (lua_CFunction known : m_ScriptCandidates)
        if (known == candidate)
            return;
    m_ScriptCandidates.push_back(candidate);
}

void LuaBinding::MakeCallableTables()
{
    for (const std::string& name : m_ScriptConstructed)
    {
        detail::Namespace scope(m_State);
        lua_getfield(m_State, scope.Table(), name.c_str());
        scope.Pushed(1);
        if (!lua_istable(m_State, -1))
            continue;
        if (!lua_getmetatable(m_State, -1))
        {
            lua_newtable(m_State);
            lua_pushvalue(m_State, -1);
            lua_setmetatable(m_State, -3);
        }
        scope.Pushed(1);
        detail::SetCallDispatcher(m_State, &m_ScriptCandidates);
    }
}

void LuaBinding::BindAll(lua_State* L)
{
    // Registrations made meanwhile are kept; those of the lists below are bound from copies.
    const auto pending = m_Pending;
    const auto saved = Current(nullptr);
    m_State = L;
    m_ClassesByParent.clear();
    m_CurrentOrder = 0;

    // "System" first: every system class derives from it.
    std::unordered_set<const Meta::Data*> done;
    const Meta::Data* system = Meta::FindData("System");
    if (auto zero = pending.find(0); zero != pending.end() && system)
        for (const Record& record : zero->second)
            if (record.data == system)
            {
                Restore(record);
                RegisterClass(record.data, 0);
                done.insert(system);
                break;
            }

    for (const auto& [order, records] : pending)
    {
        m_CurrentOrder = order;
        for (const Record& record : records)
        {
            if (!done.insert(record.data).second)
                continue;
            Restore(record);
            RegisterClass(record.data, m_CurrentOrder);
        }
    }
    MakeCallableTables();

    Restore(saved);
    m_State = nullptr;
    m_CurrentOrder = 0;
}

void RegisterEnum(Meta::Data* data)
{
    LuaBinding& binding = LuaBinding::Get();
    const LuaBinding::Record saved{nullptr, binding.m_Namespace, binding.m_Binder, binding.m_Constructors};
    binding.BeginClass(std::make_shared<EnumLua>());
    binding.RegisterClass(data, 0);
    binding.m_Binder = saved.binder;
    binding.m_Constructors = saved.constructors;
}
}
