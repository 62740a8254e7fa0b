// The shapes vorn_make_shapes can write, by name: each name is also the stem
// of the kbm file it writes ("capsule" is written as capsule.kbm).
#pragma once

#include "shape_generator/MeshBuilder.h"

#include <functional>
#include <string>
#include <vector>

namespace ShapeTools
{
struct NamedShape
{
    std::string Name;
    // One line on what it is.
    std::string Description;
    std::function<MeshBuilder()> Make;
};

// Every shape, in the order they are written when none is named.
const std::vector<NamedShape>& ShapeTable();
// The shape of that name, or null.
const NamedShape* FindShape(const std::string& name);
}
