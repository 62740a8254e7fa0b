#include "Components/Hierarchy/Hierarchy.h"

#include "engine/ArchetypeManager.h"
#include "engine/Log.h"
#include "engine/Space.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(Hierarchy)
{
    DERIVE(Component);
    DESCRIPTION("Parent and children of an object.");
    MEMBER(m_Children, "Archetype names of the children made when the object starts.");
    METHOD(GetParent);
    METHOD(GetChildIndex);
    METHOD(AddChild);
    METHOD(ReplaceChild);
    METHOD(GetChild);
    METHOD(GetNumberOfChildren);
    METHOD(DetachChildByIndex);
    METHOD(DetachChild);
    METHOD(DetachChildren);
    METHOD(DestroyParent);
    METHOD(DestroyChildByIndex);
    METHOD(DestroyChild);
    METHOD(DestroyChildren);
    METHOD(HasChild);
    METHOD(DetachFromParent);
}

Meta::Data* Hierarchy::GetMeta() const
{
    return Meta::Get<Hierarchy>();
}

Component* Hierarchy::Clone() const
{
    auto* clone = new Hierarchy();
    clone->m_Owner = m_Owner;
    clone->m_Parent = m_Parent;
    clone->m_Children = m_Children;
    clone->m_ChildIds = m_ChildIds;
    return clone;
}

GameObject* Hierarchy::Find(GameObjectId id) const
{
    Engine::Space* space = GetSpace();
    return space && id != 0 ? space->GetGameObject(id) : nullptr;
}

Hierarchy* Hierarchy::ParentHierarchy() const
{
    GameObject* parent = Find(m_Parent);
    return parent ? parent->GetComponent<Hierarchy>() : nullptr;
}

bool Hierarchy::IsMadeFrom(ArchetypeId archetype) const
{
    // The owner and its ancestors: the chain that a new child would extend.
    for (const Hierarchy* link = this; link; link = link->ParentHierarchy())
        if (link->m_Owner && link->m_Owner->GetArchetype() == archetype)
            return true;
    return false;
}

int Hierarchy::IndexOf(const GameObject* child) const
{
    if (!child)
        return -1;
    for (std::size_t i = 0; i < m_ChildIds.size(); ++i)
        if (m_ChildIds[i] == child->m_Id)
            return static_cast<int>(i);
    return -1;
}

void Hierarchy::Initialize()
{
    Engine::Space* space = GetSpace();
    if (!space)
        return;
    for (const std::string& name : m_Children)
    {
        const ArchetypeId archetype = Engine::ArchetypeManager::Get().Find(name);
        if (archetype == 0)
        {
            FATAL_ERROR("Unknown child archetype: " + name);
            continue;
        }
        if (IsMadeFrom(archetype))
        {
            // Making it would make it again, without end.
            FATAL_ERROR("The archetype " + name + " contains itself: an object made from it lists it among "
                        "its own children or their children. That child is not made.");
            continue;
        }
        GameObject* child = space->CreateObjectUninitialized(archetype);
        auto* childHierarchy = child->GetComponent<Hierarchy>();
        if (!childHierarchy)
        {
            FATAL_ERROR("You need to attach a hierarchy component to each child!");
            child->Destroy();
            continue;
        }
        childHierarchy->m_Parent = m_Owner->m_Id;
        m_ChildIds.push_back(child->m_Id);
        child->Initialize();
    }
}

void Hierarchy::Uninitialize()
{
    for (GameObjectId id : m_ChildIds)
        if (GameObject* child = Find(id))
            child->Destroy();
}

int Hierarchy::GetChildIndex() const
{
    Hierarchy* parent = ParentHierarchy();
    return parent ? parent->IndexOf(m_Owner) : -1;
}

void Hierarchy::AddChild(GameObject* child)
{
    if (!child)
        return;
    if (auto* childHierarchy = child->GetComponent<Hierarchy>())
        childHierarchy->m_Parent = m_Owner->m_Id;
    m_ChildIds.push_back(child->m_Id);
}

void Hierarchy::ReplaceChild(unsigned index, GameObject* child)
{
    if (index >= m_ChildIds.size() || !child)
        return;
    GameObject* old = Find(m_ChildIds[index]);
    if (!old)
        return;
    old->Destroy();
    m_ChildIds[index] = child->m_Id;
    if (auto* childHierarchy = child->GetComponent<Hierarchy>())
        childHierarchy->m_Parent = m_Owner->m_Id;
}

GameObject* Hierarchy::GetChild(unsigned index) const
{
    return index < m_ChildIds.size() ? Find(m_ChildIds[index]) : nullptr;
}

void Hierarchy::DetachChildByIndex(unsigned index)
{
    GameObject* child = GetChild(index);
    if (!child)
        return;
    if (auto* childHierarchy = child->GetComponent<Hierarchy>())
        childHierarchy->m_Parent = 0;
    m_ChildIds.erase(m_ChildIds.begin() + index);
}

void Hierarchy::DetachChild(GameObject* child)
{
    const int index = IndexOf(child);
    if (index >= 0)
        DetachChildByIndex(static_cast<unsigned>(index));
}

void Hierarchy::DetachChildren()
{
    for (GameObjectId id : m_ChildIds)
        if (GameObject* child = Find(id))
            if (auto* childHierarchy = child->GetComponent<Hierarchy>())
                childHierarchy->m_Parent = 0;
    m_ChildIds.clear();
}

void Hierarchy::DestroyParent()
{
    GameObject* parent = Find(m_Parent);
    if (!parent)
        return;
    if (auto* parentHierarchy = parent->GetComponent<Hierarchy>())
        parentHierarchy->DetachChildren();
    parent->Destroy();
}

void Hierarchy::DestroyChildByIndex(unsigned index)
{
    if (GameObject* child = GetChild(index))
        child->Destroy();
}

void Hierarchy::DestroyChild(GameObject* child)
{
    if (IndexOf(child) >= 0)
        child->Destroy();
}

void Hierarchy::DestroyChildren()
{
    for (GameObjectId id : m_ChildIds)
        if (GameObject* child = Find(id))
            child->Destroy();
}

bool Hierarchy::HasChild(GameObject* child) const
{
    return IndexOf(child) >= 0;
}

void Hierarchy::DetachFromParent()
{
    if (Hierarchy* parent = ParentHierarchy())
    {
        const int index = parent->IndexOf(m_Owner);
        if (index >= 0)
            parent->m_ChildIds.erase(parent->m_ChildIds.begin() + index);
    }
    m_Parent = 0;
}
