#include "Graphics_Engine/Model/BuiltInModels.h"
#include "Graphics_Engine/Model/Model.h"

#include "utilities/lua/luabridge/LuaTestState.h"

using namespace Graphics;

using ModelScriptTest = LuaTestState;

TEST_F(ModelScriptTest, ScriptsGetTheVerticesAsATableOfReadableVertices)
{
    const ModelGeometry cube = MakeCube();
    Model model;
    model.SetGeometry(cube.vertices, cube.indices);
    model.Id = 7;
    SetGlobal("model", &model);
    EXPECT_EQ(Run("vertices = model:GetVertices()"), "");
    EXPECT_EQ(Text("type(vertices)"), "table");
    EXPECT_DOUBLE_EQ(Number("#vertices"), 24.0);
    const Vertex& second = cube.vertices[1];
    EXPECT_DOUBLE_EQ(Number("vertices[2].Position.x"), second.position[0]);
    EXPECT_DOUBLE_EQ(Number("vertices[2].Position.y"), second.position[1]);
    EXPECT_DOUBLE_EQ(Number("vertices[2].Normal.x"), second.normal[0]);
    EXPECT_DOUBLE_EQ(Number("vertices[2].Tangent.z"), second.tangent[2]);
    EXPECT_DOUBLE_EQ(Number("vertices[2].UV.x"), second.uv[0]);
    EXPECT_DOUBLE_EQ(Number("vertices[2].BoneWeights.w"), 1.0);
    EXPECT_DOUBLE_EQ(Number("model.Id"), 7.0);
    lua_settop(L, 0);
}

TEST_F(ModelScriptTest, ScriptsGetTheIndicesAsATableOfNumbers)
{
    const ModelGeometry cube = MakeCube();
    Model model;
    model.SetGeometry(cube.vertices, cube.indices);
    SetGlobal("model", &model);
    EXPECT_EQ(Run("indices = model:GetIndices()"), "");
    EXPECT_DOUBLE_EQ(Number("#indices"), 36.0);
    EXPECT_DOUBLE_EQ(Number("indices[1]"), cube.indices[0]);
    EXPECT_DOUBLE_EQ(Number("indices[36]"), cube.indices[35]);
    // The table is a copy: changing it leaves the model alone.
    EXPECT_EQ(Run("indices[1] = 99"), "");
    EXPECT_EQ(model.Indices[0], cube.indices[0]);
    lua_settop(L, 0);
}

TEST_F(ModelScriptTest, ScriptsCannotWriteAVertex)
{
    Model model;
    Vertex vertex;
    vertex.skin.boneIndices[2] = 5;
    vertex.skin.weights[0] = 0.25f;
    model.SetGeometry({vertex}, {});
    SetGlobal("model", &model);
    EXPECT_DOUBLE_EQ(Number("model:GetVertices()[1].BoneIndices.z"), 5.0);
    EXPECT_DOUBLE_EQ(Number("model:GetVertices()[1].BoneWeights.w"), 0.75);
    EXPECT_NE(Run("model:GetVertices()[1].Position = 3"), "");
    EXPECT_DOUBLE_EQ(Number("#model:GetIndices()"), 0.0);
    lua_settop(L, 0);
}
