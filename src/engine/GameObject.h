// GameObject: an id, a name and an ordered list of owned components. An object
// has no logic of its own. It is made by cloning an archetype into a space
// (Engine::Space::CreateObject), initialized, started at its space's next
// update, and destroyed only at the space's collection point after Destroy().
// Long-lived references to objects are GameObjectIds, never pointers.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class Component;
namespace Engine
{
class Space;
}
namespace Meta
{
class Data;
}

// Process-wide object id; never reused; 0 is no object.
using GameObjectId = std::uint32_t;
// 1-based index of an archetype in this run; 0 is none.
using ArchetypeId = std::uint32_t;

class GameObject
{
public:
    GameObject();
    ~GameObject();
    GameObject(const GameObject&) = delete;
    GameObject& operator=(const GameObject&) = delete;

    // The next id of the process-wide counter (the first is 1).
    static GameObjectId NextId();
    // Adds to GameObject one read-only property per component type, named after it; run once
    // registration is complete (again after new component types appear).
    static void RegisterComponentProperties();
    // Lets objects name the script component `name`, of registry type `type`: adds the read-only
    // property `name` to GameObject (bound at once in every open Lua state), which gives the
    // object's component of that name or nil. A name GameObject already has is left as it is.
    static void RegisterLuaComponentName(const std::string& name, Meta::Data* type);
    // True while `object` points at a GameObject that hasn't been deleted.
    static bool IsAlive(const GameObject* object);

    // Initializes every component in order, then queues the object for its late start.
    void Initialize();
    // Initializes only the components that run in an editor instance of a room.
    void InitializeEditorSubset();
    // Initializes only emitters, effectors and meshes.
    void InitializeEmitterOnly();
    // Marks the object for destruction at its space's next collection.
    void Destroy();

    // Makes a component by type name, appends it, and initializes it if the object is initialized.
    Component* AddComponent(const std::string& typeName);
    // Makes a component by type name and appends it with its owner set; never initializes it.
    Component* AddComponentUninitialized(const std::string& typeName);
    // Takes a made component (a clone, say), appends it with its owner set, and initializes it
    // when components of its type run in the object's current mode; null is ignored.
    void AppendComponent(Component* component);
    // Uninitializes (if needed), unbinds and deletes a component; null is ignored.
    void RemoveComponent(Component* component);
    // First component of exactly the named type, or null.
    Component* GetComponent(const std::string& typeName) const;
    // First component of exactly the given type, or null.
    Component* GetComponent(const Meta::Data* type) const;
    // First component of exactly type T, or null.
    template <class T>
    T* GetComponent() const;

    // A new object with clones of all components, the same name and archetype, and all flags false.
    GameObject* Clone() const;

    // The object's id.
    GameObjectId GetId() const { return m_Id; }
    // The object's name.
    const std::string& GetName() const { return m_Name; }
    // Renames the object.
    void SetName(const std::string& name) { m_Name = name; }
    // The archetype the object was made from; 0 if none.
    ArchetypeId GetArchetype() const { return m_Archetype; }
    // The owning space; null for an archetype.
    Engine::Space* GetSpace() const { return m_Space; }

    // Id of the object; 0 in an archetype.
    GameObjectId m_Id = 0;
    // Owned components, in order of addition.
    std::vector<Component*> m_Components;
    // Name of the object.
    std::string m_Name;
    // Owning space; null in an archetype.
    Engine::Space* m_Space = nullptr;
    // Archetype the object was made from; 0 if none.
    ArchetypeId m_Archetype = 0;
    // Every component has had Initialize.
    bool m_Initialized = false;
    // Every component has had LateInitialize.
    bool m_Started = false;
    // Only the editor subset of components was initialized.
    bool m_EditorInitialized = false;
    // Only emitters, effectors and meshes were initialized.
    bool m_EditorEmitterOnly = false;

private:
    // A new component of the named type, or null if the name is no component type.
    Component* MakeComponent(const std::string& typeName);
    // True if components of this type were initialized in the object's mode.
    bool RunsInCurrentMode(const Meta::Data* type) const;
    // Initializes the components whose type passes `runs`, with their owner set.
    void InitializeOnly(bool (*runs)(const Meta::Data*));
};

#include "utilities/Meta/Data.h"

template <class T>
T* GameObject::GetComponent() const
{
    return static_cast<T*>(GetComponent(Meta::Get<T>()));
}
