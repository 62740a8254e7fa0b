#include "engine/Math/Point4D.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <limits>

using Math::Point4D;
using Math::Vector4D;

TEST(Point4DTest, DefaultIsTheOrigin)
{
    const Point4D p;
    EXPECT_EQ(p.x, 0.0f);
    EXPECT_EQ(p.y, 0.0f);
    EXPECT_EQ(p.z, 0.0f);
    EXPECT_EQ(p.w, 0.0f);
}

TEST(Point4DTest, ConstructorAndAssignmentTakeEveryComponent)
{
    Point4D p;
    p = Point4D(1.0f, 2.0f, 3.0f, 4.0f);
    EXPECT_EQ(p.x, 1.0f);
    EXPECT_EQ(p.y, 2.0f);
    EXPECT_EQ(p.z, 3.0f);
    EXPECT_EQ(p.w, 4.0f);
}

TEST(Point4DTest, ToVectorKeepsTheComponents)
{
    EXPECT_TRUE(Point4D(1.0f, 2.0f, 3.0f, 4.0f).ToVector() == Vector4D(1.0f, 2.0f, 3.0f, 4.0f));
}

TEST(Point4DTest, ZeroMovesToTheOrigin)
{
    Point4D p(1.0f, 2.0f, 3.0f, 4.0f);
    p.Zero();
    EXPECT_TRUE(p == Point4D());
}

TEST(Point4DTest, DistanceUsesAllFourComponents)
{
    EXPECT_FLOAT_EQ(Point4D(0.0f, 0.0f, 0.0f, 0.0f).DistanceSquared(Point4D(1.0f, 2.0f, 2.0f, 4.0f)), 25.0f);
    EXPECT_FLOAT_EQ(Point4D(0.0f, 0.0f, 0.0f, 0.0f).Distance(Point4D(1.0f, 2.0f, 2.0f, 4.0f)), 5.0f);
}

TEST(Point4DTest, PointMinusPointIsAVectorAndPointPlusVectorIsAPoint)
{
    const Vector4D difference = Point4D(2.0f, 3.0f, 4.0f, 5.0f) - Point4D(1.0f, 1.0f, 1.0f, 1.0f);
    EXPECT_TRUE(difference == Vector4D(1.0f, 2.0f, 3.0f, 4.0f));
    EXPECT_TRUE(Point4D(1.0f, 1.0f, 1.0f, 1.0f) + difference == Point4D(2.0f, 3.0f, 4.0f, 5.0f));
}

TEST(Point4DTest, EqualityAllowsASmallTolerance)
{
    EXPECT_TRUE(Point4D(1.0f, 2.0f, 3.0f, 4.0f) == Point4D(1.00005f, 2.0f, 3.0f, 4.0f));
    EXPECT_FALSE(Point4D(1.0f, 2.0f, 3.0f, 4.0f) == Point4D(1.0f, 2.0f, 3.0f, 4.001f));
}

TEST(Point4DTest, OrderingHoldsOnlyWhenEveryComponentDoes)
{
    EXPECT_TRUE(Point4D(1.0f, 5.0f, 0.0f, 0.0f) < Point4D(2.0f, 6.0f, 1.0f, 1.0f));
    EXPECT_FALSE(Point4D(1.0f, 7.0f, 0.0f, 0.0f) < Point4D(2.0f, 6.0f, 1.0f, 1.0f));
    EXPECT_TRUE(Point4D(2.0f, 6.0f, 1.0f, 1.0f) <= Point4D(2.0f, 6.0f, 1.0f, 1.0f));
    EXPECT_FALSE(Point4D(2.0f, 6.0f, 1.0f, 1.5f) <= Point4D(2.0f, 6.0f, 1.0f, 1.0f));
}

TEST(Point4DTest, PrintListsTheComponentsSeparatedByCommaAndSpace)
{
    EXPECT_EQ(Point4D(1.0f, 2.0f, -3.5f, 1.0f).Print(), "Point4D(1, 2, -3.5, 1)");
}

TEST(Point4DTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Point4D(1.0f, 2.0f, 3.0f, 4.0f).IsNAN());
    EXPECT_TRUE(Point4D(1.0f, 2.0f, nan, 4.0f).IsNAN());
    EXPECT_TRUE(Point4D(1.0f, 2.0f, 3.0f, nan).IsNAN());
}

TEST(Point4DTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Point4D(0.0f, 0.0f, 0.0f, std::numeric_limits<float>::quiet_NaN()).BreakOnNAN();
}
