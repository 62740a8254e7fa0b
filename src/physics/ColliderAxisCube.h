// ColliderAxisCube: a box of Dimensions times the Transform's scale that
// stays lined up with the world axes whatever the Transform's rotation says:
// its bounds, its support points and its frame all ignore the rotation. Its
// eight corners are kept in scaled object space and rebuilt when the scale
// moves by more than 0.0001 on some axis or when Dimensions is set. Each box
// picks a random debug colour at Initialize.
#pragma once

#include <vector>

#include "engine/Math/Vector3D.h"
#include "physics/Collider.h"

class ColliderAxisCube : public Collider
{
public:
    // A unit box.
    ColliderAxisCube();
    // Joins the system as every collider does, computes its bounds and picks its debug colour.
    void Initialize() override;
    Component* Clone() const override { return new ColliderAxisCube(*this); }
    Meta::Data* GetMeta() const override;

    // Refreshes the cached scale and the corners if needed; the bounds are the unrotated box around the position.
    void UpdateBounds() override;
    // The corner farthest along `direction`, unrotated, plus the position.
    Math::Point3D GetSupport(const Math::Vector3D& direction) override;
    // The point relative to the Transform's position (no rotation).
    Math::Point3D ToLocal(const Math::Point3D& point) const override;
    // The point offset by the Transform's position (no rotation).
    Math::Point3D ToWorld(const Math::Point3D& point) const override;

    // The box's size before scaling.
    const Math::Vector3D& GetDimensions() const { return Dimensions; }
    // Sets the size and rebuilds the corners.
    void SetDimensions(const Math::Vector3D& dimensions);
    // Half the box's extent on each axis in world units: Dimensions times the cached scale, halved.
    Math::Vector3D HalfSize() const;

    // The Transform's scale the corners were built with.
    Math::Vector3D m_Scale{1.0f, 1.0f, 1.0f};
    // The box's size before scaling.
    Math::Vector3D Dimensions{1.0f, 1.0f, 1.0f};
    // The corners in scaled object space, the all-plus corner first.
    std::vector<Math::Vector3D> m_Vertices;
    // Where the next support search starts.
    unsigned m_SupportStart = 0;
    // The outline's colour in debug drawing, red, green and blue.
    float m_DebugColor[3] = {1.0f, 1.0f, 1.0f};

private:
    ColliderAxisCube(const ColliderAxisCube& other);
};
