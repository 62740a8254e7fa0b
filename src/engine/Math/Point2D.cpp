#include "engine/Math/Point2D.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <cmath>
#include <initializer_list>
#include <sstream>

namespace Math
{
bool Point2D::IsNAN() const
{
    return AnyIsNaN({x, y});
}

void Point2D::BreakOnNAN() const
{
    BreakOnNaN({x, y});
}

Vector2D Point2D::ToVector() const
{
    return Vector2D(x, y);
}

void Point2D::Zero()
{
    x = y = 0.0f;
}

float Point2D::DistanceSquared(const Point2D& other) const
{
    return (*this - other).LengthSquare();
}

float Point2D::Distance(const Point2D& other) const
{
    return std::sqrt(DistanceSquared(other));
}

std::string Point2D::Print() const
{
    std::ostringstream out;
    out << "Point2D(" << x << ", " << y << ")";
    return out.str();
}

bool Point2D::operator==(const Point2D& other) const
{
    return NearlyEqual(x, other.x) && NearlyEqual(y, other.y);
}

Vector2D Point2D::operator-(const Point2D& other) const
{
    return Vector2D(x - other.x, y - other.y);
}

Point2D Point2D::operator+(const Vector2D& offset) const
{
    return Point2D(x + offset.x, y + offset.y);
}

bool Point2D::operator<(const Point2D& other) const
{
    return x < other.x && y < other.y;
}

bool Point2D::operator<=(const Point2D& other) const
{
    return x <= other.x && y <= other.y;
}
}

META_REGISTER_NS(Math, Point2D)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float);
    DESCRIPTION("A position in 2D.");
    MEMBER(x, "");
    MEMBER(y, "");
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
