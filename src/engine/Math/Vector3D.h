// Math::Vector3D: a direction or displacement in space, three floats x, y and
// z, (0, 0, 0) by default. Subtracting two Point3D gives one; adding one to a
// Point3D moves the point. The cross product is right-handed (x cross y = z).
// Comparisons are component-wise: == within kEqualTolerance, < and <= only
// when they hold in every component.
#pragma once

#include <string>

namespace Math
{
class Point3D;

class Vector3D
{
public:
    // The zero vector.
    Vector3D() = default;
    // The vector (x_, y_, z_).
    Vector3D(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Vector3D() = default;
    // Copies another vector.
    Vector3D(const Vector3D&) = default;
    // Copies another vector's components into this one.
    Vector3D& operator=(const Vector3D&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // Scales this vector to length 1 in place; a zero vector stays zero and an
    // infinite one becomes all NaN.
    void Normalize();
    // The point this vector reaches from the origin.
    Point3D ToPoint() const;
    // The right-handed cross product this x other.
    Vector3D CrossProduct(const Vector3D& other) const;
    // This vector mirrored on a surface with the given normal: v - 2 (v . n) n,
    // with n used as given (not normalised).
    Vector3D Reflect(const Vector3D& normal) const;
    // The dot product with another vector.
    float DotProduct(const Vector3D& other) const;
    // The angle to another vector in degrees, in [0, 180].
    float AngleWithVector(const Vector3D& other) const;
    // The length.
    float Length() const;
    // The squared length.
    float LengthSquare() const;
    // Sets every component to 0.
    void Zero();
    // "Vector3D(x, y, z)": the components in default stream format, separated by ", ".
    std::string Print() const;

    // True when every component differs by at most kEqualTolerance.
    bool operator==(const Vector3D& other) const;
    // The component-wise difference.
    Vector3D operator-(const Vector3D& other) const;
    // The component-wise sum.
    Vector3D operator+(const Vector3D& other) const;
    // Each component divided by a scalar.
    Vector3D operator/(float scalar) const;
    // Each component multiplied by a scalar.
    Vector3D operator*(float scalar) const;
    // True when every component is less than the other's.
    bool operator<(const Vector3D& other) const;
    // True when every component is less than or equal to the other's.
    bool operator<=(const Vector3D& other) const;

    // The first component.
    float x = 0.0f;
    // The second component.
    float y = 0.0f;
    // The third component.
    float z = 0.0f;
};
}

// Point3D needs the complete Vector3D, so it is included after the class: either
// header gives both types.
#include "engine/Math/Point3D.h"
