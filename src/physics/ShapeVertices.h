// Helpers shared by the shapes that are a set of vertices (the two cubes and
// the arc): building a box's corners, telling whether the Transform's scale
// has moved away from the cached one, gathering world bounds from vertices,
// and the linear support search. A vertex search keeps its answer's index
// plus one as the next search's start, so that the next search begins near
// the last answer; which of several equal vertices wins depends on it.
#pragma once

#include <vector>

#include "engine/Math/Point3D.h"

class Transform;

namespace ShapeVertices
{
// Differences of at most this much per component leave a cached scale alone.
inline constexpr float kScaleTolerance = 0.0001f;

// True when some component of `scale` differs from `cached` by more than kScaleTolerance.
bool ScaleDiffers(const Math::Vector3D& scale, const Math::Vector3D& cached);

// The eight corners, plus or minus half of `dimensions`, times `scale` per component: the all-plus corner
// first, the all-minus corner second.
void BuildBox(std::vector<Math::Vector3D>& vertices, const Math::Vector3D& dimensions, const Math::Vector3D& scale);

// Bounds of the vertices turned by the Transform's rotation: running minimum and maximum start at zero,
// so the bounds always hold the position.
void RotatedBounds(const std::vector<Math::Vector3D>& vertices, const Transform& transform, Math::Point3D& min,
                   Math::Point3D& max);

// The vertex farthest along `direction` (normalised first), turned by the Transform's rotation when
// `rotate`, plus the Transform's position. With `startIndex` the scan runs from it to the end and then from
// the beginning, and a better vertex moves it to its index plus one; without it the scan starts at the first.
// Only a strictly greater dot product replaces the best. No vertex chosen gives the world origin.
Math::Point3D Support(const std::vector<Math::Vector3D>& vertices, unsigned* startIndex, const Math::Vector3D& direction,
                      const Transform* transform, bool rotate);
}
