#include "engine/Math/Quaternion.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <cmath>
#include <initializer_list>
#include <limits>
#include <sstream>

namespace Math
{
namespace
{
// Above this dot product two unit quaternions are interpolated linearly.
constexpr float kSlerpLinearThreshold = 0.9995f;
// Radians multiplied by this give the degrees GetEulerAngles returns.
constexpr float kEulerDegreesPerRadian = 57.295776f;

Quaternion Conjugate(const Quaternion& q)
{
    return Quaternion(-q.x, -q.y, -q.z, q.w);
}

// The rotation by `radians` about a unit axis.
Quaternion AxisAngle(float ax, float ay, float az, float radians)
{
    const float s = std::sin(radians * 0.5f);
    return Quaternion(ax * s, ay * s, az * s, std::cos(radians * 0.5f));
}

// The logarithm of a unit quaternion (sin(a) n, cos(a)): the pure quaternion (a n, 0).
Quaternion Log(const Quaternion& q)
{
    const float vectorLength = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    if (vectorLength < 1e-7f)
        return Quaternion(q.x, q.y, q.z, 0.0f);
    const float scale = std::atan2(vectorLength, q.w) / vectorLength;
    return Quaternion(q.x * scale, q.y * scale, q.z * scale, 0.0f);
}

// The exponential of a pure quaternion (a n, 0): (sin(a) n, cos(a)).
Quaternion Exp(const Quaternion& q)
{
    const float angle = std::sqrt(q.x * q.x + q.y * q.y + q.z * q.z);
    if (angle < 1e-7f)
        return Quaternion(q.x, q.y, q.z, std::cos(angle));
    const float scale = std::sin(angle) / angle;
    return Quaternion(q.x * scale, q.y * scale, q.z * scale, std::cos(angle));
}

// The squad control point of `current` between `previous` and `next`.
Quaternion ControlPoint(const Quaternion& previous, const Quaternion& current, const Quaternion& next)
{
    const Quaternion inverse = Conjugate(current);
    const Quaternion sum = Log(inverse * previous) + Log(inverse * next);
    return current * Exp(sum * -0.25f);
}

// q, or -q when that lies in the hemisphere of `reference`.
Quaternion Aligned(const Quaternion& q, const Quaternion& reference)
{
    return q.DotProduct(reference) < 0.0f ? -q : q;
}
}

bool Quaternion::IsNAN() const
{
    return AnyIsNaN({x, y, z, w});
}

void Quaternion::BreakOnNAN() const
{
    BreakOnNaN({x, y, z, w});
}

void Quaternion::RotateX(float degrees)
{
    *this = *this * AxisAngle(1.0f, 0.0f, 0.0f, degrees * kRadiansPerDegree);
}

void Quaternion::RotateY(float degrees)
{
    *this = *this * AxisAngle(0.0f, 1.0f, 0.0f, degrees * kRadiansPerDegree);
}

void Quaternion::RotateZ(float degrees)
{
    *this = *this * AxisAngle(0.0f, 0.0f, 1.0f, degrees * kRadiansPerDegree);
}

Vector3D Quaternion::GetEulerAngles()
{
    Normalize();
    const float s = x * w - y * z;
    Vector3D angles;
    if (s > 0.499f)
    {
        angles = Vector3D(kPi * 0.5f, 0.0f, 2.0f * std::atan2(y, w));
    }
    else if (s < -0.499f)
    {
        angles = Vector3D(-kPi * 0.5f, 0.0f, 2.0f * std::atan2(y, w));
    }
    else
    {
        angles.x = std::asin(2.0f * s);
        angles.z = std::atan2(2.0f * (w * y + z * x), 1.0f - 2.0f * (y * y + x * x));
        angles.y = std::atan2(2.0f * (w * z + y * x), 1.0f - 2.0f * (z * z + x * x));
    }
    return angles * kEulerDegreesPerRadian;
}

void Quaternion::Normalize()
{
    NormalizeComponents({&x, &y, &z, &w}, true);
}

Quaternion Quaternion::Slerp(const Quaternion& other, float t) const
{
    Quaternion end = other;
    float cosine = DotProduct(other);
    if (cosine < 0.0f)
    {
        end = -other;
        cosine = -cosine;
    }
    if (cosine > kSlerpLinearThreshold)
    {
        Quaternion result = *this * (1.0f - t) + end * t;
        result.Normalize();
        return result;
    }
    const float angle = std::acos(cosine);
    const float sine = std::sin(angle);
    return *this * (std::sin((1.0f - t) * angle) / sine) + end * (std::sin(t * angle) / sine);
}

Quaternion Quaternion::Squad(const Quaternion& a, const Quaternion& b, const Quaternion& c, float t) const
{
    const Quaternion& q1 = a;
    const Quaternion q0 = Aligned(*this, q1);
    const Quaternion q2 = Aligned(b, q1);
    const Quaternion q3 = Aligned(c, q2);
    const Quaternion s1 = ControlPoint(q0, q1, q2);
    const Quaternion s2 = ControlPoint(q1, q2, q3);
    return q1.Slerp(q2, t).Slerp(s1.Slerp(s2, t), 2.0f * t * (1.0f - t));
}

float Quaternion::DotProduct(const Quaternion& other) const
{
    return x * other.x + y * other.y + z * other.z + w * other.w;
}

float Quaternion::Length() const
{
    return std::sqrt(LengthSquare());
}

float Quaternion::LengthSquare() const
{
    return x * x + y * y + z * z + w * w;
}

void Quaternion::Identity()
{
    x = y = z = 0.0f;
    w = 1.0f;
}

std::string Quaternion::Print() const
{
    std::ostringstream out;
    out << "Quaternion(" << x << ", " << y << ", " << z << ", " << w << ")";
    return out.str();
}

Point3D Quaternion::RotatePoint(const Point3D& point) const
{
    return RotateVector(point.ToVector()).ToPoint();
}

Vector3D Quaternion::MultVec(const Vector3D& vector) const
{
    return RotateVector(vector);
}

Vector3D Quaternion::RotateVector(const Vector3D& vector) const
{
    const Quaternion rotated = *this * Quaternion(vector.x, vector.y, vector.z, 0.0f) * Conjugate(*this);
    return Vector3D(rotated.x, rotated.y, rotated.z);
}

bool Quaternion::operator==(const Quaternion& other) const
{
    return NearlyEqual(x, other.x) && NearlyEqual(y, other.y) && NearlyEqual(z, other.z) &&
           NearlyEqual(w, other.w);
}

bool Quaternion::operator!=(const Quaternion& other) const
{
    return !(*this == other);
}

Quaternion Quaternion::operator-(const Quaternion& other) const
{
    return Quaternion(x - other.x, y - other.y, z - other.z, w - other.w);
}

Quaternion Quaternion::operator-() const
{
    return Quaternion(-x, -y, -z, -w);
}

Quaternion Quaternion::operator+(const Quaternion& other) const
{
    return Quaternion(x + other.x, y + other.y, z + other.z, w + other.w);
}

Quaternion Quaternion::operator*(const Quaternion& other) const
{
    return Quaternion(w * other.x + x * other.w + y * other.z - z * other.y,
                      w * other.y - x * other.z + y * other.w + z * other.x,
                      w * other.z + x * other.y - y * other.x + z * other.w,
                      w * other.w - x * other.x - y * other.y - z * other.z);
}

Quaternion Quaternion::operator*(float scalar) const
{
    return Quaternion(x * scalar, y * scalar, z * scalar, w * scalar);
}

Quaternion Quaternion::CreateFromEuler(float x, float y, float z)
{
    const Quaternion pitch = AxisAngle(1.0f, 0.0f, 0.0f, x * kRadiansPerDegree);
    const Quaternion yaw = AxisAngle(0.0f, 1.0f, 0.0f, y * kRadiansPerDegree);
    const Quaternion roll = AxisAngle(0.0f, 0.0f, 1.0f, z * kRadiansPerDegree);
    return yaw * pitch * roll;
}

Quaternion Quaternion::CreateFromVectors(const Vector3D& from, const Vector3D& to)
{
    Vector3D start = from;
    Vector3D end = to;
    start.Normalize();
    end.Normalize();
    // The angle comes from atan2 of the cross product's length and the dot
    // product, which stays accurate near 0 and 180 degrees.
    const Vector3D cross = start.CrossProduct(end);
    const float sine = cross.Length();
    const float cosine = start.DotProduct(end);
    if (cosine < 0.0f && sine < 1e-6f)
    {
        Vector3D axis = Vector3D(1.0f, 0.0f, 0.0f).CrossProduct(start);
        if (axis.LengthSquare() < 1e-6f)
            axis = Vector3D(0.0f, 1.0f, 0.0f).CrossProduct(start);
        axis.Normalize();
        return Quaternion(axis.x, axis.y, axis.z, 0.0f);
    }
    if (sine == 0.0f)
        return Quaternion();
    const Vector3D axis = cross / sine;
    return AxisAngle(axis.x, axis.y, axis.z, std::atan2(sine, cosine));
}
}

META_REGISTER_NS(Math, Quaternion)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float, float, float);
    DESCRIPTION("A rotation as a unit quaternion.");
    MEMBER(x, "");
    MEMBER(y, "");
    MEMBER(z, "");
    MEMBER(w, "");
    METHOD(IsNAN);
    METHOD(BreakOnNAN);
    METHOD(RotateX);
    METHOD(RotateY);
    METHOD(RotateZ);
    METHOD(GetEulerAngles);
    METHOD(Normalize);
    METHOD(Slerp);
    METHOD(Squad);
    METHOD(DotProduct);
    METHOD(Length);
    METHOD(LengthSquare);
    METHOD(Identity);
    METHOD(Print);
    METHOD(RotatePoint);
    METHOD(MultVec);
    METHOD(RotateVector);
    METHOD(operator==);
    METHOD(operator!=);
    // Scripts ask for subtraction as "operator-" and negation as "operator-()"; the
    // overload list keeps both forms under "operator-" as well.
    METHOD_AS("operator-", static_cast<Self (Self::*)(const Self&) const>(&Self::operator-));
    METHOD_AS("operator-()", static_cast<Self (Self::*)() const>(&Self::operator-));
    OVERLOAD(operator-, 0, Self (Self::*)(const Self&) const);
    OVERLOAD(operator-, 1, Self (Self::*)() const);
    METHOD(operator+);
    OVERLOAD(operator*, 0, Self (Self::*)(const Self&) const);
    OVERLOAD(operator*, 1, Self (Self::*)(float) const);
    METHOD_AS("operator=", static_cast<Self& (Self::*)(const Self&)>(&Self::operator=));
    METHOD(CreateFromEuler);
    METHOD(CreateFromVectors);
}
