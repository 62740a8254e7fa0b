#include "Graphics_Engine/Spaces/GraphicsSpace.h"

#include "Graphics_Engine/VariableTable.h"
#include "engine/Space.h"
#include "support/TestGraphicsComponent.h"
#include "utilities/lua/luabridge/LuaTestState.h"

#include <cstring>

using namespace Graphics;

using GraphicsSpaceScriptTest = LuaTestState;

TEST_F(GraphicsSpaceScriptTest, ScriptsReachTheQuadTreeThroughTheSpaceAndFindObjectsInARadius)
{
    Engine::Space space(Engine::Level);
    auto* graphics = new GraphicsSpace();
    space.AddSystem(graphics, Meta::Get<GraphicsSpace>());
    QuadTree& tree = *graphics->GetQuadTree();
    tree.m_CellSize = Math::Vector3D(10, 10, 10);
    tree.m_CellsAcross = 2;
    tree.m_CellsDown = 2;
    tree.Build();
    GameObject owner;
    owner.m_Name = "Found";
    TestGraphicsComponent component;
    component.m_Owner = &owner;
    tree.AddObject(&component, Math::Point3D(5, 0, 5), Math::Vector3D(1, 1, 1), Math::Quaternion());
    tree.Update();

    SetGlobal("space", &space);
    EXPECT_EQ(Run("found = space.Graphics:GetQuadTree():GetObjectsInRadius(Point3D(5, 0, 6), 2)"), "");
    EXPECT_DOUBLE_EQ(Number("#found"), 1.0);
    EXPECT_EQ(Text("found[1]:GetName()"), "Found");
    EXPECT_DOUBLE_EQ(Number("#space.Graphics:GetQuadTree():GetObjectsInRadius(Point3D(5, 0, 9), 2)"), 0.0);
    lua_settop(L, 0);
    component.m_Owner = nullptr;
}

TEST_F(GraphicsSpaceScriptTest, ScriptsSetTheGlobalAmbientAndPick)
{
    GraphicsSpace graphics;
    VariableTable table;
    graphics.m_VariableTable = &table;
    SetGlobal("graphics", &graphics);
    EXPECT_EQ(Run("graphics.GlobalAmbient = Color(0.1, 0.2, 0.3, 1)"), "");
    const ConstantVariable* ambient = table.FindConstant("f4_GlobaAmbient");
    ASSERT_NE(ambient, nullptr);
    float values[4];
    std::memcpy(values, ambient->Data.data(), sizeof(values));
    EXPECT_FLOAT_EQ(values[2], 0.3f);
    EXPECT_DOUBLE_EQ(Number("graphics:Pick(400, 300)"), 0.0);
    EXPECT_GT(Number("graphics:GetXZPlaneIntersection(400, 300, 0).x"), 1e30);
    lua_settop(L, 0);
}
