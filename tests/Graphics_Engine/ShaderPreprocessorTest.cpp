// The shader file preprocessor: description blocks are read and removed,
// "#line" keeps the file's line numbers, comments hide description words, and
// every error is reported with the file and line.

#include "Graphics_Engine/ShaderPreprocessor.h"

#include "support/ReportCapture.h"

#include <gtest/gtest.h>

using Graphics::PreprocessShader;
using Graphics::ShaderDescription;

TEST(ShaderPreprocessorTest, ReadsStageEntryPointAndFlagsAndRemovesTheBlock)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc\n{\n  Type Pixel\n  EntryPoint main\n  Flag Forward\n}\nvoid main() {}\n",
                                 "Base.glsl", d));
    EXPECT_EQ(d.Stage, Graphics::StagePixel);
    EXPECT_EQ(d.EntryPoint, "main");
    EXPECT_EQ(d.Flags, Graphics::FlagForward);
    EXPECT_EQ(d.Source, "#line 7\nvoid main() {}\n");
}

TEST(ShaderPreprocessorTest, EveryStageWordGivesItsStage)
{
    const char* words[] = {"Vertex", "Geometry", "Hull", "Domain", "Pixel", "Compute"};
    for (int stage = 0; stage < 6; ++stage)
    {
        ShaderDescription d;
        ASSERT_TRUE(PreprocessShader(std::string("__ShaderDesc { Type ") + words[stage] + " EntryPoint main }\n", "s", d));
        EXPECT_EQ(d.Stage, stage);
    }
}

TEST(ShaderPreprocessorTest, KeywordsOnOneLineOrOnManyReadAlike)
{
    ShaderDescription oneLine, manyLines;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc { Type Vertex EntryPoint vs Flag Instanced }\nx\n", "a", oneLine));
    ASSERT_TRUE(PreprocessShader("__ShaderDesc\n{\nType Vertex\nEntryPoint vs\nFlag Instanced\n}\nx\n", "b", manyLines));
    EXPECT_EQ(oneLine.Stage, manyLines.Stage);
    EXPECT_EQ(oneLine.EntryPoint, manyLines.EntryPoint);
    EXPECT_EQ(oneLine.Flags, Graphics::FlagInstanced);
    EXPECT_EQ(manyLines.Flags, Graphics::FlagInstanced);
    EXPECT_EQ(oneLine.Source, "#line 2\nx\n");
    EXPECT_EQ(manyLines.Source, "#line 7\nx\n");
}

TEST(ShaderPreprocessorTest, LineCommentInsideADescriptionLineHidesTheRestOfTheLine)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc {\nType Vertex EntryPoint main // Flag Instanced\n}\n", "s", d));
    EXPECT_EQ(d.Flags, 0u);
    // The mark is found inside a token too.
    ASSERT_TRUE(PreprocessShader("__ShaderDesc {\nType Vertex EntryPoint main//Flag Instanced\n}\n", "s", d));
    EXPECT_EQ(d.EntryPoint, "main");
    EXPECT_EQ(d.Flags, 0u);
}

TEST(ShaderPreprocessorTest, BracesOnTheOpenerLineEndTheBlockOnThatLine)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc { Type Pixel EntryPoint main }\nvec4 a;\nvec4 b;\n", "s", d));
    EXPECT_EQ(d.Source, "#line 2\nvec4 a;\nvec4 b;\n");
}

TEST(ShaderPreprocessorTest, BlockCommentHidesADescriptionOverSeveralLines)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("/* __ShaderDesc { Type Hull\n EntryPoint no } */\n__ShaderDesc { Type Domain /* Type Hull */ "
                                 "EntryPoint ds }\n",
                                 "s", d));
    EXPECT_EQ(d.Stage, Graphics::StageDomain);
    EXPECT_EQ(d.EntryPoint, "ds");
    // Comment text of ordinary lines reaches the compiler unchanged.
    EXPECT_EQ(d.Source.rfind("/* __ShaderDesc { Type Hull\n EntryPoint no } */\n", 0), 0u);
}

TEST(ShaderPreprocessorTest, EmptyLinesAreKeptAndNoLineDirectiveFollowsABlockAtTheEnd)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("\nvoid main() {}\n\n__ShaderDesc { Type Compute EntryPoint main }\n", "s", d));
    EXPECT_EQ(d.Source, "\nvoid main() {}\n\n");
}

TEST(ShaderPreprocessorTest, ShaderWithoutTypeReportsItAndFails)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("__ShaderDesc { EntryPoint main }\nvoid main() {}\n", "NoType.glsl", d));
    EXPECT_TRUE(capture.Holds("Error Preprocessing: NoType.glsl(2)Missing Shader Type in Description."));
}

TEST(ShaderPreprocessorTest, ShaderWithoutEntryPointReportsItAndFails)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("__ShaderDesc { Type Vertex }\n", "NoEntry.glsl", d));
    EXPECT_TRUE(capture.Holds("Missing EntryPoint in Description."));
}

TEST(ShaderPreprocessorTest, UnknownShaderTypeIsReportedWithFileAndLine)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("\n__ShaderDesc { Type Tessellation EntryPoint main }\n", "Odd.glsl", d));
    EXPECT_TRUE(capture.Holds("Error Preprocessing: Odd.glsl(2)Unknown Shader Type: Tessellation"));
}

TEST(ShaderPreprocessorTest, KeywordThatIsNoStageIsAnUnknownShaderType)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("__ShaderDesc { Type Flag EntryPoint main }\n", "s", d));
    EXPECT_EQ(d.Stage, Graphics::StageNone);
    EXPECT_TRUE(capture.Holds("Unknown Shader Type: Flag"));
}

TEST(ShaderPreprocessorTest, MissingTypeValueIsReported)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("__ShaderDesc { EntryPoint main Type\n}\n", "s", d));
    EXPECT_TRUE(capture.Holds("s(1)Missing Shader Type"));
}

TEST(ShaderPreprocessorTest, MissingEntryPointNameIsReported)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("__ShaderDesc { Type Pixel EntryPoint }\n", "s", d));
    EXPECT_TRUE(capture.Holds("Missing Function name for EntryPoint"));
}

TEST(ShaderPreprocessorTest, MissingFlagIsReported)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("__ShaderDesc { Type Pixel EntryPoint main Flag }\n", "s", d));
    EXPECT_TRUE(capture.Holds("Missing Flag to set"));
}

TEST(ShaderPreprocessorTest, UnknownFlagIsReportedInQuotes)
{
    ReportCapture capture;
    ShaderDescription d;
    EXPECT_FALSE(PreprocessShader("__ShaderDesc { Type Pixel EntryPoint main Flag Shiny }\n", "s", d));
    EXPECT_TRUE(capture.Holds("\"Shiny\" is not a known flag"));
}

TEST(ShaderPreprocessorTest, WordsThatAreNoKeywordArePassedOver)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc { Colour Red Type Pixel EntryPoint main }\n", "s", d));
    EXPECT_EQ(d.Stage, Graphics::StagePixel);
}

TEST(ShaderPreprocessorTest, ForwardOnVertexAndInstancedOnPixelOnlySetTheirBits)
{
    // The bits are read by the program from the pixel (Forward) and vertex (Instanced) stage only;
    // set on the other stage they are carried but mean nothing.
    ShaderDescription vertex, pixel;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc { Type Vertex EntryPoint main Flag Forward }\n", "v", vertex));
    ASSERT_TRUE(PreprocessShader("__ShaderDesc { Type Pixel EntryPoint main Flag Instanced }\n", "p", pixel));
    EXPECT_EQ(vertex.Flags & Graphics::FlagInstanced, 0u);
    EXPECT_EQ(pixel.Flags & Graphics::FlagForward, 0u);
}

TEST(ShaderPreprocessorTest, CarriageReturnsDoNotSpoilTheDescription)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc {\r\nType Pixel\r\nEntryPoint main\r\n}\r\nvoid main() {}", "s", d));
    EXPECT_EQ(d.EntryPoint, "main");
    EXPECT_EQ(d.Source, "#line 5\nvoid main() {}\n");
}

TEST(ShaderPreprocessorTest, OpenerWithoutBraceOnItsLineWaitsForTheBrace)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc\n{ Type Pixel\nEntryPoint main }\nfloat x;\n", "s", d));
    EXPECT_EQ(d.Source, "#line 4\nfloat x;\n");
}

TEST(ShaderPreprocessorTest, UnclosedBlockTakesTheRestOfTheFileWithoutHarm)
{
    ShaderDescription d;
    ASSERT_TRUE(PreprocessShader("__ShaderDesc { Type Pixel EntryPoint main\nvoid main() {}\n", "s", d));
    EXPECT_EQ(d.Source, "");
}
