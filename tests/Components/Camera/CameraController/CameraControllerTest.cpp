#include "Components/Camera/CameraController/CameraController.h"

#include "Components/Camera/Camera/Camera.h"
#include "Components/Camera/CameraFocus/CameraFocus.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/GraphicsEngine.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/ArchetypeManager.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "support/ReportCapture.h"
#include "utilities/Meta/Data.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/luabridge/LuaTestState.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{
constexpr float kFrame = 1.0f / 60.0f;

// A level space with its graphics system, a camera object with a controller, and focus targets.
class CameraControllerTest : public ::testing::Test
{
protected:
    CameraControllerTest() : m_Space(std::make_unique<Engine::Space>(Engine::Level))
    {
        m_Graphics = new Graphics::GraphicsSpace();
        m_Space->AddSystem(m_Graphics, Meta::Get<Graphics::GraphicsSpace>());
    }

    // A camera object with a controller in `space`, looking along `view`, at `position`.
    static GameObject* MakeCamera(Engine::Space& space, const Math::Point3D& position,
                                  const Math::Vector3D& view = Math::Vector3D(0, -1, 0))
    {
        GameObject* object =
            space.CreateObject(MakeArchetype("ControlledCamera", {"Transform", "Camera", "CameraController"}));
        object->GetComponent<Transform>()->m_Position = position;
        object->GetComponent<Camera>()->ViewVector = view;
        return object;
    }

    // A focus target in `space` at `position`.
    static GameObject* MakeTarget(Engine::Space& space, const Math::Point3D& position)
    {
        GameObject* object = space.CreateObject(MakeArchetype("FocusTarget", {"Transform", "CameraFocus"}));
        object->GetComponent<Transform>()->m_Position = position;
        return object;
    }

    // Runs the graphics update of `frames` frames.
    void Frames(int frames)
    {
        for (int i = 0; i < frames; ++i)
            m_Graphics->Update(kFrame);
    }

    std::unique_ptr<Engine::Space> m_Space;
    Graphics::GraphicsSpace* m_Graphics = nullptr;
};

void ExpectNear(const Math::Point3D& actual, const Math::Point3D& expected, float tolerance = 1e-3f)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}
}

TEST_F(CameraControllerTest, TheControllerFollowsItsSpacesTargetsOnEachGraphicsUpdate)
{
    GameObject* camera = MakeCamera(*m_Space, Math::Point3D(0, 30, 0));
    auto* controller = camera->GetComponent<CameraController>();
    ASSERT_NE(controller, nullptr);
    EXPECT_EQ(controller->m_Camera, camera->GetComponent<Camera>());
    MakeTarget(*m_Space, Math::Point3D(8, 0, -6));
    Transform* transform = camera->GetComponent<Transform>();
    Frames(1);
    EXPECT_GT(transform->m_Position.x, 0.0f);
    EXPECT_LT(transform->m_Position.x, 8.0f);
    Frames(600);
    ExpectNear(transform->m_Position, Math::Point3D(8, controller->m_MinZoom, -6));
}

TEST_F(CameraControllerTest, ATargetInAnotherSpaceDoesNotPullTheCamera)
{
    GameObject* camera = MakeCamera(*m_Space, Math::Point3D(0, 30, 0));
    Engine::Space hud(Engine::HUD);
    MakeTarget(hud, Math::Point3D(50, 0, 50));
    Frames(60);
    EXPECT_EQ(camera->GetComponent<Transform>()->m_Position, Math::Point3D(0, 30, 0));
}

TEST_F(CameraControllerTest, InactiveTargetsAndAnInactiveControllerLeaveTheCameraStill)
{
    GameObject* camera = MakeCamera(*m_Space, Math::Point3D(0, 30, 0));
    GameObject* target = MakeTarget(*m_Space, Math::Point3D(50, 0, 50));
    target->GetComponent<CameraFocus>()->m_Active = false;
    Frames(30);
    EXPECT_EQ(camera->GetComponent<Transform>()->m_Position, Math::Point3D(0, 30, 0));
    target->GetComponent<CameraFocus>()->m_Active = true;
    camera->GetComponent<CameraController>()->m_Active = false;
    Frames(30);
    EXPECT_EQ(camera->GetComponent<Transform>()->m_Position, Math::Point3D(0, 30, 0));
}

TEST_F(CameraControllerTest, ADestroyedTargetIsNoLongerFollowed)
{
    GameObject* camera = MakeCamera(*m_Space, Math::Point3D(0, 30, 0));
    GameObject* target = MakeTarget(*m_Space, Math::Point3D(50, 0, 50));
    target->Destroy();
    m_Space->GarbageCollectObjects();
    Frames(30);
    EXPECT_EQ(camera->GetComponent<Transform>()->m_Position, Math::Point3D(0, 30, 0));
}

TEST_F(CameraControllerTest, AControllerWithoutACameraIsReportedAndDoesNothing)
{
    GameObject* object = nullptr;
    {
        ReportCapture capture;
        object = m_Space->CreateObject(MakeArchetype("NoCamera", {"Transform", "CameraController"}));
        const std::string text = capture.Text();
        EXPECT_NE(text.find("Camera controller must be attached to an object with a camera!"), std::string::npos)
            << text;
        EXPECT_NE(text.find("CameraController::Initialize"), std::string::npos) << text;
        EXPECT_NE(text.find("Components/Camera/CameraController/CameraController"), std::string::npos) << text;
    }
    MakeTarget(*m_Space, Math::Point3D(50, 0, 50));
    object->GetComponent<Transform>()->m_Position = Math::Point3D(1, 2, 3);
    Frames(30);
    EXPECT_EQ(object->GetComponent<Transform>()->m_Position, Math::Point3D(1, 2, 3));
    object->GetComponent<CameraController>()->CameraShake(1.0f, 1.0f);
    object->GetComponent<CameraController>()->Update(kFrame);
    EXPECT_EQ(object->GetComponent<Transform>()->m_Offset, Math::Vector3D());
}

TEST_F(CameraControllerTest, AShakeMovesOnlyTheViewAndReturnsToRest)
{
    GameObject* camera = MakeCamera(*m_Space, Math::Point3D(0, 30, 0));
    auto* controller = camera->GetComponent<CameraController>();
    Transform* transform = camera->GetComponent<Transform>();
    transform->m_Offset = Math::Vector3D(0, 0, 2);
    controller->CameraShake(1.5f, 0.5f);
    EXPECT_TRUE(controller->IsShaking());
    bool moved = false;
    for (int i = 0; i < 29; ++i)
    {
        Frames(1);
        moved = moved || !(transform->m_Offset == Math::Vector3D(0, 0, 2));
        EXPECT_EQ(transform->m_Position, Math::Point3D(0, 30, 0));
    }
    EXPECT_TRUE(moved);
    Frames(2);
    EXPECT_FALSE(controller->IsShaking());
    EXPECT_NEAR(transform->m_Offset.x, 0.0f, 1e-5f);
    EXPECT_NEAR(transform->m_Offset.y, 0.0f, 1e-5f);
    EXPECT_NEAR(transform->m_Offset.z, 2.0f, 1e-5f);
    EXPECT_EQ(transform->m_Position, Math::Point3D(0, 30, 0));
}

TEST_F(CameraControllerTest, ACinematicPanReachesItsPointThenTheTargetsAreFollowedAgain)
{
    GameObject* camera = MakeCamera(*m_Space, Math::Point3D(0, 20, 0));
    auto* controller = camera->GetComponent<CameraController>();
    Transform* transform = camera->GetComponent<Transform>();
    MakeTarget(*m_Space, Math::Point3D(0, 0, 0));
    Frames(1);
    controller->CinematicPan(Math::Point3D(40, 0, 0), 1.0f);
    EXPECT_TRUE(controller->IsPanning());
    Frames(30);
    EXPECT_NEAR(transform->m_Position.x, 20.0f, 1.0f);
    // A frame more than the second, as sixty sixtieths add up to a hair under one in floats.
    Frames(31);
    EXPECT_FALSE(controller->IsPanning());
    ExpectNear(transform->m_Position, Math::Point3D(40, 20, 0));
    Frames(600);
    ExpectNear(transform->m_Position, Math::Point3D(0, 20, 0));
}

TEST_F(CameraControllerTest, ResetConstraintsPutsTheLimitsBackToTheirDefaults)
{
    CameraController controller;
    controller.m_Max_X = 1.0f;
    controller.m_Min_X = -1.0f;
    controller.m_Max_Y = 2.0f;
    controller.m_Min_Y = -2.0f;
    controller.m_Max_Z = 3.0f;
    controller.m_Min_Z = -3.0f;
    controller.ResetConstraints();
    EXPECT_FLOAT_EQ(controller.m_Max_X, 1000.0f);
    EXPECT_FLOAT_EQ(controller.m_Min_X, -1000.0f);
    EXPECT_FLOAT_EQ(controller.m_Max_Y, 1000.0f);
    EXPECT_FLOAT_EQ(controller.m_Min_Y, -1000.0f);
    EXPECT_FLOAT_EQ(controller.m_Max_Z, 1000.0f);
    EXPECT_FLOAT_EQ(controller.m_Min_Z, -1000.0f);
}

TEST_F(CameraControllerTest, BadScriptValuesAreIgnoredWithAWarning)
{
    CameraController controller;
    ReportCapture capture;
    controller.CameraShake(std::nanf(""), 1.0f);
    controller.CinematicPan(Math::Point3D(INFINITY, 0, 0), 1.0f);
    EXPECT_FALSE(controller.IsShaking());
    EXPECT_FALSE(controller.IsPanning());
    EXPECT_TRUE(capture.Holds("CameraShake needs a finite magnitude and duration"));
}

TEST(CameraControllerRegistrationTest, TheControllerIsRegisteredWithItsSettingsAndMethods)
{
    const Meta::Data* type = Meta::FindData("CameraController");
    ASSERT_NE(type, nullptr);
    for (const char* member : {"Active", "MinZoom", "InnerPad", "PanSpeed", "DeadZone", "TrackingModifier",
                               "AreaModifier", "Max_X", "Min_X", "Max_Y", "Min_Y", "Max_Z", "Min_Z"})
        EXPECT_NE(type->FindMember(member), nullptr) << member;
    for (const char* method : {"ResetConstraints", "CameraShake", "CinematicPan"})
        EXPECT_NE(type->FindMethod(method), nullptr) << method;
}

TEST(CameraControllerRegistrationTest, TheControllerLoadsFromArchetypeText)
{
    GameObject object;
    Util::Serializer reader;
    reader.OpenText("Transform\n{\n}\nCamera\n{\n  ViewVector { 0 -2 -1 }\n}\n"
                    "CameraController\n{\n  MinZoom 35\n  Max_X 60\n  Min_Z -12.5\n  Active false\n}\n",
                    "Test.txt");
    {
        ReportCapture capture;
        Engine::ArchetypeManager::AddComponentsFromStream(&object, reader);
        EXPECT_EQ(capture.Text(), "");
    }
    ASSERT_NE(object.GetComponent<Camera>(), nullptr);
    EXPECT_EQ(object.GetComponent<Camera>()->ViewVector, Math::Vector3D(0, -2, -1));
    auto* controller = object.GetComponent<CameraController>();
    ASSERT_NE(controller, nullptr);
    EXPECT_FLOAT_EQ(controller->m_MinZoom, 35.0f);
    EXPECT_FLOAT_EQ(controller->m_Max_X, 60.0f);
    EXPECT_FLOAT_EQ(controller->m_Min_Z, -12.5f);
    EXPECT_FALSE(controller->m_Active);
    EXPECT_FLOAT_EQ(controller->m_Min_X, -1000.0f);
}

using CameraControllerScriptTest = LuaTestState;

TEST_F(CameraControllerScriptTest, ScriptsReadAndWriteTheSettingsAndCallTheMethods)
{
    CameraController controller;
    SetGlobal("controller", &controller);
    EXPECT_DOUBLE_EQ(Number("controller.MinZoom"), 20.0);
    EXPECT_EQ(Run("controller.Max_X = 50; controller.DeadZone = 2"), "");
    EXPECT_FLOAT_EQ(controller.m_Max_X, 50.0f);
    EXPECT_FLOAT_EQ(controller.m_DeadZone, 2.0f);
    EXPECT_EQ(Run("controller:ResetConstraints()"), "");
    EXPECT_FLOAT_EQ(controller.m_Max_X, 1000.0f);
    EXPECT_EQ(Run("controller:CameraShake(0.5, 1)"), "");
    EXPECT_TRUE(controller.IsShaking());
    EXPECT_EQ(Run("controller:CinematicPan(Point3D(1, 2, 3), 2)"), "");
    EXPECT_TRUE(controller.IsPanning());
    lua_settop(L, 0);
}
