#include "engine/Math/Vector3D.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <sstream>

namespace Math
{
bool Vector3D::IsNAN() const
{
    return AnyIsNaN({x, y, z});
}

void Vector3D::BreakOnNAN() const
{
    BreakOnNaN({x, y, z});
}

void Vector3D::Normalize()
{
    NormalizeComponents({&x, &y, &z});
}

Point3D Vector3D::ToPoint() const
{
    return Point3D(x, y, z);
}

Vector3D Vector3D::CrossProduct(const Vector3D& other) const
{
    return Vector3D(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x);
}

Vector3D Vector3D::Reflect(const Vector3D& normal) const
{
    return *this - normal * (2.0f * DotProduct(normal));
}

float Vector3D::DotProduct(const Vector3D& other) const
{
    return x * other.x + y * other.y + z * other.z;
}

float Vector3D::AngleWithVector(const Vector3D& other) const
{
    Vector3D a = *this;
    Vector3D b = other;
    a.Normalize();
    b.Normalize();
    return std::acos(std::clamp(a.DotProduct(b), -1.0f, 1.0f)) * kDegreesPerRadian;
}

float Vector3D::Length() const
{
    return std::sqrt(LengthSquare());
}

float Vector3D::LengthSquare() const
{
    return x * x + y * y + z * z;
}

void Vector3D::Zero()
{
    x = y = z = 0.0f;
}

std::string Vector3D::Print() const
{
    std::ostringstream out;
    out << "Vector3D(" << x << ", " << y << ", " << z << ")";
    return out.str();
}

bool Vector3D::operator==(const Vector3D& other) const
{
    return NearlyEqual(x, other.x) && NearlyEqual(y, other.y) && NearlyEqual(z, other.z);
}

Vector3D Vector3D::operator-(const Vector3D& other) const
{
    return Vector3D(x - other.x, y - other.y, z - other.z);
}

Vector3D Vector3D::operator+(const Vector3D& other) const
{
    return Vector3D(x + other.x, y + other.y, z + other.z);
}

Vector3D Vector3D::operator/(float scalar) const
{
    return Vector3D(x / scalar, y / scalar, z / scalar);
}

Vector3D Vector3D::operator*(float scalar) const
{
    return Vector3D(x * scalar, y * scalar, z * scalar);
}

bool Vector3D::operator<(const Vector3D& other) const
{
    return x < other.x && y < other.y && z < other.z;
}

bool Vector3D::operator<=(const Vector3D& other) const
{
    return x <= other.x && y <= other.y && z <= other.z;
}
}

META_REGISTER_NS(Math, Vector3D)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float, float);
    DESCRIPTION("A direction or displacement in 3D.");
    MEMBER(x, "");
    MEMBER(y, "");
    MEMBER(z, "");
    METHOD(IsNAN);
    METHOD(BreakOnNAN);
    METHOD(Normalize);
    METHOD(ToPoint);
    METHOD(CrossProduct);
    METHOD(Reflect);
    METHOD(DotProduct);
    METHOD(AngleWithVector);
    METHOD(Length);
    METHOD(LengthSquare);
    METHOD(Zero);
    METHOD(Print);
    METHOD(operator==);
    METHOD(operator-);
    METHOD(operator+);
    METHOD(operator/);
    METHOD(operator*);
    METHOD_AS("operator=", static_cast<Self& (Self::*)(const Self&)>(&Self::operator=));
    METHOD(operator<);
    METHOD(operator<=);
}
