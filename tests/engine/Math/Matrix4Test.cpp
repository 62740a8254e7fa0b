// The row-major 4x4 matrix: products apply the left matrix first to row
// vectors, the inverse undoes a matrix, and the std140 layout stores columns.

#include "engine/Math/Matrix4.h"

#include <gtest/gtest.h>

namespace
{
const Math::Matrix4 kSample(2, 0, 0, 0, 0, 3, 0, 0, 1, 0, 4, 0, 5, 6, 7, 1);
}

TEST(Matrix4Test, TranslationMovesARowVectorByTheLastRow)
{
    const float point[4] = {1, 2, 3, 1};
    float moved[4];
    Math::Matrix4::Translation(10, 20, 30).TransformRow(point, moved);
    EXPECT_FLOAT_EQ(moved[0], 11);
    EXPECT_FLOAT_EQ(moved[1], 22);
    EXPECT_FLOAT_EQ(moved[2], 33);
    EXPECT_FLOAT_EQ(moved[3], 1);
}

TEST(Matrix4Test, ProductAppliesTheLeftMatrixFirst)
{
    const Math::Matrix4 scale(2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1);
    const float point[4] = {1, 1, 1, 1};
    float out[4];
    (Math::Matrix4::Translation(1, 0, 0) * scale).TransformRow(point, out);
    EXPECT_FLOAT_EQ(out[0], 4); // (1 + 1) * 2
}

TEST(Matrix4Test, InverseTimesMatrixIsIdentity)
{
    EXPECT_TRUE((kSample * kSample.Inverse()).NearlyEquals(Math::Matrix4()));
    EXPECT_TRUE((kSample.Inverse() * kSample).NearlyEquals(Math::Matrix4()));
}

TEST(Matrix4Test, SingularMatrixInvertsToIdentity)
{
    const Math::Matrix4 zero(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    EXPECT_TRUE(zero.Inverse().NearlyEquals(Math::Matrix4()));
}

TEST(Matrix4Test, Std140LayoutStoresColumnAfterColumn)
{
    float out[16];
    kSample.Std140Layout(out);
    for (int c = 0; c < 4; ++c)
        for (int r = 0; r < 4; ++r)
            EXPECT_FLOAT_EQ(out[c * 4 + r], kSample.m[r][c]);
    // The translation (last row) becomes the last column's first three floats.
    EXPECT_FLOAT_EQ(out[3], 5);
    EXPECT_FLOAT_EQ(out[12], 0);
}

TEST(Matrix4Test, TransposedSwapsRowsAndColumns)
{
    EXPECT_FLOAT_EQ(kSample.Transposed().m[0][3], 5);
    EXPECT_TRUE(kSample.Transposed().Transposed().NearlyEquals(kSample));
}
