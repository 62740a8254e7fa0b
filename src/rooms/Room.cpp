// The room: its registration, its file, the reader of its placed objects, and
// the grid queries FloorType, FloorTypeFromPos, SetFloorFromRect and ShootRay.
#include "rooms/Room.h"

#include "engine/ArchetypeManager.h"
#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <mutex>

META_REGISTER_ENUM(TileValue, {{"Wall", Wall}, {"Floor", Floor}, {"Pit", Pit}, {"SecondPit", SecondPit}});

META_REGISTER(RoomData)
{
    DESCRIPTION("A room's tile grid, RoomVec[row][column], and the bounds of its open tiles.");
    MEMBER(RoomVec, "The grid: rows of TileValue numbers");
    MEMBER(Left, "Smallest x of a non-wall tile, in tiles from the centre");
    MEMBER(Right, "Largest x of a non-wall tile");
    MEMBER(Top, "Largest z of a non-wall tile");
    MEMBER(Bottom, "Smallest z of a non-wall tile");
}

META_REGISTER(ObjectData)
{
    DESCRIPTION("The objects placed in a room, as prototypes outside any space.");
    METHOD_AS("GetObjectList", static_cast<std::vector<GameObject*>& (ObjectData::*)()>(&ObjectData::GetObjectList));
}

META_REGISTER(RoomRay)
{
    DESCRIPTION("What a ray over a room's grid found.");
    MEMBER(Start, "Tile under the start point");
    MEMBER(End, "Tile under the end point");
    MEMBER(FoundWall, "The ray met a wall");
    MEMBER(FoundPitFirst, "The ray met a pit before any wall");
    MEMBER(FirstWallPosition, "Tile-space position of the first wall met, y = 0");
}

META_REGISTER(Room)
{
    DESCRIPTION("A level: a tile grid and the objects placed in it.");
    MEMBER(m_GridSize, "World size of a tile: x along the columns, y along the rows");
    MEMBER(RoomFloor, "The tile grid");
    MEMBER(Objects, "The placed objects");
    MEMBER(m_PitDepth, "How far pits go down");
    MEMBER(m_Difficulty, "Compared with the room manager's difficulty");
    MEMBER(m_BiomeOverride, "Forces the biome when not empty");
    METHOD(FloorType);
    METHOD(FloorTypeFromPos);
    METHOD(SetFloorFromRect);
    METHOD(ShootRay);
    METHOD(LoadTestRoom);
    METHOD(SaveTestRoom);
    METHOD(GetName);
    MEMBER(m_BossRoom, "A boss room");
    METHOD(GetGameObject);
    METHOD(GetGameObjectIndex);
}

namespace
{
// Tile index of a position along one axis of `size` tiles, rounded as the grid queries round.
// A position too far off for an int (or not a number) gives the nearest end of the int range:
// a tile outside the grid all the same.
int TileIndex(float size, float position)
{
    const float index = std::roundf(size * 0.5f + position + 0.5f);
    constexpr float kLowest = static_cast<float>(std::numeric_limits<int>::min());
    // The first float past the largest int.
    constexpr float kPastHighest = -kLowest;
    if (!(index >= kLowest))
        return std::numeric_limits<int>::min();
    if (index >= kPastHighest)
        return std::numeric_limits<int>::max();
    return static_cast<int>(index);
}

// The dialog site of an unknown archetype in a room file.
std::atomic<bool>& UnknownArchetypeSite()
{
    static std::atomic<bool>* site = Engine::Log::Get().NewSite();
    return *site;
}
}

const Meta::Data* Room::GetMeta() const
{
    return Meta::Get<Room>();
}

int Room::FloorType(int column, int row) const
{
    if (static_cast<unsigned>(row) >= m_GridCopy.size())
        return 0;
    const std::vector<int>& cells = m_GridCopy[static_cast<unsigned>(row)];
    if (static_cast<unsigned>(column) >= cells.size())
        return 0;
    return cells[static_cast<unsigned>(column)];
}

int Room::FloorTypeFromPos(float x, float z) const
{
    if (m_GridCopy.empty())
        return 0;
    const float w = static_cast<float>(RoomData::Width(m_GridCopy));
    const float h = static_cast<float>(RoomData::Height(m_GridCopy));
    return FloorType(TileIndex(w, x), TileIndex(h, z));
}

void Room::SetFloorFromRect(int column0, int row0, int column1, int row1, int value)
{
    const int rowFirst = std::max(0, std::min(row0, row1));
    const int rowLast = std::max(row0, row1);
    const int columnFirst = std::max(0, std::min(column0, column1));
    const int columnLast = std::max(column0, column1);
    std::vector<std::vector<int>>& grid = RoomFloor.RoomVec;
    for (int row = rowFirst; row <= rowLast && row < static_cast<int>(grid.size()); ++row)
        for (int column = columnFirst; column <= columnLast && column < static_cast<int>(grid[row].size()); ++column)
            grid[row][column] = value;
}

RoomRay Room::ShootRay(float x0, float z0, float x1, float z1) const
{
    RoomRay ray;
    if (m_GridCopy.empty())
        return ray;
    const float w = static_cast<float>(RoomData::Width(m_GridCopy));
    const float h = static_cast<float>(RoomData::Height(m_GridCopy));
    const int c0 = TileIndex(w, x0);
    const int r0 = TileIndex(h, z0);
    const int c1 = TileIndex(w, x1);
    const int r1 = TileIndex(h, z1);
    ray.Start = static_cast<TileValue>(FloorType(c0, r0));
    ray.End = static_cast<TileValue>(FloorType(c1, r1));
    if (c0 == c1 && r0 == r1)
        return ray;

    // Visited tiles lie inside the grid or one step past it, so they fit in an int.
    auto visit = [&](long long c, long long r) {
        const int value = FloorType(static_cast<int>(c), static_cast<int>(r));
        if (c < 1 || r < 1 || value == 0)
        {
            if (!ray.FoundWall)
            {
                ray.FoundWall = true;
                ray.FirstWallPosition = Math::Point3D(static_cast<float>(c) - w * 0.5f - 0.5f, 0.0f,
                                                      static_cast<float>(r) - h * 0.5f - 0.5f);
            }
        }
        else if (value == 2 && !ray.FoundWall)
            ray.FoundPitFirst = true;
    };

    // The error term grows by |minor / major| a step; it is kept exactly, as a count of
    // 1 / (2 * |major|), so that long rays neither drift nor disagree at the half-way ties.
    const long long dc = static_cast<long long>(c1) - c0;
    const long long dr = static_cast<long long>(r1) - r0;
    const bool alongColumns = std::llabs(dc) >= std::llabs(dr);
    const long long major = alongColumns ? std::llabs(dc) : std::llabs(dr);
    const long long minor = alongColumns ? std::llabs(dr) : std::llabs(dc);
    const int stepC = dc > 0 ? 1 : (dc < 0 ? -1 : 0);
    const int stepR = dr > 0 ? 1 : (dr < 0 ? -1 : 0);
    long long c = c0;
    long long r = r0;
    long long error = 0;
    // Once a wall is found no later tile changes the result (a pit counts only before the first
    // wall), so the walk ends there: it stays inside the grid, however far off the end point lies.
    for (long long step = 0; step <= major && !ray.FoundWall; ++step)
    {
        visit(c, r);
        error += 2 * minor;
        while (error > major && !ray.FoundWall)
        {
            if (alongColumns)
                r += stepR;
            else
                c += stepC;
            visit(c, r);
            error -= 2 * major;
        }
        if (alongColumns)
            c += stepC;
        else
            r += stepR;
    }
    return ray;
}

GameObject* Room::GetGameObject(int index) const
{
    const std::vector<GameObject*>& objects = Objects.GetObjectList();
    return static_cast<unsigned>(index) < objects.size() ? objects[static_cast<unsigned>(index)] : nullptr;
}

int Room::GetGameObjectIndex(GameObject* object) const
{
    const std::vector<GameObject*>& objects = Objects.GetObjectList();
    const auto found = std::find(objects.begin(), objects.end(), object);
    return found == objects.end() || !object ? -1 : static_cast<int>(found - objects.begin());
}

float Room::WallTop() const
{
    return m_PitDepth < 15.0f ? 22.5f : m_PitDepth + 7.5f;
}

float Room::WallExtra() const
{
    return std::max(0.0f, (WallTop() - 15.0f) * 0.5f);
}

void Room::PrepareGrid()
{
    m_GridCopy = RoomFloor.RoomVec;
    RoomFloor.ComputeBounds();
}

bool Room::Load(const std::string& path)
{
    Util::Serializer reader;
    if (!reader.OpenRead(path))
        return false;
    reader.ReadObject(Meta::Get<Room>(), this);
    reader.Close();
    m_FilePath = path;
    m_Name = Util::GetFileName(path);
    if (Util::IsTolerantRead())
        Save(path);
    return true;
}

bool Room::Save(const std::string& path) const
{
    std::lock_guard<std::recursive_mutex> lock(FileWatcher::Get().GetMutex());
    Util::Serializer writer;
    if (!writer.OpenWrite(path))
        return false;
    writer.WriteObjectBlock(Meta::Get<Room>(), this);
    writer.m_Stream << '\n';
    // Closing notes the write as the engine's own, so no reload follows.
    writer.Close();
    return true;
}

bool Room::SaveTestRoom() const
{
    return Save(TestRoomPath());
}

bool Room::LoadTestRoom()
{
    const std::string name = m_Name;
    const std::string path = m_FilePath;
    Room scratch;
    if (!scratch.Load(TestRoomPath()))
        return false;
    *this = scratch;
    m_Name = name;
    m_FilePath = path;
    return true;
}

std::string Room::TestRoomPath()
{
    return Util::GetDataDirectory() + "TestRoom.txt";
}

std::string Room::ToText() const
{
    Util::Serializer writer;
    writer.OpenText("");
    writer.WriteObjectBlock(Meta::Get<Room>(), this);
    writer.m_Stream << '\n';
    return writer.GetText();
}

void Room::FromText(const std::string& text, const std::string& name)
{
    Util::Serializer reader;
    reader.OpenText(text, name);
    reader.ReadObject(Meta::Get<Room>(), this);
}

namespace Util
{
template <>
void ReadValue<ObjectData>(Serializer& serializer, ObjectData& value)
{
    std::iostream& in = serializer.m_Stream;
    if (!serializer.ReadUntil('{'))
        return;
    value.Clear();
    std::string token;
    while (in >> token)
    {
        if (token[0] == '}')
        {
            // "}}" ends this block and leaves the second brace to the block around it.
            serializer.PutBack(token.size() - 1);
            return;
        }
        if (token.compare(0, 2, "//") == 0)
        {
            in.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
            continue;
        }
        // "Name{" is read as "Name {".
        const std::size_t open = token.find('{');
        if (open != std::string::npos)
        {
            serializer.PutBack(token.size() - open);
            token.resize(open);
        }
        Engine::ArchetypeManager& archetypes = Engine::ArchetypeManager::Get();
        const GameObject* archetype = archetypes.GetArchetype(archetypes.Find(token));
        if (!archetype)
        {
            if (IsTolerantRead())
            {
                serializer.SkipValue();
                continue;
            }
            if (UnknownArchetypeSite().load())
                Engine::ReportAtSite(UnknownArchetypeSite(),
                                     "Archetype with the name " + token + " does not exist! \nFile: " +
                                         serializer.m_FileName,
                                     true, "ReadStream", "Room.cpp", 2964);
        }
        // An unknown archetype's block is read all the same, into an object that is then dropped,
        // so that the objects after it are read as written.
        GameObject* object = archetype ? archetype->Clone() : new GameObject();
        if (!serializer.ReadUntil('{'))
        {
            delete object;
            break;
        }
        Engine::ArchetypeManager::AddComponentsFromStream(object, serializer);
        serializer.ReadUntil('}');
        if (archetype)
            value.Add(object);
        else
            delete object;
    }
    // The input ended inside the block: keep what was read.
    in.clear(std::ios::eofbit);
}
}
