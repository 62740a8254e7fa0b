#include "utilities/Serialization/Serializer.h"

#include "Components/Transform/Transform.h"
#include "support/ReportCapture.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/TextSamples.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
// Reads one block of `text` into `object`; gives what is left of the text.
template <class T>
std::string ReadInto(T& object, const std::string& text, bool* failed = nullptr)
{
    Util::Serializer serializer;
    serializer.OpenText(text, "Sample.txt");
    serializer.ReadObject(object.GetMeta(), &object);
    if (failed)
        *failed = serializer.Failed();
    serializer.m_Stream.clear();
    std::string rest;
    std::getline(serializer.m_Stream, rest, '\0');
    return rest;
}

std::string WriteComponent(const Component& component, const Component* other, bool force = false,
                           bool isNew = false, unsigned depth = 0)
{
    Util::Serializer serializer;
    serializer.OpenText("");
    serializer.m_Depth = depth;
    component.Write(serializer, component.GetName(), other, force, isNew);
    return serializer.GetText();
}

// Sets the process-wide tolerant-read flag for one scope.
class ScopedTolerantRead
{
public:
    ScopedTolerantRead() { Util::SetTolerantRead(true); }
    ~ScopedTolerantRead() { Util::SetTolerantRead(false); }
};

AllForms EveryFormChanged()
{
    AllForms forms;
    forms.m_Int = -12;
    forms.m_Unsigned = 3000000000u;
    forms.m_Short = -300;
    forms.m_UShort = 60000;
    forms.m_Float = 0.375f;
    forms.m_Double = -1.5;
    forms.m_Bool = true;
    forms.m_Char = 'x';
    forms.m_UChar = 'y';
    forms.m_Text = "some words\nand a line";
    forms.m_Mode = SampleMode::Multiply;
    forms.m_Vector2 = {1, 2};
    forms.m_Vector3 = {1, 2.5f, -3};
    forms.m_Vector4 = {1, 2, 3, 4};
    forms.m_Point2 = {-1, -2};
    forms.m_Point3 = {0.5f, 0.25f, 0.125f};
    forms.m_Point4 = {5, 6, 7, 8};
    forms.m_Rotation = {0, 1, 0, 0};
    forms.m_Tint = {1, 0, 1, 1};
    forms.m_PairTest = {5, "five"};
    forms.m_Sizes = {1, 2, 3};
    forms.m_Names = {"a", "b c"};
    forms.m_Weights = {0.5f};
    forms.m_Modes = {SampleMode::Additive, SampleMode::Opaque};
    forms.m_Grid = {{1}, {}, {2, 3}};
    forms.m_Ids = {4, 5};
    forms.m_Words = {"w", "w"};
    forms.m_Flags = {1, 2, 3};
    forms.m_Scores = {{"red", 5}, {"blue", 7}};
    forms.m_Samples = {{1, 0.5f}, {1, 0.25f}};
    forms.m_Places = {{"home", {1, 2, 3}}};
    forms.m_Inner.m_Count = 8;
    forms.m_Inner.m_Label = "deep";
    forms.m_Inners.resize(2);
    forms.m_Inners[0].m_Offset = {3, 4};
    forms.m_Radius = 2.5f;
    return forms;
}
}

TEST(ObjectBlocksTest, EmptyBlockChangesNoMember)
{
    Transform transform;
    transform.m_Position = Math::Point3D(1, 2, 3);
    EXPECT_EQ(ReadInto(transform, "Transform { }\nNext"), "\nNext");
    EXPECT_EQ(transform.m_Position, Math::Point3D(1, 2, 3));
}

TEST(ObjectBlocksTest, MemberLinesAreReadByName)
{
    Transform transform;
    ReadInto(transform, "Transform\n{\n  Position { 1 2.5 -3 }\n  Scale { 2 2 2 }\n}\n");
    EXPECT_EQ(transform.m_Position, Math::Point3D(1, 2.5f, -3));
    EXPECT_EQ(transform.m_Scale, Math::Vector3D(2, 2, 2));
    EXPECT_EQ(transform.m_Offset, Math::Vector3D());
}

TEST(ObjectBlocksTest, NoBlockAtAllReadsNothing)
{
    Util::Serializer serializer;
    serializer.OpenText("   ");
    Transform transform;
    EXPECT_FALSE(serializer.ReadObject(transform.GetMeta(), &transform));
}

TEST(ObjectBlocksTest, CommentLineBetweenMembersIsSkipped)
{
    AllForms forms;
    ReadInto(forms, "{\n  Int 4\n  // Float 9 is only a comment\n  Short 2\n}");
    EXPECT_EQ(forms.m_Int, 4);
    EXPECT_EQ(forms.m_Float, 0.0f);
    EXPECT_EQ(forms.m_Short, 2);
}

TEST(ObjectBlocksTest, CommentAfterAValueOnTheSameLineIsSkipped)
{
    AllForms forms;
    ReadInto(forms, "{\n  Int 4 // Float 9\n  Short 2 //no space\n}");
    EXPECT_EQ(forms.m_Int, 4);
    EXPECT_EQ(forms.m_Float, 0.0f);
    EXPECT_EQ(forms.m_Short, 2);
}

TEST(ObjectBlocksTest, UnknownMemberIsReportedAndItsValueSkipped)
{
    ReportCapture reports;
    AllForms forms;
    ReadInto(forms, "{\n  Bogus { 1 2 }\n  Int 4\n}");
    EXPECT_EQ(forms.m_Int, 4);
    EXPECT_TRUE(reports.Holds("AllForms does not have a member named Bogus\nFile:  Sample.txt"));
    EXPECT_TRUE(reports.Holds("Util::Serializer::ReadObject"));
}

TEST(ObjectBlocksTest, UnknownMemberUnderTheTolerantFlagWithABlockValueIsSkippedWhole)
{
    ScopedTolerantRead tolerant;
    AllForms forms;
    ReadInto(forms, "{\n  Gone\n  {\n    Inner { 1 }\n    Text \"x\"\n  }\n  Int 4\n}");
    EXPECT_EQ(forms.m_Int, 4);
    EXPECT_EQ(forms.m_Text, "");
}

TEST(ObjectBlocksTest, UnknownMemberUnderTheTolerantFlagWithAStringValueIsSkippedWhole)
{
    ScopedTolerantRead tolerant;
    AllForms forms;
    ReadInto(forms, "{\n  Gone \"Int 7 } still the string\"\n  Int 4\n}");
    EXPECT_EQ(forms.m_Int, 4);
}

TEST(ObjectBlocksTest, UnknownMemberUnderTheTolerantFlagWithAPlainValueIsSkippedWhole)
{
    ScopedTolerantRead tolerant;
    AllForms forms;
    ReadInto(forms, "{\n  Gone 2.5e3\n  Int 4\n}");
    EXPECT_EQ(forms.m_Int, 4);
}

TEST(ObjectBlocksTest, QuotedBraceInAnUnknownPlainStringIsReadAsText)
{
    ScopedTolerantRead tolerant;
    AllForms forms;
    EXPECT_EQ(ReadInto(forms, "{\n  Gone \"}\"\n  Int 4\n}\nAfter"), "\nAfter");
    EXPECT_EQ(forms.m_Int, 4);
}

TEST(ObjectBlocksTest, DoubleBraceClosesTheInnerBlockAndGivesTheSecondToTheOuter)
{
    AllForms forms;
    const std::string rest = ReadInto(forms, "{\n  Inner\n  {\n    Count 3\n  }}\n  Int 9\n}\n");
    EXPECT_EQ(forms.m_Inner.m_Count, 3);
    EXPECT_EQ(forms.m_Int, 0);
    EXPECT_EQ(rest, "\n  Int 9\n}\n");
}

TEST(ObjectBlocksTest, ClosingBraceGluedToANumberClosesTheBlock)
{
    AllForms forms;
    EXPECT_EQ(ReadInto(forms, "{ Float 2.5}\n Int 3 }"), "\n Int 3 }");
    EXPECT_FLOAT_EQ(forms.m_Float, 2.5f);
    EXPECT_EQ(forms.m_Int, 0);
}

TEST(ObjectBlocksTest, PropertyIsSetThroughItsSetter)
{
    AllForms forms;
    ReadInto(forms, "{\n  Radius 4\n}");
    EXPECT_FLOAT_EQ(forms.m_Radius, 4.0f);
    EXPECT_EQ(forms.m_RadiusSets, 1);
}

TEST(ObjectBlocksTest, MemberWinsOverAPropertyOfTheSameName)
{
    MoreForms forms;
    ReadInto(forms, "{\n  Extra 6\n}");
    EXPECT_EQ(forms.m_Extra, 6);
    EXPECT_EQ(forms.m_ExtraSets, 0);
}

TEST(ObjectBlocksTest, MembersOfBaseClassesAreFound)
{
    MoreForms forms;
    ReadInto(forms, "{\n  Int 5\n  Extra 1\n}");
    EXPECT_EQ(forms.m_Int, 5);
    EXPECT_EQ(forms.m_Extra, 1);
}

TEST(ObjectBlocksTest, MemberNotMarkedToBeSavedIsLoggedAndSetAnyway)
{
    ReportCapture reports;
    AllForms forms;
    ReadInto(forms, "{\n  Secret 5\n}");
    EXPECT_EQ(forms.m_Secret, 5);
    EXPECT_TRUE(reports.Holds("[WARNING]"));
    EXPECT_TRUE(reports.Holds("This member isn't marked to be serialized but it is being deserialized: Secret"));
}

TEST(ObjectBlocksTest, UnreadableNumberIsReportedAndTheRestOfTheBlockDoesNotLoad)
{
    ReportCapture reports;
    AllForms forms;
    bool failed = false;
    ReadInto(forms, "{\n  Int abc\n  Float 2\n}", &failed);
    EXPECT_TRUE(failed);
    EXPECT_EQ(forms.m_Float, 0.0f);
    EXPECT_TRUE(reports.Holds(
        "Failed to read member.  Make sure to define all members for the member.\nMember: Int\nFile:  Sample.txt"));
}

TEST(ObjectBlocksTest, NumberWhereAStringBelongsIsReportedAndReadingStops)
{
    ReportCapture reports;
    AllForms forms;
    ReadInto(forms, "{\n  Text 42\n  Int 4\n}");
    EXPECT_EQ(forms.m_Int, 0);
    EXPECT_EQ(forms.m_Text, "");
    EXPECT_TRUE(reports.Holds("Missed \" (quotation) at beginning of string."));
}

TEST(ObjectBlocksTest, ValueCutShortByTheEndOfTheFileIsNotSet)
{
    AllForms forms;
    forms.m_Text = "kept";
    forms.m_Vector3 = Math::Vector3D(1, 1, 1);
    ReadInto(forms, "{\n  Int 7\n  Text \"never closed");
    EXPECT_EQ(forms.m_Int, 7);
    EXPECT_EQ(forms.m_Text, "kept");
    ReadInto(forms, "{\n  Vector3 { 4 5");
    EXPECT_EQ(forms.m_Vector3, Math::Vector3D(1, 1, 1));
}

TEST(ObjectBlocksTest, ValueThatFailsToReadLeavesTheMemberAsItWas)
{
    ReportCapture reports;
    AllForms forms;
    forms.m_Sizes = {9};
    forms.m_Radius = 3.0f;
    ReadInto(forms, "{\n  Sizes { 1, 2, x }\n}");
    EXPECT_EQ(forms.m_Sizes, std::vector<int>{9});
    ReadInto(forms, "{\n  Radius wide\n}");
    EXPECT_FLOAT_EQ(forms.m_Radius, 3.0f);
    EXPECT_EQ(forms.m_RadiusSets, 0);
}

TEST(ObjectBlocksTest, TruncatedFileEndsTheBlockQuietly)
{
    AllForms forms;
    ReadInto(forms, "AllForms\n{\n  Int 5\n  Sizes\n  {\n    1,\n    2");
    EXPECT_EQ(forms.m_Int, 5);
    EXPECT_EQ(forms.m_Sizes, (std::vector<int>{1, 2}));
}

TEST(ObjectBlocksTest, MissingClosingBraceReadsToTheEnd)
{
    AllForms forms;
    ReadInto(forms, "{\n  Int 5\n  Float 2.5\n");
    EXPECT_EQ(forms.m_Int, 5);
    EXPECT_FLOAT_EQ(forms.m_Float, 2.5f);
}

TEST(ObjectBlocksTest, GarbageBetweenMembersIsReportedAndReadingGoesOn)
{
    ReportCapture reports;
    AllForms forms;
    ReadInto(forms, "{\n  Int 5\n  @@@ ###\n  Short 2\n}");
    EXPECT_EQ(forms.m_Int, 5);
    EXPECT_EQ(forms.m_Short, 2);
    EXPECT_TRUE(reports.Holds("AllForms does not have a member named @@@"));
}

TEST(ObjectBlocksTest, EveryValueFormComesBackThroughAFile)
{
    const AllForms original = EveryFormChanged();
    const AllForms defaults;
    const std::string text = WriteComponent(original, &defaults);
    AllForms read;
    ReadInto(read, text);
    EXPECT_TRUE(read.Compare(&original)) << text;
    EXPECT_EQ(read.m_Text, original.m_Text);
    EXPECT_EQ(read.m_Grid, original.m_Grid);
    EXPECT_EQ(read.m_Places, original.m_Places);
    EXPECT_EQ(read.m_Inners, original.m_Inners);
    EXPECT_FLOAT_EQ(read.m_Radius, 2.5f);
}

TEST(ObjectBlocksTest, OnlyWhatDiffersFromTheReferenceIsWritten)
{
    Transform transform;
    transform.m_Position = Math::Point3D(1, 2.5f, -3);
    const Transform reference;
    EXPECT_EQ(WriteComponent(transform, &reference, false, false, 1),
              "  Transform \n  {\n    Position { 1 2.5 -3 }\n  }\n");
}

TEST(ObjectBlocksTest, ComponentLikeItsReferenceIsNotWrittenUnlessForcedOrNew)
{
    const Transform transform;
    const Transform reference;
    EXPECT_EQ(WriteComponent(transform, &reference), "");
    EXPECT_EQ(WriteComponent(transform, &reference, true, false), "Transform \n{\n}\n");
    EXPECT_EQ(WriteComponent(transform, &reference, false, true), "Transform \n{\n}\n");
}

TEST(ObjectBlocksTest, WithoutAReferenceEverythingIsWritten)
{
    const Transform transform;
    EXPECT_EQ(WriteComponent(transform, nullptr),
              "Transform \n{\n  Position { 0 0 0 }\n  Offset { 0 0 0 }\n  Scale { 1 1 1 }\n  Rotation { 0 0 0 1 }\n}\n");
}

TEST(ObjectBlocksTest, ReadOnlyPropertyAlwaysGivesTheComponentABlock)
{
    const AllForms forms;
    const AllForms reference;
    EXPECT_EQ(WriteComponent(forms, &reference), "AllForms \n{\n}\n");
}

TEST(ObjectBlocksTest, DifferingMemberNotMarkedToBeSavedWritesNothing)
{
    AllForms forms;
    forms.m_Secret = 3;
    const AllForms reference;
    EXPECT_EQ(WriteComponent(forms, &reference).find("Secret"), std::string::npos);
}

TEST(ObjectBlocksTest, ConcreteMembersComeFirstAndPropertiesLast)
{
    MoreForms forms;
    forms.m_Int = 1;
    forms.m_Extra = 2;
    forms.m_Radius = 3.0f;
    const MoreForms reference;
    const std::string text = WriteComponent(forms, &reference);
    const std::size_t extra = text.find("  Extra 2\n");
    const std::size_t integer = text.find("  Int 1\n");
    const std::size_t radius = text.find("  Radius 3\n");
    ASSERT_NE(extra, std::string::npos) << text;
    ASSERT_NE(integer, std::string::npos) << text;
    ASSERT_NE(radius, std::string::npos) << text;
    EXPECT_LT(extra, integer);
    EXPECT_LT(integer, radius);
}

TEST(ObjectBlocksTest, NestedObjectIsWrittenAsABlockWithAllItsMembers)
{
    AllForms forms;
    forms.m_Inner.m_Count = 2;
    const AllForms reference;
    EXPECT_EQ(WriteComponent(forms, &reference),
              "AllForms \n{\n  Inner \n  {\n    Count 2\n    Label \"inner\"\n    Offset { 0 0 }\n  }\n}\n");
}

TEST(ObjectBlocksTest, ComponentNotDerivedFromComponentIsReported)
{
    ReportCapture reports;
    Unparented unparented;
    unparented.m_Value = 4;
    const Unparented reference;
    EXPECT_EQ(WriteComponent(unparented, &reference), "Unparented \n{\n  Value 4\n}\n");
    EXPECT_TRUE(reports.Holds("The component Unparented does not derive from the Component class.\nGo add "
                              "'DERIVE(Component)' to the Meta Registeration."));
    EXPECT_TRUE(reports.Holds("Util::Serializer::Write"));
}

TEST(ObjectBlocksTest, ComponentsCompareOverTheirSavedMembersAndProperties)
{
    AllForms first;
    AllForms second;
    EXPECT_TRUE(first.Compare(&second));
    second.m_Secret = 1;
    EXPECT_TRUE(first.Compare(&second));
    second.m_Sizes.push_back(1);
    EXPECT_FALSE(first.Compare(&second));
    second.m_Sizes.clear();
    second.m_Radius = 9.0f;
    EXPECT_FALSE(first.Compare(&second));
    const Transform transform;
    EXPECT_FALSE(first.Compare(&transform));
}

namespace
{
// A type that holds more of itself, so a file can nest it as deep as it likes.
struct Nest
{
    virtual ~Nest() = default;
    std::vector<Nest> m_Inner;
    int m_Mark = 0;
};

// Depth of the first chain of inner nests.
unsigned Depth(const Nest& nest)
{
    unsigned depth = 0;
    for (const Nest* at = &nest; !at->m_Inner.empty(); at = &at->m_Inner.front())
        ++depth;
    return depth;
}
}

META_REGISTER(Nest)
{
    MEMBER(m_Inner, "");
    MEMBER(m_Mark, "");
}

TEST(ObjectBlocksTest, NestingDeeperThanTheLimitIsReportedAndSkippedWithoutRunningOutOfStack)
{
    // Far deeper than any stack allows a recursive reader to follow.
    constexpr int kLevels = 200000;
    std::string text;
    for (int i = 0; i < kLevels; ++i)
        text += "{ Inner { ";
    for (int i = 0; i < kLevels; ++i)
        text += "} } ";
    // The outer list ends, and the outer object goes on after the skipped depths.
    text += "}\nMark 5\n}";
    ReportCapture reports;
    Util::Serializer serializer;
    serializer.OpenText("{ Mark 3\nInner { " + text, "Deep.txt");
    Nest nest;
    serializer.ReadObject(Meta::Get<Nest>(), &nest);
    EXPECT_TRUE(reports.Holds("nested deeper than 64 levels"));
    EXPECT_EQ(nest.m_Mark, 5);
    EXPECT_LE(Depth(nest), Util::Serializer::kMaxNesting);
    EXPECT_GE(Depth(nest), Util::Serializer::kMaxNesting - 1);
}

TEST(ObjectBlocksTest, NestingWithinTheLimitReadsWhole)
{
    std::string text = "{ Mark 1 }";
    for (int i = 0; i < 10; ++i)
        text = "{ Inner { " + text + " } }";
    Util::Serializer serializer;
    serializer.OpenText(text, "Shallow.txt");
    Nest nest;
    serializer.ReadObject(Meta::Get<Nest>(), &nest);
    EXPECT_EQ(Depth(nest), 10u);
}
