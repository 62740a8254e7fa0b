// Engine::ArchetypeManager: the prototypes that objects are cloned from. An
// archetype is a GameObject kept outside any space (id 0, no space, components
// never initialized); ArchetypeId n is the n-th archetype of this run, and 0 is
// none. Ids live only for one run, so files always name archetypes.
//
// Archetypes are text files, one per archetype, anywhere under the data
// directory's "Archetypes/" folder; the file name without folder and extension
// is the archetype's name ("Enemies/Crawler.txt" is "Crawler", "a.b.txt" is
// "a"). A file is a list of component blocks with "//" comments:
//
//   Transform
//   {
//     Scale { 2 2 2 }
//   }
//   Spinner            // a script component, by its script's name
//   {
//   }
//
// Each block holds only what differs from a default-made component. LoadAll
// watches every file with an immediate load, so the first load and every later
// reload go through OnFileChanged: a reload replaces the archetype under the id
// it had, objects made before keep their values, and the next clone sees the
// new ones. The same reader (AddComponentsFromStream) reads room objects, where
// "~Name { }" takes a component of the archetype away from the instance.
#pragma once

#include "engine/GameObject.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace Util
{
class Serializer;
}

namespace Engine
{
class ArchetypeManager
{
public:
    // The one archetype manager.
    static ArchetypeManager& Get();
    ~ArchetypeManager();
    ArchetypeManager(const ArchetypeManager&) = delete;
    ArchetypeManager& operator=(const ArchetypeManager&) = delete;

    // Watches and loads every ".txt" file of the data directory's "Archetypes/" folder and its
    // subfolders, the folder's own files first, then each subfolder depth first, in name order.
    void LoadAll();
    // Loads (or reloads) the archetype file at `path`; a file that doesn't open changes nothing.
    void OnFileChanged(const std::string& path);

    // Reads a list of component blocks into `object` until the end of the input or a "}" (left
    // on the stream for the caller): named members are set on the object's component of that
    // name (made and appended when missing), "~Name { }" removes the component of that name.
    static void AddComponentsFromStream(GameObject* object, Util::Serializer& serializer);
    // Writes `object` as a list of component blocks: against `reference` (its archetype) when given,
    // with "~Name { }" for the reference's components it lacks; otherwise every component, each
    // with what differs from a default-made one.
    static void WriteObject(Util::Serializer& serializer, const GameObject* object, const GameObject* reference);

    // Takes ownership of a prototype made in code and returns its new id; its name finds it
    // unless an archetype of that name already exists.
    ArchetypeId Add(GameObject* archetype);
    // The id of the archetype of this name, or 0.
    ArchetypeId GetArchetypeId(const std::string& name) const;
    // The id of the archetype of this name, or 0 (the same as GetArchetypeId).
    ArchetypeId Find(const std::string& name) const { return GetArchetypeId(name); }
    // The name of the archetype with this id; "" for 0 or an unknown id.
    std::string GetArchetypeName(ArchetypeId id) const;
    // The archetype with this id, or null for 0 or an unknown id.
    GameObject* GetArchetype(ArchetypeId id) const;
    // The file the archetype of this name was loaded from; "" when it came from code.
    std::string GetPath(const std::string& name) const;
    // The archetype names in id order, for the editor's folder view.
    const std::vector<std::string>& GetNames() const { return m_Names; }
    // Number of archetypes.
    std::size_t Count() const { return m_Archetypes.size(); }

    // Makes an empty archetype file "Archetypes/<name>.txt" and loads it, unless the name is taken;
    // gives the archetype's id (the existing one when taken, 0 when the file can't be written).
    ArchetypeId Create(const std::string& name);
    // Copies the archetype file at `path` to `newName` in the same folder (overwriting) and loads
    // the copy; gives its id, 0 when the copy failed.
    ArchetypeId Duplicate(const std::string& path, const std::string& newName);
    // Renames the archetype and its file; false (reported) for an unknown id, an empty or taken
    // name, or a file that can't be moved.
    bool Rename(ArchetypeId id, const std::string& newName);
    // Writes the archetype file of `object`'s name from the object, without bringing a reload; a
    // name with no file yet gets "Archetypes/<name>.txt", loaded as a new archetype.
    bool Save(const GameObject* object);

    // Deletes every archetype and ends the watches of their files.
    void Clear();

private:
    ArchetypeManager() = default;
    // Watches `path` with an immediate load.
    void Watch(const std::string& path);
    // Writes `object` into the file at `path` under the file watcher's lock; false if it didn't open.
    static bool WriteFile(const std::string& path, const GameObject* object);

    // Owning; element id - 1 is the archetype with id `id`.
    std::vector<GameObject*> m_Archetypes;
    // Archetype name to id.
    std::map<std::string, ArchetypeId> m_Ids;
    // Archetype name to the full path of its file.
    std::unordered_map<std::string, std::string> m_Paths;
    // Archetype names in id order.
    std::vector<std::string> m_Names;
};
}
