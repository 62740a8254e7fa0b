// Math::Vector2D: a direction or displacement in the plane, two floats x and y,
// (0, 0) by default. Subtracting two Point2D gives one; adding one to a Point2D
// moves the point. Comparisons are component-wise: == within kEqualTolerance,
// < and <= only when they hold in every component.
#pragma once

#include <string>

namespace Math
{
class Point2D;

class Vector2D
{
public:
    // The zero vector.
    Vector2D() = default;
    // The vector (x_, y_).
    Vector2D(float x_, float y_) : x(x_), y(y_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Vector2D() = default;
    // Copies another vector.
    Vector2D(const Vector2D&) = default;
    // Copies another vector's components into this one.
    Vector2D& operator=(const Vector2D&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // Scales this vector to length 1 in place; a zero vector stays zero and an
    // infinite one becomes all NaN.
    void Normalize();
    // This vector mirrored on a surface with the given normal: v - 2 (v . n) n,
    // with n used as given (not normalised).
    Vector2D Reflect(const Vector2D& normal) const;
    // The dot product with another vector.
    float DotProduct(const Vector2D& other) const;
    // The angle to another vector in degrees, in [0, 180].
    float AngleWithVector(const Vector2D& other) const;
    // The length.
    float Length() const;
    // The squared length.
    float LengthSquare() const;
    // Sets both components to 0.
    void Zero();
    // "Vector2D(x, y)": the components in default stream format, separated by ", ".
    std::string Print() const;

    // True when every component differs by at most kEqualTolerance.
    bool operator==(const Vector2D& other) const;
    // The component-wise difference.
    Vector2D operator-(const Vector2D& other) const;
    // The component-wise sum.
    Vector2D operator+(const Vector2D& other) const;
    // Each component divided by a scalar.
    Vector2D operator/(float scalar) const;
    // Each component multiplied by a scalar.
    Vector2D operator*(float scalar) const;
    // True when every component is less than the other's.
    bool operator<(const Vector2D& other) const;
    // True when every component is less than or equal to the other's.
    bool operator<=(const Vector2D& other) const;

    // The horizontal component.
    float x = 0.0f;
    // The vertical component.
    float y = 0.0f;
};
}

// Point2D needs the complete Vector2D, so it is included after the class: either
// header gives both types.
#include "engine/Math/Point2D.h"
