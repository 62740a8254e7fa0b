// The registry's records: members, properties, methods, enums, constructors and help text.
#include "utilities/Meta/Registration.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
// Registered before its base below: the base is named only by address.
class Grandchild;

class Grandparent
{
public:
    virtual ~Grandparent() = default;
    int m_Shared = 1;
    int m_Deep = 2;
};

class Parent : public Grandparent
{
public:
    int m_Middle = 3;
};

class Grandchild : public Parent
{
public:
    int m_Shared = 10;
    int m_Position = 4;
    int Position = 5;
    int Team_m_Index = 6;

    int Add(int a, int b) { return a + b + m_Position; }
    int Twice(int a) const { return 2 * a; }
    static std::string Greet(const std::string& name) { return "Hello " + name; }
    void Poke() { ++m_Pokes; }
    int Scale(int a) { return a * 10; }
    float Scale(float a) { return a * 0.5f; }
    Grandchild* Self() { return this; }
    int GetLevel() const { return m_Level; }
    void SetLevel(int level) { m_Level = level * 2; }
    int GetFixed() const { return 42; }

    int m_Pokes = 0;
    int m_Level = 0;
};

int g_Volume = 3;
}

META_REGISTER(Grandchild)
{
    DERIVE(Parent);
    DESCRIPTION("The youngest.");
    MEMBER(m_Shared, "Shadows the grandparent's.");
    MEMBER(m_Position, "First of two.");
    MEMBER(Position, "Second of two.");
    MEMBER(Team_m_Index, "");
    HELP("First line.");
    HELP("Second line.");
    METHOD(Add);
    METHOD(Twice);
    METHOD(Greet);
    METHOD(Poke);
    METHOD(Self);
    OVERLOAD(Scale, 0, int (Self::*)(int));
    OVERLOAD(Scale, 1, float (Self::*)(float));
    PROPERTY(Level, GetLevel, SetLevel, "Doubled on the way in.");
    PROPERTY_GET(Fixed, GetFixed, "Never changes.");
    PROPERTY_STATIC(Volume, +[] { return g_Volume; }, +[](int v) { g_Volume = v; }, "Class-wide.");
    PROPERTY_NEW();
}

META_REGISTER(Parent)
{
    DERIVE(Grandparent);
    MEMBER(m_Middle, "");
}

META_REGISTER(Grandparent)
{
    MEMBER(m_Shared, "");
    MEMBER(m_Deep, "");
}

TEST(RegistryTest, MemberNamesLoseEverythingUpToTheirFirstPrefix)
{
    const Meta::Data* type = Meta::Get<Grandchild>();
    EXPECT_NE(type->m_Members.Find("Index"), nullptr);
    EXPECT_EQ(type->m_Members.Find("Team_m_Index"), nullptr);
    EXPECT_EQ(Meta::CutMemberName("Team_m_Index"), "Index");
    EXPECT_EQ(Meta::CutMemberName("m_Position"), "Position");
    EXPECT_EQ(Meta::CutMemberName("Plain"), "Plain");
}

TEST(RegistryTest, MemberAndPrefixedMemberOfOneNameCollideAndTheFirstStays)
{
    const Meta::Data* type = Meta::Get<Grandchild>();
    Meta::Member* position = type->FindMember("Position");
    ASSERT_NE(position, nullptr);
    EXPECT_EQ(position->m_Description, "First of two.");
    Grandchild object;
    EXPECT_EQ(*position->Get(&object).Get<int>(), 4);
}

TEST(RegistryTest, FindMemberClimbsTheChainButPrefersTheNearest)
{
    const Meta::Data* type = Meta::Get<Grandchild>();
    Grandchild object;
    Meta::Member* deep = type->FindMember("Deep");
    ASSERT_NE(deep, nullptr);
    EXPECT_EQ(*deep->Get(&object).Get<int>(), 2);
    Meta::Member* shared = type->FindMember("Shared");
    ASSERT_NE(shared, nullptr);
    EXPECT_EQ(*shared->Get(&object).Get<int>(), 10);
    EXPECT_EQ(type->FindMember("Nothing"), nullptr);
}

TEST(RegistryTest, ClassRegisteredBeforeItsBaseStillDerivesFromIt)
{
    const Meta::Data* child = Meta::Get<Grandchild>();
    EXPECT_TRUE(child->IsDerivedFrom(Meta::Get<Grandparent>()));
    EXPECT_EQ(child->m_Parent->GetName(), "Parent");
    EXPECT_NE(child->FindMember("Middle"), nullptr);
}

TEST(RegistryTest, PendingHelpTextGoesToTheNextRecordJoinedByLineEnds)
{
    const Meta::Data* type = Meta::Get<Grandchild>();
    EXPECT_EQ(type->FindMethod("Add")->m_Description, "First line.\nSecond line.");
    EXPECT_EQ(type->FindMethod("Twice")->m_Description, "");
    EXPECT_EQ(type->m_Description, "The youngest.");
}

TEST(RegistryTest, MembersSetCompareAndCopyInPlace)
{
    Meta::Member* level = Meta::Get<Grandchild>()->FindMember("Position");
    Grandchild a, b;
    const int seven = 7;
    level->Set(&a, &seven);
    EXPECT_EQ(a.m_Position, 7);
    EXPECT_FALSE(level->Compare(&a, &b));
    level->SetFromOther(&b, &a);
    EXPECT_TRUE(level->Compare(&a, &b));
    EXPECT_TRUE(level->m_Serialize);
    EXPECT_TRUE(level->m_Script);
    EXPECT_EQ(level->m_Type, Meta::FindData("int"));
}

TEST(RegistryTest, MemberWithACustomAccessorIsReportedAndStillUsed)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    Meta::MemberD_class<Grandchild, int> member("m_Pokes", &Grandchild::m_Pokes);
    int written = 0;
    member.SetSetter([&written](void*, const void* value) { written = *static_cast<const int*>(value); });
    Grandchild object;
    const int nine = 9;
    testing::internal::CaptureStderr();
    member.Set(&object, &nine);
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_EQ(written, 9);
    EXPECT_EQ(object.m_Pokes, 0);
    EXPECT_NE(reported.find("Members having a getter has been depricated.  Go bug rian and don't close this error "
                            "dialog box if he is there"),
              std::string::npos);
}

TEST(RegistryTest, MethodsAreCalledThroughAnys)
{
    const Meta::Data* type = Meta::Get<Grandchild>();
    Grandchild object;
    std::vector<Meta::Any> arguments = {Meta::Any::Make(2), Meta::Any::Make(3)};
    Meta::Any sum = type->FindMethod("Add")->Call(&object, arguments);
    ASSERT_NE(sum.Get<int>(), nullptr);
    EXPECT_EQ(*sum.Get<int>(), 2 + 3 + 4);

    std::vector<Meta::Any> one = {Meta::Any::Make(21)};
    const Grandchild& constant = object;
    EXPECT_EQ(*type->FindMethod("Twice")->Call(static_cast<const void*>(&constant), one).Get<int>(), 42);

    std::vector<Meta::Any> name = {Meta::Any::Make(std::string("Ember"))};
    EXPECT_EQ(*type->FindMethod("Greet")->Call(static_cast<void*>(nullptr), name).Get<std::string>(), "Hello Ember");

    EXPECT_TRUE(type->FindMethod("Poke")->Call(&object).IsEmpty());
    EXPECT_EQ(object.m_Pokes, 1);

    Meta::Any self = type->FindMethod("Self")->Call(&object);
    EXPECT_EQ(self.Get<Grandchild>(), &object);
    EXPECT_FALSE(self.Owns());
}

TEST(RegistryTest, CallWithTheWrongArgumentsGivesAnEmptyAny)
{
    const Meta::Data* type = Meta::Get<Grandchild>();
    Grandchild object;
    std::vector<Meta::Any> tooFew = {Meta::Any::Make(2)};
    EXPECT_TRUE(type->FindMethod("Add")->Call(&object, tooFew).IsEmpty());
    std::vector<Meta::Any> wrongType = {Meta::Any::Make(2.0f), Meta::Any::Make(3)};
    EXPECT_TRUE(type->FindMethod("Add")->Call(&object, wrongType).IsEmpty());
    std::vector<Meta::Any> one = {Meta::Any::Make(1)};
    EXPECT_TRUE(type->FindMethod("Add")->Call(static_cast<const void*>(&object), one).IsEmpty());
}

TEST(RegistryTest, OverloadsKeepEveryFormUnderOneName)
{
    const auto* forms = Meta::Get<Grandchild>()->FindOverloads("Scale");
    ASSERT_NE(forms, nullptr);
    ASSERT_EQ(forms->size(), 2u);
    Grandchild object;
    std::vector<Meta::Any> integer = {Meta::Any::Make(3)};
    std::vector<Meta::Any> real = {Meta::Any::Make(3.0f)};
    EXPECT_EQ(*(*forms)[0]->Call(&object, integer).Get<int>(), 30);
    EXPECT_EQ(*(*forms)[1]->Call(&object, real).Get<float>(), 1.5f);
    EXPECT_EQ(Meta::Get<Grandchild>()->FindMethod("Scale"), nullptr);
}

TEST(RegistryTest, PropertiesRunTheirSetters)
{
    Meta::Property* level = Meta::Get<Grandchild>()->FindProperty("Level");
    ASSERT_NE(level, nullptr);
    Grandchild a, b;
    const int five = 5;
    level->Set(&a, &five);
    EXPECT_EQ(a.m_Level, 10);
    EXPECT_EQ(*level->Get(&a).Get<int>(), 10);
    EXPECT_TRUE(level->CanSet());
    EXPECT_FALSE(level->Compare(&a, &b));
    level->SetFromOther(&b, &a);
    EXPECT_EQ(b.m_Level, 20);
}

TEST(RegistryTest, ReadOnlyPropertyReportsAWriteAndNeverComparesEqual)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    Meta::Property* fixed = Meta::Get<Grandchild>()->FindProperty("Fixed");
    ASSERT_NE(fixed, nullptr);
    Grandchild a;
    EXPECT_FALSE(fixed->CanSet());
    EXPECT_EQ(*fixed->Get(&a).Get<int>(), 42);
    EXPECT_FALSE(fixed->Compare(&a, &a));
    const int one = 1;
    testing::internal::CaptureStderr();
    fixed->Set(&a, &one);
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("This property is readonly! \nProperty: Fixed\nClass: Grandchild"), std::string::npos);
    EXPECT_NE(reported.find("FATAL"), std::string::npos);
}

TEST(RegistryTest, StaticPropertyBelongsToTheClass)
{
    Meta::Property* volume = Meta::Get<Grandchild>()->FindProperty("Volume");
    ASSERT_NE(volume, nullptr);
    const int eight = 8;
    volume->Set(nullptr, &eight);
    EXPECT_EQ(g_Volume, 8);
    EXPECT_EQ(*volume->Get(nullptr).Get<int>(), 8);
}

TEST(RegistryTest, NewPropertyHookIsRegisteredUnderItsName)
{
    Meta::Property* hook = Meta::Get<Grandchild>()->FindProperty("Lua_NewProperty");
    ASSERT_NE(hook, nullptr);
    EXPECT_FALSE(hook->CanSet());
    EXPECT_TRUE(hook->Get(nullptr).IsEmpty());
}

namespace
{
enum class Fruit
{
    Apple = 1,
    Pear = 5
};
}

META_REGISTER_ENUM(Fruit, {{"Apple", 1}, {"Pear", 5}});

TEST(RegistryTest, EnumValuesAreFoundByNameAndNamesByValue)
{
    EXPECT_EQ(Meta::EnumMeta::GetEnum("Fruit", "Pear"), 5);
    EXPECT_EQ(Meta::EnumMeta::GetEnumName("Fruit", 1), "Apple");
    EXPECT_TRUE(Meta::FindData("Fruit")->m_IsEnum);
    EXPECT_EQ(Meta::FindData("Fruit")->m_Size, sizeof(int));
}

TEST(RegistryTest, UnknownEnumTypeAndNameAreReported)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Meta::EnumMeta::GetEnum("Vegetable", "Leek"), 0);
    EXPECT_EQ(Meta::EnumMeta::GetEnum("Fruit", "Plum"), 0);
    EXPECT_EQ(Meta::EnumMeta::GetEnumName("Fruit", 9), "");
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("Enum type can not be found!\nEnum Type: Vegetable"), std::string::npos);
    EXPECT_NE(reported.find("Enum can not be found!\nEnum Type: Fruit\nName: Plum"), std::string::npos);
    EXPECT_NE(reported.find("Enum can not be found!\nEnum Type: Fruit\nName: 9"), std::string::npos);
}
