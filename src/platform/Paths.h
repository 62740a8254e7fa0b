// Paths: where the engine may write the user's files. The application data
// folder is the per-user folder "Marrowe/VornGame/" (under XDG_DATA_HOME,
// normally ~/.local/share/). Setting the environment variable VORN_APPDATA_DIR
// redirects it, so that tests never write into the real home folder.
#pragma once

#include <string>

namespace Platform
{
// Name of the environment variable that redirects the application data folder.
inline constexpr const char* kAppDataOverrideVariable = "VORN_APPDATA_DIR";

// The per-user application data folder, ending in '/', created if missing.
// Returns false in `ok` when no such folder could be found or made; the text
// returned is then the best guess (possibly empty).
std::string GetApplicationDataFolder(bool& ok);
}
