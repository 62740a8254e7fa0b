#include "utilities/Serialization/Serializer.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace
{
std::string Rest(Util::Serializer& serializer)
{
    std::string rest;
    for (int c = serializer.m_Stream.get(); c != EOF; c = serializer.m_Stream.get())
        rest += static_cast<char>(c);
    return rest;
}

std::filesystem::path TempFile(const std::string& name)
{
    return std::filesystem::temp_directory_path() / ("vorn_serializer_" + std::to_string(getpid()) + "_" + name);
}
}

TEST(SerializerTest, OpenReadOfAMissingFileFails)
{
    Util::Serializer serializer;
    EXPECT_FALSE(serializer.OpenRead("/nonexistent/folder/Settings.txt"));
    EXPECT_FALSE(serializer.IsOpen());
}

TEST(SerializerTest, WriteThenAppendThenReadAFile)
{
    const auto path = TempFile("append.txt");
    {
        Util::Serializer serializer;
        ASSERT_TRUE(serializer.OpenWrite(path.string()));
        serializer.m_Stream << "first\n";
    }
    {
        Util::Serializer serializer;
        ASSERT_TRUE(serializer.OpenAppend(path.string()));
        serializer.m_Stream << "second\n";
        serializer.Close();
        EXPECT_FALSE(serializer.IsOpen());
    }
    Util::Serializer serializer;
    ASSERT_TRUE(serializer.OpenRead(path.string()));
    EXPECT_EQ(serializer.m_FileName, path.string());
    EXPECT_EQ(serializer.m_Depth, 0u);
    EXPECT_EQ(Rest(serializer), "first\nsecond\n");
    // Reopening for writing empties the file.
    ASSERT_TRUE(serializer.OpenWrite(path.string()));
    serializer.Close();
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    std::filesystem::remove(path);
}

TEST(SerializerTest, WriteIndentWritesTwoSpacesALevel)
{
    Util::Serializer serializer;
    serializer.OpenText("");
    serializer.m_Depth = 3;
    serializer.WriteIndent();
    serializer.m_Stream << 'x';
    EXPECT_EQ(serializer.GetText(), "      x");
}

TEST(SerializerTest, ReadUntilDropsJunkAndComments)
{
    Util::Serializer serializer;
    serializer.OpenText("junk // a { in a comment\n / single slash {rest");
    EXPECT_TRUE(serializer.ReadUntil('{'));
    EXPECT_EQ(Rest(serializer), "rest");
}

TEST(SerializerTest, ReadUntilGivesFalseAtTheEnd)
{
    Util::Serializer serializer;
    serializer.OpenText("no brace here");
    EXPECT_FALSE(serializer.ReadUntil('{'));
}

TEST(SerializerTest, FindLinePutsBackWhatFollowsTheText)
{
    Util::Serializer serializer;
    serializer.OpenText("alpha beta Mark:rest tail");
    EXPECT_TRUE(serializer.FindLine("Mark:"));
    EXPECT_EQ(Rest(serializer), "rest tail");
}

TEST(SerializerTest, FindLineGivesFalseAtTheEnd)
{
    Util::Serializer serializer;
    serializer.OpenText("alpha beta");
    EXPECT_FALSE(serializer.FindLine("gamma"));
}

TEST(SerializerTest, SkipValueSkipsABlockWhole)
{
    Util::Serializer serializer;
    serializer.OpenText("  \n{ a { b } \"c\" }\nNext 1");
    serializer.SkipValue();
    EXPECT_EQ(Rest(serializer), "\nNext 1");
}

TEST(SerializerTest, SkipValueSkipsAStringWhole)
{
    Util::Serializer serializer;
    serializer.OpenText(" \"with } and spaces\" Next 1");
    serializer.SkipValue();
    EXPECT_EQ(Rest(serializer), " Next 1");
}

TEST(SerializerTest, SkipValueSkipsAPlainTokenToTheBlank)
{
    Util::Serializer serializer;
    serializer.OpenText(" 2.5e3\tNext 1");
    serializer.SkipValue();
    EXPECT_EQ(Rest(serializer), "\tNext 1");
}

TEST(SerializerTest, SkipValueOfAnUnclosedBlockStopsAtTheEnd)
{
    Util::Serializer serializer;
    serializer.OpenText("{ { }");
    serializer.SkipValue();
    EXPECT_TRUE(serializer.m_Stream.eof());
}

TEST(SerializerTest, StringWithBackslashNComesBackWithALineFeed)
{
    Util::Serializer serializer;
    serializer.OpenText(" \"two\\nlines\" after");
    std::string text = "old";
    serializer.ReadStringHelper(text);
    EXPECT_EQ(text, "two\nlines");
    EXPECT_EQ(Rest(serializer), " after");
}

TEST(SerializerTest, StringKeepsRawLineFeeds)
{
    Util::Serializer serializer;
    serializer.OpenText("\"a\nb\"");
    std::string text;
    serializer.ReadStringHelper(text);
    EXPECT_EQ(text, "a\nb");
}

TEST(SerializerTest, StringWithoutOpeningQuoteIsReportedAndReadOn)
{
    ReportCapture reports;
    Util::Serializer serializer;
    serializer.OpenText("x\"found\"", "Rooms/Start.txt");
    std::string text;
    serializer.ReadStringHelper(text);
    EXPECT_EQ(text, "found");
    EXPECT_TRUE(reports.Holds("Missed \" (quotation) at beginning of string.\nFile:  Rooms/Start.txt"));
    EXPECT_TRUE(reports.Holds("Util::Serializer::ReadStringHelper"));
}

TEST(SerializerTest, UnterminatedStringEndsAtTheEndOfTheInput)
{
    Util::Serializer serializer;
    serializer.OpenText("\"never closed");
    std::string text;
    serializer.ReadStringHelper(text);
    EXPECT_EQ(text, "never closed");
    EXPECT_TRUE(serializer.Failed());
}

TEST(SerializerTest, TolerantReadFlagIsProcessWide)
{
    Util::SetTolerantRead(true);
    EXPECT_TRUE(Util::IsTolerantRead());
    Util::SetTolerantRead(false);
    EXPECT_FALSE(Util::IsTolerantRead());
}

TEST(SerializerTest, QuotedBraceInsideASkippedBlockEndsTheBlockEarly)
{
    Util::Serializer serializer;
    serializer.OpenText("{ \"}\" } rest");
    serializer.SkipValue();
    EXPECT_EQ(Rest(serializer), "\" } rest");
}

TEST(SerializerTest, FindLineWithAnEmptyTextFindsNothingAndReturns)
{
    Util::Serializer serializer;
    serializer.OpenText("Name { 1 }\n");
    EXPECT_FALSE(serializer.FindLine(""));
    EXPECT_TRUE(serializer.FindLine("Name"));
}

TEST(SerializerTest, EscapedLineEndsInAFourMegabyteStringAllReadBack)
{
    // Two million escapes: a reader that shifts the rest of the text per escape
    // does trillions of byte moves, and the test runs out of its time.
    constexpr std::size_t kEscapes = 2000000;
    std::string escapes;
    escapes.reserve(2 * kEscapes);
    for (std::size_t i = 0; i < kEscapes; ++i)
        escapes += "\\n";
    Util::Serializer serializer;
    serializer.OpenText("\"" + escapes + "\" after");
    std::string text;
    serializer.ReadStringHelper(text);
    ASSERT_EQ(text.size(), kEscapes);
    EXPECT_EQ(text.find_first_not_of('\n'), std::string::npos);
    std::string after;
    serializer.m_Stream >> after;
    EXPECT_EQ(after, "after");
}

TEST(SerializerTest, BackslashesThatStartNoLineEndStay)
{
    Util::Serializer serializer;
    serializer.OpenText(R"("a\\nb\tc\")");
    std::string text;
    serializer.ReadStringHelper(text);
    EXPECT_EQ(text, "a\\\nb\\tc\\");
}
