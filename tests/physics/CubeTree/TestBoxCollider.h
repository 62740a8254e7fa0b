// TestBoxCollider: a collider for the cube tree's tests, an axis-aligned box
// placed from outside. Place sets the bounds that the next UpdateBounds takes
// on, and UpdateBounds counts its calls.
#pragma once

#include "physics/Collider.h"

struct TestBoxCollider : Collider
{
    // A box with the given corners, already in its bounds.
    TestBoxCollider(Math::Point3D lo, Math::Point3D hi) : nextMin(lo), nextMax(hi)
    {
        min = lo;
        max = hi;
    }
    // Sets the bounds that the next UpdateBounds takes on.
    void Place(Math::Point3D lo, Math::Point3D hi)
    {
        nextMin = lo;
        nextMax = hi;
    }
    // Takes on the placed bounds and counts the call.
    void UpdateBounds() override
    {
        ++updates;
        min = nextMin;
        max = nextMax;
    }

    // The bounds the next UpdateBounds takes on.
    Math::Point3D nextMin, nextMax;
    // How often UpdateBounds ran.
    int updates = 0;
};
