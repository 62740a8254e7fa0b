#include "engine/Math/Color.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <limits>

using Math::Color;

namespace
{
void ExpectComponents(const Color& c, float r, float g, float b, float a)
{
    EXPECT_FLOAT_EQ(c.r, r);
    EXPECT_FLOAT_EQ(c.g, g);
    EXPECT_FLOAT_EQ(c.b, b);
    EXPECT_FLOAT_EQ(c.a, a);
}
}

TEST(ColorTest, DefaultIsAllZero)
{
    const Color c;
    EXPECT_EQ(c.r, 0.0f);
    EXPECT_EQ(c.g, 0.0f);
    EXPECT_EQ(c.b, 0.0f);
    EXPECT_EQ(c.a, 0.0f);
}

TEST(ColorTest, ConstructorAndAssignmentTakeEveryComponent)
{
    Color c;
    c = Color(0.1f, 0.2f, 0.3f, 0.4f);
    ExpectComponents(c, 0.1f, 0.2f, 0.3f, 0.4f);
}

TEST(ColorTest, ZeroSetsEveryComponentInPlace)
{
    Color c(1.0f, 1.0f, 1.0f, 1.0f);
    c.Zero();
    ExpectComponents(c, 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(ColorTest, ArithmeticIsComponentWise)
{
    const Color a(0.5f, 0.25f, 1.0f, 1.0f);
    const Color b(0.25f, 0.25f, 0.5f, 0.0f);
    ExpectComponents(a + b, 0.75f, 0.5f, 1.5f, 1.0f);
    ExpectComponents(a - b, 0.25f, 0.0f, 0.5f, 1.0f);
    ExpectComponents(a * 2.0f, 1.0f, 0.5f, 2.0f, 2.0f);
    ExpectComponents(a / 2.0f, 0.25f, 0.125f, 0.5f, 0.5f);
}

TEST(ColorTest, EqualityAllowsASmallTolerance)
{
    EXPECT_TRUE(Color(0.1f, 0.2f, 0.3f, 0.4f) == Color(0.1f, 0.2f, 0.3f, 0.40005f));
    EXPECT_FALSE(Color(0.1f, 0.2f, 0.3f, 0.4f) == Color(0.1f, 0.2f, 0.301f, 0.4f));
}

TEST(ColorTest, OrderingHoldsOnlyWhenEveryComponentDoes)
{
    EXPECT_TRUE(Color(0.1f, 0.1f, 0.1f, 0.1f) < Color(0.2f, 0.2f, 0.2f, 0.2f));
    EXPECT_FALSE(Color(0.1f, 0.3f, 0.1f, 0.1f) < Color(0.2f, 0.2f, 0.2f, 0.2f));
    EXPECT_FALSE(Color(0.2f, 0.2f, 0.2f, 0.2f) < Color(0.1f, 0.3f, 0.1f, 0.1f));
    EXPECT_TRUE(Color(0.2f, 0.2f, 0.2f, 0.2f) <= Color(0.2f, 0.2f, 0.2f, 0.2f));
    EXPECT_FALSE(Color(0.2f, 0.2f, 0.2f, 0.3f) <= Color(0.2f, 0.2f, 0.2f, 0.2f));
}

TEST(ColorTest, PrintHasNoCommaBeforeTheFourthNumber)
{
    testing::internal::CaptureStdout();
    Color(1.0f, 0.5f, 0.25f, 0.75f).Print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Color(1.000000,0.500000,0.2500000.750000)");
}

TEST(ColorTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Color(0.1f, 0.2f, 0.3f, 0.4f).IsNAN());
    EXPECT_TRUE(Color(nan, 0.2f, 0.3f, 0.4f).IsNAN());
    EXPECT_TRUE(Color(0.1f, nan, 0.3f, 0.4f).IsNAN());
    EXPECT_TRUE(Color(0.1f, 0.2f, nan, 0.4f).IsNAN());
    EXPECT_TRUE(Color(0.1f, 0.2f, 0.3f, nan).IsNAN());
}

TEST(ColorTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Color(0.0f, std::numeric_limits<float>::quiet_NaN(), 0.0f, 0.0f).BreakOnNAN();
}
