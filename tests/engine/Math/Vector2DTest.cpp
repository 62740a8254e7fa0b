#include "engine/Math/Vector2D.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Math::Vector2D;

namespace
{
void ExpectComponents(const Vector2D& v, float x, float y, float tolerance = 1e-6f)
{
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
}
}

TEST(Vector2DTest, DefaultIsZero)
{
    ExpectComponents(Vector2D(), 0.0f, 0.0f, 0.0f);
}

TEST(Vector2DTest, ConstructorTakesEveryComponent)
{
    ExpectComponents(Vector2D(1.5f, -2.0f), 1.5f, -2.0f, 0.0f);
}

TEST(Vector2DTest, AssignmentCopiesEveryComponent)
{
    Vector2D v;
    v = Vector2D(4.0f, 5.0f);
    ExpectComponents(v, 4.0f, 5.0f, 0.0f);
}

TEST(Vector2DTest, NormalizeOfZeroVectorLeavesItZero)
{
    Vector2D v;
    v.Normalize();
    ExpectComponents(v, 0.0f, 0.0f, 0.0f);
}

TEST(Vector2DTest, NormalizeDividesByTheLength)
{
    Vector2D v(-3.0f, 4.0f);
    v.Normalize();
    ExpectComponents(v, -0.6f, 0.8f);
}

TEST(Vector2DTest, NormalizeOfInfiniteLengthGivesNaNInEveryComponent)
{
    Vector2D v(1e30f, 1e30f);
    v.Normalize();
    EXPECT_TRUE(std::isnan(v.x));
    EXPECT_TRUE(std::isnan(v.y));
}

TEST(Vector2DTest, ReflectUsesTheNormalAsGiven)
{
    // (1, -1) - 2 ((1, -1) . (0, 2)) (0, 2) = (1, 7).
    ExpectComponents(Vector2D(1.0f, -1.0f).Reflect(Vector2D(0.0f, 2.0f)), 1.0f, 7.0f, 0.0f);
    ExpectComponents(Vector2D(1.0f, -1.0f).Reflect(Vector2D(0.0f, 1.0f)), 1.0f, 1.0f, 0.0f);
}

TEST(Vector2DTest, DotProductAndLengths)
{
    EXPECT_FLOAT_EQ(Vector2D(1.0f, 2.0f).DotProduct(Vector2D(3.0f, -4.0f)), -5.0f);
    EXPECT_FLOAT_EQ(Vector2D(3.0f, 4.0f).LengthSquare(), 25.0f);
    EXPECT_FLOAT_EQ(Vector2D(3.0f, 4.0f).Length(), 5.0f);
}

TEST(Vector2DTest, AngleWithVectorIsInDegrees)
{
    EXPECT_NEAR(Vector2D(2.0f, 0.0f).AngleWithVector(Vector2D(0.0f, -1.0f)), 90.0f, 1e-4f);
    EXPECT_NEAR(Vector2D(1.0f, 1.0f).AngleWithVector(Vector2D(0.0f, 1.0f)), 45.0f, 1e-3f);
    EXPECT_NEAR(Vector2D(1.0f, 0.0f).AngleWithVector(Vector2D(-3.0f, 0.0f)), 180.0f, 1e-3f);
}

TEST(Vector2DTest, ZeroSetsEveryComponentInPlace)
{
    Vector2D v(1.0f, 2.0f);
    v.Zero();
    ExpectComponents(v, 0.0f, 0.0f, 0.0f);
}

TEST(Vector2DTest, EqualityAllowsASmallTolerance)
{
    EXPECT_TRUE(Vector2D(1.0f, 2.0f) == Vector2D(1.00005f, 1.99995f));
    EXPECT_FALSE(Vector2D(1.0f, 2.0f) == Vector2D(1.0f, 2.001f));
}

TEST(Vector2DTest, OrderingHoldsOnlyWhenEveryComponentDoes)
{
    EXPECT_TRUE(Vector2D(1.0f, 5.0f) < Vector2D(2.0f, 6.0f));
    EXPECT_FALSE(Vector2D(1.0f, 7.0f) < Vector2D(2.0f, 6.0f));
    EXPECT_FALSE(Vector2D(2.0f, 6.0f) < Vector2D(1.0f, 7.0f));
    EXPECT_TRUE(Vector2D(1.0f, 6.0f) <= Vector2D(1.0f, 6.0f));
    EXPECT_FALSE(Vector2D(1.0f, 7.0f) <= Vector2D(2.0f, 6.0f));
}

TEST(Vector2DTest, ArithmeticIsComponentWise)
{
    const Vector2D a(1.0f, 2.0f);
    const Vector2D b(4.0f, 6.0f);
    ExpectComponents(a + b, 5.0f, 8.0f, 0.0f);
    ExpectComponents(b - a, 3.0f, 4.0f, 0.0f);
    ExpectComponents(a * 3.0f, 3.0f, 6.0f, 0.0f);
    ExpectComponents(b / 2.0f, 2.0f, 3.0f, 0.0f);
}

TEST(Vector2DTest, PrintListsTheComponentsSeparatedByCommaAndSpace)
{
    EXPECT_EQ(Vector2D(1.0f, -0.5f).Print(), "Vector2D(1, -0.5)");
}

TEST(Vector2DTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Vector2D(1.0f, 2.0f).IsNAN());
    EXPECT_TRUE(Vector2D(nan, 0.0f).IsNAN());
    EXPECT_TRUE(Vector2D(0.0f, nan).IsNAN());
}

TEST(Vector2DTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Vector2D(std::numeric_limits<float>::quiet_NaN(), 0.0f).BreakOnNAN();
    Vector2D(1.0f, 2.0f).BreakOnNAN();
}
