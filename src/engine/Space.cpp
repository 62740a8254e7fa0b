#include "engine/Space.h"

#include "engine/ArchetypeManager.h"
#include "engine/Component.h"
#include "engine/FrameRateController.h"
#include "engine/GenericEvents.h"
#include "engine/Log.h"
#include "engine/PerformanceData.h"
#include "engine/Profiler.h"
#include "engine/System.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "sound/SoundSpace.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/EventBindLuaObject.h"
#include "utilities/lua/ScriptEvent.h"

namespace
{
// The space's graphics system, as scripts reach it (space.Graphics); null when it has none.
Graphics::GraphicsSpace* GraphicsOf(Engine::Space* space)
{
    return space->GetSystem<Graphics::GraphicsSpace>();
}

SoundSpace* SoundOf(Engine::Space* space)
{
    return space->GetSystem<SoundSpace>();
}
}

META_REGISTER_NS(Engine, Space)
{
    DESCRIPTION("A world of game objects with its own events and systems.");
    PROPERTY_STATIC(Level, +[] { return static_cast<int>(Engine::Level); }, nullptr, "Index of the game space.");
    PROPERTY_STATIC(HUD, +[] { return static_cast<int>(Engine::HUD); }, nullptr, "Index of the heads-up display space.");
    PROPERTY_STATIC(Menu, +[] { return static_cast<int>(Engine::Menu); }, nullptr, "Index of the menu space.");
    PROPERTY_GET_FUNC(Graphics, &GraphicsOf, "The space's graphics system.");
    PROPERTY_GET_FUNC(Sound, &SoundOf, "The space's sound system: music and effects; nil where the space has none.");
    METHOD(SetPause);
    METHOD(SetHide);
    METHOD(SetLogicPause);
    METHOD(IsPaused);
    METHOD(IsHidden);
    METHOD(IsLogicPaused);
    METHOD(CreateObject);
    METHOD(GetGameObject);
    METHOD(DestroyAllGameObjects);
    HELP("Binds a function of the calling script, (name [, functionName]), or of a script object, (object, name [, functionName]), to an event of this space.");
    type.AddMethod(Meta::ScriptVisible(new Meta::MethodD_crosscall<int, Self>("RegisterEvent", &Self::RegisterEvent)));
    HELP("Sends a script event on this space: (event) under its own name, or (name, event).");
    OVERLOAD_AS("BroadcastEvent", 0, &Self::ScriptBroadcastEvent);
    OVERLOAD_AS("BroadcastEvent", 1, &Self::ScriptBroadcastOwnEvent);
    HELP("Sends a script event to one object of this space by its id: (event, id) under the event's own name, or (name, event, id).");
    OVERLOAD_AS("BroadcastEventToObject", 0, &Self::ScriptBroadcastEventToObject);
    OVERLOAD_AS("BroadcastEventToObject", 1, &Self::ScriptBroadcastOwnEventToObject);
}

namespace Engine
{
Space::Space(unsigned index)
    : m_Index(index), m_LogicTimerName(std::string(kSpaceNames[index]) + " Space Logic Update")
{
}

Space::~Space()
{
    DestroyAllGameObjects();
    GarbageCollectObjects();
    for (std::size_t i = m_Systems.size(); i-- > 0;)
        delete m_Systems[i];
    m_Systems.clear();
    m_SystemsByType.clear();
}

GameObject* Space::CreateObjectUninitialized(ArchetypeId id)
{
    const GameObject* archetype = ArchetypeManager::Get().GetArchetype(id);
    if (!archetype)
    {
        FATAL_ERROR("No archetype has the id " + std::to_string(id) + ": no object is made.");
        return nullptr;
    }
    return AddObject(archetype->Clone());
}

GameObject* Space::AddObject(GameObject* clone)
{
    if (!clone)
        return nullptr;
    clone->m_Space = this;
    clone->m_Id = GameObject::NextId();
    m_Objects.emplace(clone->m_Id, clone);
    return clone;
}

GameObject* Space::CreateObject(ArchetypeId id)
{
    GameObject* object = CreateObjectUninitialized(id);
    if (object)
        object->Initialize();
    return object;
}

GameObject* Space::GetGameObject(GameObjectId id) const
{
    auto found = m_Objects.find(id);
    return found == m_Objects.end() ? nullptr : found->second;
}

void Space::DestroyAllGameObjects()
{
    for (auto& [id, object] : m_Objects)
        object->Destroy();
}

void Space::AddSystem(System* system, const Meta::Data* key)
{
    m_SystemsByType.emplace(key, system);
    m_Systems.push_back(system);
    m_SystemTimerNames.push_back(std::string(GetName()) + " Space " + system->GetMeta()->GetName());
    system->m_Space = this;
}

System* Space::GetSystem(const Meta::Data* key) const
{
    auto found = m_SystemsByType.find(key);
    return found == m_SystemsByType.end() ? nullptr : found->second;
}

void Space::Update(float dt)
{
    // Late starts; objects made here start in the next round of this loop.
    while (!m_PendingStart.empty())
    {
        m_Starting.swap(m_PendingStart);
        m_PendingStart.clear();
        for (GameObjectId id : m_Starting)
        {
            GameObject* object = GetGameObject(id);
            if (!object)
                continue;
            for (std::size_t i = 0; i < object->m_Components.size(); ++i)
                object->m_Components[i]->LateInitialize();
            object->m_Started = true;
        }
        m_Starting.clear();
    }

    if (!m_Paused)
    {
        if (m_LogicPaused)
        {
            if (System* graphics = GetSystem<Graphics::GraphicsSpace>())
                graphics->Update(dt);
            if (System* sound = GetSystem<SoundSpace>())
                sound->Update(dt);
        }
        else
        {
            PerformanceData& timers = PerformanceData::Get();
            timers.Start(m_LogicTimerName);
            GenericEvent::LogicUpdate update(dt, FrameRateController::Get().m_Elapsed);
            {
                EventManager::DispatchScope dispatch(m_Events);
                m_Events.Dispatch("LogicUpdate", &update);
            }
            timers.Stop();

            for (std::size_t i = 0; i < m_Systems.size(); ++i)
            {
                PROFILE_SCOPE(m_Systems[i], m_SystemTimerNames[i].c_str());
                timers.Start(m_SystemTimerNames[i]);
                m_Systems[i]->Update(dt);
                timers.Stop();
            }
        }
    }

    GarbageCollectObjects();
}

void Space::GarbageCollectObjects()
{
    std::set<GameObject*> batch;
    while (!m_Garbage.empty())
    {
        batch.swap(m_Garbage);
        m_Garbage.clear();
        for (GameObject* object : batch)
        {
            // Guards against an object deleted behind the space's back.
            if (!GameObject::IsAlive(object))
            {
                FATAL_ERROR("BAD THINGS HAPPENDED");
                continue;
            }
            const GameObjectId id = object->m_Id;
            auto found = m_Objects.find(id);
            if (found == m_Objects.end() || found->second != object)
                continue;
            // The object stays findable while it is being destroyed.
            delete object;
            m_Objects.erase(id);
        }
        // Destroying an object may have marked an already dead one again.
        for (GameObject* object : batch)
            m_Garbage.erase(object);
        batch.clear();
    }
}

void Space::SetPause(bool paused)
{
    if (paused != m_Paused)
    {
        GenericEvent::Pause event(paused);
        m_Events.Dispatch("Pause", &event);
    }
    m_Paused = paused;
}

void Space::SetHide(bool hidden)
{
    if (hidden != m_Hidden)
    {
        GenericEvent::Hide event(hidden);
        m_Events.Dispatch("Hide", &event);
    }
    m_Hidden = hidden;
    // A hidden space is not drawn.
    if (Graphics::GraphicsSpace* graphics = GetSystem<Graphics::GraphicsSpace>())
        graphics->GetRenderData()->Visible = !hidden;
}

void Space::BroadcastEvent(std::string_view name, Event* event)
{
    m_Events.Dispatch(name, event);
}

void Space::BroadcastEventToObject(std::string_view name, Event* event, GameObjectId id)
{
    if (GameObject* object = GetGameObject(id))
        m_Events.DispatchToObject(object, name, event);
}

int Space::RegisterEvent(lua_State* L)
{
    return RegisterLuaEventFromScript(m_Events, L);
}

void Space::ScriptBroadcastEvent(const std::string& name, ScriptEvent* event)
{
    if (event)
        BroadcastEvent(name, event);
}

void Space::ScriptBroadcastOwnEvent(ScriptEvent* event)
{
    if (event)
        BroadcastEvent(event->GetName(), event);
}

void Space::ScriptBroadcastOwnEventToObject(ScriptEvent* event, GameObjectId id)
{
    if (event)
        BroadcastEventToObject(event->GetName(), event, id);
}

void Space::ScriptBroadcastEventToObject(const std::string& name, ScriptEvent* event, GameObjectId id)
{
    if (event)
        BroadcastEventToObject(name, event, id);
}
}
