#include "Graphics_Engine/WorldMatrix.h"

#include <gtest/gtest.h>

using namespace Graphics;

TEST(WorldMatrixTest, RotationMatrixTurnsRowVectorsAsTheQuaternionDoes)
{
    const Math::Quaternion rotation = Math::Quaternion::CreateFromEuler(30.0f, 45.0f, 60.0f);
    const Math::Vector3D v(1.0f, 2.0f, 3.0f);
    const Math::Vector3D expected = rotation.RotateVector(v);
    const float in[4] = {v.x, v.y, v.z, 0.0f};
    float out[4];
    RotationMatrix(rotation).TransformRow(in, out);
    EXPECT_NEAR(out[0], expected.x, 1e-5f);
    EXPECT_NEAR(out[1], expected.y, 1e-5f);
    EXPECT_NEAR(out[2], expected.z, 1e-5f);
}

TEST(WorldMatrixTest, WorldMatrixScalesThenRotatesThenMoves)
{
    const Math::Quaternion rotation = Math::Quaternion::CreateFromEuler(0.0f, 90.0f, 0.0f);
    const Math::Matrix4 world = MakeWorldMatrix(Math::Point3D(10, 20, 30), Math::Vector3D(2, 3, 4), rotation);
    const Math::Vector3D turned = rotation.RotateVector(Math::Vector3D(2, 0, 0));
    const float in[4] = {1.0f, 0.0f, 0.0f, 1.0f};
    float out[4];
    world.TransformRow(in, out);
    EXPECT_NEAR(out[0], 10.0f + turned.x, 1e-5f);
    EXPECT_NEAR(out[1], 20.0f + turned.y, 1e-5f);
    EXPECT_NEAR(out[2], 30.0f + turned.z, 1e-5f);
    EXPECT_FLOAT_EQ(world.m[3][0], 10.0f);
    EXPECT_FLOAT_EQ(world.m[3][3], 1.0f);
}
