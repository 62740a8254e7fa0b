// The narrow phase: decides whether the two colliders of a contact record
// touch, and if so sets its unit normal (from A towards B) and penetration.
// Simple pairs of shapes have closed tests; a plane takes the other shape's
// deepest point; every other pair goes through the general convex test, which
// needs nothing but support points.
#pragma once

struct Contact;

namespace NarrowPhase
{
// True when contact.colliderA and contact.colliderB touch; then the normal and penetration are set.
bool Collide(Contact& contact);
}
