// Engine::Space: a world. A space owns its game objects, its event table and
// its space systems, and updates, pauses and hides as one. There are three,
// made by Engine::SpaceManager: "Level", "HUD" and "Menu".
//
// One update: late starts of objects initialized since the last update; then,
// unless paused, the LogicUpdate event and the space systems in order (or,
// when only logic-paused, just the graphics and sound systems); then the
// collection of objects marked for destruction.
#pragma once

#include "engine/EventManager.h"
#include "engine/GameObject.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

class ScriptEvent;
class System;
struct lua_State;
namespace Meta
{
class Data;
}

namespace Engine
{
// Indices of the three spaces, as scripts know them.
enum SpaceIndex : unsigned
{
    Level = 0,
    HUD = 1,
    Menu = 2
};

// Number of spaces that exist.
inline constexpr unsigned kSpaceCount = 3;
// Space names by index; the fourth, "Pause", names no space and stays unused.
inline constexpr const char* kSpaceNames[4] = {"Level", "HUD", "Menu", "Pause"};

class Space
{
public:
    explicit Space(unsigned index);
    ~Space();
    Space(const Space&) = delete;
    Space& operator=(const Space&) = delete;

    // Clones archetype `id` into this space, gives it a fresh id and initializes it; an unknown id
    // is reported and gives null.
    GameObject* CreateObject(ArchetypeId id);
    // As CreateObject, but the caller must call GameObject::Initialize.
    GameObject* CreateObjectUninitialized(ArchetypeId id);
    // Takes ownership of an object made outside any space (a clone of a room's placed object, say)
    // and gives it a fresh id; the caller must call GameObject::Initialize. Null gives null.
    GameObject* AddObject(GameObject* clone);
    // The object with this id, or null; marked objects stay findable until collected.
    GameObject* GetGameObject(GameObjectId id) const;
    // Marks every object for destruction.
    void DestroyAllGameObjects();

    // Files a space system under a type key and appends it to the update order; the space owns it.
    void AddSystem(System* system, const Meta::Data* key);
    // The first system filed under a key, or null.
    System* GetSystem(const Meta::Data* key) const;
    // The first system filed under T's type.
    template <class T>
    T* GetSystem() const
    {
        return static_cast<T*>(GetSystem(Meta::Get<T>()));
    }

    // Runs one update of the space with the frame time dt.
    void Update(float dt);
    // Destroys every marked object, repeating while destruction marks more.
    void GarbageCollectObjects();

    // Pauses or resumes the space; a change sends the Pause event.
    void SetPause(bool paused);
    // Hides or shows the space; a change sends the Hide event.
    void SetHide(bool hidden);
    // Stops or resumes only the logic; graphics and sound keep running.
    void SetLogicPause(bool logicPaused) { m_LogicPaused = logicPaused; }
    bool IsPaused() const { return m_Paused; }
    bool IsHidden() const { return m_Hidden; }
    bool IsLogicPaused() const { return m_LogicPaused; }

    // Sends an event by name on this space's table.
    void BroadcastEvent(std::string_view name, Event* event);
    // Sends an event by name to the components of one object; nothing if the id doesn't resolve.
    void BroadcastEventToObject(std::string_view name, Event* event, GameObjectId id);

    // Script forms space:RegisterEvent(name [, functionName]), for the calling script, and
    // space:RegisterEvent(object, name [, functionName]): binds the function (name .. "Event" when
    // none is given) to the event on this space's table.
    int RegisterEvent(lua_State* L);
    // Script form space:BroadcastEvent(name, event); a nil event sends nothing.
    void ScriptBroadcastEvent(const std::string& name, ScriptEvent* event);
    // Script form space:BroadcastEvent(event), under the event's own name; a nil event sends nothing.
    void ScriptBroadcastOwnEvent(ScriptEvent* event);
    // Script form space:BroadcastEventToObject(event, id), under the event's own name.
    void ScriptBroadcastOwnEventToObject(ScriptEvent* event, GameObjectId id);
    // Script form space:BroadcastEventToObject(name, event, id); nothing if the id doesn't resolve.
    void ScriptBroadcastEventToObject(const std::string& name, ScriptEvent* event, GameObjectId id);

    // The space's name: "Level", "HUD" or "Menu".
    const char* GetName() const { return kSpaceNames[m_Index]; }
    // The space's index: 0, 1 or 2.
    unsigned GetIndex() const { return m_Index; }

    // This space's event table.
    EventManager m_Events;
    // Owned objects by id.
    std::map<GameObjectId, GameObject*> m_Objects;
    // Initialized objects whose components still await their late start.
    std::vector<GameObjectId> m_PendingStart;
    // Objects marked for destruction.
    std::set<GameObject*> m_Garbage;
    // Space systems by type key; a key keeps its first system.
    std::unordered_map<const Meta::Data*, System*> m_SystemsByType;
    // Space systems in update order; owned.
    std::vector<System*> m_Systems;
    bool m_Paused = false;
    bool m_Hidden = false;
    bool m_LogicPaused = false;
    // 0, 1 or 2.
    unsigned m_Index = 0;

private:
    std::string m_LogicTimerName;
    std::vector<std::string> m_SystemTimerNames;
    std::vector<GameObjectId> m_Starting;
};
}
