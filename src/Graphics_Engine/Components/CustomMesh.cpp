#include "Graphics_Engine/Components/CustomMesh.h"

#include "Graphics_Engine/Components/CloneGraphicsComponent.h"
#include "utilities/Meta/Registration.h"

META_REGISTER_NS(Graphics, CustomMesh)
{
    DERIVE(Graphics::Mesh);
    DESCRIPTION("A mesh generated from its own settings (a placeholder drawn as a Mesh).");
}

namespace Graphics
{
Component* CustomMesh::Clone() const
{
    return CloneGraphicsComponent(*this);
}

Meta::Data* CustomMesh::GetMeta() const
{
    return Meta::Get<CustomMesh>();
}
}
