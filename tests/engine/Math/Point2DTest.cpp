#include "engine/Math/Point2D.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <limits>

using Math::Point2D;
using Math::Vector2D;

TEST(Point2DTest, DefaultIsTheOrigin)
{
    const Point2D p;
    EXPECT_EQ(p.x, 0.0f);
    EXPECT_EQ(p.y, 0.0f);
}

TEST(Point2DTest, ConstructorAndAssignmentTakeEveryComponent)
{
    Point2D p;
    p = Point2D(1.0f, -2.0f);
    EXPECT_EQ(p.x, 1.0f);
    EXPECT_EQ(p.y, -2.0f);
}

TEST(Point2DTest, ToVectorKeepsTheComponents)
{
    EXPECT_TRUE(Point2D(3.0f, 4.0f).ToVector() == Vector2D(3.0f, 4.0f));
}

TEST(Point2DTest, ZeroMovesToTheOrigin)
{
    Point2D p(3.0f, 4.0f);
    p.Zero();
    EXPECT_EQ(p.x, 0.0f);
    EXPECT_EQ(p.y, 0.0f);
}

TEST(Point2DTest, DistanceBetweenPoints)
{
    EXPECT_FLOAT_EQ(Point2D(1.0f, 1.0f).DistanceSquared(Point2D(4.0f, 5.0f)), 25.0f);
    EXPECT_FLOAT_EQ(Point2D(1.0f, 1.0f).Distance(Point2D(4.0f, 5.0f)), 5.0f);
}

TEST(Point2DTest, PointMinusPointIsAVectorAndPointPlusVectorIsAPoint)
{
    const Vector2D difference = Point2D(4.0f, 5.0f) - Point2D(1.0f, 1.0f);
    EXPECT_TRUE(difference == Vector2D(3.0f, 4.0f));
    EXPECT_TRUE(Point2D(1.0f, 1.0f) + difference == Point2D(4.0f, 5.0f));
}

TEST(Point2DTest, EqualityAllowsASmallTolerance)
{
    EXPECT_TRUE(Point2D(1.0f, 2.0f) == Point2D(1.00005f, 2.0f));
    EXPECT_FALSE(Point2D(1.0f, 2.0f) == Point2D(1.001f, 2.0f));
}

TEST(Point2DTest, OrderingHoldsOnlyWhenEveryComponentDoes)
{
    EXPECT_TRUE(Point2D(1.0f, 5.0f) < Point2D(2.0f, 6.0f));
    EXPECT_FALSE(Point2D(1.0f, 7.0f) < Point2D(2.0f, 6.0f));
    EXPECT_FALSE(Point2D(2.0f, 6.0f) < Point2D(1.0f, 7.0f));
    EXPECT_TRUE(Point2D(2.0f, 6.0f) <= Point2D(2.0f, 6.0f));
    EXPECT_FALSE(Point2D(2.0f, 7.0f) <= Point2D(2.0f, 6.0f));
}

TEST(Point2DTest, PrintListsTheComponentsSeparatedByCommaAndSpace)
{
    EXPECT_EQ(Point2D(1.0f, -0.25f).Print(), "Point2D(1, -0.25)");
}

TEST(Point2DTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Point2D(1.0f, 2.0f).IsNAN());
    EXPECT_TRUE(Point2D(nan, 2.0f).IsNAN());
    EXPECT_TRUE(Point2D(1.0f, nan).IsNAN());
}

TEST(Point2DTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Point2D(std::numeric_limits<float>::quiet_NaN(), 0.0f).BreakOnNAN();
}
