#include "physics/ColliderAxisCube.h"

#include <cstdlib>

#include "Components/Transform/Transform.h"
#include "physics/ShapeFrame.h"
#include "physics/ShapeVertices.h"
#include "utilities/Meta/Registration.h"

META_REGISTER(ColliderAxisCube)
{
    DERIVE(Collider);
    DESCRIPTION("A box of Dimensions times the Transform's scale that stays lined up with the world axes.");
    DEPENDENCY(PhysicsBody);
    PROPERTY(Dimensions, GetDimensions, SetDimensions, "The box's size before scaling; setting it rebuilds the corners.");
}

Meta::Data* ColliderAxisCube::GetMeta() const
{
    return Meta::Get<ColliderAxisCube>();
}

ColliderAxisCube::ColliderAxisCube()
{
    type = AxisCubeShape;
    ShapeVertices::BuildBox(m_Vertices, Dimensions, m_Scale);
}

ColliderAxisCube::ColliderAxisCube(const ColliderAxisCube& other)
    : Collider(other), m_Scale(other.m_Scale), Dimensions(other.Dimensions), m_Vertices(other.m_Vertices),
      m_SupportStart(other.m_SupportStart)
{
    for (int i = 0; i < 3; ++i)
        m_DebugColor[i] = other.m_DebugColor[i];
}

void ColliderAxisCube::Initialize()
{
    Collider::Initialize();
    UpdateBounds();
    for (float& channel : m_DebugColor)
        channel = static_cast<float>(std::rand() / 32767.0);
}

void ColliderAxisCube::SetDimensions(const Math::Vector3D& dimensions)
{
    Dimensions = dimensions;
    ShapeVertices::BuildBox(m_Vertices, Dimensions, m_Scale);
}

Math::Vector3D ColliderAxisCube::HalfSize() const
{
    return Math::Vector3D(Dimensions.x * m_Scale.x * 0.5f, Dimensions.y * m_Scale.y * 0.5f,
                          Dimensions.z * m_Scale.z * 0.5f);
}

void ColliderAxisCube::UpdateBounds()
{
    if (!transform)
        return;
    if (ShapeVertices::ScaleDiffers(transform->m_Scale, m_Scale))
    {
        m_Scale = transform->m_Scale;
        ShapeVertices::BuildBox(m_Vertices, Dimensions, m_Scale);
    }
    const Math::Vector3D half = HalfSize();
    max = transform->m_Position + half;
    min = transform->m_Position + half * -1.0f;
    // The unrotated outline for the "Collision" debug drawing, in m_DebugColor, goes here once the debug stage exists.
}

Math::Point3D ColliderAxisCube::GetSupport(const Math::Vector3D& direction)
{
    return ShapeVertices::Support(m_Vertices, &m_SupportStart, direction, transform, nullptr);
}

Math::Point3D ColliderAxisCube::ToLocal(const Math::Point3D& point) const
{
    return ShapeFrame::TranslatingToLocal(transform, point);
}

Math::Point3D ColliderAxisCube::ToWorld(const Math::Point3D& point) const
{
    return ShapeFrame::TranslatingToWorld(transform, point);
}
