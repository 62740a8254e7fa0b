// The vorn_make_shapes program: it writes the named shapes (or all of them) as
// kbm files that the engine's reader reads back, and refuses unknown names.
#include "shape_generator/ShapeTable.h"
#include "support/TempFolder.h"
#include "tools/ToolRun.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
constexpr const char* kMakeShapes = VORN_MAKE_SHAPES_PATH;
}

TEST(MakeShapes, WritesEveryShapeAsAKbmTheEngineReads)
{
    TempFolder folder;
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeShapes, "\"" + folder.Path() + "models\"");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    for (const ShapeTools::NamedShape& shape : ShapeTools::ShapeTable())
    {
        Graphics::ModelFile model;
        ASSERT_TRUE(ToolTest::ReadModel(folder.Path() + "models/" + shape.Name + ".kbm", model)) << shape.Name;
        const Graphics::ModelFile built = shape.Make().Build();
        EXPECT_EQ(model.Vertices.size(), built.Vertices.size()) << shape.Name;
        EXPECT_EQ(model.Indices, built.Indices) << shape.Name;
    }
}

TEST(MakeShapes, WritesOnlyTheNamedShapes)
{
    TempFolder folder;
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeShapes, "\"" + folder.Path() + "\" ramp rock2");
    ASSERT_EQ(run.ExitCode, 0) << run.Output;
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"ramp.kbm", "rock2.kbm"}));
}

TEST(MakeShapes, UnknownShapePrintsTheUsageAndWritesNothing)
{
    TempFolder folder;
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeShapes, "\"" + folder.Path() + "\" cube");
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_NE(run.Output.find("unknown shape \"cube\""), std::string::npos) << run.Output;
    EXPECT_NE(run.Output.find("usage: vorn_make_shapes"), std::string::npos) << run.Output;
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(MakeShapes, NoArgumentsPrintsTheUsage)
{
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeShapes, "");
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_NE(run.Output.find("usage: vorn_make_shapes"), std::string::npos) << run.Output;
}

TEST(MakeShapes, AnOutputThatCannotBeWrittenIsNamedAndFails)
{
    TempFolder folder;
    const std::string blocker = folder.Write("blocker", "a file, not a folder");
    const ToolTest::ToolRun run = ToolTest::RunTool(kMakeShapes, "\"" + blocker + "\" plane");
    EXPECT_EQ(run.ExitCode, 1) << run.Output;
    EXPECT_NE(run.Output.find("could not be written"), std::string::npos) << run.Output;
}
