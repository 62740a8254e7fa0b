#include "engine/Files.h"

#include "engine/Log.h"
#include "platform/Paths.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string_view>
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

bool IsSeparator(char c)
{
    return c == '/' || c == '\\';
}

std::size_t LastSeparator(const std::string& path)
{
    return path.find_last_of("/\\");
}

// The path with every '\' turned into '/'.
std::string Forward(std::string path)
{
    for (char& c : path)
        if (c == '\\')
            c = '/';
    return path;
}

// What a listing keeps of a folder's entries.
enum class EntryKind
{
    File,
    Folder
};

// The names of the entries of one kind in `folder`, sorted. Links are looked through (a link to a
// file is a file). Every error ends the listing quietly: a folder that can't be read gives nothing,
// one that vanishes while it's read gives what was read before.
std::vector<std::string> SortedEntries(const std::string& folder, EntryKind kind)
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator entry(Forward(folder), error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error))
    {
        std::error_code typeError;
        const bool wanted =
            kind == EntryKind::File ? entry->is_regular_file(typeError) : entry->is_directory(typeError);
        if (wanted && !typeError)
            names.push_back(entry->path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The folder's path with every link and "." or ".." step resolved, or "" if it can't be.
std::string RealPath(const std::string& folder)
{
    std::error_code error;
    const std::filesystem::path real = std::filesystem::canonical(Forward(folder), error);
    return error ? std::string() : real.string();
}

// ListFolders below `base` (ending in a separator). `above` holds the real paths of `base` and the
// folders above it: a folder that is one of them is reached through a link that leads back up,
// and following it would never end.
void ListFoldersBelow(const std::string& base, std::vector<std::string>& out, std::vector<std::string>& above)
{
    for (const std::string& name : SortedEntries(base, EntryKind::Folder))
    {
        const std::string path = base + name + "/";
        const std::string real = RealPath(path);
        if (real.empty() || std::find(above.begin(), above.end(), real) != above.end())
            continue;
        out.push_back(path);
        above.push_back(real);
        ListFoldersBelow(path, out, above);
        above.pop_back();
    }
}
}

std::string NormalizePath(const std::string& path)
{
    if (path.empty())
        return path;
    const std::string forward = Forward(path);
    const bool absolute = forward.front() == '/';
    const bool trailing =
        forward.back() == '/' || (forward.size() >= 2 && forward.compare(forward.size() - 2, 2, "/.") == 0);
    std::string normal = absolute ? "/" : "";
    std::size_t start = 0;
    while (start <= forward.size())
    {
        const std::size_t end = std::min(forward.find('/', start), forward.size());
        const std::string_view segment = std::string_view(forward).substr(start, end - start);
        if (!segment.empty() && segment != ".")
        {
            if (!normal.empty() && normal.back() != '/')
                normal += '/';
            normal += segment;
        }
        start = end + 1;
    }
    if (normal.empty())
        return trailing ? "./" : ".";
    if (trailing && normal.back() != '/')
        normal += '/';
    return normal;
}

const std::string& GetDataDirectory()
{
    return DataDirectory();
}

void SetDataDirectory(const std::string& path)
{
    std::string directory = path.empty() ? std::string("./") : NormalizePath(path);
    if (directory.back() != '/')
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
        else
            CreateDirectories(*cached + "MiniDumps/");
    }
    return *cached;
}

void ResetAppDataDirectory()
{
    AppDataDirectory().reset();
}

std::string GetDumpDirectory()
{
    return GetAppDataDirectory() + "MiniDumps/";
}

std::string GetBackupDirectory()
{
    return GetAppDataDirectory() + "Backup/";
}

bool DirectoryExists(const std::string& path)
{
    std::error_code error;
    return std::filesystem::is_directory(Forward(path), error);
}

std::string GetDirectory(const std::string& path)
{
    const std::size_t separator = LastSeparator(path);
    return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

std::string GetExtension(const std::string& path)
{
    const std::size_t dot = path.rfind('.');
    return dot == std::string::npos ? std::string() : path.substr(dot);
}

std::string GetFileName(const std::string& path)
{
    const std::size_t separator = LastSeparator(path);
    const std::string name = separator == std::string::npos ? path : path.substr(separator + 1);
    return name.substr(0, name.find('.'));
}

void ListFiles(const std::string& folder, std::vector<std::string>& out, bool withPath)
{
    if (folder.empty())
        return;
    const std::string base = IsSeparator(folder.back()) ? folder : folder + "/";
    for (const std::string& name : SortedEntries(folder, EntryKind::File))
        out.push_back(withPath ? base + name : name);
}

void ListFolders(const std::string& folder, std::vector<std::string>& out)
{
    if (folder.empty())
        return;
    const std::string base = IsSeparator(folder.back()) ? folder : folder + "/";
    std::vector<std::string> above = {RealPath(base)};
    ListFoldersBelow(base, out, above);
}

void ListFilesRecursive(const std::string& folder, std::vector<std::string>& out)
{
    std::vector<std::string> folders;
    ListFolders(folder, folders);
    for (const std::string& subfolder : folders)
        ListFiles(subfolder, out, true);
    ListFiles(folder, out, true);
}

void FilterByExtension(const std::vector<std::string>& in, const std::string& extension,
                       std::vector<std::string>& out)
{
    for (const std::string& name : in)
        if (name.size() >= extension.size() && name.compare(name.size() - extension.size(), extension.size(),
                                                            extension) == 0)
            out.push_back(name);
}

void CreateDirectories(const std::string& path)
{
    std::error_code error;
    std::filesystem::create_directories(Forward(path), error);
}

bool CopyFile(const std::string& from, const std::string& to)
{
    std::error_code error;
    std::filesystem::copy_file(Forward(from), Forward(to), std::filesystem::copy_options::overwrite_existing, error);
    return !error;
}

bool RenameFile(const std::string& path, const std::string& newName)
{
    std::error_code error;
    std::filesystem::rename(Forward(path), Forward(GetDirectory(path) + newName), error);
    return !error;
}

std::string TimeStamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char stamp[40];
    std::snprintf(stamp, sizeof(stamp), "--%04i-%02i-%02i--%02i-%02i-%02i", local.tm_year + 1900, local.tm_mon + 1,
                  local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    return stamp;
}

std::string Backup(const std::string& path)
{
    std::string mirrored = GetBackupDirectory();
    std::stringstream segments(Forward(GetDirectory(path)));
    for (std::string segment; std::getline(segments, segment, '/');)
        if (!segment.empty() && segment != ".." && segment != ".")
            mirrored += segment + "/";
    CreateDirectories(mirrored);
    const std::string copy = mirrored + GetFileName(path) + TimeStamp() + GetExtension(path);
    std::error_code error;
    std::filesystem::copy_file(Forward(path), copy, std::filesystem::copy_options::overwrite_existing, error);
    return error ? std::string() : copy;
}
}
