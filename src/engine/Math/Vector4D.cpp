#include "engine/Math/Vector4D.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <sstream>

namespace Math
{
bool Vector4D::IsNAN() const
{
    return AnyIsNaN({x, y, z, w});
}

void Vector4D::BreakOnNAN() const
{
    BreakOnNaN({x, y, z, w});
}

void Vector4D::Normalize()
{
    NormalizeComponents({&x, &y, &z, &w});
}

Point4D Vector4D::ToPoint() const
{
    return Point4D(x, y, z, w);
}

Vector4D Vector4D::CrossProduct(const Vector4D& other) const
{
    return Vector4D(y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x, 0.0f);
}

Vector4D Vector4D::Reflect(const Vector4D& normal) const
{
    return *this - normal * (2.0f * DotProduct(normal));
}

float Vector4D::DotProduct(const Vector4D& other) const
{
    return x * other.x + y * other.y + z * other.z + w * other.w;
}

float Vector4D::AngleWithVector(const Vector4D& other) const
{
    Vector4D a = *this;
    Vector4D b = other;
    a.Normalize();
    b.Normalize();
    return std::acos(std::clamp(a.DotProduct(b), -1.0f, 1.0f)) * kDegreesPerRadian;
}

float Vector4D::Length() const
{
    return std::sqrt(LengthSquare());
}

float Vector4D::LengthSquare() const
{
    return x * x + y * y + z * z + w * w;
}

void Vector4D::Zero()
{
    x = y = z = w = 0.0f;
}

std::string Vector4D::Print() const
{
    std::ostringstream out;
    out << "Vector4D(" << x << ", " << y << ", " << z << ", " << w << ")";
    return out.str();
}

bool Vector4D::operator==(const Vector4D& other) const
{
    return NearlyEqual(x, other.x) && NearlyEqual(y, other.y) && NearlyEqual(z, other.z) &&
           NearlyEqual(w, other.w);
}

Vector4D Vector4D::operator-(const Vector4D& other) const
{
    return Vector4D(x - other.x, y - other.y, z - other.z, w - other.w);
}

Vector4D Vector4D::operator+(const Vector4D& other) const
{
    return Vector4D(x + other.x, y + other.y, z + other.z, w + other.w);
}

Vector4D Vector4D::operator/(float scalar) const
{
    return Vector4D(x / scalar, y / scalar, z / scalar, w / scalar);
}

Vector4D Vector4D::operator*(float scalar) const
{
    return Vector4D(x * scalar, y * scalar, z * scalar, w * scalar);
}

bool Vector4D::operator<(const Vector4D& other) const
{
    return x < other.x && y < other.y && z < other.z && w < other.w;
}

bool Vector4D::operator<=(const Vector4D& other) const
{
    return x <= other.x && y <= other.y && z <= other.z && w <= other.w;
}
}

META_REGISTER_NS(Math, Vector4D)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float, float, float);
    DESCRIPTION("A direction or displacement in 4D.");
    MEMBER(x, "");
    MEMBER(y, "");
    MEMBER(z, "");
    MEMBER(w, "");
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
