// The room manager: loading and hot reload of rooms and biomes, and the
// choice of the next room and biome.
#include "rooms/RoomManager.h"

#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "engine/Random.h"
#include "engine/Space.h"
#include "engine/SpaceManager.h"
#include "rooms/Room.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"

#include <algorithm>
#include <cmath>
#include <limits>

META_REGISTER(Biome)
{
    DESCRIPTION("A room tint, one entry of the biome list.");
    MEMBER(m_RoomColor, "Tint of the room's floor, wall and pit boxes");
}

META_REGISTER(RoomManager)
{
    DESCRIPTION("Every room of the game, and the choice of the next room and biome.");
    METHOD(CreateCurrentRoom);
    METHOD(CreateCurrentEditableRoom);
    METHOD(UpdateCurrentRoom);
    METHOD(ClearEditorObjects);
    METHOD(PickRandomRoom);
    METHOD(SetCurrentRoom);
    METHOD(GetCurrentRoom);
    METHOD(LoadRoomEditor);
    METHOD(SetCamera);
    METHOD(Get);
    METHOD(PickRandomMainBiome);
    METHOD(PickRandomBiome);
    METHOD(SetBiome);
    METHOD(PickRoom);
    METHOD(ClearOldRooms);
    METHOD(AddToOldRoomList);
    METHOD(SetRoomsUntilBoss);
    METHOD(GetRoomsUntilBoss);
    METHOD(GetCurrentRoomCount);
    METHOD(IncrementRoomCount);
    METHOD(GetObjectIndex);
    METHOD(GetEditorObject);
    METHOD(SetFocusedObject);
    METHOD(AddSelectedObject);
    METHOD(UnselectObjects);
    METHOD(GetCurrentBiomeName);
    MEMBER(m_Difficulty, "Target difficulty of the next room");
}

namespace
{
// The biome list's file and the rooms' folder under the data directory.
constexpr const char* kBiomesFile = "Biomes.txt";
constexpr const char* kRoomsFolder = "Rooms/";
// The main biomes PickRandomMainBiome draws from.
constexpr const char* kMainBiomes[] = {"Cave", "Ice", "Lava"};
// Size of the recently-used list at which PickRoom drops its oldest entry.
constexpr std::size_t kPickedRoomsKept = 4;
}

const Meta::Data* Biome::GetMeta() const
{
    return Meta::Get<Biome>();
}

RoomManager& RoomManager::Get()
{
    static RoomManager manager;
    return manager;
}

RoomManager::~RoomManager()
{
    if (m_Watching)
        FileWatcher::Get().Remove(this);
    for (Room* room : m_Rooms)
        delete room;
}

void RoomManager::Load()
{
    const std::string data = Util::GetDataDirectory();
    m_Watching = true;
    FileWatcher::Get().Add(data + kBiomesFile, true, this, [this](const std::string& path) { LoadBiomes(path); });
    if (!m_Biomes.empty())
        m_CurrentBiome = m_Biomes.begin()->first;

    std::vector<std::string> listed;
    std::vector<std::string> files;
    Util::ListFiles(data + kRoomsFolder, listed, true);
    Util::FilterByExtension(listed, ".txt", files);
    for (const std::string& file : files)
        FileWatcher::Get().Add(file, true, this, [this](const std::string& path) { LoadRoom(path); });

    // The editor's list shows the rooms in load order; the first is selected.
    for (Room* room : m_Rooms)
        if (room)
        {
            m_CurrentRoom = room;
            break;
        }
}

void RoomManager::Clear()
{
    if (m_Watching)
        FileWatcher::Get().Remove(this);
    m_Watching = false;
    for (Room* room : m_Rooms)
        delete room;
    m_Rooms.clear();
    m_OldRooms.clear();
    m_CurrentRoom = nullptr;
    m_RoomIndex.clear();
    m_RoomPaths.clear();
    m_Biomes.clear();
    m_MainBiome.clear();
    m_CurrentBiome.clear();
    m_BiomeChosen = false;
    m_MainBiomeForced = false;
    m_Difficulty = 0.0f;
    m_CurrentRoomCount = 0;
    m_RoomsUntilBoss = 0;
    m_BuiltObjects.clear();
    m_EditorObjects.clear();
    m_FocusedObject = 0;
    m_SelectedObjects.clear();
    m_Space = nullptr;
}

void RoomManager::LoadBiomes(const std::string& path)
{
    m_Biomes.clear();
    Util::Serializer reader;
    if (!reader.OpenRead(path))
    {
        m_Biomes["Cave"].m_RoomColor = Math::Color(0.5f, 0.5f, 0.5f, 1.0f);
        return;
    }
    std::string name;
    reader.m_Stream >> name;
    while (reader.m_Stream.good())
    {
        reader.ReadObject(Meta::Get<Biome>(), &m_Biomes[name]);
        reader.m_Stream >> name;
    }
    reader.Close();
}

void RoomManager::LoadRoom(const std::string& path)
{
    // In the room editor's room mode the brush, the highlight and the selection reset here; they
    // come with the room editor.
    auto* room = new Room();
    room->Load(path);
    const std::string name = room->GetName();
    const auto known = m_RoomIndex.find(name);
    if (known == m_RoomIndex.end())
    {
        m_Rooms.push_back(room);
        m_RoomIndex[name] = static_cast<int>(m_Rooms.size());
        m_RoomPaths[name] = path;
        return;
    }
    Room*& slot = m_Rooms[static_cast<std::size_t>(known->second - 1)];
    Room* old = slot;
    slot = room;
    if (m_CurrentRoom == old)
        m_CurrentRoom = room;
    std::replace(m_OldRooms.begin(), m_OldRooms.end(), old, room);
    delete old;
}

Engine::Space* RoomManager::GetSpace() const
{
    return m_Space ? m_Space : Engine::SpaceManager::Get().GetSpace(Engine::Level);
}

void RoomManager::DestroyBuiltObjects(std::vector<GameObjectId>& objects)
{
    Engine::Space* space = GetSpace();
    if (space)
        for (GameObjectId id : objects)
            if (GameObject* object = space->GetGameObject(id))
                object->Destroy();
    objects.clear();
}

void RoomManager::CreateCurrentRoom()
{
    Engine::Space* space = GetSpace();
    if (!m_CurrentRoom || !space)
        return;
    DestroyBuiltObjects(m_BuiltObjects);
    m_BuiltObjects = m_CurrentRoom->Create(*space);
}

void RoomManager::CreateCurrentEditableRoom()
{
    ClearEditorObjects();
    Engine::Space* space = GetSpace();
    if (!m_CurrentRoom || !space)
        return;
    m_CurrentRoom->PrepareGrid();
    m_EditorObjects = m_CurrentRoom->CreateEnviroment(*space, true);
}

void RoomManager::UpdateCurrentRoom()
{
    // The room editor's per-frame work (brush, highlight) comes with the room editor.
}

void RoomManager::ClearEditorObjects()
{
    UnselectObjects();
    DestroyBuiltObjects(m_EditorObjects);
}

void RoomManager::PickRandomRoom()
{
    // One room: nothing to change to. No room at all: nothing to pick (the design leaves that to
    // the caller).
    if (m_Rooms.size() <= 1)
        return;
    Room* picked = m_CurrentRoom;
    // A null entry or the current room is drawn again; the caller must have another room.
    for (int tries = 0; (picked == m_CurrentRoom || !picked) && tries < 100000; ++tries)
        picked = m_Rooms[Util::Random::Index(m_Rooms.size())];
    m_CurrentRoom = picked;
}

void RoomManager::SetCurrentRoom(const std::string& name)
{
    Room* room = FindRoom(name);
    if (!room)
    {
        VORN_REPORT_ERROR_IN(true, "RoomManager::SetCurrentRoom", "The room \"" + name + "\" doesn't exist!");
        return;
    }
    m_CurrentRoom = room;
}

void RoomManager::LoadRoomEditor()
{
    // The editor's room list comes with the room editor; until then it shows the rooms in load
    // order with the current one selected, so this keeps the selection.
}

void RoomManager::SetCamera()
{
    // The editor's room camera comes with the room editor.
}

void RoomManager::PickRandomMainBiome()
{
    if (m_MainBiomeForced)
    {
        m_MainBiomeForced = false;
        return;
    }
    m_MainBiome = kMainBiomes[Util::Random::Index(std::size(kMainBiomes))];
}

void RoomManager::PickRandomBiome()
{
    if (m_BiomeChosen)
    {
        m_BiomeChosen = false;
        return;
    }
    std::vector<const std::string*> names;
    for (const auto& [name, biome] : m_Biomes)
        if (name.rfind(m_MainBiome, 0) == 0)
            names.push_back(&name);
    // With no name for the main biome the current biome stays as it was.
    if (!names.empty())
        m_CurrentBiome = *names[Util::Random::Index(names.size())];
}

void RoomManager::SetBiome(const std::string& name)
{
    m_MainBiome = name;
    m_MainBiomeForced = true;
}

std::vector<Room*> RoomManager::GetCandidates(bool boss) const
{
    float best = std::numeric_limits<float>::max();
    std::vector<Room*> candidates;
    for (Room* room : m_Rooms)
    {
        if (!room || room->m_BossRoom != boss)
            continue;
        if (!boss && std::find(m_OldRooms.begin(), m_OldRooms.end(), room) != m_OldRooms.end())
            continue;
        const float d = std::fabs(m_Difficulty - room->m_Difficulty);
        if (d > best)
            continue;
        if (std::fabs(d - best) >= 1.5f)
        {
            candidates.clear();
            best = d;
        }
        candidates.push_back(room);
    }
    return candidates;
}

Room* RoomManager::PickCandidate(bool boss) const
{
    const std::vector<Room*> candidates = GetCandidates(boss);
    // No candidate: every room is recent or none is of the kind. The scripts must keep more rooms
    // than the recent list holds; rather than index outside, the current room stays.
    if (candidates.empty())
        return nullptr;
    return candidates[Util::Random::Index(candidates.size())];
}

void RoomManager::PickRoom()
{
    if (m_CurrentRoomCount == m_RoomsUntilBoss)
    {
        if (Room* boss = PickCandidate(true))
            m_CurrentRoom = boss;
        return;
    }
    Room* picked = PickCandidate(false);
    if (!picked)
        return;
    m_CurrentRoom = picked;
    m_OldRooms.push_back(picked);
    if (m_OldRooms.size() == kPickedRoomsKept)
        m_OldRooms.pop_front();
}

void RoomManager::ClearOldRooms()
{
    m_OldRooms.clear();
    m_OldRooms.shrink_to_fit();
}

void RoomManager::AddToOldRoomList(const std::string& name)
{
    Room* room = FindRoom(name);
    if (!room)
        return;
    m_OldRooms.push_back(room);
    if (m_OldRooms.size() > kPickedRoomsKept)
        m_OldRooms.pop_front();
}

int RoomManager::GetObjectIndex(GameObject* object) const
{
    if (!object)
        return -1;
    const auto found = std::find(m_EditorObjects.begin(), m_EditorObjects.end(), object->GetId());
    return found == m_EditorObjects.end() ? -1 : static_cast<int>(found - m_EditorObjects.begin());
}

GameObject* RoomManager::GetEditorObject(int index) const
{
    Engine::Space* space = GetSpace();
    if (!space || static_cast<unsigned>(index) >= m_EditorObjects.size())
        return nullptr;
    return space->GetGameObject(m_EditorObjects[static_cast<unsigned>(index)]);
}

void RoomManager::SetFocusedObject(GameObject* object)
{
    m_FocusedObject = object ? object->GetId() : 0;
}

void RoomManager::AddSelectedObject(GameObject* object)
{
    if (object && std::find(m_SelectedObjects.begin(), m_SelectedObjects.end(), object->GetId()) ==
                      m_SelectedObjects.end())
        m_SelectedObjects.push_back(object->GetId());
}

void RoomManager::UnselectObjects()
{
    m_SelectedObjects.clear();
    m_FocusedObject = 0;
}

Math::Color RoomManager::GetBiomeColor() const
{
    const auto found = m_Biomes.find(m_CurrentBiome);
    return found == m_Biomes.end() ? Math::Color(0.0f, 0.0f, 0.0f, 1.0f) : found->second.m_RoomColor;
}

Room* RoomManager::FindRoom(const std::string& name) const
{
    const auto found = m_RoomIndex.find(name);
    return found == m_RoomIndex.end() ? nullptr : m_Rooms[static_cast<std::size_t>(found->second - 1)];
}
