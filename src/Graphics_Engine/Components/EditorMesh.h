// EditorMesh: a Mesh that marks an object in the editor (lights, spawn points
// and other things that have no look of their own in the game).
//
// For now a placeholder: it is registered, read from data and drawn exactly
// like a Mesh, and gains its own behaviour when that feature is built.
#pragma once

#include "Graphics_Engine/Components/Mesh.h"

namespace Graphics
{
class EditorMesh : public Mesh
{
public:
    EditorMesh() = default;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
};
}
