// The matrices objects are drawn and picked with, for row vectors (p * M): a
// rotation from a quaternion, and an object's world matrix, which scales
// first, then rotates, then moves to the position (translation in the last
// row). The visible lists, the meshes' picking and the benchmarks all build
// their matrices here, so a drawn object and a picked one never disagree.
#pragma once

#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Quaternion.h"
#include "engine/Math/Vector3D.h"

class Transform;

namespace Graphics
{
// The rotation of the quaternion (normalised first; a zero quaternion gives the identity): its
// rows are the rotated x, y and z axes, so it turns a row vector as the quaternion does.
Math::Matrix4 RotationMatrix(const Math::Quaternion& rotation);
// Scale, then rotation, then translation to `position`.
Math::Matrix4 MakeWorldMatrix(const Math::Point3D& position, const Math::Vector3D& scale,
                              const Math::Quaternion& rotation);
// The world matrix of a Transform: its scale and rotation, at its position plus its offset.
Math::Matrix4 MakeWorldMatrix(const Transform& transform);
}
