// The world matrix of an object from its position, scale and rotation, for
// row vectors: p * (scale, then rotation, then translation). The rotation's
// matrix turns a row vector as the quaternion turns it (q v q*).
#pragma once

#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"

namespace Graphics
{
// The row-vector matrix of a rotation.
Math::Matrix4 RotationMatrix(const Math::Quaternion& rotation);
// Scale, rotation and translation in one row-vector matrix (translation in the last row).
Math::Matrix4 MakeWorldMatrix(const Math::Point3D& position, const Math::Vector3D& scale,
                              const Math::Quaternion& rotation);
}
