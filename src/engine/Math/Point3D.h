// Math::Point3D: a position in space, three floats x, y and z, (0, 0, 0) by
// default. The difference of two points is a Vector3D and a point plus a
// vector is a point; a point can also be scaled about the origin. == compares
// every component within kEqualTolerance.
#pragma once

#include "engine/Math/Vector3D.h"

namespace Math
{
class Point3D
{
public:
    // The origin.
    Point3D() = default;
    // The point (x_, y_, z_).
    Point3D(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Point3D() = default;
    // Copies another point.
    Point3D(const Point3D&) = default;
    // Copies another point's components into this one.
    Point3D& operator=(const Point3D&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // The vector from the origin to this point.
    Vector3D ToVector() const;
    // Moves this point to the origin.
    void Zero();
    // The squared distance to another point.
    float DistanceSquared(const Point3D& other) const;
    // The distance to another point.
    float Distance(const Point3D& other) const;
    // Copies other's components into this point.
    void MakeEqual(const Point3D& other);
    // Writes "Point3D(%f,%f,%f)" to standard output, with no newline.
    void Print() const;

    // True when every component differs by at most kEqualTolerance.
    bool operator==(const Point3D& other) const;
    // The vector from other to this point.
    Vector3D operator-(const Point3D& other) const;
    // This point moved by a vector.
    Point3D operator+(const Vector3D& offset) const;
    // Each coordinate divided by a scalar.
    Point3D operator/(float scalar) const;
    // Each coordinate multiplied by a scalar.
    Point3D operator*(float scalar) const;

    // The first coordinate.
    float x = 0.0f;
    // The second coordinate.
    float y = 0.0f;
    // The third coordinate.
    float z = 0.0f;
};
}
