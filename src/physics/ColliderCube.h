// ColliderCube: a box of Dimensions times the Transform's scale, turned by
// the Transform's rotation. Its eight corners are kept in scaled object space
// and rebuilt when the scale moves by more than 0.0001 on some axis or when
// Dimensions is set; its bounds and support points turn them by the rotation.
#pragma once

#include <vector>

#include "engine/Math/Vector3D.h"
#include "physics/Collider.h"
#include "physics/ShapeVertices.h"

class ColliderCube : public Collider
{
public:
    // A unit box.
    ColliderCube();
    // Joins the system as every collider does, then computes its bounds.
    void Initialize() override;
    Component* Clone() const override { return new ColliderCube(*this); }
    Meta::Data* GetMeta() const override;

    // Refreshes the cached scale and the corners if needed; the bounds hold the turned corners and the position.
    void UpdateBounds() override;
    // The turned corner farthest along `direction`, plus the position.
    Math::Point3D GetSupport(const Math::Vector3D& direction) override;
    // The point in the box's rotated frame.
    Math::Point3D ToLocal(const Math::Point3D& point) const override;
    // A point of the box's rotated frame in world space.
    Math::Point3D ToWorld(const Math::Point3D& point) const override;

    // The box's size before scaling.
    const Math::Vector3D& GetDimensions() const { return Dimensions; }
    // Sets the size and rebuilds the corners.
    void SetDimensions(const Math::Vector3D& dimensions);
    // Half the box's extent on each of its own axes: Dimensions times the cached scale, halved.
    Math::Vector3D HalfSize() const;

    // The Transform's scale the corners were built with.
    Math::Vector3D m_Scale{1.0f, 1.0f, 1.0f};
    // The box's size before scaling.
    Math::Vector3D Dimensions{1.0f, 1.0f, 1.0f};
    // The corners in scaled object space, the all-plus corner first.
    std::vector<Math::Vector3D> m_Vertices;
    // Where the next support search starts.
    unsigned m_SupportStart = 0;
    // The corners turned by the rotation they were last turned by.
    ShapeVertices::TurnedVertices m_Turned;

private:
    ColliderCube(const ColliderCube& other)
        : Collider(other), m_Scale(other.m_Scale), Dimensions(other.Dimensions), m_Vertices(other.m_Vertices),
          m_SupportStart(other.m_SupportStart), m_Turned(other.m_Turned)
    {
    }
};
