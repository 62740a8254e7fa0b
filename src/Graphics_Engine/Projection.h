// The graphics engine's projection: right-handed, depth 0 to 1, for row
// vectors (p * M), near plane 0.1 and far plane 1000.
#pragma once

#include "engine/Math/Matrix4.h"

namespace Graphics
{
// The near and far planes.
inline constexpr float kNearPlane = 0.1f;
inline constexpr float kFarPlane = 1000.0f;

// The perspective for a vertical field of view in degrees and a render size: (0,0) cot(fov/2)/aspect,
// (1,1) cot(fov/2), (2,2) far/(near-far), (2,3) -1, (3,2) near*far/(near-far), zero elsewhere. A zero
// height counts as an aspect of 1.
Math::Matrix4 MakeProjection(float fieldOfViewDegrees, int width, int height);
}
