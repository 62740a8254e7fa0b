// The graphics engine's answers about points of the screen: the world ray under
// the mouse, where it meets the ground, and where a world point is drawn. All
// use the current camera's view and the projection of the variable table.
#include "Graphics_Engine/GraphicsEngine.h"

#include "Graphics_Engine/Spaces/ScreenRay.h"
#include "Graphics_Engine/VariableTable.h"

#include <cfloat>
#include <cmath>

namespace Graphics
{
Math::Vector3D GraphicsEngine::GetMouseVec(const Math::Vector2D& mousePercent) const
{
    Ray ray;
    ScreenProjection screen{static_cast<float>(m_ClientWidth), static_cast<float>(m_ClientHeight),
                            m_VariableTable->m_Perspective};
    if (!MakeScreenRay(mousePercent.x * 0.01f * screen.ClientWidth, mousePercent.y * 0.01f * screen.ClientHeight,
                       screen, m_VariableTable->m_View.Inverse(), ray))
        return Math::Vector3D(0.0f, 0.0f, 0.0f);
    return ray.Direction;
}

Math::Point3D GraphicsEngine::GetMousePos(const Math::Vector2D& mousePercent) const
{
    const Math::Vector3D direction = GetMouseVec(mousePercent);
    const Math::Matrix4 inverseView = m_VariableTable->m_View.Inverse();
    const Math::Point3D eye(inverseView.m[3][0], inverseView.m[3][1], inverseView.m[3][2]);
    // The ground's normal is +y: the ray meets it where eye.y + t * direction.y = 0, ahead of the eye.
    if (std::fabs(direction.y) < 1.1920929e-07f || -eye.y / direction.y < 0.0f)
        return Math::Point3D(FLT_MAX, FLT_MAX, FLT_MAX);
    return eye + direction * (-eye.y / direction.y);
}

Math::Point2D GraphicsEngine::Point3DTo2D(const Math::Point3D& point) const
{
    const float world[4] = {point.x, point.y, point.z, 1.0f};
    float clip[4];
    (m_VariableTable->m_View * m_VariableTable->m_Perspective).TransformRow(world, clip);
    if (clip[3] == 0.0f)
        return Math::Point2D(0.0f, 0.0f);
    const float x = clip[0] / clip[3];
    const float y = clip[1] / clip[3];
    return Math::Point2D((x * 0.5f + 0.5f) * static_cast<float>(m_ClientWidth),
                         (0.5f - y * 0.5f) * static_cast<float>(m_ClientHeight));
}
}
