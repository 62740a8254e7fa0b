// The physics' motion steps, each over plain values so that they can be
// checked one by one:
//
// - Integrate moves a body by its velocity and gravity (position first, with
//   the velocity before this frame's acceleration), then limits its speed to
//   1000 units per second.
// - CorrectPositions pushes an overlapping pair apart by 70 percent of the
//   depth beyond a slop of 0.1, split by mass; a body of mass 0 stays put.
// - ApplyImpulse changes both velocities along the normal by the smaller
//   bounciness, and adds friction from the sliding velocity up to the Coulomb
//   limit. Both leave a pair that is already separating alone.
#pragma once

struct Contact;
class PhysicsBody;

namespace Resolution
{
// Depth left unresolved by the positional correction.
inline constexpr float kSlop = 0.1f;
// Share of the excess depth removed per frame.
inline constexpr float kCorrectionShare = 0.7f;
// Highest speed a body keeps after integration.
inline constexpr float kSpeedLimit = 1000.0f;

// Moves the body over `dt` seconds and updates its velocity.
void Integrate(PhysicsBody& body, float dt);
// Moves the two bodies of the contact apart; `massA`, `massB` are their masses.
void CorrectPositions(const Contact& contact, float massA, float massB);
// Changes the two bodies' velocities by the contact's impulse and friction.
void ApplyImpulse(const Contact& contact);
}
