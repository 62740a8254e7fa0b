#include "physics/NarrowPhase.h"

#include "Components/Transform/Transform.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/Contact.h"

namespace
{
// The normal with a zero vector replaced by (1, 0, 0).
void FallBackFromZero(Math::Vector3D& normal)
{
    if (normal.x == 0.0f && normal.y == 0.0f && normal.z == 0.0f)
        normal.x = 1.0f;
}

Math::Point3D CentreOf(const Collider& collider)
{
    return collider.transform ? collider.transform->m_Position : Math::Point3D();
}

// Two spheres touch when their centres are no farther apart than the sum of the radii.
bool SpherePair(Contact& contact, const ColliderSphere& a, const ColliderSphere& b)
{
    const float reach = a.WorldRadius() + b.WorldRadius();
    const Math::Vector3D between = CentreOf(b) - CentreOf(a);
    if (between.LengthSquare() > reach * reach)
        return false;
    contact.normal = between;
    contact.normal.Normalize();
    FallBackFromZero(contact.normal);
    contact.penetration = reach - between.Length();
    return true;
}

// The other shape touches the plane when its deepest point along -normal is not in front of it.
bool PlaneTest(Contact& contact, const ColliderPlane& plane, Collider& other)
{
    const Math::Vector3D& normal = plane.GetNormal();
    const Math::Point3D deepest = other.GetSupport(normal * -1.0f);
    const float distance = (deepest - plane.PlanePoint()).DotProduct(normal);
    if (distance > 0.0f)
        return false;
    contact.normal = contact.swapped ? normal * -1.0f : normal;
    contact.penetration = -distance;
    return true;
}
}

namespace NarrowPhase
{
bool Collide(Contact& contact)
{
    Collider& a = *contact.colliderA;
    Collider& b = *contact.colliderB;
    if (a.type == Collider::PlaneShape)
        return b.type != Collider::PlaneShape && PlaneTest(contact, static_cast<ColliderPlane&>(a), b);
    if (b.type == Collider::PlaneShape)
    {
        contact.swapped = true;
        return PlaneTest(contact, static_cast<ColliderPlane&>(b), a);
    }
    if (a.type == Collider::SphereShape && b.type == Collider::SphereShape)
        return SpherePair(contact, static_cast<ColliderSphere&>(a), static_cast<ColliderSphere&>(b));
    // The cubes, the arc and the general convex test are not built yet: no other pair touches.
    return false;
}
}
