// Math::Vector3D: a direction or displacement of three floats; all 0 by default.
#pragma once

namespace Math
{
class Vector3D
{
public:
    Vector3D() = default;
    Vector3D(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}
    virtual ~Vector3D() = default;
    Vector3D(const Vector3D&) = default;
    Vector3D& operator=(const Vector3D&) = default;

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
};
}
