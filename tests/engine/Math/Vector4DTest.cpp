#include "engine/Math/Vector4D.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Math::Point4D;
using Math::Vector4D;

namespace
{
void ExpectComponents(const Vector4D& v, float x, float y, float z, float w, float tolerance = 1e-6f)
{
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
    EXPECT_NEAR(v.w, w, tolerance);
}
}

TEST(Vector4DTest, DefaultIsZero)
{
    ExpectComponents(Vector4D(), 0.0f, 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Vector4DTest, ConstructorTakesEveryComponent)
{
    ExpectComponents(Vector4D(1.0f, 2.0f, 3.0f, 4.0f), 1.0f, 2.0f, 3.0f, 4.0f, 0.0f);
}

TEST(Vector4DTest, AssignmentCopiesEveryComponent)
{
    Vector4D v;
    v = Vector4D(5.0f, 6.0f, 7.0f, 8.0f);
    ExpectComponents(v, 5.0f, 6.0f, 7.0f, 8.0f, 0.0f);
}

TEST(Vector4DTest, NormalizeOfZeroVectorLeavesItZero)
{
    Vector4D v;
    v.Normalize();
    ExpectComponents(v, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Vector4DTest, NormalizeUsesAllFourComponents)
{
    Vector4D v(1.0f, 1.0f, 1.0f, 1.0f);
    v.Normalize();
    ExpectComponents(v, 0.5f, 0.5f, 0.5f, 0.5f);
}

TEST(Vector4DTest, NormalizeOfInfiniteLengthGivesNaNInEveryComponent)
{
    Vector4D v(0.0f, 0.0f, 1e30f, 1e30f);
    v.Normalize();
    EXPECT_TRUE(std::isnan(v.x) && std::isnan(v.y) && std::isnan(v.z) && std::isnan(v.w));
}

TEST(Vector4DTest, CrossProductIsRightHandedOverXYZWithZeroW)
{
    ExpectComponents(Vector4D(1.0f, 0.0f, 0.0f, 5.0f).CrossProduct(Vector4D(0.0f, 1.0f, 0.0f, 7.0f)), 0.0f, 0.0f, 1.0f,
                     0.0f, 0.0f);
    ExpectComponents(Vector4D(0.0f, 1.0f, 0.0f, 0.0f).CrossProduct(Vector4D(1.0f, 0.0f, 0.0f, 0.0f)), 0.0f, 0.0f, -1.0f,
                     0.0f, 0.0f);
}

TEST(Vector4DTest, ReflectUsesTheNormalAsGiven)
{
    // (1, -1, 0, 3) - 2 (-2) (0, 2, 0, 0) = (1, 7, 0, 3).
    ExpectComponents(Vector4D(1.0f, -1.0f, 0.0f, 3.0f).Reflect(Vector4D(0.0f, 2.0f, 0.0f, 0.0f)), 1.0f, 7.0f, 0.0f, 3.0f,
                     0.0f);
}

TEST(Vector4DTest, DotProductAndLengthsUseAllFourComponents)
{
    EXPECT_FLOAT_EQ(Vector4D(1.0f, 2.0f, 3.0f, 4.0f).DotProduct(Vector4D(1.0f, 1.0f, 1.0f, -1.0f)), 2.0f);
    EXPECT_FLOAT_EQ(Vector4D(1.0f, 2.0f, 2.0f, 4.0f).LengthSquare(), 25.0f);
    EXPECT_FLOAT_EQ(Vector4D(1.0f, 2.0f, 2.0f, 4.0f).Length(), 5.0f);
}

TEST(Vector4DTest, AngleWithVectorIsInDegrees)
{
    EXPECT_NEAR(Vector4D(1.0f, 0.0f, 0.0f, 0.0f).AngleWithVector(Vector4D(0.0f, 0.0f, 0.0f, 2.0f)), 90.0f, 1e-4f);
    EXPECT_NEAR(Vector4D(1.0f, 0.0f, 0.0f, 0.0f).AngleWithVector(Vector4D(1.0f, 0.0f, 0.0f, 1.0f)), 45.0f, 1e-3f);
}

TEST(Vector4DTest, ZeroSetsEveryComponentInPlace)
{
    Vector4D v(1.0f, 2.0f, 3.0f, 4.0f);
    v.Zero();
    ExpectComponents(v, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Vector4DTest, ToPointKeepsTheComponents)
{
    const Point4D p = Vector4D(1.0f, 2.0f, 3.0f, 4.0f).ToPoint();
    EXPECT_TRUE(p == Point4D(1.0f, 2.0f, 3.0f, 4.0f));
}

TEST(Vector4DTest, EqualityAllowsASmallTolerance)
{
    EXPECT_TRUE(Vector4D(1.0f, 2.0f, 3.0f, 4.0f) == Vector4D(1.0f, 2.0f, 3.0f, 4.00005f));
    EXPECT_FALSE(Vector4D(1.0f, 2.0f, 3.0f, 4.0f) == Vector4D(1.0f, 2.0f, 3.0f, 4.001f));
}

TEST(Vector4DTest, OrderingHoldsOnlyWhenEveryComponentDoes)
{
    EXPECT_TRUE(Vector4D(1.0f, 5.0f, 0.0f, 0.0f) < Vector4D(2.0f, 6.0f, 1.0f, 1.0f));
    EXPECT_FALSE(Vector4D(1.0f, 5.0f, 0.0f, 2.0f) < Vector4D(2.0f, 6.0f, 1.0f, 1.0f));
    EXPECT_TRUE(Vector4D(1.0f, 5.0f, 0.0f, 1.0f) <= Vector4D(2.0f, 6.0f, 1.0f, 1.0f));
    EXPECT_FALSE(Vector4D(1.0f, 5.0f, 0.0f, 2.0f) <= Vector4D(2.0f, 6.0f, 1.0f, 1.0f));
}

TEST(Vector4DTest, ArithmeticIsComponentWise)
{
    const Vector4D a(1.0f, 2.0f, 3.0f, 4.0f);
    const Vector4D b(2.0f, 4.0f, 6.0f, 8.0f);
    ExpectComponents(a + b, 3.0f, 6.0f, 9.0f, 12.0f, 0.0f);
    ExpectComponents(b - a, 1.0f, 2.0f, 3.0f, 4.0f, 0.0f);
    ExpectComponents(a * 2.0f, 2.0f, 4.0f, 6.0f, 8.0f, 0.0f);
    ExpectComponents(b / 2.0f, 1.0f, 2.0f, 3.0f, 4.0f, 0.0f);
}

TEST(Vector4DTest, PrintListsTheComponentsSeparatedByCommaAndSpace)
{
    EXPECT_EQ(Vector4D(1.0f, 2.5f, -3.0f, 0.0f).Print(), "Vector4D(1, 2.5, -3, 0)");
}

TEST(Vector4DTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Vector4D(1.0f, 2.0f, 3.0f, 4.0f).IsNAN());
    EXPECT_TRUE(Vector4D(nan, 0.0f, 0.0f, 0.0f).IsNAN());
    EXPECT_TRUE(Vector4D(0.0f, 0.0f, 0.0f, nan).IsNAN());
}

TEST(Vector4DTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Vector4D(0.0f, 0.0f, std::numeric_limits<float>::quiet_NaN(), 0.0f).BreakOnNAN();
}
