// Contact: the record of one candidate pair of colliders, reset for every
// pair. The physics fills in the colliders and their bodies; the narrow phase
// fills in the normal (unit length, from A towards B) and the penetration
// depth along it, and notes when it ran its test with the pair exchanged.
#pragma once

#include "engine/Math/Vector3D.h"

class Collider;
class PhysicsBody;

struct Contact
{
    // Body of the pair's first collider.
    PhysicsBody* bodyA = nullptr;
    // The pair's first collider.
    Collider* colliderA = nullptr;
    // Body of the pair's second collider.
    PhysicsBody* bodyB = nullptr;
    // The pair's second collider.
    Collider* colliderB = nullptr;
    // Set when the test ran with the arguments exchanged.
    bool swapped = false;
    // Unit contact normal, from A towards B.
    Math::Vector3D normal;
    // Overlap depth along the normal.
    float penetration = 0.0f;
};
