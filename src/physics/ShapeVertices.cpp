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

void TurnedVertices::Reset(std::size_t count)
{
    valid = false;
    vertices.resize(count);
}

const std::vector<Math::Vector3D>& TurnedVertices::For(const std::vector<Math::Vector3D>& source,
                                                       const Math::Quaternion& turn)
{
    const bool same = valid && rotation.x == turn.x && rotation.y == turn.y && rotation.z == turn.z &&
                      rotation.w == turn.w && vertices.size() == source.size();
    if (same)
        return vertices;
    vertices.resize(source.size());
    for (std::size_t i = 0; i < source.size(); ++i)
        vertices[i] = turn.RotateVector(source[i]);
    rotation = turn;
    valid = true;
    return vertices;
}

void RotatedBounds(const std::vector<Math::Vector3D>& vertices, TurnedVertices& cache, const Transform& transform,
                   Math::Point3D& min, Math::Point3D& max)
{
    Math::Vector3D low, high;
    for (const Math::Vector3D& turned : cache.For(vertices, transform.m_Rotation))
    {
        low = Math::Vector3D(std::min(low.x, turned.x), std::min(low.y, turned.y), std::min(low.z, turned.z));
        high = Math::Vector3D(std::max(high.x, turned.x), std::max(high.y, turned.y), std::max(high.z, turned.z));
    }
    min = transform.m_Position + low;
    max = transform.m_Position + high;
}

Math::Point3D Support(const std::vector<Math::Vector3D>& vertices, unsigned* startIndex, const Math::Vector3D& direction,
                      const Transform* transform, TurnedVertices* turned)
{
    // Normalised as Math::Vector3D::Normalize does it (a zero vector stays zero), without its general loop.
    Math::Vector3D unit = direction;
    const float lengthSquare = unit.x * unit.x + unit.y * unit.y + unit.z * unit.z;
    if (lengthSquare != 0.0f)
    {
        const float length = std::sqrt(lengthSquare);
        if (std::isinf(length))
            unit = Math::Vector3D(NAN, NAN, NAN);
        else
            unit = Math::Vector3D(unit.x / length, unit.y / length, unit.z / length);
    }
    const std::vector<Math::Vector3D>& searched =
        turned && transform ? turned->For(vertices, transform->m_Rotation) : vertices;
    const std::size_t count = searched.size();
    const std::size_t start = startIndex ? std::min<std::size_t>(*startIndex, count) : 0;
    float best = -3.4028235e38f;
    const Math::Vector3D* chosen = nullptr;
    for (std::size_t step = 0; step < count; ++step)
    {
        const std::size_t index = start + step < count ? start + step : start + step - count;
        const Math::Vector3D& vertex = searched[index];
        const float dot = vertex.x * unit.x + vertex.y * unit.y + vertex.z * unit.z;
        if (dot > best)
        {
            best = dot;
            chosen = &vertex;
            if (startIndex)
                *startIndex = static_cast<unsigned>(index + 1);
        }
    }
    if (!chosen)
        return Math::Point3D();
    return transform ? transform->m_Position + *chosen : chosen->ToPoint();
}
}
