#include "Graphics_Engine/Model/Skeleton.h"

#include <cmath>

namespace Graphics
{
Math::Quaternion RotationOf(const Math::Matrix4& matrix)
{
    // r[i][j]: the rotation part, row by row, scale removed. For row vectors, v * r turns v as the
    // column-vector matrix r transposed does, so the usual formulas read r[j][i] for m[i][j].
    float r[3][3];
    for (int i = 0; i < 3; ++i)
    {
        const float length = std::sqrt(matrix.m[i][0] * matrix.m[i][0] + matrix.m[i][1] * matrix.m[i][1] +
                                       matrix.m[i][2] * matrix.m[i][2]);
        for (int j = 0; j < 3; ++j)
            r[i][j] = length > 0.0f ? matrix.m[i][j] / length : (i == j ? 1.0f : 0.0f);
    }
    const float trace = r[0][0] + r[1][1] + r[2][2];
    float x, y, z, w;
    if (trace > 0.0f)
    {
        const float s = std::sqrt(trace + 1.0f) * 2.0f;
        w = 0.25f * s;
        x = (r[1][2] - r[2][1]) / s;
        y = (r[2][0] - r[0][2]) / s;
        z = (r[0][1] - r[1][0]) / s;
    }
    else if (r[0][0] > r[1][1] && r[0][0] > r[2][2])
    {
        const float s = std::sqrt(1.0f + r[0][0] - r[1][1] - r[2][2]) * 2.0f;
        w = (r[1][2] - r[2][1]) / s;
        x = 0.25f * s;
        y = (r[1][0] + r[0][1]) / s;
        z = (r[2][0] + r[0][2]) / s;
    }
    else if (r[1][1] > r[2][2])
    {
        const float s = std::sqrt(1.0f + r[1][1] - r[0][0] - r[2][2]) * 2.0f;
        w = (r[2][0] - r[0][2]) / s;
        x = (r[1][0] + r[0][1]) / s;
        y = 0.25f * s;
        z = (r[2][1] + r[1][2]) / s;
    }
    else
    {
        const float s = std::sqrt(1.0f + r[2][2] - r[0][0] - r[1][1]) * 2.0f;
        w = (r[0][1] - r[1][0]) / s;
        x = (r[2][0] + r[0][2]) / s;
        y = (r[2][1] + r[1][2]) / s;
        z = 0.25f * s;
    }
    return Math::Quaternion(x, y, z, w);
}

void BuildBones(const std::vector<ModelFileBone>& fileBones, std::vector<Bone>& bones)
{
    bones.clear();
    bones.resize(fileBones.size());
    for (std::size_t i = 0; i < fileBones.size(); ++i)
    {
        const ModelFileBone& source = fileBones[i];
        Bone& bone = bones[i];
        bone.Name = source.Name;
        bone.OffsetMatrix = source.OffsetMatrix;
        const bool hasParent = source.ParentIndex >= 0 && static_cast<std::size_t>(source.ParentIndex) < i;
        bone.Parent = hasParent ? &bones[static_cast<std::size_t>(source.ParentIndex)] : nullptr;

        // The bone's space into its parent's, at rest: out of the bone into model space (the
        // inverse offset), then into the parent's space (the parent's offset).
        Math::Matrix4 local = source.OffsetMatrix.Inverse();
        if (bone.Parent)
            local = local * bone.Parent->OffsetMatrix;
        bone.RestPosition = Math::Point3D(local.m[3][0], local.m[3][1], local.m[3][2]);
        bone.RestRotation = RotationOf(local);
        bone.LocalPosition = bone.RestPosition;
        bone.LocalRotation = bone.RestRotation;
    }
    // Children are linked once every bone stands at its final address.
    for (Bone& bone : bones)
        if (bone.Parent)
            bone.Parent->Children.push_back(&bone);
}
}
