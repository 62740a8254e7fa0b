// Rock-like lumps: an icosphere whose corners are pushed in and out by seeded
// value noise, squashed or stretched a little per seed, flat shaded for the
// game's low-poly look, then centred and scaled so that its largest extent is
// 1 (it fits the unit cube around the origin). The same seed always gives the
// same rock, on every machine: the noise hashes integers and never uses the
// standard library's random distributions.
#pragma once

#include "shape_generator/MeshBuilder.h"

#include <cstdint>

namespace ShapeTools
{
// The rock of `seed`, from an icosphere split `subdivisions` times; `roughness` is how far
// the noise moves the surface, as a fraction of the radius.
MeshBuilder Rock(std::uint32_t seed, int subdivisions = 1, float roughness = 0.35f);

// Smooth value noise in about [-1, 1] at a point, different for each seed.
float ValueNoise(const Vec3& point, std::uint32_t seed);
}
