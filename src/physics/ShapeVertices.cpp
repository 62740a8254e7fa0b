#include "physics/ShapeVertices.h"

#include <algorithm>
#include <cmath>

#include "Components/Transform/Transform.h"

namespace ShapeVertices
{
bool ScaleDiffers(const Math::Vector3D& scale, const Math::Vector3D& cached)
{
    return !(std::fabs(scale.x - cached.x) <= kScaleTolerance && std::fabs(scale.y - cached.y) <= kScaleTolerance &&
             std::fabs(scale.z - cached.z) <= kScaleTolerance);
}

void BuildBox(std::vector<Math::Vector3D>& vertices, const Math::Vector3D& dimensions, const Math::Vector3D& scale)
{
    static const float kSigns[8][3] = {{1, 1, 1},  {-1, -1, -1}, {1, 1, -1},  {1, -1, 1},
                                       {-1, 1, 1}, {1, -1, -1},  {-1, 1, -1}, {-1, -1, 1}};
    vertices.clear();
    for (const auto& sign : kSigns)
        vertices.emplace_back(sign[0] * dimensions.x * 0.5f * scale.x, sign[1] * dimensions.y * 0.5f * scale.y,
                              sign[2] * dimensions.z * 0.5f * scale.z);
}

void RotatedBounds(const std::vector<Math::Vector3D>& vertices, const Transform& transform, Math::Point3D& min,
                   Math::Point3D& max)
{
    Math::Vector3D low, high;
    for (const Math::Vector3D& vertex : vertices)
    {
        const Math::Vector3D turned = transform.m_Rotation.RotateVector(vertex);
        low = Math::Vector3D(std::min(low.x, turned.x), std::min(low.y, turned.y), std::min(low.z, turned.z));
        high = Math::Vector3D(std::max(high.x, turned.x), std::max(high.y, turned.y), std::max(high.z, turned.z));
    }
    min = transform.m_Position + low;
    max = transform.m_Position + high;
}

Math::Point3D Support(const std::vector<Math::Vector3D>& vertices, unsigned* startIndex, const Math::Vector3D& direction,
                      const Transform* transform, bool rotate)
{
    Math::Vector3D unit = direction;
    unit.Normalize();
    const std::size_t count = vertices.size();
    const std::size_t start = startIndex ? std::min<std::size_t>(*startIndex, count) : 0;
    float best = -3.4028235e38f;
    const Math::Vector3D* chosen = nullptr;
    Math::Vector3D chosenTurned;
    for (std::size_t step = 0; step < count; ++step)
    {
        const std::size_t index = (start + step) % count;
        const Math::Vector3D turned =
            rotate && transform ? transform->m_Rotation.RotateVector(vertices[index]) : vertices[index];
        const float dot = turned.DotProduct(unit);
        if (dot > best)
        {
            best = dot;
            chosen = &vertices[index];
            chosenTurned = turned;
            if (startIndex)
                *startIndex = static_cast<unsigned>(index + 1);
        }
    }
    if (!chosen)
        return Math::Point3D();
    return transform ? transform->m_Position + chosenTurned : chosenTurned.ToPoint();
}
}
