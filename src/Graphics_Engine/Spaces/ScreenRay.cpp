#include "Graphics_Engine/Spaces/ScreenRay.h"

#include <cmath>

namespace Graphics
{
bool MakeScreenRay(float x, float y, const ScreenProjection& screen, const Math::Matrix4& inverseView, Ray& ray)
{
    const float p00 = screen.Projection.m[0][0];
    const float p11 = screen.Projection.m[1][1];
    if (!(screen.ClientWidth > 0.0f) || !(screen.ClientHeight > 0.0f) || p00 == 0.0f || p11 == 0.0f)
        return false;
    const float view[4] = {(2.0f * x / screen.ClientWidth - 1.0f) / p00,
                           (1.0f - 2.0f * y / screen.ClientHeight) / p11, -1.0f, 0.0f};
    float world[4];
    inverseView.TransformRow(view, world);
    Math::Vector3D direction(world[0], world[1], world[2]);
    if (!(direction.LengthSquare() > 0.0f) || !std::isfinite(direction.LengthSquare()))
        return false;
    direction.Normalize();
    ray.Direction = direction;
    ray.Origin = Math::Point3D(inverseView.m[3][0], inverseView.m[3][1], inverseView.m[3][2]);
    return true;
}
}
