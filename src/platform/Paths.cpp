#include "platform/Paths.h"

#include <SDL.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace Platform
{
namespace
{
// The folder named by the override variable, made if missing. The override is
// never abandoned for the real home folder: a folder that can't be made is an error.
std::string OverrideFolder(const char* value, bool& ok)
{
    std::string folder = value;
    if (folder.back() != '/')
        folder += '/';
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    ok = !error && std::filesystem::is_directory(folder, error);
    return folder;
}

// The per-user folder SDL chooses (under XDG_DATA_HOME), made if missing.
std::string PreferenceFolder(bool& ok)
{
    char* path = SDL_GetPrefPath("Marrowe", "VornGame");
    if (path == nullptr)
    {
        ok = false;
        return {};
    }
    std::string folder = path;
    SDL_free(path);
    if (folder.empty() || folder.back() != '/')
        folder += '/';
    ok = true;
    return folder;
}
}

std::string GetApplicationDataFolder(bool& ok)
{
    const char* overrideValue = std::getenv(kAppDataOverrideVariable);
    if (overrideValue != nullptr && overrideValue[0] != '\0')
        return OverrideFolder(overrideValue, ok);
    return PreferenceFolder(ok);
}
}
