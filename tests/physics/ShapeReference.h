// An independent model of the collider shapes for the narrow phase's
// property tests, in double precision and closed form: a box or an arc is a
// prism (a convex polygon in its local x-z plane swept over a height along
// local y), a sphere a centre and a radius, a plane a one-sided half-space.
// It models the shapes' quirks: the axis cube ignores rotation, a sphere's
// radius takes the largest scale component, an arc ignores scale, a plane is
// solid on its whole back side.
//
// Overlap(a, b) gives a signed measure: positive is a penetration (exact for
// prisms against prisms, through the separating axes of their faces and edge
// pairs; exact for spheres; the depth beyond the surface for planes), negative
// a separation (a lower bound for prisms, exact otherwise). Only its sign and
// its distance from zero are relied on.
#pragma once

#include "physics/Collider.h"

#include <vector>

namespace ShapeReference
{
struct Vec
{
    double x = 0.0, y = 0.0, z = 0.0;
};

struct Shape
{
    enum Kind
    {
        Prism,
        Sphere,
        HalfSpace,
    } kind = Prism;
    // Prism: its frame (position and unit axes), its polygon in local (x, z) and half its height.
    Vec position;
    Vec axes[3];
    std::vector<Vec> polygon;
    double halfHeight = 0.0;
    // Sphere: centre (position) and radius.
    double radius = 0.0;
    // HalfSpace: the plane point (position) and the unit normal pointing out of the solid side.
    Vec normal;
};

// The model of a collider of any shape kind, read from its fields and Transform.
Shape FromCollider(const Collider& collider);
// Positive: how deep the shapes overlap; negative: how far apart they are at least.
double Overlap(const Shape& a, const Shape& b);
}
