// The whole script reference written to a folder: its files, its links, its
// classes, its fallbacks, and a real browser reading it.
#include "utilities/DocumentationGen/GenerateDocumentation.h"

#include "support/ShellCommand.h"
#include "support/TempFolder.h"
#include "utilities/DocumentationGen/DocumentationGroups.h"
#include "utilities/DocumentationGen/GeneratedPages.h"
#include "utilities/Meta/Data.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace fs = std::filesystem;

namespace
{
const std::string kData = std::string(VORN_DATA_DIR) + "/";

// Runs a shell command and gives what it printed.
std::string RunCommand(const std::string& command)
{
    int exitCode = 0;
    return RunShellCommand(command, exitCode);
}
}

TEST(GenerateDocumentationTest, WorksWithNoScriptRunFromTheRegistrationsAlone)
{
    TempFolder folder;
    ASSERT_TRUE(GenerateDocumentation(folder.Path() + "docs", kData));
    const fs::path docs = fs::path(folder.Path()) / "docs";
    EXPECT_TRUE(fs::exists(docs / "index.html"));
    EXPECT_EQ(ReadText(docs / "style.css"), ReadText(kData + "DocumentationGen/style.css"));
    for (const std::string& group : DocGen::GroupNames())
        EXPECT_TRUE(fs::exists(docs / "Files" / (group + ".html"))) << group;
    const std::string transform = ReadText(docs / "Files" / "Transform.html");
    EXPECT_NE(transform.find("<h1>Transform</h1>"), std::string::npos);
    EXPECT_NE(transform.find("Group: <a href=\"Components.html\">Components</a>"), std::string::npos);
    EXPECT_NE(ReadText(docs / "index.html").find("<title>Vorn Documentation</title>"), std::string::npos);
}

TEST(GenerateDocumentationTest, EveryLinkBetweenGeneratedPagesResolves)
{
    TempFolder folder;
    ASSERT_TRUE(GenerateDocumentation(folder.Path(), kData));
    std::size_t links = 0;
    for (const fs::path& page : PagesUnder(folder.Path()))
        for (const std::string& href : HrefsOf(ReadText(page)))
        {
            ASSERT_EQ(href.find(':'), std::string::npos) << page << " links outside: " << href;
            EXPECT_TRUE(fs::exists(page.parent_path() / DecodeHref(href))) << page << " -> " << href;
            ++links;
        }
    EXPECT_GT(links, 100u);
}

TEST(GenerateDocumentationTest, EveryRegisteredClassHasAPage)
{
    TempFolder folder;
    ASSERT_TRUE(GenerateDocumentation(folder.Path(), kData));
    std::size_t classes = 0;
    for (const Meta::Data* type : Meta::AllTypes())
    {
        if (type->m_IsPrimitive || type->m_Name == "LuaComponent" || type->m_Name.find(' ') != std::string::npos)
            continue;
        const std::string page = ReadText(fs::path(folder.Path()) / "Files" / (type->m_Name + ".html"));
        EXPECT_NE(page.find("<h1>" + type->m_Name + "</h1>"), std::string::npos) << type->m_Name;
        ++classes;
    }
    EXPECT_GT(classes, 50u);
}

TEST(GenerateDocumentationTest, MissingTemplatesAreReportedAndTheBuiltInOnesUsed)
{
    TempFolder folder;
    TempFolder emptyData;
    testing::internal::CaptureStdout();
    const bool written = GenerateDocumentation(folder.Path() + "docs", emptyData.Path());
    const std::string output = testing::internal::GetCapturedStdout();
    ASSERT_TRUE(written);
    EXPECT_NE(output.find("Documentation template not found"), std::string::npos) << output;
    EXPECT_NE(output.find("ComponentTemplate.html"), std::string::npos) << output;
    EXPECT_NE(output.find("GroupTemplate.html"), std::string::npos) << output;
    const fs::path docs = fs::path(folder.Path()) / "docs";
    EXPECT_FALSE(ReadText(docs / "style.css").empty());
    EXPECT_NE(ReadText(docs / "Files" / "Transform.html").find("<h1>Transform</h1>"), std::string::npos);
    EXPECT_NE(ReadText(docs / "Files" / "Components.html").find("Transform"), std::string::npos);
}

TEST(GenerateDocumentationTest, AFolderThatCannotBeMadeIsReportedAndNothingIsWritten)
{
    TempFolder folder;
    folder.Write("blocker", "a file where the folder would go");
    testing::internal::CaptureStdout();
    EXPECT_FALSE(GenerateDocumentation(folder.Path() + "blocker/docs", kData));
    EXPECT_NE(testing::internal::GetCapturedStdout().find("Could not make the documentation folder"),
              std::string::npos);
}

TEST(GenerateDocumentationTest, HeadlessChromiumShowsTheIndexAndAClassPage)
{
    if (RunCommand("command -v chromium").empty())
        GTEST_SKIP() << "chromium is not installed (Debian package `chromium`; ./setup.sh test installs it)";
    TempFolder folder;
    ASSERT_TRUE(GenerateDocumentation(folder.Path(), kData));
    const std::string chromium = "timeout 120 chromium --headless --disable-gpu --no-sandbox --dump-dom "
                                 "--user-data-dir=\"" + folder.Path() + "profile\" \"file://";
    const std::string index = RunCommand(chromium + folder.Path() + "index.html\" 2>/dev/null");
    EXPECT_NE(index.find("<title>Vorn Documentation</title>"), std::string::npos) << index;
    EXPECT_NE(index.find(">Space Systems</a>"), std::string::npos) << index;
    const std::string page = RunCommand(chromium + folder.Path() + "Files/Transform.html\" 2>/dev/null");
    EXPECT_NE(page.find("<h1>Transform</h1>"), std::string::npos) << page;
    EXPECT_NE(page.find(">Components</a>"), std::string::npos) << page;
    EXPECT_NE(page.find("Methods"), std::string::npos) << page;
}
