// The graphics engine's projection, entry by entry.
#include "Graphics_Engine/Projection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace Graphics;

TEST(ProjectionTest, EntriesAreThoseOfARightHandedZeroToOneProjection)
{
    const Math::Matrix4 p = MakeProjection(45.0f, 1024, 576);
    const float cot = 1.0f / std::tan(45.0f * std::numbers::pi_v<float> / 180.0f * 0.5f);
    const float aspect = 1024.0f / 576.0f;
    EXPECT_FLOAT_EQ(p.m[0][0], cot / aspect);
    EXPECT_FLOAT_EQ(p.m[1][1], cot);
    EXPECT_FLOAT_EQ(p.m[2][2], 1000.0f / (0.1f - 1000.0f));
    EXPECT_FLOAT_EQ(p.m[2][3], -1.0f);
    EXPECT_FLOAT_EQ(p.m[3][2], 0.1f * 1000.0f / (0.1f - 1000.0f));
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
        {
            const bool set = (row == column && row < 3) || (row == 2 && column == 3) || (row == 3 && column == 2);
            if (!set)
            {
                EXPECT_EQ(p.m[row][column], 0.0f) << row << "," << column;
            }
        }
}

TEST(ProjectionTest, NearPlaneMapsToDepthZeroAndFarPlaneToOne)
{
    const Math::Matrix4 p = MakeProjection(60.0f, 800, 600);
    const float nearPoint[4] = {0.0f, 0.0f, -0.1f, 1.0f};
    const float farPoint[4] = {0.0f, 0.0f, -1000.0f, 1.0f};
    float out[4];
    p.TransformRow(nearPoint, out);
    EXPECT_NEAR(out[2] / out[3], 0.0f, 1e-5f);
    p.TransformRow(farPoint, out);
    EXPECT_NEAR(out[2] / out[3], 1.0f, 1e-5f);
}

TEST(ProjectionTest, ZeroHeightCountsAsSquare)
{
    const Math::Matrix4 p = MakeProjection(90.0f, 640, 0);
    EXPECT_FLOAT_EQ(p.m[0][0], p.m[1][1]);
}
