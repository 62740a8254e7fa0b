#include "engine/Math/Point4D.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <cmath>
#include <initializer_list>
#include <sstream>

namespace Math
{
bool Point4D::IsNAN() const
{
    return AnyIsNaN({x, y, z, w});
}

void Point4D::BreakOnNAN() const
{
    BreakOnNaN({x, y, z, w});
}

Vector4D Point4D::ToVector() const
{
    return Vector4D(x, y, z, w);
}

void Point4D::Zero()
{
    x = y = z = w = 0.0f;
}

float Point4D::DistanceSquared(const Point4D& other) const
{
    return (*this - other).LengthSquare();
}

float Point4D::Distance(const Point4D& other) const
{
    return std::sqrt(DistanceSquared(other));
}

std::string Point4D::Print() const
{
    std::ostringstream out;
    out << "Point4D(" << x << ", " << y << ", " << z << ", " << w << ")";
    return out.str();
}

bool Point4D::operator==(const Point4D& other) const
{
    return NearlyEqual(x, other.x) && NearlyEqual(y, other.y) && NearlyEqual(z, other.z) &&
           NearlyEqual(w, other.w);
}

Vector4D Point4D::operator-(const Point4D& other) const
{
    return Vector4D(x - other.x, y - other.y, z - other.z, w - other.w);
}

Point4D Point4D::operator+(const Vector4D& offset) const
{
    return Point4D(x + offset.x, y + offset.y, z + offset.z, w + offset.w);
}

bool Point4D::operator<(const Point4D& other) const
{
    return x < other.x && y < other.y && z < other.z && w < other.w;
}

bool Point4D::operator<=(const Point4D& other) const
{
    return x <= other.x && y <= other.y && z <= other.z && w <= other.w;
}
}

META_REGISTER_NS(Math, Point4D)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float, float, float);
    DESCRIPTION("A position in 4D.");
    MEMBER(x, "");
    MEMBER(y, "");
    MEMBER(z, "");
    MEMBER(w, "");
    METHOD(IsNAN);
    METHOD(BreakOnNAN);
    METHOD(ToVector);
    METHOD(Zero);
    METHOD(DistanceSquared);
    METHOD(Distance);
    METHOD(Print);
    METHOD(operator==);
    METHOD(operator-);
    METHOD(operator+);
    METHOD_AS("operator=", static_cast<Self& (Self::*)(const Self&)>(&Self::operator=));
    METHOD(operator<);
    METHOD(operator<=);
}
