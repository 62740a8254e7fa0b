// Helpers shared by the shapes that are a set of vertices (the two cubes and
// the arc): building a box's corners, telling whether the Transform's scale
// has moved away from the cached one, gathering world bounds from vertices,
// and the linear support search. A vertex search keeps its answer's index
// plus one as the next search's start, so that the next search begins near
// the last answer; which of several equal vertices wins depends on it.
#pragma once

#include <vector>

#include "engine/Math/Point3D.h"
#include "engine/Math/Quaternion.h"

class Transform;

namespace ShapeVertices
{
// Differences of at most this much per component leave a cached scale alone.
inline constexpr float kScaleTolerance = 0.0001f;

// A shape's vertices turned by its rotation, kept while the rotation stays exactly the same, so that the
// support queries of one contact test turn each vertex once instead of once per query (the numbers are the
// very ones each query would compute). Rebuilding the vertices must call Reset.
struct TurnedVertices
{
    // Forgets the turned vertices and makes room for `count` of them, so that later queries allocate nothing.
    void Reset(std::size_t count);
    // The vertices turned by `rotation`, turned anew when the rotation differs from the last one.
    const std::vector<Math::Vector3D>& For(const std::vector<Math::Vector3D>& vertices, const Math::Quaternion& rotation);

    // The rotation the vertices were turned by.
    Math::Quaternion rotation;
    // The turned vertices.
    std::vector<Math::Vector3D> vertices;
    // False until the vertices are turned, and after Reset.
    bool valid = false;
};

// True when some component of `scale` differs from `cached` by more than kScaleTolerance.
bool ScaleDiffers(const Math::Vector3D& scale, const Math::Vector3D& cached);

// The eight corners, plus or minus half of `dimensions`, times `scale` per component: the all-plus corner
// first, the all-minus corner second.
void BuildBox(std::vector<Math::Vector3D>& vertices, const Math::Vector3D& dimensions, const Math::Vector3D& scale);

// Bounds of the vertices turned by the Transform's rotation: running minimum and maximum start at zero,
// so the bounds always hold the position. The turned vertices are left in the cache.
void RotatedBounds(const std::vector<Math::Vector3D>& vertices, TurnedVertices& turned, const Transform& transform,
                   Math::Point3D& min, Math::Point3D& max);

// The vertex farthest along `direction` (normalised first), turned by the Transform's rotation when
// `rotate`, plus the Transform's position. With `startIndex` the scan runs from it to the end and then from
// the beginning, and a better vertex moves it to its index plus one; without it the scan starts at the first.
// Only a strictly greater dot product replaces the best. No vertex chosen gives the world origin.
// With `turned` the vertices are turned by the Transform's rotation first (through the cache).
Math::Point3D Support(const std::vector<Math::Vector3D>& vertices, unsigned* startIndex, const Math::Vector3D& direction,
                      const Transform* transform, TurnedVertices* turned);
}
