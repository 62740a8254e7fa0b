// Building a room into a space: the floor, pit and wall boxes with their
// collision boxes, sizes and places; the collision plane; the quad tree over
// the room; the biome's tint; the placed objects cloned and initialized; and
// the reports of missing archetypes.

#include "rooms/Room.h"

#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Components/Mesh.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/ArchetypeManager.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "rooms/RoomManager.h"
#include "rooms/WallMeshGenerator.h"
#include "support/ReportCapture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
class RoomBuildTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Engine::ArchetypeManager::Get().Clear();
        m_Graphics = new Graphics::GraphicsSpace();
        m_Space.AddSystem(m_Graphics, Meta::Get<Graphics::GraphicsSpace>());
        RoomManager& manager = RoomManager::Get();
        manager.Clear();
        manager.m_Biomes["Cave"].m_RoomColor = Math::Color(0.2f, 0.4f, 0.6f, 1.0f);
        manager.m_MainBiome = "Cave";
        // 3 x 2: floor, with a pit at the top right; tiles of 5.
        m_Room.RoomFloor.RoomVec = {{1, 1, 2}, {1, 1, 1}};
        m_Room.m_GridSize = Math::Vector2D(5.0f, 5.0f);
    }
    void TearDown() override
    {
        m_Space.DestroyAllGameObjects();
        m_Space.GarbageCollectObjects();
        RoomManager::Get().Clear();
        Engine::ArchetypeManager::Get().Clear();
    }

    // Every archetype of a normal build, each with a Transform; the visible boxes with a Mesh.
    void MakeBuildArchetypes()
    {
        m_Floor = MakeArchetype("Floor", {"Transform", "Mesh"});
        m_FloorCollision = MakeArchetype("FloorCollision", {"Transform"});
        m_Wall = MakeArchetype("Wall", {"Transform", "Mesh", "Wall"});
        m_Pit = MakeArchetype("Pit", {"Transform", "Mesh"});
        m_WallCollision = MakeArchetype("WallCollision", {"Transform"});
        m_Generator = MakeArchetype("WallMeshGenerator", {"Transform", "WallMeshGenerator"});
        m_Plane = MakeArchetype("FloorPlaneCollision", {"Transform"});
        Engine::ArchetypeManager& archetypes = Engine::ArchetypeManager::Get();
        archetypes.GetArchetype(m_Wall)->GetComponent<Transform>()->m_Scale.y = 30.0f;
        archetypes.GetArchetype(m_WallCollision)->GetComponent<Transform>()->m_Scale.y = 30.0f;
        archetypes.GetArchetype(m_FloorCollision)->GetComponent<Transform>()->m_Scale.y = 20.0f;
    }

    // The objects of `made` cloned from archetype `id`, in order of creation.
    std::vector<GameObject*> Of(const std::vector<GameObjectId>& made, ArchetypeId id) const
    {
        std::vector<GameObject*> found;
        for (GameObjectId objectId : made)
        {
            GameObject* object = m_Space.GetGameObject(objectId);
            if (object && object->GetArchetype() == id)
                found.push_back(object);
        }
        return found;
    }

    static void ExpectBox(const GameObject* box, Math::Vector3D scale, Math::Point3D position)
    {
        const Transform* transform = box->GetComponent<Transform>();
        ASSERT_NE(transform, nullptr);
        EXPECT_FLOAT_EQ(transform->m_Scale.x, scale.x);
        EXPECT_FLOAT_EQ(transform->m_Scale.y, scale.y);
        EXPECT_FLOAT_EQ(transform->m_Scale.z, scale.z);
        EXPECT_FLOAT_EQ(transform->m_Position.x, position.x);
        EXPECT_FLOAT_EQ(transform->m_Position.y, position.y);
        EXPECT_FLOAT_EQ(transform->m_Position.z, position.z);
    }

    Engine::Space m_Space{Engine::Level};
    Graphics::GraphicsSpace* m_Graphics = nullptr;
    Room m_Room;
    ArchetypeId m_Floor = 0, m_FloorCollision = 0, m_Wall = 0, m_Pit = 0, m_WallCollision = 0;
    ArchetypeId m_Generator = 0, m_Plane = 0;
};
}

// The working grid is the room inside a ring of wall, 5 x 4 tiles, origin (-12.5, -10):
//   0 0 0 0 0
//   0 1 1 2 0
//   0 1 1 1 0
//   0 0 0 0 0
TEST_F(RoomBuildTest, FloorAndPitBoxesCoverTheirRectanglesAtTheRoomsHeights)
{
    MakeBuildArchetypes();
    const std::vector<GameObjectId> made = m_Room.Create(m_Space);

    const std::vector<GameObject*> floors = Of(made, m_Floor);
    ASSERT_EQ(floors.size(), 2u);
    // Columns 1-2 and rows 1-2, then column 3 of row 2; 22.5 high around y = -3.75.
    ExpectBox(floors[0], {10.0f, 22.5f, 10.0f}, {-5.0f, -3.75f, -2.5f});
    ExpectBox(floors[1], {5.0f, 22.5f, 5.0f}, {2.5f, -3.75f, 0.0f});
    const std::vector<GameObject*> pits = Of(made, m_Pit);
    ASSERT_EQ(pits.size(), 1u);
    ExpectBox(pits[0], {5.0f, 22.5f, 5.0f}, {2.5f, 3.75f, -5.0f});

    // The floor's collision boxes: the same rectangles, their own height, their top at y = -7.5.
    const std::vector<GameObject*> floorCollisions = Of(made, m_FloorCollision);
    ASSERT_EQ(floorCollisions.size(), 2u);
    ExpectBox(floorCollisions[0], {10.0f, 20.0f, 10.0f}, {-5.0f, -17.5f, -2.5f});
    ExpectBox(floorCollisions[1], {5.0f, 20.0f, 5.0f}, {2.5f, -17.5f, 0.0f});
}

TEST_F(RoomBuildTest, ARectangleSpanningTheFullGridWidthIsStretchedThirtyTilesOnBothSides)
{
    MakeBuildArchetypes();
    const std::vector<GameObjectId> made = m_Room.Create(m_Space);

    const std::vector<GameObject*> walls = Of(made, m_Wall);
    ASSERT_EQ(walls.size(), 4u);
    // Row 0 across the whole width: columns -30 to 35, rows -30 to 1; the archetype's height 30.
    ExpectBox(walls[0], {325.0f, 30.0f, 155.0f}, {-2.5f, 5.0f, -85.0f});
    // Column 0, rows 1-3: stretched left and down.
    ExpectBox(walls[1], {155.0f, 30.0f, 165.0f}, {-87.5f, 5.0f, 75.0f});
    // Column 4, rows 1-2: stretched right only.
    ExpectBox(walls[2], {155.0f, 30.0f, 10.0f}, {82.5f, 5.0f, -2.5f});
    // Row 3, columns 1-4: stretched right and down.
    ExpectBox(walls[3], {170.0f, 30.0f, 155.0f}, {75.0f, 5.0f, 80.0f});
    for (const GameObject* wall : walls)
        EXPECT_NE(wall->GetComponent("Wall"), nullptr);

    // Each wall box has its collision box, in the same place and of the same size.
    const std::vector<GameObject*> wallCollisions = Of(made, m_WallCollision);
    ASSERT_EQ(wallCollisions.size(), walls.size());
    for (std::size_t i = 0; i < walls.size(); ++i)
    {
        const Transform* wall = walls[i]->GetComponent<Transform>();
        ExpectBox(wallCollisions[i], wall->m_Scale, wall->m_Position);
    }
}

TEST_F(RoomBuildTest, DeepPitsRaiseTheFloorAndPitBoxes)
{
    MakeBuildArchetypes();
    m_Room.m_PitDepth = 20.0f;
    const std::vector<GameObjectId> made = m_Room.Create(m_Space);
    const std::vector<GameObject*> floors = Of(made, m_Floor);
    const std::vector<GameObject*> pits = Of(made, m_Pit);
    ASSERT_EQ(floors.size(), 2u);
    ASSERT_EQ(pits.size(), 1u);
    EXPECT_FLOAT_EQ(floors[0]->GetComponent<Transform>()->m_Scale.y, 27.5f);
    EXPECT_FLOAT_EQ(floors[0]->GetComponent<Transform>()->m_Position.y, -6.25f);
    EXPECT_FLOAT_EQ(pits[0]->GetComponent<Transform>()->m_Position.y, 6.25f);
}

TEST_F(RoomBuildTest, TheBuildMakesTheGeneratorThePlaneAndEveryBoxInitialized)
{
    MakeBuildArchetypes();
    const std::vector<GameObjectId> made = m_Room.Create(m_Space);
    // Generator, 2 floors and their collision boxes, 1 pit, 4 walls and theirs, the plane.
    EXPECT_EQ(made.size(), 15u);
    for (GameObjectId id : made)
    {
        GameObject* object = m_Space.GetGameObject(id);
        ASSERT_NE(object, nullptr);
        EXPECT_TRUE(object->m_Initialized);
    }
    const std::vector<GameObject*> planes = Of(made, m_Plane);
    ASSERT_EQ(planes.size(), 1u);
    EXPECT_FLOAT_EQ(planes[0]->GetComponent<Transform>()->m_Position.y, -7.5f);

    const std::vector<GameObject*> generators = Of(made, m_Generator);
    ASSERT_EQ(generators.size(), 1u);
    const auto* generator = generators[0]->GetComponent<WallMeshGenerator>();
    ASSERT_NE(generator, nullptr);
    EXPECT_FLOAT_EQ(generator->m_GridSize.x, 3.0f);
    EXPECT_FLOAT_EQ(generator->m_GridSize.y, 2.0f);
    ASSERT_EQ(generator->m_Grid.size(), 4u);
    EXPECT_EQ(generator->m_Grid[1], (std::vector<int>{0, 1, 1, 2, 0}));
    EXPECT_FLOAT_EQ(generator->m_Scale.x, 5.0f);
    EXPECT_FLOAT_EQ(generator->m_FloorRandomMin.x, -0.1f);
}

TEST_F(RoomBuildTest, TheQuadTreeIsBuiltOverTheRoomOneCellATile)
{
    MakeBuildArchetypes();
    m_Room.Create(m_Space);
    const Graphics::QuadTree& tree = *m_Graphics->GetQuadTree();
    EXPECT_GE(tree.GetRoot(), 0);
    EXPECT_EQ(tree.m_CellsAcross, 5);
    EXPECT_EQ(tree.m_CellsDown, 4);
    EXPECT_FLOAT_EQ(tree.m_CellSize.x, 5.0f);
    EXPECT_FLOAT_EQ(tree.m_CellSize.z, 5.0f);
    EXPECT_FLOAT_EQ(tree.m_Origin.x, -15.0f);
    EXPECT_FLOAT_EQ(tree.m_Origin.z, -12.5f);
}

TEST_F(RoomBuildTest, TheBiomeColourTintsTheMeshOfEachVisibleBox)
{
    MakeBuildArchetypes();
    const std::vector<GameObjectId> made = m_Room.Create(m_Space);
    const Math::Color tint(0.2f, 0.4f, 0.6f, 1.0f);
    EXPECT_EQ(RoomManager::Get().GetCurrentBiomeName(), "Cave");
    for (ArchetypeId kind : {m_Floor, m_Wall, m_Pit})
        for (const GameObject* box : Of(made, kind))
            EXPECT_EQ(box->GetComponent<Graphics::Mesh>()->Material.Diffuse, tint);
}

TEST_F(RoomBuildTest, PlacedObjectsAreClonedWithNewIdsAndInitialized)
{
    MakeBuildArchetypes();
    const ArchetypeId probe = MakeArchetype("Prober", {"Transform", "Probe"});
    GameObject* prototype = Engine::ArchetypeManager::Get().GetArchetype(probe)->Clone();
    prototype->GetComponent<Transform>()->m_Position = Math::Point3D(3.0f, -6.0f, 1.0f);
    m_Room.Objects.Add(prototype);
    m_Room.Objects.Add(Engine::ArchetypeManager::Get().GetArchetype(probe)->Clone());

    const std::vector<GameObjectId> first = m_Room.Create(m_Space);
    const std::vector<GameObject*> placed = Of(first, probe);
    ASSERT_EQ(placed.size(), 2u);
    EXPECT_NE(placed[0], prototype);
    EXPECT_NE(placed[0]->GetId(), 0u);
    EXPECT_NE(placed[0]->GetId(), placed[1]->GetId());
    EXPECT_TRUE(placed[0]->m_Initialized);
    EXPECT_EQ(placed[0]->GetSpace(), &m_Space);
    EXPECT_FLOAT_EQ(placed[0]->GetComponent<Transform>()->m_Position.x, 3.0f);
    // The prototypes stay outside the space, ready for the next build.
    EXPECT_EQ(prototype->GetId(), 0u);
    EXPECT_EQ(prototype->GetSpace(), nullptr);
    EXPECT_FALSE(prototype->m_Initialized);

    const std::vector<GameObjectId> second = m_Room.Create(m_Space);
    const std::vector<GameObject*> again = Of(second, probe);
    ASSERT_EQ(again.size(), 2u);
    EXPECT_EQ(std::find(first.begin(), first.end(), again[0]->GetId()), first.end());
}

TEST_F(RoomBuildTest, TheEditorBuildUsesTheEditorBoxesWithoutCollisionOrTint)
{
    MakeBuildArchetypes();
    const ArchetypeId editorFloor = MakeArchetype("EditorFloor", {"Transform", "Mesh"});
    const ArchetypeId editorPit = MakeArchetype("EditorPit", {"Transform", "Mesh"});
    m_Room.PrepareGrid();
    const std::vector<GameObjectId> made = m_Room.CreateEnviroment(m_Space, true);
    // 2 floor and 4 wall boxes of the editor's floor, 1 of its pit.
    EXPECT_EQ(Of(made, editorFloor).size(), 6u);
    EXPECT_EQ(Of(made, editorPit).size(), 1u);
    EXPECT_TRUE(Of(made, m_Floor).empty());
    EXPECT_TRUE(Of(made, m_FloorCollision).empty());
    EXPECT_TRUE(Of(made, m_WallCollision).empty());
    EXPECT_EQ(Of(made, editorPit)[0]->GetComponent<Graphics::Mesh>()->Material.Diffuse,
              Graphics::GraphicsMaterial().Diffuse);
    const std::vector<GameObject*> generators = Of(made, m_Generator);
    ASSERT_EQ(generators.size(), 1u);
    EXPECT_FLOAT_EQ(generators[0]->GetComponent<WallMeshGenerator>()->m_FloorRandomMin.x, -0.0001f);
    EXPECT_FLOAT_EQ(generators[0]->GetComponent<WallMeshGenerator>()->m_FloorRandomMax.x, 0.001f);
}

TEST_F(RoomBuildTest, AMissingArchetypeIsReportedOnceAndTheBuildGoesOn)
{
    m_Plane = MakeArchetype("FloorPlaneCollision", {"Transform"});
    m_Floor = MakeArchetype("Floor", {"Transform", "Mesh"});
    ReportCapture reports;
    std::vector<GameObjectId> first;
    std::vector<GameObjectId> second;
    {
        // Retry leaves the site open: it is the site itself that fires once.
        ScopedDialogPolicy retry(Platform::DialogPolicy::Retry);
        first = m_Room.Create(m_Space);
        second = m_Room.Create(m_Space);
    }
    const std::string text = reports.Text();

    // The dialog's line, once for both builds.
    const std::string wall = "FATAL: [FATAL] We need an archetype called \"Wall\" for the rooms!";
    const std::string pit = "We need an archetype called \"Pit\" for the rooms!";
    ASSERT_NE(text.find(wall), std::string::npos) << text;
    EXPECT_EQ(text.find(wall, text.find(wall) + 1), std::string::npos) << text;
    EXPECT_NE(text.find(pit), std::string::npos);
    EXPECT_NE(text.find("We need an archetype called \"WallCollision\" for the rooms!"), std::string::npos);
    EXPECT_NE(text.find("Room::CreateEnviroment"), std::string::npos);
    EXPECT_NE(text.find("Room.cpp"), std::string::npos);
    EXPECT_EQ(text.find("\"Floor\" for the rooms"), std::string::npos);
    // Without walls and pits: the two floor boxes and the plane.
    EXPECT_EQ(first.size(), 3u);
    EXPECT_EQ(second.size(), 3u);
}

TEST_F(RoomBuildTest, EditorBoxesInTheGridAreReportedWithoutTheirArchetype)
{
    {
        ReportCapture reports;
        EXPECT_EQ(m_Room.CreateBoxInGrid(m_Space, 1, 0, Math::Color(1, 0, 0, 1)), 0u);
        EXPECT_TRUE(reports.Holds("We need an archetype called \"EditorFloor\" for the rooms!"));
        EXPECT_TRUE(reports.Holds("Room::CreateBoxInGrid"));
    }
    MakeArchetype("EditorFloor", {"Transform", "Mesh"});
    const GameObjectId id = m_Room.CreateBoxInGrid(m_Space, 1, 0, Math::Color(1, 0, 0, 1));
    GameObject* box = m_Space.GetGameObject(id);
    ASSERT_NE(box, nullptr);
    // Origin (-7.5, -7.5, -5) for a 3 x 2 grid of tiles of 5.
    EXPECT_FLOAT_EQ(box->GetComponent<Transform>()->m_Position.x, -2.5f);
    EXPECT_FLOAT_EQ(box->GetComponent<Transform>()->m_Position.y, -7.5f);
    EXPECT_FLOAT_EQ(box->GetComponent<Transform>()->m_Position.z, -5.0f);
    EXPECT_EQ(box->GetComponent<Graphics::Mesh>()->Material.Diffuse, Math::Color(1, 0, 0, 1));
}

TEST_F(RoomBuildTest, ARoomTooLargeToBuildIsReportedAndBuildsNothing)
{
    MakeBuildArchetypes();
    // One row of 3000 tiles over 3000 rows of one: 9 million tiles once the rows are squared off.
    m_Room.RoomFloor.RoomVec.assign(3000, std::vector<int>{1});
    m_Room.RoomFloor.RoomVec[0].assign(3000, 1);
    m_Room.m_Name = "Huge";
    ReportCapture reports;
    EXPECT_TRUE(m_Room.Create(m_Space).empty());
    EXPECT_TRUE(reports.Holds("The room \"Huge\" has 9000000 tiles, more than the 4000000 a room may have: it is not built."));
}
