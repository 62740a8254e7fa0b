#include "engine/Files.h"

#include "engine/Log.h"
#include "platform/Paths.h"

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <optional>
#include <sstream>
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
}

const std::string& GetDataDirectory()
{
    return DataDirectory();
}

void SetDataDirectory(const std::string& path)
{
    std::string directory = path;
    if (directory.empty() || !IsSeparator(directory.back()))
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
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(Forward(folder), error))
    {
        if (!entry.is_regular_file(error))
            continue;
        const std::string name = entry.path().filename().string();
        out.push_back(withPath ? folder + (IsSeparator(folder.back()) ? "" : "/") + name : name);
    }
}

void ListFolders(const std::string& folder, std::vector<std::string>& out)
{
    std::error_code error;
    const std::string base = folder.empty() || IsSeparator(folder.back()) ? folder : folder + "/";
    for (const auto& entry : std::filesystem::directory_iterator(Forward(base), error))
    {
        if (!entry.is_directory(error))
            continue;
        const std::string path = base + entry.path().filename().string() + "/";
        out.push_back(path);
        ListFolders(path, out);
    }
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
