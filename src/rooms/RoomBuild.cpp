// Building a room into a space: Room::Create, Room::CreateEnviroment and the
// editor's Room::CreateBoxInGrid. The environment is made of boxes cloned from
// archetypes found by name: the grid, padded by a ring of wall, is covered
// with few large rectangles per kind (RoomRectangles.h), and each rectangle
// becomes one box, stretched and placed from the tile size and the room's
// heights. How a box looks (model, texture, graphical offset, the walls'
// height) is the archetype's; the build sets only what the rectangle says.
#include "rooms/Room.h"

#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/QuadTree/QuadTree.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "engine/Space.h"
#include "rooms/RoomManager.h"
#include "rooms/RoomRectangles.h"
#include "rooms/WallMeshGenerator.h"

#include <atomic>
#include <map>
#include <utility>

namespace
{
// Tiles by which a wall rectangle touching the grid's edge is stretched outward.
constexpr int kEdgeStretch = 30;
// Height of the ground plane: where the floor's top lies and the player walks.
constexpr float kGroundHeight = -7.5f;
// Height of the wall boxes' centres.
constexpr float kWallHeight = 5.0f;

// The archetype called `name`, or 0 after the fatal dialog "We need an archetype called ..." of
// `function`. Each archetype name has its own dialog site per function, which fires once.
ArchetypeId NeedArchetype(const std::string& name, const char* function)
{
    const ArchetypeId id = Engine::ArchetypeManager::Get().Find(name);
    if (id != 0)
        return id;
    static std::map<std::pair<std::string, std::string>, std::atomic<bool>*> sites;
    std::atomic<bool>*& site = sites[{name, function}];
    if (!site)
        site = Engine::Log::Get().NewSite();
    if (site->load())
    {
        Engine::ReportAtSite(*site, "We need an archetype called \"" + name + "\" for the rooms!", true, function,
                             "Room.cpp", __LINE__);
        site->store(false);
    }
    return 0;
}

// A new object of archetype `id` in `space`, not yet initialized; null for id 0.
GameObject* MakeObject(Engine::Space& space, ArchetypeId id)
{
    return id == 0 ? nullptr : space.CreateObjectUninitialized(id);
}

// Initializes `object` and notes its id among the objects made.
void Finish(GameObject* object, std::vector<GameObjectId>& made)
{
    object->Initialize();
    made.push_back(object->GetId());
}

// Gives `colour` to the diffuse of the first two drawn meshes of `object`.
void SetColour(GameObject* object, const Math::Color& colour)
{
    int coloured = 0;
    for (Component* component : object->m_Components)
        if (auto* mesh = dynamic_cast<Graphics::Mesh*>(component))
        {
            mesh->Material.Diffuse = colour;
            if (++coloured == 2)
                return;
        }
}

// The room's working grid: `grid` inside a ring of wall; missing cells of ragged rows are wall.
std::vector<std::vector<int>> PadGrid(const std::vector<std::vector<int>>& grid)
{
    const std::size_t width = RoomData::Width(grid);
    std::vector<std::vector<int>> padded(grid.size() + 2, std::vector<int>(width + 2, 0));
    for (std::size_t row = 0; row < grid.size(); ++row)
        for (std::size_t column = 0; column < grid[row].size(); ++column)
            padded[row + 1][column + 1] = grid[row][column];
    return padded;
}
}

std::vector<GameObjectId> Room::Create(Engine::Space& space)
{
    RoomManager& manager = RoomManager::Get();
    if (!m_BiomeOverride.empty())
        manager.SetBiome(m_BiomeOverride);
    manager.PickRandomBiome();
    PrepareGrid();
    std::vector<GameObjectId> made = CreateEnviroment(space, false);

    // The placed objects: a clone of each prototype, with a new id, fully initialized.
    for (const GameObject* prototype : Objects.GetObjectList())
    {
        if (!prototype)
            continue;
        GameObject* object = space.AddObject(prototype->Clone());
        Finish(object, made);
    }
    return made;
}

std::vector<GameObjectId> Room::CreateEnviroment(Engine::Space& space, bool editor)
{
    constexpr const char* kFunction = "Room::CreateEnviroment";
    std::vector<GameObjectId> made;

    // The biome's tint and the heights.
    const Math::Color colour = RoomManager::Get().GetBiomeColor();
    const float wallTop = WallTop();
    const float extra = WallExtra();

    // The archetypes; in the editor only the two that draw the tiles' bounds.
    const ArchetypeId floorId = NeedArchetype(editor ? "EditorFloor" : "Floor", kFunction);
    const ArchetypeId floorCollisionId = editor ? 0 : NeedArchetype("FloorCollision", kFunction);
    const ArchetypeId wallId = editor ? floorId : NeedArchetype("Wall", kFunction);
    const ArchetypeId pitId = NeedArchetype(editor ? "EditorPit" : "Pit", kFunction);
    const ArchetypeId wallCollisionId = editor ? 0 : NeedArchetype("WallCollision", kFunction);

    // The working grid, its size and the room's origin.
    const std::vector<std::vector<int>> grid = PadGrid(m_GridCopy);
    const int w = static_cast<int>(RoomData::Width(grid));
    const int h = static_cast<int>(RoomData::Height(grid));
    const float tx = m_GridSize.x;
    const float tz = m_GridSize.y;
    const float ox = -static_cast<float>(w) * tx * 0.5f;
    const float oz = -static_cast<float>(h) * tz * 0.5f;

    // The rock meshes' generator; in the editor nearly flat.
    if (GameObject* generator = MakeObject(space, NeedArchetype("WallMeshGenerator", kFunction)))
    {
        auto* meshes = generator->GetComponent<WallMeshGenerator>();
        if (meshes && editor)
        {
            meshes->m_FloorRandomMin = Math::Vector3D(-0.0001f, -0.0001f, -0.0001f);
            meshes->m_FloorRandomMax = Math::Vector3D(0.001f, 0.001f, 0.001f);
        }
        Finish(generator, made);
        if (meshes)
            meshes->Generate(m_GridCopy, Math::Vector3D(tx, 1.0f, tz), wallTop, m_PitDepth);
    }
    // The generator's call into the space's culling tree: one cell a tile of the working grid.
    if (auto* graphics = space.GetSystem<Graphics::GraphicsSpace>())
        graphics->GetQuadTree()->BuildGrid(Math::Point3D(ox - 0.5f * tx, 0.0f, oz - 0.5f * tz),
                                           Math::Vector3D(tx, 4.0f * wallTop, tz), w, h);

    // The rectangles of each kind.
    const std::vector<GridRectangle> walls = FindRectangles(grid, [](int value) { return value == 0; });
    const std::vector<GridRectangle> floors = FindRectangles(grid, [](int value) { return value == 1; });
    const std::vector<GridRectangle> pits = FindRectangles(grid, [](int value) { return value == 2 || value == 3; });

    // One box: the rectangle's size and place; `height` < 0 keeps the archetype's own height.
    auto place = [&](ArchetypeId id, GridRectangle r, bool stretch, float height, float y, bool tint) {
        GameObject* box = MakeObject(space, id);
        if (!box)
            return;
        if (stretch)
        {
            if (r.x0 == 0)
                r.x0 = -kEdgeStretch;
            if (r.x1 == w)
                r.x1 = w + kEdgeStretch;
            if (r.y0 == 0)
                r.y0 = -kEdgeStretch;
            if (r.y1 == h)
                r.y1 = h + kEdgeStretch;
        }
        if (auto* transform = box->GetComponent<Transform>())
        {
            const float boxHeight = height < 0.0f ? transform->m_Scale.y : height;
            transform->m_Scale = Math::Vector3D(static_cast<float>(r.x1 - r.x0) * tx, boxHeight,
                                                static_cast<float>(r.y1 - r.y0) * tz);
            const float boxY = y < -1e30f ? kGroundHeight - boxHeight * 0.5f : y;
            transform->m_Position =
                Math::Point3D(static_cast<float>(r.x0 + r.x1 - 1) * 0.5f * tx + ox, boxY,
                              static_cast<float>(r.y0 + r.y1 - 1) * 0.5f * tz + oz);
        }
        if (tint)
            SetColour(box, colour);
        // The per-side flags of the wall mesh (only the sides next to open tiles draw) come with
        // the generated meshes.
        Finish(box, made);
    };
    // Below the ground plane, flush with it.
    constexpr float kUnderGround = -3.4e38f;
    for (const GridRectangle& r : floors)
    {
        place(floorId, r, false, wallTop, -extra, !editor);
        place(floorCollisionId, r, false, -1.0f, kUnderGround, false);
    }
    for (const GridRectangle& r : pits)
        place(pitId, r, false, wallTop, extra, !editor);
    for (const GridRectangle& r : walls)
    {
        place(wallId, r, true, -1.0f, kWallHeight, !editor);
        place(wallCollisionId, r, true, -1.0f, kWallHeight, false);
    }

    // The floor as the physics sees it.
    if (GameObject* plane = MakeObject(space, NeedArchetype("FloorPlaneCollision", kFunction)))
    {
        if (auto* transform = plane->GetComponent<Transform>())
            transform->m_Position = Math::Point3D(0.0f, kGroundHeight, 0.0f);
        Finish(plane, made);
    }
    return made;
}

GameObjectId Room::CreateBoxInGrid(Engine::Space& space, int column, int row, const Math::Color& colour)
{
    GameObject* box = MakeObject(space, NeedArchetype("EditorFloor", "Room::CreateBoxInGrid"));
    if (!box)
        return 0;
    const float tx = m_GridSize.x;
    const float tz = m_GridSize.y;
    const float ox = -static_cast<float>(RoomData::Width(RoomFloor.RoomVec)) * tx * 0.5f;
    const float oz = -static_cast<float>(RoomData::Height(RoomFloor.RoomVec)) * tz * 0.5f;
    if (auto* transform = box->GetComponent<Transform>())
    {
        transform->m_Scale = Math::Vector3D(tx, transform->m_Scale.y, tz);
        transform->m_Position = Math::Point3D(static_cast<float>(column) * tx + ox, kGroundHeight,
                                              static_cast<float>(row) * tz + oz);
    }
    SetColour(box, colour);
    box->Initialize();
    return box->GetId();
}
