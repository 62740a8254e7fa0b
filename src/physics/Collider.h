// Collider: the component that gives a game object a shape for the physics.
// It keeps the shape's world bounds (a minimum and a maximum corner) for the
// broad phase and answers support queries (the shape's farthest point in a
// direction) for the contact tests. The base shape never collides; the shape
// classes derive from it, each with its code in `type`:
//
//   0 Collider (nothing)     1 ColliderAxisCube   2 ColliderCube
//   3 ColliderSphere         4 ColliderArc        6 ColliderPlane
//
// At Initialize a collider finds its object's Transform, joins the cube tree
// and the collider list of its space's PhysicsSystem, and its shape computes
// its bounds once; a plane joins the system's plane list instead and has no
// bounds. Uninitialize leaves them again. Every shape depends on PhysicsBody,
// which the physics looks up on the same object for each contact.
#pragma once

#include <cstdint>

#include "engine/Component.h"
#include "engine/Math/Point3D.h"

class Transform;

class Collider : public Component
{
public:
    // Shape codes, as stored in `type`.
    enum Shape : int32_t
    {
        BaseShape = 0,
        AxisCubeShape = 1,
        CubeShape = 2,
        SphereShape = 3,
        ArcShape = 4,
        PlaneShape = 6,
    };

    // A base collider: both corners at the origin, code 0.
    Collider() = default;
    // Finds the Transform, joins the space's cube tree and collider list.
    void Initialize() override;
    // Leaves the cube tree and the collider list.
    void Uninitialize() override;
    Component* Clone() const override { return new Collider(*this); }
    Meta::Data* GetMeta() const override;

    // Recomputes min and max from the shape and its transform; the base keeps them as they are.
    virtual void UpdateBounds() {}
    // The shape's farthest point along `direction` in world space; the base answers the origin.
    virtual Math::Point3D GetSupport(const Math::Vector3D& direction);
    // A world point in the shape's own frame; the base answers the origin.
    virtual Math::Point3D ToLocal(const Math::Point3D& point) const;
    // A point of the shape's own frame in world space; the base answers the origin.
    virtual Math::Point3D ToWorld(const Math::Point3D& point) const;

    // The owner's Transform, found at Initialize; not owned.
    Transform* transform = nullptr;
    // Minimum corner of the world bounds.
    Math::Point3D min;
    // Maximum corner of the world bounds.
    Math::Point3D max;
    // The shape code (see Shape).
    int32_t type = BaseShape;
    // Set once the narrow phase has logged this collider for NaN or infinite values, so it is logged once.
    bool m_NonFiniteReported = false;

protected:
    // A copy for Clone: the values, without owner or membership.
    Collider(const Collider& other) : Component(), transform(other.transform), min(other.min), max(other.max), type(other.type) {}

private:
    // True while the collider is in its system's tree and list.
    bool m_Joined = false;
};
