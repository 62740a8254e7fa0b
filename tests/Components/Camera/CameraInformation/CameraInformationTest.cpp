#include "Components/Camera/CameraInformation/CameraInformation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
// The cotangent of half of a field of view of `degrees`, with the zoom formula's pi.
float HalfAngleCotangent(float degrees)
{
    return std::tan((90.0f - degrees * 0.5f) * 3.14159f / 180.0f);
}
}

TEST(CameraInformationTest, AnEmptyRecordHasNoTargetsAndNoSize)
{
    const CameraInformation targets;
    EXPECT_TRUE(targets.Empty());
    EXPECT_EQ(targets.Center(), Math::Point3D());
    EXPECT_EQ(targets.HalfExtents(), Math::Vector3D());
    EXPECT_FLOAT_EQ(targets.HalfExtent(), 0.0f);
}

TEST(CameraInformationTest, TargetsFoldIntoTheCentreOfTheirBoundsAndTheLargestSphere)
{
    CameraInformation targets;
    targets.Add(Math::Point3D(-2, 0, 4), 1.0f, 0.0f);
    targets.Add(Math::Point3D(6, 2, -4), 3.0f, 5.0f);
    targets.Add(Math::Point3D(0, 1, 0), 0.5f, 2.0f);
    EXPECT_EQ(targets.Count, 3);
    EXPECT_EQ(targets.Center(), Math::Point3D(2, 1, 0));
    EXPECT_EQ(targets.HalfExtents(), Math::Vector3D(4, 1, 4));
    EXPECT_FLOAT_EQ(targets.LargestSphere, 3.0f);
    EXPECT_FLOAT_EQ(targets.LargestViewDistance, 5.0f);
    // The larger of the x and z half extents, plus the largest sphere.
    EXPECT_FLOAT_EQ(targets.HalfExtent(), 7.0f);
}

TEST(CameraInformationTest, RequiredDistanceFitsTheHalfExtentInsideTheFieldOfView)
{
    CameraInformation targets;
    targets.Add(Math::Point3D(-10, 0, 0), 0.0f, 0.0f);
    targets.Add(Math::Point3D(10, 0, 0), 0.0f, 0.0f);
    EXPECT_NEAR(targets.RequiredDistance(45.0f, 0.0f, 1.0f), HalfAngleCotangent(45.0f) * 10.0f, 1e-3f);
    // A 90 degree view needs exactly the half extent.
    EXPECT_NEAR(targets.RequiredDistance(90.0f, 0.0f, 1.0f), 10.0f, 1e-3f);
    // Padding the angle and the area modifier both ask for more distance.
    EXPECT_GT(targets.RequiredDistance(45.0f, 5.0f, 1.0f), targets.RequiredDistance(45.0f, 0.0f, 1.0f));
    EXPECT_NEAR(targets.RequiredDistance(45.0f, 0.0f, 2.0f), 2.0f * HalfAngleCotangent(45.0f) * 10.0f, 1e-3f);
}

TEST(CameraInformationTest, ATargetsViewDistanceIsTheLeastDistanceRequired)
{
    CameraInformation targets;
    targets.Add(Math::Point3D(0, 0, 0), 0.5f, 40.0f);
    EXPECT_FLOAT_EQ(targets.RequiredDistance(45.0f, 0.0f, 1.0f), 40.0f);
}

TEST(CameraInformationTest, PaddingPastARightAngleStaysFinite)
{
    CameraInformation targets;
    targets.Add(Math::Point3D(0, 0, 0), 1.0f, 0.0f);
    const float distance = targets.RequiredDistance(45.0f, 200.0f, 1.0f);
    EXPECT_TRUE(std::isfinite(distance));
    EXPECT_GT(distance, 0.0f);
}

TEST(CameraInformationTest, TargetsWithoutAFinitePositionAreLeftOut)
{
    CameraInformation targets;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    targets.Add(Math::Point3D(nan, 0, 0), 1.0f, 0.0f);
    EXPECT_TRUE(targets.Empty());
    targets.Add(Math::Point3D(1, 2, 3), nan, nan);
    EXPECT_EQ(targets.Count, 1);
    EXPECT_FLOAT_EQ(targets.LargestSphere, 0.0f);
    EXPECT_TRUE(std::isfinite(targets.RequiredDistance(45.0f, 0.0f, 1.0f)));
}
