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
#include <optional>
#include <string>
#include <utility>

namespace
{
// Tiles by which a wall rectangle touching the grid's edge is stretched outward.
constexpr int kEdgeStretch = 30;
// Height of the ground plane: where the floor's top lies and the player walks.
constexpr float kGroundHeight = -7.5f;
// Height of the wall boxes' centres.
constexpr float kWallHeight = 5.0f;
// The most tiles (width of the longest row times the rows) a room may have to be built: a room of
// a few long rows among many short ones would otherwise ask for more memory than there is.
constexpr std::size_t kMostTiles = 4'000'000;

// How a box is laid over its rectangle.
struct BoxPlacement
{
    // Stretched 30 tiles outward on each side at the grid's edge (walls).
    bool stretch = false;
    // Height of the box; none keeps the archetype's.
    std::optional<float> height;
    // Height of the box's centre; none puts its top on the ground plane.
    std::optional<float> y;
    // Tinted with the biome's colour.
    bool tint = false;
};

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

    const std::size_t tiles = RoomData::Width(m_GridCopy) * RoomData::Height(m_GridCopy);
    if (tiles > kMostTiles)
    {
        VORN_REPORT_ERROR_IN(false, kFunction,
                             "The room \"" + m_Name + "\" has " + std::to_string(tiles) +
                                 " tiles, more than the " + std::to_string(kMostTiles) +
                                 " a room may have: it is not built.");
        return made;
    }

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

    // One box of archetype `id` over the rectangle `r`, as `how` says.
    auto place = [&](ArchetypeId id, GridRectangle r, const BoxPlacement& how) {
        GameObject* box = MakeObject(space, id);
        if (!box)
            return;
        if (how.stretch)
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
            const float height = how.height.value_or(transform->m_Scale.y);
            transform->m_Scale = Math::Vector3D(static_cast<float>(r.x1 - r.x0) * tx, height,
                                                static_cast<float>(r.y1 - r.y0) * tz);
            transform->m_Position = Math::Point3D(static_cast<float>(r.x0 + r.x1 - 1) * 0.5f * tx + ox,
                                                  how.y.value_or(kGroundHeight - height * 0.5f),
                                                  static_cast<float>(r.y0 + r.y1 - 1) * 0.5f * tz + oz);
        }
        if (how.tint)
            SetColour(box, colour);
        // The per-side flags of the wall mesh (only the sides next to open tiles draw) come with
        // the generated meshes.
        Finish(box, made);
    };
    // The visible boxes in the order floor, pit, wall; the collision boxes keep their archetype's
    // height, the floor's with its top on the ground plane.
    const bool tint = !editor;
    for (const GridRectangle& r : floors)
    {
        place(floorId, r, {false, wallTop, -extra, tint});
        place(floorCollisionId, r, {false, std::nullopt, std::nullopt, false});
    }
    for (const GridRectangle& r : pits)
        place(pitId, r, {false, wallTop, extra, tint});
    for (const GridRectangle& r : walls)
    {
        place(wallId, r, {true, std::nullopt, kWallHeight, tint});
        place(wallCollisionId, r, {true, std::nullopt, kWallHeight, false});
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
