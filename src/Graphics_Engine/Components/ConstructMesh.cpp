#include "Graphics_Engine/Components/ConstructMesh.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, ConstructMesh)
{
    DERIVE(Graphics::Mesh);
    DESCRIPTION("A mesh for pieces built at run time (a placeholder drawn as a Mesh).");
}

namespace Graphics
{
Component* ConstructMesh::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* ConstructMesh::GetMeta() const
{
    return Meta::Get<ConstructMesh>();
}
}
