#include "engine/Files.h"

#include "support/Scoped.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace
{
// Points the application data folder at `folder` for one scope.
class ScopedAppData
{
public:
    explicit ScopedAppData(const std::string& folder) : m_Variable("VORN_APPDATA_DIR", folder.c_str())
    {
        Util::ResetAppDataDirectory();
    }
    ~ScopedAppData() { Util::ResetAppDataDirectory(); }

private:
    ScopedEnvironment m_Variable;
};

std::vector<std::string> Sorted(std::vector<std::string> names)
{
    std::sort(names.begin(), names.end());
    return names;
}
}

TEST(FilesTest, DataDirectoryGetsATrailingSeparator)
{
    const std::string old = Util::GetDataDirectory();
    Util::SetDataDirectory("../Other");
    EXPECT_EQ(Util::GetDataDirectory(), "../Other/");
    Util::SetDataDirectory(old);
}

TEST(FilesTest, DataDirectoryWithATrailingSeparatorIsNotDoubled)
{
    const std::string old = Util::GetDataDirectory();
    Util::SetDataDirectory("../Other/");
    EXPECT_EQ(Util::GetDataDirectory(), "../Other/");
    Util::SetDataDirectory("..\\Other\\");
    EXPECT_EQ(Util::GetDataDirectory(), "..\\Other\\");
    Util::SetDataDirectory(old);
}

TEST(FilesTest, AppDataFolderIsMadeWithItsDumpFolder)
{
    TempFolder temp;
    ScopedAppData appData(temp.Path() + "Marrowe/VornGame");
    EXPECT_EQ(Util::GetAppDataDirectory(), temp.Path() + "Marrowe/VornGame/");
    EXPECT_TRUE(std::filesystem::is_directory(temp.Path() + "Marrowe/VornGame/MiniDumps"));
    EXPECT_EQ(Util::GetDumpDirectory(), temp.Path() + "Marrowe/VornGame/MiniDumps/");
    EXPECT_EQ(Util::GetBackupDirectory(), temp.Path() + "Marrowe/VornGame/Backup/");
}

TEST(FilesTest, PathsSplitIntoFolderNameAndExtension)
{
    EXPECT_EQ(Util::GetDirectory("../Data/Rooms/Start.txt"), "../Data/Rooms/");
    EXPECT_EQ(Util::GetDirectory("..\\Data\\Rooms\\Start.txt"), "..\\Data\\Rooms\\");
    EXPECT_EQ(Util::GetDirectory("Start.txt"), "");
    EXPECT_EQ(Util::GetExtension("../Data/Rooms/Start.txt"), ".txt");
    EXPECT_EQ(Util::GetExtension("Makefile"), "");
    EXPECT_EQ(Util::GetFileName("../Data/Archetypes/Crate.big.txt"), "Crate");
    EXPECT_EQ(Util::GetFileName("..\\Data\\Archetypes\\Crate.txt"), "Crate");
    EXPECT_EQ(Util::GetFileName("Crate"), "Crate");
}

TEST(FilesTest, ListFilesGivesNamesOrPaths)
{
    TempFolder temp;
    temp.Write("a.txt", "");
    temp.Write("b.lua", "");
    temp.Write("sub/c.txt", "");
    std::vector<std::string> names;
    Util::ListFiles(temp.Path(), names, false);
    EXPECT_EQ(Sorted(names), (std::vector<std::string>{"a.txt", "b.lua"}));
    std::vector<std::string> paths;
    Util::ListFiles(temp.Path(), paths, true);
    EXPECT_EQ(Sorted(paths), (std::vector<std::string>{temp.Path() + "a.txt", temp.Path() + "b.lua"}));
}

TEST(FilesTest, ListFoldersWalksDepthFirst)
{
    TempFolder temp;
    temp.Write("one/two/x.txt", "");
    temp.Write("three/y.txt", "");
    std::vector<std::string> folders;
    Util::ListFolders(temp.Path(), folders);
    ASSERT_EQ(folders.size(), 3u);
    const auto one = std::find(folders.begin(), folders.end(), temp.Path() + "one/");
    ASSERT_NE(one, folders.end());
    EXPECT_EQ(*(one + 1), temp.Path() + "one/two/");
    EXPECT_NE(std::find(folders.begin(), folders.end(), temp.Path() + "three/"), folders.end());
}

TEST(FilesTest, ListFilesRecursiveGivesSubfoldersFirstThenTheFolder)
{
    TempFolder temp;
    temp.Write("top.txt", "");
    temp.Write("one/two/deep.txt", "");
    std::vector<std::string> files;
    Util::ListFilesRecursive(temp.Path(), files);
    EXPECT_EQ(files, (std::vector<std::string>{temp.Path() + "one/two/deep.txt", temp.Path() + "top.txt"}));
}

TEST(FilesTest, ListingAMissingFolderGivesNothing)
{
    std::vector<std::string> names;
    Util::ListFiles("/nonexistent/folder/", names, false);
    Util::ListFilesRecursive("/nonexistent/folder/", names);
    EXPECT_TRUE(names.empty());
}

TEST(FilesTest, FilterByExtensionKeepsMatchingNames)
{
    std::vector<std::string> kept;
    Util::FilterByExtension({"a.txt", "b.lua", "txt", "c.txt.bak", "d.txt"}, ".txt", kept);
    EXPECT_EQ(kept, (std::vector<std::string>{"a.txt", "d.txt"}));
}

TEST(FilesTest, CreateDirectoriesMakesEveryLevelAndToleratesExistingOnes)
{
    TempFolder temp;
    Util::CreateDirectories(temp.Path() + "a/b/c/");
    Util::CreateDirectories(temp.Path() + "a\\b\\c\\");
    EXPECT_TRUE(std::filesystem::is_directory(temp.Path() + "a/b/c"));
}

TEST(FilesTest, RenameFileStaysInItsFolder)
{
    TempFolder temp;
    const std::string path = temp.Write("Rooms/Old.txt", "room");
    EXPECT_TRUE(Util::RenameFile(path, "New.txt"));
    EXPECT_EQ(temp.Read("Rooms/New.txt"), "room");
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(Util::RenameFile(path, "Again.txt"));
}

TEST(FilesTest, TimeStampHasTheDateAndTimeInFixedWidths)
{
    EXPECT_TRUE(std::regex_match(Util::TimeStamp(), std::regex(R"(--\d{4}-\d{2}-\d{2}--\d{2}-\d{2}-\d{2})")))
        << Util::TimeStamp();
}

TEST(FilesTest, BackupMirrorsTheFoldersAndStampsTheName)
{
    TempFolder temp;
    ScopedAppData appData(temp.Path() + "appdata");
    const std::string original = temp.Write("Data/Rooms/Start.txt", "room one");
    const std::string copy = Util::Backup(original);
    ASSERT_FALSE(copy.empty());
    std::string mirrored = temp.Path() + "Data/Rooms/";
    mirrored.erase(0, 1);
    const std::string expectedFolder = Util::GetBackupDirectory() + mirrored;
    EXPECT_EQ(copy.substr(0, expectedFolder.size()), expectedFolder);
    EXPECT_TRUE(std::regex_match(copy.substr(expectedFolder.size()),
                                 std::regex(R"(Start--\d{4}-\d{2}-\d{2}--\d{2}-\d{2}-\d{2}\.txt)")))
        << copy;
    std::ifstream file(copy);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()), "room one");
}

TEST(FilesTest, BackupLeavesOutParentFolderSteps)
{
    TempFolder temp;
    ScopedAppData appData(temp.Path() + "appdata");
    temp.Write("Data/Biomes.txt", "biomes");
    const std::string previous = std::filesystem::current_path().string();
    std::filesystem::current_path(temp.Path() + "Data");
    const std::string copy = Util::Backup("../Data/Biomes.txt");
    std::filesystem::current_path(previous);
    EXPECT_EQ(copy.rfind(Util::GetBackupDirectory() + "Data/Biomes--", 0), 0u) << copy;
}
