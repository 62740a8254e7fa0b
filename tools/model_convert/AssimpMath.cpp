#include "model_convert/AssimpMath.h"

// The definitions of the vector and matrix members; the headers alone leave them undefined, which
// only the unoptimised build gets away with.
#include <assimp/matrix4x4.inl>
#include <assimp/vector3.inl>

namespace ModelTools
{
Math::Matrix4 ToEngine(const aiMatrix4x4& matrix)
{
    // assimp's rows a, b, c, d become the engine's columns.
    const aiMatrix4x4& a = matrix;
    return Math::Matrix4(a.a1, a.b1, a.c1, a.d1, a.a2, a.b2, a.c2, a.d2, a.a3, a.b3, a.c3, a.d3, a.a4, a.b4, a.c4, a.d4);
}

aiVector3D TransformPoint(const aiVector3D& point, const Math::Matrix4& transform)
{
    const float in[4] = {point.x, point.y, point.z, 1.0f};
    float out[4] = {};
    transform.TransformRow(in, out);
    return aiVector3D(out[0], out[1], out[2]);
}

aiVector3D TransformDirection(const aiVector3D& direction, const Math::Matrix4& transform)
{
    const float in[4] = {direction.x, direction.y, direction.z, 0.0f};
    float out[4] = {};
    transform.TransformRow(in, out);
    return aiVector3D(out[0], out[1], out[2]);
}

aiVector3D TransformNormal(const aiVector3D& normal, const Math::Matrix4& transform)
{
    // Row vector times the inverse transpose: n'_j = sum_i n_i inverse[j][i].
    const Math::Matrix4 inverse = transform.Inverse();
    aiVector3D result;
    for (int j = 0; j < 3; ++j)
        result[j] = normal.x * inverse.m[j][0] + normal.y * inverse.m[j][1] + normal.z * inverse.m[j][2];
    return result.Length() > 0.0f ? result.Normalize() : result;
}

float LinearDeterminant(const Math::Matrix4& t)
{
    const auto& m = t.m;
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

bool IsIdentity(const Math::Matrix4& transform, float tolerance)
{
    return transform.NearlyEquals(Math::Matrix4::Identity(), tolerance);
}
}
