#include "shape_generator/ShapeTable.h"

#include "shape_generator/GameModels.h"
#include "shape_generator/Rock.h"
#include "shape_generator/Shapes.h"

namespace ShapeTools
{
const std::vector<NamedShape>& ShapeTable()
{
    static const std::vector<NamedShape> table = {
        {"capsule", "capsule of radius 0.5, 2 high, along Y", [] { return Capsule(); }},
        {"cylinder", "capped cylinder of radius 0.5, 1 high, along Y", [] { return Cylinder(); }},
        {"cone", "cone of base radius 0.5, 1 high, tip up", [] { return Cone(); }},
        {"plane", "1 by 1 square in the XZ plane facing +Y", [] { return Plane(); }},
        {"ramp", "wedge of the unit cube rising towards -Z", [] { return Ramp(); }},
        {"rock0", "rock-like lump of seed 1 in the unit cube", [] { return Rock(1); }},
        {"rock1", "rock-like lump of seed 2 in the unit cube", [] { return Rock(2); }},
        {"rock2", "rock-like lump of seed 3 in the unit cube", [] { return Rock(3); }},
        {"rock3", "rock-like lump of seed 4 in the unit cube, rougher", [] { return Rock(4, 1, 0.5f); }},
        {"player", "the player's capsule body with its visor facing +Z", [] { return PlayerBody(); }},
        {"healthorb", "the health orb, a faceted ball of radius 0.5", [] { return HealthOrb(); }},
    };
    return table;
}

const NamedShape* FindShape(const std::string& name)
{
    for (const NamedShape& shape : ShapeTable())
        if (shape.Name == name)
            return &shape;
    return nullptr;
}
}
