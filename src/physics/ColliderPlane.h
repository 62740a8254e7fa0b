// ColliderPlane: an infinite one-sided plane, for floors. Its point is the
// Transform's position plus Offset; Normal points out of the solid side and is
// normalised when set. A plane has no bounds and no leaf in the cube tree: the
// physics pairs every other collider with every plane, and a shape reaching
// behind the plane, however far, touches it. Two planes never touch.
#pragma once

#include "engine/Math/Vector3D.h"
#include "physics/Collider.h"

class ColliderPlane : public Collider
{
public:
    // A plane with a zero normal through the Transform's position.
    ColliderPlane() { type = PlaneShape; }
    // Finds the Transform and joins the space's plane list.
    void Initialize() override;
    // Leaves the plane list.
    void Uninitialize() override;
    Component* Clone() const override { return new ColliderPlane(*this); }
    Meta::Data* GetMeta() const override;

    // The plane point, whatever the direction.
    Math::Point3D GetSupport(const Math::Vector3D& direction) override;
    // The point relative to the Transform's position.
    Math::Point3D ToLocal(const Math::Point3D& point) const override;
    // The point offset by the Transform's position.
    Math::Point3D ToWorld(const Math::Point3D& point) const override;

    // The normal, unit length or zero.
    const Math::Vector3D& GetNormal() const { return Normal; }
    // Sets the normal, normalised (a zero vector stays zero).
    void SetNormal(const Math::Vector3D& normal);
    // The plane point's offset from the Transform's position.
    const Math::Vector3D& GetOffset() const { return Offset; }
    // Sets the offset as given.
    void SetOffset(const Math::Vector3D& offset) { Offset = offset; }
    // The Transform's position plus Offset (Offset alone without a Transform).
    Math::Point3D PlanePoint() const;

    // Offset of the plane point from the Transform's position.
    Math::Vector3D Offset;
    // The direction the plane faces.
    Math::Vector3D Normal;

private:
    ColliderPlane(const ColliderPlane& other) : Collider(other), Offset(other.Offset), Normal(other.Normal) {}
    // True while the plane is in its system's plane list.
    bool m_InPlanes = false;
};
