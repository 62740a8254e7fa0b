#include "Graphics_Engine/Model/Skeleton.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Graphics;

namespace
{
// The row-vector matrix turning by 90 degrees about z: x goes to y.
Math::Matrix4 QuarterTurnAboutZ()
{
    return Math::Matrix4(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
}
}

TEST(SkeletonTest, RotationOfAQuarterTurnAboutZ)
{
    const Math::Quaternion q = RotationOf(QuarterTurnAboutZ());
    const float half = std::sqrt(0.5f);
    EXPECT_NEAR(q.x, 0.0f, 1e-6f);
    EXPECT_NEAR(q.y, 0.0f, 1e-6f);
    EXPECT_NEAR(q.z, half, 1e-6f);
    EXPECT_NEAR(q.w, half, 1e-6f);
}

TEST(SkeletonTest, RotationOfIgnoresScaleAndHandlesAHalfTurn)
{
    // Half a turn about x (trace -1), scaled by 2.
    const Math::Matrix4 matrix(2, 0, 0, 0, 0, -2, 0, 0, 0, 0, -2, 0, 0, 0, 0, 1);
    const Math::Quaternion q = RotationOf(matrix);
    EXPECT_NEAR(std::fabs(q.x), 1.0f, 1e-6f);
    EXPECT_NEAR(q.y, 0.0f, 1e-6f);
    EXPECT_NEAR(q.z, 0.0f, 1e-6f);
    EXPECT_NEAR(q.w, 0.0f, 1e-6f);
}

TEST(SkeletonTest, RestPoseIsRelativeToTheParent)
{
    std::vector<Bone> bones;
    BuildBones({{"Root", -1, Math::Matrix4::Translation(0, -1, 0)}, {"Child", 0, Math::Matrix4::Translation(-1, -3, 0)}},
               bones);
    ASSERT_EQ(bones.size(), 2u);
    EXPECT_EQ(bones[0].RestPosition, Math::Point3D(0, 1, 0));
    EXPECT_EQ(bones[1].RestPosition, Math::Point3D(1, 2, 0));
    EXPECT_EQ(bones[1].LocalPosition, bones[1].RestPosition);
    EXPECT_NEAR(bones[1].RestRotation.w, 1.0f, 1e-6f);
    EXPECT_EQ(bones[1].LocalScale, Math::Vector3D(1, 1, 1));
    EXPECT_TRUE(bones[1].Pose.NearlyEquals(Math::Matrix4()));
}

TEST(SkeletonTest, RestRotationUndoesTheOffsetsTurn)
{
    std::vector<Bone> bones;
    BuildBones({{"Root", -1, QuarterTurnAboutZ()}}, bones);
    const float half = std::sqrt(0.5f);
    EXPECT_NEAR(bones[0].RestRotation.z, -half, 1e-6f);
    EXPECT_NEAR(bones[0].RestRotation.w, half, 1e-6f);
    EXPECT_NEAR(bones[0].LocalRotation.z, -half, 1e-6f);
}

TEST(SkeletonTest, ABoneWithAParentNotBeforeItIsARoot)
{
    std::vector<Bone> bones;
    BuildBones({{"A", 1, Math::Matrix4()}, {"B", 7, Math::Matrix4()}}, bones);
    EXPECT_EQ(bones[0].Parent, nullptr);
    EXPECT_EQ(bones[1].Parent, nullptr);
    EXPECT_TRUE(bones[0].Children.empty());
}
