#include "engine/Math/Vector3D.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using Math::Point3D;
using Math::Vector3D;

namespace
{
void ExpectComponents(const Vector3D& v, float x, float y, float z, float tolerance = 1e-6f)
{
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}
}

TEST(Vector3DTest, DefaultIsZero)
{
    ExpectComponents(Vector3D(), 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Vector3DTest, ConstructorTakesEveryComponent)
{
    ExpectComponents(Vector3D(1.0f, -2.0f, 3.5f), 1.0f, -2.0f, 3.5f, 0.0f);
}

TEST(Vector3DTest, AssignmentCopiesEveryComponent)
{
    Vector3D v;
    v = Vector3D(4.0f, 5.0f, 6.0f);
    ExpectComponents(v, 4.0f, 5.0f, 6.0f, 0.0f);
}

TEST(Vector3DTest, NormalizeOfZeroVectorLeavesItZero)
{
    Vector3D v;
    v.Normalize();
    ExpectComponents(v, 0.0f, 0.0f, 0.0f, 0.0f);
    EXPECT_FALSE(v.IsNAN());
}

TEST(Vector3DTest, NormalizeDividesByTheLength)
{
    Vector3D v(3.0f, 0.0f, -4.0f);
    v.Normalize();
    ExpectComponents(v, 0.6f, 0.0f, -0.8f);
    EXPECT_NEAR(v.Length(), 1.0f, 1e-6f);
}

TEST(Vector3DTest, NormalizeOfInfiniteLengthGivesNaNInEveryComponent)
{
    Vector3D overflowing(1e30f, 1e30f, 0.0f);
    overflowing.Normalize();
    EXPECT_TRUE(std::isnan(overflowing.x));
    EXPECT_TRUE(std::isnan(overflowing.y));
    EXPECT_TRUE(std::isnan(overflowing.z));

    Vector3D infinite(std::numeric_limits<float>::infinity(), 1.0f, 2.0f);
    infinite.Normalize();
    EXPECT_TRUE(std::isnan(infinite.x));
    EXPECT_TRUE(std::isnan(infinite.y));
    EXPECT_TRUE(std::isnan(infinite.z));
}

TEST(Vector3DTest, EqualityAllowsASmallTolerance)
{
    EXPECT_TRUE(Vector3D(1.0f, 2.0f, 3.0f) == Vector3D(1.00005f, 2.0f, 3.0f));
    EXPECT_TRUE(Vector3D(1.0f, 2.0f, 3.0f) == Vector3D(1.0f, 1.99995f, 3.00005f));
    EXPECT_FALSE(Vector3D(1.0f, 2.0f, 3.0f) == Vector3D(1.001f, 2.0f, 3.0f));
    EXPECT_FALSE(Vector3D(1.0f, 2.0f, 3.0f) == Vector3D(1.0f, 2.0f, 2.999f));
}

TEST(Vector3DTest, LessThanHoldsOnlyWhenEveryComponentIsLess)
{
    EXPECT_TRUE(Vector3D(1.0f, 5.0f, 0.0f) < Vector3D(2.0f, 6.0f, 1.0f));
    EXPECT_FALSE(Vector3D(1.0f, 7.0f, 0.0f) < Vector3D(2.0f, 6.0f, 1.0f));
    EXPECT_FALSE(Vector3D(2.0f, 6.0f, 1.0f) < Vector3D(1.0f, 7.0f, 0.0f));
    EXPECT_FALSE(Vector3D(1.0f, 2.0f, 3.0f) < Vector3D(1.0f, 2.0f, 3.0f));
}

TEST(Vector3DTest, LessOrEqualHoldsOnlyWhenEveryComponentIsLessOrEqual)
{
    EXPECT_TRUE(Vector3D(1.0f, 2.0f, 3.0f) <= Vector3D(1.0f, 2.0f, 3.0f));
    EXPECT_TRUE(Vector3D(0.0f, 2.0f, 3.0f) <= Vector3D(1.0f, 2.0f, 4.0f));
    EXPECT_FALSE(Vector3D(1.0f, 2.0f, 4.0f) <= Vector3D(1.0f, 2.0f, 3.0f));
    EXPECT_FALSE(Vector3D(1.0f, 7.0f, 0.0f) <= Vector3D(2.0f, 6.0f, 1.0f));
}

TEST(Vector3DTest, CrossProductIsRightHanded)
{
    const Vector3D x(1.0f, 0.0f, 0.0f);
    const Vector3D y(0.0f, 1.0f, 0.0f);
    const Vector3D z(0.0f, 0.0f, 1.0f);
    ExpectComponents(x.CrossProduct(y), 0.0f, 0.0f, 1.0f, 0.0f);
    ExpectComponents(y.CrossProduct(z), 1.0f, 0.0f, 0.0f, 0.0f);
    ExpectComponents(z.CrossProduct(x), 0.0f, 1.0f, 0.0f, 0.0f);
    ExpectComponents(y.CrossProduct(x), 0.0f, 0.0f, -1.0f, 0.0f);
}

TEST(Vector3DTest, CrossProductOfGeneralVectors)
{
    ExpectComponents(Vector3D(1.0f, 2.0f, 3.0f).CrossProduct(Vector3D(4.0f, 5.0f, 6.0f)), -3.0f, 6.0f, -3.0f, 0.0f);
}

TEST(Vector3DTest, ReflectUsesTheNormalAsGiven)
{
    // With the normal (0, 2, 0): v - 2 (v . n) n = (1, -1, 0) - 2 (-2) (0, 2, 0).
    ExpectComponents(Vector3D(1.0f, -1.0f, 0.0f).Reflect(Vector3D(0.0f, 2.0f, 0.0f)), 1.0f, 7.0f, 0.0f, 0.0f);
    // With a unit normal it is a mirror image.
    ExpectComponents(Vector3D(1.0f, -1.0f, 2.0f).Reflect(Vector3D(0.0f, 1.0f, 0.0f)), 1.0f, 1.0f, 2.0f, 0.0f);
}

TEST(Vector3DTest, DotProductAndLengths)
{
    EXPECT_FLOAT_EQ(Vector3D(1.0f, 2.0f, 3.0f).DotProduct(Vector3D(4.0f, -5.0f, 6.0f)), 12.0f);
    EXPECT_FLOAT_EQ(Vector3D(2.0f, 3.0f, 6.0f).LengthSquare(), 49.0f);
    EXPECT_FLOAT_EQ(Vector3D(2.0f, 3.0f, 6.0f).Length(), 7.0f);
}

TEST(Vector3DTest, AngleWithVectorIsInDegrees)
{
    EXPECT_NEAR(Vector3D(1.0f, 0.0f, 0.0f).AngleWithVector(Vector3D(0.0f, 3.0f, 0.0f)), 90.0f, 1e-4f);
    EXPECT_NEAR(Vector3D(0.0f, 0.0f, 2.0f).AngleWithVector(Vector3D(5.0f, 0.0f, 0.0f)), 90.0f, 1e-4f);
    EXPECT_NEAR(Vector3D(1.0f, 1.0f, 0.0f).AngleWithVector(Vector3D(1.0f, 0.0f, 0.0f)), 45.0f, 1e-3f);
    // Near 0 and 180 degrees acos magnifies the rounding of the float dot product.
    EXPECT_NEAR(Vector3D(2.0f, 2.0f, 2.0f).AngleWithVector(Vector3D(1.0f, 1.0f, 1.0f)), 0.0f, 0.05f);
    EXPECT_NEAR(Vector3D(1.0f, 2.0f, 3.0f).AngleWithVector(Vector3D(-2.0f, -4.0f, -6.0f)), 180.0f, 0.05f);
}

TEST(Vector3DTest, ZeroSetsEveryComponentInPlace)
{
    Vector3D v(1.0f, 2.0f, 3.0f);
    v.Zero();
    ExpectComponents(v, 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Vector3DTest, ToPointKeepsTheComponents)
{
    const Point3D p = Vector3D(1.0f, 2.0f, 3.0f).ToPoint();
    EXPECT_EQ(p.x, 1.0f);
    EXPECT_EQ(p.y, 2.0f);
    EXPECT_EQ(p.z, 3.0f);
}

TEST(Vector3DTest, ArithmeticIsComponentWise)
{
    const Vector3D a(1.0f, 2.0f, 3.0f);
    const Vector3D b(4.0f, 6.0f, 8.0f);
    ExpectComponents(a + b, 5.0f, 8.0f, 11.0f, 0.0f);
    ExpectComponents(b - a, 3.0f, 4.0f, 5.0f, 0.0f);
    ExpectComponents(a * 2.0f, 2.0f, 4.0f, 6.0f, 0.0f);
    ExpectComponents(b / 2.0f, 2.0f, 3.0f, 4.0f, 0.0f);
}

TEST(Vector3DTest, PrintListsTheComponentsSeparatedByCommaAndSpace)
{
    EXPECT_EQ(Vector3D(1.0f, 2.5f, -3.0f).Print(), "Vector3D(1, 2.5, -3)");
    EXPECT_EQ(Vector3D().Print(), "Vector3D(0, 0, 0)");
}

TEST(Vector3DTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Vector3D(1.0f, 2.0f, 3.0f).IsNAN());
    EXPECT_FALSE(Vector3D(std::numeric_limits<float>::infinity(), 0.0f, 0.0f).IsNAN());
    EXPECT_TRUE(Vector3D(nan, 0.0f, 0.0f).IsNAN());
    EXPECT_TRUE(Vector3D(0.0f, nan, 0.0f).IsNAN());
    EXPECT_TRUE(Vector3D(0.0f, 0.0f, nan).IsNAN());
}

TEST(Vector3DTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    const float nan = std::numeric_limits<float>::quiet_NaN();
    Vector3D(0.0f, nan, 0.0f).BreakOnNAN();
    Vector3D(1.0f, 2.0f, 3.0f).BreakOnNAN();
}
