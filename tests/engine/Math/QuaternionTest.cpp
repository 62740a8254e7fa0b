#include "engine/Math/Quaternion.h"

#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>

using Math::Point3D;
using Math::Quaternion;
using Math::Vector3D;

namespace
{
void ExpectComponents(const Quaternion& q, float x, float y, float z, float w, float tolerance = 1e-6f)
{
    EXPECT_NEAR(q.x, x, tolerance);
    EXPECT_NEAR(q.y, y, tolerance);
    EXPECT_NEAR(q.z, z, tolerance);
    EXPECT_NEAR(q.w, w, tolerance);
}

void ExpectVector(const Vector3D& v, float x, float y, float z, float tolerance = 1e-5f)
{
    EXPECT_NEAR(v.x, x, tolerance);
    EXPECT_NEAR(v.y, y, tolerance);
    EXPECT_NEAR(v.z, z, tolerance);
}
}

TEST(QuaternionTest, DefaultIsTheIdentity)
{
    ExpectComponents(Quaternion(), 0.0f, 0.0f, 0.0f, 1.0f, 0.0f);
}

TEST(QuaternionTest, ConstructorAndAssignmentTakeEveryComponent)
{
    Quaternion q;
    q = Quaternion(1.0f, 2.0f, 3.0f, 4.0f);
    ExpectComponents(q, 1.0f, 2.0f, 3.0f, 4.0f, 0.0f);
}

TEST(QuaternionTest, IdentityResetsInPlace)
{
    Quaternion q(1.0f, 2.0f, 3.0f, 4.0f);
    q.Identity();
    ExpectComponents(q, 0.0f, 0.0f, 0.0f, 1.0f, 0.0f);
}

TEST(QuaternionTest, NormalizeOfZeroQuaternionGivesNaN)
{
    Quaternion q(0.0f, 0.0f, 0.0f, 0.0f);
    q.Normalize();
    EXPECT_TRUE(std::isnan(q.x));
    EXPECT_TRUE(std::isnan(q.y));
    EXPECT_TRUE(std::isnan(q.z));
    EXPECT_TRUE(std::isnan(q.w));
    EXPECT_TRUE(q.IsNAN());
}

TEST(QuaternionTest, NormalizeOfInfiniteLengthGivesNaN)
{
    Quaternion q(1e30f, 1e30f, 0.0f, 0.0f);
    q.Normalize();
    EXPECT_TRUE(std::isnan(q.x) && std::isnan(q.y) && std::isnan(q.z) && std::isnan(q.w));
}

TEST(QuaternionTest, NormalizeDividesByTheLength)
{
    Quaternion q(1.0f, 1.0f, -1.0f, 1.0f);
    q.Normalize();
    ExpectComponents(q, 0.5f, 0.5f, -0.5f, 0.5f);
}

TEST(QuaternionTest, LengthsAndDotProductUseAllFourComponents)
{
    const Quaternion q(1.0f, 2.0f, 2.0f, 4.0f);
    EXPECT_FLOAT_EQ(q.LengthSquare(), 25.0f);
    EXPECT_FLOAT_EQ(q.Length(), 5.0f);
    EXPECT_FLOAT_EQ(q.DotProduct(Quaternion(1.0f, -1.0f, 1.0f, 2.0f)), 9.0f);
}

TEST(QuaternionTest, EqualityAllowsASmallToleranceAndInequalityIsItsNegation)
{
    EXPECT_TRUE(Quaternion(0.0f, 0.0f, 0.0f, 1.0f) == Quaternion(0.00005f, 0.0f, 0.0f, 0.99995f));
    EXPECT_FALSE(Quaternion(0.0f, 0.0f, 0.0f, 1.0f) != Quaternion(0.00005f, 0.0f, 0.0f, 0.99995f));
    EXPECT_FALSE(Quaternion(0.0f, 0.0f, 0.0f, 1.0f) == Quaternion(0.0f, 0.001f, 0.0f, 1.0f));
    EXPECT_TRUE(Quaternion(0.0f, 0.0f, 0.0f, 1.0f) != Quaternion(0.0f, 0.001f, 0.0f, 1.0f));
    // q and -q are the same rotation but not equal quaternions.
    EXPECT_TRUE(Quaternion(0.0f, 0.0f, 0.0f, 1.0f) != Quaternion(0.0f, 0.0f, 0.0f, -1.0f));
}

TEST(QuaternionTest, ComponentWiseArithmetic)
{
    const Quaternion a(1.0f, 2.0f, 3.0f, 4.0f);
    const Quaternion b(0.5f, 0.5f, 0.5f, 0.5f);
    ExpectComponents(a + b, 1.5f, 2.5f, 3.5f, 4.5f, 0.0f);
    ExpectComponents(a - b, 0.5f, 1.5f, 2.5f, 3.5f, 0.0f);
    ExpectComponents(-a, -1.0f, -2.0f, -3.0f, -4.0f, 0.0f);
    ExpectComponents(a * 2.0f, 2.0f, 4.0f, 6.0f, 8.0f, 0.0f);
}

TEST(QuaternionTest, ProductIsTheHamiltonProduct)
{
    const Quaternion i(1.0f, 0.0f, 0.0f, 0.0f);
    const Quaternion j(0.0f, 1.0f, 0.0f, 0.0f);
    const Quaternion k(0.0f, 0.0f, 1.0f, 0.0f);
    ExpectComponents(i * j, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f);
    ExpectComponents(j * k, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f);
    ExpectComponents(k * i, 0.0f, 1.0f, 0.0f, 0.0f, 0.0f);
    ExpectComponents(j * i, 0.0f, 0.0f, -1.0f, 0.0f, 0.0f);
    ExpectComponents(i * i, 0.0f, 0.0f, 0.0f, -1.0f, 0.0f);
    // (1 + 2i + 3j + 4k)(5 + 6i + 7j + 8k) = -60 + 12i + 30j + 24k.
    ExpectComponents(Quaternion(2.0f, 3.0f, 4.0f, 1.0f) * Quaternion(6.0f, 7.0f, 8.0f, 5.0f), 12.0f, 30.0f, 24.0f,
                     -60.0f, 0.0f);
}

TEST(QuaternionTest, PrintListsTheComponentsSeparatedByCommaAndSpace)
{
    EXPECT_EQ(Quaternion(1.0f, 2.5f, -3.0f, 4.0f).Print(), "Quaternion(1, 2.5, -3, 4)");
    EXPECT_EQ(Quaternion().Print(), "Quaternion(0, 0, 0, 1)");
}

TEST(QuaternionTest, IsNANIsTrueWhenAnyComponentIsNaN)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(Quaternion().IsNAN());
    EXPECT_TRUE(Quaternion(nan, 0.0f, 0.0f, 1.0f).IsNAN());
    EXPECT_TRUE(Quaternion(0.0f, nan, 0.0f, 1.0f).IsNAN());
    EXPECT_TRUE(Quaternion(0.0f, 0.0f, nan, 1.0f).IsNAN());
    EXPECT_TRUE(Quaternion(0.0f, 0.0f, 0.0f, nan).IsNAN());
}

TEST(QuaternionTest, BreakOnNANReturnsWithoutADebugger)
{
    if (Platform::IsDebuggerAttached())
        GTEST_SKIP() << "a debugger is attached";
    Quaternion(0.0f, 0.0f, 0.0f, std::numeric_limits<float>::quiet_NaN()).BreakOnNAN();
    Quaternion().BreakOnNAN();
}

TEST(QuaternionTest, QuarterTurnsAreRightHanded)
{
    Quaternion aboutX;
    aboutX.RotateX(90.0f);
    ExpectVector(aboutX.RotateVector(Vector3D(0.0f, 1.0f, 0.0f)), 0.0f, 0.0f, 1.0f);
    Quaternion aboutY;
    aboutY.RotateY(90.0f);
    ExpectVector(aboutY.RotateVector(Vector3D(0.0f, 0.0f, 1.0f)), 1.0f, 0.0f, 0.0f);
    Quaternion aboutZ;
    aboutZ.RotateZ(90.0f);
    ExpectVector(aboutZ.RotateVector(Vector3D(1.0f, 0.0f, 0.0f)), 0.0f, 1.0f, 0.0f);
}

TEST(QuaternionTest, RotateAppliesTheNewAxisRotationBeforeTheExistingOne)
{
    Quaternion q;
    q.RotateZ(90.0f);
    q.RotateX(90.0f);
    // About X first: (0, 0, 1) -> (0, -1, 0); then about Z: -> (1, 0, 0).
    ExpectVector(q.RotateVector(Vector3D(0.0f, 0.0f, 1.0f)), 1.0f, 0.0f, 0.0f);
}

TEST(QuaternionTest, RotatePointAndMultVecAgreeWithRotateVector)
{
    Quaternion q(0.1f, -0.7f, 0.3f, 0.6f);
    q.Normalize();
    const Vector3D rotated = q.RotateVector(Vector3D(1.0f, -2.0f, 3.0f));
    const Point3D point = q.RotatePoint(Point3D(1.0f, -2.0f, 3.0f));
    ExpectVector(q.MultVec(Vector3D(1.0f, -2.0f, 3.0f)), rotated.x, rotated.y, rotated.z, 0.0f);
    ExpectVector(point.ToVector(), rotated.x, rotated.y, rotated.z, 0.0f);
    EXPECT_NEAR(rotated.Length(), std::sqrt(14.0f), 1e-5f);
}

TEST(QuaternionTest, GetEulerAnglesLeavesTheQuaternionNormalised)
{
    Quaternion q(1.0f, 2.0f, 3.0f, 4.0f);
    q.GetEulerAngles();
    EXPECT_NEAR(q.Length(), 1.0f, 1e-6f);
    const float length = std::sqrt(30.0f);
    ExpectComponents(q, 1.0f / length, 2.0f / length, 3.0f / length, 4.0f / length);
}

TEST(QuaternionTest, GetEulerAnglesOfSingleAxisRotations)
{
    // Pitch comes back in x, roll (about Z) in y and yaw (about Y) in z.
    ExpectVector(Quaternion::CreateFromEuler(30.0f, 0.0f, 0.0f).GetEulerAngles(), 30.0f, 0.0f, 0.0f, 1e-3f);
    ExpectVector(Quaternion::CreateFromEuler(0.0f, 40.0f, 0.0f).GetEulerAngles(), 0.0f, 0.0f, 40.0f, 1e-3f);
    ExpectVector(Quaternion::CreateFromEuler(0.0f, 0.0f, -50.0f).GetEulerAngles(), 0.0f, -50.0f, 0.0f, 1e-3f);
}

TEST(QuaternionTest, GetEulerAnglesAtThePolesGivesNinetyDegreesOfPitch)
{
    ExpectVector(Quaternion::CreateFromEuler(90.0f, 40.0f, 0.0f).GetEulerAngles(), 90.0f, 0.0f, 40.0f, 1e-3f);
    ExpectVector(Quaternion::CreateFromEuler(-90.0f, -25.0f, 0.0f).GetEulerAngles(), -90.0f, 0.0f, -25.0f, 1e-3f);
}

TEST(QuaternionTest, CreateFromVectorsOfOppositeDirectionsIsAHalfTurn)
{
    for (const Vector3D& from : {Vector3D(1.0f, 2.0f, 3.0f), Vector3D(1.0f, 0.0f, 0.0f), Vector3D(0.0f, -2.0f, 0.0f),
                                 Vector3D(0.0f, 0.0f, 5.0f)})
    {
        const Vector3D to = from * -3.0f;
        const Quaternion q = Quaternion::CreateFromVectors(from, to);
        EXPECT_FALSE(q.IsNAN());
        EXPECT_NEAR(q.Length(), 1.0f, 1e-6f);
        EXPECT_NEAR(q.w, 0.0f, 1e-6f);
        ExpectVector(q.RotateVector(from), -from.x, -from.y, -from.z);
    }
}

TEST(QuaternionTest, CreateFromVectorsOfOneDirectionIsTheIdentity)
{
    ExpectComponents(Quaternion::CreateFromVectors(Vector3D(1.0f, 2.0f, 3.0f), Vector3D(2.0f, 4.0f, 6.0f)), 0.0f, 0.0f,
                     0.0f, 1.0f);
    ExpectComponents(Quaternion::CreateFromVectors(Vector3D(), Vector3D(1.0f, 0.0f, 0.0f)), 0.0f, 0.0f, 0.0f, 1.0f);
}

TEST(QuaternionTest, SlerpEndsAreTheInputs)
{
    const Quaternion from = Quaternion::CreateFromEuler(10.0f, 20.0f, 30.0f);
    const Quaternion to = Quaternion::CreateFromEuler(-40.0f, 50.0f, 60.0f);
    ASSERT_GT(from.DotProduct(to), 0.0f);
    EXPECT_TRUE(from.Slerp(to, 0.0f) == from);
    EXPECT_TRUE(from.Slerp(to, 1.0f) == to);
}

TEST(QuaternionTest, SlerpTakesTheShorterArc)
{
    const Quaternion from = Quaternion::CreateFromEuler(0.0f, 10.0f, 0.0f);
    const Quaternion to = -Quaternion::CreateFromEuler(0.0f, 50.0f, 0.0f);
    ExpectVector(from.Slerp(to, 0.5f).GetEulerAngles(), 0.0f, 0.0f, 30.0f, 1e-3f);
}

TEST(QuaternionTest, SquadEndsAreTheMiddleKeys)
{
    const Quaternion q0 = Quaternion::CreateFromEuler(0.0f, 0.0f, 0.0f);
    const Quaternion q1 = Quaternion::CreateFromEuler(20.0f, 10.0f, 0.0f);
    const Quaternion q2 = Quaternion::CreateFromEuler(30.0f, 40.0f, 10.0f);
    const Quaternion q3 = Quaternion::CreateFromEuler(35.0f, 80.0f, 30.0f);
    EXPECT_TRUE(q0.Squad(q1, q2, q3, 0.0f) == q1);
    EXPECT_TRUE(q0.Squad(q1, q2, q3, 1.0f) == q2);
    const Quaternion middle = q0.Squad(q1, q2, q3, 0.5f);
    EXPECT_NEAR(middle.Length(), 1.0f, 1e-5f);
}

TEST(QuaternionTest, SquadOfKeysInOppositeHemispheresEndsAtTheSameRotations)
{
    const Quaternion q0 = -Quaternion::CreateFromEuler(0.0f, 0.0f, 0.0f);
    const Quaternion q1 = Quaternion::CreateFromEuler(20.0f, 10.0f, 0.0f);
    const Quaternion q2 = -Quaternion::CreateFromEuler(30.0f, 40.0f, 10.0f);
    const Quaternion q3 = Quaternion::CreateFromEuler(35.0f, 80.0f, 30.0f);
    EXPECT_TRUE(q0.Squad(q1, q2, q3, 0.0f) == q1);
    EXPECT_TRUE(q0.Squad(q1, q2, q3, 1.0f) == -q2);
}
