// Util file paths: the data directory the game reads ("../Data/" by default,
// replaced by --datadir) and the per-user application data folder it writes to
// (log, settings, dumps, backups). Paths are written with '/', and either
// separator is accepted where a path comes from the user or a data file.
#pragma once

#include <string>

namespace Util
{
// The data directory, always ending in a separator.
const std::string& GetDataDirectory();
// Replaces the data directory, adding a trailing '/' when it has no separator at the end.
void SetDataDirectory(const std::string& path);
// The application data folder, ending in '/'; made and cached on first use.
const std::string& GetAppDataDirectory();
// Forgets the cached application data folder, so the next call looks again.
void ResetAppDataDirectory();
// True if the path names an existing folder.
bool DirectoryExists(const std::string& path);
}
