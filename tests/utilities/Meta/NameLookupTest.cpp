// Look-ups by name in the registry build no strings: scripts and files ask by
// name many times a frame.
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"
#include "utilities/Meta/Registration.h"

#include "support/AllocationCounter.h"

#include <gtest/gtest.h>

#include <string_view>

namespace
{
// A type whose name and members' names are too long for a short-string buffer,
// so that building a std::string of any of them would allocate.
struct RegisteredWithQuiteALongTypeName
{
    int m_AMemberWithQuiteALongName = 0;
    int GetAPropertyWithQuiteALongName() const { return 1; }
    void SetAPropertyWithQuiteALongName(int) {}
    int AMethodWithQuiteALongName() const { return 2; }
};
}

META_REGISTER(RegisteredWithQuiteALongTypeName)
{
    MEMBER(m_AMemberWithQuiteALongName, "");
    PROPERTY(APropertyWithQuiteALongName, GetAPropertyWithQuiteALongName, SetAPropertyWithQuiteALongName, "");
    METHOD(AMethodWithQuiteALongName);
}

TEST(NameLookupTest, FindDataByNameAllocatesNothing)
{
    constexpr std::string_view name = "RegisteredWithQuiteALongTypeName";
    constexpr std::string_view constName = "const RegisteredWithQuiteALongTypeName";
    const AllocationCount count;
    Meta::Data* found = Meta::FindData(name);
    Meta::Data* foundConst = Meta::FindData(constName);
    Meta::Data* missing = Meta::FindData("NoTypeIsRegisteredUnderThisLongName");
    EXPECT_EQ(count.Since(), 0u);
    EXPECT_EQ(found, Meta::Get<RegisteredWithQuiteALongTypeName>());
    EXPECT_EQ(foundConst, found);
    EXPECT_EQ(missing, nullptr);
}

TEST(NameLookupTest, FindingMembersPropertiesAndMethodsAllocatesNothing)
{
    const Meta::Data* type = Meta::Get<RegisteredWithQuiteALongTypeName>();
    const AllocationCount count;
    const Meta::Member* member = type->FindMember("AMemberWithQuiteALongName");
    const Meta::Property* property = type->FindProperty("APropertyWithQuiteALongName");
    const Meta::Method* method = type->FindMethod("AMethodWithQuiteALongName");
    const Meta::Member* missing = type->FindMember("NoMemberIsRegisteredUnderThisName");
    EXPECT_EQ(count.Since(), 0u);
    EXPECT_NE(member, nullptr);
    EXPECT_NE(property, nullptr);
    EXPECT_NE(method, nullptr);
    EXPECT_EQ(missing, nullptr);
}

TEST(NameLookupTest, EnumValueByNameAllocatesNothing)
{
    Meta::EnumMeta::Register("AnEnumerationWithQuiteALongName", {{"TheFirstValueWithALongName", 7}});
    const AllocationCount count;
    const int value = Meta::EnumMeta::GetEnum("AnEnumerationWithQuiteALongName", "TheFirstValueWithALongName");
    EXPECT_EQ(count.Since(), 0u);
    EXPECT_EQ(value, 7);
}

TEST(NameLookupTest, QuaternionOperatorsAreFoundUnderTheNamesScriptsAskFor)
{
    const Meta::Data* type = Meta::Get<Math::Quaternion>();
    Math::Quaternion a(1, 2, 3, 4);
    Math::Quaternion b(0.5f, 0.5f, 0.5f, 0.5f);
    std::vector<Meta::Any> one{Meta::AnyRef::To(b)};
    std::vector<Meta::Any> none;

    const Meta::Method* subtract = type->FindMethod("operator-");
    ASSERT_NE(subtract, nullptr);
    EXPECT_EQ(*subtract->Call(&a, one).Get<Math::Quaternion>(), a - b);

    const Meta::Method* negate = type->FindMethod("operator-()");
    ASSERT_NE(negate, nullptr);
    EXPECT_EQ(*negate->Call(&a, none).Get<Math::Quaternion>(), -a);

    // The overload lists stay as they were.
    const auto* minus = type->FindOverloads("operator-");
    ASSERT_NE(minus, nullptr);
    EXPECT_EQ(minus->size(), 2u);
    const auto* times = type->FindOverloads("operator*");
    ASSERT_NE(times, nullptr);
    EXPECT_EQ(times->size(), 2u);
}

TEST(NameLookupTest, VectorOperatorsAreFoundUnderTheirSpellings)
{
    const Meta::Data* type = Meta::Get<Math::Vector3D>();
    for (const char* name : {"operator+", "operator-", "operator*", "operator/", "operator==", "operator<",
                             "operator<=", "operator="})
        EXPECT_NE(type->FindMethod(name), nullptr) << name;
}
