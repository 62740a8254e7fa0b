#include "physics/ColliderArc.h"

#include <cmath>
#include <utility>

#include "Components/Transform/Transform.h"
#include "physics/ShapeFrame.h"
#include "physics/ShapeVertices.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(ColliderArc)
{
    DERIVE(Collider);
    DESCRIPTION("A slice of a ring or disc swept along y; its vertices come from BuildArc.");
    DEPENDENCY(PhysicsBody);
    HELP("BuildArc(angle in degrees, outer radius, inner radius, height) replaces the vertices.");
    METHOD(BuildArc);
}

Meta::Data* ColliderArc::GetMeta() const
{
    return Meta::Get<ColliderArc>();
}

void ColliderArc::Initialize()
{
    Collider::Initialize();
    UpdateBounds();
}

void ColliderArc::BuildArc(float angle, float outerRadius, float innerRadius, float height)
{
    m_Vertices.clear();
    if (angle > 180.0f)
    {
        angle = 180.0f;
        innerRadius = 0.0f;
    }
    else if (angle < 0.0f)
    {
        angle = 0.0f;
    }
    if (innerRadius > outerRadius)
        std::swap(innerRadius, outerRadius);
    const float half = angle * 3.1415927f / 180.0f * 0.5f;
    const float quarter = angle * 3.1415927f / 180.0f * 0.25f;
    const float y = height * 0.5f;
    // Each point of the outline in the x-z plane, pushed at the top and then at the bottom.
    auto pushPair = [&](float x, float z) {
        m_Vertices.emplace_back(x, y, z);
        m_Vertices.emplace_back(x, -y, z);
    };
    const float R = outerRadius;
    pushPair(R, 0.0f);
    pushPair(std::cos(half) * R, std::sin(half) * R);
    pushPair(std::cos(-half) * R, std::sin(-half) * R);
    pushPair(std::cos(quarter) * R, std::sin(quarter) * R);
    pushPair(std::cos(-quarter) * R, std::sin(-quarter) * R);
    const float r = innerRadius;
    if (!(r > 0.0f))
    {
        pushPair(0.0f, 0.0f);
    }
    else
    {
        pushPair(std::cos(half) * r, std::sin(half) * r);
        pushPair(std::cos(-half) * r, std::sin(-half) * r);
    }
    m_Turned.Reset(m_Vertices.size());
}

void ColliderArc::UpdateBounds()
{
    if (!transform)
        return;
    ShapeVertices::RotatedBounds(m_Vertices, m_Turned, *transform, min, max);
    // The green outline segments for the "Collision" debug drawing go here once the debug stage exists.
}

Math::Point3D ColliderArc::GetSupport(const Math::Vector3D& direction)
{
    if (m_Vertices.empty())
        return Math::Point3D();
    return ShapeVertices::Support(m_Vertices, nullptr, direction, transform, &m_Turned);
}

Math::Point3D ColliderArc::ToLocal(const Math::Point3D& point) const
{
    return ShapeFrame::RotatingToLocal(transform, point);
}

Math::Point3D ColliderArc::ToWorld(const Math::Point3D& point) const
{
    return ShapeFrame::RotatingToWorld(transform, point);
}
