// ConstructMesh: a Mesh for pieces the game builds at run time (constructions
// placed by the player or by scripts).
//
// For now a placeholder: it is registered, read from data and drawn exactly
// like a Mesh, and gains its own behaviour when that feature is built.
#pragma once

#include "Graphics_Engine/Components/Mesh.h"

namespace Graphics
{
class ConstructMesh : public Mesh
{
public:
    ConstructMesh() = default;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
};
}
