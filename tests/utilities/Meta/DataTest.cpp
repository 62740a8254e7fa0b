#include "utilities/Meta/Registration.h"

#include "Components/Transform/Transform.h"
#include "engine/Component.h"
#include "engine/SpaceManager.h"
#include "platform/Dialog.h"
#include "support/Scoped.h"

#include <gtest/gtest.h>

namespace
{
struct Plain
{
    int value = 7;
};
struct Unnamed
{
};
}

META_REGISTER(Plain)
{
    DESCRIPTION("A plain record.");
}

TEST(MetaDataTest, TypesAreFoundByNameWithConstCut)
{
    EXPECT_EQ(Meta::FindData("Transform"), Meta::Get<Transform>());
    EXPECT_EQ(Meta::FindData("const Transform"), Meta::Get<Transform>());
    EXPECT_EQ(Meta::FindData("NoSuchType"), nullptr);
}

TEST(MetaDataTest, RegistrationRecordsNameSizeNamespaceAndHelpText)
{
    const Meta::Data* plain = Meta::Get<Plain>();
    EXPECT_EQ(plain->GetName(), "Plain");
    EXPECT_EQ(plain->m_Size, sizeof(Plain));
    EXPECT_EQ(plain->m_Description, "A plain record.");
    EXPECT_EQ(Meta::Get<Engine::SpaceManager>()->GetName(), "SpaceManager");
    EXPECT_EQ(Meta::Get<Engine::SpaceManager>()->m_Namespace, "Engine");
    EXPECT_EQ(Meta::Get<Transform>()->m_Description, "Holds transformation data for the object.");
}

TEST(MetaDataTest, PrimitiveTypesComeFirstInTheirOrderAndSizes)
{
    const std::vector<std::pair<const char*, unsigned>> expected = {
        {"int", 4},   {"unsigned", 4}, {"float", 4},   {"bool", 1},    {"double", 8},
        {"char", 1},  {"short", 2},    {"u_char", 1},  {"u_short", 2}, {"string", sizeof(std::string)}};
    const auto& types = Meta::AllTypes();
    ASSERT_GE(types.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
    {
        EXPECT_EQ(types[i]->GetName(), expected[i].first);
        EXPECT_EQ(types[i]->m_Size, expected[i].second);
        EXPECT_EQ(types[i]->GetId(), i);
        EXPECT_TRUE(types[i]->m_IsPrimitive);
    }
    EXPECT_EQ(Meta::FindData("string"), Meta::Get<std::string>());
}

TEST(MetaDataTest, IdsAreUniqueAndFollowRegistrationOrder)
{
    const auto& types = Meta::AllTypes();
    ASSERT_GE(types.size(), 2u);
    for (std::size_t i = 0; i < types.size(); ++i)
        EXPECT_EQ(types[i]->GetId(), types[0]->GetId() + i);
}

TEST(MetaDataTest, DerivationFollowsTheParentChainButNotTheTypeItself)
{
    const Meta::Data* transform = Meta::Get<Transform>();
    const Meta::Data* component = Meta::Get<Component>();
    EXPECT_TRUE(transform->IsDerivedFrom(component));
    EXPECT_FALSE(component->IsDerivedFrom(component));
    EXPECT_FALSE(component->IsDerivedFrom(transform));
}

TEST(MetaDataTest, NewMakesDefaultInstancesOnlyOfConcreteTypes)
{
    auto* plain = static_cast<Plain*>(Meta::Get<Plain>()->New());
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(plain->value, 7);
    Meta::Get<Plain>()->m_Info->Delete(plain);
    EXPECT_EQ(Meta::Get<Component>()->New(), nullptr);
    EXPECT_EQ(Meta::Get<Unnamed>()->New(), nullptr);
}

TEST(MetaDataTest, ParentingATypeToItselfIsReported)
{
    ScopedDialogPolicy ignore(Platform::DialogPolicy::Ignore);
    Meta::Data data;
    testing::internal::CaptureStderr();
    data.AddParent(&data);
    const std::string reported = testing::internal::GetCapturedStderr();
    EXPECT_NE(reported.find("Why are you parenting yourself?"), std::string::npos);
}
