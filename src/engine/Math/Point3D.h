// Math::Point3D: a position of three floats; all 0 by default.
#pragma once

namespace Math
{
class Point3D
{
public:
    Point3D() = default;
    Point3D(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}
    virtual ~Point3D() = default;
    Point3D(const Point3D&) = default;
    Point3D& operator=(const Point3D&) = default;

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
};
}
