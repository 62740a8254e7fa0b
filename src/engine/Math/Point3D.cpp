#include "engine/Math/Point3D.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <cmath>
#include <initializer_list>
#include <cstdio>

namespace Math
{
bool Point3D::IsNAN() const
{
    return AnyIsNaN({x, y, z});
}

void Point3D::BreakOnNAN() const
{
    BreakOnNaN({x, y, z});
}

Vector3D Point3D::ToVector() const
{
    return Vector3D(x, y, z);
}

void Point3D::Zero()
{
    x = y = z = 0.0f;
}

float Point3D::DistanceSquared(const Point3D& other) const
{
    return (*this - other).LengthSquare();
}

float Point3D::Distance(const Point3D& other) const
{
    return std::sqrt(DistanceSquared(other));
}

void Point3D::MakeEqual(const Point3D& other)
{
    x = other.x;
    y = other.y;
    z = other.z;
}

void Point3D::Print() const
{
    std::printf("Point3D(%f,%f,%f)", x, y, z);
}

bool Point3D::operator==(const Point3D& other) const
{
    return NearlyEqual(x, other.x) && NearlyEqual(y, other.y) && NearlyEqual(z, other.z);
}

Vector3D Point3D::operator-(const Point3D& other) const
{
    return Vector3D(x - other.x, y - other.y, z - other.z);
}

Point3D Point3D::operator+(const Vector3D& offset) const
{
    return Point3D(x + offset.x, y + offset.y, z + offset.z);
}

Point3D Point3D::operator/(float scalar) const
{
    return Point3D(x / scalar, y / scalar, z / scalar);
}

Point3D Point3D::operator*(float scalar) const
{
    return Point3D(x * scalar, y * scalar, z * scalar);
}
}

META_REGISTER_NS(Math, Point3D)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float, float);
    DESCRIPTION("A position in 3D.");
    MEMBER(x, "");
    MEMBER(y, "");
    MEMBER(z, "");
    METHOD(IsNAN);
    METHOD(BreakOnNAN);
    METHOD(ToVector);
    METHOD(Zero);
    METHOD(DistanceSquared);
    METHOD(Distance);
    METHOD(operator==);
    METHOD(operator-);
    METHOD(operator+);
    METHOD(MakeEqual);
    METHOD(operator/);
    METHOD(operator*);
    METHOD_AS("operator=", static_cast<Self& (Self::*)(const Self&)>(&Self::operator=));
    METHOD(Print);
}
