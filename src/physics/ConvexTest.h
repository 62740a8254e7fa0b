// The general contact test for any two convex shapes, which needs nothing
// but their support points: GJK decides whether the Minkowski difference
// (A minus B) holds the origin, and the expanding polytope method then finds
// the face of the difference nearest the origin, whose normal (from A towards
// B) and distance are the contact's normal and penetration.
//
// Both loops are bounded so that no input can hang the frame: GJK gives up
// after kGjkIterationLimit rounds (no contact), and the polytope step after
// kEpaIterationLimit rounds, when its polytope runs out of room or of faces,
// or when a round removes nothing; it then answers with the face whose
// support distance was the smallest so far. All storage is fixed-size arrays
// on the stack, so a test allocates nothing. A non-finite support point ends
// the test at once with no contact and sets Stats::nonFinite.
#pragma once

#include "engine/Math/Vector3D.h"

class Collider;

namespace ConvexTest
{
// Rounds of GJK before it gives up with no contact.
inline constexpr int kGjkIterationLimit = 32;
// Rounds of the polytope step before it answers with its best face so far.
inline constexpr int kEpaIterationLimit = 64;

// What one test went through, for tests, benchmarks and the caller's reports.
struct Stats
{
    // Rounds of the GJK loop run.
    int gjkIterations = 0;
    // Rounds of the polytope step run.
    int epaIterations = 0;
    // GJK reached its limit.
    bool gjkLimitReached = false;
    // The polytope step stopped early: its limit, its room, an empty polytope or a round that removed nothing.
    bool epaStoppedEarly = false;
    // A support point was NaN or infinite.
    bool nonFinite = false;
};

// True when the shapes overlap; then `normal` (unit, from A towards B) and `penetration` are set.
bool Collide(Collider& a, Collider& b, Math::Vector3D& normal, float& penetration, Stats* stats = nullptr);
}
