#include "physics/ColliderAxisCube.h"

#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "physics/PhysicsSystem.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/Property.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{
struct PlacedAxisCube
{
    PlacedAxisCube()
    {
        cube.transform = &transform;
    }
    Transform transform;
    ColliderAxisCube cube;
};
}

TEST(ColliderAxisCubeTest, CornersAreScaledTheAllPlusCornerFirstAndTheAllMinusSecond)
{
    PlacedAxisCube placed;
    placed.cube.SetDimensions(Math::Vector3D(2.0f, 4.0f, 6.0f));
    placed.transform.m_Scale = Math::Vector3D(1.0f, 0.5f, 2.0f);
    placed.cube.UpdateBounds();
    ASSERT_EQ(placed.cube.m_Vertices.size(), 8u);
    EXPECT_EQ(placed.cube.m_Vertices[0], Math::Vector3D(1.0f, 1.0f, 6.0f));
    EXPECT_EQ(placed.cube.m_Vertices[1], Math::Vector3D(-1.0f, -1.0f, -6.0f));
    EXPECT_EQ(placed.cube.m_Scale, Math::Vector3D(1.0f, 0.5f, 2.0f));
}

TEST(ColliderAxisCubeTest, RotatedObjectLeavesTheBoxAxisAlignedInEveryRespect)
{
    PlacedAxisCube placed;
    placed.transform.m_Position = Math::Point3D(10.0f, 0.0f, 0.0f);
    placed.transform.m_Rotation = Math::Quaternion::CreateFromEuler(30.0f, 45.0f, 10.0f);
    placed.cube.SetDimensions(Math::Vector3D(2.0f, 2.0f, 2.0f));
    placed.cube.UpdateBounds();
    EXPECT_EQ(placed.cube.min, Math::Point3D(9.0f, -1.0f, -1.0f));
    EXPECT_EQ(placed.cube.max, Math::Point3D(11.0f, 1.0f, 1.0f));
    EXPECT_EQ(placed.cube.GetSupport(Math::Vector3D(1.0f, 1.0f, 1.0f)), Math::Point3D(11.0f, 1.0f, 1.0f));
    EXPECT_EQ(placed.cube.GetSupport(Math::Vector3D(-1.0f, -1.0f, -1.0f)), Math::Point3D(9.0f, -1.0f, -1.0f));
    EXPECT_EQ(placed.cube.ToLocal(Math::Point3D(11.0f, 2.0f, 3.0f)), Math::Point3D(1.0f, 2.0f, 3.0f));
    EXPECT_EQ(placed.cube.ToWorld(Math::Point3D(1.0f, 2.0f, 3.0f)), Math::Point3D(11.0f, 2.0f, 3.0f));
}

TEST(ColliderAxisCubeTest, ScaleChangesWithinTheToleranceLeaveCachedScaleAndCornersAlone)
{
    PlacedAxisCube placed;
    placed.transform.m_Scale = Math::Vector3D(1.00005f, 0.99995f, 1.00009f);
    placed.cube.UpdateBounds();
    EXPECT_EQ(placed.cube.m_Scale.x, 1.0f);
    EXPECT_EQ(placed.cube.m_Scale.y, 1.0f);
    EXPECT_EQ(placed.cube.m_Scale.z, 1.0f);
    EXPECT_EQ(placed.cube.m_Vertices[0].x, 0.5f);
    placed.transform.m_Scale = Math::Vector3D(1.0f, 1.0f, 1.0002f);
    placed.cube.UpdateBounds();
    EXPECT_EQ(placed.cube.m_Scale.z, 1.0002f);
    EXPECT_FLOAT_EQ(placed.cube.m_Vertices[0].z, 0.5001f);
}

TEST(ColliderAxisCubeTest, SupportSearchRemembersWhereItStoppedAndTakesOnlyStrictlyBetterCorners)
{
    PlacedAxisCube placed;
    const Math::Vector3D up(0.0f, 1.0f, 0.0f);
    // Four corners tie for "up": the first better one met from the start index wins.
    EXPECT_EQ(placed.cube.GetSupport(up), Math::Point3D(0.5f, 0.5f, 0.5f));
    EXPECT_EQ(placed.cube.m_SupportStart, 1u);
    EXPECT_EQ(placed.cube.GetSupport(up), Math::Point3D(0.5f, 0.5f, -0.5f));
    EXPECT_EQ(placed.cube.m_SupportStart, 3u);
}

TEST(ColliderAxisCubeTest, DimensionsPropertyRebuildsTheCorners)
{
    ColliderAxisCube cube;
    const Meta::Property* dimensions = Meta::Get<ColliderAxisCube>()->FindProperty("Dimensions");
    ASSERT_NE(dimensions, nullptr);
    const Math::Vector3D size(4.0f, 2.0f, 8.0f);
    dimensions->Set(&cube, &size);
    EXPECT_EQ(cube.Dimensions, size);
    EXPECT_EQ(cube.m_Vertices[0], Math::Vector3D(2.0f, 1.0f, 4.0f));
}

TEST(ColliderAxisCubeTest, InitializeComputesTheBoundsAndPicksTheDebugColourFromRand)
{
    Engine::Space space(Engine::Level);
    space.AddSystem(new PhysicsSystem(), Meta::Get<PhysicsSystem>());
    std::srand(1234);
    const float red = static_cast<float>(std::rand() / 32767.0);
    const float green = static_cast<float>(std::rand() / 32767.0);
    const float blue = static_cast<float>(std::rand() / 32767.0);
    std::srand(1234);
    GameObject* object = space.CreateObject(MakeArchetype("AxisCubeHolder", {"Transform", "ColliderAxisCube"}));
    auto* cube = object->GetComponent<ColliderAxisCube>();
    ASSERT_NE(cube, nullptr);
    EXPECT_FLOAT_EQ(cube->m_DebugColor[0], red);
    EXPECT_FLOAT_EQ(cube->m_DebugColor[1], green);
    EXPECT_FLOAT_EQ(cube->m_DebugColor[2], blue);
    EXPECT_EQ(cube->min, Math::Point3D(-0.5f, -0.5f, -0.5f));
    EXPECT_EQ(cube->max, Math::Point3D(0.5f, 0.5f, 0.5f));
}
