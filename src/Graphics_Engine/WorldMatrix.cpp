#include "Graphics_Engine/WorldMatrix.h"

#include "Components/Transform/Transform.h"

namespace Graphics
{
Math::Matrix4 RotationMatrix(const Math::Quaternion& rotation)
{
    const float lengthSquared = rotation.x * rotation.x + rotation.y * rotation.y + rotation.z * rotation.z +
                                rotation.w * rotation.w;
    if (!(lengthSquared > 0.0f))
        return Math::Matrix4();
    // 2 / |q|^2 folds the normalisation into the usual formula.
    const float s = 2.0f / lengthSquared;
    const float x = rotation.x, y = rotation.y, z = rotation.z, w = rotation.w;
    // The column-vector matrix transposed: row i is the rotated axis i.
    return Math::Matrix4(1.0f - s * (y * y + z * z), s * (x * y + w * z), s * (x * z - w * y), 0.0f,
                         s * (x * y - w * z), 1.0f - s * (x * x + z * z), s * (y * z + w * x), 0.0f,
                         s * (x * z + w * y), s * (y * z - w * x), 1.0f - s * (x * x + y * y), 0.0f,
                         0.0f, 0.0f, 0.0f, 1.0f);
}

Math::Matrix4 MakeWorldMatrix(const Math::Point3D& position, const Math::Vector3D& scale,
                              const Math::Quaternion& rotation)
{
    Math::Matrix4 world = RotationMatrix(rotation);
    const float factors[3] = {scale.x, scale.y, scale.z};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            world.m[row][column] *= factors[row];
    world.m[3][0] = position.x;
    world.m[3][1] = position.y;
    world.m[3][2] = position.z;
    return world;
}

Math::Matrix4 MakeWorldMatrix(const Transform& transform)
{
    const Math::Point3D at(transform.m_Position.x + transform.m_Offset.x, transform.m_Position.y + transform.m_Offset.y,
                           transform.m_Position.z + transform.m_Offset.z);
    return MakeWorldMatrix(at, transform.m_Scale, transform.m_Rotation);
}
}
