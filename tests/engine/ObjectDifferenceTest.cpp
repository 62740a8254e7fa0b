#include "engine/ObjectDifference.h"

#include "Components/Transform/Transform.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "utilities/Meta/Member.h"
#include "utilities/Meta/Property.h"
#include "utilities/Meta/Registration.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

// A copy made for a clone, unbound from the original's owner.
inline Component* WithoutOwner(Component* copy)
{
    copy->m_Owner = nullptr;
    return copy;
}

// A component with a saved member, an unsaved one and a saved property.
class DifferenceSample : public Component
{
public:
    Component* Clone() const override { return WithoutOwner(new DifferenceSample(*this)); }
    Meta::Data* GetMeta() const override { return Meta::Get<DifferenceSample>(); }
    float GetSpeed() const { return m_Speed; }
    void SetSpeed(float speed) { m_Speed = speed; }

    int m_Health = 10;
    int m_Scratch = 0;
    float m_Speed = 1.0f;
};

// A component whose type chain has two registered levels below Component.
class DerivedDifferenceSample : public DifferenceSample
{
public:
    Component* Clone() const override { return WithoutOwner(new DerivedDifferenceSample(*this)); }
    Meta::Data* GetMeta() const override { return Meta::Get<DerivedDifferenceSample>(); }

    std::string m_Tag = "plain";
};

META_REGISTER(DifferenceSample)
{
    DERIVE(Component);
    MEMBER(m_Health, "Saved.");
    MEMBER_FLAGS(m_Scratch, false, true, "Not saved.");
    PROPERTY(Speed, GetSpeed, SetSpeed, "Saved, through accessors.");
}

META_REGISTER(DerivedDifferenceSample)
{
    DERIVE(DifferenceSample);
    MEMBER(m_Tag, "Saved.");
}

namespace
{
// Like script components: one native class, a type id per kind, and values that live in a table
// rather than in fields, reachable only through the members of the kind's own record.
class VariableComponent : public Component
{
public:
    VariableComponent(unsigned type, Meta::Data* record) : m_TypeId(type), m_Record(record) {}
    Component* Clone() const override { return WithoutOwner(new VariableComponent(*this)); }
    Meta::Data* GetMeta() const override { return m_Record; }
    unsigned GetType() const override { return m_TypeId; }

    unsigned m_TypeId;
    Meta::Data* m_Record;
    std::map<std::string, float> m_Values;
};

// A member that reads and writes one named value of a VariableComponent.
class VariableMember final : public Meta::Member
{
public:
    explicit VariableMember(const std::string& name) : Member(name, Meta::Get<float>()) { m_Serialize = true; }
    Meta::AnyRef Get(const void* object) const override { return Meta::AnyRef(&Value(object), m_Type); }
    void Set(void* object, const void* value) const override { Value(object) = *static_cast<const float*>(value); }
    void Serialize(const void*, Util::Serializer&) const override {}
    void Deserialize(void*, Util::Serializer&) const override {}
    void RegisterLua(luabridge::ClassScope&) const override {}
    bool Compare(const void* a, const void* b) const override { return Value(a) == Value(b); }
    void SetFromOther(void* to, const void* from) const override { Value(to) = Value(from); }

private:
    float& Value(const void* object) const
    {
        auto* component = static_cast<VariableComponent*>(static_cast<Component*>(const_cast<void*>(object)));
        return component->m_Values[m_Name];
    }
};

// The record of one kind of VariableComponent, with one member per variable.
Meta::Data* VariableKind(const std::string& variable)
{
    static std::map<std::string, std::unique_ptr<Meta::Data>> kinds;
    auto& kind = kinds[variable];
    if (!kind)
    {
        kind = std::make_unique<Meta::Data>();
        kind->AddParent(Meta::Get<Component>());
        kind->AddMember(new VariableMember(variable));
    }
    return kind.get();
}

// Type ids well above those of the registered types.
constexpr unsigned kSpinnerType = 100000;
constexpr unsigned kFaderType = 100001;

VariableComponent* AddVariableComponent(GameObject& object, unsigned type, const std::string& variable, float value)
{
    auto* component = new VariableComponent(type, VariableKind(variable));
    component->m_Values[variable] = value;
    object.AppendComponent(component);
    return component;
}

class ObjectDifferenceTest : public ::testing::Test
{
protected:
    void SetUp() override { ProbeJournal().clear(); }

    // A new uninitialized instance of an archetype, outside any space.
    static std::unique_ptr<GameObject> Instance(ArchetypeId type)
    {
        return std::unique_ptr<GameObject>(Engine::ArchetypeManager::Get().GetArchetype(type)->Clone());
    }
    static GameObject& Archetype(ArchetypeId type) { return *Engine::ArchetypeManager::Get().GetArchetype(type); }

    static unsigned TypeId(const char* name) { return Meta::FindData(name)->GetId(); }

    Engine::Space m_Space{Engine::Level};
};

Meta::Member* MemberOf(const char* type, const char* name)
{
    return Meta::FindData(type)->m_Members.Find(name);
}
}

TEST_F(ObjectDifferenceTest, InstanceEqualToItsArchetypeGivesNoDifferences)
{
    const ArchetypeId type = MakeArchetype("Unchanged", {"Transform", "Probe", "DerivedDifferenceSample"});
    auto instance = Instance(type);
    EXPECT_TRUE(Engine::CompareWithArchetype(*instance, Archetype(type)).empty());
}

TEST_F(ObjectDifferenceTest, ChangedAddedAndRemovedComponentsEachAppearOnce)
{
    const ArchetypeId type = MakeArchetype("Mixed", {"Transform", "Probe"});
    auto instance = Instance(type);
    instance->GetComponent<Transform>()->m_Position.x = 3.0f;
    instance->RemoveComponent(instance->GetComponent<Probe>());
    instance->AddComponentUninitialized("OtherProbe");

    const auto differences = Engine::CompareWithArchetype(*instance, Archetype(type));
    ASSERT_EQ(differences.size(), 3u);

    EXPECT_EQ(differences[0].m_Type, TypeId("Transform"));
    EXPECT_FALSE(differences[0].m_Added || differences[0].m_Removed);
    EXPECT_EQ(differences[0].m_Members, (std::vector<Meta::Member*>{MemberOf("Transform", "Position")}));
    EXPECT_TRUE(differences[0].m_Properties.empty());

    EXPECT_EQ(differences[1].m_Type, TypeId("OtherProbe"));
    EXPECT_TRUE(differences[1].m_Added);
    EXPECT_FALSE(differences[1].m_Removed);

    EXPECT_EQ(differences[2].m_Type, TypeId("Probe"));
    EXPECT_TRUE(differences[2].m_Removed);
    EXPECT_FALSE(differences[2].m_Added);
}

TEST_F(ObjectDifferenceTest, MembersAndPropertiesAlongTheWholeTypeChainAreCompared)
{
    const ArchetypeId type = MakeArchetype("Chained", {"DerivedDifferenceSample"});
    auto instance = Instance(type);
    auto* sample = instance->GetComponent<DerivedDifferenceSample>();
    sample->m_Tag = "changed";
    sample->m_Health = 3;
    sample->SetSpeed(2.5f);

    const auto differences = Engine::CompareWithArchetype(*instance, Archetype(type));
    ASSERT_EQ(differences.size(), 1u);
    EXPECT_EQ(differences[0].m_Members, (std::vector<Meta::Member*>{MemberOf("DerivedDifferenceSample", "Tag"),
                                                                     MemberOf("DifferenceSample", "Health")}));
    EXPECT_EQ(differences[0].m_Properties,
              (std::vector<Meta::Property*>{Meta::FindData("DifferenceSample")->m_Properties.Find("Speed")}));
}

TEST_F(ObjectDifferenceTest, UnsavedMemberIsNotCompared)
{
    const ArchetypeId type = MakeArchetype("Scratched", {"DifferenceSample"});
    auto instance = Instance(type);
    instance->GetComponent<DifferenceSample>()->m_Scratch = 7;
    EXPECT_TRUE(Engine::CompareWithArchetype(*instance, Archetype(type)).empty());
}

TEST_F(ObjectDifferenceTest, ComponentsOfOneClassAreMatchedByTypeIdNotByClass)
{
    GameObject archetype;
    AddVariableComponent(archetype, kSpinnerType, "Speed", 1.0f);
    GameObject instance;
    AddVariableComponent(instance, kFaderType, "Delay", 1.0f);

    const auto differences = Engine::CompareWithArchetype(instance, archetype);
    ASSERT_EQ(differences.size(), 2u);
    EXPECT_EQ(differences[0].m_Type, kFaderType);
    EXPECT_TRUE(differences[0].m_Added);
    EXPECT_EQ(differences[1].m_Type, kSpinnerType);
    EXPECT_TRUE(differences[1].m_Removed);
}

TEST_F(ObjectDifferenceTest, ChangedValueReachedOnlyThroughItsMemberAppearsOnce)
{
    GameObject archetype;
    AddVariableComponent(archetype, kSpinnerType, "Speed", 1.0f);
    GameObject instance;
    AddVariableComponent(instance, kSpinnerType, "Speed", 4.0f);

    const auto differences = Engine::CompareWithArchetype(instance, archetype);
    ASSERT_EQ(differences.size(), 1u);
    EXPECT_EQ(differences[0].m_Type, kSpinnerType);
    EXPECT_EQ(differences[0].m_Members, (std::vector<Meta::Member*>{VariableKind("Speed")->m_Members.Find("Speed")}));
}

TEST_F(ObjectDifferenceTest, ApplyingToAFreshInstanceMakesEveryComponentOfTheSourceCompareEqual)
{
    const ArchetypeId type = MakeArchetype("Carried", {"Transform", "DerivedDifferenceSample", "Probe"});
    auto source = Instance(type);
    source->GetComponent<Transform>()->m_Scale.y = 5.0f;
    auto* sample = source->GetComponent<DerivedDifferenceSample>();
    sample->m_Tag = "renamed";
    sample->m_Health = 1;
    sample->SetSpeed(9.0f);
    source->RemoveComponent(source->GetComponent<Probe>());
    source->AddComponentUninitialized("OtherProbe");
    const auto differences = Engine::CompareWithArchetype(*source, Archetype(type));

    auto target = Instance(type);
    Engine::ApplyDifferences(differences, *source, Archetype(type), *target);

    for (const Component* component : source->m_Components)
    {
        const Component* counterpart = target->GetComponent(component->GetMeta());
        ASSERT_NE(counterpart, nullptr) << component->GetName();
        EXPECT_NE(counterpart, component);
        EXPECT_TRUE(counterpart->Compare(component)) << component->GetName();
    }
    // A removal is not carried over: the target keeps the component.
    EXPECT_NE(target->GetComponent<Probe>(), nullptr);
    EXPECT_EQ(target->GetComponent<OtherProbe>()->m_Owner, target.get());
}

TEST_F(ObjectDifferenceTest, ValueTheTargetOverrodeStaysAfterApply)
{
    const ArchetypeId type = MakeArchetype("Overridden", {"Transform", "DifferenceSample"});
    auto source = Instance(type);
    source->GetComponent<Transform>()->m_Position.x = 1.0f;
    source->GetComponent<Transform>()->m_Scale.x = 2.0f;
    source->GetComponent<DifferenceSample>()->SetSpeed(3.0f);
    const auto differences = Engine::CompareWithArchetype(*source, Archetype(type));

    auto target = Instance(type);
    target->GetComponent<Transform>()->m_Position.x = -7.0f;
    target->GetComponent<DifferenceSample>()->SetSpeed(-3.0f);
    Engine::ApplyDifferences(differences, *source, Archetype(type), *target);

    EXPECT_FLOAT_EQ(target->GetComponent<Transform>()->m_Position.x, -7.0f);
    EXPECT_FLOAT_EQ(target->GetComponent<Transform>()->m_Scale.x, 2.0f);
    EXPECT_FLOAT_EQ(target->GetComponent<DifferenceSample>()->GetSpeed(), -3.0f);
}

TEST_F(ObjectDifferenceTest, ApplyDoesNothingWhenTheTargetWasMadeFromAnotherArchetype)
{
    const ArchetypeId type = MakeArchetype("Original", {"Transform"});
    const ArchetypeId other = MakeArchetype("Unrelated", {"Transform"});
    auto source = Instance(type);
    source->GetComponent<Transform>()->m_Position.z = 6.0f;
    source->AddComponentUninitialized("Probe");
    const auto differences = Engine::CompareWithArchetype(*source, Archetype(type));
    ASSERT_EQ(differences.size(), 2u);

    auto target = Instance(other);
    Engine::ApplyDifferences(differences, *source, Archetype(type), *target);
    EXPECT_FLOAT_EQ(target->GetComponent<Transform>()->m_Position.z, 0.0f);
    EXPECT_EQ(target->m_Components.size(), 1u);
}

TEST_F(ObjectDifferenceTest, AddedComponentIsNotAppendedWhenTheTargetHasOne)
{
    const ArchetypeId type = MakeArchetype("Bare", {});
    auto source = Instance(type);
    source->AddComponentUninitialized("DifferenceSample");
    static_cast<DifferenceSample*>(source->m_Components[0])->m_Health = 50;
    const auto differences = Engine::CompareWithArchetype(*source, Archetype(type));

    auto target = Instance(type);
    Component* own = target->AddComponentUninitialized("DifferenceSample");
    Engine::ApplyDifferences(differences, *source, Archetype(type), *target);
    ASSERT_EQ(target->m_Components.size(), 1u);
    EXPECT_EQ(target->m_Components[0], own);
    EXPECT_EQ(static_cast<DifferenceSample*>(own)->m_Health, 10);
}

TEST_F(ObjectDifferenceTest, AddedComponentIsInitializedOnAnInitializedTarget)
{
    const ArchetypeId type = MakeArchetype("Running", {"Transform"});
    auto source = Instance(type);
    static_cast<Probe*>(source->AddComponentUninitialized("Probe"))->m_Label = "carried";
    const auto differences = Engine::CompareWithArchetype(*source, Archetype(type));

    GameObject* target = m_Space.CreateObject(type);
    auto resting = Instance(type);
    Engine::ApplyDifferences(differences, *source, Archetype(type), *target);
    Engine::ApplyDifferences(differences, *source, Archetype(type), *resting);

    EXPECT_EQ(ProbeJournal(), (std::vector<std::string>{"carried:Initialize"}));
    EXPECT_EQ(target->GetComponent<Probe>()->m_Owner, target);
    EXPECT_EQ(resting->GetComponent<Probe>()->m_Owner, resting.get());
}

TEST_F(ObjectDifferenceTest, ValuesReachedOnlyThroughTheirMembersAreCarriedOver)
{
    GameObject archetype;
    AddVariableComponent(archetype, kSpinnerType, "Speed", 1.0f);
    GameObject source;
    AddVariableComponent(source, kSpinnerType, "Speed", 8.0f);
    AddVariableComponent(source, kFaderType, "Delay", 0.5f);
    const auto differences = Engine::CompareWithArchetype(source, archetype);

    GameObject target;
    AddVariableComponent(target, kSpinnerType, "Speed", 1.0f);
    Engine::ApplyDifferences(differences, source, archetype, target);

    ASSERT_EQ(target.m_Components.size(), 2u);
    EXPECT_FLOAT_EQ(static_cast<VariableComponent*>(target.m_Components[0])->m_Values["Speed"], 8.0f);
    EXPECT_EQ(target.m_Components[1]->GetType(), kFaderType);
    EXPECT_FLOAT_EQ(static_cast<VariableComponent*>(target.m_Components[1])->m_Values["Delay"], 0.5f);
}

TEST_F(ObjectDifferenceTest, MemberOfAnotherTypeInTheListIsSkipped)
{
    const ArchetypeId type = MakeArchetype("Mislabelled", {"Transform"});
    auto source = Instance(type);
    auto target = Instance(type);
    Engine::ComponentDifference wrong;
    wrong.m_Type = TypeId("Transform");
    wrong.m_Members.push_back(MemberOf("DerivedDifferenceSample", "Tag"));
    wrong.m_Members.push_back(nullptr);
    wrong.m_Properties.push_back(Meta::FindData("DifferenceSample")->m_Properties.Find("Speed"));

    Engine::ApplyDifferences({wrong}, *source, Archetype(type), *target);
    EXPECT_TRUE(target->GetComponent<Transform>()->Compare(source->GetComponent<Transform>()));
}
