#include "physics/ColliderPlane.h"

#include "Components/Transform/Transform.h"
#include "physics/ShapeFrame.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(ColliderPlane)
{
    DERIVE(Collider);
    DESCRIPTION("An infinite one-sided plane through the Transform's position plus Offset, facing Normal.");
    DEPENDENCY(PhysicsBody);
    PROPERTY(Normal, GetNormal, SetNormal, "The direction the plane faces; normalised when set.");
    PROPERTY(Offset, GetOffset, SetOffset, "Offset of the plane point from the Transform's position.");
}

Meta::Data* ColliderPlane::GetMeta() const
{
    return Meta::Get<ColliderPlane>();
}

void ColliderPlane::SetNormal(const Math::Vector3D& normal)
{
    Normal = normal;
    Normal.Normalize();
}

Math::Point3D ColliderPlane::PlanePoint() const
{
    const Math::Point3D origin = transform ? transform->m_Position : Math::Point3D();
    return origin + Offset;
}

Math::Point3D ColliderPlane::GetSupport(const Math::Vector3D&)
{
    return PlanePoint();
}

Math::Point3D ColliderPlane::ToLocal(const Math::Point3D& point) const
{
    return ShapeFrame::TranslatingToLocal(transform, point);
}

Math::Point3D ColliderPlane::ToWorld(const Math::Point3D& point) const
{
    return ShapeFrame::TranslatingToWorld(transform, point);
}
