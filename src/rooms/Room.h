// Room: one level of the game, a tile grid drawn in the editor plus the
// objects placed in it, read from and written to "Rooms/<name>.txt" under the
// data directory as one block of the room's values:
//
//   {
//     GridSize { 1 1 }
//     RoomFloor {
//     0 0 0
//     0 1 0
//     0 0 0
//     }
//     Objects {
//     Crate
//     {
//       Transform
//       {
//         Position { 1 0 -2 }
//       }
//     }
//     }
//     PitDepth 10
//     ...
//   }
//
// Scripts ask the grid questions: FloorType by tile index, FloorTypeFromPos by
// position in tiles from the room's centre, and ShootRay for line of sight.
// Those read m_GridCopy, the grid as it stood at the last build
// (PrepareGrid), so an edit of RoomFloor is seen only after the next build.
// Indices outside the grid, negative ones too, read as wall.
#pragma once

#include "engine/Math/Color.h"
#include "engine/Math/Vector2D.h"
#include "rooms/ObjectData.h"
#include "rooms/RoomData.h"
#include "rooms/RoomRay.h"

#include <cstdint>
#include <string>
#include <vector>

using GameObjectId = std::uint32_t;
class GameObject;
namespace Engine
{
class Space;
}
namespace Meta
{
class Data;
}

class Room
{
public:
    // An empty room: no rows, no objects, tiles of size 1.
    Room() = default;
    // Deletes the placed objects.
    virtual ~Room() = default;
    // The registry's record of the room's type.
    virtual const Meta::Data* GetMeta() const;

    // Value of the tile at (column, row) of the built grid; 0 (wall) outside it.
    int FloorType(int column, int row) const;
    // FloorType of the tile under (x, z), in tiles from the room's centre; 0 for an empty grid.
    int FloorTypeFromPos(float x, float z) const;
    // Sets the tiles of RoomFloor from (column0, row0) to (column1, row1), both corners included
    // and in any order, to `value`; cells outside the grid are left alone.
    void SetFloorFromRect(int column0, int row0, int column1, int row1, int value);
    // Walks the built grid from (x0, z0) to (x1, z1), positions in tiles from the centre.
    RoomRay ShootRay(float x0, float z0, float x1, float z1) const;
    // Writes the room as it stands to the scratch file (TestRoomPath), for playing it from the
    // editor; false if the file does not open.
    bool SaveTestRoom() const;
    // Reads the room back from the scratch file, keeping its name and file path; false if there is none.
    bool LoadTestRoom();
    // The scratch file of LoadTestRoom and SaveTestRoom: "TestRoom.txt" in the data directory,
    // outside the folder of rooms.
    static std::string TestRoomPath();
    // The room's name: its file name without folder and extension.
    std::string GetName() const { return m_Name; }
    // The placed object at `index` in file order, or null.
    GameObject* GetGameObject(int index) const;
    // The index of the placed object `object` in file order, or -1.
    int GetGameObjectIndex(GameObject* object) const;

    // Height of the wall boxes: 22.5 while the pits are shallower than 15, else the pit depth + 7.5.
    float WallTop() const;
    // How far the wall boxes sit off the middle: (WallTop() - 15) / 2, never below 0.
    float WallExtra() const;

    // Build steps on the grid alone: copies RoomFloor's grid into m_GridCopy and computes
    // RoomFloor's Left, Right, Top and Bottom.
    void PrepareGrid();

    // Builds the room into `space`: the biome, the grid copy and its bounds, the environment, then
    // a clone of each placed object. Returns the ids of every object made, for the next build to
    // destroy.
    std::vector<GameObjectId> Create(Engine::Space& space);
    // Builds the environment of m_GridCopy into `space`: the rock mesh generator (and the space's
    // quad tree over the room), the floor, pit and wall boxes with their collision boxes, and the
    // collision plane; in editor mode only the editor's boxes, untinted. A missing archetype is
    // reported once and its kind left out. Returns the ids of the objects made.
    std::vector<GameObjectId> CreateEnviroment(Engine::Space& space, bool editor);
    // The editor's box of the tile at (column, row) of RoomFloor, tinted `colour`; its id, or 0
    // (reported) without the archetype "EditorFloor".
    GameObjectId CreateBoxInGrid(Engine::Space& space, int column, int row, const Math::Color& colour);

    // Reads the room file at `path`; false if it does not open. Sets the name and the file path.
    // Under the tolerant-read flag the file is written back at once, without what no longer exists.
    bool Load(const std::string& path);
    // Writes the room to `path`, under the file watcher's lock; false if it does not open.
    bool Save(const std::string& path) const;
    // The room's text: one block of its values.
    std::string ToText() const;
    // Reads the room's values from `text`; `name` stands for the file in messages.
    void FromText(const std::string& text, const std::string& name = "(text)");

    // World size of a tile: x along the columns, y along the rows.
    Math::Vector2D m_GridSize{1.0f, 1.0f};
    // The tile grid as edited.
    RoomData RoomFloor;
    // The grid as it stood at the last build; what FloorType and ShootRay read.
    std::vector<std::vector<int>> m_GridCopy;
    // File name without extension.
    std::string m_Name;
    // The placed objects.
    ObjectData Objects;
    // How far pits go down.
    float m_PitDepth = 10.0f;
    // Compared with the room manager's difficulty when the next room is chosen.
    float m_Difficulty = 0.0f;
    // A boss room.
    bool m_BossRoom = false;
    // Forces the biome when not empty.
    std::string m_BiomeOverride;
    // File of the room.
    std::string m_FilePath;
};
