// Math::Point4D: a four-component position of floats x, y, z and w, all 0 by
// default, for homogeneous coordinates. The difference of two points is a
// Vector4D and a point plus a vector is a point; distances use all four
// components. Comparisons are component-wise: == within kEqualTolerance,
// < and <= only when they hold in every component.
#pragma once

#include "engine/Math/Vector4D.h"

#include <string>

namespace Math
{
class Point4D
{
public:
    // The origin.
    Point4D() = default;
    // The point (x_, y_, z_, w_).
    Point4D(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Point4D() = default;
    // Copies another point.
    Point4D(const Point4D&) = default;
    // Copies another point's components into this one.
    Point4D& operator=(const Point4D&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // The vector from the origin to this point.
    Vector4D ToVector() const;
    // Moves this point to the origin.
    void Zero();
    // The squared distance to another point, over all four components.
    float DistanceSquared(const Point4D& other) const;
    // The distance to another point, over all four components.
    float Distance(const Point4D& other) const;
    // "Point4D(x, y, z, w)": the components in default stream format, separated by ", ".
    std::string Print() const;

    // True when every component differs by at most kEqualTolerance.
    bool operator==(const Point4D& other) const;
    // The vector from other to this point.
    Vector4D operator-(const Point4D& other) const;
    // This point moved by a vector.
    Point4D operator+(const Vector4D& offset) const;
    // True when every component is less than the other's.
    bool operator<(const Point4D& other) const;
    // True when every component is less than or equal to the other's.
    bool operator<=(const Point4D& other) const;

    // The first coordinate.
    float x = 0.0f;
    // The second coordinate.
    float y = 0.0f;
    // The third coordinate.
    float z = 0.0f;
    // The fourth coordinate.
    float w = 0.0f;
};
}
