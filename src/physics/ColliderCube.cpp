#include "physics/ColliderCube.h"

#include "Components/Transform/Transform.h"
#include "physics/ShapeFrame.h"
#include "physics/ShapeVertices.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(ColliderCube)
{
    DERIVE(Collider);
    DESCRIPTION("A box of Dimensions times the Transform's scale, turned by the Transform's rotation.");
    DEPENDENCY(PhysicsBody);
    PROPERTY(Dimensions, GetDimensions, SetDimensions, "The box's size before scaling; setting it rebuilds the corners.");
}

Meta::Data* ColliderCube::GetMeta() const
{
    return Meta::Get<ColliderCube>();
}

ColliderCube::ColliderCube()
{
    type = CubeShape;
    ShapeVertices::BuildBox(m_Vertices, Dimensions, m_Scale);
    m_Turned.Reset(m_Vertices.size());
}

void ColliderCube::Initialize()
{
    Collider::Initialize();
    UpdateBounds();
}

void ColliderCube::SetDimensions(const Math::Vector3D& dimensions)
{
    Dimensions = dimensions;
    ShapeVertices::BuildBox(m_Vertices, Dimensions, m_Scale);
    m_Turned.Reset(m_Vertices.size());
}

Math::Vector3D ColliderCube::HalfSize() const
{
    return Math::Vector3D(Dimensions.x * m_Scale.x * 0.5f, Dimensions.y * m_Scale.y * 0.5f,
                          Dimensions.z * m_Scale.z * 0.5f);
}

void ColliderCube::UpdateBounds()
{
    if (!transform)
        return;
    if (ShapeVertices::ScaleDiffers(transform->m_Scale, m_Scale))
    {
        m_Scale = transform->m_Scale;
        ShapeVertices::BuildBox(m_Vertices, Dimensions, m_Scale);
        m_Turned.Reset(m_Vertices.size());
    }
    ShapeVertices::RotatedBounds(m_Vertices, m_Turned, *transform, min, max);
    // The rotated green outline for the "Collision" debug drawing goes here once the debug stage exists.
}

Math::Point3D ColliderCube::GetSupport(const Math::Vector3D& direction)
{
    return ShapeVertices::Support(m_Vertices, &m_SupportStart, direction, transform, &m_Turned);
}

Math::Point3D ColliderCube::ToLocal(const Math::Point3D& point) const
{
    return ShapeFrame::RotatingToLocal(transform, point);
}

Math::Point3D ColliderCube::ToWorld(const Math::Point3D& point) const
{
    return ShapeFrame::RotatingToWorld(transform, point);
}
