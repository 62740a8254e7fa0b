#include "shape_generator/GameModels.h"

#include "shape_generator/Shapes.h"

namespace ShapeTools
{
MeshBuilder PlayerBody()
{
    MeshBuilder body = Capsule(0.35f, 1.0f, 16, 5);
    // The visor: a cone turned from +Y to +Z (a quarter turn about X), its tip at the front.
    Placement visor;
    visor.Rotation[0] = {1, 0, 0};
    visor.Rotation[1] = {0, 0, 1};
    visor.Rotation[2] = {0, -1, 0};
    visor.Offset = {0.0f, 0.22f, 0.36f};
    body.Append(Cone(0.12f, 0.28f, 10), visor);
    return body;
}

MeshBuilder HealthOrb()
{
    return Orb(0.5f, 1);
}
}
