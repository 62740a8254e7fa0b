#include "engine/Math/Vector2D.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <sstream>

namespace Math
{
bool Vector2D::IsNAN() const
{
    return AnyIsNaN({x, y});
}

void Vector2D::BreakOnNAN() const
{
    BreakOnNaN({x, y});
}

void Vector2D::Normalize()
{
    NormalizeComponents({&x, &y});
}

Vector2D Vector2D::Reflect(const Vector2D& normal) const
{
    return *this - normal * (2.0f * DotProduct(normal));
}

float Vector2D::DotProduct(const Vector2D& other) const
{
    return x * other.x + y * other.y;
}

float Vector2D::AngleWithVector(const Vector2D& other) const
{
    Vector2D a = *this;
    Vector2D b = other;
    a.Normalize();
    b.Normalize();
    return std::acos(std::clamp(a.DotProduct(b), -1.0f, 1.0f)) * kDegreesPerRadian;
}

float Vector2D::Length() const
{
    return std::sqrt(LengthSquare());
}

float Vector2D::LengthSquare() const
{
    return x * x + y * y;
}

void Vector2D::Zero()
{
    x = y = 0.0f;
}

std::string Vector2D::Print() const
{
    std::ostringstream out;
    out << "Vector2D(" << x << ", " << y << ")";
    return out.str();
}

bool Vector2D::operator==(const Vector2D& other) const
{
    return NearlyEqual(x, other.x) && NearlyEqual(y, other.y);
}

Vector2D Vector2D::operator-(const Vector2D& other) const
{
    return Vector2D(x - other.x, y - other.y);
}

Vector2D Vector2D::operator+(const Vector2D& other) const
{
    return Vector2D(x + other.x, y + other.y);
}

Vector2D Vector2D::operator/(float scalar) const
{
    return Vector2D(x / scalar, y / scalar);
}

Vector2D Vector2D::operator*(float scalar) const
{
    return Vector2D(x * scalar, y * scalar);
}

bool Vector2D::operator<(const Vector2D& other) const
{
    return x < other.x && y < other.y;
}

bool Vector2D::operator<=(const Vector2D& other) const
{
    return x <= other.x && y <= other.y;
}
}

META_REGISTER_NS(Math, Vector2D)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float);
    DESCRIPTION("A direction or displacement in 2D.");
    MEMBER(x, "");
    MEMBER(y, "");
    METHOD(IsNAN);
    METHOD(BreakOnNAN);
    METHOD(Normalize);
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
