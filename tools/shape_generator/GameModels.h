// The game's own models made of the simple shapes, each sized to fit the unit
// cube around the origin so that an archetype's Transform scale gives its size:
//
//   player      a capsule body (radius 0.35, 1 high) with a pointed visor at
//               head height facing +Z, the model's front
//   healthorb   a faceted ball of radius 0.5
#pragma once

#include "shape_generator/MeshBuilder.h"

namespace ShapeTools
{
// The player's body.
MeshBuilder PlayerBody();
// The health orb.
MeshBuilder HealthOrb();
}
