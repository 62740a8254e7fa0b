// Random colliders of every shape kind for the narrow phase's property and
// degenerate-input tests: each owns its Transform, placed, turned, scaled and
// sized from a seeded generator, with its bounds computed.
#pragma once

#include "Components/Transform/Transform.h"
#include "physics/Collider.h"

#include <memory>
#include <random>

namespace RandomShapes
{
enum Kind
{
    AxisCube,
    Cube,
    Sphere,
    Arc,
    Plane,
    KindCount,
};

// The kind's class name, for messages.
const char* Name(int kind);

// A collider and the Transform it points at.
struct Holder
{
    Holder() = default;
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    Transform transform;
    std::unique_ptr<Collider> collider;
};

// A rotation drawn uniformly.
Math::Quaternion RandomRotation(std::mt19937& random);

// Fills `holder` with a collider of `kind` at `position`, with a random rotation, scale and size.
void Make(Holder& holder, int kind, const Math::Point3D& position, std::mt19937& random);
}
