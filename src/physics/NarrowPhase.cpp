// The dispatch over shape codes, the closed tests of the simple pairs and the
// plane test. Each closed test leaves a unit normal from A towards B; a zero
// normal (centres that coincide) falls back to (1, 0, 0). Every other pair
// goes to the general convex test. A pair with a NaN or infinite position,
// scale or rotation, or whose test comes out non-finite, is no contact and is
// logged, naming the owners, the first time each collider takes part in one.
#include "physics/NarrowPhase.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "Components/Transform/Transform.h"
#include "engine/GameObject.h"
#include "engine/Log.h"
#include "physics/ColliderAxisCube.h"
#include "physics/ColliderCube.h"
#include "physics/ColliderPlane.h"
#include "physics/ColliderSphere.h"
#include "physics/Contact.h"
#include "physics/ConvexTest.h"

namespace
{
// Per-component tolerance of the sphere-and-cube tests.
constexpr float kTolerance = 0.0001f;

bool IsFinite(const Math::Vector3D& v)
{
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// True when the collider's Transform (if any) holds only finite numbers.
bool HasFinitePlacement(const Collider& collider)
{
    const Transform* t = collider.transform;
    if (!t)
        return true;
    const Math::Quaternion& q = t->m_Rotation;
    return IsFinite(t->m_Position.ToVector()) && IsFinite(t->m_Scale) && std::isfinite(q.x) && std::isfinite(q.y) &&
           std::isfinite(q.z) && std::isfinite(q.w);
}

// True when the sizes the closed tests read (a sphere's radius, a box's half size) are finite numbers.
bool HasFiniteSize(const Collider& collider)
{
    switch (collider.type)
    {
    case Collider::SphereShape:
        return std::isfinite(static_cast<const ColliderSphere&>(collider).WorldRadius());
    case Collider::AxisCubeShape:
        return IsFinite(static_cast<const ColliderAxisCube&>(collider).HalfSize());
    case Collider::CubeShape:
        return IsFinite(static_cast<const ColliderCube&>(collider).HalfSize());
    default:
        return true;
    }
}

std::string OwnerName(const Collider& collider)
{
    return collider.m_Owner ? "\"" + collider.m_Owner->GetName() + "\"" : std::string("(no object)");
}

// Logs a pair with non-finite values, unless both colliders were named in such a report already.
void ReportNonFinite(Collider& a, Collider& b)
{
    if (a.m_NonFiniteReported && b.m_NonFiniteReported)
        return;
    a.m_NonFiniteReported = b.m_NonFiniteReported = true;
    LOG("WARNING", "Collision test skipped: NaN or infinite position, scale, rotation or size in the colliders of " +
                       OwnerName(a) + " and " + OwnerName(b));
}

// The normal with a zero vector (exactly) replaced by (1, 0, 0).
void FallBackFromZero(Math::Vector3D& normal)
{
    if (normal.x == 0.0f && normal.y == 0.0f && normal.z == 0.0f)
        normal.x = 1.0f;
}

// The normal with a vector within the tolerance of zero replaced by (1, 0, 0).
void FallBackFromNearZero(Math::Vector3D& normal)
{
    if (std::fabs(normal.x) <= kTolerance && std::fabs(normal.y) <= kTolerance && std::fabs(normal.z) <= kTolerance)
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

// Two world-aligned boxes touch when they overlap on every axis (a zero overlap does not count); the
// normal is the axis of least overlap, the earlier axis on ties.
bool AxisCubePair(Contact& contact, const ColliderAxisCube& a, const ColliderAxisCube& b)
{
    const Math::Vector3D d = CentreOf(b) - CentreOf(a);
    const Math::Vector3D halfA = a.HalfSize();
    const Math::Vector3D halfB = b.HalfSize();
    const float overlapX = halfA.x + halfB.x - std::fabs(d.x);
    const float overlapY = halfA.y + halfB.y - std::fabs(d.y);
    const float overlapZ = halfA.z + halfB.z - std::fabs(d.z);
    if (!(overlapX > 0.0f) || !(overlapY > 0.0f) || !(overlapZ > 0.0f))
        return false;
    Math::Vector3D normal(d.x, 0.0f, 0.0f);
    float depth = overlapX;
    if (depth > overlapY)
    {
        normal = Math::Vector3D(0.0f, d.y, 0.0f);
        depth = overlapY;
    }
    if (depth > overlapZ)
    {
        normal = Math::Vector3D(0.0f, 0.0f, d.z);
        depth = overlapZ;
    }
    normal.Normalize();
    FallBackFromZero(normal);
    contact.normal = normal;
    contact.penetration = depth;
    return true;
}

// A box and a sphere. The sphere's centre and the box are given in one frame: the world for the axis cube
// (the box centred on the cube's position), the cube's own frame for the turned cube (centred on zero),
// which `rotation` turns back to the world. When the centre is inside the box, the face it is pushed
// through is chosen by comparing the clamped coordinate with the cube's world position, in either frame:
// for a turned cube away from the origin that picks the same face side whatever the centre's side.
bool BoxSphere(Contact& contact, const Math::Vector3D& boxCentre, const Math::Vector3D& half,
               const Math::Vector3D& cubeWorldPosition, const Math::Quaternion* rotation,
               const Math::Vector3D& sphereCentre, float radius)
{
    const Math::Vector3D d = sphereCentre - boxCentre;
    const Math::Vector3D low = boxCentre - half;
    const Math::Vector3D high = boxCentre + half;
    Math::Vector3D c(std::clamp(sphereCentre.x, low.x, high.x), std::clamp(sphereCentre.y, low.y, high.y),
                     std::clamp(sphereCentre.z, low.z, high.z));
    const bool outside = std::fabs(c.x - sphereCentre.x) > kTolerance || std::fabs(c.y - sphereCentre.y) > kTolerance ||
                         std::fabs(c.z - sphereCentre.z) > kTolerance;
    Math::Vector3D normal;
    if (!outside)
    {
        const float toX = half.x - std::fabs(d.x);
        const float toY = half.y - std::fabs(d.y);
        const float toZ = half.z - std::fabs(d.z);
        if (toX <= toY && toX <= toZ)
        {
            c.x = c.x > cubeWorldPosition.x ? high.x : low.x;
            normal = Math::Vector3D(d.x, 0.0f, 0.0f);
        }
        else if (toZ <= toX && toZ <= toY)
        {
            c.z = c.z > cubeWorldPosition.z ? high.z : low.z;
            normal = Math::Vector3D(0.0f, 0.0f, d.z);
        }
        else
        {
            c.y = c.y > cubeWorldPosition.y ? high.y : low.y;
            normal = Math::Vector3D(0.0f, d.y, 0.0f);
        }
    }
    const Math::Vector3D delta = sphereCentre - c;
    const float dist = delta.Length();
    if (outside)
    {
        if (dist > radius)
            return false;
        normal = delta;
        contact.penetration = radius - dist;
    }
    else
    {
        contact.penetration = dist + radius;
    }
    if (rotation)
        normal = rotation->RotateVector(normal);
    FallBackFromNearZero(normal);
    if (contact.swapped)
        normal = normal * -1.0f;
    normal.Normalize();
    contact.normal = normal;
    return true;
}

bool AxisCubeSphere(Contact& contact, const ColliderAxisCube& cube, const ColliderSphere& sphere)
{
    const Math::Vector3D position = CentreOf(cube).ToVector();
    return BoxSphere(contact, position, cube.HalfSize(), position, nullptr, CentreOf(sphere).ToVector(),
                     sphere.WorldRadius());
}

bool CubeSphere(Contact& contact, const ColliderCube& cube, const ColliderSphere& sphere)
{
    const Math::Quaternion rotation = cube.transform ? cube.transform->m_Rotation : Math::Quaternion();
    const Math::Quaternion inverse(-rotation.x, -rotation.y, -rotation.z, rotation.w);
    const Math::Vector3D local = inverse.RotateVector(CentreOf(sphere) - CentreOf(cube));
    return BoxSphere(contact, Math::Vector3D(), cube.HalfSize(), CentreOf(cube).ToVector(), &rotation, local,
                     sphere.WorldRadius());
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

// The rules of the dispatch, in their order.
bool Dispatch(Contact& contact, Collider& a, Collider& b)
{
    const int32_t ta = a.type;
    const int32_t tb = b.type;
    if (ta == Collider::PlaneShape)
        return tb != Collider::PlaneShape && PlaneTest(contact, static_cast<ColliderPlane&>(a), b);
    if (tb == Collider::PlaneShape)
    {
        contact.swapped = true;
        return PlaneTest(contact, static_cast<ColliderPlane&>(b), a);
    }
    if (ta == Collider::AxisCubeShape)
    {
        if (tb == Collider::AxisCubeShape)
            return AxisCubePair(contact, static_cast<ColliderAxisCube&>(a), static_cast<ColliderAxisCube&>(b));
        if (tb == Collider::SphereShape)
            return AxisCubeSphere(contact, static_cast<ColliderAxisCube&>(a), static_cast<ColliderSphere&>(b));
    }
    else if (ta == Collider::SphereShape)
    {
        if (tb == Collider::SphereShape)
            return SpherePair(contact, static_cast<ColliderSphere&>(a), static_cast<ColliderSphere&>(b));
        if (tb == Collider::AxisCubeShape)
        {
            contact.swapped = true;
            return AxisCubeSphere(contact, static_cast<ColliderAxisCube&>(b), static_cast<ColliderSphere&>(a));
        }
        if (tb == Collider::CubeShape)
        {
            contact.swapped = true;
            return CubeSphere(contact, static_cast<ColliderCube&>(b), static_cast<ColliderSphere&>(a));
        }
    }
    else if (ta == Collider::CubeShape && tb == Collider::SphereShape)
    {
        return CubeSphere(contact, static_cast<ColliderCube&>(a), static_cast<ColliderSphere&>(b));
    }
    else if (ta == Collider::BaseShape)
    {
        return false;
    }
    if (tb == Collider::BaseShape)
        return false;
    ConvexTest::Stats stats;
    const bool touching = ConvexTest::Collide(a, b, contact.normal, contact.penetration, &stats);
    if (stats.nonFinite)
        ReportNonFinite(a, b);
    return touching;
}
}

namespace NarrowPhase
{
bool Collide(Contact& contact)
{
    Collider& a = *contact.colliderA;
    Collider& b = *contact.colliderB;
    if (!HasFinitePlacement(a) || !HasFinitePlacement(b) || !HasFiniteSize(a) || !HasFiniteSize(b))
    {
        ReportNonFinite(a, b);
        return false;
    }
    if (!Dispatch(contact, a, b))
        return false;
    if (!IsFinite(contact.normal) || !std::isfinite(contact.penetration))
    {
        ReportNonFinite(a, b);
        return false;
    }
    return true;
}
}
