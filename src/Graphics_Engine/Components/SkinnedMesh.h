// SkinnedMesh: a Mesh of a skinned model, moved by its bones and animations,
// which writes its bone matrices after the mesh's rows.
//
// For now a placeholder: it is registered, read from data and drawn exactly
// like a Mesh, and gains its own behaviour when that feature is built.
#pragma once

#include "Graphics_Engine/Components/Mesh.h"

namespace Graphics
{
class SkinnedMesh : public Mesh
{
public:
    SkinnedMesh() = default;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
};
}
