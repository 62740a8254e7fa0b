#include "Components/Hierarchy/Hierarchy.h"

#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "platform/Dialog.h"
#include "support/ReportCapture.h"
#include "support/Scoped.h"

#include <gtest/gtest.h>

namespace
{
class HierarchyTest : public ::testing::Test
{
protected:

    // Makes a parent whose Hierarchy makes `count` children of a fresh archetype.
    GameObject* MakeFamily(int count)
    {
        MakeArchetype("Child", {"Hierarchy"});
        auto* parent = new GameObject();
        parent->m_Name = "Parent";
        auto* hierarchy = static_cast<Hierarchy*>(parent->AddComponentUninitialized("Hierarchy"));
        for (int i = 0; i < count; ++i)
            hierarchy->m_Children.push_back("Child");
        return m_Space.CreateObject(Engine::ArchetypeManager::Get().Add(parent));
    }

    Engine::Space m_Space{Engine::Level};
};
}

TEST_F(HierarchyTest, ChildrenAreMadeFromArchetypeNamesAndKnowTheirParent)
{
    GameObject* parent = MakeFamily(2);
    auto* hierarchy = parent->GetComponent<Hierarchy>();
    ASSERT_EQ(hierarchy->GetNumberOfChildren(), 2u);
    for (unsigned i = 0; i < 2; ++i)
    {
        GameObject* child = hierarchy->GetChild(i);
        ASSERT_NE(child, nullptr);
        EXPECT_TRUE(child->m_Initialized);
        EXPECT_EQ(child->GetComponent<Hierarchy>()->GetParent(), parent->GetId());
        EXPECT_EQ(child->GetComponent<Hierarchy>()->GetChildIndex(), static_cast<int>(i));
    }
}

TEST_F(HierarchyTest, ChildIndexOfAnObjectWithNoParentIsMinusOne)
{
    GameObject* parent = MakeFamily(0);
    EXPECT_EQ(parent->GetComponent<Hierarchy>()->GetChildIndex(), -1);
}

TEST_F(HierarchyTest, DestroyParentLeavesTheSiblingsAliveWithNoParent)
{
    GameObject* parent = MakeFamily(3);
    auto* hierarchy = parent->GetComponent<Hierarchy>();
    const std::vector<GameObjectId> children = hierarchy->m_ChildIds;
    const GameObjectId parentId = parent->GetId();
    hierarchy->GetChild(1)->GetComponent<Hierarchy>()->DestroyParent();
    m_Space.GarbageCollectObjects();

    EXPECT_EQ(m_Space.GetGameObject(parentId), nullptr);
    for (GameObjectId id : children)
    {
        GameObject* child = m_Space.GetGameObject(id);
        ASSERT_NE(child, nullptr);
        EXPECT_EQ(child->GetComponent<Hierarchy>()->GetParent(), 0u);
    }
}

TEST_F(HierarchyTest, DestroyingAParentDestroysItsTree)
{
    GameObject* parent = MakeFamily(2);
    const std::vector<GameObjectId> children = parent->GetComponent<Hierarchy>()->m_ChildIds;
    parent->Destroy();
    m_Space.GarbageCollectObjects();
    for (GameObjectId id : children)
        EXPECT_EQ(m_Space.GetGameObject(id), nullptr);
    EXPECT_TRUE(m_Space.m_Objects.empty());
}

TEST_F(HierarchyTest, DetachedChildOutlivesItsParent)
{
    GameObject* parent = MakeFamily(2);
    auto* hierarchy = parent->GetComponent<Hierarchy>();
    const GameObjectId kept = hierarchy->m_ChildIds[0];
    const GameObjectId other = hierarchy->m_ChildIds[1];
    hierarchy->DetachChildByIndex(0);
    EXPECT_EQ(hierarchy->m_ChildIds, std::vector<GameObjectId>{other});
    parent->Destroy();
    m_Space.GarbageCollectObjects();
    EXPECT_NE(m_Space.GetGameObject(kept), nullptr);
    EXPECT_EQ(m_Space.GetGameObject(other), nullptr);
}

TEST_F(HierarchyTest, ReplaceChildMarksTheOldChildAndIgnoresBadIndices)
{
    GameObject* parent = MakeFamily(1);
    auto* hierarchy = parent->GetComponent<Hierarchy>();
    GameObject* old = hierarchy->GetChild(0);
    GameObject* fresh = m_Space.CreateObject(Engine::ArchetypeManager::Get().Find("Child"));
    hierarchy->ReplaceChild(5, fresh);
    EXPECT_EQ(hierarchy->GetChild(0), old);
    hierarchy->ReplaceChild(0, fresh);
    EXPECT_EQ(hierarchy->GetChild(0), fresh);
    EXPECT_EQ(m_Space.m_Garbage.count(old), 1u);
}

TEST_F(HierarchyTest, DeadChildReadsAsNull)
{
    GameObject* parent = MakeFamily(1);
    auto* hierarchy = parent->GetComponent<Hierarchy>();
    GameObject* child = hierarchy->GetChild(0);
    EXPECT_TRUE(hierarchy->HasChild(child));
    hierarchy->DestroyChildByIndex(0);
    m_Space.GarbageCollectObjects();
    EXPECT_EQ(hierarchy->GetChild(0), nullptr);
}

TEST_F(HierarchyTest, DetachFromParentRemovesTheOwnerFromTheParentsList)
{
    GameObject* parent = MakeFamily(2);
    auto* hierarchy = parent->GetComponent<Hierarchy>();
    GameObject* first = hierarchy->GetChild(0);
    GameObject* second = hierarchy->GetChild(1);
    first->GetComponent<Hierarchy>()->DetachFromParent();
    EXPECT_FALSE(hierarchy->HasChild(first));
    EXPECT_EQ(hierarchy->GetChild(0), second);
    EXPECT_EQ(second->GetComponent<Hierarchy>()->GetChildIndex(), 0);
}

TEST_F(HierarchyTest, ChildWithoutHierarchyIsReported)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    MakeArchetype("Orphan", {});
    auto* parent = new GameObject();
    static_cast<Hierarchy*>(parent->AddComponentUninitialized("Hierarchy"))->m_Children.push_back("Orphan");
    testing::internal::CaptureStderr();
    GameObject* made = m_Space.CreateObject(Engine::ArchetypeManager::Get().Add(parent));
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("You need to attach a hierarchy component to each child!"), std::string::npos);
    EXPECT_EQ(made->GetComponent<Hierarchy>()->GetNumberOfChildren(), 0u);
}

namespace
{
// An archetype with a Hierarchy whose children are the named archetypes.
ArchetypeId MakeParentArchetype(const std::string& name, const std::vector<std::string>& children)
{
    const ArchetypeId id = MakeArchetype(name, {"Hierarchy"});
    auto* archetype = Engine::ArchetypeManager::Get().GetArchetype(id);
    archetype->GetComponent<Hierarchy>()->m_Children = children;
    return id;
}
}

TEST_F(HierarchyTest, ArchetypeThatListsItselfAsAChildIsRefused)
{
    ReportCapture reports;
    const ArchetypeId ouroboros = MakeParentArchetype("Ouroboros", {"Ouroboros"});
    GameObject* object = m_Space.CreateObject(ouroboros);
    EXPECT_EQ(object->GetComponent<Hierarchy>()->GetNumberOfChildren(), 0u);
    EXPECT_TRUE(reports.Holds("The archetype Ouroboros contains itself"));
}

TEST_F(HierarchyTest, ArchetypeThatContainsItselfThroughAChildIsRefusedOneLevelDown)
{
    ReportCapture reports;
    const ArchetypeId hen = MakeParentArchetype("Hen", {"Egg"});
    MakeParentArchetype("Egg", {"Hen"});
    GameObject* object = m_Space.CreateObject(hen);
    auto* hierarchy = object->GetComponent<Hierarchy>();
    ASSERT_EQ(hierarchy->GetNumberOfChildren(), 1u);
    EXPECT_EQ(hierarchy->GetChild(0)->GetComponent<Hierarchy>()->GetNumberOfChildren(), 0u);
    EXPECT_TRUE(reports.Holds("The archetype Hen contains itself"));
}
