#include "Components/Camera/Camera/Camera.h"

#include "Components/Camera/Camera/ViewMatrix.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "utilities/Meta/Data.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
// Where the row vector p lands under m.
Math::Point3D Apply(const Math::Matrix4& m, const Math::Point3D& p)
{
    const float in[4] = {p.x, p.y, p.z, 1.0f};
    float out[4];
    m.TransformRow(in, out);
    return Math::Point3D(out[0], out[1], out[2]);
}

void ExpectNear(const Math::Point3D& actual, const Math::Point3D& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-4f);
    EXPECT_NEAR(actual.y, expected.y, 1e-4f);
    EXPECT_NEAR(actual.z, expected.z, 1e-4f);
}
}

TEST(CameraTest, ViewMatrixPutsTheLookedAtPointDownTheNegativeZAxis)
{
    const Math::Point3D eye(1, 2, 3);
    const Math::Vector3D direction(1, 0, 0);
    const Math::Matrix4 view = CameraMath::LookAlong(eye, direction, Math::Vector3D(0, 1, 0));
    ExpectNear(Apply(view, eye), Math::Point3D(0, 0, 0));
    ExpectNear(Apply(view, Math::Point3D(6, 2, 3)), Math::Point3D(0, 0, -5));
    // Up stays up; looking along +x, +z is to the right.
    ExpectNear(Apply(view, Math::Point3D(1, 4, 3)), Math::Point3D(0, 2, 0));
    ExpectNear(Apply(view, Math::Point3D(1, 2, 4)), Math::Point3D(1, 0, 0));
}

TEST(CameraTest, LookingAlongTheUpVectorStillGivesAFiniteView)
{
    const Math::Matrix4 view =
        CameraMath::LookAlong(Math::Point3D(0, 10, 0), Math::Vector3D(0, -1, 0), Math::Vector3D(0, 1, 0));
    for (const auto& row : view.m)
        for (float value : row)
            EXPECT_TRUE(std::isfinite(value));
    ExpectNear(Apply(view, Math::Point3D(0, 0, 0)), Math::Point3D(0, 0, -10));
    const Math::Matrix4 none =
        CameraMath::LookAlong(Math::Point3D(0, 0, 0), Math::Vector3D(0, 0, 0), Math::Vector3D(0, 1, 0));
    EXPECT_TRUE(none.NearlyEquals(Math::Matrix4()));
}

TEST(CameraTest, UpdateLooksFromPositionPlusOffsetAlongTheViewVector)
{
    Transform transform;
    transform.m_Position = Math::Point3D(0, 5, 0);
    transform.m_Offset = Math::Vector3D(0, 0, 10);
    Camera camera;
    camera.m_Transform = &transform;
    camera.ViewVector = Math::Vector3D(0, 0, -2);
    camera.Update();
    ExpectNear(Apply(camera.m_View, Math::Point3D(0, 5, 0)), Math::Point3D(0, 0, -10));
    const Graphics::CameraState state = camera.GetState();
    EXPECT_EQ(state.Position, Math::Vector3D(0, 5, 10));
    EXPECT_EQ(state.ViewDirection, Math::Vector3D(0, 0, -2));
    EXPECT_TRUE(state.View.NearlyEquals(camera.m_View));
    camera.m_Transform = nullptr;
}

TEST(CameraTest, PrimaryCameraBecomesItsSpacesCameraAndLeavesWithIt)
{
    Engine::Space space(Engine::Level);
    auto* graphics = new Graphics::GraphicsSpace();
    space.AddSystem(graphics, Meta::Get<Graphics::GraphicsSpace>());
    GameObject* object = space.CreateObject(MakeArchetype("CameraHolder", {"Transform", "Camera"}));
    auto* camera = object->GetComponent<Camera>();
    ASSERT_NE(camera, nullptr);
    EXPECT_EQ(camera->m_Transform, object->GetComponent<Transform>());
    EXPECT_EQ(graphics->GetCamera(), nullptr);
    camera->SetAsPrimaryCamera();
    EXPECT_EQ(graphics->GetCamera(), camera);
    object->Destroy();
    space.GarbageCollectObjects();
    EXPECT_EQ(graphics->GetCamera(), nullptr);
}

TEST(CameraTest, CameraWithoutASpaceOrTransformDoesNotFail)
{
    Camera camera;
    camera.SetAsPrimaryCamera();
    camera.Update();
    EXPECT_TRUE(camera.m_View.NearlyEquals(Math::Matrix4()));
}

TEST(CameraTest, CameraIsRegisteredForScripts)
{
    const Meta::Data* type = Meta::FindData("Camera");
    ASSERT_NE(type, nullptr);
    EXPECT_NE(type->FindMember("ViewVector"), nullptr);
    EXPECT_NE(type->FindMethod("SetAsPrimaryCamera"), nullptr);
}
