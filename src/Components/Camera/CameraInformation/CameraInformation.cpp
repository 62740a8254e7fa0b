#include "Components/Camera/CameraInformation/CameraInformation.h"

#include <algorithm>
#include <cmath>

namespace
{
// Pi as the zoom formula writes it.
constexpr float kZoomPi = 3.14159f;
// The zoom angle stays below a right angle, where its tangent has no end.
constexpr float kLargestZoomAngle = 89.0f;

// The value, or 0 when it is not a finite number (bad data never spreads NaN into the camera).
float Finite(float value)
{
    return std::isfinite(value) ? value : 0.0f;
}
}

void CameraInformation::Add(const Math::Point3D& position, float boundingSphere, float viewDistance)
{
    if (!std::isfinite(position.x) || !std::isfinite(position.y) || !std::isfinite(position.z))
        return;
    if (Count == 0)
    {
        Min = position;
        Max = position;
    }
    else
    {
        Min = Math::Point3D(std::min(Min.x, position.x), std::min(Min.y, position.y), std::min(Min.z, position.z));
        Max = Math::Point3D(std::max(Max.x, position.x), std::max(Max.y, position.y), std::max(Max.z, position.z));
    }
    LargestSphere = std::max(LargestSphere, Finite(boundingSphere));
    LargestViewDistance = std::max(LargestViewDistance, Finite(viewDistance));
    ++Count;
}

Math::Point3D CameraInformation::Center() const
{
    if (Empty())
        return Math::Point3D();
    return Math::Point3D((Min.x + Max.x) * 0.5f, (Min.y + Max.y) * 0.5f, (Min.z + Max.z) * 0.5f);
}

Math::Vector3D CameraInformation::HalfExtents() const
{
    if (Empty())
        return Math::Vector3D();
    return (Max - Min) * 0.5f;
}

float CameraInformation::HalfExtent() const
{
    const Math::Vector3D half = HalfExtents();
    return std::max(half.x, half.z) + LargestSphere;
}

float CameraInformation::RequiredDistance(float fieldOfView, float innerPad, float areaModifier) const
{
    const float angle = std::clamp(Finite(90.0f - fieldOfView * 0.5f + innerPad), 0.0f, kLargestZoomAngle);
    const float needed = std::tan(angle * kZoomPi / 180.0f) * HalfExtent() * Finite(areaModifier);
    return std::max(Finite(needed), LargestViewDistance);
}
