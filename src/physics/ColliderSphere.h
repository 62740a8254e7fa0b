// ColliderSphere: a ball of Radius times the largest component of the
// Transform's scale, centred on the Transform's position. Its bounds are the
// cube around the ball; its support point is the centre plus the direction
// scaled to the world radius.
#pragma once

#include "physics/Collider.h"

class ColliderSphere : public Collider
{
public:
    // A sphere of radius 1.
    ColliderSphere() { type = SphereShape; }
    // Joins the system as every collider does, then computes its bounds.
    void Initialize() override;
    Component* Clone() const override { return new ColliderSphere(*this); }
    Meta::Data* GetMeta() const override;

    // Takes the largest scale component and sets the bounds around the centre.
    void UpdateBounds() override;
    // The centre plus the normalised direction times the world radius; the centre for a zero direction.
    Math::Point3D GetSupport(const Math::Vector3D& direction) override;
    // The point in the sphere's rotated frame.
    Math::Point3D ToLocal(const Math::Point3D& point) const override;
    // A point of the sphere's rotated frame in world space.
    Math::Point3D ToWorld(const Math::Point3D& point) const override;
    // Radius times the cached largest scale.
    float WorldRadius() const { return Radius * m_LargestScale; }

    // Radius before scaling.
    float Radius = 1.0f;
    // The largest component of the Transform's scale at the last UpdateBounds.
    float m_LargestScale = 1.0f;

private:
    ColliderSphere(const ColliderSphere& other) : Collider(other), Radius(other.Radius), m_LargestScale(other.m_LargestScale) {}
};
