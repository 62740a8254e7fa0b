// RoomManager: every room of the game in memory, and the choice of what comes
// next. At start-up (Load) it reads "Biomes.txt" and every "Rooms/*.txt" under
// the data directory, watching each file so that an edited room or biome list
// is read again and used at the next build. The game's scripts run a run
// through it:
//
//   local rooms = RoomManager.Get()
//   rooms:ClearOldRooms()                 -- a new run
//   rooms:SetRoomsUntilBoss(8)
//   rooms.Difficulty = 1
//   rooms:PickRandomMainBiome()
//   rooms:PickRoom()                      -- nearest difficulty, not one of the last three
//   rooms:CreateCurrentRoom()             -- clears the last room's objects, builds this one
//
// PickRoom chooses among the rooms whose difficulty is nearest the target (in
// steps of 1.5, see PickRoom), never one of the last three and never a boss
// room; when the room count reaches RoomsUntilBoss it chooses a boss room
// instead. A room's biome is drawn among the names of "Biomes.txt" that begin
// with the main biome ("Cave" draws from "Cave", "CaveDeep", ...), unless the
// room forces one. Every draw uses the shared generator of Util::Random.
//
// It is a singleton made on first use. It also keeps the room editor's state
// (the objects of the room being edited, the selection), for the editor.
#pragma once

#include "engine/Math/Color.h"

#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <vector>

using GameObjectId = std::uint32_t;
class GameObject;
class Room;
namespace Engine
{
class Space;
}
namespace Meta
{
class Data;
}

// A room tint, one entry of "Biomes.txt".
class Biome
{
public:
    virtual ~Biome() = default;
    // The registry's record of the type.
    virtual const Meta::Data* GetMeta() const;

    // Tint of the room's floor, wall and pit boxes.
    Math::Color m_RoomColor{0.5f, 0.5f, 0.5f, 1.0f};
};

class RoomManager
{
public:
    // The one room manager, made on first use.
    static RoomManager& Get();

    RoomManager() = default;
    // Deletes every room.
    ~RoomManager();
    RoomManager(const RoomManager&) = delete;
    RoomManager& operator=(const RoomManager&) = delete;

    // Start-up: watches and reads "Biomes.txt" and every room file under "Rooms/".
    void Load();
    // Ends every watch and deletes every room; the manager is as new.
    void Clear();
    // Reads the biome list at `path` (a missing file gives the single grey biome "Cave").
    void LoadBiomes(const std::string& path);
    // Reads the room file at `path`, adding the room or replacing the one of its name.
    void LoadRoom(const std::string& path);

    // Builds the current room into the game space, after destroying what the last build made.
    void CreateCurrentRoom();
    // Clears the editor's objects and builds the current room in editor mode.
    void CreateCurrentEditableRoom();
    // The editor's per-frame update of the current room.
    void UpdateCurrentRoom();
    // Destroys the objects of the room being edited.
    void ClearEditorObjects();
    // Selects another room than the current one, uniformly; nothing with a single room.
    void PickRandomRoom();
    // Selects the room called `name`; an unknown name is reported and changes nothing.
    void SetCurrentRoom(const std::string& name);
    // The selected room, not necessarily built; null before any selection.
    Room* GetCurrentRoom() const { return m_CurrentRoom; }
    // Selects the room the editor's list shows.
    void LoadRoomEditor();
    // Points the editor's camera at the room.
    void SetCamera();
    // Picks "Cave", "Ice" or "Lava" as the main biome, unless SetBiome forced one.
    void PickRandomMainBiome();
    // Picks the current biome among those whose name begins with the main biome's.
    void PickRandomBiome();
    // Forces the main biome of the next PickRandomMainBiome.
    void SetBiome(const std::string& name);
    // Selects the next room of a run by difficulty, or the boss room when its count is reached.
    void PickRoom();
    // Empties the list of recently used rooms: a new run.
    void ClearOldRooms();
    // Marks the room called `name` as recently used; an unknown name is ignored.
    void AddToOldRoomList(const std::string& name);
    // Sets the room count at which the boss room comes.
    void SetRoomsUntilBoss(int count) { m_RoomsUntilBoss = count; }
    // The room count at which the boss room comes.
    int GetRoomsUntilBoss() const { return m_RoomsUntilBoss; }
    // Rooms done in this run.
    int GetCurrentRoomCount() const { return m_CurrentRoomCount; }
    // Counts one more room done.
    void IncrementRoomCount() { ++m_CurrentRoomCount; }
    // Index of `object` among the editor's objects, or -1.
    int GetObjectIndex(GameObject* object) const;
    // The editor's object at `index`, or null.
    GameObject* GetEditorObject(int index) const;
    // Makes `object` the one the editor focuses.
    void SetFocusedObject(GameObject* object);
    // Adds `object` to the editor's selection.
    void AddSelectedObject(GameObject* object);
    // Empties the editor's selection.
    void UnselectObjects();
    // Name of the current biome.
    std::string GetCurrentBiomeName() const { return m_CurrentBiome; }

    // Tint of the current biome; opaque black when it is not in the list.
    Math::Color GetBiomeColor() const;
    // The rooms PickRoom draws from, in room order: those nearest m_Difficulty (a room closer by
    // less than 1.5 than the best so far joins without displacing it). Boss rooms only, or no boss
    // rooms and none of the recent ones.
    std::vector<Room*> GetCandidates(bool boss) const;
    // The room called `name`, or null.
    Room* FindRoom(const std::string& name) const;
    // The space rooms are built in: the game space (tests may set another).
    Engine::Space* GetSpace() const;
    // Builds rooms into `space` instead of the game space; null goes back to the game space.
    void SetSpace(Engine::Space* space) { m_Space = space; }

    // All rooms, in load order; entries may be null after a removal in editing.
    std::vector<Room*> m_Rooms;
    // Recently used rooms, oldest first.
    std::deque<Room*> m_OldRooms;
    // The selected room.
    Room* m_CurrentRoom = nullptr;
    // 1-based index into m_Rooms by room name.
    std::map<std::string, int> m_RoomIndex;
    // File of each room by name.
    std::map<std::string, std::string> m_RoomPaths;
    // The biomes of "Biomes.txt" by name.
    std::map<std::string, Biome> m_Biomes;
    // "Cave", "Ice" or "Lava", or a forced name.
    std::string m_MainBiome;
    // A key of m_Biomes.
    std::string m_CurrentBiome;
    // Tested and cleared by PickRandomBiome; nothing sets it.
    bool m_BiomeChosen = false;
    // Set by SetBiome, consumed by PickRandomMainBiome.
    bool m_MainBiomeForced = false;
    // Target difficulty of the next room; scripts set it.
    float m_Difficulty = 0.0f;
    // Rooms done in this run.
    int m_CurrentRoomCount = 0;
    // The count at which the boss room comes.
    int m_RoomsUntilBoss = 0;

private:
    // Destroys the objects of the last build that still exist.
    void DestroyBuiltObjects(std::vector<GameObjectId>& objects);
    // A uniform pick among GetCandidates(boss); null when there is none.
    Room* PickCandidate(bool boss) const;

    // Objects made by the last CreateCurrentRoom.
    std::vector<GameObjectId> m_BuiltObjects;
    // Objects made by the last CreateCurrentEditableRoom.
    std::vector<GameObjectId> m_EditorObjects;
    // The editor's focused object and selection.
    GameObjectId m_FocusedObject = 0;
    std::vector<GameObjectId> m_SelectedObjects;
    // Load added watches that Clear or the destructor must end.
    bool m_Watching = false;
    // Space the rooms are built in; null for the game space.
    Engine::Space* m_Space = nullptr;
};
