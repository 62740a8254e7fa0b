// Math::Quaternion: a rotation stored as x, y, z (the vector part) and w (the
// scalar part), the identity (0, 0, 0, 1) by default. Rotations follow the
// unit-quaternion conventions of a right-handed system with row vectors:
// a vector v is rotated as q v q* (so a positive angle about an axis turns
// counter-clockwise when the axis points at the viewer), and operator* is the
// Hamilton product, so (a * b) rotates by b first and then by a. Angles taken
// and returned by the methods are in degrees.
//
// Euler angles: x is pitch (about X), y is yaw (about Y) and z is roll (about
// Z). CreateFromEuler applies roll first, then pitch, then yaw, all about the
// fixed axes: q = qYaw * qPitch * qRoll, which is the row-vector matrix
// Rz(roll) Rx(pitch) Ry(yaw). GetEulerAngles reads the angles of that
// composition back, but returns roll in y and yaw in z (see there).
#pragma once

#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

#include <string>

namespace Math
{
class Quaternion
{
public:
    // The identity rotation (0, 0, 0, 1).
    Quaternion() = default;
    // The quaternion with vector part (x_, y_, z_) and scalar part w_.
    Quaternion(float x_, float y_, float z_, float w_) : x(x_), y(y_), z(z_), w(w_) {}
    // Virtual so that the type can be reflected as a value type.
    virtual ~Quaternion() = default;
    // Copies another quaternion.
    Quaternion(const Quaternion&) = default;
    // Copies another quaternion's components into this one.
    Quaternion& operator=(const Quaternion&) = default;

    // True if any component is NaN.
    bool IsNAN() const;
    // At the first NaN component, breaks into an attached debugger; otherwise nothing.
    void BreakOnNAN() const;
    // In place, this = this * (rotation by `degrees` about X): the new rotation
    // turns about X first and then applies the old one.
    void RotateX(float degrees);
    // In place, this = this * (rotation by `degrees` about Y), as RotateX.
    void RotateY(float degrees);
    // In place, this = this * (rotation by `degrees` about Z), as RotateX.
    void RotateZ(float degrees);
    // Normalises this quaternion in place, then returns its Euler angles in
    // degrees from s = x w - y z: the result's x is asin(2 s) (pitch), its y is
    // atan2(2 (w z + y x), 1 - 2 (z^2 + x^2)) (the roll of CreateFromEuler) and
    // its z is atan2(2 (w y + z x), 1 - 2 (y^2 + x^2)) (the yaw of
    // CreateFromEuler). Near the poles (s > 0.499 or s < -0.499) it returns
    // (+90 or -90, 0, 2 atan2(y, w)).
    Vector3D GetEulerAngles();
    // Scales this quaternion to length 1 in place; a zero or infinite
    // quaternion becomes all NaN.
    void Normalize();
    // Spherical linear interpolation from this (t = 0) to other (t = 1) along
    // the shorter arc (other is negated when the dot product is negative, so
    // t = 1 may give -other, the same rotation); nearly parallel ends are
    // interpolated linearly and normalised.
    Quaternion Slerp(const Quaternion& other, float t) const;
    // Spherical quadrangle interpolation between q1 = a (t = 0) and q2 = b
    // (t = 1), with this as q0 (the key before a) and q3 = c (the key after b).
    // q0, q2 and q3 are first negated where needed to lie in the hemisphere of
    // their neighbour (so t = 1 may give -b). The control points are
    // s_i = q_i * exp(-(log(q_i^-1 q_(i-1)) + log(q_i^-1 q_(i+1))) / 4) for
    // i = 1, 2, and the result is
    // Slerp(Slerp(q1, q2, t), Slerp(s1, s2, t), 2 t (1 - t)).
    Quaternion Squad(const Quaternion& a, const Quaternion& b, const Quaternion& c, float t) const;
    // The four-component dot product.
    float DotProduct(const Quaternion& other) const;
    // The four-component length.
    float Length() const;
    // The four-component squared length.
    float LengthSquare() const;
    // Sets this quaternion to the identity (0, 0, 0, 1).
    void Identity();
    // "Quaternion(x, y, z, w)": the components in default stream format, separated by ", ".
    std::string Print() const;
    // The point rotated by this quaternion: q p q*.
    Point3D RotatePoint(const Point3D& point) const;
    // The vector rotated by this quaternion: q v q*; the same as RotateVector.
    Vector3D MultVec(const Vector3D& vector) const;
    // The vector rotated by this quaternion: q v q*.
    Vector3D RotateVector(const Vector3D& vector) const;

    // True when every component differs by at most kEqualTolerance (q and -q,
    // the same rotation, are not equal).
    bool operator==(const Quaternion& other) const;
    // The negation of operator==.
    bool operator!=(const Quaternion& other) const;
    // The component-wise difference.
    Quaternion operator-(const Quaternion& other) const;
    // Every component negated (the same rotation).
    Quaternion operator-() const;
    // The component-wise sum.
    Quaternion operator+(const Quaternion& other) const;
    // The Hamilton product: rotates by other first, then by this.
    Quaternion operator*(const Quaternion& other) const;
    // Each component multiplied by a scalar.
    Quaternion operator*(float scalar) const;

    // The rotation from pitch x, yaw y and roll z in degrees: roll about Z
    // first, then pitch about X, then yaw about Y (q = qYaw * qPitch * qRoll).
    static Quaternion CreateFromEuler(float x, float y, float z);
    // The shortest rotation turning direction `from` into direction `to`
    // (neither needs unit length). Opposite directions give a half turn about
    // some axis perpendicular to `from`; a zero vector gives the identity.
    static Quaternion CreateFromVectors(const Vector3D& from, const Vector3D& to);

    // The x part of the rotation axis times sin(angle / 2).
    float x = 0.0f;
    // The y part of the rotation axis times sin(angle / 2).
    float y = 0.0f;
    // The z part of the rotation axis times sin(angle / 2).
    float z = 0.0f;
    // cos(angle / 2).
    float w = 1.0f;
};
}
