#include "Graphics_Engine/Projection.h"

#include <cmath>
#include <numbers>

namespace Graphics
{
Math::Matrix4 MakeProjection(float fieldOfViewDegrees, int width, int height)
{
    const float fov = fieldOfViewDegrees * (std::numbers::pi_v<float> / 180.0f);
    const float aspect = height > 0 && width > 0 ? static_cast<float>(width) / static_cast<float>(height) : 1.0f;
    const float yScale = 1.0f / std::tan(fov * 0.5f);
    const float xScale = yScale / aspect;
    const float depth = kFarPlane / (kNearPlane - kFarPlane);
    return Math::Matrix4(xScale, 0.0f, 0.0f, 0.0f,  //
                         0.0f, yScale, 0.0f, 0.0f,  //
                         0.0f, 0.0f, depth, -1.0f,  //
                         0.0f, 0.0f, kNearPlane * depth, 0.0f);
}
}
