// The game's physics archetypes (Data/Archetypes/Physics/) in a level space of
// their own: what the first room drops comes to rest where it should. The
// game's script components (a copy of Data/LuaScripts/Components/, without the
// game's states) are registered, so the archetypes' ImpactSound runs too (with
// no sound system in the space it plays nothing).
#include "PhysicsTestWorld.h"

#include "engine/ArchetypeManager.h"
#include "physics/ColliderCube.h"
#include "utilities/lua/LuaTestSupport.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{
class ShippedPhysicsArchetypesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::filesystem::create_directories(m_Temp.Path() + "LuaScripts");
        std::filesystem::copy(VORN_DATA_DIR "/LuaScripts/Components", m_Temp.Path() + "LuaScripts/Components",
                              std::filesystem::copy_options::recursive);
        {
            StdoutCapture dropped;
            m_Lua.Initialize();
        }
        Engine::ArchetypeManager& archetypes = Engine::ArchetypeManager::Get();
        for (const char* name : {"FloorPlaneCollision", "Crate", "StoneBall"})
        {
            archetypes.OnFileChanged(std::string(VORN_DATA_DIR) + "/Archetypes/Physics/" + name + ".txt");
            ASSERT_NE(archetypes.Find(name), 0u) << name;
        }
    }
    // The archetypes hold script components of this test's Lua system: they go first.
    void TearDown() override { Engine::ArchetypeManager::Get().Clear(); }
    GameObject* Place(const char* name, Math::Point3D at)
    {
        GameObject* object = world.space.CreateObject(Engine::ArchetypeManager::Get().Find(name));
        PositionOf(object) = at;
        return object;
    }
    TempFolder m_Temp;
    ScopedDataDirectory m_Data{m_Temp.Path()};
    LuaSystem m_Lua;
    PhysicsTestWorld world;
};
}

TEST_F(ShippedPhysicsArchetypesTest, CrateAndBallDroppedOnTheFloorComeToRestStackedOnIt)
{
    const float floor = -7.5f;
    Place("FloorPlaneCollision", Math::Point3D(0.0f, floor, 0.0f));
    GameObject* crate = Place("Crate", Math::Point3D(0.0f, floor + 4.0f, 0.0f));
    GameObject* ball = Place("StoneBall", Math::Point3D(0.1f, floor + 9.0f, 0.0f));
    ASSERT_NE(crate->GetComponent<ColliderCube>(), nullptr);
    world.Step(300);

    // The crate (two units high) stands on the floor, the ball (0.75 in radius) on the crate, each
    // within the correction's slop, and neither moves any more.
    EXPECT_NEAR(PositionOf(crate).y, floor + 1.0f, 0.15f);
    EXPECT_NEAR(PositionOf(ball).y, floor + 2.75f, 0.3f);
    const Math::Point3D crateAt = PositionOf(crate);
    const Math::Point3D ballAt = PositionOf(ball);
    world.Step(60);
    EXPECT_NEAR(PositionOf(crate).y, crateAt.y, 0.02f);
    EXPECT_NEAR(PositionOf(ball).y, ballAt.y, 0.02f);
    EXPECT_LT(BodyOf(crate).Velocity.Length(), 1.0f);
}
