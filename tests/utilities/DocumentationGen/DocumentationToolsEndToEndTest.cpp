// The game as a command-line tool: --gendoc and --gen-autocomplete write their
// files and the game exits at once, without running a frame.
#include "support/HeadlessGame.h"
#include "support/TempFolder.h"
#include "utilities/DocumentationGen/GeneratedPages.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;

TEST(DocumentationToolsEndToEndTest, GendocWritesTheReferenceIntoTheNamedFolderAndExitsWithoutAFrame)
{
    TempFolder folder;
    const HeadlessGameRun run = RunHeadlessGame("--gendoc=" + folder.Path() + "docs", folder.Path() + "appdata");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Frames run: 0"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("Documentation written to"), std::string::npos) << run.output;
    const fs::path docs = fs::path(folder.Path()) / "docs";
    EXPECT_NE(ReadText(docs / "index.html").find("<title>Vorn Documentation</title>"), std::string::npos);
    EXPECT_TRUE(fs::exists(docs / "style.css"));
    // The space systems of a running game are filed in their spaces by then.
    EXPECT_NE(ReadText(docs / "Files" / "Space Systems.html").find("GraphicsSpace"), std::string::npos);
    EXPECT_NE(ReadText(docs / "Files" / "void.html").find("<h1>void</h1>"), std::string::npos);
}

TEST(DocumentationToolsEndToEndTest, GenAutocompleteWritesIntoTheDataDirectoryAndExitsWithoutAFrame)
{
    TempFolder folder;
    const HeadlessGameRun run =
        RunHeadlessGame("--gen-autocomplete --datadir=" + folder.Path() + "data", folder.Path() + "appdata");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_EQ(run.output.find("Frames run"), std::string::npos) << run.output;
    const std::string text = ReadText(fs::path(folder.Path()) / "data" / "LuaScripts" / "vorn_autocomplete.lua");
    EXPECT_EQ(text.rfind("return {\n", 0), 0u);
    EXPECT_NE(text.find("Transform = {\ntype = \"class\",\n"), std::string::npos);
}

TEST(DocumentationToolsEndToEndTest, BothToolsInOneRunWriteBothAndExitEvenWithoutTemplates)
{
    // A data directory without "DocumentationGen/": the built-in templates are used, and said so.
    TempFolder folder;
    const HeadlessGameRun run =
        RunHeadlessGame("--datadir=" + folder.Path() + "data --gendoc=" + folder.Path() + "docs --gen-autocomplete",
                        folder.Path() + "appdata", "", "ignore");
    EXPECT_EQ(run.exitCode, 0) << run.output;
    EXPECT_NE(run.output.find("Documentation template not found"), std::string::npos) << run.output;
    EXPECT_NE(run.output.find("Frames run: 0"), std::string::npos) << run.output;
    EXPECT_TRUE(fs::exists(fs::path(folder.Path()) / "data" / "LuaScripts" / "vorn_autocomplete.lua"));
    EXPECT_NE(ReadText(fs::path(folder.Path()) / "docs" / "Files" / "Transform.html").find("<h1>Transform</h1>"),
              std::string::npos);
}
