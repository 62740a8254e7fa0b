#include "utilities/Serialization/TextValue.h"

#include "support/ReportCapture.h"
#include "utilities/Meta/Any.h"
#include "utilities/Serialization/TextSamples.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace
{
template <class T>
std::string Written(const T& value, unsigned depth = 0)
{
    Util::Serializer serializer;
    serializer.OpenText("");
    serializer.m_Depth = depth;
    Util::WriteValue(serializer, value);
    return serializer.GetText();
}

template <class T>
T ReadBack(const std::string& text, T value = T())
{
    Util::Serializer serializer;
    serializer.OpenText(text);
    Util::ReadValue(serializer, value);
    EXPECT_FALSE(serializer.Failed()) << "reading: " << text;
    return value;
}

template <class T>
T RoundTrip(const T& value)
{
    return ReadBack<T>(Written(value));
}

std::string Rest(Util::Serializer& serializer)
{
    std::string rest;
    std::getline(serializer.m_Stream, rest, '\0');
    return rest;
}
}

TEST(TextValueTest, IntegersAreDecimalAndComeBack)
{
    EXPECT_EQ(Written(-42), "-42");
    EXPECT_EQ(RoundTrip(-42), -42);
    EXPECT_EQ(RoundTrip(4000000000u), 4000000000u);
    EXPECT_EQ(RoundTrip(short(-1234)), short(-1234));
    EXPECT_EQ(Written(static_cast<unsigned short>(65535)), "65535");
    EXPECT_EQ(RoundTrip(static_cast<unsigned short>(65535)), 65535);
}

TEST(TextValueTest, FloatsComeBackToSixSignificantDigits)
{
    EXPECT_EQ(Written(2.5f), "2.5");
    EXPECT_EQ(Written(3.14159265f), "3.14159");
    EXPECT_FLOAT_EQ(RoundTrip(3.14159265f), 3.14159f);
    EXPECT_FLOAT_EQ(RoundTrip(-0.000123456789f), -0.000123457f);
    EXPECT_FLOAT_EQ(RoundTrip(123456789.0f), 1.23457e+08f);
}

TEST(TextValueTest, DoublesComeBackToSixSignificantDigits)
{
    EXPECT_EQ(Written(2.718281828), "2.71828");
    EXPECT_DOUBLE_EQ(RoundTrip(2.718281828), 2.71828);
}

TEST(TextValueTest, BoolsAreWords)
{
    EXPECT_EQ(Written(true), "true");
    EXPECT_EQ(Written(false), "false");
    EXPECT_TRUE(ReadBack<bool>(" true"));
    EXPECT_FALSE(ReadBack<bool>("false", true));
}

TEST(TextValueTest, CharsAreRawCharacters)
{
    EXPECT_EQ(Written('w'), "w");
    EXPECT_EQ(ReadBack<char>("  \n w"), 'w');
    EXPECT_EQ(Written(static_cast<unsigned char>('Z')), "Z");
    EXPECT_EQ(RoundTrip(static_cast<unsigned char>('Z')), 'Z');
}

TEST(TextValueTest, StringsAreQuotedWithoutEscaping)
{
    EXPECT_EQ(Written(std::string("brick.dds")), "\"brick.dds\"");
    EXPECT_EQ(RoundTrip(std::string("two words")), "two words");
    EXPECT_EQ(RoundTrip(std::string("")), "");
}

TEST(TextValueTest, WrittenLineFeedsComeBackAndBackslashNBecomesALineFeed)
{
    EXPECT_EQ(RoundTrip(std::string("a\nb")), "a\nb");
    EXPECT_EQ(RoundTrip(std::string("a\\nb")), "a\nb");
}

TEST(TextValueTest, EnumsAreWrittenAndReadByName)
{
    EXPECT_EQ(Written(SampleMode::Additive), "Additive");
    EXPECT_EQ(ReadBack<SampleMode>(" Multiply"), SampleMode::Multiply);
}

TEST(TextValueTest, EnumWithATrailingCommaLeavesTheCommaOnTheStream)
{
    Util::Serializer serializer;
    serializer.OpenText("Additive, Opaque");
    SampleMode mode = SampleMode::Opaque;
    Util::ReadValue(serializer, mode);
    EXPECT_EQ(mode, SampleMode::Additive);
    EXPECT_EQ(Rest(serializer), ", Opaque");
}

TEST(TextValueTest, UnknownEnumNameIsReported)
{
    ReportCapture reports;
    EXPECT_EQ(ReadBack<SampleMode>("Subtractive", SampleMode::Multiply), SampleMode::Opaque);
    EXPECT_TRUE(reports.Holds("Enum can not be found!\nEnum Type: SampleMode\nName: Subtractive"));
}

TEST(TextValueTest, MathTypesAreBracedFloats)
{
    EXPECT_EQ(Written(Math::Point3D(1.0f, 2.5f, -3.0f)), "{ 1 2.5 -3 }");
    EXPECT_EQ(Written(Math::Vector2D(0.5f, 4.0f)), "{ 0.5 4 }");
    EXPECT_EQ(Written(Math::Quaternion(0.0f, 0.0f, 0.0f, 1.0f)), "{ 0 0 0 1 }");
    EXPECT_EQ(RoundTrip(Math::Vector2D(1.5f, -2.0f)), Math::Vector2D(1.5f, -2.0f));
    EXPECT_EQ(RoundTrip(Math::Vector3D(1.0f, 2.0f, 3.0f)), Math::Vector3D(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(RoundTrip(Math::Vector4D(1.0f, 2.0f, 3.0f, 4.0f)), Math::Vector4D(1.0f, 2.0f, 3.0f, 4.0f));
    EXPECT_EQ(RoundTrip(Math::Point2D(-1.0f, 0.25f)), Math::Point2D(-1.0f, 0.25f));
    EXPECT_EQ(RoundTrip(Math::Point3D(1.0f, 2.5f, -3.0f)), Math::Point3D(1.0f, 2.5f, -3.0f));
    EXPECT_EQ(RoundTrip(Math::Point4D(9.0f, 8.0f, 7.0f, 6.0f)), Math::Point4D(9.0f, 8.0f, 7.0f, 6.0f));
    const Math::Quaternion turned(0.0f, 0.707107f, 0.0f, 0.707107f);
    const Math::Quaternion back = RoundTrip(turned);
    EXPECT_FLOAT_EQ(back.y, 0.707107f);
    EXPECT_FLOAT_EQ(back.w, 0.707107f);
}

TEST(TextValueTest, MathTypesTolerateJunkAroundTheBraces)
{
    EXPECT_EQ(ReadBack<Math::Vector3D>(" junk {1 2 3} "), Math::Vector3D(1.0f, 2.0f, 3.0f));
}

TEST(TextValueTest, ColourIsWrittenTimes255Floored)
{
    EXPECT_EQ(Written(Math::Color(1.0f, 0.0f, 0.0f, 1.0f)), "{ 255 0 0 255 }");
    EXPECT_EQ(Written(Math::Color(0.5f, 0.999f, 0.0f, 1.0f)), "{ 127 254 0 255 }");
}

TEST(TextValueTest, ColourOf128ReadsAsItsScaledFloorAndWritesBackWithinOne)
{
    const Math::Color grey = ReadBack<Math::Color>("{ 128 128 128 255 }");
    EXPECT_NEAR(grey.r, 0.50196f, 1e-5f);
    EXPECT_NEAR(grey.g, 0.50196f, 1e-5f);
    EXPECT_NEAR(grey.b, 0.50196f, 1e-5f);
    EXPECT_FLOAT_EQ(grey.a, 1.0f);
    const std::string again = Written(grey);
    EXPECT_TRUE(again == "{ 128 128 128 255 }" || again == "{ 127 127 127 255 }") << again;
}

TEST(TextValueTest, ColourChannelsAreFlooredAndClamped)
{
    const Math::Color colour = ReadBack<Math::Color>("{ 300 -5 12.9 255 }");
    EXPECT_FLOAT_EQ(colour.r, 1.0f);
    EXPECT_FLOAT_EQ(colour.g, 0.0f);
    EXPECT_FLOAT_EQ(colour.b, 12.0f * 0.003921569f);
    EXPECT_FLOAT_EQ(colour.a, 1.0f);
}

TEST(TextValueTest, ColourRoundTripKeepsWholeChannels)
{
    for (int channel = 0; channel <= 255; ++channel)
    {
        const std::string text = "{ " + std::to_string(channel) + " 0 255 255 }";
        const std::string again = Written(ReadBack<Math::Color>(text));
        const int written = std::stoi(again.substr(2));
        EXPECT_TRUE(written == channel || written == channel - 1) << channel << " came back as " << again;
    }
}

TEST(TextValueTest, PairIsFirstThenSecondInBraces)
{
    const std::pair<int, std::string> pair{5, "five"};
    EXPECT_EQ(Written(pair), "{ 5 \"five\" }");
    EXPECT_EQ(RoundTrip(pair), pair);
}

TEST(TextValueTest, VectorIsWrittenOneElementALine)
{
    EXPECT_EQ(Written(std::vector<int>{1, 2, 3}, 1), "\n  {\n    1,\n    2,\n    3\n  }");
    EXPECT_EQ(Written(std::vector<int>{}, 0), "\n{\n}");
}

TEST(TextValueTest, SequenceContainersComeBack)
{
    EXPECT_EQ(RoundTrip(std::vector<int>{1, 2, 3}), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(RoundTrip(std::list<std::string>{"a b", "", "c"}), (std::list<std::string>{"a b", "", "c"}));
    EXPECT_EQ(RoundTrip(std::deque<float>{0.5f, -1.25f}), (std::deque<float>{0.5f, -1.25f}));
    EXPECT_EQ(RoundTrip(std::vector<SampleMode>{SampleMode::Multiply, SampleMode::Opaque}),
              (std::vector<SampleMode>{SampleMode::Multiply, SampleMode::Opaque}));
    EXPECT_EQ(RoundTrip(std::vector<std::vector<int>>{{1, 2}, {}, {3}}),
              (std::vector<std::vector<int>>{{1, 2}, {}, {3}}));
    EXPECT_EQ(RoundTrip(std::vector<Math::Vector3D>{{1, 2, 3}, {4, 5, 6}}),
              (std::vector<Math::Vector3D>{{1, 2, 3}, {4, 5, 6}}));
}

TEST(TextValueTest, EnumsStandInACommaList)
{
    EXPECT_EQ(ReadBack<std::vector<SampleMode>>("{ Additive, Multiply,\n Opaque }"),
              (std::vector<SampleMode>{SampleMode::Additive, SampleMode::Multiply, SampleMode::Opaque}));
}

TEST(TextValueTest, ContainerOnOneLineWithAnySpacingIsAccepted)
{
    EXPECT_EQ(ReadBack<std::vector<int>>("{1,2 ,\t3}"), (std::vector<int>{1, 2, 3}));
}

TEST(TextValueTest, EmptyBracesGiveAnEmptyContainerWithoutAReport)
{
    EXPECT_TRUE(ReadBack<std::vector<int>>("{}").empty());
    EXPECT_TRUE(ReadBack<std::set<int>>(" { \n } ").empty());
    EXPECT_TRUE((ReadBack<std::map<std::string, int>>("{}").empty()));
}

TEST(TextValueTest, CarriageReturnsAroundElementsAreSkipped)
{
    EXPECT_EQ(ReadBack<std::vector<int>>("{\r\n  1,\r\n  2\r\n}"), (std::vector<int>{1, 2}));
}

TEST(TextValueTest, ReadElementsAreAppendedToWhatTheContainerHeld)
{
    EXPECT_EQ(ReadBack<std::vector<int>>("{ 3 }", {1, 2}), (std::vector<int>{1, 2, 3}));
}

TEST(TextValueTest, TrailingCommaAfterANumberFailsTheRead)
{
    Util::Serializer serializer;
    serializer.OpenText("{ 1, 2, }");
    std::vector<int> values;
    Util::ReadValue(serializer, values);
    EXPECT_TRUE(serializer.Failed());
    EXPECT_EQ(values, (std::vector<int>{1, 2}));
}

TEST(TextValueTest, MissingSeparatorInAListIsReportedAndReadingGoesOn)
{
    ReportCapture reports;
    Util::Serializer serializer;
    serializer.OpenText("{ 1 2 }", "Archetypes/Crate.txt");
    std::vector<int> values;
    Util::ReadValue(serializer, values);
    EXPECT_EQ(values, (std::vector<int>{1}));
    EXPECT_FALSE(serializer.Failed());
    EXPECT_TRUE(reports.Holds("Missing seperator in list! \nFile:  Archetypes/Crate.txt"));
    EXPECT_TRUE(reports.Holds("Util::ReadStreamContainerHelper"));
}

TEST(TextValueTest, MissingSeparatorInASetIsReported)
{
    ReportCapture reports;
    Util::Serializer serializer;
    serializer.OpenText("{ 1 ; 2 }", "Biomes.txt");
    std::set<int> values;
    Util::ReadValue(serializer, values);
    EXPECT_EQ(values, (std::set<int>{1}));
    EXPECT_TRUE(reports.Holds("Missing seperator in container! \nFile:  Biomes.txt"));
    EXPECT_TRUE(reports.Holds("Util::ReadTreeHelper"));
}

TEST(TextValueTest, SetsComeBack)
{
    EXPECT_EQ(RoundTrip(std::set<int>{3, 1, 2}), (std::set<int>{1, 2, 3}));
    EXPECT_EQ(RoundTrip(std::multiset<std::string>{"b", "a", "b"}), (std::multiset<std::string>{"a", "b", "b"}));
    EXPECT_EQ(RoundTrip(std::unordered_set<int>{7, 8, 9}), (std::unordered_set<int>{7, 8, 9}));
}

TEST(TextValueTest, MapElementsArePairsOneALine)
{
    const std::map<std::string, int> scores{{"red", 5}, {"blue", 7}};
    EXPECT_EQ(Written(scores, 1), "\n  {\n    { \"blue\" 7 },\n    { \"red\" 5 }\n  }");
}

TEST(TextValueTest, MapsComeBack)
{
    const std::map<std::string, int> scores{{"red", 5}, {"blue", 7}};
    EXPECT_EQ(RoundTrip(scores), scores);
    const std::multimap<int, float> samples{{1, 0.5f}, {1, 0.25f}, {2, 3.0f}};
    EXPECT_EQ(RoundTrip(samples), samples);
    const std::unordered_map<std::string, Math::Vector3D> places{{"home", {1, 2, 3}}, {"away", {4, 5, 6}}};
    EXPECT_EQ(RoundTrip(places), places);
}

TEST(TextValueTest, NestedObjectIsABlockOfAllItsMembers)
{
    SampleInner inner;
    EXPECT_EQ(Written(inner, 1), "\n  {\n    Count 1\n    Label \"inner\"\n    Offset { 0 0 }\n  }");
    inner.m_Count = 4;
    inner.m_Label = "moved";
    inner.m_Offset = Math::Vector2D(2.0f, -1.0f);
    EXPECT_EQ(RoundTrip(inner), inner);
}

TEST(TextValueTest, ContainersOfNestedObjectsComeBack)
{
    std::vector<SampleInner> inners(2);
    inners[1].m_Count = 9;
    inners[1].m_Label = "second";
    EXPECT_EQ(RoundTrip(inners), inners);
}

TEST(TextValueTest, EveryRegisteredValueTypeIsWrittenAndReadThroughTheRegistry)
{
    auto roundTrip = [](const char* typeName, const Meta::Any& value) {
        const Meta::Data* type = Meta::FindData(typeName);
        EXPECT_NE(type, nullptr) << typeName;
        Util::Serializer serializer;
        serializer.OpenText("");
        type->WriteValue(serializer, value.m_Value);
        Meta::Any back(type->New(), const_cast<Meta::Data*>(type));
        Util::Serializer reader;
        reader.OpenText(serializer.GetText());
        type->ReadValue(reader, back.m_Value);
        EXPECT_FALSE(reader.Failed()) << typeName;
        return back;
    };
    EXPECT_EQ(*roundTrip("int", Meta::Any::Make(-7)).Get<int>(), -7);
    EXPECT_EQ(*roundTrip("unsigned", Meta::Any::Make(7u)).Get<unsigned>(), 7u);
    EXPECT_FLOAT_EQ(*roundTrip("float", Meta::Any::Make(0.125f)).Get<float>(), 0.125f);
    EXPECT_EQ(*roundTrip("bool", Meta::Any::Make(true)).Get<bool>(), true);
    EXPECT_DOUBLE_EQ(*roundTrip("double", Meta::Any::Make(1.5)).Get<double>(), 1.5);
    EXPECT_EQ(*roundTrip("char", Meta::Any::Make('q')).Get<char>(), 'q');
    EXPECT_EQ(*roundTrip("short", Meta::Any::Make(short(-3))).Get<short>(), -3);
    EXPECT_EQ(*roundTrip("u_char", Meta::Any::Make(static_cast<unsigned char>('u'))).Get<unsigned char>(), 'u');
    EXPECT_EQ(*roundTrip("u_short", Meta::Any::Make(static_cast<unsigned short>(9))).Get<unsigned short>(), 9);
    EXPECT_EQ(*roundTrip("string", Meta::Any::Make(std::string("hi"))).Get<std::string>(), "hi");
    EXPECT_EQ(*roundTrip("SampleMode", Meta::Any::Make(SampleMode::Multiply)).Get<SampleMode>(),
              SampleMode::Multiply);
    EXPECT_EQ(*roundTrip("Vector3D", Meta::Any::Make(Math::Vector3D(1, 2, 3))).Get<Math::Vector3D>(),
              Math::Vector3D(1, 2, 3));
    EXPECT_EQ(*roundTrip("Color", Meta::Any::Make(Math::Color(1, 0, 0, 1))).Get<Math::Color>(),
              Math::Color(1, 0, 0, 1));
    SampleInner inner;
    inner.m_Label = "through the registry";
    EXPECT_EQ(*roundTrip("SampleInner", Meta::Any::Make(inner)).Get<SampleInner>(), inner);
}

TEST(TextValueTest, IgnoringTheListSeparatorReportLeavesTheSetReportStanding)
{
    ReportCapture reports;
    Util::Serializer serializer;
    serializer.OpenText("{ 1 2 }", "Archetypes/Crate.txt");
    std::vector<int> list;
    Util::ReadValue(serializer, list);
    serializer.OpenText("{ 1 ; 2 }", "Biomes.txt");
    std::set<int> set;
    Util::ReadValue(serializer, set);
    EXPECT_TRUE(reports.Holds("Missing seperator in list! \nFile:  Archetypes/Crate.txt"));
    EXPECT_TRUE(reports.Holds("Missing seperator in container! \nFile:  Biomes.txt"));
}

TEST(TextValueTest, OnlyTypesWithATextFormCanBeSaved)
{
    static_assert(Util::kHasTextForm<int> && Util::kHasTextForm<std::string> && Util::kHasTextForm<SampleMode>);
    static_assert(Util::kHasTextForm<std::vector<std::pair<int, std::string>>>);
    static_assert(Util::kHasTextForm<std::map<std::string, float>>);
    static_assert(!Util::kHasTextForm<int*> && !Util::kHasTextForm<long long> && !Util::kHasTextForm<void*>);
    static_assert(!Util::kHasTextForm<std::vector<int*>> && !Util::kHasTextForm<std::map<int, char*>>);
    static_assert(!Util::kHasTextForm<std::pair<int, const char*>>);
    EXPECT_TRUE(Util::TextFormIsRegistered<std::vector<SampleInner>>());
    struct NobodyRegistersThis
    {
    };
    EXPECT_FALSE(Util::TextFormIsRegistered<std::vector<NobodyRegistersThis>>());
    EXPECT_FALSE(Util::TextFormIsRegistered<int*>());
}
