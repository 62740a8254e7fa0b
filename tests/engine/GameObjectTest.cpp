#include "engine/GameObject.h"

#include "Components/Transform/Transform.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "platform/Dialog.h"
#include "utilities/Meta/Property.h"
#include "utilities/Meta/Method.h"
#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
class GameObjectTest : public ::testing::Test
{
protected:
    void SetUp() override { ProbeJournal().clear(); }

    Engine::Space m_Space{Engine::Level};
};
}

TEST_F(GameObjectTest, ComponentsAreInitializedInOrderWithTheirOwnerSet)
{
    auto* archetype = new GameObject();
    static_cast<Probe*>(archetype->AddComponentUninitialized("Probe"))->m_Label = "first";
    static_cast<Probe*>(archetype->AddComponentUninitialized("OtherProbe"))->m_Label = "second";
    GameObject* object = m_Space.CreateObject(Engine::ArchetypeManager::Get().Add(archetype));

    EXPECT_EQ(ProbeJournal(), (std::vector<std::string>{"first:Initialize", "second:Initialize"}));
    for (Component* component : object->m_Components)
        EXPECT_EQ(component->m_Owner, object);
    EXPECT_TRUE(object->m_Initialized);
    EXPECT_FALSE(object->m_Started);
    ASSERT_EQ(m_Space.m_PendingStart.size(), 1u);
    EXPECT_EQ(m_Space.m_PendingStart[0], object->GetId());
}

TEST_F(GameObjectTest, ComponentAddedDuringInitializeIsInitializedInTheSameLoop)
{
    auto* archetype = new GameObject();
    auto* probe = static_cast<Probe*>(archetype->AddComponentUninitialized("Probe"));
    probe->m_Label = "adder";
    probe->m_OnInitialize = [](Probe& self) {
        auto* added = static_cast<Probe*>(self.m_Owner->AddComponentUninitialized("OtherProbe"));
        added->m_Label = "added";
    };
    GameObject* object = m_Space.CreateObject(Engine::ArchetypeManager::Get().Add(archetype));
    EXPECT_EQ(object->m_Components.size(), 2u);
    EXPECT_EQ(ProbeJournal(), (std::vector<std::string>{"adder:Initialize", "added:Initialize"}));
}

TEST_F(GameObjectTest, CloneCopiesComponentsNameAndArchetypeWithFlagsCleared)
{
    const ArchetypeId type = MakeArchetype("Crate", {"Transform", "Probe"});
    GameObject* object = m_Space.CreateObject(type);
    object->GetComponent<Transform>()->m_Position.x = 4.0f;
    GameObject* clone = object->Clone();
    EXPECT_EQ(clone->GetName(), "Crate");
    EXPECT_EQ(clone->GetArchetype(), type);
    EXPECT_EQ(clone->GetId(), 0u);
    EXPECT_EQ(clone->GetSpace(), nullptr);
    EXPECT_FALSE(clone->m_Initialized || clone->m_Started || clone->m_EditorInitialized || clone->m_EditorEmitterOnly);
    ASSERT_EQ(clone->m_Components.size(), 2u);
    EXPECT_NE(clone->m_Components[0], object->m_Components[0]);
    EXPECT_FLOAT_EQ(clone->GetComponent<Transform>()->m_Position.x, 4.0f);
    delete clone;
}

TEST_F(GameObjectTest, AddComponentInitializesOnlyOnAnInitializedObject)
{
    GameObject* object = m_Space.CreateObjectUninitialized(MakeArchetype("Empty", {}));
    object->AddComponent("Probe");
    EXPECT_TRUE(ProbeJournal().empty());
    object->Initialize();
    object->AddComponent("OtherProbe");
    EXPECT_EQ(ProbeJournal(), (std::vector<std::string>{"probe:Initialize", "probe:Initialize"}));
    object->AddComponentUninitialized("Probe");
    EXPECT_EQ(ProbeJournal().size(), 2u);
    EXPECT_EQ(object->m_Components.back()->m_Owner, object);
}

TEST_F(GameObjectTest, UnknownComponentNameRaisesTheDialogAndGivesNull)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    GameObject* object = m_Space.CreateObject(MakeArchetype("Plain", {}));
    testing::internal::CaptureStderr();
    Component* made = object->AddComponent("Wobble");
    Component* notComponent = object->AddComponentUninitialized("GameStateManager");
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(notComponent, nullptr);
    EXPECT_NE(reported.find("Wobble is not a component!"), std::string::npos);
    EXPECT_NE(reported.find("GameStateManager is not a component!"), std::string::npos);
    EXPECT_NE(reported.find("FATAL"), std::string::npos);
    EXPECT_TRUE(object->m_Components.empty());
}

TEST_F(GameObjectTest, GetComponentFindsTheExactTypeOnly)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Typed", {"OtherProbe", "Probe"}));
    EXPECT_EQ(object->GetComponent("Probe"), object->m_Components[1]);
    EXPECT_EQ(object->GetComponent("OtherProbe"), object->m_Components[0]);
    EXPECT_EQ(object->GetComponent("Transform"), nullptr);
    EXPECT_EQ(object->GetComponent("NoSuchType"), nullptr);
}

TEST_F(GameObjectTest, RemoveComponentUninitializesUnbindsAndKeepsTheOrderOfOthers)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Three", {"Transform", "Probe", "OtherProbe"}));
    auto* probe = object->GetComponent<Probe>();
    m_Space.m_Events.RegisterEvent(probe, "Ping", &Probe::OnEvent);
    Component* last = object->m_Components[2];
    ProbeJournal().clear();

    object->RemoveComponent(probe);
    object->RemoveComponent(nullptr);

    EXPECT_EQ(ProbeJournal(), (std::vector<std::string>{"probe:Uninitialize", "probe:Destroyed"}));
    ASSERT_EQ(object->m_Components.size(), 2u);
    EXPECT_EQ(object->m_Components[1], last);
    EXPECT_EQ(m_Space.m_Events.CountBinds(probe, "Ping"), 0);
}

TEST_F(GameObjectTest, DestructionUnbindsUninitializesThenDeletesEveryComponent)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Bound", {"Probe", "OtherProbe"}));
    for (Component* component : object->m_Components)
        m_Space.m_Events.RegisterEvent(static_cast<Probe*>(component), "Ping", &Probe::OnEvent);
    ProbeJournal().clear();
    object->Destroy();
    m_Space.GarbageCollectObjects();
    EXPECT_EQ(ProbeJournal(), (std::vector<std::string>{"probe:Uninitialize", "probe:Uninitialize", "probe:Destroyed",
                                                        "probe:Destroyed"}));
}

TEST_F(GameObjectTest, EditorInstanceInitializesOnlyTheEditorSubset)
{
    GameObject* object = m_Space.CreateObjectUninitialized(MakeArchetype("Shown", {"Transform", "Probe"}));
    object->InitializeEditorSubset();
    EXPECT_TRUE(object->m_EditorInitialized);
    EXPECT_FALSE(object->m_Initialized);
    EXPECT_TRUE(ProbeJournal().empty());
    object->AddComponent("Probe");
    EXPECT_TRUE(ProbeJournal().empty());
    object->Destroy();
    m_Space.GarbageCollectObjects();
    EXPECT_EQ(std::count(ProbeJournal().begin(), ProbeJournal().end(), "probe:Uninitialize"), 0);
    EXPECT_EQ(std::count(ProbeJournal().begin(), ProbeJournal().end(), "probe:Destroyed"), 2);
}

TEST_F(GameObjectTest, EditorSubsetNamesTheDisplayComponents)
{
    EXPECT_TRUE(IsInEditorSubset(Meta::Get<Transform>()));
    EXPECT_FALSE(IsInEditorSubset(Meta::Get<Probe>()));
}

TEST_F(GameObjectTest, ObjectOffersEachComponentTypeAsAReadOnlyProperty)
{
    GameObject::RegisterComponentProperties();
    GameObject* object = m_Space.CreateObject(MakeArchetype("Offered", {"Transform"}));
    const Meta::Data* type = Meta::Get<GameObject>();
    Meta::Property* transform = type->FindProperty("Transform");
    Meta::Property* hierarchy = type->FindProperty("Hierarchy");
    ASSERT_NE(transform, nullptr);
    ASSERT_NE(hierarchy, nullptr);
    EXPECT_FALSE(transform->CanSet());
    EXPECT_EQ(transform->Get(object).Get<Transform>(), object->GetComponent<Transform>());
    EXPECT_TRUE(hierarchy->Get(object).IsEmpty());
    EXPECT_EQ(*type->FindProperty("GameObjectId")->Get(object).Get<GameObjectId>(), object->GetId());
    EXPECT_EQ(type->FindProperty("Space")->Get(object).Get<Engine::Space>(), &m_Space);
}

TEST_F(GameObjectTest, ScriptMethodsReachTheObjectThroughTheRegistry)
{
    GameObject* object = m_Space.CreateObject(MakeArchetype("Scripted", {}));
    const Meta::Data* type = Meta::Get<GameObject>();
    std::vector<Meta::Any> name = {Meta::Any::Make(std::string("Renamed"))};
    type->FindMethod("SetName")->Call(object, name);
    EXPECT_EQ(object->GetName(), "Renamed");
    std::vector<Meta::Any> component = {Meta::Any::Make(std::string("Probe"))};
    Meta::Any added = type->FindMethod("AddComponent")->Call(object, component);
    EXPECT_EQ(added.Get<Component>(), object->GetComponent("Probe"));
    EXPECT_EQ(ProbeJournal(), std::vector<std::string>{"probe:Initialize"});
}
