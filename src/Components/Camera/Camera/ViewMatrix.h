// The view matrix of a camera: right-handed, row vectors, looking from an eye
// point along a direction with an up vector. The camera looks down its own -z;
// x points right and y up. A direction parallel to the up vector takes another
// up vector instead, so that the matrix never holds NaN.
#pragma once

#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

namespace CameraMath
{
// The right-handed view matrix from `eye` looking along `direction` (any length but 0) with `up`.
Math::Matrix4 LookAlong(const Math::Point3D& eye, const Math::Vector3D& direction, const Math::Vector3D& up);
}
