// Math::Quaternion: a rotation as x, y, z, w; the identity (0, 0, 0, 1) by default.
#pragma once

namespace Math
{
class Quaternion
{
public:
    Quaternion() = default;
    Quaternion(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}
    virtual ~Quaternion() = default;
    Quaternion(const Quaternion&) = default;
    Quaternion& operator=(const Quaternion&) = default;

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 1.0f;
};
}
