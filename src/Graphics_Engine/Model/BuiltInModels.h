// The shapes every game has without a file, made in code: the unit cube (the
// default model), the full-screen quad, the light sphere and the skybox.
//
// Front faces wind counter-clockwise seen from outside, in the engine's
// right-handed space (the rasterizer states cull with FrontCounterClockwise
// on). Texture coordinates run from (0, 0) at the top left of a face seen from
// outside to (1, 1) at its bottom right, and tangents point where u grows.
//
//   Cube: side 1.0, centred on the origin; 24 vertices, four per face in the
//     order +x, -x, +y, -y, +z, -z, each face's corners top left, top right,
//     bottom right, bottom left; 36 indices.
//   Full-screen quad: the square of half size 1 in the plane z = 0, facing +z,
//     covering clip space; 4 vertices, 6 indices.
//   Sphere: radius 0.5; the north pole (0, 0.5, 0), 13 rings of 11 vertices
//     (ring k at the angle k pi/14 from the north, vertex j at j pi/5 around
//     the y axis, so column 10 repeats column 0 in position, with u 1 instead
//     of 0 to close the seam), then the south pole; 145 vertices, u = the angle
//     around over 2 pi, v = the angle from the north over pi; 260 triangles.
//   Skybox: the cube seen from inside: normals point in and every triangle
//     winds the other way.
#pragma once

#include "Graphics_Engine/Model/Vertex.h"

#include <cstdint>
#include <vector>

namespace Graphics
{
// Vertices and indices of one built-in shape.
struct ModelGeometry
{
    std::vector<Vertex> vertices;
    std::vector<std::uint32_t> indices;
};

// Rings of the built-in sphere between its poles.
inline constexpr std::uint32_t kSphereRings = 13;
// Vertices of each ring of the built-in sphere, the last repeating the first in position.
inline constexpr std::uint32_t kSphereColumns = 11;

// The unit cube, the default model.
ModelGeometry MakeCube();
// The quad covering clip space in the plane z = 0.
ModelGeometry MakeFullScreenQuad();
// The sphere of radius 0.5 that light volumes are drawn with.
ModelGeometry MakeSphere();
// The unit cube wound inwards.
ModelGeometry MakeSkybox();
}
