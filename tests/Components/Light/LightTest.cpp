#include "Components/Light/Light.h"

#include "Components/Transform/Transform.h"
#include "Graphics_Engine/Lights/LightManager.h"
#include "Graphics_Engine/Spaces/GraphicsSpace.h"
#include "engine/Space.h"
#include "engine/TestComponents.h"
#include "utilities/Meta/Data.h"
#include "utilities/Meta/EnumMeta.h"
#include "utilities/Meta/Member.h"
#include "utilities/lua/luabridge/LuaTestState.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

TEST(LightTest, PropertiesAreRegisteredInOrderWithTheirDefaults)
{
    const Meta::Data* type = Meta::FindData("Light");
    ASSERT_NE(type, nullptr);
    std::vector<std::string> names;
    for (const auto& [name, member] : type->m_Members.Items())
        names.push_back(name);
    const std::vector<std::string> expected = {"Ambient",   "Diffuse",     "Specular", "Range",    "Direction",
                                               "SpotPrams", "Attenuation", "Offset",   "LightType"};
    EXPECT_EQ(names, expected);

    const Light light;
    for (const Math::Color* colour : {&light.Ambient, &light.Diffuse, &light.Specular})
        EXPECT_EQ(*colour, Math::Color(0.0f, 0.0f, 0.0f, 1.0f));
    EXPECT_FLOAT_EQ(light.Range, 1.0f);
    for (const Math::Vector3D* vector : {&light.Direction, &light.SpotPrams, &light.Attenuation, &light.Offset})
    {
        EXPECT_FLOAT_EQ(vector->x, 0.0f);
        EXPECT_FLOAT_EQ(vector->y, 0.0f);
        EXPECT_FLOAT_EQ(vector->z, 0.0f);
    }
    EXPECT_EQ(light.LightType, LightType::None);
}

TEST(LightTest, LightTypeIsAnEnumerationOfFourKinds)
{
    const auto* values = Meta::EnumMeta::GetValues("LightType");
    ASSERT_NE(values, nullptr);
    const std::vector<Meta::EnumMeta::Entry> expected = {{"None", 0}, {"Point", 1}, {"Direction", 2}, {"Spot", 3}};
    EXPECT_EQ(*values, expected);
    EXPECT_EQ(static_cast<unsigned>(LightType::Spot), 3u);
}

TEST(LightTest, StartingLightTakesARecordInItsSpaceAndEndingLightFreesIt)
{
    Graphics::LightManager manager;
    Engine::Space space(Engine::Level);
    auto* graphics = new Graphics::GraphicsSpace();
    space.AddSystem(graphics, Meta::Get<Graphics::GraphicsSpace>());
    graphics->SetLightManager(&manager);
    GameObject* object = space.CreateObject(MakeArchetype("LightHolder", {"Transform", "Light"}));
    auto* light = object->GetComponent<Light>();
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->m_Transform, object->GetComponent<Transform>());
    ASSERT_EQ(graphics->m_Lights.count(light), 1u);
    EXPECT_EQ(graphics->m_Lights[light].TransformComponent, light->m_Transform);
    EXPECT_EQ(manager.m_Records.size(), 1u);
    object->Destroy();
    space.GarbageCollectObjects();
    EXPECT_TRUE(graphics->m_Lights.empty());
    ASSERT_EQ(manager.m_FreeIndices.size(), 1u);
    EXPECT_EQ(manager.m_Records[0].LightType, 0u);
    graphics->SetLightManager(nullptr);
}

TEST(LightTest, LightWithoutASpaceStartsAndEndsQuietly)
{
    Light light;
    light.Initialize();
    light.Uninitialize();
    EXPECT_EQ(light.m_Transform, nullptr);
}

using LightScriptTest = LuaTestState;

TEST_F(LightScriptTest, ScriptsSwitchALightByItsType)
{
    Light light;
    SetGlobal("light", &light);
    EXPECT_EQ(Run("light.LightType = LightType.Spot; light.Range = 7"), "");
    EXPECT_EQ(light.LightType, LightType::Spot);
    EXPECT_FLOAT_EQ(light.Range, 7.0f);
    EXPECT_DOUBLE_EQ(Number("light.LightType == LightType.Spot and 1 or 0"), 1.0);
    EXPECT_EQ(Run("light.LightType = LightType.None"), "");
    EXPECT_EQ(light.LightType, LightType::None);
    lua_settop(L, 0);
}
