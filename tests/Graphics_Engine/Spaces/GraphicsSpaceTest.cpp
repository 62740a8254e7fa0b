#include "Graphics_Engine/Spaces/GraphicsSpace.h"

#include "Components/Camera/Camera/Camera.h"
#include "Components/Light/Light.h"
#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/RenderLists.h"
#include "Graphics_Engine/Spaces/GraphicsUpdateEvent.h"
#include "Graphics_Engine/VariableTable.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "support/ReportCapture.h"
#include "support/TestGraphicsComponent.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstring>

using namespace Graphics;

namespace
{
// The engine's perspective for an 800 by 600 window: 45 degrees, depth 0 to 1, near 0.1, far 1000.
Math::Matrix4 Perspective()
{
    const float cot = 1.0f / std::tan(45.0f * 3.14159265f / 360.0f);
    Math::Matrix4 p(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    p.m[0][0] = cot / (800.0f / 600.0f);
    p.m[1][1] = cot;
    p.m[2][2] = 1000.0f / (0.1f - 1000.0f);
    p.m[2][3] = -1.0f;
    p.m[3][2] = 0.1f * 1000.0f / (0.1f - 1000.0f);
    return p;
}

class GraphicsSpaceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QuadTree& tree = *m_Graphics.GetQuadTree();
        tree.m_Origin = Math::Point3D(-50.0f, 0.0f, -50.0f);
        tree.m_CellSize = Math::Vector3D(10.0f, 40.0f, 10.0f);
        tree.m_CellsAcross = 10;
        tree.m_CellsDown = 10;
        tree.Build();
        m_Graphics.m_Screen.Projection = Perspective();
    }

    // A component with its own Transform at `position`, held under `id`.
    TestGraphicsComponent& Add(GameObjectId id, const Math::Point3D& position)
    {
        m_Transforms.push_back(std::make_unique<Transform>());
        m_Transforms.back()->m_Position = position;
        m_Components.push_back(std::make_unique<TestGraphicsComponent>());
        m_Components.back()->m_Transform = m_Transforms.back().get();
        m_Graphics.AddGraphicsComponent(id, m_Components.back().get(), m_Transforms.back().get());
        return *m_Components.back();
    }

    const QuadTreeObject& TreeObject(GameObjectId id)
    {
        return m_Graphics.GetQuadTree()->GetObject(m_Graphics.m_Records.at(id).TreeIndex);
    }

    std::vector<std::unique_ptr<Transform>> m_Transforms;
    std::vector<std::unique_ptr<TestGraphicsComponent>> m_Components;
    GraphicsSpace m_Graphics;
};
}

TEST_F(GraphicsSpaceTest, UpdateCopiesPlacementAndRenderFlagIntoTheTree)
{
    TestGraphicsComponent& component = Add(7, Math::Point3D(1, 0, 1));
    Transform& transform = *m_Transforms.back();
    transform.m_Position = Math::Point3D(12, 0, -3);
    transform.m_Offset = Math::Vector3D(0, 1, 0);
    transform.m_Scale = Math::Vector3D(2, 3, 4);
    transform.m_Rotation = Math::Quaternion(0, 1, 0, 0);
    component.m_Render = false;
    m_Graphics.Update(0.016f);
    const QuadTreeObject& object = TreeObject(7);
    EXPECT_EQ(object.Position, Math::Point3D(12, 1, -3));
    EXPECT_EQ(object.Scale, Math::Vector3D(2, 3, 4));
    EXPECT_EQ(object.Rotation, Math::Quaternion(0, 1, 0, 0));
    EXPECT_FALSE(object.Visible);
    EXPECT_NE(object.Node, -1);
}

TEST_F(GraphicsSpaceTest, SecondGraphicsComponentOnAnObjectIsReportedAndReplacesTheFirst)
{
    TestGraphicsComponent& first = Add(3, Math::Point3D(1, 0, 1));
    const int firstIndex = m_Graphics.m_Records.at(3).TreeIndex;
    ReportCapture capture;
    TestGraphicsComponent& second = Add(3, Math::Point3D(2, 0, 2));
    const std::string text = capture.Text();
    EXPECT_NE(text.find("There is a object with two meshes. Something is very wrong."), std::string::npos) << text;
    EXPECT_NE(text.find("Graphics::GraphicsSpace::AddGraphicsComponent"), std::string::npos) << text;
    EXPECT_NE(text.find("Graphics_Engine/Spaces/GraphicsSpace"), std::string::npos) << text;
    ASSERT_EQ(m_Graphics.m_Records.size(), 1u);
    EXPECT_EQ(m_Graphics.m_Records.at(3).Component, &second);
    EXPECT_EQ(TreeObject(3).Component, &second);
    // The first one's tree record was freed (and reused by the second).
    EXPECT_EQ(m_Graphics.m_Records.at(3).TreeIndex, firstIndex);
    // The first one leaving later does not take the second with it.
    m_Graphics.RemoveGraphicsComponent(3, &first);
    EXPECT_EQ(m_Graphics.m_Records.size(), 1u);
}

TEST_F(GraphicsSpaceTest, RemovedComponentLeavesTheTree)
{
    Add(4, Math::Point3D(1, 0, 1));
    m_Graphics.Update(0.016f);
    const int index = m_Graphics.m_Records.at(4).TreeIndex;
    m_Graphics.RemoveGraphicsComponent(4);
    EXPECT_TRUE(m_Graphics.m_Records.empty());
    EXPECT_TRUE(m_Graphics.GetQuadTree()->GetObject(index).Removed);
    m_Graphics.RemoveGraphicsComponent(4);
}

TEST_F(GraphicsSpaceTest, RemovingALightNotHeldReportsDoubleDeleting)
{
    ReportCapture capture;
    m_Graphics.RemoveLight(nullptr);
    const std::string text = capture.Text();
    EXPECT_NE(text.find("Double deleting light"), std::string::npos) << text;
    EXPECT_NE(text.find("Graphics::GraphicsSpace::RemoveLight"), std::string::npos) << text;
}

TEST_F(GraphicsSpaceTest, UpdateSendsGraphicsUpdateWithTheFrameTime)
{
    Engine::Space space(Engine::Level);
    m_Graphics.m_Space = &space;
    GameObject* object = space.CreateObject(MakeArchetype("GraphicsListener", {"Probe"}));
    auto* probe = object->GetComponent<Probe>();
    float seen = -1.0f;
    probe->m_OnEvent = [&seen](Probe&, Event* event) { seen = static_cast<GraphicsUpdateEvent*>(event)->m_Dt; };
    space.m_Events.RegisterEvent(probe, "GraphicsUpdate", &Probe::OnEvent);
    m_Graphics.Update(0.025f);
    EXPECT_FLOAT_EQ(seen, 0.025f);
    m_Graphics.m_Space = nullptr;
}

TEST_F(GraphicsSpaceTest, WithoutAShaderManagerDirtyShadersStayDirty)
{
    TestGraphicsComponent& component = Add(5, Math::Point3D(1, 0, 1));
    m_Graphics.Update(0.016f);
    EXPECT_TRUE(component.m_ShaderComponent.m_Dirty);
    EXPECT_EQ(component.m_ShaderComponent.m_ChangeCount, 0u);
}

TEST_F(GraphicsSpaceTest, CurrentCameraIsUpdatedIntoTheVariableTable)
{
    VariableTable table;
    m_Graphics.m_VariableTable = &table;
    Transform transform;
    transform.m_Position = Math::Point3D(0, 5, 10);
    Camera camera;
    camera.m_Transform = &transform;
    camera.ViewVector = Math::Vector3D(0, 0, -1);
    m_Graphics.SetCamera(&camera);
    m_Graphics.Update(0.016f);
    EXPECT_TRUE(table.m_View.NearlyEquals(Math::Matrix4::Translation(0, -5, -10)));
    camera.m_Transform = nullptr;
}

TEST_F(GraphicsSpaceTest, GlobalAmbientIsWrittenToTheVariableTable)
{
    VariableTable table;
    m_Graphics.m_VariableTable = &table;
    m_Graphics.SetGlobalAmbient(Math::Color(0.25f, 0.5f, 0.75f, 1.0f));
    const ConstantVariable* ambient = table.FindConstant("f4_GlobaAmbient");
    ASSERT_NE(ambient, nullptr);
    ASSERT_EQ(ambient->Data.size(), 16u);
    float values[4];
    std::memcpy(values, ambient->Data.data(), sizeof(values));
    EXPECT_FLOAT_EQ(values[1], 0.5f);
    EXPECT_FLOAT_EQ(values[2], 0.75f);
    EXPECT_FLOAT_EQ(m_Graphics.GetGlobalAmbient().r, 0.25f);
}

TEST_F(GraphicsSpaceTest, RenderDataIsListedWithTheEngineAndUnlistedWhenTheSpaceEnds)
{
    RenderLists lists;
    {
        GraphicsSpace graphics;
        graphics.SetRenderLists(&lists);
        ASSERT_EQ(lists.m_Spaces.size(), 1u);
        EXPECT_EQ(lists.m_Spaces[0]->Owner, &graphics);
    }
    EXPECT_TRUE(lists.m_Spaces.empty());
}

TEST_F(GraphicsSpaceTest, PickReturnsTheNearestObjectUnderThePoint)
{
    TestGraphicsComponent& farther = Add(10, Math::Point3D(0, 0, -20));
    TestGraphicsComponent& nearer = Add(11, Math::Point3D(0, 0, -10));
    Add(12, Math::Point3D(5, 0, -10));
    EXPECT_EQ(m_Graphics.Pick(400, 300), 11u);
    EXPECT_GT(nearer.m_PickCalls, 0);
    (void)farther;
}

TEST_F(GraphicsSpaceTest, PickSkipsObjectsBehindOrBesideTheRayAndGivesZero)
{
    TestGraphicsComponent& behind = Add(20, Math::Point3D(0, 0, 10));
    TestGraphicsComponent& beside = Add(21, Math::Point3D(3, 0, -10));
    EXPECT_EQ(m_Graphics.Pick(400, 300), 0u);
    EXPECT_EQ(behind.m_PickCalls, 0);
    EXPECT_EQ(beside.m_PickCalls, 0);
}

TEST_F(GraphicsSpaceTest, PickUsesTheScreenPointAndTheCamera)
{
    // The upper-left quarter of the view, seen from a camera at x = 100.
    Transform eye;
    eye.m_Position = Math::Point3D(100, 0, 0);
    Camera camera;
    camera.m_Transform = &eye;
    camera.Update();
    m_Graphics.SetCamera(&camera);
    const float depth = 10.0f;
    const float p00 = Perspective().m[0][0];
    const float p11 = Perspective().m[1][1];
    // Screen (200, 150): view direction (-0.5 / p00, 0.5 / p11, -1).
    Add(30, Math::Point3D(100 - 0.5f / p00 * depth, 0.5f / p11 * depth, -depth));
    EXPECT_EQ(m_Graphics.Pick(200, 150), 30u);
    EXPECT_EQ(m_Graphics.Pick(400, 300), 0u);
    camera.m_Transform = nullptr;
}

TEST_F(GraphicsSpaceTest, ComponentPickDistanceDecidesBetweenCandidates)
{
    TestGraphicsComponent& first = Add(40, Math::Point3D(0, 0, -10.5f));
    TestGraphicsComponent& second = Add(41, Math::Point3D(0, 0, -10));
    first.m_PickDistance = 12.0f;
    second.m_PickDistance = 11.0f;
    EXPECT_EQ(m_Graphics.Pick(400, 300), 41u);
}

TEST_F(GraphicsSpaceTest, PickDoesNotAskObjectsFartherThanTheBestHit)
{
    TestGraphicsComponent& hit = Add(60, Math::Point3D(0, 0, -10));
    TestGraphicsComponent& farther = Add(61, Math::Point3D(0, 0, -30));
    hit.m_PickDistance = 9.5f;
    EXPECT_EQ(m_Graphics.Pick(400, 300), 60u);
    EXPECT_EQ(farther.m_PickCalls, 0);
}

TEST_F(GraphicsSpaceTest, GroundPointUnderTheScreenPoint)
{
    // Looking straight down from 10 units up.
    Transform eye;
    eye.m_Position = Math::Point3D(3, 10, 4);
    Camera camera;
    camera.m_Transform = &eye;
    camera.ViewVector = Math::Vector3D(0, -1, 0);
    camera.Update();
    m_Graphics.SetCamera(&camera);
    const Math::Point3D ground = m_Graphics.GetXZPlaneIntersection(400, 300, 2.0f);
    EXPECT_NEAR(ground.x, 3.0f, 1e-4f);
    EXPECT_NEAR(ground.y, 2.0f, 1e-4f);
    EXPECT_NEAR(ground.z, 4.0f, 1e-4f);
    camera.m_Transform = nullptr;
}

TEST_F(GraphicsSpaceTest, GroundPointParallelOrBehindIsTheLargestFloat)
{
    // No camera: the view from the origin along -z, so the centre ray is parallel to the plane.
    const Math::Point3D parallel = m_Graphics.GetXZPlaneIntersection(400, 300, -1.0f);
    EXPECT_EQ(parallel.x, FLT_MAX);
    EXPECT_EQ(parallel.y, FLT_MAX);
    EXPECT_EQ(parallel.z, FLT_MAX);
    // A ray going down never meets a plane above the camera.
    const Math::Point3D behind = m_Graphics.GetXZPlaneIntersection(400, 600, 1.0f);
    EXPECT_EQ(behind.x, FLT_MAX);
    EXPECT_EQ(behind.z, FLT_MAX);
    // The same ray meets a plane below it, in front.
    const Math::Point3D below = m_Graphics.GetXZPlaneIntersection(400, 600, -1.0f);
    EXPECT_LT(below.z, 0.0f);
    EXPECT_NEAR(below.y, -1.0f, 1e-4f);
}

TEST_F(GraphicsSpaceTest, ZeroClientSizePicksNothingAndFindsNoGround)
{
    Add(50, Math::Point3D(0, 0, -10));
    m_Graphics.m_Screen.ClientWidth = 0.0f;
    EXPECT_EQ(m_Graphics.Pick(400, 300), 0u);
    EXPECT_EQ(m_Graphics.GetXZPlaneIntersection(400, 600, -1.0f).x, FLT_MAX);
}

TEST_F(GraphicsSpaceTest, ComponentsAddThemselvesWhenStartedAndLeaveWhenDestroyed)
{
    Engine::Space space(Engine::Level);
    auto* graphics = new GraphicsSpace();
    space.AddSystem(graphics, Meta::Get<GraphicsSpace>());
    GameObject* object = space.CreateObject(MakeArchetype("Drawn", {"Transform"}));
    auto* component = new TestGraphicsComponent();
    object->AppendComponent(component);
    ASSERT_EQ(graphics->m_Records.size(), 1u);
    EXPECT_EQ(graphics->m_Records.at(object->GetId()).Component, component);
    EXPECT_EQ(graphics->m_Records.at(object->GetId()).TransformComponent, object->GetComponent<Transform>());
    object->Destroy();
    space.GarbageCollectObjects();
    EXPECT_TRUE(graphics->m_Records.empty());
}

TEST_F(GraphicsSpaceTest, EachFrameALightsRecordIsWrittenFromItsComponent)
{
    LightManager manager;
    m_Graphics.SetLightManager(&manager);
    Transform transform;
    transform.m_Position = Math::Point3D(1, 2, 3);
    transform.m_Offset = Math::Vector3D(0.5f, 0, 0);
    Light light;
    light.Offset = Math::Vector3D(0, 1, 0);
    light.Ambient = Math::Color(0.1f, 0.2f, 0.3f, 0.4f);
    light.Diffuse = Math::Color(0.5f, 0.6f, 0.7f, 0.8f);
    light.Specular = Math::Color(0.9f, 1.0f, 0.25f, 0.5f);
    light.Range = 7.0f;
    light.Direction = Math::Vector3D(0, 0, -1);
    light.SpotPrams = Math::Vector3D(0.1f, 0.2f, 3.0f);
    light.Attenuation = Math::Vector3D(1, 0.5f, 0.25f);
    light.LightType = LightType::Spot;
    m_Graphics.AddLight(&light, &transform);
    ASSERT_EQ(m_Graphics.m_Lights.count(&light), 1u);
    const unsigned index = m_Graphics.m_Lights[&light].Index;
    m_Graphics.Update(0.016f);
    const s_Light& record = manager.m_Records.at(index);
    EXPECT_FLOAT_EQ(record.Ambient[2], 0.3f);
    EXPECT_FLOAT_EQ(record.Diffuse[3], 0.8f);
    EXPECT_FLOAT_EQ(record.Specular[1], 1.0f);
    EXPECT_FLOAT_EQ(record.Position[0], 1.5f);
    EXPECT_FLOAT_EQ(record.Position[1], 3.0f);
    EXPECT_FLOAT_EQ(record.Position[2], 3.0f);
    EXPECT_FLOAT_EQ(record.Range, 7.0f);
    EXPECT_FLOAT_EQ(record.Direction[2], -1.0f);
    EXPECT_FLOAT_EQ(record.SpotPrams[2], 3.0f);
    EXPECT_FLOAT_EQ(record.Attenuation[1], 0.5f);
    EXPECT_EQ(record.LightType, 3u);
    // The type is copied too, so a script switches the light off.
    light.LightType = LightType::None;
    transform.m_Position = Math::Point3D(0, 0, 0);
    m_Graphics.Update(0.016f);
    EXPECT_EQ(manager.m_Records.at(index).LightType, 0u);
    EXPECT_FLOAT_EQ(manager.m_Records.at(index).Position[0], 0.5f);
    m_Graphics.RemoveLight(&light);
    m_Graphics.SetLightManager(nullptr);
}

TEST_F(GraphicsSpaceTest, RemovingALightFreesItsRecordForTheNextLight)
{
    LightManager manager;
    m_Graphics.SetLightManager(&manager);
    Light first;
    Light second;
    Light third;
    first.LightType = second.LightType = LightType::Point;
    m_Graphics.AddLight(&first, nullptr);
    m_Graphics.AddLight(&second, nullptr);
    const unsigned freed = m_Graphics.m_Lights[&first].Index;
    m_Graphics.Update(0.016f);
    m_Graphics.RemoveLight(&first);
    EXPECT_EQ(m_Graphics.m_Lights.count(&first), 0u);
    EXPECT_EQ(manager.m_Records.at(freed).LightType, 0u);
    m_Graphics.AddLight(&third, nullptr);
    EXPECT_EQ(m_Graphics.m_Lights[&third].Index, freed);
    EXPECT_EQ(manager.m_Records.size(), 2u);
    // A light without a Transform stands at its Offset.
    second.Offset = Math::Vector3D(4, 5, 6);
    m_Graphics.Update(0.016f);
    EXPECT_FLOAT_EQ(manager.m_Records.at(m_Graphics.m_Lights[&second].Index).Position[1], 5.0f);
    m_Graphics.SetLightManager(nullptr);
    EXPECT_EQ(m_Graphics.m_Lights[&second].Index, GraphicsSpace::kNoSlot);
}

TEST_F(GraphicsSpaceTest, LightsAddedBeforeTheManagerTakeRecordsWhenItComes)
{
    Light light;
    m_Graphics.AddLight(&light, nullptr);
    EXPECT_EQ(m_Graphics.m_Lights[&light].Index, GraphicsSpace::kNoSlot);
    m_Graphics.Update(0.016f);
    LightManager manager;
    m_Graphics.SetLightManager(&manager);
    EXPECT_EQ(m_Graphics.m_Lights[&light].Index, 0u);
    m_Graphics.RemoveLight(&light);
    ASSERT_EQ(manager.m_FreeIndices.size(), 1u);
    m_Graphics.SetLightManager(nullptr);
}
