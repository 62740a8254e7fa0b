// Math::Point2D: a position in the plane, two floats x and y, (0, 0) by
// default. The difference of two points is a Vector2D and a point plus a
// vector is a point. Comparisons are component-wise: == within
// kEqualTolerance, < and <= only when they hold in every component.
#pragma once

#include "engine/Math/Vector2D.h"

#include <string>

namespace Math
{
class Point2D
{
public:
    // The origin.
    Point2D() = default;
    // The point (x_, y_).
    Point2D(float x_, float y_) : x(x_), y(y_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Point2D() = default;
    // Copies another point.
    Point2D(const Point2D&) = default;
    // Copies another point's components into this one.
    Point2D& operator=(const Point2D&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // The vector from the origin to this point.
    Vector2D ToVector() const;
    // Moves this point to the origin.
    void Zero();
    // The squared distance to another point.
    float DistanceSquared(const Point2D& other) const;
    // The distance to another point.
    float Distance(const Point2D& other) const;
    // "Point2D(x, y)": the components in default stream format, separated by ", ".
    std::string Print() const;

    // True when every component differs by at most kEqualTolerance.
    bool operator==(const Point2D& other) const;
    // The vector from other to this point.
    Vector2D operator-(const Point2D& other) const;
    // This point moved by a vector.
    Point2D operator+(const Vector2D& offset) const;
    // True when every component is less than the other's.
    bool operator<(const Point2D& other) const;
    // True when every component is less than or equal to the other's.
    bool operator<=(const Point2D& other) const;

    // The horizontal coordinate.
    float x = 0.0f;
    // The vertical coordinate.
    float y = 0.0f;
};
}
