// The simple shapes the game needs beyond the engine's built-in ones, each
// centred on the origin with +Y up, faces counter-clockwise outward, smooth
// normals on curved surfaces and flat ones on flat faces, texture coordinates
// wrapped around round shapes (u around, v from top to bottom) and projected
// on flat faces:
//
//   capsule   radius 0.5, 2 high (a cylinder of 1 between two half spheres)
//   cylinder  radius 0.5, 1 high, with caps
//   cone      base radius 0.5 at y = -0.5, tip at y = 0.5, with a base cap
//   plane     1 by 1 in the XZ plane, facing +Y
//   ramp      a wedge in the unit cube: the slope rises from the bottom edge
//             at z = +0.5 to the top edge at z = -0.5
//   orb       a faceted ball (icosphere) of radius 0.5
#pragma once

#include "shape_generator/MeshBuilder.h"

namespace ShapeTools
{
// A capsule along Y: `radius`, overall `height` (at least 2 * radius), `segments` around, `rings` per half sphere.
MeshBuilder Capsule(float radius = 0.5f, float height = 2.0f, int segments = 16, int rings = 6);
// A capped cylinder along Y.
MeshBuilder Cylinder(float radius = 0.5f, float height = 1.0f, int segments = 16);
// A cone along Y with its tip up and a capped base.
MeshBuilder Cone(float radius = 0.5f, float height = 1.0f, int segments = 16);
// A square in the XZ plane facing +Y.
MeshBuilder Plane(float size = 1.0f);
// The wedge of the unit cube described above.
MeshBuilder Ramp();
// An icosahedron split `subdivisions` times, pushed out to `radius`, flat shaded.
MeshBuilder Orb(float radius = 0.5f, int subdivisions = 1);

// The unit icosphere as shared corners and counter-clockwise triangles, split `subdivisions` times.
void Icosphere(int subdivisions, std::vector<Vec3>& corners, std::vector<std::uint32_t>& triangles);
}
