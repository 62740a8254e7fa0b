// Conversions between the Open Asset Import Library's math types and the
// engine's. assimp's aiMatrix4x4 multiplies column vectors (translation in the
// last column); the engine's Math::Matrix4 multiplies row vectors (translation
// in the last row), so every matrix is transposed on the way across. Both sides
// are right-handed with counter-clockwise front faces, so nothing is mirrored.
#pragma once

#include "engine/Math/Matrix4.h"

#include <assimp/matrix4x4.h>
#include <assimp/vector3.h>

namespace ModelTools
{
// The engine's form of an assimp matrix: the transpose.
Math::Matrix4 ToEngine(const aiMatrix4x4& matrix);
// A point times a row-vector transform (w = 1).
aiVector3D TransformPoint(const aiVector3D& point, const Math::Matrix4& transform);
// A direction times the upper 3 by 3 of a row-vector transform, not normalised.
aiVector3D TransformDirection(const aiVector3D& direction, const Math::Matrix4& transform);
// A normal times the inverse transpose of the transform's upper 3 by 3, normalised.
aiVector3D TransformNormal(const aiVector3D& normal, const Math::Matrix4& transform);
// The determinant of the upper 3 by 3: negative for a transform that mirrors.
float LinearDeterminant(const Math::Matrix4& transform);
// True when the transform is the identity within `tolerance`.
bool IsIdentity(const Math::Matrix4& transform, float tolerance = 1e-5f);
}
