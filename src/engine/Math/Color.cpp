#include "engine/Math/Color.h"

#include "utilities/Meta/Registration.h"

#include "engine/Math/Scalar.h"

#include <cmath>
#include <initializer_list>
#include <cstdio>

namespace Math
{
bool Color::IsNAN() const
{
    return AnyIsNaN({r, g, b, a});
}

void Color::BreakOnNAN() const
{
    BreakOnNaN({r, g, b, a});
}

void Color::Zero()
{
    r = g = b = a = 0.0f;
}

void Color::Print() const
{
    std::printf("Color(%f,%f,%f%f)", r, g, b, a);
}

bool Color::operator==(const Color& other) const
{
    return NearlyEqual(r, other.r) && NearlyEqual(g, other.g) && NearlyEqual(b, other.b) &&
           NearlyEqual(a, other.a);
}

Color Color::operator-(const Color& other) const
{
    return Color(r - other.r, g - other.g, b - other.b, a - other.a);
}

Color Color::operator*(float scalar) const
{
    return Color(r * scalar, g * scalar, b * scalar, a * scalar);
}

Color Color::operator/(float scalar) const
{
    return Color(r / scalar, g / scalar, b / scalar, a / scalar);
}

Color Color::operator+(const Color& other) const
{
    return Color(r + other.r, g + other.g, b + other.b, a + other.a);
}

bool Color::operator<(const Color& other) const
{
    return r < other.r && g < other.g && b < other.b && a < other.a;
}

bool Color::operator<=(const Color& other) const
{
    return r <= other.r && g <= other.g && b <= other.b && a <= other.a;
}
}

META_REGISTER_NS(Math, Color)
{
    CONSTRUCTOR();
    CONSTRUCTOR(float, float, float, float);
    DESCRIPTION("A colour: red, green, blue and alpha from 0 to 1.");
    MEMBER(r, "");
    MEMBER(g, "");
    MEMBER(b, "");
    MEMBER(a, "");
    METHOD(IsNAN);
    METHOD(BreakOnNAN);
    METHOD(Zero);
    METHOD(operator==);
    METHOD(operator-);
    METHOD(operator*);
    METHOD(operator/);
    METHOD(operator+);
    METHOD_AS("operator=", static_cast<Self& (Self::*)(const Self&)>(&Self::operator=));
    METHOD(operator<);
    METHOD(operator<=);
    METHOD_AS("__print", &Self::Print);
}
