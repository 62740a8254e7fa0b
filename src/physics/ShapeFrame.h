// Conversions between world space and a shape's own frame, shared by the
// shape classes. The translating pair only moves by the Transform's position;
// the rotating pair also turns by the Transform's rotation (its inverse on the
// way in). Without a Transform the point comes back as it is.
#pragma once

#include "engine/Math/Point3D.h"

class Transform;

namespace ShapeFrame
{
// The world point moved so that the Transform's position is the origin.
Math::Point3D TranslatingToLocal(const Transform* transform, const Math::Point3D& point);
// The local point moved by the Transform's position.
Math::Point3D TranslatingToWorld(const Transform* transform, const Math::Point3D& point);
// The world point minus the Transform's position, turned by the inverse rotation.
Math::Point3D RotatingToLocal(const Transform* transform, const Math::Point3D& point);
// The local point turned by the rotation, plus the Transform's position.
Math::Point3D RotatingToWorld(const Transform* transform, const Math::Point3D& point);
}
