#include "Graphics_Engine/Components/MeshMatrices.h"

#include "Components/Transform/Transform.h"

namespace Graphics
{
Math::Matrix4 RotationMatrix(const Math::Quaternion& rotation)
{
    Math::Quaternion unit = rotation;
    const float length = unit.Length();
    if (!(length > 0.0f))
        return Math::Matrix4();
    unit = unit * (1.0f / length);
    const Math::Vector3D x = unit.RotateVector(Math::Vector3D(1.0f, 0.0f, 0.0f));
    const Math::Vector3D y = unit.RotateVector(Math::Vector3D(0.0f, 1.0f, 0.0f));
    const Math::Vector3D z = unit.RotateVector(Math::Vector3D(0.0f, 0.0f, 1.0f));
    return Math::Matrix4(x.x, x.y, x.z, 0.0f, y.x, y.y, y.z, 0.0f, z.x, z.y, z.z, 0.0f, 0.0f, 0.0f, 0.0f, 1.0f);
}

Math::Matrix4 WorldMatrix(const Math::Point3D& position, const Math::Vector3D& scale,
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

Math::Matrix4 WorldMatrix(const Transform& transform)
{
    const Math::Point3D at(transform.m_Position.x + transform.m_Offset.x, transform.m_Position.y + transform.m_Offset.y,
                           transform.m_Position.z + transform.m_Offset.z);
    return WorldMatrix(at, transform.m_Scale, transform.m_Rotation);
}
}
