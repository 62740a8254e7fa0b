// CustomMesh: a Mesh whose model is generated from its own settings (points per
// unit, the faces to generate and tessellate, random displacement), made
// into a model named after the object when it starts.
//
// For now a placeholder: it is registered, read from data and drawn exactly
// like a Mesh, and gains its own behaviour when that feature is built.
#pragma once

#include "Graphics_Engine/Components/Mesh.h"

namespace Graphics
{
class CustomMesh : public Mesh
{
public:
    CustomMesh() = default;
    Component* Clone() const override;
    Meta::Data* GetMeta() const override;
};
}
