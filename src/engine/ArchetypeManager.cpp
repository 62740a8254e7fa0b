// The archetype manager's table of archetypes and their files: loading,
// reloading, creating, copying, renaming and saving. The text reader and writer
// of component lists are in ArchetypeText.cpp.
#include "engine/ArchetypeManager.h"

#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "engine/Log.h"
#include "utilities/Serialization/Serializer.h"

#include <mutex>

namespace Engine
{
namespace
{
// The folder archetype files live in, under the data directory.
constexpr const char* kFolder = "Archetypes/";
// The extension of archetype files.
constexpr const char* kExtension = ".txt";
}

ArchetypeManager& ArchetypeManager::Get()
{
    // Lives until the process ends; shutdown empties it in its turn.
    static ArchetypeManager* manager = new ArchetypeManager();
    return *manager;
}

ArchetypeManager::~ArchetypeManager()
{
    Clear();
}

void ArchetypeManager::LoadAll()
{
    const std::string root = Util::GetDataDirectory() + kFolder;
    std::vector<std::string> folders{root};
    Util::ListFolders(root, folders);
    for (const std::string& folder : folders)
    {
        std::vector<std::string> listed;
        std::vector<std::string> files;
        Util::ListFiles(folder, listed, true);
        Util::FilterByExtension(listed, kExtension, files);
        for (const std::string& file : files)
            Watch(file);
    }
}

void ArchetypeManager::Watch(const std::string& path)
{
    FileWatcher::Get().Add(path, true, this, [this](const std::string& file) { OnFileChanged(file); });
}

void ArchetypeManager::OnFileChanged(const std::string& path)
{
    Util::Serializer reader;
    if (!reader.OpenRead(path))
        return;
    auto* object = new GameObject();
    AddComponentsFromStream(object, reader);
    reader.Close();
    object->m_Name = Util::GetFileName(path);

    // Under --RemoveFileErrors the file is written back, without what no longer exists.
    if (Util::IsTolerantRead())
        WriteFile(path, object);

    const std::string normal = Util::NormalizePath(path);
    ArchetypeId& id = m_Ids[object->m_Name];
    if (id == 0)
    {
        m_Archetypes.push_back(object);
        m_Names.push_back(object->m_Name);
        id = static_cast<ArchetypeId>(m_Archetypes.size());
        object->m_Archetype = id;
        m_Paths[object->m_Name] = normal;
        return;
    }
    // A reload, or a file of the same name in another folder: the new object takes the old one's id.
    delete m_Archetypes[id - 1];
    m_Archetypes[id - 1] = object;
    object->m_Archetype = id;
    m_Paths[object->m_Name] = normal;
}

bool ArchetypeManager::WriteFile(const std::string& path, const GameObject* object)
{
    FileWatcher& watcher = FileWatcher::Get();
    std::lock_guard<std::recursive_mutex> lock(watcher.GetMutex());
    Util::Serializer writer;
    if (!writer.OpenWrite(path))
        return false;
    WriteObject(writer, object, nullptr);
    // Closing notes the write as the engine's own, so no reload follows.
    writer.Close();
    return true;
}

ArchetypeId ArchetypeManager::Add(GameObject* archetype)
{
    m_Archetypes.push_back(archetype);
    m_Names.push_back(archetype->m_Name);
    archetype->m_Archetype = static_cast<ArchetypeId>(m_Archetypes.size());
    if (!archetype->m_Name.empty())
        m_Ids.emplace(archetype->m_Name, archetype->m_Archetype);
    return archetype->m_Archetype;
}

ArchetypeId ArchetypeManager::GetArchetypeId(const std::string& name) const
{
    const auto found = m_Ids.find(name);
    return found == m_Ids.end() ? 0 : found->second;
}

std::string ArchetypeManager::GetArchetypeName(ArchetypeId id) const
{
    const GameObject* archetype = GetArchetype(id);
    return archetype ? archetype->m_Name : std::string();
}

GameObject* ArchetypeManager::GetArchetype(ArchetypeId id) const
{
    return id >= 1 && id <= m_Archetypes.size() ? m_Archetypes[id - 1] : nullptr;
}

std::string ArchetypeManager::GetPath(const std::string& name) const
{
    const auto found = m_Paths.find(name);
    return found == m_Paths.end() ? std::string() : found->second;
}

ArchetypeId ArchetypeManager::Create(const std::string& name)
{
    if (const ArchetypeId existing = GetArchetypeId(name))
        return existing;
    if (name.empty() || name.find_first_of("/\\.") != std::string::npos)
    {
        FATAL_ERROR("An archetype name can't be empty or hold '/', '\\' or '.': \"" + name + "\"");
        return 0;
    }
    const std::string folder = Util::GetDataDirectory() + kFolder;
    Util::CreateDirectories(folder);
    const std::string path = Util::NormalizePath(folder + name + kExtension);
    {
        Util::Serializer writer;
        if (!writer.OpenWrite(path))
        {
            FATAL_ERROR("Could not create the archetype file.\nFile:  " + path);
            return 0;
        }
    }
    Watch(path);
    return GetArchetypeId(name);
}

ArchetypeId ArchetypeManager::Duplicate(const std::string& path, const std::string& newName)
{
    if (newName.empty() || newName.find_first_of("/\\.") != std::string::npos)
    {
        FATAL_ERROR("An archetype name can't be empty or hold '/', '\\' or '.': \"" + newName + "\"");
        return 0;
    }
    const std::string copy = Util::NormalizePath(Util::GetDirectory(path) + newName + kExtension);
    if (copy == Util::NormalizePath(path) || !Util::CopyFile(path, copy))
    {
        FATAL_ERROR("Could not copy the archetype file to " + copy + "\nFile:  " + path);
        return 0;
    }
    // A copy over a file already watched is loaded now; its watch stays the one it had.
    if (GetPath(newName) == copy)
        OnFileChanged(copy);
    else
        Watch(copy);
    return GetArchetypeId(newName);
}

bool ArchetypeManager::Rename(ArchetypeId id, const std::string& newName)
{
    GameObject* archetype = GetArchetype(id);
    if (!archetype || newName.empty() || newName.find_first_of("/\\.") != std::string::npos ||
        GetArchetypeId(newName) != 0)
    {
        FATAL_ERROR("An archetype can't be renamed to \"" + newName +
                    "\": the id is unknown, or the name is empty, taken or holds '/', '\\' or '.'.");
        return false;
    }
    const std::string oldName = archetype->m_Name;
    const std::string oldPath = GetPath(oldName);
    std::string newPath;
    if (!oldPath.empty())
    {
        newPath = Util::NormalizePath(Util::GetDirectory(oldPath) + newName + kExtension);
        if (!Util::RenameFile(oldPath, newName + kExtension))
        {
            FATAL_ERROR("Could not rename the archetype file to " + newPath + "\nFile:  " + oldPath);
            return false;
        }
        FileWatcher::Get().ChangePath(oldPath, newPath);
        m_Paths.erase(oldName);
        m_Paths[newName] = newPath;
    }
    m_Ids.erase(oldName);
    m_Ids[newName] = id;
    m_Names[id - 1] = newName;
    archetype->m_Name = newName;
    return true;
}

bool ArchetypeManager::Save(const GameObject* object)
{
    if (!object || object->m_Name.empty())
        return false;
    std::string path = GetPath(object->m_Name);
    const bool isNew = path.empty();
    if (isNew)
    {
        const std::string folder = Util::GetDataDirectory() + kFolder;
        Util::CreateDirectories(folder);
        path = Util::NormalizePath(folder + object->m_Name + kExtension);
    }
    if (!WriteFile(path, object))
    {
        FATAL_ERROR("Could not write the archetype file.\nFile:  " + path);
        return false;
    }
    if (isNew)
        Watch(path);
    return true;
}

void ArchetypeManager::Clear()
{
    FileWatcher::Get().Remove(this);
    for (GameObject* archetype : m_Archetypes)
        delete archetype;
    m_Archetypes.clear();
    m_Ids.clear();
    m_Paths.clear();
    m_Names.clear();
}
}
