#include "engine/Files.h"

#include "support/Scoped.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <thread>
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
    EXPECT_EQ(Util::GetDataDirectory(), "../Other/");
    Util::SetDataDirectory(old);
}

TEST(FilesTest, DataDirectoryWithBackslashesGetsOneSpelling)
{
    const std::string old = Util::GetDataDirectory();
    Util::SetDataDirectory("..\\Other");
    EXPECT_EQ(Util::GetDataDirectory(), "../Other/");
    Util::SetDataDirectory(".\\Data\\\\Rooms\\.\\");
    EXPECT_EQ(Util::GetDataDirectory(), "Data/Rooms/");
    Util::SetDataDirectory("");
    EXPECT_EQ(Util::GetDataDirectory(), "./");
    Util::SetDataDirectory(".");
    EXPECT_EQ(Util::GetDataDirectory(), "./");
    Util::SetDataDirectory(old);
}

TEST(FilesTest, NormalizePathGivesOneSpellingPerFile)
{
    EXPECT_EQ(Util::NormalizePath("..\\Data\\Rooms\\Start.txt"), "../Data/Rooms/Start.txt");
    EXPECT_EQ(Util::NormalizePath("../Data//Rooms///Start.txt"), "../Data/Rooms/Start.txt");
    EXPECT_EQ(Util::NormalizePath("../Data/./Rooms/././Start.txt"), "../Data/Rooms/Start.txt");
    EXPECT_EQ(Util::NormalizePath("./Data/Start.txt"), "Data/Start.txt");
    EXPECT_EQ(Util::NormalizePath(".\\.\\Data\\Start.txt"), "Data/Start.txt");
    // Parent steps stay, leading or inside: folding them would be wrong across links.
    EXPECT_EQ(Util::NormalizePath("../../Data/../Other/a.txt"), "../../Data/../Other/a.txt");
    // A trailing separator stays, and only one.
    EXPECT_EQ(Util::NormalizePath("../Data/"), "../Data/");
    EXPECT_EQ(Util::NormalizePath("../Data\\\\"), "../Data/");
    EXPECT_EQ(Util::NormalizePath("../Data/."), "../Data/");
    EXPECT_EQ(Util::NormalizePath("../Data"), "../Data");
    // Absolute paths stay absolute.
    EXPECT_EQ(Util::NormalizePath("/tmp//a/./b"), "/tmp/a/b");
    EXPECT_EQ(Util::NormalizePath("\\tmp\\a"), "/tmp/a");
    EXPECT_EQ(Util::NormalizePath("/"), "/");
    // Nothing but the current folder.
    EXPECT_EQ(Util::NormalizePath(""), "");
    EXPECT_EQ(Util::NormalizePath("."), ".");
    EXPECT_EQ(Util::NormalizePath("./"), "./");
    EXPECT_EQ(Util::NormalizePath(".//./"), "./");
    // Normalising twice changes nothing.
    for (const char* path : {"..\\a//b/./c\\", "./x", "/", ".", "a/.", "../"})
        EXPECT_EQ(Util::NormalizePath(Util::NormalizePath(path)), Util::NormalizePath(path)) << path;
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

TEST(FilesTest, ListFilesGivesNamesSortedByName)
{
    TempFolder temp;
    const std::vector<std::string> names = {"Zeta.txt", "alpha.txt", "Beta.txt", "m10.txt", "m2.txt",
                                            "delta.lua", "Crate.txt", "crate.txt", "_first.txt", "9.txt"};
    for (const std::string& name : names)
        temp.Write(name, "");
    std::vector<std::string> listed;
    Util::ListFiles(temp.Path(), listed, false);
    EXPECT_EQ(listed, Sorted(names));
    std::vector<std::string> paths;
    Util::ListFiles(temp.Path(), paths, true);
    ASSERT_EQ(paths.size(), names.size());
    for (std::size_t i = 0; i < paths.size(); ++i)
        EXPECT_EQ(paths[i], temp.Path() + Sorted(names)[i]);
}

TEST(FilesTest, ListFoldersIsSortedAtEveryLevel)
{
    TempFolder temp;
    for (const char* file : {"b/y/f", "b/x/f", "a/f", "c/z/w/f", "c/a/f", "B/f", "b/Z/f"})
        temp.Write(file, "");
    std::vector<std::string> folders;
    Util::ListFolders(temp.Path(), folders);
    std::vector<std::string> expected;
    for (const char* folder : {"B/", "a/", "b/", "b/Z/", "b/x/", "b/y/", "c/", "c/a/", "c/z/", "c/z/w/"})
        expected.push_back(temp.Path() + folder);
    EXPECT_EQ(folders, expected);
    std::vector<std::string> files;
    Util::ListFilesRecursive(temp.Path(), files);
    std::vector<std::string> expectedFiles;
    for (const char* file : {"B/f", "a/f", "b/Z/f", "b/x/f", "b/y/f", "c/a/f", "c/z/w/f"})
        expectedFiles.push_back(temp.Path() + file);
    EXPECT_EQ(files, expectedFiles);
}

TEST(FilesTest, ListFoldersDoesNotFollowLinksIntoACycle)
{
    TempFolder temp;
    temp.Write("a/b/f.txt", "");
    temp.Write("c/g.txt", "");
    // A link back to the top, one to its own parent, and one to a folder listed anyway, which is
    // then listed under both names.
    std::filesystem::create_directory_symlink(temp.Path(), temp.Path() + "a/b/top");
    std::filesystem::create_directory_symlink("..", temp.Path() + "a/up");
    std::filesystem::create_directory_symlink(temp.Path() + "c", temp.Path() + "a/toC");
    std::vector<std::string> folders;
    Util::ListFolders(temp.Path(), folders);
    EXPECT_EQ(folders, (std::vector<std::string>{temp.Path() + "a/", temp.Path() + "a/b/", temp.Path() + "a/toC/",
                                                 temp.Path() + "c/"}));
    std::vector<std::string> files;
    Util::ListFilesRecursive(temp.Path(), files);
    EXPECT_EQ(files, (std::vector<std::string>{temp.Path() + "a/b/f.txt", temp.Path() + "a/toC/g.txt",
                                               temp.Path() + "c/g.txt"}));
}

TEST(FilesTest, ListFoldersFollowsALinkToAFolderOutsideTheTree)
{
    TempFolder temp;
    temp.Write("outside/shared/f.txt", "");
    temp.Write("tree/own.txt", "");
    std::filesystem::create_directory_symlink(temp.Path() + "outside", temp.Path() + "tree/linked");
    std::vector<std::string> folders;
    Util::ListFolders(temp.Path() + "tree", folders);
    EXPECT_EQ(folders, (std::vector<std::string>{temp.Path() + "tree/linked/", temp.Path() + "tree/linked/shared/"}));
}

TEST(FilesTest, ListingAFolderThatVanishesMeanwhileGivesAPartialListAndNoException)
{
    // A folder large enough to be read in several pieces is emptied and removed by another thread
    // while it's listed, over and over; each listing ends quietly with what it had read.
    TempFolder temp;
    const std::string folder = temp.Path() + "vanishing/";
    const std::string name(100, 'n');
    constexpr int kFiles = 600;
    for (int round = 0; round < 8; ++round)
    {
        std::filesystem::create_directories(folder + "sub");
        for (int i = 0; i < kFiles; ++i)
            std::ofstream(folder + name + std::to_string(i));
        std::atomic<bool> removed = false;
        std::thread remover([&] {
            std::error_code error;
            std::filesystem::remove_all(folder, error);
            removed = true;
        });
        while (!removed)
        {
            std::vector<std::string> names;
            EXPECT_NO_THROW(Util::ListFiles(folder, names, true));
            EXPECT_LE(names.size(), static_cast<std::size_t>(kFiles));
            EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
            std::vector<std::string> folders;
            EXPECT_NO_THROW(Util::ListFilesRecursive(folder, folders));
        }
        remover.join();
    }
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
