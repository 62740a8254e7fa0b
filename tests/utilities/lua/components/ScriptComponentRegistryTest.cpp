// Script component types made at start-up from the scripts' variable blocks,
// with every malformed block reported and the other components still made.
#include "utilities/lua/components/ScriptComponentTestSupport.h"

#include "support/ReportCapture.h"
#include "utilities/Meta/Member.h"
#include "utilities/lua/components/ScriptComponentType.h"

namespace
{
class ScriptComponentRegistryTest : public ScriptComponentTest
{
protected:
    std::string StartAndReport()
    {
        ReportCapture reports;
        Start(false);
        return reports.Text();
    }
    LuaComponent* Prototype(const std::string& name) { return m_Lua.FindComponentPrototype(name); }
};
}

TEST_F(ScriptComponentRegistryTest, ScriptWithoutAVariableBlockHasNoVariablesAndIsStillAComponentType)
{
    WriteComponent("Plain", "function Initialize() end\n");
    Start();
    ASSERT_NE(Prototype("Plain"), nullptr);
    EXPECT_TRUE(Prototype("Plain")->m_Values.empty());
    GameObject* object = MakeObject();
    EXPECT_NE(object->AddComponent("Plain"), nullptr);
}

TEST_F(ScriptComponentRegistryTest, TokensOnSeparateLinesOrOnOneLineMeanTheSame)
{
    WriteComponent("Lines", "--[[!\nfloat Speed 2.5\nint Count 3\n]]\n");
    WriteComponent("OneLine", "--[[! float\n Speed\n 2.5 int Count 3 ]]\n");
    Start();
    for (const char* name : {"Lines", "OneLine"})
    {
        LuaComponent* prototype = Prototype(name);
        ASSERT_NE(prototype, nullptr) << name;
        ASSERT_EQ(prototype->m_Values.size(), 2u) << name;
        EXPECT_FLOAT_EQ(*prototype->GetAny("Speed").Get<float>(), 2.5f) << name;
        EXPECT_EQ(*prototype->GetAny("Count").Get<int>(), 3) << name;
    }
}

TEST_F(ScriptComponentRegistryTest, DefaultTooShortBeforeTheEndMarkerGivesTheFailedDefaultMessage)
{
    const std::string path = WriteComponent("Short", "--[[!\nVector3D Axis { 0 1 ]]\n");
    const std::string reports = StartAndReport();
    EXPECT_NE(reports.find("Failed to deserialize from file.  Wrong default value given.\nFile: " + path +
                           "\nVariable: Axis\n"),
              std::string::npos)
        << reports;
    EXPECT_NE(Prototype("Short"), nullptr);
}

TEST_F(ScriptComponentRegistryTest, UnknownTypeIsReportedAndTheOtherVariablesAndComponentsStand)
{
    const std::string path = WriteComponent("Odd", "--[[!\nWidget Thing 5\nfloat Speed 1\n]]\n");
    WriteComponent("Fine", "--[[!\nfloat Speed 4\n]]\n");
    const std::string reports = StartAndReport();
    EXPECT_NE(reports.find("Widget is not a data type or is not registered!\nFile: " + path), std::string::npos)
        << reports;
    ASSERT_NE(Prototype("Odd"), nullptr);
    EXPECT_FLOAT_EQ(*Prototype("Odd")->GetAny("Speed").Get<float>(), 1.0f);
    ASSERT_NE(Prototype("Fine"), nullptr);
    EXPECT_FLOAT_EQ(*Prototype("Fine")->GetAny("Speed").Get<float>(), 4.0f);
}

TEST_F(ScriptComponentRegistryTest, BlockWithoutItsEndMarkerIsReported)
{
    const std::string path = WriteComponent("Open", "--[[!\nfloat Speed 1\n");
    const std::string reports = StartAndReport();
    EXPECT_NE(reports.find(path + " did not contain the end to the variable block."), std::string::npos) << reports;
    EXPECT_NE(Prototype("Open"), nullptr);
}

TEST_F(ScriptComponentRegistryTest, DependencyWithoutANameIsReported)
{
    const std::string path = WriteComponent("Needy", "--[[!\nDependency\n");
    const std::string reports = StartAndReport();
    EXPECT_NE(reports.find("No name given for the dependency!\nFile: " + path), std::string::npos) << reports;
}

TEST_F(ScriptComponentRegistryTest, DependencyIsRecordedAndAnObjectWithoutItStillTakesTheComponent)
{
    WriteComponent("Follower", "--[[!\nDependency Hierarchy\nfloat Gap 1\n]]\n");
    Start();
    ASSERT_NE(Prototype("Follower"), nullptr);
    EXPECT_EQ(Prototype("Follower")->m_VariableInfo->dependencies, std::vector<std::string>{"Hierarchy"});
    GameObject* object = MakeObject();
    EXPECT_NE(object->AddComponent("Follower"), nullptr);
}

TEST_F(ScriptComponentRegistryTest, FunctionsOfTheScriptAreNotedInOrder)
{
    WriteComponent("Noted", "function Initialize() end\nlocal function helper() end\nfunction Foo.Bar(x) end\n");
    Start();
    ASSERT_NE(Prototype("Noted"), nullptr);
    EXPECT_EQ(Prototype("Noted")->m_VariableInfo->functions,
              (std::vector<std::string>{"Initialize", "helper", "Foo.Bar"}));
}

TEST_F(ScriptComponentRegistryTest, EveryVariableIsAMemberOfTheScriptComponentTypeRecord)
{
    WriteComponent("Member", "--[[!\nfloat RegistryProbeSpeed 1\n]]\n");
    Start();
    const Meta::Member* member = Meta::Get<LuaComponent>()->m_Members.Find("RegistryProbeSpeed");
    ASSERT_NE(member, nullptr);
    EXPECT_TRUE(member->m_Serialize);
    EXPECT_TRUE(member->m_Flag);
    EXPECT_EQ(member->m_Type, Meta::Get<float>());
}

TEST_F(ScriptComponentRegistryTest, UnknownComponentNameGivesItsDialogAndNoComponent)
{
    Start();
    GameObject* object = MakeObject();
    ReportCapture reports;
    EXPECT_EQ(object->AddComponent("NoSuchScript"), nullptr);
    EXPECT_TRUE(reports.Holds("NoSuchScript is not a component!"));
}
