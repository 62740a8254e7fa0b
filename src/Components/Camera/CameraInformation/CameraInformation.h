// CameraInformation: the record that the camera's focus targets are folded
// into each frame before the controller moves the camera: how many targets
// there are, the box around their centres (its centre and half extents), the
// largest bounding sphere and the largest view distance among them. From it
// comes the distance the camera needs so that every target stays on screen.
//
// It knows nothing of components: the controller adds each active target's
// position and sizes, so the record and its maths are tested with plain
// numbers.
#pragma once

#include "engine/Math/Point3D.h"
#include "engine/Math/Vector3D.h"

struct CameraInformation
{
    // Folds one target in: its centre, its bounding sphere's radius and the distance it wants to be seen from.
    void Add(const Math::Point3D& position, float boundingSphere, float viewDistance);
    // True when no target was added.
    bool Empty() const { return Count == 0; }
    // The centre of the box around the targets' centres (the origin when empty).
    Math::Point3D Center() const;
    // Half the size of that box on each axis (zero when empty).
    Math::Vector3D HalfExtents() const;
    // How far the targets reach from the centre on the plane of play: the larger half extent on x and z,
    // plus the largest bounding sphere.
    float HalfExtent() const;
    // The distance at which HalfExtent fits the view: the tangent of (90 - fieldOfView / 2 + innerPad)
    // degrees (the angle held between 0 and 89) times HalfExtent, times areaModifier; never less than
    // the largest view distance.
    float RequiredDistance(float fieldOfView, float innerPad, float areaModifier) const;

    // Number of targets folded in.
    int Count = 0;
    // The smallest coordinates of the targets' centres.
    Math::Point3D Min;
    // The largest coordinates of the targets' centres.
    Math::Point3D Max;
    // The largest bounding sphere radius among the targets.
    float LargestSphere = 0.0f;
    // The largest view distance among the targets.
    float LargestViewDistance = 0.0f;
};
