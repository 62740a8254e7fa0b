#include "engine/GameObject.h"

#include "engine/Component.h"
#include "engine/Log.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/LuaSystem.h"
#include "utilities/lua/components/LuaComponent.h"
#include "utilities/lua/luabridge/Binders.h"

#include <atomic>
#include <unordered_set>

META_REGISTER(GameObject)
{
    DESCRIPTION("An id, a name and a list of components.");
    PROPERTY_GET(GameObjectId, GetId, "The object's id.");
    PROPERTY_GET(Space, GetSpace, "The space the object lives in.");
    METHOD(Destroy);
    METHOD_AS("GetComponent", static_cast<Component* (GameObject::*)(const std::string&) const>(&GameObject::GetComponent));
    METHOD(GetId);
    METHOD(GetName);
    METHOD(SetName);
    METHOD(GetArchetype);
    HELP("Lets objects name a script component: (name, type) adds the property obj.name.");
    METHOD(RegisterLuaComponentName);
    METHOD(AddComponent);
    METHOD(AddComponentUninitialized);
    METHOD(RemoveComponent);
}

namespace
{
// A read-only property named after a component type: the object's component of that type, or null.
class ComponentProperty final : public Meta::ReadOnlyProperty
{
public:
    ComponentProperty(Meta::Data* component, Meta::Data* owner)
        : ReadOnlyProperty(component->GetName(), component, owner)
    {
    }
    Meta::Any Get(const void* object) const override
    {
        return Meta::AnyRef(static_cast<const GameObject*>(object)->GetComponent(m_Type), m_Type);
    }
    void Set(void*, const void*) const override { FATAL_ERROR(ReadonlyMessage()); }
};

// A read-only property named after a script component: the object's component of that name, or null.
class ScriptComponentProperty final : public Meta::ReadOnlyProperty
{
public:
    ScriptComponentProperty(const std::string& name, Meta::Data* type, Meta::Data* owner)
        : ReadOnlyProperty(name, type, owner)
    {
    }
    Meta::Any Get(const void* object) const override
    {
        return Meta::AnyRef(static_cast<const GameObject*>(object)->GetComponent(m_Name), m_Type);
    }
    void Set(void*, const void*) const override { FATAL_ERROR(ReadonlyMessage()); }
};

std::unordered_set<const GameObject*>& LiveObjects()
{
    static auto* live = new std::unordered_set<const GameObject*>();
    return *live;
}
}

GameObject::GameObject()
{
    LiveObjects().insert(this);
}

GameObject::~GameObject()
{
    if (m_Space)
        for (Component* component : m_Components)
            m_Space->m_Events.UnregisterAll(component);

    if (m_Initialized)
    {
        for (Component* component : m_Components)
            component->Uninitialize();
    }
    else if (m_EditorInitialized || m_EditorEmitterOnly)
    {
        for (Component* component : m_Components)
            if (RunsInCurrentMode(component->GetMeta()))
                component->Uninitialize();
    }

    for (Component* component : m_Components)
        delete component;
    LiveObjects().erase(this);
}

void GameObject::RegisterComponentProperties()
{
    Meta::Data* type = Meta::Get<GameObject>();
    for (Meta::Data* candidate : Meta::AllTypes())
    {
        if (!candidate->IsDerivedFrom(Meta::Get<Component>()) || type->m_Properties.Find(candidate->GetName()))
            continue;
        auto* property = new ComponentProperty(candidate, type);
        property->m_Script = true;
        type->AddProperty(property);
    }
}

void GameObject::RegisterLuaComponentName(const std::string& name, Meta::Data* type)
{
    Meta::Data* self = Meta::Get<GameObject>();
    if (name.empty() || !type || self->m_Properties.Find(name))
        return;
    auto* property = new ScriptComponentProperty(name, type, self);
    property->m_Script = true;
    self->AddProperty(property);
    for (LuaSystem* system : LuaSystem::OpenSystems())
        luabridge::BindLateProperty(system->m_State, *self, *property);
}

GameObjectId GameObject::NextId()
{
    static std::atomic<GameObjectId> counter{0};
    return ++counter;
}

bool GameObject::IsAlive(const GameObject* object)
{
    return LiveObjects().count(object) != 0;
}

bool GameObject::RunsInCurrentMode(const Meta::Data* type) const
{
    if (m_Initialized)
        return true;
    if (m_EditorInitialized)
        return IsInEditorSubset(type);
    if (m_EditorEmitterOnly)
        return PassesEmitterOnlyTest(type);
    return false;
}

void GameObject::Initialize()
{
    // An Initialize may add components; they are handled in this same loop.
    for (std::size_t i = 0; i < m_Components.size(); ++i)
    {
        m_Components[i]->m_Owner = this;
        m_Components[i]->Initialize();
    }
    m_Initialized = true;
    if (m_Space)
        m_Space->m_PendingStart.push_back(m_Id);
}

void GameObject::InitializeOnly(bool (*runs)(const Meta::Data*))
{
    for (std::size_t i = 0; i < m_Components.size(); ++i)
    {
        m_Components[i]->m_Owner = this;
        if (runs(m_Components[i]->GetMeta()))
            m_Components[i]->Initialize();
    }
}

void GameObject::InitializeEditorSubset()
{
    InitializeOnly(IsInEditorSubset);
    m_EditorInitialized = true;
}

void GameObject::InitializeEmitterOnly()
{
    InitializeOnly(PassesEmitterOnlyTest);
    m_EditorEmitterOnly = true;
}

void GameObject::Destroy()
{
    if (m_Space)
        m_Space->m_Garbage.insert(this);
}

Component* GameObject::MakeComponent(const std::string& typeName)
{
    const Meta::Data* type = Meta::FindData(typeName);
    if (!type || type == Meta::Get<LuaComponent>() || !type->IsDerivedFrom(Meta::Get<Component>()))
        return LuaSystem::MakeScriptComponent(typeName);
    // Components derive from Component alone, so the instance and its base share an address.
    return static_cast<Component*>(type->New());
}

Component* GameObject::AddComponent(const std::string& typeName)
{
    Component* component = MakeComponent(typeName);
    if (!component)
    {
        FATAL_ERROR(typeName + " is not a component!");
        return nullptr;
    }
    m_Components.push_back(component);
    component->m_Owner = this;
    if (m_Initialized || (m_EditorInitialized && IsInEditorSubset(component->GetMeta())) ||
        (m_EditorEmitterOnly && PassesEmitterOnlyTest(component->GetMeta())))
        component->Initialize();
    return component;
}

Component* GameObject::AddComponentUninitialized(const std::string& typeName)
{
    Component* component = MakeComponent(typeName);
    if (!component)
    {
        FATAL_ERROR(typeName + " is not a component!");
        return nullptr;
    }
    m_Components.push_back(component);
    component->m_Owner = this;
    return component;
}

void GameObject::RemoveComponent(Component* component)
{
    if (!component)
        return;
    if (RunsInCurrentMode(component->GetMeta()))
    {
        component->Uninitialize();
        if (m_Space)
            m_Space->m_Events.UnregisterAll(component);
    }
    for (auto it = m_Components.begin(); it != m_Components.end(); ++it)
    {
        if (*it == component)
        {
            delete *it;
            m_Components.erase(it);
            return;
        }
    }
}

Component* GameObject::GetComponent(const std::string& typeName) const
{
    // Script components go by their script's name, native ones by their type's.
    for (Component* component : m_Components)
        if (component->GetName() == typeName)
            return component;
    return nullptr;
}

Component* GameObject::GetComponent(const Meta::Data* type) const
{
    const unsigned id = type->GetId();
    for (Component* component : m_Components)
        if (component->GetType() == id)
            return component;
    return nullptr;
}

GameObject* GameObject::Clone() const
{
    auto* clone = new GameObject();
    clone->m_Name = m_Name;
    clone->m_Archetype = m_Archetype;
    clone->m_Components.reserve(m_Components.size());
    for (const Component* component : m_Components)
        clone->m_Components.push_back(component->Clone());
    return clone;
}

void GameObject::AppendComponent(Component* component)
{
    if (!component)
        return;
    m_Components.push_back(component);
    component->m_Owner = this;
    if (RunsInCurrentMode(component->GetMeta()))
        component->Initialize();
}
