// The reader and writer of component lists, the text of archetype files and room
// objects: comments, removals, partial blocks, and writing against a reference.
#include "engine/ArchetypeTestSupport.h"

#include "Components/Hierarchy/Hierarchy.h"
#include "utilities/Serialization/Serializer.h"

#include <memory>

namespace
{
// Reads `text` into `object`; gives what the reports printed.
std::string ReadInto(GameObject& object, const std::string& text, Util::Serializer* reader = nullptr)
{
    Util::Serializer own;
    Util::Serializer& serializer = reader ? *reader : own;
    serializer.OpenText(text, "Test.txt");
    ReportCapture reports;
    Engine::ArchetypeManager::AddComponentsFromStream(&object, serializer);
    return reports.Text();
}

std::string Names(const GameObject& object)
{
    std::string names;
    for (const Component* component : object.m_Components)
        names += (names.empty() ? "" : " ") + component->GetName();
    return names;
}

// `object` written as a component list against `reference`.
std::string Written(const GameObject& object, const GameObject* reference)
{
    Util::Serializer writer;
    writer.OpenText("");
    Engine::ArchetypeManager::WriteObject(writer, &object, reference);
    return writer.GetText();
}
}

TEST(ArchetypeTextTest, ABlockForAComponentTheObjectHasChangesOnlyTheNamedMembers)
{
    GameObject object;
    auto* transform = static_cast<Transform*>(object.AddComponentUninitialized("Transform"));
    transform->m_Scale = Math::Vector3D(2, 2, 2);
    transform->m_Offset = Math::Vector3D(1, 0, 0);

    EXPECT_EQ(ReadInto(object, "Transform\n{\n  Offset { 0 5 0 }\n}\n"), "");

    ASSERT_EQ(object.m_Components.size(), 1u);
    EXPECT_EQ(object.GetComponent<Transform>(), transform);
    EXPECT_FLOAT_EQ(transform->m_Offset.y, 5.0f);
    EXPECT_FLOAT_EQ(transform->m_Offset.x, 0.0f);
    EXPECT_FLOAT_EQ(transform->m_Scale.x, 2.0f);
}

TEST(ArchetypeTextTest, ANewComponentStartsFromItsDefaultsAndIsAppendedInFileOrder)
{
    GameObject object;
    object.AddComponentUninitialized("Hierarchy");
    EXPECT_EQ(ReadInto(object, "Transform\n{\n  Scale { 3 3 3 }\n}\nHierarchy\n{\n  Children\n  {\n    \"Arm\"\n  }\n}\n"),
              "");

    EXPECT_EQ(Names(object), "Hierarchy Transform");
    EXPECT_FLOAT_EQ(object.GetComponent<Transform>()->m_Scale.z, 3.0f);
    EXPECT_FLOAT_EQ(object.GetComponent<Transform>()->m_Position.x, 0.0f);
    EXPECT_EQ(object.GetComponent<Hierarchy>()->m_Children, std::vector<std::string>{"Arm"});
    EXPECT_EQ(object.GetComponent<Transform>()->m_Owner, &object);
}

TEST(ArchetypeTextTest, TildeRemovesTheNamedComponentAndReadsOnPastItsBraces)
{
    GameObject object;
    object.AddComponentUninitialized("Transform");
    object.AddComponentUninitialized("Hierarchy");
    EXPECT_EQ(ReadInto(object, "~Transform\n{\n}\nHierarchy\n{\n}\n~Hierarchy{\n}\n"), "");
    EXPECT_EQ(Names(object), "");
}

TEST(ArchetypeTextTest, TildeOnAnObjectWithoutTheComponentOnlyConsumesItsBraces)
{
    GameObject object;
    object.AddComponentUninitialized("Hierarchy");
    EXPECT_EQ(ReadInto(object, "~Transform\n{\n}\nHierarchy\n{\n  Children { \"Leg\" }\n}\n"), "");

    EXPECT_EQ(Names(object), "Hierarchy");
    EXPECT_EQ(object.GetComponent<Hierarchy>()->m_Children, std::vector<std::string>{"Leg"});
}

TEST(ArchetypeTextTest, ACommentAsTheLastLineEndsTheReadCleanly)
{
    GameObject object;
    EXPECT_EQ(ReadInto(object, "Transform\n{\n  Scale { 2 2 2 }\n}\n// the end, with no line feed"), "");
    EXPECT_EQ(Names(object), "Transform");
    EXPECT_FLOAT_EQ(object.GetComponent<Transform>()->m_Scale.x, 2.0f);
}

TEST(ArchetypeTextTest, ACommentBehindANameRunsToTheLineEnd)
{
    GameObject object;
    EXPECT_EQ(ReadInto(object, "// a crate\nTransform// the body Hierarchy\n{\n  Scale { 4 4 4 } // big\n}\n"), "");
    EXPECT_EQ(Names(object), "Transform");
    EXPECT_FLOAT_EQ(object.GetComponent<Transform>()->m_Scale.y, 4.0f);
}

TEST(ArchetypeTextTest, AClosingBraceEndsTheListAndIsLeftForTheCaller)
{
    GameObject object;
    Util::Serializer reader;
    EXPECT_EQ(ReadInto(object, "Transform\n{\n}\n}Hierarchy\n{\n}\n", &reader), "");

    EXPECT_EQ(Names(object), "Transform");
    std::string next;
    reader.m_Stream >> next;
    EXPECT_EQ(next, "}Hierarchy");
}

TEST(ArchetypeTextTest, AnUnknownComponentIsReportedWithTheFileAndSkipped)
{
    GameObject object;
    const std::string reports = ReadInto(object, "Wobbler\n{\n  Speed { 1 2 3 }\n}\nTransform\n{\n}\n");
    EXPECT_NE(reports.find("This component does not exist: Wobbler\nFile:  Test.txt"), std::string::npos) << reports;
    EXPECT_EQ(Names(object), "Transform");
}

TEST(ArchetypeTextTest, AnUnknownComponentUnderTolerantReadIsSkippedWithoutAReport)
{
    GameObject object;
    Util::SetTolerantRead(true);
    const std::string reports = ReadInto(object, "Wobbler\n{\n  Speed 3\n}\nVector3D\n{\n}\nTransform\n{\n}\n");
    Util::SetTolerantRead(false);
    EXPECT_EQ(reports, "");
    EXPECT_EQ(Names(object), "Transform");
}

TEST(ArchetypeTextTest, TypesThatAreNoComponentsAreUnknownComponents)
{
    GameObject object;
    for (const std::string name : {"Component", "LuaComponent", "Vector3D", "GameObject"})
    {
        const std::string reports = ReadInto(object, name + "\n{\n}\n");
        EXPECT_NE(reports.find("This component does not exist: " + name), std::string::npos) << reports;
    }
    EXPECT_TRUE(object.m_Components.empty());
}

TEST(ArchetypeTextTest, WithoutAReferenceEveryComponentIsWrittenWithItsDifferencesFromDefaults)
{
    GameObject object;
    static_cast<Transform*>(object.AddComponentUninitialized("Transform"))->m_Scale = Math::Vector3D(2, 1, 1);
    object.AddComponentUninitialized("Hierarchy");

    EXPECT_EQ(Written(object, nullptr), "Transform \n{\n  Scale { 2 1 1 }\n}\nHierarchy \n{\n}\n");
}

TEST(ArchetypeTextTest, AgainstItsArchetypeAnObjectWritesItsChangesAndRemovalsAndReadsBackTheSame)
{
    GameObject archetype;
    archetype.AddComponentUninitialized("Transform");
    archetype.AddComponentUninitialized("Hierarchy");
    std::unique_ptr<GameObject> instance(archetype.Clone());
    instance->GetComponent<Transform>()->m_Position = Math::Point3D(1, 2, 3);
    instance->RemoveComponent(instance->GetComponent<Hierarchy>());

    const std::string text = Written(*instance, &archetype);
    EXPECT_EQ(text, "Transform \n{\n  Position { 1 2 3 }\n}\n~Hierarchy\n{\n}\n");

    std::unique_ptr<GameObject> again(archetype.Clone());
    EXPECT_EQ(ReadInto(*again, text), "");
    EXPECT_EQ(Names(*again), "Transform");
    EXPECT_FLOAT_EQ(again->GetComponent<Transform>()->m_Position.z, 3.0f);
    EXPECT_EQ(Written(archetype, &archetype), "");
}

TEST_F(ArchetypeFilesTest, ScriptComponentBlocksAreReadIntoTheirVariablesAndWrittenAsDifferences)
{
    WriteComponent("Glow", "--[[!\nfloat Brightness 1\nVector3D Tint { 1 1 1 }\n]]\n");
    Start();
    GameObject object;
    EXPECT_EQ(ReadInto(object, "Glow\n{\n  Tint { 1 0.5 0 }\n}\nGlow\n{\n  Brightness 6\n}\n"), "");

    ASSERT_EQ(Names(object), "Glow");
    auto* glow = static_cast<LuaComponent*>(object.GetComponent("Glow"));
    EXPECT_FLOAT_EQ(*glow->GetAny("Brightness").Get<float>(), 6.0f);
    EXPECT_FLOAT_EQ(glow->GetAny("Tint").Get<Math::Vector3D>()->y, 0.5f);
    EXPECT_EQ(Written(object, nullptr), "Glow \n{\n  Brightness 6\n  Tint { 1 0.5 0 }\n}\n");
    EXPECT_EQ(ReadInto(object, "~Glow\n{\n}\n"), "");
    EXPECT_TRUE(object.m_Components.empty());
}
