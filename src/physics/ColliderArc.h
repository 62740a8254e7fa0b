// ColliderArc: a slice of a ring or disc, swept along y, for sword swings and
// fans. BuildArc lays out its vertices: five points on the outer circle over
// the arc's angle, closed by the centre (a pie slice) or by the two ends of
// the inner circle, each point once at the top and once at the bottom. The
// general contact test treats the vertices as a convex hull, turned by the
// Transform's rotation; the Transform's scale does not apply to an arc. An
// arc with no vertices acts as a point at the world origin.
#pragma once

#include <vector>

#include "engine/Math/Vector3D.h"
#include "physics/Collider.h"
#include "physics/ShapeVertices.h"

class ColliderArc : public Collider
{
public:
    // An arc with no vertices.
    ColliderArc() { type = ArcShape; }
    // Joins the system as every collider does, then computes its bounds.
    void Initialize() override;
    Component* Clone() const override { return new ColliderArc(*this); }
    Meta::Data* GetMeta() const override;

    // The bounds hold the turned vertices and the position.
    void UpdateBounds() override;
    // The turned vertex farthest along `direction`, plus the position; the world origin without vertices.
    Math::Point3D GetSupport(const Math::Vector3D& direction) override;
    // The point in the arc's rotated frame.
    Math::Point3D ToLocal(const Math::Point3D& point) const override;
    // A point of the arc's rotated frame in world space.
    Math::Point3D ToWorld(const Math::Point3D& point) const override;

    // Replaces the vertices with an arc of `angle` degrees around the x axis between the radii, `height` tall.
    // An angle above 180 becomes 180 with no inner radius (a half disc), one below 0 becomes 0, and radii
    // given the wrong way round are exchanged.
    void BuildArc(float angle, float outerRadius, float innerRadius, float height);

    // The vertices in object space, each upper point followed by its lower twin.
    std::vector<Math::Vector3D> m_Vertices;
    // The vertices turned by the rotation they were last turned by.
    ShapeVertices::TurnedVertices m_Turned;

private:
    ColliderArc(const ColliderArc& other) : Collider(other), m_Vertices(other.m_Vertices), m_Turned(other.m_Turned) {}
};
