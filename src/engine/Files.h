// Util file helpers: the data directory the game reads ("../Data/" by default,
// replaced by --datadir), the per-user application data folder it writes to
// (log, settings, crash reports in "MiniDumps/", backups in "Backup/"), and
// plain functions on path strings: splitting, listing, creating, copying.
//
// Paths are written with '/'; every function here accepts '\' as well, since
// data files written on other machines may carry it. Paths that name a file the
// engine keeps track of (watched files, files it writes, the data directory) are
// passed through NormalizePath where they come in, so that every spelling of one
// file is one string. Listings come back sorted by name, so data loads in the
// same order on every machine.
#pragma once

#include <string>
#include <vector>

namespace Util
{
// One spelling for a path: '\' becomes '/', "//" and "/./" collapse, a leading "./" goes;
// "../" steps and a trailing '/' stay (a\.\b\ gives a/b/, .\ gives ./).
std::string NormalizePath(const std::string& path);
// The data directory, normalised and always ending in '/'.
const std::string& GetDataDirectory();
// Replaces the data directory with the normalised path, adding a trailing '/' when it has none
// ("" stands for the working directory, "./").
void SetDataDirectory(const std::string& path);
// The application data folder, ending in '/'; made (with its dump folder) and cached on first use.
const std::string& GetAppDataDirectory();
// Forgets the cached application data folder, so the next call looks again.
void ResetAppDataDirectory();
// The folder crash reports are written to: application data folder + "MiniDumps/".
std::string GetDumpDirectory();
// The folder backups are copied to: application data folder + "Backup/".
std::string GetBackupDirectory();
// True if the path names an existing folder.
bool DirectoryExists(const std::string& path);

// The text up to and including the last separator ("" when there is none).
std::string GetDirectory(const std::string& path);
// The text from the last '.' on ("" when there is none).
std::string GetExtension(const std::string& path);
// The text behind the last separator, up to the first '.' of it.
std::string GetFileName(const std::string& path);
// Appends the names of the files in `folder`, sorted: plain names, or with the folder in front if
// `withPath`. A folder that can't be read, or vanishes meanwhile, gives what was read of it.
void ListFiles(const std::string& folder, std::vector<std::string>& out, bool withPath);
// Appends every subfolder of `folder`, recursively, depth first and sorted at each level, as full
// paths ending in '/'. Links to folders are followed, except those that lead back to a folder
// above them, so a link cycle ends.
void ListFolders(const std::string& folder, std::vector<std::string>& out);
// Appends, with their paths, the files of every subfolder of `folder`, then those of `folder` itself.
void ListFilesRecursive(const std::string& folder, std::vector<std::string>& out);
// Appends the names of `in` that end in `extension`.
void FilterByExtension(const std::vector<std::string>& in, const std::string& extension,
                       std::vector<std::string>& out);
// Creates each folder of the path from the top down; folders that exist are fine.
void CreateDirectories(const std::string& path);
// Copies a file to `to`, replacing what is there; true if it worked.
bool CopyFile(const std::string& from, const std::string& to);
// Renames a file within its folder; true if it worked.
bool RenameFile(const std::string& path, const std::string& newName);
// The local time as "--YYYY-MM-DD--hh-mm-ss", the stamp of backups and crash reports.
std::string TimeStamp();
// Copies a file into the backup folder, mirroring its folders ("../" left out), as
// name + time stamp + extension; gives the copy's path, or "" if the copy failed.
std::string Backup(const std::string& path);
}
