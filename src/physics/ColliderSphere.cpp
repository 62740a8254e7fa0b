#include "physics/ColliderSphere.h"

#include <algorithm>

#include "Components/Transform/Transform.h"
#include "physics/ShapeFrame.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(ColliderSphere)
{
    DERIVE(Collider);
    DESCRIPTION("A ball of Radius times the largest component of the Transform's scale.");
    DEPENDENCY(PhysicsBody);
    MEMBER(Radius, "Radius before scaling.");
}

Meta::Data* ColliderSphere::GetMeta() const
{
    return Meta::Get<ColliderSphere>();
}

void ColliderSphere::Initialize()
{
    Collider::Initialize();
    UpdateBounds();
}

void ColliderSphere::UpdateBounds()
{
    if (!transform)
        return;
    const Math::Vector3D& scale = transform->m_Scale;
    const float largest = std::max({scale.x, scale.y, scale.z});
    if (largest != m_LargestScale)
        m_LargestScale = largest;
    const float radius = WorldRadius();
    const Math::Vector3D reach(radius, radius, radius);
    min = transform->m_Position + reach * -1.0f;
    max = transform->m_Position + reach;
    // The outline for the "Collision" debug drawing goes here once the debug stage exists.
}

Math::Point3D ColliderSphere::GetSupport(const Math::Vector3D& direction)
{
    const Math::Point3D centre = transform ? transform->m_Position : Math::Point3D();
    Math::Vector3D unit = direction;
    unit.Normalize();
    return centre + unit * WorldRadius();
}

Math::Point3D ColliderSphere::ToLocal(const Math::Point3D& point) const
{
    return ShapeFrame::RotatingToLocal(transform, point);
}

Math::Point3D ColliderSphere::ToWorld(const Math::Point3D& point) const
{
    return ShapeFrame::RotatingToWorld(transform, point);
}
