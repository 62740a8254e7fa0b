// How the script reference sorts the registered classes into its seven groups.
#include "utilities/DocumentationGen/DocumentationGroups.h"

#include "utilities/Meta/Data.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace DocGen;

namespace
{
int GroupOfName(const char* name, const SpaceSystemTypes& spaceSystems = {})
{
    const Meta::Data* type = Meta::FindData(name);
    EXPECT_NE(type, nullptr) << name;
    return type ? GroupOf(*type, spaceSystems) : -2;
}
}

TEST(DocumentationGroupsTest, TheSevenGroupsComeInTheirFixedOrder)
{
    EXPECT_EQ(GroupNames(), (std::vector<std::string>{"Components", "Events", "Space Systems", "Systems", "Math",
                                                      "Enumerations", "Other"}));
}

TEST(DocumentationGroupsTest, EachClassGoesIntoTheGroupOfTheFirstTestItPasses)
{
    EXPECT_EQ(GroupOfName("Transform"), 0);
    EXPECT_EQ(GroupOfName("Mesh"), 0);
    EXPECT_EQ(GroupOfName("WindowResize"), 1);
    EXPECT_EQ(GroupOfName("FrameRateController"), 3);
    EXPECT_EQ(GroupOfName("Vector3D"), 4);
    EXPECT_EQ(GroupOfName("ScreenMode"), 5);
    EXPECT_EQ(GroupOfName("GameObject"), 6);
}

TEST(DocumentationGroupsTest, SystemsFiledInASpaceAreSpaceSystems)
{
    const Meta::Data* sound = Meta::FindData("SoundSpace");
    ASSERT_NE(sound, nullptr);
    EXPECT_EQ(GroupOf(*sound, {}), 3);
    EXPECT_EQ(GroupOf(*sound, {sound}), 2);
}

TEST(DocumentationGroupsTest, LuaComponentAndTheBuiltInValueTypesAreLeftOut)
{
    EXPECT_EQ(GroupOfName("LuaComponent"), -1);
    EXPECT_EQ(GroupOfName("int"), -1);
    EXPECT_EQ(GroupOfName("string"), -1);
}

TEST(DocumentationGroupsTest, EveryGroupIsSortedByName)
{
    const std::vector<DocumentationGroup> groups = MakeGroups(Meta::AllTypes(), {});
    ASSERT_EQ(groups.size(), 7u);
    for (const DocumentationGroup& group : groups)
        EXPECT_TRUE(std::is_sorted(group.m_Classes.begin(), group.m_Classes.end(),
                                   [](const Meta::Data* a, const Meta::Data* b) { return a->m_Name < b->m_Name; }))
            << group.m_Name;
    EXPECT_FALSE(groups[0].m_Classes.empty());
}
