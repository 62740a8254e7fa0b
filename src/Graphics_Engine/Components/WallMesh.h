// WallMesh: a Mesh whose model is the wall and floor geometry the room
// generator makes from a room's tile grid.
//
// For now a placeholder: it is registered, read from data and drawn exactly
// like a Mesh, and gains its own behaviour when that feature is built.
#pragma once

#include "Graphics_Engine/Components/Mesh.h"

namespace Graphics
{
class WallMesh : public Mesh
{
public:
    WallMesh() = default;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
};
}
