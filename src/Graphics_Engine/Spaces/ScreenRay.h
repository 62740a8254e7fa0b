// The ray under a point of the window, for picking and for finding the ground
// under the mouse. The point is in client pixels (x right, y down); with W, H
// the client size and P the projection, the view-space direction is
// ((2x/W - 1)/P00, (1 - 2y/H)/P11, -1), taken to the world through the inverse
// of the camera's view matrix and normalised.
#pragma once

#include "engine/Math/Matrix4.h"
#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

namespace Graphics
{
// What a space needs of the window to turn a screen point into a ray; set by the engine.
struct ScreenProjection
{
    // Client width in pixels.
    float ClientWidth = 800.0f;
    // Client height in pixels.
    float ClientHeight = 600.0f;
    // The projection matrix (row vectors).
    Math::Matrix4 Projection;
};

// A ray: an origin and a unit direction.
struct Ray
{
    // Where the ray starts: the camera's position.
    Math::Point3D Origin;
    // The ray's direction, unit length.
    Math::Vector3D Direction{0.0f, 0.0f, -1.0f};
};

// The world ray under (x, y); false when the size or projection cannot make one.
bool MakeScreenRay(float x, float y, const ScreenProjection& screen, const Math::Matrix4& inverseView, Ray& ray);
}
