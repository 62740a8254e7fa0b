// The converter's command line: files, options and the mistakes it refuses.
#include "model_convert/CommandLine.h"

#include <gtest/gtest.h>

using ModelTools::CommandLine;
using ModelTools::ParseCommandLine;

TEST(ModelConvertCommandLine, InputAndOutputWithDefaults)
{
    CommandLine line;
    std::string error;
    ASSERT_TRUE(ParseCommandLine({"in.gltf", "out.kbm"}, line, error)) << error;
    EXPECT_EQ(line.Input, "in.gltf");
    EXPECT_EQ(line.Output, "out.kbm");
    EXPECT_TRUE(line.Convert.Animations);
    EXPECT_FALSE(line.Convert.Static);
    EXPECT_FALSE(line.AnimationsOnly);
    EXPECT_TRUE(line.AnimationSet.empty());
}

TEST(ModelConvertCommandLine, OptionsMayStandAnywhere)
{
    CommandLine line;
    std::string error;
    ASSERT_TRUE(ParseCommandLine({"in.fbx", "--no-animations", "out.kbm", "--kba", "set.kba", "--quiet"}, line, error))
        << error;
    EXPECT_EQ(line.Output, "out.kbm");
    EXPECT_EQ(line.AnimationSet, "set.kba");
    EXPECT_FALSE(line.Convert.Animations);
    EXPECT_TRUE(line.Quiet);
}

TEST(ModelConvertCommandLine, UnknownOptionIsRefusedByName)
{
    CommandLine line;
    std::string error;
    EXPECT_FALSE(ParseCommandLine({"--flip", "in.obj", "out.kbm"}, line, error));
    EXPECT_NE(error.find("--flip"), std::string::npos);
}

TEST(ModelConvertCommandLine, WrongNumberOfFilesIsRefused)
{
    CommandLine line;
    std::string error;
    EXPECT_FALSE(ParseCommandLine({"in.obj"}, line, error));
    EXPECT_FALSE(ParseCommandLine({"a", "b", "c"}, line, error));
    EXPECT_FALSE(ParseCommandLine({"in.obj", "out.kbm", "--kba"}, line, error));
}

TEST(ModelConvertCommandLine, AnimationsOnlyTakesNoModelOptions)
{
    CommandLine line;
    std::string error;
    EXPECT_TRUE(ParseCommandLine({"--animations-only", "in.glb", "out.kba"}, line, error)) << error;
    EXPECT_TRUE(line.AnimationsOnly);
    EXPECT_FALSE(ParseCommandLine({"--animations-only", "--static", "in.glb", "out.kba"}, line, error));
}

TEST(ModelConvertCommandLine, HelpNeedsNoFiles)
{
    CommandLine line;
    std::string error;
    EXPECT_TRUE(ParseCommandLine({"--help"}, line, error));
    EXPECT_TRUE(line.Help);
    EXPECT_NE(ModelTools::Usage().find("--animations-only"), std::string::npos);
}
