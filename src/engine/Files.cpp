#include "engine/Files.h"

#include "engine/Log.h"
#include "platform/Paths.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace Util
{
namespace
{
std::string& DataDirectory()
{
    static std::string directory = "../Data/";
    return directory;
}

std::optional<std::string>& AppDataDirectory()
{
    static std::optional<std::string> directory;
    return directory;
}
}

const std::string& GetDataDirectory()
{
    return DataDirectory();
}

void SetDataDirectory(const std::string& path)
{
    std::string directory = path;
    if (directory.empty() || (directory.back() != '/' && directory.back() != '\\'))
        directory += '/';
    DataDirectory() = directory;
}

const std::string& GetAppDataDirectory()
{
    std::optional<std::string>& cached = AppDataDirectory();
    if (!cached)
    {
        bool ok = false;
        cached = Platform::GetApplicationDataFolder(ok);
        if (!ok)
            FATAL_ERROR("Could not create or get the AppData folder");
    }
    return *cached;
}

void ResetAppDataDirectory()
{
    AppDataDirectory().reset();
}

bool DirectoryExists(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}
}
