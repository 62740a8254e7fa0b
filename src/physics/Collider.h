// Collider: the part of a shape that the broad phase sees, its world bounds as
// a minimum and a maximum corner, and the call that recomputes them. The shape
// classes (cubes, spheres, arcs, planes) and the contact tests build on this
// base; until they exist it is the whole of a collider, and UpdateBounds keeps
// the bounds as they are.
#pragma once

#include "engine/Math/Point3D.h"

class Collider
{
public:
    // A collider with both corners at the origin.
    Collider() = default;
    // Virtual, so that shapes are destroyed through the base.
    virtual ~Collider() = default;
    // Recomputes min and max from the shape and its transform; the base keeps them as they are.
    virtual void UpdateBounds() {}

    // Minimum corner of the world bounds.
    Math::Point3D min;
    // Maximum corner of the world bounds.
    Math::Point3D max;
};
