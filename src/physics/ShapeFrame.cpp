#include "physics/ShapeFrame.h"

#include "Components/Transform/Transform.h"

namespace ShapeFrame
{
Math::Point3D TranslatingToLocal(const Transform* transform, const Math::Point3D& point)
{
    return transform ? (point - transform->m_Position).ToPoint() : point;
}

Math::Point3D TranslatingToWorld(const Transform* transform, const Math::Point3D& point)
{
    return transform ? transform->m_Position + point.ToVector() : point;
}

Math::Point3D RotatingToLocal(const Transform* transform, const Math::Point3D& point)
{
    if (!transform)
        return point;
    const Math::Quaternion& q = transform->m_Rotation;
    const Math::Quaternion inverse(-q.x, -q.y, -q.z, q.w);
    return inverse.RotateVector(point - transform->m_Position).ToPoint();
}

Math::Point3D RotatingToWorld(const Transform* transform, const Math::Point3D& point)
{
    if (!transform)
        return point;
    return transform->m_Position + transform->m_Rotation.RotateVector(point.ToVector());
}
}
