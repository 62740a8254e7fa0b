#include "engine/Math/Point3D.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <limits>

using Math::Point3D;
using Math::Vector3D;

TEST(Point3DTest, DefaultIsTheOrigin)
{
    const Point3D p;
    EXPECT_EQ(p.x, 0.0f);
    EXPECT_EQ(p.y, 0.0f);
    EXPECT_EQ(p.z, 0.0f);
}

TEST(Point3DTest, ConstructorAndAssignmentTakeEveryComponent)
{
    Point3D p;
    p = Point3D(1.0f, -2.0f, 3.0f);
    EXPECT_EQ(p.x, 1.0f);
    EXPECT_EQ(p.y, -2.0f);
    EXPECT_EQ(p.z, 3.0f);
}

TEST(Point3DTest, ToVectorKeepsTheComponents)
{
    EXPECT_TRUE(Point3D(1.0f, 2.0f, 3.0f).ToVector() == Vector3D(1.0f, 2.0f, 3.0f));
}

TEST(Point3DTest, ZeroMovesToTheOrigin)
{
    Point3D p(1.0f, 2.0f, 3.0f);
    p.Zero();
    EXPECT_TRUE(p == Point3D());
}

TEST(Point3DTest, DistanceBetweenPoints)
{
    EXPECT_FLOAT_EQ(Point3D(1.0f, 1.0f, 1.0f).DistanceSquared(Point3D(3.0f, 4.0f, 7.0f)), 49.0f);
    EXPECT_FLOAT_EQ(Point3D(1.0f, 1.0f, 1.0f).Distance(Point3D(3.0f, 4.0f, 7.0f)), 7.0f);
}

TEST(Point3DTest, MakeEqualCopiesTheOtherPoint)
{
    Point3D p(1.0f, 2.0f, 3.0f);
    p.MakeEqual(Point3D(-4.0f, 5.0f, -6.0f));
    EXPECT_EQ(p.x, -4.0f);
    EXPECT_EQ(p.y, 5.0f);
    EXPECT_EQ(p.z, -6.0f);
}

TEST(Point3DTest, PointMinusPointIsAVectorAndPointPlusVectorIsAPoint)
{
    const Vector3D difference = Point3D(3.0f, 4.0f, 7.0f) - Point3D(1.0f, 1.0f, 1.0f);
    EXPECT_TRUE(difference == Vector3D(2.0f, 3.0f, 6.0f));
    EXPECT_TRUE(Point3D(1.0f, 1.0f, 1.0f) + difference == Point3D(3.0f, 4.0f, 7.0f));
}

TEST(Point3DTest, ScalingMultipliesAndDividesEveryCoordinate)
{
    EXPECT_TRUE(Point3D(1.0f, -2.0f, 3.0f) * 2.0f == Point3D(2.0f, -4.0f, 6.0f));
    EXPECT_TRUE(Point3D(2.0f, -4.0f, 6.0f) / 4.0f == Point3D(0.5f, -1.0f, 1.5f));
}

TEST(Point3DTest, EqualityAllowsASmallTolerance)
{
    EXPECT_TRUE(Point3D(1.0f, 2.0f, 3.0f) == Point3D(1.0f, 2.00005f, 3.0f));
    EXPECT_FALSE(Point3D(1.0f, 2.0f, 3.0f) == Point3D(1.0f, 2.001f, 3.0f));
}

TEST(Point3DTest, PrintWritesFixedPointComponentsToStandardOutput)
{
    testing::internal::CaptureStdout();
    Point3D(1.0f, 2.5f, -3.0f).Print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Point3D(1.000000,2.500000,-3.000000)");
}

TEST(Point3DTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Point3D(1.0f, 2.0f, 3.0f).IsNAN());
    EXPECT_TRUE(Point3D(nan, 2.0f, 3.0f).IsNAN());
    EXPECT_TRUE(Point3D(1.0f, nan, 3.0f).IsNAN());
    EXPECT_TRUE(Point3D(1.0f, 2.0f, nan).IsNAN());
}

TEST(Point3DTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Point3D(0.0f, 0.0f, std::numeric_limits<float>::quiet_NaN()).BreakOnNAN();
}
