// Include expansion from the shader folder: the included text replaces the
// directive framed by "#line" directives, every file read is recorded, cycles
// stop, and a file that is missing is reported. The version line goes first.

#include "Graphics_Engine/ShaderIncludes.h"

#include "support/ReportCapture.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

using Graphics::ExpandShaderIncludes;

TEST(ShaderIncludesTest, IncludedTextReplacesTheDirectiveWithLineDirectives)
{
    TempFolder folder;
    folder.Write("Common.glsl", "float common;\n");
    const auto expanded = ExpandShaderIncludes("a\n#include \"Common.glsl\"\nb\n", "Main.glsl", folder.Path());
    EXPECT_TRUE(expanded.Ok);
    EXPECT_EQ(expanded.Text, "a\n#line 1 1\nfloat common;\n#line 3 0\nb\n");
    ASSERT_EQ(expanded.Included.size(), 1u);
    EXPECT_EQ(expanded.Included[0], folder.Path() + "Common.glsl");
}

TEST(ShaderIncludesTest, NestedIncludesAreAllRecordedOnce)
{
    TempFolder folder;
    folder.Write("Lights/Light.glsl", "#include <Math.glsl>\nfloat light;\n");
    folder.Write("Math.glsl", "float pi;\n");
    const auto expanded =
        ExpandShaderIncludes("#include \"Lights\\Light.glsl\"\n#include \"Math.glsl\"\n", "Main.glsl", folder.Path());
    EXPECT_TRUE(expanded.Ok);
    ASSERT_EQ(expanded.Included.size(), 2u);
    EXPECT_EQ(expanded.Included[0], folder.Path() + "Lights/Light.glsl");
    EXPECT_EQ(expanded.Included[1], folder.Path() + "Math.glsl");
    EXPECT_NE(expanded.Text.find("float pi;\n#line 2 1\nfloat light;\n"), std::string::npos);
}

TEST(ShaderIncludesTest, LineDirectivesOfThePreprocessorKeepTheCountAfterAnInclude)
{
    TempFolder folder;
    folder.Write("A.glsl", "x\n");
    const auto expanded = ExpandShaderIncludes("#line 9\n#include \"A.glsl\"\ny\n", "Main.glsl", folder.Path());
    EXPECT_EQ(expanded.Text, "#line 9\n#line 1 1\nx\n#line 10 0\ny\n");
}

TEST(ShaderIncludesTest, IncludeCycleStopsWithoutHarm)
{
    TempFolder folder;
    folder.Write("A.glsl", "#include \"B.glsl\"\na\n");
    folder.Write("B.glsl", "#include \"A.glsl\"\nb\n");
    const auto expanded = ExpandShaderIncludes("#include \"A.glsl\"\n", "Main.glsl", folder.Path());
    EXPECT_TRUE(expanded.Ok);
    EXPECT_EQ(expanded.Included.size(), 2u);
}

TEST(ShaderIncludesTest, MissingIncludeIsReportedAsACompileError)
{
    ReportCapture capture;
    TempFolder folder;
    const auto expanded = ExpandShaderIncludes("#include \"Nowhere.glsl\"\n", "Main.glsl", folder.Path());
    EXPECT_FALSE(expanded.Ok);
    EXPECT_TRUE(capture.Holds("Error Compiling Main.glsl\nErrors: cannot open include file \"Nowhere.glsl\""));
}

TEST(ShaderIncludesTest, IncludeOfAnUnknownKindIsReported)
{
    ReportCapture capture;
    TempFolder folder;
    const auto expanded = ExpandShaderIncludes("#include Common\n", "Main.glsl", folder.Path());
    EXPECT_FALSE(expanded.Ok);
    EXPECT_TRUE(capture.Holds("I have no idea what happened."));
}

TEST(ShaderIncludesTest, EngineSuppliesTheVersionLineUnlessTheFileStartsWithOne)
{
    EXPECT_EQ(Graphics::WithVersionLine("#line 2\nvoid main() {}\n"),
              "#version 450 core\n#line 1\n#line 2\nvoid main() {}\n");
    EXPECT_EQ(Graphics::WithVersionLine("#version 460\nvoid main() {}\n"), "#version 460\nvoid main() {}\n");
}
