#include "utilities/Meta/Registration.h"

#include "Components/Transform/Transform.h"
#include "engine/Component.h"
#include "engine/SpaceManager.h"
#include "platform/Dialog.h"
#include "support/ReportCapture.h"
#include "support/Scoped.h"
#include "utilities/Serialization/Serializer.h"

#include <gtest/gtest.h>

#include <vector>

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

namespace
{
// A class nobody registers, used as the type of a saved member.
struct NoTextForm
{
    int hidden = 0;
};

// Saves a member whose type has no text form, and one that is fine.
struct SavesTheUnsavable
{
    NoTextForm m_Broken;
    std::vector<NoTextForm> m_AlsoBroken;
    int m_Fine = 1;
};
}

META_REGISTER(SavesTheUnsavable)
{
    MEMBER(m_Broken, "");
    MEMBER(m_AlsoBroken, "");
    MEMBER(m_Fine, "");
}

TEST(DataTest, SavedMemberOfATypeWithNoTextFormIsReportedAndNoLongerSaved)
{
    ReportCapture reports;
    Meta::CheckTextForms();
    const Meta::Data* type = Meta::Get<SavesTheUnsavable>();
    EXPECT_FALSE(type->FindMember("Broken")->m_Serialize);
    EXPECT_FALSE(type->FindMember("AlsoBroken")->m_Serialize);
    EXPECT_TRUE(type->FindMember("Fine")->m_Serialize);
    // One report names them all.
    EXPECT_TRUE(reports.Holds("The member SavesTheUnsavable.Broken is of an unregistered type"));
    EXPECT_TRUE(reports.Holds("The member SavesTheUnsavable.AlsoBroken is of an unregistered type"));

    // The object's block holds only what can be read back.
    SavesTheUnsavable object;
    Util::Serializer serializer;
    serializer.OpenText("");
    serializer.WriteObjectBlock(type, &object);
    EXPECT_EQ(serializer.GetText(), "\n{\n  Fine 1\n}");
}

TEST(DataTest, EveryRegisteredSavedValueOfTheEngineHasATextForm)
{
    ReportCapture reports;
    Meta::CheckTextForms();
    EXPECT_EQ(reports.Text().find("Transform."), std::string::npos);
    EXPECT_EQ(reports.Text().find("Settings."), std::string::npos);
    EXPECT_TRUE(Meta::Get<Transform>()->FindMember("Position")->m_Serialize);
}
