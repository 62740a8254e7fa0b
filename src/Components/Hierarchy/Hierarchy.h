// Hierarchy: parent and children of an object. "Children" names archetypes
// whose objects are made and attached when the object initializes; live
// children are kept as ids, so a dead child reads as null, never as a dangling
// pointer. Uninitializing a parent marks its children for destruction, so a
// tree goes one level per pass of its space's collection; a child that should
// outlive its parent is detached first. An archetype that would contain itself
// (as its own child, or a child's child) is reported and that child not made.
#pragma once

#include "engine/Component.h"
#include "engine/GameObject.h"

#include <string>
#include <vector>

class Hierarchy : public Component
{
public:
    Hierarchy() = default;

    // Makes, attaches and initializes one child per archetype name in m_Children.
    void Initialize() override;
    // Marks every live child for destruction.
    void Uninitialize() override;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;

    // The parent's id, 0 if none.
    GameObjectId GetParent() const { return m_Parent; }
    // The owner's index in its parent's child list; -1 without a parent or when not listed.
    int GetChildIndex() const;
    // Attaches an object as the last child.
    void AddChild(GameObject* child);
    // Puts `child` at `index`, marking the old child for destruction.
    void ReplaceChild(unsigned index, GameObject* child);
    // The live child at `index`, or null.
    GameObject* GetChild(unsigned index) const;
    // Number of children listed.
    unsigned GetNumberOfChildren() const { return static_cast<unsigned>(m_ChildIds.size()); }
    // Detaches the child at `index`, if it exists.
    void DetachChildByIndex(unsigned index);
    // Detaches `child`, if it is one.
    void DetachChild(GameObject* child);
    // Detaches every child.
    void DetachChildren();
    // Detaches all of the parent's children (the owner too) and marks the parent for destruction.
    void DestroyParent();
    // Marks the child at `index` for destruction.
    void DestroyChildByIndex(unsigned index);
    // Marks `child` for destruction, if it is one.
    void DestroyChild(GameObject* child);
    // Marks every child for destruction.
    void DestroyChildren();
    // True if `child` is listed as a child.
    bool HasChild(GameObject* child) const;
    // Removes the owner from its parent's child list.
    void DetachFromParent();

    // The parent's id; 0 if none; not saved.
    GameObjectId m_Parent = 0;
    // Archetype names of the children made at start; saved as "Children".
    std::vector<std::string> m_Children;
    // Live children, in order.
    std::vector<GameObjectId> m_ChildIds;

private:
    GameObject* Find(GameObjectId id) const;
    Hierarchy* ParentHierarchy() const;
    int IndexOf(const GameObject* child) const;
    // True if the owner or one of its ancestors was made from `archetype`.
    bool IsMadeFrom(ArchetypeId archetype) const;
};
