// Checks the rotations of Math::Quaternion against 3x3 rotation matrices built
// here in double precision, directly from axis-angle (Rodrigues' formula) and
// from the elementary rotations about X, Y and Z, for many random angles.
// The matrices act on column vectors (v' = M v); a right-handed rotation by a
// positive angle turns counter-clockwise when its axis points at the viewer.
#include "engine/Math/Quaternion.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <random>

using Math::Point3D;
using Math::Quaternion;
using Math::Vector3D;

namespace
{
constexpr int kSamples = 200;
constexpr double kPi = 3.14159265358979323846;
constexpr double kRadiansPerDegree = kPi / 180.0;
constexpr float kTolerance = 1e-4f;

using Matrix = std::array<std::array<double, 3>, 3>;

struct Direction
{
    double x, y, z;
};

Matrix Multiply(const Matrix& a, const Matrix& b)
{
    Matrix result{};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            for (int k = 0; k < 3; ++k)
                result[row][column] += a[row][k] * b[k][column];
    return result;
}

// Rodrigues: R = cos(a) I + sin(a) [n]x + (1 - cos(a)) n n^T for a unit axis n.
Matrix AxisAngleMatrix(const Direction& n, double radians)
{
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    const double t = 1.0 - c;
    return {{{c + t * n.x * n.x, t * n.x * n.y - s * n.z, t * n.x * n.z + s * n.y},
             {t * n.y * n.x + s * n.z, c + t * n.y * n.y, t * n.y * n.z - s * n.x},
             {t * n.z * n.x - s * n.y, t * n.z * n.y + s * n.x, c + t * n.z * n.z}}};
}

Matrix RotationX(double radians)
{
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    return {{{1.0, 0.0, 0.0}, {0.0, c, -s}, {0.0, s, c}}};
}

Matrix RotationY(double radians)
{
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    return {{{c, 0.0, s}, {0.0, 1.0, 0.0}, {-s, 0.0, c}}};
}

Matrix RotationZ(double radians)
{
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    return {{{c, -s, 0.0}, {s, c, 0.0}, {0.0, 0.0, 1.0}}};
}

// Roll about Z first, then pitch about X, then yaw about Y, all in degrees.
Matrix EulerMatrix(double pitch, double yaw, double roll)
{
    return Multiply(RotationY(yaw * kRadiansPerDegree),
                    Multiply(RotationX(pitch * kRadiansPerDegree), RotationZ(roll * kRadiansPerDegree)));
}

Vector3D Apply(const Matrix& m, const Vector3D& v)
{
    return Vector3D(static_cast<float>(m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z),
                    static_cast<float>(m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z),
                    static_cast<float>(m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z));
}

// The unit quaternion of a rotation by `radians` about the unit axis n.
Quaternion AxisAngleQuaternion(const Direction& n, double radians)
{
    const double s = std::sin(radians / 2.0);
    return Quaternion(static_cast<float>(n.x * s), static_cast<float>(n.y * s), static_cast<float>(n.z * s),
                      static_cast<float>(std::cos(radians / 2.0)));
}

class Random
{
public:
    // A direction uniformly distributed on the unit sphere.
    Direction Axis()
    {
        std::normal_distribution<double> normal;
        for (;;)
        {
            const Direction d{normal(m_Engine), normal(m_Engine), normal(m_Engine)};
            const double length = std::sqrt(d.x * d.x + d.y * d.y + d.z * d.z);
            if (length > 1e-3)
                return {d.x / length, d.y / length, d.z / length};
        }
    }
    // A uniformly distributed number in [low, high).
    double Uniform(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_Engine); }
    // A vector with components in [-10, 10).
    Vector3D AnyVector()
    {
        return Vector3D(static_cast<float>(Uniform(-10.0, 10.0)), static_cast<float>(Uniform(-10.0, 10.0)),
                        static_cast<float>(Uniform(-10.0, 10.0)));
    }

private:
    std::mt19937 m_Engine{20240611u};
};

void ExpectNear(const Vector3D& actual, const Vector3D& expected, float tolerance)
{
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

// Checks that q turns the basis vectors as m does.
void ExpectSameRotation(const Quaternion& q, const Matrix& m)
{
    for (const Vector3D& v : {Vector3D(1.0f, 0.0f, 0.0f), Vector3D(0.0f, 1.0f, 0.0f), Vector3D(0.0f, 0.0f, 1.0f)})
        ExpectNear(q.RotateVector(v), Apply(m, v), kTolerance);
}
}

TEST(QuaternionRotationTest, RotateVectorMatchesAxisAngleMatrices)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction axis = random.Axis();
        const double angle = random.Uniform(-kPi, kPi);
        const Quaternion q = AxisAngleQuaternion(axis, angle);
        const Matrix m = AxisAngleMatrix(axis, angle);
        const Vector3D v = random.AnyVector();
        ExpectNear(q.RotateVector(v), Apply(m, v), 1e-3f);
        ExpectNear(q.MultVec(v), Apply(m, v), 1e-3f);
    }
}

TEST(QuaternionRotationTest, RotatePointMatchesAxisAngleMatrices)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction axis = random.Axis();
        const double angle = random.Uniform(-kPi, kPi);
        const Vector3D v = random.AnyVector();
        const Point3D rotated = AxisAngleQuaternion(axis, angle).RotatePoint(v.ToPoint());
        ExpectNear(rotated.ToVector(), Apply(AxisAngleMatrix(axis, angle), v), 1e-3f);
    }
}

TEST(QuaternionRotationTest, RotateXYZTurnAboutTheAxisBeforeTheExistingRotation)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction axis = random.Axis();
        const double angle = random.Uniform(-kPi, kPi);
        const Matrix existing = AxisAngleMatrix(axis, angle);
        const double degrees = random.Uniform(-360.0, 360.0);

        Quaternion aboutX = AxisAngleQuaternion(axis, angle);
        aboutX.RotateX(static_cast<float>(degrees));
        ExpectSameRotation(aboutX, Multiply(existing, RotationX(degrees * kRadiansPerDegree)));

        Quaternion aboutY = AxisAngleQuaternion(axis, angle);
        aboutY.RotateY(static_cast<float>(degrees));
        ExpectSameRotation(aboutY, Multiply(existing, RotationY(degrees * kRadiansPerDegree)));

        Quaternion aboutZ = AxisAngleQuaternion(axis, angle);
        aboutZ.RotateZ(static_cast<float>(degrees));
        ExpectSameRotation(aboutZ, Multiply(existing, RotationZ(degrees * kRadiansPerDegree)));
    }
}

TEST(QuaternionRotationTest, CreateFromEulerRollsThenPitchesThenYaws)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const double pitch = random.Uniform(-180.0, 180.0);
        const double yaw = random.Uniform(-180.0, 180.0);
        const double roll = random.Uniform(-180.0, 180.0);
        const Quaternion q = Quaternion::CreateFromEuler(static_cast<float>(pitch), static_cast<float>(yaw),
                                                         static_cast<float>(roll));
        EXPECT_NEAR(q.Length(), 1.0f, 1e-5f);
        ExpectSameRotation(q, EulerMatrix(pitch, yaw, roll));
    }
}

TEST(QuaternionRotationTest, GetEulerAnglesGivesPitchRollYawOfCreateFromEuler)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const float pitch = static_cast<float>(random.Uniform(-85.0, 85.0));
        const float yaw = static_cast<float>(random.Uniform(-175.0, 175.0));
        const float roll = static_cast<float>(random.Uniform(-175.0, 175.0));
        Quaternion q = Quaternion::CreateFromEuler(pitch, yaw, roll);
        const Vector3D angles = q.GetEulerAngles();
        EXPECT_NEAR(angles.x, pitch, 1e-2f);
        EXPECT_NEAR(angles.y, roll, 1e-2f);
        EXPECT_NEAR(angles.z, yaw, 1e-2f);
        // Fed back with yaw and roll in their places, the angles rebuild the rotation.
        ExpectSameRotation(Quaternion::CreateFromEuler(angles.x, angles.z, angles.y), EulerMatrix(pitch, yaw, roll));
    }
}

TEST(QuaternionRotationTest, SlerpEndsAreTheRotationsOfTheInputs)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction fromAxis = random.Axis();
        const double fromAngle = random.Uniform(-kPi, kPi);
        const Direction toAxis = random.Axis();
        const double toAngle = random.Uniform(-kPi, kPi);
        const Quaternion from = AxisAngleQuaternion(fromAxis, fromAngle);
        const Quaternion to = AxisAngleQuaternion(toAxis, toAngle);
        ExpectSameRotation(from.Slerp(to, 0.0f), AxisAngleMatrix(fromAxis, fromAngle));
        ExpectSameRotation(from.Slerp(to, 1.0f), AxisAngleMatrix(toAxis, toAngle));
    }
}

TEST(QuaternionRotationTest, SlerpFromIdentityTurnsThatFractionOfTheAngle)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction axis = random.Axis();
        const double angle = random.Uniform(0.01, kPi - 0.01);
        const Quaternion target = AxisAngleQuaternion(axis, angle);
        ExpectSameRotation(Quaternion().Slerp(target, 0.5f), AxisAngleMatrix(axis, angle / 2.0));
        const double t = random.Uniform(0.0, 1.0);
        ExpectSameRotation(Quaternion().Slerp(target, static_cast<float>(t)), AxisAngleMatrix(axis, angle * t));
    }
}

TEST(QuaternionRotationTest, SlerpBetweenRotationsAboutOneAxisInterpolatesTheAngle)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction axis = random.Axis();
        const double start = random.Uniform(-kPi, kPi);
        const double turn = random.Uniform(-kPi + 0.01, kPi - 0.01);
        const double t = random.Uniform(0.0, 1.0);
        const Quaternion from = AxisAngleQuaternion(axis, start);
        const Quaternion to = AxisAngleQuaternion(axis, start + turn);
        ExpectSameRotation(from.Slerp(to, static_cast<float>(t)), AxisAngleMatrix(axis, start + turn * t));
    }
}

TEST(QuaternionRotationTest, SquadOfEvenlySpacedKeysAboutOneAxisTurnsEvenly)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction axis = random.Axis();
        const double start = random.Uniform(-kPi, kPi);
        const double step = random.Uniform(-1.0, 1.0);
        const double t = random.Uniform(0.0, 1.0);
        const Quaternion q0 = AxisAngleQuaternion(axis, start);
        const Quaternion q1 = AxisAngleQuaternion(axis, start + step);
        const Quaternion q2 = AxisAngleQuaternion(axis, start + 2.0 * step);
        const Quaternion q3 = AxisAngleQuaternion(axis, start + 3.0 * step);
        ExpectSameRotation(q0.Squad(q1, q2, q3, static_cast<float>(t)), AxisAngleMatrix(axis, start + step * (1.0 + t)));
        ExpectSameRotation(q0.Squad(q1, q2, q3, 0.0f), AxisAngleMatrix(axis, start + step));
        ExpectSameRotation(q0.Squad(q1, q2, q3, 1.0f), AxisAngleMatrix(axis, start + 2.0 * step));
    }
}

TEST(QuaternionRotationTest, SquadEndsAreTheRotationsOfTheMiddleKeys)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        std::array<Direction, 4> axes{};
        std::array<double, 4> angles{};
        std::array<Quaternion, 4> keys;
        for (int k = 0; k < 4; ++k)
        {
            axes[k] = random.Axis();
            angles[k] = random.Uniform(-kPi, kPi);
            keys[k] = AxisAngleQuaternion(axes[k], angles[k]);
        }
        ExpectSameRotation(keys[0].Squad(keys[1], keys[2], keys[3], 0.0f), AxisAngleMatrix(axes[1], angles[1]));
        ExpectSameRotation(keys[0].Squad(keys[1], keys[2], keys[3], 1.0f), AxisAngleMatrix(axes[2], angles[2]));
    }
}

TEST(QuaternionRotationTest, CreateFromVectorsIsTheShortestRotationBetweenThem)
{
    Random random;
    for (int i = 0; i < kSamples; ++i)
    {
        const Direction a = random.Axis();
        const Direction b = random.Axis();
        const double scaleA = random.Uniform(0.1, 10.0);
        const double scaleB = random.Uniform(0.1, 10.0);
        const Vector3D from(static_cast<float>(a.x * scaleA), static_cast<float>(a.y * scaleA),
                            static_cast<float>(a.z * scaleA));
        const Vector3D to(static_cast<float>(b.x * scaleB), static_cast<float>(b.y * scaleB),
                          static_cast<float>(b.z * scaleB));
        // The shortest rotation turns about a x b by the angle between them.
        Direction axis{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
        const double sine = std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
        axis = {axis.x / sine, axis.y / sine, axis.z / sine};
        const double angle = std::atan2(sine, a.x * b.x + a.y * b.y + a.z * b.z);

        const Quaternion q = Quaternion::CreateFromVectors(from, to);
        EXPECT_NEAR(q.Length(), 1.0f, 1e-5f);
        ExpectSameRotation(q, AxisAngleMatrix(axis, angle));
        ExpectNear(q.RotateVector(Vector3D(static_cast<float>(a.x), static_cast<float>(a.y), static_cast<float>(a.z))),
                   Vector3D(static_cast<float>(b.x), static_cast<float>(b.y), static_cast<float>(b.z)), kTolerance);
    }
}
