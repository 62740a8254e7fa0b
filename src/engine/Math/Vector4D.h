// Math::Vector4D: a four-component vector of floats x, y, z and w, all 0 by
// default, for homogeneous directions and other four-wide values. Length, dot
// product, normalisation, reflection and angles use all four components; the
// cross product uses x, y and z only and gives w = 0. Comparisons are
// component-wise: == within kEqualTolerance, < and <= only when they hold in
// every component.
#pragma once

#include <string>

namespace Math
{
class Point4D;

class Vector4D
{
public:
    // The zero vector.
    Vector4D() = default;
    // The vector (x_, y_, z_, w_).
    Vector4D(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Vector4D() = default;
    // Copies another vector.
    Vector4D(const Vector4D&) = default;
    // Copies another vector's components into this one.
    Vector4D& operator=(const Vector4D&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // Scales this vector to length 1 in place; a zero vector stays zero and an
    // infinite one becomes all NaN.
    void Normalize();
    // The point this vector reaches from the origin.
    Point4D ToPoint() const;
    // The right-handed cross product of the x, y, z parts (this x other), with w = 0.
    Vector4D CrossProduct(const Vector4D& other) const;
    // This vector mirrored on a surface with the given normal: v - 2 (v . n) n,
    // with n used as given (not normalised).
    Vector4D Reflect(const Vector4D& normal) const;
    // The dot product over all four components.
    float DotProduct(const Vector4D& other) const;
    // The angle to another vector in degrees, in [0, 180].
    float AngleWithVector(const Vector4D& other) const;
    // The length over all four components.
    float Length() const;
    // The squared length over all four components.
    float LengthSquare() const;
    // Sets every component to 0.
    void Zero();
    // "Vector4D(x, y, z, w)": the components in default stream format, separated by ", ".
    std::string Print() const;

    // True when every component differs by at most kEqualTolerance.
    bool operator==(const Vector4D& other) const;
    // The component-wise difference.
    Vector4D operator-(const Vector4D& other) const;
    // The component-wise sum.
    Vector4D operator+(const Vector4D& other) const;
    // Each component divided by a scalar.
    Vector4D operator/(float scalar) const;
    // Each component multiplied by a scalar.
    Vector4D operator*(float scalar) const;
    // True when every component is less than the other's.
    bool operator<(const Vector4D& other) const;
    // True when every component is less than or equal to the other's.
    bool operator<=(const Vector4D& other) const;

    // The first component.
    float x = 0.0f;
    // The second component.
    float y = 0.0f;
    // The third component.
    float z = 0.0f;
    // The fourth component.
    float w = 0.0f;
};
}

// Point4D needs the complete Vector4D, so it is included after the class: either
// header gives both types.
#include "engine/Math/Point4D.h"
