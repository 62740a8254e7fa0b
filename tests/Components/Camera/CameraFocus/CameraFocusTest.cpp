#include "Components/Camera/CameraFocus/CameraFocus.h"

#include "Components/Camera/CameraFocus/FocusList.h"
#include "Components/Transform/Transform.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "support/ReportCapture.h"
#include "utilities/Meta/Data.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{
bool Listed(const Engine::Space* space, const CameraFocus* focus)
{
    const std::vector<CameraFocus*>& list = CameraFocusList::Of(space);
    return std::find(list.begin(), list.end(), focus) != list.end();
}
}

TEST(CameraFocusTest, AFocusJoinsItsSpacesListAndLeavesWhenDestroyed)
{
    Engine::Space level(Engine::Level);
    Engine::Space hud(Engine::HUD);
    GameObject* object = level.CreateObject(MakeArchetype("Focus", {"Transform", "CameraFocus"}));
    auto* focus = object->GetComponent<CameraFocus>();
    ASSERT_NE(focus, nullptr);
    EXPECT_EQ(focus->m_Transform, object->GetComponent<Transform>());
    EXPECT_TRUE(Listed(&level, focus));
    EXPECT_FALSE(Listed(&hud, focus));
    object->Destroy();
    level.GarbageCollectObjects();
    EXPECT_TRUE(CameraFocusList::Of(&level).empty());
}

TEST(CameraFocusTest, AFocusWithoutATransformIsReportedAndNotListed)
{
    Engine::Space level(Engine::Level);
    ReportCapture capture;
    GameObject* object = level.CreateObject(MakeArchetype("FocusWithoutTransform", {"CameraFocus"}));
    const std::string text = capture.Text();
    EXPECT_NE(text.find("Camera focus targets must have a transform!"), std::string::npos) << text;
    EXPECT_NE(text.find("CameraFocus::Initialize"), std::string::npos) << text;
    EXPECT_NE(text.find("Components/Camera/CameraFocus/CameraFocus"), std::string::npos) << text;
    auto* focus = object->GetComponent<CameraFocus>();
    ASSERT_NE(focus, nullptr);
    EXPECT_FALSE(focus->IsFollowed());
    EXPECT_FALSE(Listed(&level, focus));
}

TEST(CameraFocusTest, TheFocusPointIsThePositionPlusTheOffset)
{
    Engine::Space level(Engine::Level);
    GameObject* object = level.CreateObject(MakeArchetype("Focus", {"Transform", "CameraFocus"}));
    object->GetComponent<Transform>()->m_Position = Math::Point3D(1, 2, 3);
    object->GetComponent<Transform>()->m_Offset = Math::Vector3D(0, 1, 0);
    EXPECT_EQ(object->GetComponent<CameraFocus>()->GetFocusPoint(), Math::Point3D(1, 3, 3));
}

TEST(CameraFocusTest, TheFocusIsRegisteredWithItsProperties)
{
    const Meta::Data* type = Meta::FindData("CameraFocus");
    ASSERT_NE(type, nullptr);
    EXPECT_NE(type->FindMember("Active"), nullptr);
    EXPECT_NE(type->FindMember("BoundingSphere"), nullptr);
    EXPECT_NE(type->FindMember("ViewDistance"), nullptr);
}
