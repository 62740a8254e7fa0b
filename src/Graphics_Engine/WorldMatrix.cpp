#include "Graphics_Engine/WorldMatrix.h"

namespace Graphics
{
Math::Matrix4 RotationMatrix(const Math::Quaternion& q)
{
    const float x = q.x, y = q.y, z = q.z, w = q.w;
    // The column-vector matrix transposed: row i holds column i of the usual formula.
    return Math::Matrix4(1.0f - 2.0f * (y * y + z * z), 2.0f * (x * y + w * z), 2.0f * (x * z - w * y), 0.0f,
                         2.0f * (x * y - w * z), 1.0f - 2.0f * (x * x + z * z), 2.0f * (y * z + w * x), 0.0f,
                         2.0f * (x * z + w * y), 2.0f * (y * z - w * x), 1.0f - 2.0f * (x * x + y * y), 0.0f,
                         0.0f, 0.0f, 0.0f, 1.0f);
}

Math::Matrix4 MakeWorldMatrix(const Math::Point3D& position, const Math::Vector3D& scale,
                              const Math::Quaternion& rotation)
{
    Math::Matrix4 world = RotationMatrix(rotation);
    const float s[3] = {scale.x, scale.y, scale.z};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            world.m[row][column] *= s[row];
    world.m[3][0] = position.x;
    world.m[3][1] = position.y;
    world.m[3][2] = position.z;
    return world;
}
}
