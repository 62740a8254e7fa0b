#include "Graphics_Engine/Frustum.h"

#include <cmath>

namespace Graphics
{
namespace
{
// Builds a plane from four coefficients, normalised by the length of the first three.
Plane MakePlane(float a, float b, float c, float d)
{
    const float length = std::sqrt(a * a + b * b + c * c);
    const float scale = length > 0.0f ? 1.0f / length : 1.0f;
    Plane plane;
    plane.Normal = Math::Vector3D(a * scale, b * scale, c * scale);
    plane.D = d * scale;
    return plane;
}
}

Frustum::Frustum(const Math::Matrix4& viewProjection) : m_Valid(true)
{
    const auto& m = viewProjection.m;
    for (int k = 0; k < 3; ++k)
    {
        m_Planes[k] = MakePlane(m[0][k] - m[0][3], m[1][k] - m[1][3], m[2][k] - m[2][3], m[3][k] - m[3][3]);
        m_Planes[k + 3] =
            MakePlane(-m[0][3] - m[0][k], -m[1][3] - m[1][k], -m[2][3] - m[2][k], -m[3][3] - m[3][k]);
    }
}

bool Frustum::IsBoxOutside(const Math::Point3D& center, const Math::Vector3D& halfSize) const
{
    if (!m_Valid)
        return false;
    for (const Plane& plane : m_Planes)
    {
        // The corner furthest to the negative side: against the normal on every axis.
        const float x = center.x + (plane.Normal.x > 0.0f ? -halfSize.x : halfSize.x);
        const float y = center.y + (plane.Normal.y > 0.0f ? -halfSize.y : halfSize.y);
        const float z = center.z + (plane.Normal.z > 0.0f ? -halfSize.z : halfSize.z);
        if (plane.Normal.x * x + plane.Normal.y * y + plane.Normal.z * z + plane.D > 0.0f)
            return true;
    }
    return false;
}
}
