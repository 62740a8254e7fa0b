// GraphicsMaterial: its defaults, its text form and what scripts see of it.
#include "Graphics_Engine/Components/GraphicsMaterial.h"

#include "utilities/Meta/Data.h"
#include "utilities/Serialization/Serializer.h"
#include "utilities/lua/luabridge/LuaTestState.h"

#include <gtest/gtest.h>

using namespace Graphics;

TEST(GraphicsMaterialTest, TheDefaultsAreTheEnginesMaterial)
{
    const GraphicsMaterial material;
    EXPECT_TRUE(material.DiffuseTexture.empty());
    EXPECT_FLOAT_EQ(material.Ambient, 0.2f);
    EXPECT_FLOAT_EQ(material.Emissive, 0.0f);
    EXPECT_FLOAT_EQ(material.SpecularPower, 10.0f);
    EXPECT_EQ(material.MaterialID, 0u);
    EXPECT_EQ(material.Diffuse, Math::Color(0.5f, 0.5f, 0.5f, 1.0f));
    EXPECT_EQ(material.Specular, Math::Color(1.0f, 1.0f, 1.0f, 0.0f));
    EXPECT_FALSE(material.Glow);
}

TEST(GraphicsMaterialTest, TheMembersAreRegisteredInOrderUnderTheirDataNames)
{
    const Meta::Data* type = Meta::FindData("GraphicsMaterial");
    ASSERT_NE(type, nullptr);
    std::vector<std::string> names;
    for (const auto& [name, member] : type->m_Members.Items())
        names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"DiffuseTexture", "Ambient", "Emissive", "SpecularPower", "MaterialID",
                                               "Diffuse", "Specular", "Glow"}));
}

TEST(GraphicsMaterialTest, TheTextFormReadsBackWhatWasWritten)
{
    GraphicsMaterial material;
    material.DiffuseTexture = "stone_floor.png";
    material.SpecularPower = 64.0f;
    material.MaterialID = 4;
    // Colours are written in 255ths: these read back exactly.
    material.Diffuse = Math::Color(1, 0, 1, 1);
    material.Specular = Math::Color(0, 1, 0, 1);
    material.Glow = true;
    Util::Serializer out;
    out.OpenText("");
    out.WriteObjectBlock(Meta::Get<GraphicsMaterial>(), &material);
    GraphicsMaterial read;
    Util::Serializer in;
    in.OpenText(out.GetText());
    ASSERT_TRUE(in.ReadObject(Meta::Get<GraphicsMaterial>(), &read));
    EXPECT_TRUE(read == material) << out.GetText();
}

using GraphicsMaterialScriptTest = LuaTestState;

TEST_F(GraphicsMaterialScriptTest, ScriptsMakeAndChangeAMaterial)
{
    EXPECT_EQ(Run("material = GraphicsMaterial()\nmaterial.Ambient = 0.75\nmaterial.Glow = true"), "");
    EXPECT_NEAR(Number("material.Ambient"), 0.75, 1e-6);
    EXPECT_NEAR(Number("material.SpecularPower"), 10.0, 1e-6);
    EXPECT_EQ(Text("tostring(material.Glow)"), "true");
    lua_settop(L, 0);
}
