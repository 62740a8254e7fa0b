#include "Components/Camera/Camera/ViewMatrix.h"

#include <cmath>

namespace CameraMath
{
namespace
{
bool Usable(const Math::Vector3D& v)
{
    const float lengthSquared = v.LengthSquare();
    return lengthSquared > 1e-12f && std::isfinite(lengthSquared);
}
}

Math::Matrix4 LookAlong(const Math::Point3D& eye, const Math::Vector3D& direction, const Math::Vector3D& up)
{
    Math::Vector3D back = Usable(direction) ? direction * -1.0f : Math::Vector3D(0.0f, 0.0f, 1.0f);
    back.Normalize();
    Math::Vector3D right = up.CrossProduct(back);
    if (!Usable(right))
        right = Math::Vector3D(0.0f, 0.0f, -1.0f).CrossProduct(back);
    if (!Usable(right))
        right = Math::Vector3D(1.0f, 0.0f, 0.0f);
    right.Normalize();
    const Math::Vector3D trueUp = back.CrossProduct(right);
    const Math::Vector3D e = eye.ToVector();
    return Math::Matrix4(right.x, trueUp.x, back.x, 0.0f,
                         right.y, trueUp.y, back.y, 0.0f,
                         right.z, trueUp.z, back.z, 0.0f,
                         -right.DotProduct(e), -trueUp.DotProduct(e), -back.DotProduct(e), 1.0f);
}
}
