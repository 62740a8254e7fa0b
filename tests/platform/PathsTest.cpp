#include "platform/Paths.h"

#include "support/Scoped.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

// A fresh folder under the system's temporary folder, removed on scope exit.
class TemporaryFolder
{
public:
    explicit TemporaryFolder(const std::string& name)
        : m_Path(fs::temp_directory_path() / (name + "-" + std::to_string(getpid())))
    {
        fs::remove_all(m_Path);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        fs::remove_all(m_Path, ignored);
    }
    const fs::path& Path() const { return m_Path; }

private:
    fs::path m_Path;
};
}

TEST(PlatformPathsTest, OverrideGivesThatFolderWithTrailingSlashAndCreatesIt)
{
    TemporaryFolder temp("vorn-paths-override");
    const std::string folder = (temp.Path() / "nested" / "appdata").string();
    ScopedEnvironment appData(Platform::kAppDataOverrideVariable, folder.c_str());

    bool ok = false;
    const std::string result = Platform::GetApplicationDataFolder(ok);

    EXPECT_TRUE(ok);
    EXPECT_EQ(result, folder + "/");
    EXPECT_TRUE(fs::is_directory(folder));
}

TEST(PlatformPathsTest, OverrideThatAlreadyEndsInSlashIsKeptAsIs)
{
    TemporaryFolder temp("vorn-paths-slash");
    const std::string folder = temp.Path().string() + "/";
    ScopedEnvironment appData(Platform::kAppDataOverrideVariable, folder.c_str());

    bool ok = false;
    EXPECT_EQ(Platform::GetApplicationDataFolder(ok), folder);
    EXPECT_TRUE(ok);
}

TEST(PlatformPathsTest, OverrideThatCannotBeCreatedIsNotOk)
{
    TemporaryFolder temp("vorn-paths-blocked");
    fs::create_directories(temp.Path());
    const fs::path file = temp.Path() / "file";
    std::ofstream(file) << "not a folder";
    const std::string folder = (file / "appdata").string();
    ScopedEnvironment appData(Platform::kAppDataOverrideVariable, folder.c_str());

    bool ok = true;
    const std::string result = Platform::GetApplicationDataFolder(ok);

    EXPECT_FALSE(ok);
    EXPECT_EQ(result, folder + "/");
}

TEST(PlatformPathsTest, WithoutOverrideFolderLiesUnderXdgDataHome)
{
    TemporaryFolder temp("vorn-paths-xdg");
    fs::create_directories(temp.Path());
    const std::string dataHome = temp.Path().string();
    ScopedEnvironment appData(Platform::kAppDataOverrideVariable, nullptr);
    ScopedEnvironment xdg("XDG_DATA_HOME", dataHome.c_str());

    bool ok = false;
    const std::string result = Platform::GetApplicationDataFolder(ok);

    ASSERT_TRUE(ok);
    EXPECT_EQ(result.rfind(dataHome, 0), 0u) << result;
    EXPECT_NE(result.find("Marrowe/VornGame"), std::string::npos) << result;
    EXPECT_EQ(result.back(), '/');
    EXPECT_TRUE(fs::is_directory(result));
}

TEST(PlatformPathsTest, EmptyOverrideIsIgnored)
{
    TemporaryFolder temp("vorn-paths-empty");
    fs::create_directories(temp.Path());
    const std::string dataHome = temp.Path().string();
    ScopedEnvironment appData(Platform::kAppDataOverrideVariable, "");
    ScopedEnvironment xdg("XDG_DATA_HOME", dataHome.c_str());

    bool ok = false;
    const std::string result = Platform::GetApplicationDataFolder(ok);

    EXPECT_TRUE(ok);
    EXPECT_EQ(result.rfind(dataHome, 0), 0u) << result;
}
